#pragma once

#include <windows.h>
#include <ole2.h>
#include <ocidl.h>

#include "ControlCore.h"

namespace zel {

// The container's handle of a control (IOleObject, IOleControl): site, verbs, extent, closing. Verbs, user
// type and misc status are those of the registration. A control has no moniker, no menus of its own, no
// window apart from its place in the container, no mnemonics and no events.
class ControlObject : public IOleObject, public IOleControl, protected virtual ControlCore {
public:
    // The control leaves the place it has in another site. The site is held until the next call.
    STDMETHODIMP SetClientSite(IOleClientSite* site) noexcept override;
    STDMETHODIMP GetClientSite(IOleClientSite** out) noexcept override;
    STDMETHODIMP SetHostNames(LPCOLESTR application, LPCOLESTR document) noexcept override;
    // Site and advise connections stay until the container ends them. A dirty control is saved without asking
    // unless `option` forbids it. What is closed already has nothing to announce until the next verb.
    STDMETHODIMP Close(DWORD option) noexcept override;
    STDMETHODIMP SetMoniker(DWORD which, IMoniker* moniker) noexcept override;
    STDMETHODIMP GetMoniker(DWORD assign, DWORD which, IMoniker** out) noexcept override;
    STDMETHODIMP InitFromData(IDataObject* data, BOOL creation, DWORD reserved) noexcept override;
    STDMETHODIMP GetClipboardData(DWORD reserved, IDataObject** out) noexcept override;
    // A control without a site takes `activeSite`.
    STDMETHODIMP DoVerb(LONG verb, MSG* message, IOleClientSite* activeSite, LONG index, HWND parent,
                        LPCRECT position) noexcept override;
    STDMETHODIMP EnumVerbs(IEnumOLEVERB** out) noexcept override;
    STDMETHODIMP Update() noexcept override;
    STDMETHODIMP IsUpToDate() noexcept override;
    STDMETHODIMP GetUserClassID(CLSID* out) noexcept override;
    STDMETHODIMP GetUserType(DWORD form, LPOLESTR* out) noexcept override;
    STDMETHODIMP SetExtent(DWORD aspect, SIZEL* extent) noexcept override;
    STDMETHODIMP GetExtent(DWORD aspect, SIZEL* extent) noexcept override;
    STDMETHODIMP Advise(IAdviseSink* sink, DWORD* connection) noexcept override;
    STDMETHODIMP Unadvise(DWORD connection) noexcept override;
    STDMETHODIMP EnumAdvise(IEnumSTATDATA** out) noexcept override;
    STDMETHODIMP GetMiscStatus(DWORD aspect, DWORD* out) noexcept override;
    STDMETHODIMP SetColorScheme(LOGPALETTE* palette) noexcept override;

    STDMETHODIMP GetControlInfo(CONTROLINFO* out) noexcept override;
    STDMETHODIMP OnMnemonic(MSG* message) noexcept override;
    STDMETHODIMP OnAmbientPropertyChange(DISPID property) noexcept override;
    STDMETHODIMP FreezeEvents(BOOL freeze) noexcept override;

private:
    HRESULT Show() noexcept;

    bool closed_ = false;
};

}  // namespace zel
