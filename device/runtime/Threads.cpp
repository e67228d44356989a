// What the C and C++ libraries ask of threads (gthr.h and the C library's locks).
#include "Runtime.h"

#include <windows.h>

#include <sys/lock.h>

#include <bits/gthr.h>

namespace {

// The libraries hold their locks for moments only, and one is enough.
CRITICAL_SECTION section;

}  // namespace

namespace zel {

void AttachThreads() { InitializeCriticalSection(&section); }
void DetachThreads() { DeleteCriticalSection(&section); }

}  // namespace zel

extern "C" {

void zel_lock(void) { EnterCriticalSection(&section); }
void zel_unlock(void) { LeaveCriticalSection(&section); }

int zel_once(__gthread_once_t* once, void (*run)(void)) {
    if (*static_cast<volatile __gthread_once_t*>(once) == 1) return 0;
    zel_lock();
    if (*once == 0) {
        run();
        *once = 1;
    }
    zel_unlock();
    return 0;
}

// The C library's own.
struct __lock {
    char unused;
} __lock___atexit_recursive_mutex, __lock___sfp_recursive_mutex, __lock___sinit_recursive_mutex,
    __lock___malloc_recursive_mutex, __lock___env_recursive_mutex, __lock___at_quick_exit_mutex,
    __lock___dd_hash_mutex, __lock___tz_mutex, __lock___arc4random_mutex;
void __retarget_lock_init(_LOCK_T*) {}
void __retarget_lock_init_recursive(_LOCK_T*) {}
void __retarget_lock_close(_LOCK_T) {}
void __retarget_lock_close_recursive(_LOCK_T) {}
void __retarget_lock_acquire(_LOCK_T) { zel_lock(); }
void __retarget_lock_acquire_recursive(_LOCK_T) { zel_lock(); }
void __retarget_lock_release(_LOCK_T) { zel_unlock(); }
void __retarget_lock_release_recursive(_LOCK_T) { zel_unlock(); }

}  // extern "C"
