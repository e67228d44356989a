#pragma once

#include <windows.h>
#include <oaidl.h>

namespace zel {

// What the type library says of one interface: asked for at the first use, kept until the library is
// unloaded. Has static lifetime. What fails leaves nothing behind, and the next use asks again.
class InterfaceInfo {
public:
    explicit InterfaceInfo(const IID& iid) noexcept;
    InterfaceInfo(const InterfaceInfo&) = delete;
    InterfaceInfo& operator=(const InterfaceInfo&) = delete;

    // A borrowed pointer: good until the library is unloaded.
    HRESULT Get(ITypeInfo** out) noexcept {
        *out = info_;
        return *out ? S_OK : Find(out);
    }

    // Before the library goes.
    static void ReleaseAll() noexcept;

private:
    HRESULT Find(ITypeInfo** out) noexcept;

    const IID& iid_;
    ITypeInfo* volatile info_ = nullptr;
    InterfaceInfo* const next_;

    static inline InterfaceInfo* first_ = nullptr;
};

}  // namespace zel
