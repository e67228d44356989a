#pragma once

#include <chrono>
#include <cstddef>
#include <ostream>

#include "zel/survey/Field.h"

namespace zel {

// A bar for a person who waits, of many files or of one big one: shown on a terminal only, once the work
// takes more than a second, and wiped off at its end.
class Progress {
public:
    using Clock = std::chrono::steady_clock;

    Progress(std::ostream& out, bool isTerminal, Clock::time_point (*now)() = &Clock::now);
    ~Progress() { Wipe(); }
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    void ShowFiles(std::size_t done, std::size_t total);
    // Within a file, if it is the only one.
    void ShowBytes(std::size_t done, std::size_t total);
    // To be called before other output to the terminal.
    void Wipe();

private:
    void Show(std::size_t done, std::size_t total, const char* unit);

    std::ostream& out_;
    const bool isTerminal_;
    Clock::time_point (*const now_)();
    Clock::time_point next_;  // when to draw again
    std::size_t files_ = 1;
    bool isShown_ = false;
};

// Hands a file's fields on, and shows how far they have come.
class WatchedVisitor : public FieldVisitor {
public:
    WatchedVisitor(FieldVisitor& visitor, Progress* progress, std::size_t size)
        : visitor_(visitor), progress_(progress), size_(size) {}

    void OnField(const Field& field) override {
        constexpr std::size_t kPause = 65536;
        if (progress_ && ++fields_ % kPause == 0) progress_->ShowBytes(field.offset, size_);
        visitor_.OnField(field);
    }
    void OnHeader() override { visitor_.OnHeader(); }
    void OnHeaderEnd() override { visitor_.OnHeaderEnd(); }
    void OnRecord(const Place& place) override { visitor_.OnRecord(place); }
    void OnRecordEnd() override { visitor_.OnRecordEnd(); }

private:
    FieldVisitor& visitor_;
    Progress* const progress_;
    const std::size_t size_;
    std::size_t fields_ = 0;
};

}  // namespace zel
