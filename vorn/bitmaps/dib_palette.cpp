// SPDX-License-Identifier: MIT
#include "vorn/bitmaps/dib_palette.h"

#include "vorn/bitmaps/detail/dib_blocks.h"
#include "vorn/bitmaps/detail/logical_palette.h"
#include "vorn/bitmaps/dib.h"
#include "vorn/detail/handles.h"

#include <algorithm>
#include <limits>
#include <new>
#include <vector>

using namespace vorn::detail;

namespace {

constexpr UINT systemColours = 256, staticColoursPerEnd = 10;

/// Reads the system's static colours into both ends of 256 entries.
void readStaticColours(std::span<PALETTEENTRY> entries) {
    const UniqueMemoryDC dc(::CreateCompatibleDC(nullptr));
    constexpr UINT upper = systemColours - staticColoursPerEnd;
    ::GetSystemPaletteEntries(dc.get(), 0, staticColoursPerEnd, entries.data());
    ::GetSystemPaletteEntries(dc.get(), upper, staticColoursPerEnd, entries.data() + upper);
}

constexpr PALETTEENTRY washColour(int red, int green, int blue) {
    return {static_cast<BYTE>(red), static_cast<BYTE>(green), static_cast<BYTE>(blue), PC_NOCOLLAPSE};
}

/// Deletes what the palette holds and attaches a new one.
BOOL renew(CPalette& palette, const LogicalPalette& colours) {
    palette.DeleteObject();
    return palette.Attach(colours.create().release());
}

} // namespace

BOOL CvornDIBPal::Create(RGBQUAD* pColors, int n) {
    if (pColors == nullptr || n <= 0 || n > std::numeric_limits<WORD>::max()) return FALSE;
    LogicalPalette palette(static_cast<WORD>(n));
    if (!palette) return FALSE;
    std::transform(pColors, pColors + n, palette.entries().begin(), [](const RGBQUAD& colour) {
        return PALETTEENTRY{colour.rgbRed, colour.rgbGreen, colour.rgbBlue, 0};
    });
    return renew(*this, palette);
}

BOOL CvornDIBPal::Create(CvornDIB* pDIB) {
    if (pDIB == nullptr) return FALSE;
    return Create(pDIB->GetClrTabAddress(), pDIB->GetNumClrEntries());
}

BOOL CvornDIBPal::Create(BITMAPINFO* pBMI) {
    if (pBMI == nullptr) return FALSE;
    return Create(dibColourTable(pBMI), CvornDIB::NumDIBColorEntries(pBMI));
}

BOOL CvornDIBPal::CreateWash() {
    constexpr int levels = 6, greys = 20;
    LogicalPalette palette(systemColours);
    if (!palette) return FALSE;
    readStaticColours(palette.entries());
    auto entry = palette.entries().begin() + staticColoursPerEnd;
    for (int red = 0; red < levels; ++red)
        for (int green = 0; green < levels; ++green)
            for (int blue = 0; blue < levels; ++blue)
                *entry++ = washColour(255 * red / levels, 255 * green / levels, 255 * blue / levels);
    for (int i = 0; i < greys; ++i) {
        const int grey = 255 * i / greys;
        *entry++ = washColour(grey, grey, grey);
    }
    return renew(*this, palette);
}

BOOL CvornDIBPal::CreateSystemColorPalette() {
    LogicalPalette palette(systemColours);
    if (!palette) return FALSE;
    readStaticColours(palette.entries());
    return renew(*this, palette);
}

int CvornDIBPal::GetNumColors() const {
    WORD count = 0;
    return ::GetObject(m_hObject, sizeof(count), &count) == 0 ? 0 : count;
}

BOOL CvornDIBPal::SetSysPalColors() {
    const WindowDC dc(::GetActiveWindow());
    if (!dc || (::GetDeviceCaps(dc.get(), RASTERCAPS) & RC_PALETTE) == 0) return FALSE;
    const int deviceColours = ::GetDeviceCaps(dc.get(), NUMCOLORS);
    const int hardwareColours = ::GetDeviceCaps(dc.get(), SIZEPALETTE);
    if (deviceColours < 0 || deviceColours > 256 || hardwareColours < deviceColours) return FALSE;

    // The pair makes the system fill its palette anew.
    ::SetSystemPaletteUse(dc.get(), SYSPAL_NOSTATIC);
    ::SetSystemPaletteUse(dc.get(), SYSPAL_STATIC);
    { const SelectedPalette realised(dc.get(), *this); }

    const UINT count = static_cast<UINT>(hardwareColours), fixed = static_cast<UINT>(deviceColours) / 2;
    LogicalPalette colours(static_cast<WORD>(count));
    if (!colours) return FALSE;
    ::GetSystemPaletteEntries(dc.get(), 0, count, colours.entries().data());
    for (UINT i = 0; i < count; ++i)
        colours.entries()[i].peFlags = i < fixed || i >= count - fixed ? 0 : PC_NOCOLLAPSE;
    ResizePalette(count);
    SetPaletteEntries(0, count, colours.entries().data());
    return TRUE;
}

void CvornDIBPal::Draw(HDC hdc, RECT* pRect, BOOL bBackground) {
    if (pRect == nullptr) return;
    const int count = std::min(GetNumColors(), 256);
    const SelectedPalette palette(hdc, *this, bBackground);
    const std::int64_t width = std::int64_t{pRect->right} - pRect->left;
    const std::int64_t height = std::int64_t{pRect->bottom} - pRect->top;
    const auto edge = [](LONG origin, std::int64_t extent, int cells) {
        return cells == 0 ? static_cast<int>(origin) : static_cast<int>(origin + extent * cells / 16 + 1);
    };
    for (int i = 0; i < count; ++i) {
        const UniqueBrush brush(::CreateSolidBrush(PALETTEINDEX(i)));
        const SelectedObject filling(hdc, brush.get());
        ::Rectangle(hdc, edge(pRect->left, width, i % 16) - 1, edge(pRect->top, height, i / 16) - 1,
                    edge(pRect->left, width, i % 16 + 1), edge(pRect->top, height, i / 16 + 1));
    }
}

void CvornDIBPal::Draw(CDC* pDC, CRect* pRect, BOOL bBackground) {
    Draw(pDC == nullptr ? nullptr : pDC->m_hDC, pRect, bBackground);
}
