// Preloaded into zelsketch: sends it the signal ZEL_SIGNAL right before (ZEL_WHEN=before) or behind (after)
// its first call of the function ZEL_CALL, so that every moment of a write is met.

#include <dlfcn.h>
#include <signal.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>

namespace {

void InterruptAt(const char* call, const char* when) {
    static bool done = false;
    const char *wantedCall = std::getenv("ZEL_CALL"), *wantedWhen = std::getenv("ZEL_WHEN");
    if (done || !wantedCall || std::strcmp(wantedCall, call) != 0 || std::strcmp(wantedWhen, when) != 0)
        return;
    done = true;
    kill(getpid(), std::atoi(std::getenv("ZEL_SIGNAL")));
}

template <class Function, class... Arguments>
int Interrupted(const char* call, Arguments... arguments) {
    InterruptAt(call, "before");
    const int result = reinterpret_cast<Function*>(dlsym(RTLD_NEXT, call))(arguments...);
    InterruptAt(call, "after");
    return result;
}

}  // namespace

extern "C" {
int fsync(int file) { return Interrupted<int(int)>("fsync", file); }
int rename(const char* from, const char* to) noexcept {
    return Interrupted<int(const char*, const char*)>("rename", from, to);
}
int renameat2(int fromFolder, const char* from, int toFolder, const char* to, unsigned flags) noexcept {
    return Interrupted<int(int, const char*, int, const char*, unsigned)>("renameat2", fromFolder, from,
                                                                          toFolder, to, flags);
}
}
