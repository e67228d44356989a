#pragma once

#include <cstddef>
#include <functional>

namespace zel {

// A walk over a file or a text that may take a while: lets the program's one user see how far it has come.
class LongWork {
public:
    // Shows `done` of `total` bytes, all of them at the end; set by whoever has a terminal for it.
    using Show = std::function<void(std::size_t done, std::size_t total)>;
    static inline Show show;

    explicit LongWork(std::size_t total) : total_(total) {}
    ~LongWork() {
        if (show) show(total_, total_);
    }
    LongWork(const LongWork&) = delete;
    LongWork& operator=(const LongWork&) = delete;

    // To be called often.
    void At(std::size_t done) {
        constexpr std::size_t kPause = 8192;
        if (show && ++steps_ % kPause == 0) show(done, total_);
    }

private:
    const std::size_t total_;
    std::size_t steps_ = 0;
};

}  // namespace zel
