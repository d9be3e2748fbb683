// SPDX-License-Identifier: MIT
#include "vorn/bitmaps/detail/dib_blocks.h"
#include "vorn/bitmaps/detail/texture_bits.h"
#include "vorn/bitmaps/dib.h"
#include "vorn/bitmaps/dib_palette.h"
#include "vorn/bitmaps/texture.h"
#include "vorn/detail/handles.h"

#include <algorithm>
#include <cstring>

namespace {

using namespace vorn::detail;

/// A header of 32-bit pixels, bottom row first, with room for the three colour masks of bit fields.
struct SectionHeader {
    BITMAPINFOHEADER header = {};
    DWORD masks[3] = {0x000000FF, 0x0000FF00, 0x00FF0000};

    SectionHeader(int width, int height, DWORD compression) {
        header.biSize = sizeof header;
        header.biWidth = width;
        header.biHeight = height;
        header.biPlanes = 1;
        header.biBitCount = 32;
        header.biCompression = compression;
    }
};

/// Lets GDI draw the DIB into a section and hands the section's pixels to `copy`. False on failure.
template <typename Copy>
bool drawInSection(CvornDIB& dib, HPALETTE palette, DWORD compression, Copy copy) {
    SectionHeader header(dib.GetWidth(), dib.GetHeight(), compression);
    void* bits = nullptr;
    UniqueMemoryDC memory(::CreateCompatibleDC(nullptr));
    UniqueBitmap section(::CreateDIBSection(memory.get(), reinterpret_cast<BITMAPINFO*>(&header),
                                            DIB_RGB_COLORS, &bits, nullptr, 0));
    if (!memory || !section) return false;
    SelectedObject selected(memory.get(), section.get());
    SelectedPalette realised(memory.get(), palette);
    dib.Draw(memory.get(), 0, 0);
    ::GdiFlush();
    copy(static_cast<const BYTE*>(bits));
    return true;
}

/// Writes a texture pixel, red, green, blue and a 0 byte, from the blue, green and red of a DIB's pixel or
/// colour; returns where the next one goes.
BYTE* putPixel(BYTE* target, const BYTE* source) {
    target[0] = source[2];
    target[1] = source[1];
    target[2] = source[0];
    target[3] = 0;
    return target + 4;
}

void expandRow(const BYTE* source, BYTE* target, int width, int bits, const BYTE* colours) {
    switch (bits) {
    case 4:
        for (int x = 0; x < width; ++x) {
            BYTE pair = source[x / 2];
            target = putPixel(target, colours + 4 * (x % 2 == 0 ? pair >> 4 : pair & 15));
        }
        break;
    case 8:
        for (int x = 0; x < width; ++x)
            target = putPixel(target, colours + 4 * source[x]);
        break;
    case 24:
        for (int x = 0; x < width; ++x, source += 3)
            target = putPixel(target, source);
        break;
    default:
        break;
    }
}

} // namespace

bool CvornDIBTexture::NewBits(int width, int height) {
    CleanUp();
    m_pBits = newTextureBits(width, height);
    if (!m_pBits) return false;
    m_nWidth = width;
    m_nHeight = height;
    return true;
}

int CvornDIBTexture::Load(char const* file, TRANSLATEMETHOD m) {
    CleanUp();
    CvornDIB dib;
    return dib.Load(file) ? Translate(dib, m) : 0;
}

int CvornDIBTexture::Load(unsigned short id, TRANSLATEMETHOD m) {
    CleanUp();
    CvornDIB dib;
    return dib.Load(id) ? Translate(dib, m) : 0;
}

int CvornDIBTexture::LoadX(CDC* pDC, char const* file, const CRect& r, const CvornColour& c,
                           TRANSLATEMETHOD) {
    m_image.Close();
    if (!m_image.Load(file) || !m_image.IsOpen()) return 0;
    m_rect = r;
    m_clrBack = c;
    return Load(pDC);
}

int CvornDIBTexture::Resize(CDC* pDC, const CRect& r, int keepAspect) {
    if (!m_image.IsOpen()) return 0;
    auto aspect = [](const CRect& rect) {
        return static_cast<float>(rect.Width()) / static_cast<float>(rect.Height());
    };
    if (keepAspect) {
        if (r.Height() != 0 && m_rect.Height() != 0 && aspect(r) == aspect(m_rect)) return 0;
    } else if (m_rect.EqualRect(&r)) {
        return 0;
    }
    m_rect = r;
    return Load(pDC);
}

int CvornDIBTexture::Load(CDC* pDC) {
    CleanUp();
    const int width = m_rect.Width(), height = m_rect.Height();
    if (pDC == nullptr || width <= 0 || height <= 0 || int64_t{width} * height > int64_t{maxPicturePixels})
        return 0;
    CDC memory;
    int saved = memory.CreateCompatibleDC(pDC) ? memory.SaveDC() : 0;
    m_bitmap.DeleteObject();
    if (saved == 0 || !m_bitmap.CreateCompatibleBitmap(pDC, width, height)) return 0;
    memory.SelectObject(&m_bitmap);
    memory.SetBkMode(TRANSPARENT);
    memory.SetMapMode(MM_TEXT);
    memory.SetWindowOrg(0, 0);
    memory.SetViewportOrg(0, 0);
    const COLORREF background = m_clrBack;
    // Under the whole image, since it may be transparent.
    memory.FillSolidRect(0, 0, width, height, background);
    m_image.Render(&memory, TRUE, background, m_rect, nullptr);
    // GDI reads a bitmap only while no DC has it.
    memory.RestoreDC(saved);

    CvornDIB dib;
    CvornDIBPal palette;
    int loaded = dib.Create(m_bitmap);
    m_bitmap.DeleteObject();
    if (!loaded) return 0;
    palette.Create(&dib);
    m_nMethod = TRANSLATE_BY_BOTH;
    m_nFormat = GL_RGBA;
    return TranslateByBoth(dib, palette);
}

int CvornDIBTexture::Translate(CvornDIB& d, TRANSLATEMETHOD m) {
    CvornDIBPal palette;
    palette.Create(&d);
    m_nMethod = m;
    m_nFormat = GL_RGBA;
    switch (m) {
    case TRANSLATE_BY_GDI:
        return TranslateByGDI(d, palette);
    case TRANSLATE_BY_BOTH:
        return TranslateByBoth(d, palette);
    default:
        break;
    }
    m_nMethod = TRANSLATE_BY_YOURSELF;
    m_nFormat = GL_RGB;
    return TranslateByYourself(d);
}

int CvornDIBTexture::TranslateByYourself(CvornDIB& d) {
    const BYTE* rows = d.GetBitsAddress();
    const BITMAPINFO* info = d.GetBitmapInfoAddress();
    if (rows == nullptr || info == nullptr || isDibCompressed(info->bmiHeader)) return 0;
    if (!NewBits(d.GetWidth(), d.GetHeight())) return 0;
    const ptrdiff_t stride = d.GetStorageWidth();
    for (int y = 0; y < m_nHeight; ++y) {
        expandRow(rows + y * stride, m_pBits.get() + textureBytes(m_nWidth, y), m_nWidth, d.GetBitsPerPixel(),
                  reinterpret_cast<const BYTE*>(d.GetClrTabAddress()));
    }
    return 1;
}

int CvornDIBTexture::TranslateByGDI(CvornDIB& d, CvornDIBPal& palette) {
    if (!NewBits(d.GetWidth(), d.GetHeight())) return 0;
    bool drawn = drawInSection(d, palette, BI_BITFIELDS, [&](const BYTE* bits) {
        std::memcpy(m_pBits.get(), bits, textureBytes(m_nWidth, m_nHeight));
    });
    if (!drawn) CleanUp();
    return drawn;
}

int CvornDIBTexture::TranslateByBoth(CvornDIB& d, CvornDIBPal& palette) {
    if (!NewBits(d.GetWidth(), d.GetHeight())) return 0;
    return drawInSection(d, palette, BI_RGB, [&](const BYTE* bits) {
        const BYTE* end = bits + textureBytes(m_nWidth, m_nHeight);
        for (BYTE* target = m_pBits.get(); bits != end; bits += 4)
            target = putPixel(target, bits);
    });
}

int CvornDIBTexture::PrepareBitmapInfo32(BITMAPINFO& bi, HBITMAP hbm) {
    BITMAP bitmap = {};
    if (::GetObject(hbm, sizeof bitmap, &bitmap) == 0) return 0;
    BITMAPINFOHEADER& header = bi.bmiHeader;
    header.biSize = sizeof header;
    header.biWidth = bitmap.bmWidth;
    header.biHeight = -bitmap.bmHeight;
    header.biPlanes = 1;
    header.biBitCount = 32;
    header.biClrUsed = 0;
    header.biSizeImage = static_cast<DWORD>(bitmap.bmWidth) * static_cast<DWORD>(bitmap.bmHeight) * 4;
    return bitmap.bmHeight;
}
