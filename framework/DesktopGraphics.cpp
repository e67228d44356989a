#include "DesktopGraphics.h"

#include <algorithm>

namespace zel {

#ifdef UNDER_CE

PixelDrawing::PixelDrawing(HDC hdc, const RECT& logicalBounds) noexcept : hdc_(hdc), bounds_(logicalBounds) {}
PixelDrawing::~PixelDrawing() = default;

HRESULT CheckMetafilePicture(const FORMATETC&) noexcept { return DV_E_FORMATETC; }
HRESULT MakeMetafilePicture(const SIZEL&, Painter&, STGMEDIUM*) noexcept { return DV_E_FORMATETC; }

#else

namespace {

constexpr int kHimetricPerInch = 2540;

SIZE ToPixels(const SIZEL& himetric) noexcept {
    HDC screen = GetDC(nullptr);
    const SIZE pixels = {MulDiv(himetric.cx, GetDeviceCaps(screen, LOGPIXELSX), kHimetricPerInch),
                         MulDiv(himetric.cy, GetDeviceCaps(screen, LOGPIXELSY), kHimetricPerInch)};
    ReleaseDC(nullptr, screen);
    return {std::max<LONG>(pixels.cx, 1), std::max<LONG>(pixels.cy, 1)};
}

HRESULT RecordMetafile(const SIZEL& extent, Painter& painter, HMETAFILE* out) noexcept {
    HDC hdc = CreateMetaFileW(nullptr);
    if (!hdc) return E_OUTOFMEMORY;
    const SIZE pixels = ToPixels(extent);
    SetMapMode(hdc, MM_ANISOTROPIC);
    SetWindowOrgEx(hdc, 0, 0, nullptr);
    SetWindowExtEx(hdc, pixels.cx, pixels.cy, nullptr);
    HRESULT result = painter.PaintPicture(hdc, {0, 0, pixels.cx, pixels.cy});
    *out = CloseMetaFile(hdc);
    if (!*out) return E_OUTOFMEMORY;
    if (FAILED(result)) DeleteMetaFile(*out);
    return result;
}

}  // namespace

PixelDrawing::PixelDrawing(HDC hdc, const RECT& logicalBounds) noexcept : hdc_(hdc), bounds_(logicalBounds) {
    if (GetDeviceCaps(hdc, TECHNOLOGY) == DT_METAFILE || GetMapMode(hdc) == MM_TEXT) return;
    if (GetGraphicsMode(hdc) != GM_COMPATIBLE) return;
    saved_ = SaveDC(hdc);
    if (!saved_) return;
    LPtoDP(hdc, reinterpret_cast<POINT*>(&bounds_), 2);
    SetMapMode(hdc, MM_TEXT);
    SetWindowOrgEx(hdc, 0, 0, nullptr);
    SetViewportOrgEx(hdc, 0, 0, nullptr);
}

PixelDrawing::~PixelDrawing() {
    if (saved_) RestoreDC(hdc_, saved_);
}

HRESULT CheckMetafilePicture(const FORMATETC& format) noexcept {
    if (format.cfFormat != CF_METAFILEPICT) return DV_E_FORMATETC;
    if (!(format.tymed & TYMED_MFPICT)) return DV_E_TYMED;
    if (format.dwAspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
    return format.lindex == -1 ? S_OK : DV_E_LINDEX;
}

HRESULT MakeMetafilePicture(const SIZEL& extent, Painter& painter, STGMEDIUM* out) noexcept {
    METAFILEPICT picture = {MM_ANISOTROPIC, extent.cx, extent.cy, nullptr};
    const HRESULT result = RecordMetafile(extent, painter, &picture.hMF);
    if (FAILED(result)) return result;
    HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, sizeof picture);
    void* place = memory ? GlobalLock(memory) : nullptr;
    if (!place) {
        if (memory) GlobalFree(memory);
        DeleteMetaFile(picture.hMF);
        return E_OUTOFMEMORY;
    }
    *static_cast<METAFILEPICT*>(place) = picture;
    GlobalUnlock(memory);
    *out = {};
    out->tymed = TYMED_MFPICT;
    out->hMetaFilePict = memory;
    return S_OK;
}

#endif

}  // namespace zel
