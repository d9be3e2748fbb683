// SPDX-License-Identifier: MIT
// Mapping a DIB's pixels to the colours of a palette.
#include "vorn/bitmaps/dib.h"

#include "vorn/bitmaps/detail/dib_blocks.h"
#include "vorn/detail/handles.h"

#include <algorithm>

using namespace vorn::detail;

namespace {

/// Answers which palette entry is nearest to a colour, asking GDI only once for each colour.
class NearestColours {
public:
    NearestColours(HPALETTE palette, const PaletteColours& colours)
        : m_palette(palette), m_colours(colours) {}

    /// Makes the table, whose pages take memory only where colours are; false without memory.
    bool makeTable() {
        m_known.reset(static_cast<WORD*>(std::calloc(std::size_t{1} << 24, sizeof(WORD))));
        return m_known != nullptr;
    }

    const PALETTEENTRY& of(BYTE red, BYTE green, BYTE blue) {
        const COLORREF colour = RGB(red, green, blue);
        WORD& known = m_known.get()[colour];
        if (known == 0) known = static_cast<WORD>(1 + index(colour));
        return m_colours.entries[known - 1u];
    }

    BYTE index(COLORREF colour) const {
        return static_cast<BYTE>(::GetNearestPaletteIndex(m_palette, colour));
    }

private:
    HPALETTE m_palette;
    const PaletteColours& m_colours;
    MallocPtr<WORD> m_known; // one more than the index; 0 for colours not asked for yet
};

void mapBytes(BYTE* bits, std::size_t count, const BYTE (&map)[256]) {
    std::transform(bits, bits + count, bits, [&](BYTE value) { return map[value]; });
}

void mapTrueColours(BYTE* row, int width, NearestColours& nearest) {
    for (BYTE* pixel = row; pixel != row + std::ptrdiff_t{width} * 3; pixel += 3) {
        const PALETTEENTRY& entry = nearest.of(pixel[2], pixel[1], pixel[0]);
        pixel[0] = entry.peBlue;
        pixel[1] = entry.peGreen;
        pixel[2] = entry.peRed;
    }
}

} // namespace

BOOL CvornDIB::MapColorsToPalette(HPALETTE hPal) {
    return MapColorsToPalette(CPalette::FromHandle(hPal));
}

BOOL CvornDIB::MapColorsToPalette(CPalette* pPal) {
    if (pPal == nullptr || !HoldsHeaderBits()) return FALSE;
    const auto colours = paletteColours(*pPal);
    BITMAPINFOHEADER& header = m_pBMI->bmiHeader;
    if (!colours || isDibCompressed(header)) return FALSE;

    NearestColours nearest(*pPal, *colours);
    RGBQUAD* table = GetClrTabAddress();
    BYTE map[maxDibColours];
    std::transform(table, table + maxDibColours, map, [&](const RGBQUAD& colour) {
        return nearest.index(RGB(colour.rgbRed, colour.rgbGreen, colour.rgbBlue));
    });
    const auto rowBytes = static_cast<std::size_t>(dibRowBytes(header));
    const auto rows = static_cast<std::size_t>(dibRows(header));
    switch (header.biBitCount) {
    case 4: {
        BYTE pairs[256];
        for (UINT pair = 0; pair < 256; ++pair)
            pairs[pair] = static_cast<BYTE>((map[pair >> 4] << 4) | map[pair & 15]);
        mapBytes(m_pBits, rowBytes * rows, pairs);
        break;
    }
    case 8:
        mapBytes(m_pBits, rowBytes * rows, map);
        break;
    case 24:
        if (!nearest.makeTable()) return FALSE;
        for (std::size_t row = 0; row < rows; ++row)
            mapTrueColours(m_pBits + row * rowBytes, header.biWidth, nearest);
        break;
    default:
        return FALSE;
    }

    std::transform(colours->entries.begin(), colours->entries.end(), table, dibColour);
    header.biClrUsed = colours->count;
    return TRUE;
}
