#pragma once

#include <windows.h>

#include <gtest/gtest.h>

#include <algorithm>

namespace zel {

constexpr COLORREF kGround = RGB(0, 128, 128), kWhite = RGB(255, 255, 255);

// A bitmap in memory to draw on, and what a control should have drawn there.
class Picture {
public:
    Picture(int width, int height) : hdc_(CreateCompatibleDC(nullptr)) {
        BITMAPINFO info = {};
        info.bmiHeader = {sizeof info.bmiHeader, width, -height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
        void* bits;
        bitmap_ = CreateDIBSection(hdc_, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
        previous_ = SelectObject(hdc_, bitmap_);
        const RECT all = {0, 0, width, height};
        HBRUSH brush = CreateSolidBrush(kGround);
        FillRect(hdc_, &all, brush);
        DeleteObject(brush);
    }
    Picture(const Picture&) = delete;
    ~Picture() {
        SelectObject(hdc_, previous_);
        DeleteObject(bitmap_);
        DeleteDC(hdc_);
    }
    HDC Dc() const { return hdc_; }

    // White within a border of one pixel, around `text` pixels centred in it, nothing drawn outside.
    void ExpectControl(const RECT& bounds, COLORREF border, COLORREF text) const {
        RECT ink = {bounds.right, bounds.bottom, bounds.left, bounds.top};
        int wrong = 0, inked = 0;
        for (LONG y = bounds.top - 1; y <= bounds.bottom; ++y) {
            for (LONG x = bounds.left - 1; x <= bounds.right; ++x) {
                const COLORREF pixel = GetPixel(hdc_, x, y);
                const COLORREF frame = Frame(bounds, x, y, border);
                if (frame == kWhite && pixel == text) {
                    ++inked;
                    ink = {std::min(ink.left, x), std::min(ink.top, y), std::max(ink.right, x + 1),
                           std::max(ink.bottom, y + 1)};
                } else if (pixel != frame && (frame != kWhite || pixel == border || pixel == kGround)) {
                    ++wrong;
                }
            }
        }
        EXPECT_EQ(wrong, 0);
        EXPECT_GT(inked, 100);
        EXPECT_GT(ink.right - ink.left, 80);
        EXPECT_LT(ink.bottom - ink.top, 25);
        EXPECT_NEAR(ink.left + ink.right, bounds.left + bounds.right, 4);
        EXPECT_NEAR(ink.top + ink.bottom, bounds.top + bounds.bottom, 8);
    }

private:
    static COLORREF Frame(const RECT& bounds, LONG x, LONG y, COLORREF border) {
        if (x < bounds.left || y < bounds.top || x >= bounds.right || y >= bounds.bottom) return kGround;
        const bool edge =
            x == bounds.left || y == bounds.top || x == bounds.right - 1 || y == bounds.bottom - 1;
        return edge ? border : kWhite;
    }

    HDC hdc_;
    HBITMAP bitmap_;
    HGDIOBJ previous_;
};

}  // namespace zel
