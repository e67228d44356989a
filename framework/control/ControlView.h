#pragma once

#include <windows.h>
#include <ole2.h>
#include <ocidl.h>

#include "ControlCore.h"

namespace zel {

// What a container shows of a control that has no window (IViewObjectEx and its bases): the content aspect,
// an opaque rectangle. No other aspect exists.
class ControlView : public IViewObjectEx, protected virtual ControlCore {
public:
    // `bounds` is in the logical units of `hdc`; a control that is windowless in its place may leave it out.
    STDMETHODIMP Draw(DWORD aspect, LONG index, void* aspectInfo, DVTARGETDEVICE* device, HDC deviceInfo,
                      HDC hdc, LPCRECTL bounds, LPCRECTL metafileBounds, BOOL(CALLBACK* goOn)(ULONG_PTR),
                      ULONG_PTR goOnArgument) noexcept override;
    STDMETHODIMP GetColorSet(DWORD aspect, LONG index, void* aspectInfo, DVTARGETDEVICE* device,
                             HDC deviceInfo, LOGPALETTE** out) noexcept override;
    STDMETHODIMP Freeze(DWORD aspect, LONG index, void* aspectInfo, DWORD* token) noexcept override;
    STDMETHODIMP Unfreeze(DWORD token) noexcept override;
    STDMETHODIMP SetAdvise(DWORD aspects, DWORD flags, IAdviseSink* sink) noexcept override;
    STDMETHODIMP GetAdvise(DWORD* aspects, DWORD* flags, IAdviseSink** sink) noexcept override;

    STDMETHODIMP GetExtent(DWORD aspect, LONG index, DVTARGETDEVICE* device, SIZEL* out) noexcept override;

    STDMETHODIMP GetRect(DWORD aspect, RECTL* out) noexcept override;
    STDMETHODIMP GetViewStatus(DWORD* out) noexcept override;
    STDMETHODIMP QueryHitPoint(DWORD aspect, LPCRECT bounds, POINT point, LONG closeHint,
                               DWORD* out) noexcept override;
    STDMETHODIMP QueryHitRect(DWORD aspect, LPCRECT bounds, LPCRECT area, LONG closeHint,
                              DWORD* out) noexcept override;
    STDMETHODIMP GetNaturalExtent(DWORD aspect, LONG index, DVTARGETDEVICE* device, HDC deviceInfo,
                                  DVEXTENTINFO* wish, SIZEL* out) noexcept override;
};

}  // namespace zel
