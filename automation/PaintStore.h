#pragma once

#include <windows.h>

namespace zel {

// What a store shows as a control: a white frame with its caption in the middle.
void PaintStore(HDC hdc, const RECT& bounds) noexcept;

}  // namespace zel
