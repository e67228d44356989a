#pragma once

#include <windows.h>
#include <ole2.h>
#include <ocidl.h>

#include "zel/com/ComPtr.h"

namespace zel {

// The container's side of in-place activation, by the most capable of three interfaces that it has. Empty, or
// told of an activation that Deactivate must end.
class InPlaceSite {
public:
    // Asks the container for a place; nothing is left to undo when that fails.
    HRESULT Activate(IOleClientSite& client) noexcept;
    void Deactivate() noexcept;
    // Asks the container to make the control the one with the user interface.
    HRESULT ActivateUI() noexcept;
    void Reset() noexcept { site_.Reset(); }

    explicit operator bool() const noexcept { return static_cast<bool>(site_); }
    IOleInPlaceSite* operator->() const noexcept { return site_.Get(); }
    InPlaceSite Share() const noexcept;
    // The site's windowless interface, or null for a control with a window.
    IOleInPlaceSiteWindowless* Windowless() const noexcept {
        return windowless_ ? static_cast<IOleInPlaceSiteWindowless*>(site_.Get()) : nullptr;
    }

private:
    enum class Kind { kPlain, kExtended, kWindowless };

    HRESULT Find(IOleClientSite& client) noexcept;
    IOleInPlaceSiteEx* Extended() const noexcept {
        return kind_ == Kind::kPlain ? nullptr : static_cast<IOleInPlaceSiteEx*>(site_.Get());
    }

    ComPtr<IOleInPlaceSite> site_;
    Kind kind_ = Kind::kPlain;
    bool windowless_ = false;
};

}  // namespace zel
