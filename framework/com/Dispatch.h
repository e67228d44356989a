#pragma once

#include <windows.h>
#include <oaidl.h>

#include "InterfaceInfo.h"
#include "MemberNames.h"

namespace zel {

// The IDispatch half of a dual interface: calls go through the interface's description in the module's own
// type library. So do names but those of the members, which are known here: scripts ask for them at every
// access, and the description compares one after the other. A class derives from it instead of from the
// interface.
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
        if (index != 0) return DISP_E_BADINDEX;
        const HRESULT result = info_.Get(out);
        if (SUCCEEDED(result)) (*out)->AddRef();
        return result;
    }

    STDMETHODIMP GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID,
                               DISPID* ids) noexcept override {
        if (reserved != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
        if (!names || !ids) return E_INVALIDARG;
        const MemberName* member = count == 1 ? MembersOf<Interface>::kNames.Find(names[0]) : nullptr;
        if (member) {
            *ids = member->id;
            return S_OK;
        }
        ITypeInfo* info = nullptr;
        const HRESULT result = info_.Get(&info);
        return SUCCEEDED(result) ? info->GetIDsOfNames(names, count, ids) : result;
    }

    STDMETHODIMP Invoke(DISPID member, REFIID reserved, LCID, WORD flags, DISPPARAMS* arguments,
                        VARIANT* value, EXCEPINFO* exception, UINT* badArgument) noexcept override {
        if (reserved != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
        ITypeInfo* info = nullptr;
        const HRESULT result = info_.Get(&info);
        if (FAILED(result)) return result;
        // A script's `Set` asks for a put by reference; every object property here takes one put.
        if (flags & DISPATCH_PROPERTYPUTREF) flags |= DISPATCH_PROPERTYPUT;
        return info->Invoke(static_cast<Interface*>(this), member, flags, arguments, value, exception,
                            badArgument);
    }

private:
    static inline InterfaceInfo info_{__uuidof(Interface)};
};

}  // namespace zel
