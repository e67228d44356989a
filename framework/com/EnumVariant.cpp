#include "EnumVariant.h"

#include <algorithm>
#include <new>

#include "Variant.h"

namespace zel {
namespace {

void ClearAll(VARIANT* items, ULONG count) noexcept {
    for (ULONG i = 0; i < count; ++i) VariantClear(&items[i]);
}

// `to` is raw memory: it holds values afterwards, or nothing to clear when a copy failed.
HRESULT CopyAll(VARIANT* to, const VARIANT* from, ULONG count) noexcept {
    for (ULONG i = 0; i < count; ++i) {
        VariantInit(&to[i]);
        const HRESULT result = CopyVariant(&to[i], from[i]);
        if (SUCCEEDED(result)) continue;
        ClearAll(to, i);
        return result;
    }
    return S_OK;
}

}  // namespace

void EnumVariant::Clear() noexcept {
    ClearAll(items_.get(), count_);
    items_.reset();
    count_ = position_ = 0;
}

HRESULT EnumVariant::Init(const VARIANT* first, ULONG count) noexcept {
    Clear();
    std::unique_ptr<VARIANT[]> copies(new (std::nothrow) VARIANT[count]);
    if (!copies) return E_OUTOFMEMORY;
    const HRESULT result = CopyAll(copies.get(), first, count);
    if (FAILED(result)) return result;
    items_ = std::move(copies);
    count_ = count;
    return S_OK;
}

HRESULT EnumVariant::Next(ULONG count, VARIANT* items, ULONG* fetched) noexcept {
    if (fetched) *fetched = 0;
    if ((!items && count != 0) || (!fetched && count != 1)) return E_POINTER;
    const ULONG given = std::min(count, count_ - position_);
    const HRESULT result = CopyAll(items, items_.get() + position_, given);
    if (FAILED(result)) return result;
    position_ += given;
    if (fetched) *fetched = given;
    return given == count ? S_OK : S_FALSE;
}

HRESULT EnumVariant::Skip(ULONG count) noexcept {
    const ULONG skipped = std::min(count, count_ - position_);
    position_ += skipped;
    return skipped == count ? S_OK : S_FALSE;
}

HRESULT EnumVariant::Reset() noexcept {
    position_ = 0;
    return S_OK;
}

HRESULT EnumVariant::Clone(IEnumVARIANT** out) noexcept {
    if (!out) return E_POINTER;
    *out = nullptr;
    auto clone = Make<EnumVariant>();
    if (!clone) return E_OUTOFMEMORY;
    const HRESULT result = clone->Init(items_.get(), count_);
    if (FAILED(result)) return result;
    clone->position_ = position_;
    *out = clone.Detach();
    return S_OK;
}

}  // namespace zel
