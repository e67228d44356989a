#pragma once

#include <windows.h>
#include <ole2.h>
#include <ocidl.h>
#include <olectl.h>

#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <string>
#include <utility>

#include "zel/com/Module.h"

namespace zel {

// How much of in-place activation a container knows.
enum class Site { kPlain, kExtended, kWindowless };

// clang-format off
#define RECORDED(method) STDMETHODIMP method noexcept override { return Call(__func__); }
#define ASKED(method) STDMETHODIMP method noexcept override { return Call(__func__, S_FALSE); }
#define TOLD(method) STDMETHODIMP_(void) method noexcept override { Call(__func__); }
#define REFUSED(method) STDMETHODIMP method noexcept override { return E_NOTIMPL; }
#define THREE(kind, a, b, c) kind(a) kind(b) kind(c)
// clang-format on

// A container that writes down what it is asked. At the call of a given number it refuses, or does what it
// was given. One object is all of its sides: sites, frame, ambient properties, advise sink, a full stream. It
// lives on the test's stack and outlives all that the control has of it: references and a window.
class Container : public IOleClientSite,
                  public IOleInPlaceSiteWindowless,
                  public IOleControlSite,
                  public IOleInPlaceFrame,
                  public IAdviseSinkEx,
                  public IDispatch,
                  public IStream {
public:
    explicit Container(Site site, int disturbedCall = 0, std::function<void()> disturb = {})
        : site_(site), disturbedCall_(disturbedCall), disturb_(std::move(disturb)) {}
    ~Container() {
        EXPECT_EQ(references_, 0);
        EXPECT_EQ(ControlWindow(), nullptr);
        DestroyWindow(Window);
    }

    const HWND Window =
        CreateWindowExW(0, L"static", L"", WS_POPUP, 0, 0, 400, 220, nullptr, nullptr, nullptr, nullptr);
    std::optional<bool> IsUserMode = true;  // or it does not say
    bool IsReleasedLate = false;            // when nothing held the module any more
    int Calls = 0;
    int Places = 0;  // activations not yet ended

    HWND ControlWindow() const { return ::GetWindow(Window, GW_CHILD); }
    // What was called since the last time, in one line.
    std::string TakeLog() { return std::exchange(log_, {}); }

    STDMETHODIMP QueryInterface(REFIID iid, void** out) noexcept override {
        *out = nullptr;
        if (iid == IID_IUnknown || iid == IID_IOleClientSite) *out = static_cast<IOleClientSite*>(this);
        if (iid == IID_IOleControlSite) *out = static_cast<IOleControlSite*>(this);
        if (iid == IID_IDispatch) *out = static_cast<IDispatch*>(this);
        if (iid == IID_IAdviseSink) *out = static_cast<IAdviseSinkEx*>(this);
        if (iid == IID_IOleInPlaceSite || (iid == IID_IOleInPlaceSiteEx && site_ != Site::kPlain) ||
            (iid == IID_IOleInPlaceSiteWindowless && site_ == Site::kWindowless))
            *out = static_cast<IOleInPlaceSiteWindowless*>(this);
        if (!*out || Refuses()) return *out = nullptr, E_NOINTERFACE;
        return AddRef(), S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() noexcept override { return ++references_; }
    STDMETHODIMP_(ULONG) Release() noexcept override {
        IsReleasedLate |= Module::LockCount() == 0;
        return --references_;
    }

    STDMETHODIMP GetWindow(HWND* out) noexcept override { return *out = Window, Call(__func__); }
    STDMETHODIMP OnInPlaceActivateEx(BOOL*, DWORD flags) noexcept override {
        return Call(flags & ACTIVATE_WINDOWLESS ? "OnInPlaceActivateEx(windowless)" : __func__);
    }
    STDMETHODIMP GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** document, RECT* position,
                                  RECT* clip, OLEINPLACEFRAMEINFO*) noexcept override {
        if (FAILED(Call(__func__))) return *frame = nullptr, *document = nullptr, E_FAIL;
        (*frame = this)->AddRef();
        *document = nullptr;
        *position = *clip = {10, 20, 110, 80};
        return S_OK;
    }
    STDMETHODIMP OnDefWindowMessage(UINT message, WPARAM, LPARAM, LRESULT* out) noexcept override {
        return *out = message == WM_CTLCOLORSTATIC, Call(__func__);
    }
    STDMETHODIMP SetActiveObject(IOleInPlaceActiveObject* object, LPCOLESTR) noexcept override {
        return Call(object ? __func__ : "SetActiveObject(null)");
    }
    STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* value, EXCEPINFO*,
                        UINT*) noexcept override {
        if (Refuses() || id != DISPID_AMBIENT_USERMODE || !IsUserMode) return DISP_E_MEMBERNOTFOUND;
        V_VT(value) = VT_BOOL;
        V_BOOL(value) = *IsUserMode ? VARIANT_TRUE : VARIANT_FALSE;
        return S_OK;
    }
    THREE(ASKED, CanInPlaceActivate(), CanWindowlessActivate(), RequestUIActivate())
    STDMETHODIMP TranslateAccelerator(MSG*, DWORD modifiers) noexcept override {
        return Call("TranslateAccelerator(" + std::to_string(modifiers) + ")");
    }
    STDMETHODIMP Write(const void*, ULONG size, ULONG* written) noexcept override {
        return *written = size - 1, S_OK;
    }
    RECORDED(SaveObject())
    RECORDED(ShowObject())
    THREE(RECORDED, OnInPlaceActivate(), OnInPlaceDeactivate(), OnInPlaceDeactivateEx(BOOL))
    THREE(RECORDED, OnUIActivate(), OnUIDeactivate(BOOL), SetBorderSpace(LPCBORDERWIDTHS))
    THREE(RECORDED, SetFocus(BOOL), InvalidateRect(LPCRECT, BOOL), OnFocus(BOOL))
    THREE(TOLD, OnDataChange(FORMATETC*, STGMEDIUM*), OnViewChange(DWORD, LONG), OnRename(IMoniker*))
    THREE(TOLD, OnSave(), OnClose(), OnViewStatusChange(DWORD))

    THREE(REFUSED, GetMoniker(DWORD, DWORD, IMoniker**), GetContainer(IOleContainer**), OnShowWindow(BOOL))
    THREE(REFUSED, RequestNewObjectLayout(), ContextSensitiveHelp(BOOL), Scroll(SIZE))
    THREE(REFUSED, DiscardUndoState(), DeactivateAndUndo(), OnPosRectChange(LPCRECT))
    THREE(REFUSED, GetCapture(), SetCapture(BOOL), GetFocus())
    THREE(REFUSED, GetDC(LPCRECT, DWORD, HDC*), ReleaseDC(HDC), InvalidateRgn(HRGN, BOOL))
    THREE(REFUSED, ScrollRect(INT, INT, LPCRECT, LPCRECT), AdjustRect(RECT*), OnControlInfoChanged())
    THREE(REFUSED, LockInPlaceActive(BOOL), GetExtendedControl(IDispatch**), GetTypeInfoCount(UINT*))
    THREE(REFUSED, TransformCoords(POINTL*, POINTF*, DWORD), ShowPropertyFrame(), GetBorder(RECT*))
    THREE(REFUSED, RequestBorderSpace(LPCBORDERWIDTHS), SetMenu(HMENU, HOLEMENU, HWND), RemoveMenus(HMENU))
    THREE(REFUSED, InsertMenus(HMENU, OLEMENUGROUPWIDTHS*), SetStatusText(LPCOLESTR), EnableModeless(BOOL))
    THREE(REFUSED, TranslateAccelerator(MSG*, WORD), GetTypeInfo(UINT, LCID, ITypeInfo**),
          GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*))
    THREE(REFUSED, Read(void*, ULONG, ULONG*), Seek(LARGE_INTEGER, DWORD, ULARGE_INTEGER*), Revert())
    THREE(REFUSED, LockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD), Commit(DWORD), Clone(IStream**))
    THREE(REFUSED, UnlockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD), SetSize(ULARGE_INTEGER),
          CopyTo(IStream*, ULARGE_INTEGER, ULARGE_INTEGER*, ULARGE_INTEGER*))
    REFUSED(Stat(STATSTG*, DWORD))

private:
    bool Refuses() {
        if (++Calls != disturbedCall_) return false;
        if (disturb_) disturb_();
        return !disturb_;
    }
    HRESULT Call(const std::string& name, HRESULT refusal = E_FAIL) {
        log_ += (log_.empty() ? "" : " ") + name;
        Places -= name.find("OnInPlaceDeactivate") == 0;
        if (Refuses()) return refusal;
        Places += name.find("OnInPlaceActivate") == 0;
        return S_OK;
    }

    const Site site_;
    const int disturbedCall_;
    const std::function<void()> disturb_;
    LONG references_ = 0;
    std::string log_;
};

#undef THREE
#undef REFUSED
#undef TOLD
#undef ASKED
#undef RECORDED

}  // namespace zel
