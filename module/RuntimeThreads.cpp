// What the C++ runtime asks of threads, in place of the thread library that is linked with it: that one never
// gives back a TLS slot, handles and an exception handler, so that a process which loads and unloads the
// module a thousand times ends up without slots. Here all goes with the module. The runtime holds its locks
// for moments only, and one is enough.

#include <windows.h>

#include <errno.h>
#include <pthread.h>

// NOLINTBEGIN(clang-diagnostic-reserved-identifier)
namespace __gnu_cxx {
// Frees what the runtime sets aside for exceptions when memory is exhausted.
void __freeres();
}  // namespace __gnu_cxx
// NOLINTEND(clang-diagnostic-reserved-identifier)

namespace {

// Static data only: it is needed before the first constructor runs and after the last destructor.
volatile LONG owner = 0;
LONG depth = 0;

void Enter() {
    const LONG self = static_cast<LONG>(GetCurrentThreadId());
    while (owner != self && InterlockedCompareExchange(&owner, self, 0) != 0) Sleep(1);
    ++depth;
}

void Leave() {
    if (--depth == 0) InterlockedExchange(&owner, 0);
}

// The runtime makes one, for the exceptions in flight in each thread.
struct Key {
    DWORD slot;
    void (*destroy)(void* value);
};
Key keys[4];
unsigned keyCount = 0;

void ReleaseThread() {
    for (unsigned i = 0; i < keyCount; ++i) {
        void* value = TlsGetValue(keys[i].slot);
        if (!value) continue;
        TlsSetValue(keys[i].slot, nullptr);
        if (keys[i].destroy) keys[i].destroy(value);
    }
}

void NTAPI OnThread(void*, DWORD reason, void*) {
    if (reason == DLL_THREAD_DETACH) ReleaseThread();
}

// Of the lowest priority: runs when all other destructors have.
__attribute__((destructor(101))) void ReleaseModule() {
    ReleaseThread();
    while (keyCount != 0) TlsFree(keys[--keyCount].slot);
    __gnu_cxx::__freeres();
}

}  // namespace

extern "C" {

__attribute__((section(".CRT$XLY"), used)) const PIMAGE_TLS_CALLBACK zelOnThread = &OnThread;

int pthread_once(pthread_once_t* once, void (*run)()) {
    if (InterlockedCompareExchange(once, 0, 0) == 1) return 0;
    Enter();
    if (*once == 0) {
        run();
        InterlockedExchange(once, 1);
    }
    Leave();
    return 0;
}

int pthread_key_create(pthread_key_t* key, void (*destroy)(void*)) {
    const DWORD slot = keyCount < ARRAYSIZE(keys) ? TlsAlloc() : TLS_OUT_OF_INDEXES;
    if (slot == TLS_OUT_OF_INDEXES) return EAGAIN;
    keys[keyCount++] = {slot, destroy};
    *key = slot;
    return 0;
}

void* pthread_getspecific(pthread_key_t key) {
    // The caller may be about to ask for the last error of its own work.
    const DWORD error = GetLastError();
    void* value = TlsGetValue(key);
    SetLastError(error);
    return value;
}

int pthread_setspecific(pthread_key_t key, const void* value) {
    return TlsSetValue(key, const_cast<void*>(value)) ? 0 : ENOMEM;
}

int pthread_mutex_init(pthread_mutex_t*, const pthread_mutexattr_t*) { return 0; }

int pthread_mutex_destroy(pthread_mutex_t*) { return 0; }

int pthread_mutex_lock(pthread_mutex_t*) {
    Enter();
    return 0;
}

int pthread_mutex_unlock(pthread_mutex_t*) {
    Leave();
    return 0;
}

// Wakes up in vain now and then, which a waiter must stand.
int pthread_cond_wait(pthread_cond_t*, pthread_mutex_t*) {
    Leave();
    Sleep(1);
    Enter();
    return 0;
}

int pthread_cond_broadcast(pthread_cond_t*) { return 0; }

}  // extern "C"
