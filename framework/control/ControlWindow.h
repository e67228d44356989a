#pragma once

#include <windows.h>

namespace zel {

// The window of a control that is active in its container, or none. The container's window may take it down
// at any time. Its window class lives as long as there are windows of it, so that none outlives the module.
class ControlWindow {
public:
    class Owner {
    public:
        // What a window procedure answers.
        virtual LRESULT OnMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept = 0;

    protected:
        ~Owner() = default;
    };

    ControlWindow() noexcept = default;
    ControlWindow(const ControlWindow&) = delete;
    ControlWindow& operator=(const ControlWindow&) = delete;
    // The owner is not told of anything any more.
    ~ControlWindow();

    // A visible child of `parent`, in its client coordinates. The owner must outlive the window.
    HRESULT Create(HWND parent, const RECT& position, Owner& owner) noexcept;
    void Destroy() noexcept;
    // Shows only what is inside `clip`, where that is not null. Does nothing without a window, as the others.
    void Move(const RECT& position, const RECT* clip) noexcept;
    void Show(bool visible) noexcept;
    void Redraw() noexcept;
    void TakeFocus() noexcept;

    HWND Get() const noexcept { return window_; }

private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    HWND window_ = nullptr;
    Owner* owner_ = nullptr;
};

}  // namespace zel
