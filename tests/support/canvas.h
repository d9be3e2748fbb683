// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <windows.h>

namespace support {

/// A 32-bit DIB section in a memory DC: draw on it with GDI, then look at the pixels.
class Canvas {
public:
    Canvas(int width, int height, COLORREF background = RGB(255, 255, 255));
    ~Canvas();
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;

    HDC dc() const { return m_dc; }
    HBITMAP bitmap() const { return m_bitmap; }
    int width() const { return m_width; }
    int height() const { return m_height; }
    void fill(COLORREF colour);
    /// The colour at a pixel, counted from the upper left corner; CLR_INVALID outside.
    COLORREF at(int x, int y) const;

private:
    int m_width;
    int m_height;
    uint32_t* m_bits = nullptr;
    HDC m_dc;
    HBITMAP m_bitmap;
    HGDIOBJ m_old;
};

} // namespace support
