#pragma once

#include <windows.h>

namespace zel {

// The window of a control that is active in its container, or none. The container's window may take it down
// at any time. Only the thread that made it can: on any other it is asked to go, and holds its owner until
// it does. Its window class is registered with the first window and stays until ReleaseClass.
class ControlWindow {
public:
    class Owner {
    public:
        // What a window procedure answers.
        virtual LRESULT OnMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept = 0;
        // Keeps this object's memory, beside all references, until Drop.
        virtual void Hold() noexcept = 0;
        virtual void Drop() noexcept = 0;

    protected:
        ~Owner() = default;
    };

    ControlWindow() noexcept = default;
    ControlWindow(const ControlWindow&) = delete;
    ControlWindow& operator=(const ControlWindow&) = delete;

    // A visible child of `parent`, in its client coordinates.
    HRESULT Create(HWND parent, const RECT& position, Owner& owner) noexcept;
    void Destroy() noexcept;
    // Destroy, and the owner is told of no message any more.
    void Leave() noexcept;
    // Shows only what is inside `clip`, where that is not null. Does nothing without a window, as the others.
    void Move(const RECT& position, const RECT* clip) noexcept;
    void Show(bool visible) noexcept;
    void Redraw() noexcept;
    void TakeFocus() noexcept;

    HWND Get() const noexcept { return window_; }

    // For a module that goes: it has no windows any more.
    static void ReleaseClass() noexcept;

private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    void Gone() noexcept;

    HWND volatile window_ = nullptr;
    volatile LONG exists_ = FALSE;
    volatile bool left_ = false;
    Owner* owner_ = nullptr;
};

}  // namespace zel
