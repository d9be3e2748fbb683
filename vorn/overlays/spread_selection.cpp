// SPDX-License-Identifier: MIT
#include "vorn/overlays/spread.h"

#include <algorithm>
#include <span>

namespace {

std::span<CvornSpreadHeader> headersOf(const std::shared_ptr<CvornSpreadHeader[]>& headers, int count) {
    return {headers.get(), static_cast<std::size_t>(count)};
}

bool isSelected(const CvornSpreadHeader& header) {
    return header.GetParam(SHP_SELECTED) != 0;
}

/// Deselects all but one.
void keepOnly(std::span<CvornSpreadHeader> headers, int keep) {
    for (std::size_t i = 0; i < headers.size(); ++i)
        if (static_cast<int>(i) != keep) headers[i].SetParam(0, SHP_SELECTED);
}

void selectAll(std::span<CvornSpreadHeader> headers) {
    for (CvornSpreadHeader& header : headers)
        header.SetParam(SHP_SELECTED, SHP_SELECTED);
}

/// Selects one and nothing else; 0 when it does not exist.
int selectOnly(std::span<CvornSpreadHeader> headers, int index) {
    keepOnly(headers, -1);
    if (index < 0 || index >= static_cast<int>(headers.size())) return 0;
    headers[index].SetParam(SHP_SELECTED, SHP_SELECTED);
    return 1;
}

} // namespace

int CvornSpread::SetSel(int index) {
    m_nSelCount = 0;
    m_nSelAnchor = -1;
    const std::span<CvornSpreadHeader> rows = headersOf(m_pRowHeaders, m_nRows);
    const std::span<CvornSpreadHeader> cols = headersOf(m_pColHeaders, m_nCols);
    if (IsRowMode()) {
        m_nSelCount = selectOnly(rows, index);
    } else if (IsColMode()) {
        m_nSelCount = selectOnly(cols, index);
    } else {
        keepOnly(rows, -1);
        keepOnly(cols, -1);
    }
    if (m_nSelCount > 0) m_nSelAnchor = index;
    return m_nSelCount;
}

int CvornSpread::SelectAll() {
    if (IsRowMode()) {
        selectAll(headersOf(m_pRowHeaders, m_nRows));
        m_nSelCount = m_nRows;
        m_nSelAnchor = m_nRows > 0 ? 0 : -1;
    } else if (IsColMode()) {
        selectAll(headersOf(m_pColHeaders, m_nCols));
        m_nSelCount = m_nCols;
        m_nSelAnchor = m_nCols > 0 ? 0 : -1;
    } else {
        ClearCellSelection(-1, -1);
    }
    return m_nSelCount;
}

int CvornSpread::IsRowSelected(int row) const {
    return row >= 0 && row < m_nRows && GetParam(SPP_ROWSEL) && isSelected(m_pRowHeaders[row]);
}

int CvornSpread::IsColSelected(int col) const {
    return col >= 0 && col < m_nCols && GetParam(SPP_COLSEL) && isSelected(m_pColHeaders[col]);
}

void CvornSpread::ClearRowSelection(int keep) {
    keepOnly(headersOf(m_pRowHeaders, m_nRows), keep);
    UpdateSelCount();
}

void CvornSpread::ClearColSelection(int keep) {
    keepOnly(headersOf(m_pColHeaders, m_nCols), keep);
    UpdateSelCount();
}

void CvornSpread::ClearCellSelection(int row, int col) {
    ClearRowSelection(row);
    ClearColSelection(col);
}

void CvornSpread::UpdateSelCount() {
    const auto count = [](std::span<CvornSpreadHeader> headers) {
        return static_cast<int>(std::ranges::count_if(headers, isSelected));
    };
    const int rows = GetParam(SPP_ROWSEL) ? count(headersOf(m_pRowHeaders, m_nRows)) : 0;
    const int cols = GetParam(SPP_COLSEL) ? count(headersOf(m_pColHeaders, m_nCols)) : 0;
    if (IsRowMode()) {
        m_nSelCount = rows;
    } else if (IsColMode()) {
        m_nSelCount = cols;
    } else { // every selected row crosses every selected column in one selected cell
        m_nSelCount = rows * cols;
    }
}

int CvornSpread::GetFirstRowSel() const {
    if (!IsRowMode()) return -1;
    if (IsRowSelected(m_nSelAnchor)) return m_nSelAnchor;
    for (int row = 0; row < m_nRows; ++row)
        if (IsRowSelected(row)) return row;
    return -1;
}

int CvornSpread::GetFirstColSel() const {
    if (!IsRowMode()) return -1;
    if (IsColSelected(m_nSelAnchor)) return m_nSelAnchor;
    for (int col = 0; col < m_nCols; ++col)
        if (IsColSelected(col)) return col;
    return -1;
}
