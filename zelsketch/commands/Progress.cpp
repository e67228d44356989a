#include "Progress.h"

#include <string>

#include "zel/text/LongWork.h"

namespace zel {

Progress::Progress(std::ostream& out, bool isTerminal, Clock::time_point (*now)())
    : out_(out), isTerminal_(isTerminal), now_(now), next_(now() + std::chrono::seconds(1)) {
    LongWork::show = [this](std::size_t done, std::size_t total) { ShowBytes(done, total); };
}

Progress::~Progress() {
    LongWork::show = nullptr;
    Wipe();
}

void Progress::ShowFiles(std::size_t done, std::size_t total) {
    files_ = total;
    if (total > 1) Show(done, total, "files");
}

void Progress::ShowBytes(std::size_t done, std::size_t total) {
    constexpr std::size_t kMegabyte = 1000000;
    if (files_ > 1 || total < kMegabyte) return;
    if (done == total) return Wipe();
    Show(done / kMegabyte, total / kMegabyte, "MB");
}

void Progress::Show(std::size_t done, std::size_t total, const char* unit) {
    constexpr std::size_t kWidth = 40;
    constexpr std::chrono::milliseconds kPause(100);
    if (!isTerminal_ || now_() < next_) return;
    next_ = now_() + kPause;
    std::string bar(kWidth * done / total, '#');
    bar.resize(kWidth, '.');
    out_ << "\r[" << bar << "] " << done << " of " << total << ' ' << unit << std::flush;
    isShown_ = true;
}

void Progress::Wipe() {
    if (isShown_) out_ << "\r\033[K" << std::flush;
    isShown_ = false;
}

}  // namespace zel
