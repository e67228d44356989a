#pragma once

#include <chrono>
#include <cstddef>
#include <ostream>

namespace zel {

// A bar for a person who waits, of many files or of any long work in a single big one: shown on a terminal
// only, once the work takes more than a second, and wiped off at its end. One at a time.
class Progress {
public:
    using Clock = std::chrono::steady_clock;

    Progress(std::ostream& out, bool isTerminal, Clock::time_point (*now)() = &Clock::now);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    void ShowFiles(std::size_t done, std::size_t total);
    // To be called before other output to the terminal.
    void Wipe();
    // No bar from here on.
    void LeaveTerminal() { isTerminal_ = false; }

private:
    void ShowBytes(std::size_t done, std::size_t total);
    void Show(std::size_t done, std::size_t total, const char* unit);

    std::ostream& out_;
    bool isTerminal_;
    Clock::time_point (*const now_)();
    Clock::time_point next_;  // when to draw again
    std::size_t files_ = 1;
    bool isShown_ = false;
};

}  // namespace zel
