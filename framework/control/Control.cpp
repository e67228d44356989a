#include "Control.h"

#include <cstddef>

namespace zel {

HRESULT Control::QuickActivate(QACONTAINER* container, QACONTROL* control) noexcept {
    if (!container || !control) return E_POINTER;
    // Older containers know fewer of the later fields, none of which is used here.
    if (container->cbSize < offsetof(QACONTAINER, pPropertyNotifySink)) return E_INVALIDARG;
    if (control->cbSize < sizeof *control) return E_INVALIDARG;
    const ComPtr<IQuickActivate> keep(this);
    const ULONG size = control->cbSize;
    *control = {};
    control->cbSize = size;
    if (container->pClientSite) SetClientSite(container->pClientSite);
    SetAdvise(DVASPECT_CONTENT, 0, container->pAdviseSink);
    GetMiscStatus(DVASPECT_CONTENT, &control->dwMiscStatus);
    return GetViewStatus(&control->dwViewStatus);
}

HRESULT Control::SetContentExtent(SIZEL* extent) noexcept { return SetExtent(DVASPECT_CONTENT, extent); }

HRESULT Control::GetContentExtent(SIZEL* extent) noexcept {
    return ControlObject::GetExtent(DVASPECT_CONTENT, extent);
}

}  // namespace zel
