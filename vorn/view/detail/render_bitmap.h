// SPDX-License-Identifier: MIT
#pragma once

#include "vorn/detail/handles.h"

#include <afxwin.h>
#include <array>
#include <cstddef>
#include <cstdint>

namespace vorn::detail {

/// A 32-bit bitmap that GL draws into in place of a 24-bit one.
///
/// NOTE: the software GL behind Wine can write 24-bit pixels with the red byte first only, so that in a
/// bitmap its pictures have red and blue exchanged. Its 32-bit pixels come in the bitmap's order.
class RenderBitmap {
public:
    RenderBitmap() = default;
    ~RenderBitmap() { Release(); }
    RenderBitmap(const RenderBitmap&) = delete;
    RenderBitmap& operator=(const RenderBitmap&) = delete;

    /// Makes the bitmap, in pixels; a second call replaces it in the same DC. False on failure: there is no
    /// bitmap then.
    bool Create(int cx, int cy);
    CDC* GetDC() { return &m_dc; }

    /// Makes HasNewPicture true until the next copy.
    void ExpectPicture() { m_expected = true; }
    /// Whether GL has brought a picture here since the last copy; finish GL before.
    bool HasNewPicture() const;
    /// Copies the picture into a 24-bit bitmap of the same size, whose rows are padded to 4 bytes.
    void CopyTo(BYTE* rows);
    /// Draws the picture with its upper left corner at (x, y); finish GL before.
    void Draw(CDC* pDC, int x, int y);

private:
    void Release();
    std::uint32_t& FirstPixel() const { return m_pixels[0]; }
    std::uint32_t& LastPixel() const { return m_pixels[m_width * m_height - 1]; }

    CDC m_dc;
    UniqueBitmap m_bitmap;
    HGDIOBJ m_old = nullptr;
    std::uint32_t* m_pixels = nullptr;
    std::size_t m_width = 0;
    std::size_t m_height = 0;
    // GL brings the whole picture or nothing: two pixels, changed by each copy, show whether it has.
    std::array<std::uint32_t, 2> m_marks = {};
    bool m_expected = true;
};

} // namespace vorn::detail
