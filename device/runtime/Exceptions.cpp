// Exceptions without an end of the process: the state that each thread has while some are in flight, and the
// memory of those thrown for want of memory.
#include "Runtime.h"

#include <windows.h>

#include <stdlib.h>
#include <string.h>

#include <bits/gthr.h>
#include <unwind-cxx.h>

namespace {

using __cxxabiv1::__cxa_dependent_exception;
using __cxxabiv1::__cxa_eh_globals;
using __cxxabiv1::__cxa_refcounted_exception;

class Lock {
public:
    Lock() { zel_lock(); }
    Lock(const Lock&) = delete;
    Lock& operator=(const Lock&) = delete;
    ~Lock() { zel_unlock(); }
};

// Blocks from the heap, or of a few in reserve when that gives out. Who finds all of those taken waits for
// another thread to be done with its.
template <size_t kSize, size_t kCount>
class Reserve {
public:
    void* Take(size_t size) {
        for (;;) {
            if (void* block = malloc(size)) return block;
            if (void* block = size <= kSize ? TakeReserved() : nullptr) return block;
            Sleep(1);
        }
    }
    void Give(void* block) {
        const auto offset = static_cast<size_t>(static_cast<char*>(block) - *blocks_);
        if (offset >= sizeof blocks_) return free(block);
        const Lock lock;
        taken_[offset / kSize] = false;
    }

private:
    void* TakeReserved() {
        const Lock lock;
        for (size_t i = 0; i < kCount; ++i) {
            if (taken_[i]) continue;
            taken_[i] = true;
            return blocks_[i];
        }
        return nullptr;
    }

    alignas(8) char blocks_[kCount][kSize];
    bool taken_[kCount];
};

struct ThreadState {
    __cxa_eh_globals globals;
    ThreadState* next;
};

// Static data without constructors: exceptions may be thrown before those run.
Reserve<192, 8> thrown;
Reserve<sizeof(ThreadState), 8> states;
ThreadState* firstState = nullptr;
DWORD slot = TLS_OUT_OF_INDEXES;

ThreadState* NewState() {
    auto* state = static_cast<ThreadState*>(states.Take(sizeof(ThreadState)));
    *state = {};
    const Lock lock;
    state->next = firstState;
    firstState = state;
    return state;
}

void* Zeroed(void* block, size_t size) { return memset(block, 0, size); }

}  // namespace

namespace zel {

bool AttachExceptions() {
    slot = TlsAlloc();
    return slot != TLS_OUT_OF_INDEXES;
}

void DetachThreadExceptions() {
    auto* state = static_cast<ThreadState*>(TlsGetValue(slot));
    if (!state) return;
    TlsSetValue(slot, nullptr);
    const Lock lock;
    ThreadState** place = &firstState;
    while (*place != state) place = &(*place)->next;
    *place = state->next;
    states.Give(state);
}

void DetachExceptions() {
    while (ThreadState* state = firstState) {
        firstState = state->next;
        states.Give(state);
    }
    TlsFree(slot);
    slot = TLS_OUT_OF_INDEXES;
}

}  // namespace zel

namespace __cxxabiv1 {

// The library's own would bring all that it takes to print the exception.
std::terminate_handler __terminate_handler = abort;

extern "C" {

__cxa_eh_globals* __cxa_get_globals() noexcept {
    // The caller may be about to ask for the last error of its own work.
    const DWORD error = GetLastError();
    auto* state = static_cast<ThreadState*>(TlsGetValue(slot));
    if (!state) {
        state = NewState();
        TlsSetValue(slot, state);
    }
    SetLastError(error);
    return &state->globals;
}

__cxa_eh_globals* __cxa_get_globals_fast() noexcept { return __cxa_get_globals(); }

void* __cxa_allocate_exception(size_t size) noexcept {
    constexpr size_t kHead = sizeof(__cxa_refcounted_exception);
    return static_cast<char*>(Zeroed(thrown.Take(kHead + size), kHead)) + kHead;
}

void __cxa_free_exception(void* object) noexcept {
    thrown.Give(static_cast<char*>(object) - sizeof(__cxa_refcounted_exception));
}

__cxa_dependent_exception* __cxa_allocate_dependent_exception() noexcept {
    constexpr size_t kSize = sizeof(__cxa_dependent_exception);
    return static_cast<__cxa_dependent_exception*>(Zeroed(thrown.Take(kSize), kSize));
}

void __cxa_free_dependent_exception(__cxa_dependent_exception* exception) noexcept { thrown.Give(exception); }

}  // extern "C"
}  // namespace __cxxabiv1
