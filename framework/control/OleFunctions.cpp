#include "OleFunctions.h"

namespace zel {
namespace {

// ole32 is loaded as long as there is anything of COM.
template <class Function>
Function* Find(const char* name) noexcept {
    const HMODULE ole = GetModuleHandleW(L"ole32.dll");
    return ole ? reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(ole, name))) : nullptr;
}

}  // namespace

HRESULT OleFunctions::CreateAdviseHolder(IOleAdviseHolder** out) noexcept {
    auto* create = Find<decltype(CreateOleAdviseHolder)>("CreateOleAdviseHolder");
    return create ? create(out) : OLE_E_ADVISENOTSUPPORTED;
}

HRESULT OleFunctions::CreateDataAdviseHolder(IDataAdviseHolder** out) noexcept {
    auto* create = Find<decltype(::CreateDataAdviseHolder)>("CreateDataAdviseHolder");
    return create ? create(out) : OLE_E_ADVISENOTSUPPORTED;
}

HRESULT OleFunctions::EnumVerbs(REFCLSID clsid, IEnumOLEVERB** out) noexcept {
    auto* enumerate = Find<decltype(OleRegEnumVerbs)>("OleRegEnumVerbs");
    return enumerate ? enumerate(clsid, out) : OLEOBJ_E_NOVERBS;
}

HRESULT OleFunctions::GetMiscStatus(REFCLSID clsid, DWORD aspect, DWORD* out) noexcept {
    auto* get = Find<decltype(OleRegGetMiscStatus)>("OleRegGetMiscStatus");
    return get ? get(clsid, aspect, out) : E_NOTIMPL;
}

HRESULT OleFunctions::GetUserType(REFCLSID clsid, DWORD form, LPOLESTR* out) noexcept {
    auto* get = Find<decltype(OleRegGetUserType)>("OleRegGetUserType");
    return get ? get(clsid, form, out) : E_NOTIMPL;
}

}  // namespace zel
