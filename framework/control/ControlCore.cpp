#include "ControlCore.h"

#include <olectl.h>

namespace zel {

void ControlCore::ChangeExtent(const SIZEL& extent) noexcept {
    if (extent.cx == extent_.cx && extent.cy == extent_.cy) return;
    extent_ = extent;
    if (!Redraw()) advises_.SendViewChange();
    advises_.SendDataChange(Data());
}

Variant ControlCore::Ambient(DISPID property) const noexcept {
    Variant value;
    DISPPARAMS none = {};
    const auto ambient = SiteAs<IDispatch>();
    if (ambient && FAILED(ambient->Invoke(property, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET,
                                          &none, value.Out(), nullptr, nullptr)))
        value.Reset();
    return value;
}

bool ControlCore::IsUserMode() const noexcept {
    const Variant mode = Ambient(DISPID_AMBIENT_USERMODE);
    return mode.Type() != VT_BOOL || V_BOOL(&mode.Get());
}

void ControlCore::ReleaseContainer() noexcept {
    advises_.Release();
    site_.Reset();
}

}  // namespace zel
