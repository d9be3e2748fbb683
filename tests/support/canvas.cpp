// SPDX-License-Identifier: MIT
#include "tests/support/canvas.h"

#include <algorithm>

namespace support {

Canvas::Canvas(int width, int height, COLORREF background)
    : m_width(width), m_height(height), m_dc(::CreateCompatibleDC(nullptr)) {
    BITMAPINFO info = {};
    info.bmiHeader = {sizeof info.bmiHeader, width, -height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    void* bits = nullptr;
    m_bitmap = ::CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    m_bits = static_cast<uint32_t*>(bits);
    m_old = ::SelectObject(m_dc, m_bitmap);
    fill(background);
}

Canvas::~Canvas() {
    ::SelectObject(m_dc, m_old);
    ::DeleteObject(m_bitmap);
    ::DeleteDC(m_dc);
}

void Canvas::fill(COLORREF colour) {
    ::GdiFlush();
    const uint32_t pixel = GetRValue(colour) << 16 | GetGValue(colour) << 8 | GetBValue(colour);
    std::fill_n(m_bits, m_width * m_height, pixel);
}

COLORREF Canvas::at(int x, int y) const {
    if (x < 0 || y < 0 || x >= m_width || y >= m_height) return CLR_INVALID;
    ::GdiFlush();
    const uint32_t pixel = m_bits[y * m_width + x];
    return RGB(pixel >> 16 & 0xFF, pixel >> 8 & 0xFF, pixel & 0xFF);
}

} // namespace support
