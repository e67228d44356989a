#pragma once

#include <windows.h>
#include <oaidl.h>

#include "InterfaceInfo.h"
#include "Members.h"

namespace zel {

// The IDispatch half of a dual interface. What scripts wait for, members' names and the plain calls of
// properties, is answered here; everything else by the interface's description in the module's own type
// library. A class derives from it instead of from the interface.
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
        const Member* member = count == 1 ? MembersOf<Interface>::kMembers.Find(names[0]) : nullptr;
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
        auto* self = static_cast<Interface*>(this);
        if (MembersOf<Interface>::kMembers.Access(self, member, flags, arguments, value)) return S_OK;
        ITypeInfo* info = nullptr;
        const HRESULT result = info_.Get(&info);
        if (FAILED(result)) return result;
        // A script's `Set` asks for a put by reference; every object property here takes one put.
        if (flags & DISPATCH_PROPERTYPUTREF) flags |= DISPATCH_PROPERTYPUT;
        return info->Invoke(self, member, flags, arguments, value, exception, badArgument);
    }

private:
    static inline InterfaceInfo info_{__uuidof(Interface)};
};

}  // namespace zel
