// SPDX-License-Identifier: MIT
#include "vorn/bitmaps/dib_simple.h"

#include "vorn/bitmaps/detail/dib_blocks.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace {

using namespace vorn::detail;

/// A DIB section selected into a memory DC, for all the copies that share it.
struct Section {
    HBITMAP bitmap = nullptr;
    HBITMAP oldBitmap = nullptr;
    void* bits = nullptr;
    CDC dc;

    Section() = default;
    ~Section() {
        if (oldBitmap != nullptr) ::SelectObject(dc.m_hDC, oldBitmap);
        if (bitmap != nullptr) ::DeleteObject(bitmap);
    }
    Section(const Section&) = delete;
    Section& operator=(const Section&) = delete;

    bool create(int cx, int cy, int bitCount) {
        // GDI reads a full table of palette indices below 16 bits; all of them are 0.
        std::shared_ptr<BITMAPINFO> block = newDibHeader();
        if (!block) return false;
        BITMAPINFOHEADER& header = block->bmiHeader;
        header.biSize = sizeof header;
        header.biWidth = cx;
        header.biHeight = cy;
        header.biPlanes = 1;
        header.biBitCount = static_cast<WORD>(bitCount);
        dc.Attach(::CreateCompatibleDC(nullptr));
        bitmap = ::CreateDIBSection(dc.m_hDC, block.get(), DIB_PAL_COLORS, &bits, nullptr, 0);
        if (bitmap == nullptr) return false;
        oldBitmap = static_cast<HBITMAP>(::SelectObject(dc.m_hDC, bitmap));
        return true;
    }
};

} // namespace

CvornDIBSimple::~CvornDIBSimple() {
    destroy();
}

BOOL CvornDIBSimple::Create(int cx, int cy, int nBitCount) {
    destroy();
    m_size = {cx, cy};
    auto section = std::make_shared<Section>();
    if (!section->create(cx, cy, nBitCount)) return FALSE;
    m_hBitmap = section->bitmap;
    m_hOldBitmap = section->oldBitmap;
    m_pBits = section->bits;
    m_pDC = &section->dc;
    m_section = std::move(section);
    return TRUE;
}

void CvornDIBSimple::destroy() {
    m_hBitmap = nullptr;
    m_hOldBitmap = nullptr;
    m_pBits = nullptr;
    m_size = {0, 0};
    m_pDC = nullptr;
    m_section.reset();
}

void CvornDIBSimple::Draw(CDC* pDC, int x, int y) {
    if (pDC == nullptr || m_pDC == nullptr) return;
    pDC->BitBlt(x, y, m_size.cx, m_size.cy, m_pDC, 0, 0, SRCCOPY);
    COLORADJUSTMENT adjustment = {};
    adjustment.caSize = sizeof adjustment;
    if (!::GetColorAdjustment(pDC->m_hAttribDC, &adjustment)) return;
    adjustment.caColorfulness = -100;
    ::SetColorAdjustment(pDC->m_hDC, &adjustment);
}

void CvornDIBSimple::Draw(CDC* pDC, int x, int y, BITMAPINFO* pBMI) {
    BITMAP bitmap = {};
    if (pDC == nullptr || m_pDC == nullptr || pBMI == nullptr) return;
    ::GetObject(::GetCurrentObject(m_pDC->m_hDC, OBJ_BITMAP), sizeof bitmap, &bitmap);
    const BITMAPINFOHEADER& header = pBMI->bmiHeader;
    int64_t there = int64_t{bitmap.bmWidthBytes} * bitmap.bmHeight;
    if (bitmap.bmBits == nullptr || dibRowBytes(header) * dibRows(header) > there) return;
    pDC->SetStretchBltMode(HALFTONE);
    ::StretchDIBits(pDC->m_hDC, x, y, m_size.cx, m_size.cy, 0, 0, m_size.cx, m_size.cy, bitmap.bmBits, pBMI,
                    DIB_RGB_COLORS, SRCCOPY);
}

void CvornDIBSimple::SetPalette(CPalette* pPal) {
    if (pPal == nullptr || m_pDC == nullptr) return;
    auto palette = paletteColours(*pPal);
    if (!palette) return;
    std::array<RGBQUAD, maxDibColours> colours;
    std::transform(palette->entries.begin(), palette->entries.begin() + palette->count, colours.begin(),
                   dibColour);
    ::SetDIBColorTable(m_pDC->m_hDC, 0, palette->count, colours.data());
}
