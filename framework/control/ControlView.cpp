#include "ControlView.h"

#include "DesktopGraphics.h"

namespace zel {
namespace {

// Containers say "all of it" by -1, some by 0.
HRESULT CheckView(DWORD aspect, LONG index) noexcept {
    if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
    return index == -1 || index == 0 ? S_OK : DV_E_LINDEX;
}

HRESULT AnswerHit(DWORD aspect, bool hit, DWORD* out) noexcept {
    if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
    *out = hit ? HITRESULT_HIT : HITRESULT_OUTSIDE;
    return S_OK;
}

}  // namespace

HRESULT ControlView::Draw(DWORD aspect, LONG index, void*, DVTARGETDEVICE*, HDC, HDC hdc, LPCRECTL bounds,
                          LPCRECTL, BOOL(CALLBACK* goOn)(ULONG_PTR), ULONG_PTR goOnArgument) noexcept {
    const HRESULT result = CheckView(aspect, index);
    if (FAILED(result)) return result;
    const RECT* inPlace = bounds ? nullptr : WindowlessBounds();
    if (!hdc || (!bounds && !inPlace)) return E_INVALIDARG;
    if (goOn && !goOn(goOnArgument)) return E_ABORT;
    if (inPlace) return Paint(hdc, *inPlace);
    const PixelDrawing drawing(hdc, {bounds->left, bounds->top, bounds->right, bounds->bottom});
    return Paint(hdc, drawing.Bounds());
}

// The control draws with the system's colours alone.
HRESULT ControlView::GetColorSet(DWORD, LONG, void*, DVTARGETDEVICE*, HDC, LOGPALETTE** out) noexcept {
    if (!out) return E_POINTER;
    *out = nullptr;
    return S_FALSE;
}

HRESULT ControlView::Freeze(DWORD, LONG, void*, DWORD*) noexcept { return E_NOTIMPL; }

HRESULT ControlView::Unfreeze(DWORD) noexcept { return E_NOTIMPL; }

HRESULT ControlView::SetAdvise(DWORD aspects, DWORD flags, IAdviseSink* sink) noexcept {
    if (sink && aspects != DVASPECT_CONTENT) return DV_E_DVASPECT;
    const ComPtr<IViewObjectEx> keep(this);
    Advises().AdviseView(flags, sink);
    return S_OK;
}

HRESULT ControlView::GetAdvise(DWORD* aspects, DWORD* flags, IAdviseSink** sink) noexcept {
    if (aspects) *aspects = DVASPECT_CONTENT;
    Advises().GetView(flags, sink);
    return S_OK;
}

HRESULT ControlView::GetExtent(DWORD aspect, LONG index, DVTARGETDEVICE*, SIZEL* out) noexcept {
    if (!out) return E_POINTER;
    const HRESULT result = CheckView(aspect, index);
    if (SUCCEEDED(result)) *out = Extent();
    return result;
}

HRESULT ControlView::GetRect(DWORD aspect, RECTL* out) noexcept {
    if (!out) return E_POINTER;
    if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
    *out = {0, 0, Extent().cx, Extent().cy};
    return S_OK;
}

HRESULT ControlView::GetViewStatus(DWORD* out) noexcept {
    if (!out) return E_POINTER;
    *out = VIEWSTATUS_OPAQUE;
    return S_OK;
}

HRESULT ControlView::QueryHitPoint(DWORD aspect, LPCRECT bounds, POINT point, LONG, DWORD* out) noexcept {
    if (!bounds || !out) return E_POINTER;
    return AnswerHit(aspect, PtInRect(bounds, point), out);
}

HRESULT ControlView::QueryHitRect(DWORD aspect, LPCRECT bounds, LPCRECT area, LONG, DWORD* out) noexcept {
    if (!bounds || !area || !out) return E_POINTER;
    RECT common;
    return AnswerHit(aspect, IntersectRect(&common, bounds, area), out);
}

// Every size becomes the control: asked to fit, it takes what it is offered.
HRESULT ControlView::GetNaturalExtent(DWORD aspect, LONG index, DVTARGETDEVICE*, HDC, DVEXTENTINFO* wish,
                                      SIZEL* out) noexcept {
    if (!wish || !out) return E_POINTER;
    const HRESULT result = CheckView(aspect, index);
    if (FAILED(result)) return result;
    *out = wish->dwExtentMode == DVEXTENT_INTEGRAL ? wish->sizelProposed : NaturalExtent();
    return S_OK;
}

}  // namespace zel
