#include "ControlObject.h"

#include <utility>

#include "OleFunctions.h"

namespace zel {

HRESULT ControlObject::SetClientSite(IOleClientSite* site) noexcept {
    const ComPtr<IOleObject> keep(this);
    if (site != Site()) Deactivate();
    SetSite(site);
    return S_OK;
}

HRESULT ControlObject::GetClientSite(IOleClientSite** out) noexcept {
    if (!out) return E_POINTER;
    *out = Site();
    if (*out) (*out)->AddRef();
    return S_OK;
}

// The names are for a window of the control's own, which it never opens.
HRESULT ControlObject::SetHostNames(LPCOLESTR, LPCOLESTR) noexcept { return S_OK; }

HRESULT ControlObject::Close(DWORD option) noexcept {
    if (option > OLECLOSE_PROMPTSAVE) return E_INVALIDARG;
    const ComPtr<IOleObject> keep(this);
    const ComPtr<IOleClientSite> site(Site());
    HRESULT result = S_OK;
    if (option != OLECLOSE_NOSAVE && IsDirty() && site) result = site->SaveObject();
    Deactivate();
    if (!std::exchange(closed_, true)) Advises().SendClose();
    return FAILED(result) ? result : S_OK;
}

HRESULT ControlObject::SetMoniker(DWORD, IMoniker*) noexcept { return E_NOTIMPL; }

HRESULT ControlObject::GetMoniker(DWORD, DWORD, IMoniker** out) noexcept {
    if (!out) return E_POINTER;
    *out = nullptr;
    return E_NOTIMPL;
}

HRESULT ControlObject::InitFromData(IDataObject*, BOOL, DWORD) noexcept { return E_NOTIMPL; }

HRESULT ControlObject::GetClipboardData(DWORD, IDataObject** out) noexcept {
    if (!out) return E_POINTER;
    *out = nullptr;
    return E_NOTIMPL;
}

HRESULT ControlObject::DoVerb(LONG verb, MSG*, IOleClientSite* activeSite, LONG, HWND, LPCRECT) noexcept {
    const ComPtr<IOleObject> keep(this);
    closed_ = false;
    if (!Site()) SetSite(activeSite);
    switch (verb) {
        case OLEIVERB_PRIMARY:
        case OLEIVERB_SHOW:
            return Show();
        case OLEIVERB_HIDE:
            Hide();
            return S_OK;
        case OLEIVERB_UIACTIVATE:
            return ActivateUI();
        case OLEIVERB_INPLACEACTIVATE:
            return ActivateInPlace();
        case OLEIVERB_DISCARDUNDOSTATE:
            return S_OK;
        default:
            break;
    }
    if (verb < 0) return E_NOTIMPL;
    const HRESULT result = Show();
    return FAILED(result) ? result : OLEOBJ_S_INVALIDVERB;
}

// A container that cannot scroll the control into view may still give it its place.
HRESULT ControlObject::Show() noexcept {
    if (const ComPtr<IOleClientSite> site{Site()}) site->ShowObject();
    return IsUserMode() ? ActivateUI() : ActivateInPlace();
}

HRESULT ControlObject::EnumVerbs(IEnumOLEVERB** out) noexcept {
    if (!out) return E_POINTER;
    *out = nullptr;
    return SUCCEEDED(OleFunctions::EnumVerbs(ClassId(), out)) ? S_OK : OLEOBJ_E_NOVERBS;
}

HRESULT ControlObject::Update() noexcept { return S_OK; }

HRESULT ControlObject::IsUpToDate() noexcept { return S_OK; }

HRESULT ControlObject::GetUserClassID(CLSID* out) noexcept {
    if (!out) return E_POINTER;
    *out = ClassId();
    return S_OK;
}

HRESULT ControlObject::GetUserType(DWORD form, LPOLESTR* out) noexcept {
    if (!out) return E_POINTER;
    *out = nullptr;
    return OleFunctions::GetUserType(ClassId(), form, out);
}

HRESULT ControlObject::SetExtent(DWORD aspect, SIZEL* extent) noexcept {
    if (!extent) return E_POINTER;
    if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
    if (extent->cx < 0 || extent->cy < 0) return E_INVALIDARG;
    const ComPtr<IOleObject> keep(this);
    if (extent->cx != Extent().cx || extent->cy != Extent().cy) SetDirty(true);
    ChangeExtent(*extent);
    return S_OK;
}

HRESULT ControlObject::GetExtent(DWORD aspect, SIZEL* extent) noexcept {
    if (!extent) return E_POINTER;
    if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
    *extent = Extent();
    return S_OK;
}

HRESULT ControlObject::Advise(IAdviseSink* sink, DWORD* connection) noexcept {
    return Advises().Advise(sink, connection);
}

HRESULT ControlObject::Unadvise(DWORD connection) noexcept { return Advises().Unadvise(connection); }

HRESULT ControlObject::EnumAdvise(IEnumSTATDATA** out) noexcept { return Advises().Enumerate(out); }

HRESULT ControlObject::GetMiscStatus(DWORD aspect, DWORD* out) noexcept {
    if (!out) return E_POINTER;
    *out = 0;
    return OleFunctions::GetMiscStatus(ClassId(), aspect, out);
}

HRESULT ControlObject::SetColorScheme(LOGPALETTE*) noexcept { return E_NOTIMPL; }

HRESULT ControlObject::GetControlInfo(CONTROLINFO*) noexcept { return E_NOTIMPL; }

HRESULT ControlObject::OnMnemonic(MSG*) noexcept { return E_NOTIMPL; }

// Ambient properties are asked for when they are needed, never kept.
HRESULT ControlObject::OnAmbientPropertyChange(DISPID) noexcept { return S_OK; }

HRESULT ControlObject::FreezeEvents(BOOL) noexcept { return S_OK; }

}  // namespace zel
