#pragma once

#include <windows.h>
#include <ole2.h>

namespace zel {

// The functions of ole32 that nothing but the control needs. Handhelds come with several sizes of COM: where
// one lacks such a function the module loads all the same, and the control refuses that service.
class OleFunctions {
public:
    static HRESULT CreateAdviseHolder(IOleAdviseHolder** out) noexcept;
    static HRESULT CreateDataAdviseHolder(IDataAdviseHolder** out) noexcept;
    static HRESULT EnumVerbs(REFCLSID clsid, IEnumOLEVERB** out) noexcept;
    static HRESULT GetMiscStatus(REFCLSID clsid, DWORD aspect, DWORD* out) noexcept;
    static HRESULT GetUserType(REFCLSID clsid, DWORD form, LPOLESTR* out) noexcept;
};

}  // namespace zel
