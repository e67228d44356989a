#pragma once

#include <windows.h>
#include <ole2.h>
#include <ocidl.h>
#include <olectl.h>

#include <string>

#include "Variant.h"

namespace zel {

// How much of in-place activation a container knows.
enum class Site { kPlain, kExtended, kWindowless };

// A container that writes down what it is asked, and refuses the call of a given number. One object is all of
// its sides: sites, frame, document, ambient properties, advise sink. It lives on the test's stack; what is
// counted are the control's references to it.
class Container : public IOleClientSite,
                  public IOleInPlaceSiteWindowless,
                  public IOleControlSite,
                  public IOleInPlaceFrame,
                  public IAdviseSink,
                  public IDispatch {
public:
    // Without a window of the test's it has a hidden one of its own.
    explicit Container(Site site, int refusedCall = 0, HWND window = nullptr)
        : site_(site),
          refusedCall_(refusedCall),
          own_(window ? nullptr
                      : CreateWindowExW(0, L"static", L"", WS_POPUP, 0, 0, 300, 200, nullptr, nullptr,
                                        nullptr, nullptr)),
          window_(window ? window : own_) {}
    Container(const Container&) = delete;
    ~Container() {
        if (own_) DestroyWindow(own_);
    }

    IOleClientSite* Client() { return this; }
    IAdviseSink* Sink() { return this; }
    HWND Window() const { return window_; }
    // What was called since the last time, in one line.
    std::string TakeLog() { return std::exchange(log_, {}); }
    int Calls() const { return calls_; }
    LONG References() const { return references_; }
    int Places() const { return places_; }
    bool IsUserMode = true;
    // Called back from OnUIDeactivate, once.
    IOleObject* CloseFromWithin = nullptr;

    STDMETHODIMP QueryInterface(REFIID iid, void** out) noexcept override {
        *out = nullptr;
        if (iid == IID_IUnknown || iid == IID_IOleClientSite) *out = static_cast<IOleClientSite*>(this);
        if (iid == IID_IOleControlSite) *out = static_cast<IOleControlSite*>(this);
        if (iid == IID_IDispatch) *out = static_cast<IDispatch*>(this);
        if (iid == IID_IAdviseSink) *out = static_cast<IAdviseSink*>(this);
        if (iid == IID_IOleInPlaceSite || (iid == IID_IOleInPlaceSiteEx && site_ != Site::kPlain) ||
            (iid == IID_IOleInPlaceSiteWindowless && site_ == Site::kWindowless))
            *out = static_cast<IOleInPlaceSiteWindowless*>(this);
        if (!*out) return E_NOINTERFACE;
        if (Refuses()) return *out = nullptr, E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() noexcept override { return ++references_; }
    STDMETHODIMP_(ULONG) Release() noexcept override { return --references_; }

    STDMETHODIMP SaveObject() noexcept override { return Call("SaveObject"); }
    STDMETHODIMP GetMoniker(DWORD, DWORD, IMoniker**) noexcept override { return E_NOTIMPL; }
    STDMETHODIMP GetContainer(IOleContainer**) noexcept override { return E_NOTIMPL; }
    STDMETHODIMP ShowObject() noexcept override { return Call("ShowObject"); }
    STDMETHODIMP OnShowWindow(BOOL) noexcept override { return Call("OnShowWindow"); }
    STDMETHODIMP RequestNewObjectLayout() noexcept override { return E_NOTIMPL; }

    STDMETHODIMP GetWindow(HWND* out) noexcept override { return *out = window_, Call("GetWindow"); }
    STDMETHODIMP ContextSensitiveHelp(BOOL) noexcept override { return S_OK; }
    STDMETHODIMP CanInPlaceActivate() noexcept override { return Call("CanInPlaceActivate"); }
    STDMETHODIMP OnInPlaceActivate() noexcept override { return Enter("OnInPlaceActivate"); }
    STDMETHODIMP OnUIActivate() noexcept override { return Call("OnUIActivate"); }
    STDMETHODIMP GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** document, RECT* position,
                                  RECT* clip, OLEINPLACEFRAMEINFO*) noexcept override {
        *frame = nullptr;
        *document = nullptr;
        if (FAILED(Call("GetWindowContext"))) return E_FAIL;
        *frame = this;
        AddRef();
        *position = {10, 20, 110, 80};
        *clip = {0, 0, 300, 200};
        return S_OK;
    }
    STDMETHODIMP Scroll(SIZE) noexcept override { return E_NOTIMPL; }
    STDMETHODIMP OnUIDeactivate(BOOL) noexcept override {
        if (IOleObject* object = std::exchange(CloseFromWithin, nullptr)) object->Close(OLECLOSE_NOSAVE);
        return Call("OnUIDeactivate");
    }
    STDMETHODIMP OnInPlaceDeactivate() noexcept override { return --places_, Call("OnInPlaceDeactivate"); }
    STDMETHODIMP DiscardUndoState() noexcept override { return E_NOTIMPL; }
    STDMETHODIMP DeactivateAndUndo() noexcept override { return E_NOTIMPL; }
    STDMETHODIMP OnPosRectChange(LPCRECT) noexcept override { return E_NOTIMPL; }
    STDMETHODIMP OnInPlaceActivateEx(BOOL*, DWORD flags) noexcept override {
        return Enter(flags & ACTIVATE_WINDOWLESS ? "OnInPlaceActivateEx(windowless)" : "OnInPlaceActivateEx");
    }
    STDMETHODIMP OnInPlaceDeactivateEx(BOOL) noexcept override {
        return --places_, Call("OnInPlaceDeactivateEx");
    }
    STDMETHODIMP RequestUIActivate() noexcept override { return Call("RequestUIActivate", S_FALSE); }
    STDMETHODIMP CanWindowlessActivate() noexcept override { return Call("CanWindowlessActivate", S_FALSE); }
    STDMETHODIMP GetCapture() noexcept override { return S_FALSE; }
    STDMETHODIMP SetCapture(BOOL) noexcept override { return E_NOTIMPL; }
    STDMETHODIMP GetFocus() noexcept override { return S_FALSE; }
    STDMETHODIMP SetFocus(BOOL) noexcept override { return Call("SetFocus"); }
    STDMETHODIMP GetDC(LPCRECT, DWORD, HDC*) noexcept override { return E_NOTIMPL; }
    STDMETHODIMP ReleaseDC(HDC) noexcept override { return E_NOTIMPL; }
    STDMETHODIMP InvalidateRect(LPCRECT, BOOL) noexcept override { return Call("InvalidateRect"); }
    STDMETHODIMP InvalidateRgn(HRGN, BOOL) noexcept override { return E_NOTIMPL; }
    STDMETHODIMP ScrollRect(INT, INT, LPCRECT, LPCRECT) noexcept override { return E_NOTIMPL; }
    STDMETHODIMP AdjustRect(RECT*) noexcept override { return E_NOTIMPL; }
    STDMETHODIMP OnDefWindowMessage(UINT message, WPARAM, LPARAM, LRESULT* out) noexcept override {
        *out = message;
        return Call("OnDefWindowMessage");
    }

    STDMETHODIMP OnControlInfoChanged() noexcept override { return E_NOTIMPL; }
    STDMETHODIMP LockInPlaceActive(BOOL) noexcept override { return E_NOTIMPL; }
    STDMETHODIMP GetExtendedControl(IDispatch**) noexcept override { return E_NOTIMPL; }
    STDMETHODIMP TransformCoords(POINTL*, POINTF*, DWORD) noexcept override { return E_NOTIMPL; }
    STDMETHODIMP TranslateAccelerator(MSG*, DWORD) noexcept override { return Call("TranslateAccelerator"); }
    STDMETHODIMP OnFocus(BOOL) noexcept override { return S_OK; }
    STDMETHODIMP ShowPropertyFrame() noexcept override { return E_NOTIMPL; }

    STDMETHODIMP GetBorder(RECT*) noexcept override { return E_NOTIMPL; }
    STDMETHODIMP RequestBorderSpace(LPCBORDERWIDTHS) noexcept override { return E_NOTIMPL; }
    STDMETHODIMP SetBorderSpace(LPCBORDERWIDTHS) noexcept override { return Call("SetBorderSpace"); }
    STDMETHODIMP SetActiveObject(IOleInPlaceActiveObject* object, LPCOLESTR) noexcept override {
        return Call(object ? "SetActiveObject" : "SetActiveObject(null)");
    }
    STDMETHODIMP InsertMenus(HMENU, OLEMENUGROUPWIDTHS*) noexcept override { return E_NOTIMPL; }
    STDMETHODIMP SetMenu(HMENU, HOLEMENU, HWND) noexcept override { return E_NOTIMPL; }
    STDMETHODIMP RemoveMenus(HMENU) noexcept override { return E_NOTIMPL; }
    STDMETHODIMP SetStatusText(LPCOLESTR) noexcept override { return E_NOTIMPL; }
    STDMETHODIMP EnableModeless(BOOL) noexcept override { return E_NOTIMPL; }
    STDMETHODIMP TranslateAccelerator(MSG*, WORD) noexcept override { return E_NOTIMPL; }

    STDMETHODIMP_(void) OnDataChange(FORMATETC*, STGMEDIUM*) noexcept override { Call("OnDataChange"); }
    STDMETHODIMP_(void) OnViewChange(DWORD, LONG) noexcept override { Call("OnViewChange"); }
    STDMETHODIMP_(void) OnRename(IMoniker*) noexcept override { Call("OnRename"); }
    STDMETHODIMP_(void) OnSave() noexcept override { Call("OnSave"); }
    STDMETHODIMP_(void) OnClose() noexcept override { Call("OnClose"); }

    STDMETHODIMP GetTypeInfoCount(UINT*) noexcept override { return E_NOTIMPL; }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) noexcept override { return E_NOTIMPL; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) noexcept override { return E_NOTIMPL; }
    STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* value, EXCEPINFO*,
                        UINT*) noexcept override {
        if (Refuses() || id != DISPID_AMBIENT_USERMODE) return DISP_E_MEMBERNOTFOUND;
        V_VT(value) = VT_BOOL;
        V_BOOL(value) = IsUserMode ? VARIANT_TRUE : VARIANT_FALSE;
        return S_OK;
    }

private:
    bool Refuses() { return ++calls_ == refusedCall_; }
    HRESULT Call(const char* name, HRESULT refusal = E_FAIL) {
        log_ += log_.empty() ? name : std::string(" ") + name;
        return Refuses() ? refusal : S_OK;
    }
    HRESULT Enter(const char* name) {
        const HRESULT result = Call(name);
        if (SUCCEEDED(result)) ++places_;
        return result;
    }

    const Site site_;
    const int refusedCall_;
    const HWND own_;
    const HWND window_;
    std::string log_;
    int calls_ = 0;
    int places_ = 0;
    LONG references_ = 0;
};

}  // namespace zel
