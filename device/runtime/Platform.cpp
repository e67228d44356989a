// Functions that are macros on the platform or have another form there, and what the compiler calls by
// itself.
#include <windows.h>

#include <stdlib.h>

extern "C" {

// The core library's; the platform's headers have functions of their own under these names.
LONG ZelExchangeAdd(LONG volatile* place, LONG value) __asm__("InterlockedExchangeAdd");
LONG ZelCompareExchange(LONG volatile* place, LONG value,
                        LONG expected) __asm__("InterlockedCompareExchange");
LONG ZelExchange(LONG volatile* place, LONG value) __asm__("InterlockedExchange");
DWORD TlsCall(DWORD function, DWORD slot);
FARPROC WINAPI GetProcAddressW(HMODULE module, LPCWSTR name);

// By these names the compiler calls what it has no instruction for; it has declarations of its own for them.
LONG ZelAdd(LONG volatile* place, LONG value) __asm__("__sync_add_and_fetch_4");
LONG ZelAdd(LONG volatile* place, LONG value) { return ZelExchangeAdd(place, value) + value; }
LONG ZelSubtract(LONG volatile* place, LONG value) __asm__("__sync_sub_and_fetch_4");
LONG ZelSubtract(LONG volatile* place, LONG value) { return ZelExchangeAdd(place, -value) - value; }
LONG ZelExchangeIf(LONG volatile* place, LONG expected, LONG value) __asm__("__sync_val_compare_and_swap_4");
LONG ZelExchangeIf(LONG volatile* place, LONG expected, LONG value) {
    return ZelCompareExchange(place, value, expected);
}
LONG ZelTestAndSet(LONG volatile* place, LONG value) __asm__("__sync_lock_test_and_set_4");
LONG ZelTestAndSet(LONG volatile* place, LONG value) { return ZelExchange(place, value); }
// The cores have one processor.
void ZelSynchronize() __asm__("__sync_synchronize");
void ZelSynchronize() {}

DWORD WINAPI TlsAlloc() { return TlsCall(0, 0); }
BOOL WINAPI TlsFree(DWORD slot) { return static_cast<BOOL>(TlsCall(1, slot)); }

// A loaded resource is where it is.
LPVOID WINAPI LockResource(HGLOBAL resource) { return resource; }

FARPROC WINAPI GetProcAddress(HMODULE module, LPCSTR name) {
    wchar_t wide[64];
    return MultiByteToWideChar(CP_ACP, 0, name, -1, wide, 64) ? GetProcAddressW(module, wide) : nullptr;
}

// Nothing catches it: the system reports the fault and ends the process.
void abort() {
    for (;;) RaiseException(EXCEPTION_ILLEGAL_INSTRUCTION, EXCEPTION_NONCONTINUABLE, 0, nullptr);
}

}  // extern "C"
