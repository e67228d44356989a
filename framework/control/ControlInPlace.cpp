#include "ControlInPlace.h"

#include <olectl.h>

#include <utility>

namespace zel {
namespace {

// The message that a container reflected, where it is one of those that are reflected.
UINT Unreflected(UINT message) noexcept {
    switch (message) {
        case OCM_COMMAND:
        case OCM_CTLCOLORBTN:
        case OCM_CTLCOLOREDIT:
        case OCM_CTLCOLORDLG:
        case OCM_CTLCOLORLISTBOX:
        case OCM_CTLCOLORMSGBOX:
        case OCM_CTLCOLORSCROLLBAR:
        case OCM_CTLCOLORSTATIC:
        case OCM_DRAWITEM:
        case OCM_MEASUREITEM:
        case OCM_DELETEITEM:
        case OCM_VKEYTOITEM:
        case OCM_CHARTOITEM:
        case OCM_COMPAREITEM:
        case OCM_HSCROLL:
        case OCM_VSCROLL:
        case OCM_PARENTNOTIFY:
        case OCM_NOTIFY:
            return message - OCM__BASE;
        default:
            return message;
    }
}

// As IOleControlSite::TranslateAccelerator wants them: 1 for Shift, 2 for Control, 4 for Alt.
DWORD KeyModifiers() noexcept {
    const auto isDown = [](int key) { return GetKeyState(key) < 0; };
    return (isDown(VK_SHIFT) ? 1 : 0) | (isDown(VK_CONTROL) ? 2 : 0) | (isDown(VK_MENU) ? 4 : 0);
}

}  // namespace

HRESULT ControlInPlace::GetWindow(HWND* out) noexcept {
    if (!out) return E_POINTER;
    *out = window_.Get();
    return *out ? S_OK : E_FAIL;
}

HRESULT ControlInPlace::ContextSensitiveHelp(BOOL) noexcept { return S_OK; }

HRESULT ControlInPlace::InPlaceDeactivate() noexcept {
    const ComPtr<IOleInPlaceActiveObject> keep(this);
    Deactivate();
    return S_OK;
}

HRESULT ControlInPlace::UIDeactivate() noexcept {
    const ComPtr<IOleInPlaceActiveObject> keep(this);
    DeactivateUI();
    return S_OK;
}

HRESULT ControlInPlace::SetObjectRects(LPCRECT position, LPCRECT clip) noexcept {
    if (!position) return E_POINTER;
    position_ = *position;
    window_.Move(*position, clip);
    return S_OK;
}

HRESULT ControlInPlace::ReactivateAndUndo() noexcept { return INPLACE_E_NOTUNDOABLE; }

HRESULT ControlInPlace::OnWindowMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* out) noexcept {
    if (!out) return E_POINTER;
    *out = 0;
    if (!site_.Windowless()) return S_FALSE;
    const ComPtr<IOleInPlaceActiveObject> keep(this);
    const UINT original = Unreflected(message);
    if (original != message)
        return site_.Share().Windowless()->OnDefWindowMessage(original, wParam, lParam, out);
    Notice(message);
    return S_FALSE;
}

HRESULT ControlInPlace::GetDropTarget(IDropTarget** out) noexcept {
    if (!out) return E_POINTER;
    *out = nullptr;
    return E_NOTIMPL;
}

HRESULT ControlInPlace::TranslateAccelerator(MSG* message) noexcept {
    if (!message) return E_POINTER;
    if (message->message < WM_KEYFIRST || message->message > WM_KEYLAST) return S_FALSE;
    const auto site = SiteAs<IOleControlSite>();
    return site && site->TranslateAccelerator(message, KeyModifiers()) == S_OK ? S_OK : S_FALSE;
}

HRESULT ControlInPlace::OnFrameWindowActivate(BOOL) noexcept { return S_OK; }

HRESULT ControlInPlace::OnDocWindowActivate(BOOL activate) noexcept {
    const ComPtr<IOleInPlaceActiveObject> keep(this);
    if (activate && uiActive_) AnnounceActiveObject(this);
    return S_OK;
}

HRESULT ControlInPlace::ResizeBorder(LPCRECT, IOleInPlaceUIWindow*, BOOL) noexcept { return S_OK; }

HRESULT ControlInPlace::EnableModeless(BOOL) noexcept { return S_OK; }

HRESULT ControlInPlace::ActivateInPlace() noexcept {
    if (site_) {
        window_.Show(true);
        return S_OK;
    }
    const ComPtr<IOleClientSite> client(Site());
    if (!client) return E_FAIL;
    InPlaceSite site;
    HRESULT result = site.Activate(*client);
    if (FAILED(result)) return result;
    result = TakePlace(site);
    // The container may have taken its site back in the meantime.
    if (SUCCEEDED(result) && Site() != client.Get()) result = E_FAIL;
    if (SUCCEEDED(result)) {
        site_ = std::move(site);
        return S_OK;
    }
    LeavePlace();
    site.Deactivate();
    return result;
}

HRESULT ControlInPlace::TakePlace(const InPlaceSite& site) noexcept {
    RECT clip = {};
    OLEINPLACEFRAMEINFO accelerators = {};
    accelerators.cb = sizeof accelerators;
    HRESULT result = site->GetWindowContext(frame_.Out(), document_.Out(), &position_, &clip, &accelerators);
    if (FAILED(result) || site.Windowless()) return result;
    HWND parent = nullptr;
    result = site->GetWindow(&parent);
    if (SUCCEEDED(result)) result = window_.Create(parent, position_, *this);
    if (SUCCEEDED(result)) window_.Move(position_, &clip);
    return result;
}

void ControlInPlace::LeavePlace() noexcept {
    window_.Destroy();
    frame_.Reset();
    document_.Reset();
}

HRESULT ControlInPlace::ActivateUI() noexcept {
    HRESULT result = ActivateInPlace();
    if (FAILED(result) || uiActive_) return result;
    result = site_.Share().ActivateUI();
    if (FAILED(result)) return result;
    // The container may have changed its mind in the meantime.
    if (!site_) return E_FAIL;
    uiActive_ = true;
    TakeFocus();
    AnnounceActiveObject(this);
    return S_OK;
}

void ControlInPlace::TakeFocus() noexcept {
    const InPlaceSite site = site_.Share();
    if (site.Windowless())
        site.Windowless()->SetFocus(TRUE);
    else
        window_.TakeFocus();
}

// The container's own tools stay where they are.
void ControlInPlace::AnnounceActiveObject(IOleInPlaceActiveObject* object) noexcept {
    const auto frame = frame_.Share();
    const auto document = document_.Share();
    for (IOleInPlaceUIWindow* window : {static_cast<IOleInPlaceUIWindow*>(frame.Get()), document.Get()}) {
        if (!window) continue;
        window->SetActiveObject(object, nullptr);
        if (object) window->SetBorderSpace(nullptr);
    }
}

void ControlInPlace::DeactivateUI() noexcept {
    if (!std::exchange(uiActive_, false)) return;
    const InPlaceSite site = site_.Share();
    AnnounceActiveObject(nullptr);
    site->OnUIDeactivate(FALSE);
}

// What the container calls back meanwhile finds the control inactive already.
void ControlInPlace::Deactivate() noexcept {
    DeactivateUI();
    InPlaceSite site = std::move(site_);
    if (!site) return;
    LeavePlace();
    site.Deactivate();
}

void ControlInPlace::Hide() noexcept {
    DeactivateUI();
    window_.Show(false);
}

bool ControlInPlace::Redraw() noexcept {
    const InPlaceSite site = site_.Share();
    if (!site) return false;
    if (site.Windowless())
        site.Windowless()->InvalidateRect(nullptr, FALSE);
    else
        window_.Redraw();
    return true;
}

const RECT* ControlInPlace::WindowlessBounds() const noexcept {
    return site_.Windowless() ? &position_ : nullptr;
}

void ControlInPlace::FinishWithWindow() noexcept {
    window_.Leave();
    Drop();
}

void ControlInPlace::Drop() noexcept {
    if (InterlockedDecrement(&holds_) == 0) Delete();
}

LRESULT ControlInPlace::OnMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    const ComPtr<IOleInPlaceActiveObject> keep(this);
    switch (message) {
        case WM_PAINT:
            PaintWindow(window);
            return 0;
        case WM_PRINTCLIENT:
            PaintClient(window, reinterpret_cast<HDC>(wParam));
            return 0;
        case WM_ERASEBKGND:  // painting covers everything
            return 1;
        default:
            Notice(message);
            return DefWindowProcW(window, Unreflected(message), wParam, lParam);
    }
}

void ControlInPlace::Notice(UINT message) noexcept {
    if (message == WM_LBUTTONDOWN && IsUserMode()) ActivateUI();
    if (message != WM_SETFOCUS && message != WM_KILLFOCUS) return;
    if (const auto site = SiteAs<IOleControlSite>()) site->OnFocus(message == WM_SETFOCUS);
}

void ControlInPlace::PaintWindow(HWND window) noexcept {
    PAINTSTRUCT paint;
    HDC hdc = BeginPaint(window, &paint);
    if (!hdc) return;
    PaintClient(window, hdc);
    EndPaint(window, &paint);
}

void ControlInPlace::PaintClient(HWND window, HDC hdc) noexcept {
    RECT bounds;
    GetClientRect(window, &bounds);
    Paint(hdc, bounds);
}

}  // namespace zel
