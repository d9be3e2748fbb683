// SPDX-License-Identifier: MIT
#include "data_sheet.h"

#include "statistics.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>

namespace {

constexpr std::size_t longestName = 20;

/// For the rows in turn: apart from each other, and from the ramps.
constexpr std::array<COLORREF, 6> colours = {RGB(208, 28, 60),  RGB(28, 92, 214), RGB(240, 120, 16),
                                             RGB(142, 36, 170), RGB(0, 150, 160), RGB(214, 40, 160)};

/// The label on one line, and no longer than the sheet has room for; without labels the row's number.
std::string nameOf(const examples::Grid& grid, int row) {
    if (grid.rowLabels.empty()) return std::to_string(row + 1);
    std::string name = grid.rowLabels[row];
    if (name.size() > longestName) name.replace(longestName - 3, std::string::npos, "...");
    std::ranges::replace_if(
        name, [](unsigned char c) { return c < ' '; }, ' ');
    return name;
}

/// What GetColour gives has been rounded.
COLORREF colourIn(const CvornSpread& spread, int row) {
    return static_cast<COLORREF>(spread.m_pCells[spread.GetCellIndex(row, 0)].m_value.lVal);
}

} // namespace

DataSheet::DataSheet(const examples::Grid& grid) : m_grid(grid) {
    m_all.m_colBack = CvornColour(RGB(255, 255, 255), 0.9F);
    m_all.m_colMark = CvornColour(RGB(196, 206, 226), 1);
    m_all.m_colText = CvornColour(RGB(44, 46, 54), 1);
    m_all.SetParam(SPP_VISIBLE | SPP_FRAME | SPP_ROWSEL | SPP_DESELECTLAST);
    update();
}

void DataSheet::setWindow(CWnd* window) {
    m_all.SetParent(window);
    m_all.SetMsgWnd(window, WM_ROW_COLOUR);
}

void DataSheet::takeColour(LPARAM cell) {
    const int row = *reinterpret_cast<const int*>(cell);
    if (row < 0 || row >= m_rowsShown) return;
    m_all.SetColour(m_firstShown + row + 1, colColour, colourIn(m_body, row));
    change();
}

void DataSheet::setShown(bool shown) {
    m_shown = shown;
    change();
}

void DataSheet::update() {
    m_all.SetMaxSize(m_grid.rows + 1, columnsOfAll);
    if (m_all.m_nRows == 0) return; // no memory
    for (int column : {colLeast, colMean, colGreatest})
        m_all.SetColParam(column, SHP_RIGHT, SHP_ALIGNMENT);
    m_all.SetText(0, colLeast, "min");
    m_all.SetText(0, colMean, "mean");
    m_all.SetText(0, colGreatest, "max");
    std::vector<Statistics> statistics;
    const std::span<const double> values(m_grid.values);
    const auto columns = static_cast<std::size_t>(m_grid.columns);
    for (std::size_t begin = 0; begin < values.size(); begin += columns)
        statistics.emplace_back(values.subspan(begin, columns));
    const Statistics all(values);
    const NumberFormat format(all.least, all.greatest);
    for (int row = 0; row < m_grid.rows; ++row) {
        const int line = row + 1;
        if (m_all.GetType(line, colColour) != CvornCell::ColourCell)
            m_all.SetColour(line, colColour, colours[row % colours.size()]);
        const Statistics& numbers = statistics[row];
        const bool any = numbers.count > 0;
        m_all.SetText(line, colName, nameOf(m_grid, row).c_str());
        m_all.SetText(line, colLeast, any ? format.text(numbers.least).c_str() : "-");
        m_all.SetText(line, colMean, any ? format.text(numbers.mean).c_str() : "-");
        m_all.SetText(line, colGreatest, any ? format.text(numbers.greatest).c_str() : "-");
    }
    m_all.UpdateSelCount();
    change();
}

CString DataSheet::heading(int first, int count) const {
    CString text;
    if (count == m_grid.rows)
        text.Format(count == 1 ? "%d row" : "%d rows", count);
    else
        text.Format("%d-%d of %d", first + 1, first + count, m_grid.rows);
    return text;
}

void DataSheet::updateMetrics(CDC& dc, CFont& font, int fontLists) {
    m_fontLists = fontLists;
    if (!m_shown) return;
    // The widest heading, so that the columns stay where they are while the sheet is scrolled.
    m_all.SetText(0, colName, heading(m_grid.rows - 1, m_grid.rows - 1));
    LOGFONTA description{};
    font.GetLogFont(&description);
    m_lineWidth = static_cast<float>(std::abs(description.lfHeight)) / 20;
    m_all.UpdateMetrics(&dc, &font, m_lineWidth);
}

int DataSheet::widthOf(int columns) const {
    int width = m_all.m_rcMargin.left + m_all.m_rcMargin.right;
    for (int column = 0; column < columns && column < m_all.m_nCols; ++column)
        width += m_all.m_pColHeaders[column].m_nSize;
    return width;
}

CRect DataSheet::areaIn(const CRect& free) const {
    CRect area = free;
    area.DeflateRect(m_all.m_rcPad.left, m_all.m_rcPad.left);
    return area;
}

int DataSheet::columnsIn(const CRect& free) const {
    for (int columns : {int{columnsOfAll}, columnsAtLeast})
        if (m_shown && m_all.m_nRows > 0 && widthOf(columns) <= areaIn(free).Width() / 2) return columns;
    return 0;
}

int DataSheet::widthIn(const CRect& free) const {
    const int columns = columnsIn(free);
    return columns == 0 ? 0 : free.right - areaIn(free).right + widthOf(columns);
}

CRect DataSheet::place(const CRect& free) {
    if (isChanged() || free != m_free) {
        m_free = free;
        arrange();
    }
    const CRect covered = bounds();
    return covered.IsRectEmpty() ? free : CRect(free.left, free.top, covered.left, free.bottom);
}

// Chooses the columns and rows that have room, and makes the two parts that are seen.
void DataSheet::arrange() {
    m_rowsShown = 0;
    m_columns = columnsIn(m_free);
    if (m_columns == 0) return;
    const CRect area = areaIn(m_free);
    const int width = widthOf(m_columns);
    const int rowHeight = m_all.m_pRowHeaders[0].m_nSize;
    const int headHeight = rowHeight + m_all.m_rcMargin.top + m_all.m_rcMargin.bottom;
    const int room = area.Height() - 2 * headHeight + rowHeight;
    m_rowsShown = std::clamp(room / std::max(rowHeight, 1), 0, m_grid.rows);
    m_firstShown = std::clamp(m_firstShown, 0, m_grid.rows - m_rowsShown);
    m_all.SetText(0, colName, heading(m_firstShown, m_rowsShown));
    const CPoint corner(area.right - width, area.top);
    m_head = part(0, 1, corner);
    m_head.m_colBack = CvornColour(RGB(228, 231, 238), 0.95F);
    m_body = part(m_firstShown + 1, m_rowsShown, corner + CSize(0, headHeight));
    m_rowsShown = m_body.m_nRows; // none, where memory fails
}

CvornSpread DataSheet::part(int firstRow, int rows, CPoint corner) const {
    CvornSpread spread(m_all);
    spread.SetMaxSize(0, 0); // lets go of what it shares
    spread.SetMaxSize(rows, m_columns);
    if (spread.m_nRows == 0) return spread;
    std::copy_n(m_all.m_pColHeaders.get(), m_columns, spread.m_pColHeaders.get());
    spread.m_pRowHeaders = {m_all.m_pRowHeaders, &m_all.m_pRowHeaders[firstRow]};
    int bottom = spread.m_rcMargin.top;
    for (int row = 0; row < rows; ++row) {
        std::copy_n(&m_all.m_pCells[m_all.GetCellIndex(firstRow + row, 0)], m_columns,
                    &spread.m_pCells[spread.GetCellIndex(row, 0)]);
        spread.m_pRowHeaders[row].m_nLayout = bottom;
        bottom += spread.m_pRowHeaders[row].m_nSize;
    }
    spread.m_nWidthDP = widthOf(m_columns);
    spread.m_nHeightDP = bottom + spread.m_rcMargin.bottom;
    spread.m_rcPos = CRect(corner, CSize(spread.m_nWidthDP, spread.m_nHeightDP));
    return spread;
}

CRect DataSheet::bounds() const {
    if (m_rowsShown == 0) return {0, 0, 0, 0};
    return {m_head.m_rcPos.TopLeft(), m_body.m_rcPos.BottomRight()};
}

void DataSheet::draw(CvornOGLMapping& mapping, CSize view) {
    for (CvornSpread* spread : {&m_head, &m_body})
        spread->oglOutput(&mapping, view.cy, textDepth, depthStep, std::max(m_lineWidth, 1.0F), 0,
                          m_fontLists);
}

void DataSheet::onPress(UINT flags, CPoint point) {
    // A click on a row deselects all others. The part in view knows its own only.
    CRect rows = m_body.m_rcPos;
    rows.DeflateRect(0, m_body.m_rcMargin.top, 0, m_body.m_rcMargin.bottom - 1);
    if ((flags & MK_CONTROL) == 0 && rows.PtInRect(point)) deselectOutOfView();
    m_all.UpdateSelCount();
    m_body.m_nSelCount = m_all.GetSelCount();
    m_body.OnLeftMouseButton(point, flags, TRUE);
    m_all.UpdateSelCount();
    change();
}

void DataSheet::deselectOutOfView() {
    for (int row = 0; row < m_grid.rows; ++row)
        if (row < m_firstShown || row >= m_firstShown + m_rowsShown)
            m_all.m_pRowHeaders[row + 1].SetParam(0, SHP_SELECTED);
}

bool DataSheet::scroll(int rows) {
    const int first = std::clamp(m_firstShown + rows, 0, std::max(m_grid.rows - m_rowsShown, 0));
    if (m_rowsShown == 0 || first == m_firstShown) return false;
    m_firstShown = first;
    change();
    return true;
}

bool DataSheet::turnWheel(short delta) {
    constexpr int rowsPerNotch = 3;
    m_wheel += delta;
    const int rows = m_wheel * rowsPerNotch / WHEEL_DELTA;
    m_wheel -= rows * WHEEL_DELTA / rowsPerNotch;
    return scroll(-rows);
}

std::vector<RowLines::Line> DataSheet::selection() const {
    std::vector<RowLines::Line> selected;
    for (int row = 0; row + 1 < m_all.m_nRows; ++row) {
        if (m_all.IsRowSelected(row + 1)) selected.push_back({row, colourIn(m_all, row + 1)});
    }
    return selected;
}

CRect DataSheet::colourCell(int row) const {
    const int index = row - m_firstShown;
    if (index < 0 || index >= m_rowsShown) return {0, 0, 0, 0};
    const CvornSpreadHeader &across = m_body.m_pColHeaders[colColour], &down = m_body.m_pRowHeaders[index];
    return {m_body.m_rcPos.TopLeft() + CSize(across.m_nLayout, down.m_nLayout),
            CSize(across.m_nSize, down.m_nSize)};
}
