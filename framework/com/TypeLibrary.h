#pragma once

#include <windows.h>
#include <oaidl.h>

namespace zel {

// The type library that the module carries as its own resource. It is loaded from the module's file, so late
// binding needs no registration; at the first use, once.
class TypeLibrary {
public:
    static HRESULT GetInfo(REFIID iid, ITypeInfo** out) noexcept;
    // Writes the library and its interfaces into the classes root.
    static HRESULT Register() noexcept;
    static void Unload() noexcept;

private:
    // A borrowed pointer: good until Unload.
    static HRESULT Get(ITypeLib** out) noexcept;

    static inline ITypeLib* volatile library_ = nullptr;
};

}  // namespace zel
