#include "ControlWindow.h"

#include "zel/com/Module.h"

namespace zel {
namespace {

constexpr wchar_t kClassName[] = L"zel.Control";

}  // namespace

ControlWindow::~ControlWindow() {
    owner_ = nullptr;
    Destroy();
}

HRESULT ControlWindow::Create(HWND parent, const RECT& position, Owner& owner) noexcept {
    Destroy();
    WNDCLASSW windowClass = {};
    windowClass.style = CS_HREDRAW | CS_VREDRAW;
    windowClass.lpfnWndProc = &Procedure;
    windowClass.hInstance = Module::Instance();
    windowClass.lpszClassName = kClassName;
    RegisterClassW(&windowClass);
    owner_ = &owner;
    CreateWindowExW(0, kClassName, L"", WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | WS_CLIPCHILDREN,
                    position.left, position.top, position.right - position.left,
                    position.bottom - position.top, parent, nullptr, Module::Instance(), this);
    if (window_) return S_OK;
    const DWORD error = GetLastError();
    UnregisterClassW(kClassName, Module::Instance());
    return error ? HRESULT_FROM_WIN32(error) : E_FAIL;
}

// The class stays while another control still has a window: the system refuses to remove it. It goes also
// when the container took the window down.
void ControlWindow::Destroy() noexcept {
    if (window_) DestroyWindow(window_);
    UnregisterClassW(kClassName, Module::Instance());
}

void ControlWindow::Move(const RECT& position, const RECT* clip) noexcept {
    if (!window_) return;
    RECT visible = position;
    if (clip) IntersectRect(&visible, &position, clip);
    HRGN region = nullptr;
    if (!EqualRect(&visible, &position)) {
        if (!IsRectEmpty(&visible)) OffsetRect(&visible, -position.left, -position.top);
        region = CreateRectRgnIndirect(&visible);
    }
    // The region is the window's once the window has accepted it.
    if (!SetWindowRgn(window_, region, TRUE) && region) DeleteObject(region);
    SetWindowPos(window_, nullptr, position.left, position.top, position.right - position.left,
                 position.bottom - position.top, SWP_NOZORDER | SWP_NOACTIVATE);
}

void ControlWindow::Show(bool visible) noexcept {
    if (window_) ShowWindow(window_, visible ? SW_SHOW : SW_HIDE);
}

void ControlWindow::Redraw() noexcept {
    if (window_) InvalidateRect(window_, nullptr, FALSE);
}

void ControlWindow::TakeFocus() noexcept {
    if (window_ && GetFocus() != window_) SetFocus(window_);
}

LRESULT CALLBACK ControlWindow::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_CREATE) {
        auto* self = static_cast<ControlWindow*>(reinterpret_cast<CREATESTRUCTW*>(lParam)->lpCreateParams);
        self->window_ = window;
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(self));
        return 0;
    }
    auto* self = reinterpret_cast<ControlWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (self && message == WM_DESTROY) {
        SetWindowLongPtrW(window, GWLP_USERDATA, 0);
        self->window_ = nullptr;
        self = nullptr;
    }
    Owner* owner = self ? self->owner_ : nullptr;
    return owner ? owner->OnMessage(window, message, wParam, lParam)
                 : DefWindowProcW(window, message, wParam, lParam);
}

}  // namespace zel
