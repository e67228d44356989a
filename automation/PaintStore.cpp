#include "PaintStore.h"

#include "zel/control/DesktopGraphics.h"

namespace zel {

void PaintStore(HDC hdc, const RECT& bounds) noexcept {
    constexpr wchar_t kCaption[] = L"ATL 3.0 : BRU_Store";
    const HGDIOBJ previous = SelectObject(hdc, GetStockObject(WHITE_BRUSH));
    Rectangle(hdc, bounds.left, bounds.top, bounds.right, bounds.bottom);
    SelectObject(hdc, previous);
    DrawCentredLine(hdc, kCaption, bounds);
}

}  // namespace zel
