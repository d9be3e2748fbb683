// SPDX-License-Identifier: MIT
#include "vorn/view/detail/pixel_format.h"

#include "vorn/view/rendering_context.h"

#include <cstddef>
#include <memory>
#include <new>
#include <utility>

const BYTE CvornOGLDC::m_oneto8[2] = {0, 255};
const BYTE CvornOGLDC::m_twoto8[4] = {0, 85, 170, 255};
const BYTE CvornOGLDC::m_threeto8[8] = {0, 36, 73, 109, 146, 182, 219, 255};
const int CvornOGLDC::m_defaultOverride[13] = {0, 3, 24, 27, 64, 67, 88, 173, 181, 236, 247, 164, 91};
const PALETTEENTRY CvornOGLDC::m_defaultPalEntry[20] = {
    {0, 0, 0, 0},       {128, 0, 0, 0},     {0, 128, 0, 0},     {128, 128, 0, 0},   {0, 0, 128, 0},
    {128, 0, 128, 0},   {0, 128, 128, 0},   {192, 192, 192, 0}, {192, 220, 192, 0}, {166, 202, 240, 0},
    {255, 251, 240, 0}, {160, 160, 164, 0}, {128, 128, 128, 0}, {255, 0, 0, 0},     {0, 255, 0, 0},
    {255, 255, 0, 0},   {0, 0, 255, 0},     {255, 0, 255, 0},   {0, 255, 255, 0},   {255, 255, 255, 0}};

int CvornOGLDC::SetupPixelFormat(CDC* pDC, int bMetafile) {
    const DWORD kind = m_bRenderToDIB ? vorn::detail::bitmapFormat
                       : bMetafile    ? vorn::detail::metafileFormat
                                      : vorn::detail::windowFormat;
    const PIXELFORMATDESCRIPTOR wanted = vorn::detail::wantedPixelFormat(kind);
    const int format = vorn::detail::choosePixelFormat(pDC->m_hDC, wanted);
    if (format == 0) return 0;
    // A window's format cannot be changed any more, and the view comes back here for every kind of output.
    const int present = ::GetPixelFormat(pDC->m_hDC);
    if (present != 0 && present != format && !m_bRenderToDIB &&
        vorn::detail::servesWindow(pDC->m_hDC, present))
        return 1;
    return ::SetPixelFormat(pDC->m_hDC, format, &wanted);
}

int CvornOGLDC::CreatePalette(CDC* pDC) {
    PIXELFORMATDESCRIPTOR format = {};
    ::DescribePixelFormat(pDC->m_hDC, ::GetPixelFormat(pDC->m_hDC), sizeof format, &format);
    if ((format.dwFlags & PFD_NEED_PALETTE) == 0 || format.cColorBits != 8) return 1;

    constexpr WORD count = 256;
    // The header holds the first entry itself.
    const std::unique_ptr<std::byte[]> block(
        new (std::nothrow) std::byte[sizeof(LOGPALETTE) + (count - 1) * sizeof(PALETTEENTRY)]{});
    if (block == nullptr) return 0;
    auto* palette = reinterpret_cast<LOGPALETTE*>(block.get());
    palette->palVersion = 0x300;
    palette->palNumEntries = count;
    FillPaletteEntries(format, palette->palPalEntry);

    delete std::exchange(m_pPal, nullptr);
    m_pPal = new CPalette;
    if (!m_pPal->Attach(::CreatePalette(palette))) return 0;
    pDC->SelectPalette(m_pPal, FALSE);
    pDC->RealizePalette();
    return 1;
}

void CvornOGLDC::FillPaletteEntries(const PIXELFORMATDESCRIPTOR& format, PALETTEENTRY* entries) const {
    if (format.iPixelType != PFD_TYPE_RGBA || format.cColorBits > 8) return;
    for (int i = 0; i < 1 << format.cColorBits; ++i)
        entries[i] = {ComponentFromIndex(i, format.cRedBits, format.cRedShift),
                      ComponentFromIndex(i, format.cGreenBits, format.cGreenShift),
                      ComponentFromIndex(i, format.cBlueBits, format.cBlueShift), 0};
    const bool is332 = format.cRedBits == 3 && format.cRedShift == 0 && format.cGreenBits == 3 &&
                       format.cGreenShift == 3 && format.cBlueBits == 2 && format.cBlueShift == 6;
    if (!is332) return;
    for (int k = 1; k <= 12; ++k)
        entries[m_defaultOverride[k]] = m_defaultPalEntry[k];
}

BYTE CvornOGLDC::ComponentFromIndex(int i, UINT nbits, UINT shift) const {
    if (shift >= 32) return 0;
    const unsigned v = static_cast<unsigned>(i) >> shift;
    switch (nbits) {
    case 1:
        return m_oneto8[v & 1];
    case 2:
        return m_twoto8[v & 3];
    case 3:
        return m_threeto8[v & 7];
    default:
        return 0;
    }
}
