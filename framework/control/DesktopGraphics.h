#pragma once

#include <windows.h>
#include <objidl.h>

namespace zel {

// All that the control needs of graphics the handheld lacks - mapping modes and old-style metafiles - and the
// only place that uses them. A build for the device (UNDER_CE) draws in the units it is given and has no
// metafile picture.

// Makes the units of a device context pixels while it lives, so that text has its size on the device whatever
// the mapping mode. Metafiles keep their own units.
class PixelDrawing {
public:
    PixelDrawing(HDC hdc, const RECT& logicalBounds) noexcept;
    PixelDrawing(const PixelDrawing&) = delete;
    PixelDrawing& operator=(const PixelDrawing&) = delete;
    ~PixelDrawing();

    const RECT& Bounds() const noexcept { return bounds_; }

private:
    HDC hdc_;
    RECT bounds_;
    int saved_ = 0;
};

// A single line in the middle of `bounds`, by the colours and font of the device context.
void DrawCentredLine(HDC hdc, const wchar_t* text, const RECT& bounds) noexcept;

// What a picture shows: draws itself into `bounds`, in pixels of the screen.
class Painter {
public:
    virtual HRESULT PaintPicture(HDC hdc, const RECT& bounds) noexcept = 0;

protected:
    ~Painter() = default;
};

// Whether there are pictures in this form, S_OK or why not.
HRESULT CheckMetafilePicture(const FORMATETC& format) noexcept;
// A picture of `extent` (HIMETRIC). The caller owns what is in `out`; nothing is, after a failure.
HRESULT MakeMetafilePicture(const SIZEL& extent, Painter& painter, STGMEDIUM* out) noexcept;

}  // namespace zel
