// SPDX-License-Identifier: MIT
#include "vorn/view/detail/render_bitmap.h"

#include <cstring>

namespace vorn::detail {

bool RenderBitmap::Create(int cx, int cy) {
    Release();
    if (m_dc.m_hDC == nullptr && !m_dc.CreateCompatibleDC(nullptr)) return false;
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = cx;
    info.bmiHeader.biHeight = cy;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    void* pixels = nullptr;
    m_bitmap.reset(::CreateDIBSection(m_dc.m_hDC, &info, DIB_RGB_COLORS, &pixels, nullptr, 0));
    if (!m_bitmap) return false;
    m_old = ::SelectObject(m_dc.m_hDC, m_bitmap.get());
    m_pixels = static_cast<std::uint32_t*>(pixels);
    m_width = static_cast<std::size_t>(cx);
    m_height = static_cast<std::size_t>(cy);
    m_expected = true;
    return true;
}

void RenderBitmap::Release() {
    if (!m_bitmap) return;
    ::SelectObject(m_dc.m_hDC, m_old);
    m_bitmap.reset();
    m_pixels = nullptr;
}

bool RenderBitmap::HasNewPicture() const {
    return m_pixels != nullptr && (m_expected || FirstPixel() != m_marks[0] || LastPixel() != m_marks[1]);
}

void RenderBitmap::CopyTo(BYTE* rows) {
    if (m_pixels == nullptr || rows == nullptr) return;
    const std::size_t rowBytes = (m_width * 3 + 3) / 4 * 4;
    for (std::size_t y = 0; y < m_height; ++y) {
        const std::uint32_t* from = m_pixels + y * m_width;
        BYTE* to = rows + y * rowBytes;
        // Four bytes at once, the last of which the next pixel replaces.
        for (std::size_t x = 0; x + 1 < m_width; ++x, to += 3)
            std::memcpy(to, from + x, 4);
        std::memcpy(to, from + m_width - 1, 3);
    }
    m_marks = {FirstPixel() = ~FirstPixel(), LastPixel() = ~LastPixel()};
    m_expected = false;
}

void RenderBitmap::Draw(CDC* pDC, int x, int y) {
    if (m_pixels == nullptr) return;
    ::GdiFlush();
    // GL's alpha would make parts of a copied picture transparent in other programs.
    for (std::size_t i = 0; i < m_width * m_height; ++i)
        m_pixels[i] &= 0xFFFFFF;
    const int width = static_cast<int>(m_width), height = static_cast<int>(m_height);
    pDC->SetStretchBltMode(HALFTONE);
    ::BitBlt(pDC->m_hDC, x, y, width, height, m_dc.m_hDC, 0, 0, SRCCOPY);
}

} // namespace vorn::detail
