#include "Interruption.h"

#include <algorithm>
#include <atomic>
#include <cstddef>

#ifdef _WIN32
#include <windows.h>

#include <mutex>
#else
#include <signal.h>
#include <unistd.h>
#endif

namespace zel {
namespace {

using Character = std::filesystem::path::value_type;

// Read where no lock may be taken: a file, and its backup beside it.
std::atomic<const Character*> doomed[2];

template <class Remove>
void RemoveAll(Remove remove) {
    for (const std::atomic<const Character*>& path : doomed)
        if (const Character* name = path.load()) remove(name);
}

#ifdef _WIN32

std::recursive_mutex& Lock() {
    static std::recursive_mutex lock;
    return lock;
}

// On a thread of its own. The lock is never given back, so that no further file is begun; the system's own
// handler, which comes next, ends the program.
BOOL WINAPI OnInterruption(DWORD) {
    Lock().lock();
    RemoveAll(&DeleteFileW);
    return FALSE;
}

void Listen() { SetConsoleCtrlHandler(&OnInterruption, TRUE); }
void Block() { Lock().lock(); }
void Unblock() { Lock().unlock(); }

#else

constexpr int kSignals[] = {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGPIPE, SIGXCPU};

// Its handling is undone by then: the signal ends the program once this returns.
void OnInterruption(int signal) {
    RemoveAll(&unlink);
    raise(signal);
}

sigset_t AllSignals() {
    sigset_t all;
    sigemptyset(&all);
    for (const int signal : kSignals) sigaddset(&all, signal);
    return all;
}

void Listen() {
    struct sigaction action {};
    action.sa_handler = &OnInterruption;
    action.sa_mask = AllSignals();
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    for (const int signal : kSignals) {
        struct sigaction old {};
        sigaction(signal, nullptr, &old);
        // Whoever started the program may want it to go on.
        if (old.sa_handler == SIG_DFL) sigaction(signal, &action, nullptr);
    }
    // A limit on the size of files is an error of writing like any other.
    signal(SIGXFSZ, SIG_IGN);
}

int blocks = 0;
sigset_t unblocked;

void Block() {
    const sigset_t all = AllSignals();
    if (blocks++ == 0) sigprocmask(SIG_BLOCK, &all, &unblocked);
}
void Unblock() {
    if (--blocks == 0) sigprocmask(SIG_SETMASK, &unblocked, nullptr);
}

#endif

}  // namespace

Interruption::Hold::Hold() { Block(); }
Interruption::Hold::~Hold() { Unblock(); }

Interruption::Doomed::Doomed(const std::filesystem::path& path) : path_(path) {
    static const bool isListening = (Listen(), true);
    static_cast<void>(isListening);
    auto* const free = std::find(std::begin(doomed), std::end(doomed), nullptr);
    slot_ = static_cast<std::size_t>(free - std::begin(doomed));
    free->store(path_.c_str());
}

Interruption::Doomed::~Doomed() { doomed[slot_].store(nullptr); }

}  // namespace zel
