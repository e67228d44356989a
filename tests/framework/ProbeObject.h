#pragma once

#include "Probe.h"

#include "Dispatch.h"
#include "Object.h"

namespace zel {

// Two interfaces with one base in common: an object that has both must name the way to the base.
struct ILeft : IPersist {};
struct IRight : IPersist {};

}  // namespace zel

__CRT_UUID_DECL(zel::ILeft, 0x0c3eab5e, 0x1f0a, 0x4a52, 0x9d, 0x11, 0x5e, 0x0e, 0x8f, 0x6b, 0x3a, 0x01)
__CRT_UUID_DECL(zel::IRight, 0x0c3eab5e, 0x1f0a, 0x4a52, 0x9d, 0x11, 0x5e, 0x0e, 0x8f, 0x6b, 0x3a, 0x02)

namespace zel {

class ProbeObject final
    : public Object<Interfaces<IProbe, IDispatch, ILeft, IRight, Through<IPersist, IRight>>, Dispatch<IProbe>,
                    ILeft, IRight> {
public:
    STDMETHODIMP get_Value(LONG* pVal) noexcept override {
        *pVal = value_;
        return S_OK;
    }
    STDMETHODIMP put_Value(LONG value) noexcept override {
        value_ = value;
        return S_OK;
    }
    STDMETHODIMP GetClassID(CLSID* out) noexcept override {
        *out = CLSID_ProbeClass;
        return S_OK;
    }

private:
    // An object may be handed around while it is destroyed.
    ~ProbeObject() override {
        AddRef();
        Release();
    }

    LONG value_ = 0;
};

inline ULONG References(IProbe& object) {
    object.AddRef();
    return object.Release();
}

// A module of one class.
inline const ClassRow kProbeTable[] = {{CLSID_ProbeClass, 0, &CreateInstance<ProbeObject>}};

class ModuleScope {
public:
    ModuleScope() { Module::Attach(GetModuleHandleW(nullptr), kProbeTable, 1); }
    ~ModuleScope() { Module::Detach(); }
};

}  // namespace zel
