#include "Progress.h"

#include <string>

namespace zel {

Progress::Progress(std::ostream& out, bool isTerminal, std::size_t total, Clock::time_point (*now)())
    : out_(out), isTerminal_(isTerminal), total_(total), now_(now), next_(now() + std::chrono::seconds(1)) {}

void Progress::Show(std::size_t done) {
    constexpr std::size_t kWidth = 40;
    constexpr std::chrono::milliseconds kPause(100);
    if (!isTerminal_ || now_() < next_) return;
    next_ = now_() + kPause;
    std::string bar(kWidth * done / total_, '#');
    bar.resize(kWidth, '.');
    out_ << "\r[" << bar << "] " << done << " of " << total_ << " files" << std::flush;
    isShown_ = true;
}

void Progress::Wipe() {
    if (isShown_) out_ << "\r\033[K" << std::flush;
    isShown_ = false;
}

}  // namespace zel
