// Where the system enters the library: constructors before DllMain, destructors behind it.
#include <windows.h>

#include "Runtime.h"

// NOLINTBEGIN(clang-diagnostic-reserved-identifier)
extern "C" {
BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, void* processEnds);
void __cxa_finalize(void* object);
// Of the linker script.
extern void (*__init_array_start[])();
extern void (*__init_array_end[])();
// Static objects of the library ask for their destruction by it.
void* __dso_handle = nullptr;
}
// NOLINTEND(clang-diagnostic-reserved-identifier)

extern "C" BOOL WINAPI ZelEntry(HINSTANCE instance, DWORD reason, void* processEnds) {
    if (reason == DLL_PROCESS_ATTACH) {
        zel::AttachThreads();
        if (!zel::AttachExceptions()) {
            zel::DetachThreads();
            return FALSE;
        }
        for (auto** construct = __init_array_start; construct != __init_array_end; ++construct)
            (*construct)();
    }
    const BOOL result = DllMain(instance, reason, processEnds);
    if (reason == DLL_THREAD_DETACH) zel::DetachThreadExceptions();
    if (reason == DLL_PROCESS_DETACH) {
        __cxa_finalize(nullptr);
        zel::DetachExceptions();
        zel::DetachThreads();
    }
    return result;
}
