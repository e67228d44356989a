#pragma once

#include <windows.h>
#include <oaidl.h>

#include "ComPtr.h"
#include "TypeLibrary.h"

namespace zel {

// The IDispatch half of a dual interface: names and calls go through the interface's description in the
// module's own type library. A class derives from it instead of from the interface.
template <class Interface>
class Dispatch : public Interface {
public:
    STDMETHODIMP GetTypeInfoCount(UINT* count) noexcept override {
        if (!count) return E_POINTER;
        *count = 1;
        return S_OK;
    }

    STDMETHODIMP GetTypeInfo(UINT index, LCID, ITypeInfo** out) noexcept override {
        if (!out) return E_POINTER;
        *out = nullptr;
        return index == 0 ? TypeLibrary::GetInfo(__uuidof(Interface), out) : DISP_E_BADINDEX;
    }

    STDMETHODIMP GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID,
                               DISPID* ids) noexcept override {
        if (reserved != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
        ComPtr<ITypeInfo> info;
        const HRESULT result = TypeLibrary::GetInfo(__uuidof(Interface), info.Out());
        return SUCCEEDED(result) ? info->GetIDsOfNames(names, count, ids) : result;
    }

    STDMETHODIMP Invoke(DISPID member, REFIID reserved, LCID, WORD flags, DISPPARAMS* arguments,
                        VARIANT* value, EXCEPINFO* exception, UINT* badArgument) noexcept override {
        if (reserved != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
        ComPtr<ITypeInfo> info;
        const HRESULT result = TypeLibrary::GetInfo(__uuidof(Interface), info.Out());
        if (FAILED(result)) return result;
        // A script's `Set` asks for a put by reference; every object property here takes one put.
        if (flags & DISPATCH_PROPERTYPUTREF) flags |= DISPATCH_PROPERTYPUT;
        return info->Invoke(static_cast<Interface*>(this), member, flags, arguments, value, exception,
                            badArgument);
    }
};

}  // namespace zel
