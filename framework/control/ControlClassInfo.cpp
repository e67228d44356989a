#include "ControlClassInfo.h"

#include "zel/com/TypeLibrary.h"

namespace zel {

HRESULT ControlClassInfo::GetClassInfo(ITypeInfo** out) noexcept {
    if (!out) return E_POINTER;
    *out = nullptr;
    return TypeLibrary::GetInfo(ClassId(), out);
}

HRESULT ControlClassInfo::GetGUID(DWORD kind, GUID* out) noexcept {
    if (!out) return E_POINTER;
    *out = GUID_NULL;
    return kind == GUIDKIND_DEFAULT_SOURCE_DISP_IID ? E_FAIL : E_INVALIDARG;
}

HRESULT ControlClassInfo::GetPages(CAUUID* out) noexcept {
    if (!out) return E_POINTER;
    *out = {};
    return S_OK;
}

}  // namespace zel
