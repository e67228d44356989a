#include "DesktopGraphics.h"

namespace zel {
namespace {

void DrawMeasured(HDC hdc, const wchar_t* text, RECT bounds) noexcept {
    DrawTextW(hdc, text, -1, &bounds, DT_CENTER | DT_VCENTER | DT_SINGLELINE);
}

}  // namespace

#ifdef UNDER_CE

void DrawCentredLine(HDC hdc, const wchar_t* text, const RECT& bounds) noexcept {
    DrawMeasured(hdc, text, bounds);
}

PixelDrawing::PixelDrawing(HDC hdc, const RECT& logicalBounds) noexcept : hdc_(hdc), bounds_(logicalBounds) {}
PixelDrawing::~PixelDrawing() = default;

HRESULT CheckMetafilePicture(const FORMATETC&) noexcept { return DV_E_FORMATETC; }
HRESULT MakeMetafilePicture(const SIZEL&, Painter&, STGMEDIUM*) noexcept { return DV_E_FORMATETC; }

#else

namespace {

constexpr int kHimetricPerInch = 2540;

struct ScreenContext {
    HDC hdc = GetDC(nullptr);
    ~ScreenContext() { ReleaseDC(nullptr, hdc); }
};

RECT ToPixels(const SIZEL& himetric) noexcept {
    const ScreenContext screen;
    return {0, 0, MulDiv(himetric.cx, GetDeviceCaps(screen.hdc, LOGPIXELSX), kHimetricPerInch),
            MulDiv(himetric.cy, GetDeviceCaps(screen.hdc, LOGPIXELSY), kHimetricPerInch)};
}

HRESULT RecordMetafile(const SIZEL& extent, Painter& painter, HMETAFILE* out) noexcept {
    HDC hdc = CreateMetaFileW(nullptr);
    if (!hdc) return E_OUTOFMEMORY;
    const RECT bounds = ToPixels(extent);
    SetMapMode(hdc, MM_ANISOTROPIC);
    SetWindowOrgEx(hdc, 0, 0, nullptr);
    SetWindowExtEx(hdc, bounds.right, bounds.bottom, nullptr);
    const HRESULT result = painter.PaintPicture(hdc, bounds);
    *out = CloseMetaFile(hdc);
    if (!*out) return E_OUTOFMEMORY;
    if (FAILED(result)) DeleteMetaFile(*out);
    return result;
}

bool IsMetafile(HDC hdc) noexcept {
    const DWORD type = GetObjectType(hdc);
    return type == OBJ_METADC || type == OBJ_ENHMETADC;
}

}  // namespace

PixelDrawing::PixelDrawing(HDC hdc, const RECT& logicalBounds) noexcept : hdc_(hdc), bounds_(logicalBounds) {
    if (IsMetafile(hdc) || GetMapMode(hdc) == MM_TEXT) return;
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

// A metafile cannot measure text: there it is centred by its size on the screen.
void DrawCentredLine(HDC hdc, const wchar_t* text, const RECT& bounds) noexcept {
    if (!IsMetafile(hdc)) return DrawMeasured(hdc, text, bounds);
    const ScreenContext screen;
    RECT place = {};
    DrawTextW(screen.hdc, text, -1, &place, DT_CALCRECT | DT_SINGLELINE);
    OffsetRect(&place, (bounds.left + bounds.right - place.right) / 2,
               (bounds.top + bounds.bottom - place.bottom) / 2);
    DrawTextW(hdc, text, -1, &place, DT_SINGLELINE | DT_NOCLIP);
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
