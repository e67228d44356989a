#pragma once

#include <chrono>
#include <cstddef>
#include <ostream>

namespace zel {

// A bar for a person who waits: shown on a terminal only, once the work takes more than a second, and wiped
// off at its end.
class Progress {
public:
    using Clock = std::chrono::steady_clock;

    Progress(std::ostream& out, bool isTerminal, std::size_t total, Clock::time_point (*now)() = &Clock::now);
    ~Progress() { Wipe(); }
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    void Show(std::size_t done);
    // To be called before other output to the terminal.
    void Wipe();

private:
    std::ostream& out_;
    const bool isTerminal_;
    const std::size_t total_;
    Clock::time_point (*const now_)();
    Clock::time_point next_;  // when to draw again
    bool isShown_ = false;
};

}  // namespace zel
