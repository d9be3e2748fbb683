// SPDX-License-Identifier: MIT
#include "legend.h"

#include <array>

namespace examples {

COLORREF categoryColour(std::size_t category) {
    static constexpr std::array colours = {
        RGB(67, 147, 186), RGB(224, 92, 70),   RGB(120, 178, 92), RGB(242, 169, 59),  RGB(140, 110, 160),
        RGB(94, 184, 178), RGB(206, 120, 160), RGB(150, 120, 90), RGB(120, 128, 140), RGB(190, 190, 80)};
    return colours[category % colours.size()];
}

void makeLegend(CvornSpread& sheet, std::span<const std::string> names) {
    sheet.m_colText = CvornColour(RGB(60, 62, 70), 1);
    sheet.m_colBack = CvornColour(RGB(255, 255, 255), 0.8F);
    sheet.m_colMark = CvornColour(RGB(206, 212, 222), 0.9F);
    sheet.SetParam(SPP_VISIBLE | SPP_FRAME | SPP_ROWSEL | SPP_RIGHT | SPP_TOP | SPP_DESELECTLAST);
    sheet.SetMaxSize(static_cast<int>(names.size()), 2);
    for (std::size_t i = 0; i < names.size(); ++i) {
        const int row = static_cast<int>(i);
        sheet.SetColour(row, 0, categoryColour(i));
        sheet.SetText(row, 1, names[i].c_str());
    }
}

bool clickLegend(CvornSpread& sheet, CPoint pt, UINT nFlags) {
    if (!sheet.HitTest(pt)) return false;
    const int only = sheet.GetSelCount() == 1 ? sheet.GetFirstRowSel() : -1;
    sheet.OnLeftMouseButton(pt, nFlags, FALSE);
    if (only != -1 && sheet.GetSelCount() == 1 && sheet.GetFirstRowSel() == only) sheet.ClearRowSelection(-1);
    sheet.UpdateSelCount();
    return true;
}

COLORREF legendColour(const CvornSpread& sheet, std::size_t category) {
    const bool chosen = sheet.GetSelCount() == 0 || sheet.IsRowSelected(static_cast<int>(category));
    return chosen ? categoryColour(category) : RGB(216, 218, 222);
}

} // namespace examples
