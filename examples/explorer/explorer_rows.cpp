// SPDX-License-Identifier: MIT
// The rows of the chart: in its data sheet, as lines on the surface, and on the clipboard.
#include "clipboard.h"
#include "explorer_view.h"

#include "common/grid_rows.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <stdexcept>
#include <utility>

void CExplorerView::copyRows() {
    std::vector<int> rows;
    for (const RowLines::Line& line : m_sheet.selection())
        rows.push_back(line.row);
    if (rows.empty()) {
        rows.resize(m_grid.rows);
        std::iota(rows.begin(), rows.end(), 0);
    }
    if (!copyText(m_hWnd, examples::rowsAsText(m_grid, rows)))
        throw std::runtime_error("the clipboard does not take the rows");
}

void CExplorerView::pasteRows() {
    const std::optional<std::string> text = clipboardText(m_hWnd);
    if (!text) throw std::runtime_error("there is no text on the clipboard");
    const std::vector<RowLines::Line> selected = m_sheet.selection();
    setGrid(examples::withRows(m_grid, selected.empty() ? 0 : selected.front().row, *text));
}

void CExplorerView::setGrid(examples::Grid grid) {
    m_grid = std::move(grid);
    m_axes.fitTo(m_grid);
    m_legend.setNumbers(m_grid);
    m_sheet.update();
    SetUpdate(UPD_BUILD | UPD_FONTS, TRUE, TRUE);
}

/// The chart stands beside the sheet: further away, where it would reach under it, and more to the left.
void CExplorerView::OnOutputUpdateView(int nUnused) {
    constexpr double labels = 1.12; // what they need beside the chart
    const float zoom = m_fZoom, pan = m_fPanX;
    const double width = std::max(m_rcView.Width(), 1), height = std::max(m_rcView.Height(), 1);
    const double covered = m_sheet.widthIn(CRect(CPoint(0, 0), m_rcView.Size()));
    const double size = std::min(width, height) * labels / (width - covered);
    const double distance = (m_fDistance - zoom) * (covered > 0 ? std::max(size, 1.0) : 1.0);
    // As the base's projection has it.
    double halfView = std::atan(1.0 / m_fDistance) / m_fFovScale / 2;
    if (width < height) halfView *= height / width;
    m_fZoom = static_cast<float>(m_fDistance - distance);
    m_fPanX -= static_cast<float>(covered / height * distance * std::tan(halfView));
    CvornOGLWnd::OnOutputUpdateView(nUnused);
    m_fZoom = zoom;
    m_fPanX = pan;
}

void CExplorerView::drawRowLines() {
    const std::vector<RowLines::Line> lines = m_sheet.selection();
    if (!m_rowLines.shows(lines)) m_rowLines.build(m_grid, {m_grid, m_ramp, m_axes.extents()}, lines);
    m_rowLines.draw(std::max(m_fLineWidth * 2, static_cast<float>(m_rcView.Height()) / 300));
}

BOOL CExplorerView::OnMouseWheel(UINT nFlags, short zDelta, CPoint pt) {
    CPoint inside = pt; // the message's is on the screen
    ScreenToClient(&inside);
    layOutNow();
    if (!m_sheet.bounds().PtInRect(inside)) return CvornOGLWnd::OnMouseWheel(nFlags, zDelta, pt);
    if (m_sheet.turnWheel(zDelta)) showChanges();
    return TRUE;
}

/// The sheet's message: a row got another colour.
LRESULT CExplorerView::OnRowColour(WPARAM, LPARAM lParam) {
    m_sheet.takeColour(lParam);
    showChanges();
    return 0;
}
