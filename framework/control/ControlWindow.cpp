#include "ControlWindow.h"

#include "zel/com/Module.h"

namespace zel {
namespace {

constexpr wchar_t kClassName[] = L"zel.Control";

}  // namespace

HRESULT ControlWindow::Create(HWND parent, const RECT& position, Owner& owner) noexcept {
    Destroy();
    if (window_) return RPC_E_WRONG_THREAD;
    // Refused when another control was faster: the class is there all the same.
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
    return error ? HRESULT_FROM_WIN32(error) : E_FAIL;
}

// A window whose thread has ended went without a message.
void ControlWindow::Destroy() noexcept {
    const HWND window = window_;
    if (!window || DestroyWindow(window) || PostMessageW(window, WM_CLOSE, 0, 0)) return;
    if (!IsWindow(window)) Gone();
}

void ControlWindow::Leave() noexcept {
    left_ = true;
    Destroy();
}

// Dropping the owner may be its end, and that of this object.
void ControlWindow::Gone() noexcept {
    if (!InterlockedExchange(&exists_, FALSE)) return;
    window_ = nullptr;
    owner_->Drop();
}

void ControlWindow::ReleaseClass() noexcept { UnregisterClassW(kClassName, Module::Instance()); }

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
        self->owner_->Hold();
        self->exists_ = TRUE;
        self->window_ = window;
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(self));
        return 0;
    }
    auto* self = reinterpret_cast<ControlWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (self && message == WM_DESTROY) {
        SetWindowLongPtrW(window, GWLP_USERDATA, 0);
        self->Gone();
        self = nullptr;
    }
    return self && !self->left_ ? self->owner_->OnMessage(window, message, wParam, lParam)
                                : DefWindowProcW(window, message, wParam, lParam);
}

}  // namespace zel
