#pragma once

#include <windows.h>
#include <oaidl.h>

#include <memory>

#include "Object.h"

namespace zel {

// Walks a snapshot of VARIANTs: Init copies them, so what happens to their owner later is not seen. Without a
// successful Init there is nothing to walk. A clone has a snapshot of its own and starts where the original
// stands.
class EnumVariant final : public Object<Interfaces<IEnumVARIANT>, IEnumVARIANT> {
public:
    ~EnumVariant() override { Clear(); }

    // E_OUTOFMEMORY, or the failure of the copy that failed; nothing is kept then.
    HRESULT Init(const VARIANT* first, ULONG count) noexcept;

    // `fetched` may be null only when one element is asked for.
    STDMETHODIMP Next(ULONG count, VARIANT* items, ULONG* fetched) noexcept override;
    STDMETHODIMP Skip(ULONG count) noexcept override;
    STDMETHODIMP Reset() noexcept override;
    STDMETHODIMP Clone(IEnumVARIANT** out) noexcept override;

private:
    void Clear() noexcept;

    std::unique_ptr<VARIANT[]> items_;
    ULONG count_ = 0;
    ULONG position_ = 0;
};

}  // namespace zel
