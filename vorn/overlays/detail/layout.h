// SPDX-License-Identifier: MIT
#pragma once

#include <afxwin.h>
#include <string_view>

/// What the overlays measure and place with.
namespace vorn::detail {

/// Selects a font into a device context and puts the old one back at the end of the scope.
class SelectedFont {
public:
    SelectedFont(CDC& dc, CFont* font) : m_dc(dc), m_old(dc.SelectObject(font)) {}
    ~SelectedFont() { m_dc.SelectObject(m_old); }
    SelectedFont(const SelectedFont&) = delete;
    SelectedFont& operator=(const SelectedFont&) = delete;

private:
    CDC& m_dc;
    CFont* m_old;
};

/// The extent of a text in the font that the device context's attribute side has selected.
inline CSize textExtent(const CDC& dc, std::string_view text) {
    CSize extent;
    ::GetTextExtentPoint32A(dc.m_hAttribDC, text.data(), static_cast<int>(text.size()), &extent);
    return extent;
}

/// A size in HIMETRIC (0.01 mm) in the device's pixels.
inline CSize devicePixels(const CDC& dc, int himetricX, int himetricY) {
    CSize size(himetricX, himetricY);
    dc.HIMETRICtoDP(&size);
    return size;
}

/// The placement bits that toolbar and spread have in common. Other values count as left and top.
enum : DWORD {
    PlaceHorizontal = 0x1C0,
    PlaceHCentre = 0x80,
    PlaceRight = 0x100,
    PlaceVertical = 0xE00,
    PlaceVCentre = 0x400,
    PlaceBottom = 0x800,
};

/// Where the placement bits of a parameter word put something of this size in the area, y downwards.
inline CRect placed(DWORD param, const RECT& area, SIZE size) {
    const auto centred = [](int from, int to, int extent) {
        return static_cast<int>((static_cast<double>(from) + to) * 0.5 - extent * 0.5 + 0.5);
    };
    CPoint corner(area.left, area.top);
    if ((param & PlaceHorizontal) == PlaceHCentre) corner.x = centred(area.left, area.right, size.cx);
    if ((param & PlaceHorizontal) == PlaceRight) corner.x = area.right - size.cx;
    if ((param & PlaceVertical) == PlaceVCentre) corner.y = centred(area.top, area.bottom, size.cy);
    if ((param & PlaceVertical) == PlaceBottom) corner.y = area.bottom - size.cy;
    return {corner, size};
}

} // namespace vorn::detail
