#pragma once

#include <windows.h>
#include <ole2.h>
#include <ocidl.h>

#include "ControlCore.h"
#include "ControlWindow.h"
#include "InPlaceSite.h"

namespace zel {

// A control in its place in the container (IOleInPlaceObjectWindowless, IOleInPlaceActiveObject and their
// bases): without a window where the container allows it, otherwise in a child of the container's window. The
// container's in-place interfaces are held from activation to deactivation. The control adds no tools to the
// container's frame and knows no undo, drop target or modal state.
class ControlInPlace : public IOleInPlaceObjectWindowless,
                       public IOleInPlaceActiveObject,
                       protected virtual ControlCore,
                       private ControlWindow::Owner {
public:
    // E_FAIL without a window.
    STDMETHODIMP GetWindow(HWND* out) noexcept override;
    STDMETHODIMP ContextSensitiveHelp(BOOL enter) noexcept override;

    STDMETHODIMP InPlaceDeactivate() noexcept override;
    STDMETHODIMP UIDeactivate() noexcept override;
    STDMETHODIMP SetObjectRects(LPCRECT position, LPCRECT clip) noexcept override;
    STDMETHODIMP ReactivateAndUndo() noexcept override;
    // S_FALSE leaves the default handling to the container.
    STDMETHODIMP OnWindowMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* out) noexcept override;
    STDMETHODIMP GetDropTarget(IDropTarget** out) noexcept override;

    // All keys are the container's: it is offered each of them once more.
    STDMETHODIMP TranslateAccelerator(MSG* message) noexcept override;
    STDMETHODIMP OnFrameWindowActivate(BOOL activate) noexcept override;
    STDMETHODIMP OnDocWindowActivate(BOOL activate) noexcept override;
    STDMETHODIMP ResizeBorder(LPCRECT border, IOleInPlaceUIWindow* window, BOOL frame) noexcept override;
    STDMETHODIMP EnableModeless(BOOL enable) noexcept override;

protected:
    HRESULT ActivateInPlace() noexcept override;
    HRESULT ActivateUI() noexcept override;
    void Hide() noexcept override;
    void Deactivate() noexcept override;
    bool Redraw() noexcept override;
    const RECT* WindowlessBounds() const noexcept override;

    // For the class of the control, when its last reference is gone: it is deleted by Delete, once its window
    // has gone too.
    void FinishWithWindow() noexcept;
    virtual void Delete() noexcept = 0;

private:
    void Hold() noexcept override { InterlockedIncrement(&holds_); }
    void Drop() noexcept override;
    LRESULT OnMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept override;

    HRESULT TakePlace(const InPlaceSite& site) noexcept;
    void LeavePlace() noexcept;
    void DeactivateUI() noexcept;
    void TakeFocus() noexcept;
    void AnnounceActiveObject(IOleInPlaceActiveObject* object) noexcept;
    // What a message means to a control with or without a window, before its default handling.
    void Notice(UINT message) noexcept;
    void PaintWindow(HWND window) noexcept;
    void PaintClient(HWND window, HDC hdc) noexcept;

    InPlaceSite site_;  // not empty: active
    ComPtr<IOleInPlaceFrame> frame_;
    ComPtr<IOleInPlaceUIWindow> document_;
    ControlWindow window_;
    RECT position_ = {};
    bool uiActive_ = false;
    volatile LONG holds_ = 1;  // of all references together, and of the window
};

}  // namespace zel
