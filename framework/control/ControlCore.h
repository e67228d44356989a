#pragma once

#include <windows.h>
#include <ole2.h>

#include "AdviseHolders.h"
#include "zel/com/ComPtr.h"
#include "zel/com/Variant.h"

namespace zel {

// What the interface families of one control share: its class, its extent, its container's site and advise
// connections, and what one family asks of another. The families derive from it virtually, so the control's
// own class constructs it. Extents are in HIMETRIC (0.01 mm).
class ControlCore {
protected:
    ControlCore(const CLSID& clsid, const SIZEL& naturalExtent) noexcept
        : clsid_(clsid), natural_(naturalExtent), extent_(naturalExtent) {}
    virtual ~ControlCore() = default;

    // What the control looks like: fills `bounds`, leaves the device context as it was. 0 on success.
    virtual HRESULT Paint(HDC hdc, const RECT& bounds) noexcept = 0;

    // In-place activation (ControlInPlace).
    virtual HRESULT ActivateInPlace() noexcept = 0;
    virtual HRESULT ActivateUI() noexcept = 0;
    virtual void Hide() noexcept = 0;
    virtual void Deactivate() noexcept = 0;
    // Repaints what is active; false when the control is not active and its container shows it.
    virtual bool Redraw() noexcept = 0;
    // The rectangle a windowless control has in its container's window, null for every other control.
    virtual const RECT* WindowlessBounds() const noexcept = 0;
    // The data side (ControlData), as advise sinks are told of it.
    virtual IDataObject* Data() noexcept = 0;

    const CLSID& ClassId() const noexcept { return clsid_; }
    const SIZEL& NaturalExtent() const noexcept { return natural_; }
    const SIZEL& Extent() const noexcept { return extent_; }
    // Announces a change of view and data; whether the control is dirty is the caller's to say.
    void ChangeExtent(const SIZEL& extent) noexcept;

    bool IsDirty() const noexcept { return dirty_; }
    void SetDirty(bool dirty) noexcept { dirty_ = dirty; }

    IOleClientSite* Site() const noexcept { return site_.Get(); }
    void SetSite(IOleClientSite* site) noexcept { site_ = ComPtr<IOleClientSite>(site); }
    // Another interface of the client site, or none.
    template <class T>
    ComPtr<T> SiteAs() const noexcept {
        return site_.As<T>();
    }
    // A property of the container's surroundings; empty when it has none of that number.
    Variant Ambient(DISPID property) const noexcept;
    // Containers that do not say are in user mode.
    bool IsUserMode() const noexcept;

    AdviseHolders& Advises() noexcept { return advises_; }
    // Gives back everything that belongs to the container, in-place activation aside.
    void ReleaseContainer() noexcept;

private:
    const CLSID& clsid_;
    const SIZEL natural_;
    SIZEL extent_;
    bool dirty_ = false;
    ComPtr<IOleClientSite> site_;
    AdviseHolders advises_;
};

}  // namespace zel
