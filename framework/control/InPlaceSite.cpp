#include "InPlaceSite.h"

namespace zel {
namespace {

// A container refuses by a failure or by S_FALSE.
HRESULT Refusal(HRESULT answer) noexcept { return SUCCEEDED(answer) && answer != S_OK ? E_FAIL : answer; }

}  // namespace

HRESULT InPlaceSite::Find(IOleClientSite& client) noexcept {
    kind_ = Kind::kWindowless;
    if (SUCCEEDED(client.QueryInterface(IID_IOleInPlaceSiteWindowless, site_.OutVoid()))) return S_OK;
    kind_ = Kind::kExtended;
    if (SUCCEEDED(client.QueryInterface(IID_IOleInPlaceSiteEx, site_.OutVoid()))) return S_OK;
    kind_ = Kind::kPlain;
    return client.QueryInterface(IID_IOleInPlaceSite, site_.OutVoid());
}

HRESULT InPlaceSite::Activate(IOleClientSite& client) noexcept {
    HRESULT result = Find(client);
    if (SUCCEEDED(result)) result = Refusal(site_->CanInPlaceActivate());
    if (FAILED(result)) return result;

    windowless_ = kind_ == Kind::kWindowless &&
                  static_cast<IOleInPlaceSiteWindowless*>(site_.Get())->CanWindowlessActivate() == S_OK;
    BOOL noRedraw = FALSE;
    return kind_ == Kind::kPlain
               ? site_->OnInPlaceActivate()
               : Extended()->OnInPlaceActivateEx(&noRedraw, windowless_ ? ACTIVATE_WINDOWLESS : 0);
}

void InPlaceSite::Deactivate() noexcept {
    Extended() ? Extended()->OnInPlaceDeactivateEx(FALSE) : site_->OnInPlaceDeactivate();
    site_.Reset();
}

HRESULT InPlaceSite::ActivateUI() noexcept {
    const HRESULT answer = Extended() ? Extended()->RequestUIActivate() : S_OK;
    if (answer == S_OK) return site_->OnUIActivate();
    // Whoever says no politely waits for this, to give the focus back.
    if (SUCCEEDED(answer)) site_->OnUIDeactivate(FALSE);
    return Refusal(answer);
}

InPlaceSite InPlaceSite::Share() const noexcept {
    InPlaceSite other;
    other.site_ = site_.Share();
    other.kind_ = kind_;
    other.windowless_ = windowless_;
    return other;
}

}  // namespace zel
