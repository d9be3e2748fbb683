// SPDX-License-Identifier: MIT
#include "vorn/overlays/detail/shared_array.h"
#include "vorn/overlays/detail/text.h"
#include "vorn/overlays/spread.h"

#include <algorithm>

namespace detail = vorn::detail;

namespace {

/// False when memory fails.
bool copyCell(CvornCell& to, const CvornCell& from) {
    to.m_nType = from.m_nType;
    to.m_dwReserved1 = from.m_dwReserved1;
    to.m_dwReserved2 = from.m_dwReserved2;
    return SUCCEEDED(::VariantCopy(&to.m_value, const_cast<COleVariant*>(&from.m_value)));
}

/// The cells of a grid of another size, with those that both have; null without cells and when memory fails.
std::shared_ptr<CvornCell[]> resizedCells(const CvornSpread& spread, int rows, int cols) {
    auto cells = detail::makeSharedArray<CvornCell>(std::int64_t{rows} * cols);
    if (cells == nullptr) return nullptr;
    for (int row = 0; row < std::min(rows, spread.m_nRows); ++row)
        for (int col = 0; col < std::min(cols, spread.m_nCols); ++col)
            if (!copyCell(cells[row * cols + col], spread.m_pCells[spread.GetCellIndex(row, col)]))
                return nullptr;
    return cells;
}

/// Refused before any memory is touched. Headers without cells count as well.
bool isTooLarge(int rows, int cols) {
    return std::max({std::int64_t{rows}, std::int64_t{cols}, std::int64_t{rows} * cols}) >
           CvornSpread::MaxCells;
}

using Headers = std::shared_ptr<CvornSpreadHeader[]>;

Headers resizedHeaders(const Headers& old, int oldCount, int count) {
    if (count == oldCount) return old;
    auto headers = detail::makeSharedArray<CvornSpreadHeader>(count);
    if (headers != nullptr) std::copy_n(old.get(), std::min(oldCount, count), headers.get());
    return headers;
}

} // namespace

void CvornSpread::SetMaxSize(int rows, int cols) {
    rows = std::max(rows, 0);
    cols = std::max(cols, 0);
    if (rows == m_nRows && cols == m_nCols) return;
    if (isTooLarge(rows, cols)) {
        SetMaxSize(0, 0);
        return;
    }

    auto cells = resizedCells(*this, rows, cols);
    auto rowHeaders = resizedHeaders(m_pRowHeaders, m_nRows, rows);
    auto colHeaders = resizedHeaders(m_pColHeaders, m_nCols, cols);
    const bool complete = (cells != nullptr || rows == 0 || cols == 0) &&
                          (rowHeaders != nullptr || rows == 0) && (colHeaders != nullptr || cols == 0);
    if (!complete) {
        SetMaxSize(0, 0);
        return;
    }
    m_pCells = std::move(cells);
    m_pRowHeaders = std::move(rowHeaders);
    m_pColHeaders = std::move(colHeaders);
    m_nRows = rows;
    m_nCols = cols;
    m_nCells = rows * cols;
}

void CvornSpread::SetText(int row, int col, const char* text) {
    if (!Contains(row, col)) return;
    CvornCell& cell = m_pCells[GetCellIndex(row, col)];
    cell.m_nType = CvornCell::TextCell;
    detail::assignText(cell.m_value, text == nullptr ? "" : text);
}

void CvornSpread::SetColour(int row, int col, unsigned long rgb) {
    if (!Contains(row, col)) return;
    CvornCell& cell = m_pCells[GetCellIndex(row, col)];
    cell.m_nType = CvornCell::ColourCell;
    cell.m_value = static_cast<long>(rgb);
}

CString CvornSpread::GetText(int row, int col) const {
    std::string buffer;
    const std::string_view text = detail::textOf(m_pCells[GetCellIndex(row, col)].m_value, buffer);
    return CString(text.data(), static_cast<int>(text.size()));
}

CvornColour CvornSpread::GetColour(int row, int col) const {
    return CvornColour(detail::colourOf(m_pCells[GetCellIndex(row, col)].m_value), 1);
}

void CvornSpread::SetColParam(int col, unsigned long set, unsigned long mask) {
    if (col >= 0 && col < m_nCols) m_pColHeaders[col].SetParam(set, mask);
}
