#pragma once

#include <windows.h>

#include <cstddef>

namespace zel {

// One creatable class: its identifier, the number of its registry script (a resource of type "REGISTRY") and
// what makes an instance, with the contract of QueryInterface (see CreateInstance in Object.h).
struct ClassRow {
    const CLSID& clsid;
    UINT script;
    HRESULT (*create)(REFIID iid, void** out) noexcept;
};

// The loaded library: its instance handle, its object table and the count of what keeps it in memory. There
// is one, set up at process attach and torn down at detach; only the count changes in between, and only by
// interlocked operations.
class Module {
public:
    // The rows are static data of the caller.
    static void Attach(HINSTANCE instance, const ClassRow* rows, std::size_t count) noexcept;
    static void Detach() noexcept;

    static HINSTANCE Instance() noexcept { return instance_; }
    static const ClassRow* begin() noexcept { return rows_; }
    static const ClassRow* end() noexcept { return rows_ + count_; }
    // Writes the module's full path; a path that does not fit is a failure, never a cut.
    static HRESULT GetPath(wchar_t (&path)[MAX_PATH]) noexcept;

    static void Lock() noexcept { InterlockedIncrement(&locks_); }
    static void Unlock() noexcept { InterlockedDecrement(&locks_); }
    static LONG LockCount() noexcept { return locks_; }

    // What the exported functions of these names answer.
    static HRESULT CanUnloadNow() noexcept { return locks_ == 0 ? S_OK : S_FALSE; }
    static HRESULT GetClassObject(REFCLSID clsid, REFIID iid, void** out) noexcept;

private:
    static inline HINSTANCE instance_ = nullptr;
    static inline const ClassRow* rows_ = nullptr;
    static inline std::size_t count_ = 0;
    static inline volatile LONG locks_ = 0;
};

// Keeps the module loaded while it lives.
class ModuleLock {
public:
    ModuleLock() noexcept { Module::Lock(); }
    ModuleLock(const ModuleLock&) = delete;
    ModuleLock& operator=(const ModuleLock&) = delete;
    ~ModuleLock() { Module::Unlock(); }
};

}  // namespace zel
