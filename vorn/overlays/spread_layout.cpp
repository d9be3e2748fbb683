// SPDX-License-Identifier: MIT
#include "vorn/overlays/detail/layout.h"
#include "vorn/overlays/detail/text.h"
#include "vorn/overlays/spread.h"

#include <algorithm>

namespace detail = vorn::detail;

namespace {

void unlessFixedGrow(CvornSpreadHeader& header, int size) {
    if (!header.GetParam(SHP_FIXED)) header.m_nSize = std::max(header.m_nSize, size);
}

/// Gives the headers their offsets, one behind the other from a start, and returns the end of the last.
int layOut(const std::shared_ptr<CvornSpreadHeader[]>& headers, int count, int start) {
    for (int i = 0; i < count; ++i) {
        headers[i].m_nLayout = start;
        start += headers[i].m_nSize;
    }
    return start;
}

void resetSizes(const std::shared_ptr<CvornSpreadHeader[]>& headers, int count) {
    for (int i = 0; i < count; ++i)
        if (!headers[i].GetParam(SHP_FIXED)) headers[i].m_nSize = 0;
}

/// Measures every cell and makes its row and column large enough for it.
void measureCells(CvornSpread& spread, const CDC& dc) {
    const CRect& pad = spread.m_rcPad;
    const CSize swatch = detail::textExtent(dc, "W");
    std::string buffer;
    for (int row = 0; row < spread.m_nRows; ++row) {
        for (int col = 0; col < spread.m_nCols; ++col) {
            CvornCell& cell = spread.m_pCells[spread.GetCellIndex(row, col)];
            const CSize extent = cell.m_nType == CvornCell::ColourCell
                                     ? swatch
                                     : detail::textExtent(dc, detail::textOf(cell.m_value, buffer));
            cell.m_dwReserved1 = static_cast<DWORD>(extent.cx);
            cell.m_dwReserved2 = static_cast<DWORD>(extent.cy);
            unlessFixedGrow(spread.m_pRowHeaders[row], extent.cy + pad.top + pad.bottom);
            unlessFixedGrow(spread.m_pColHeaders[col], extent.cx + pad.left + pad.right);
        }
    }
}

} // namespace

void CvornSpread::UpdateMetrics(CDC* pDC, CFont* pFont, float fScale) {
    const int scale = static_cast<int>(fScale + 0.99);
    resetSizes(m_pRowHeaders, m_nRows);
    resetSizes(m_pColHeaders, m_nCols);

    const detail::SelectedFont selected(*pDC, pFont);
    ::GetTextMetricsA(pDC->m_hAttribDC, &m_tmFont);
    const CSize margin = detail::devicePixels(*pDC, 50, 50) + CSize(scale, scale);
    m_rcMargin.SetRect(margin.cx, margin.cy, margin.cx, margin.cy);
    m_rcPad.SetRect(m_tmFont.tmAveCharWidth + scale, scale, m_tmFont.tmAveCharWidth + scale,
                    m_tmFont.tmInternalLeading + scale);

    m_nTitleWidth = 0;
    m_nTitleHeight = 0;
    if (!m_strTitle.IsEmpty()) {
        const CSize extent = detail::textExtent(*pDC, detail::viewOf(m_strTitle));
        m_nTitleWidth = extent.cx + m_rcPad.left + m_rcPad.right;
        m_nTitleHeight = extent.cy + m_rcPad.top + m_rcPad.bottom;
    }

    measureCells(*this, *pDC);
    const int rowsEnd = layOut(m_pRowHeaders, m_nRows, m_rcMargin.top + m_nTitleHeight);
    const int colsEnd = layOut(m_pColHeaders, m_nCols, m_rcMargin.left);
    m_nWidthDP = std::max<int>(colsEnd, m_rcMargin.left + m_nTitleWidth) + m_rcMargin.right;
    m_nHeightDP = rowsEnd + m_rcMargin.bottom;
}

void CvornSpread::UpdatePosition(const CRect& rcClient) {
    m_rcPos = detail::placed(m_dwParam, rcClient, CSize(m_nWidthDP, m_nHeightDP));
}
