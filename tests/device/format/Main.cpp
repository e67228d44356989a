// Where the system enters the program: as the library's entry point (Entry.cpp), then the tests. What
// GoogleTest asks of a machine's files and terminals beyond what the module needs is refused.
#include <gmock/gmock.h>
#include <sys/stat.h>

#include "../../../device/runtime/Runtime.h"

// NOLINTBEGIN(clang-diagnostic-reserved-identifier)
extern "C" {
void __cxa_finalize(void* object);
extern void (*__init_array_start[])();
extern void (*__init_array_end[])();
void* __dso_handle = nullptr;
void ExitThread(unsigned long code);

// One thread, no locks.
long ZelFetchAdd(long* place, long value, int) __asm__("__atomic_fetch_add_4");
long ZelFetchAdd(long* place, long value, int) { return (*place += value) - value; }
long ZelFetchSubtract(long* place, long value, int) __asm__("__atomic_fetch_sub_4");
long ZelFetchSubtract(long* place, long value, int) { return (*place -= value) + value; }

int mkdir(const char*, mode_t) { return -1; }
char* getcwd(char*, size_t) { return nullptr; }
int _stat(const char*, struct stat*) { return -1; }
int _unlink(const char*) { return -1; }
int _open(const char*, int, int) { return -1; }
int _kill(int, int) { return -1; }
int _getpid() { return 1; }
int _gettimeofday(struct timeval*, void*) { return -1; }
clock_t _times(struct tms*) { return static_cast<clock_t>(-1); }
void _exit(int code) {
    for (;;) ExitThread(static_cast<unsigned long>(code));
}

// The command line is the filter of the tests.
int ZelEntry(void*, void*, const wchar_t* commandLine, int) {
    zel::AttachThreads();
    if (!zel::AttachExceptions()) return 1;
    for (auto** construct = __init_array_start; construct != __init_array_end; ++construct) (*construct)();
    int result = 0;
    {
        std::string name = "format_test", filter = "--gtest_filter=";
        for (; *commandLine != 0; ++commandLine) filter += static_cast<char>(*commandLine);
        char* arguments[] = {name.data(), filter.data(), nullptr};
        int count = 2;
        testing::InitGoogleMock(&count, arguments);
        result = RUN_ALL_TESTS();
    }
    __cxa_finalize(nullptr);
    zel::DetachExceptions();
    zel::DetachThreads();
    ExitThread(static_cast<unsigned long>(result));
    return result;
}
}
// NOLINTEND(clang-diagnostic-reserved-identifier)
