// SPDX-License-Identifier: MIT
#include "vorn/overlays/text_panel.h"

#include "vorn/overlays/detail/layout.h"
#include "vorn/overlays/detail/shared_array.h"
#include "vorn/overlays/detail/text.h"
#include "vorn/overlays/detail/window_pen.h"

#include <algorithm>
#include <numeric>
#include <span>
#include <string_view>

namespace detail = vorn::detail;

namespace {

/// Calls visit(row, col, cell) for every cell, empty ones included: a tab ends a cell, a line feed a row.
template <typename Visit>
void forEachCell(std::string_view text, Visit visit) {
    int row = 0;
    int col = 0;
    while (true) {
        const auto end = std::ranges::find_if(text, [](char c) { return c == '\t' || c == '\n'; });
        const auto length = static_cast<std::size_t>(end - text.begin());
        visit(row, col, text.substr(0, length));
        if (length == text.size()) return;
        if (text[length] == '\t') {
            ++col;
        } else {
            ++row;
            col = 0;
        }
        text.remove_prefix(length + 1);
    }
}

/// One array of a panel's layout; empty where memory failed.
std::span<float> sizes(const std::shared_ptr<float[]>& array, int count) {
    return {array.get(), array == nullptr ? 0 : static_cast<std::size_t>(count)};
}

float sizeAt(std::span<const float> sizes, int index) {
    return static_cast<std::size_t>(index) < sizes.size() ? sizes[index] : 0;
}

void raise(std::span<float> sizes, int index, long size) {
    if (static_cast<std::size_t>(index) < sizes.size())
        sizes[index] = std::max(sizes[index], static_cast<float>(size));
}

/// The lower left corner of a panel's box, and the place of its text.
struct Place {
    float x, y;
    float textX, textY;
};

Place placeOf(const CvornTextPanel& panel, const CRect& rc) {
    const auto left = static_cast<float>(rc.left), right = static_cast<float>(rc.right);
    const auto top = static_cast<float>(rc.top), bottom = static_cast<float>(rc.bottom);
    const auto marginX = static_cast<float>(panel.m_szMargin.cx);
    const auto marginY = static_cast<float>(panel.m_szMargin.cy);
    Place place = {};

    switch (panel.m_nAlignH) {
    case TPA_HCENTER:
        place.x = (right + left) / 2 - panel.m_fWidth / 2;
        place.textX = place.x + marginX;
        break;
    case TPA_RIGHT: // the last column's gap makes room for the margin
        place.x = right - panel.m_fWidth;
        place.textX = place.x - marginX;
        break;
    default:
        place.x = left;
        place.textX = place.x + marginX;
    }
    switch (panel.m_nAlignV) {
    case TPA_VCENTER:
        place.y = (bottom + top) / 2 - panel.m_fHeight / 2;
        break;
    case TPA_BOTTOM:
        place.y = bottom + marginY * 0.5F;
        break;
    default:
        place.y = top - panel.m_fHeight;
    }
    place.textY = place.y + marginY + static_cast<float>(panel.m_tm.tmInternalLeading) +
                  static_cast<float>(panel.m_szGap.cy) * 0.5F;
    return place;
}

void outputFill(const detail::WindowPen& pen, const CvornColour& colour, const detail::WindowBox& box,
                float depth) {
    ::glBegin(GL_QUADS);
    colour.glColor();
    detail::normalOfOverlay();
    pen.quadBehind(box, depth);
    ::glEnd();
}

void outputFrame(const detail::WindowPen& pen, const CvornColour& colour, const detail::WindowBox& box,
                 float firstDepth, float depth) {
    ::glBegin(GL_LINE_LOOP);
    colour.glColor();
    pen.loop(box, firstDepth, depth);
    ::glEnd();
}

CRect hitRect(const detail::WindowBox& box) {
    const auto rounded = [](double value) { return static_cast<int>(value + 0.5); };
    CRect rc(rounded(box.left), rounded(box.top), rounded(box.right), rounded(box.bottom));
    rc.NormalizeRect();
    return rc;
}

} // namespace

void CvornTextPanel::UpdateText(const char* text) {
    if (text == nullptr) text = "";
    if (m_strText == text) return;

    m_bValid = 0;
    m_strText = text;
    m_nCols = 1;
    m_nRows = 1;
    forEachCell(detail::viewOf(m_strText), [this](int row, int col, std::string_view) {
        m_nCols = std::max(m_nCols, col + 1);
        m_nRows = row + 1;
    });
    m_pfColWidth = detail::makeSharedArray<float>(m_nCols);
    m_pfRowHeight = detail::makeSharedArray<float>(m_nRows);
}

void CvornTextPanel::UpdateMetrics(int listBase, int listBox, CvornColour text, CvornColour back, CDC* pDC,
                                   CFont* pFont) {
    m_nListBase = listBase;
    m_nListBox = listBox;
    m_colText = text;
    m_colBack = back;

    const detail::SelectedFont selected(*pDC, pFont);
    ::GetTextMetricsA(pDC->m_hAttribDC, &m_tm);
    m_szMargin = detail::devicePixels(*pDC, 50, 50);
    m_szGap = CSize(2 * m_tm.tmAveCharWidth, detail::devicePixels(*pDC, 200, 100).cy);

    const std::span<float> widths = sizes(m_pfColWidth, m_nCols);
    const std::span<float> heights = sizes(m_pfRowHeight, m_nRows);
    std::ranges::fill(widths, 0.0F);
    std::ranges::fill(heights, 0.0F);
    m_fWidth = 0;
    m_fHeight = 0;
    m_bValid = 1;
    if (m_strText.IsEmpty()) return;

    forEachCell(detail::viewOf(m_strText), [&](int row, int col, std::string_view cell) {
        const CSize extent = detail::textExtent(*pDC, cell);
        raise(widths, col, extent.cx + m_szGap.cx);
        raise(heights, row, extent.cy + m_szGap.cy);
    });
    m_fWidth = std::accumulate(widths.begin(), widths.end(), 0.0F) + static_cast<float>(2 * m_szMargin.cx);
    m_fHeight = std::accumulate(heights.begin(), heights.end(), 0.0F) +
                static_cast<float>(2 * m_szMargin.cy + m_tm.tmInternalLeading);
}

void CvornTextPanel::glOutput(const CRect& rc, CvornOGLMapping* map, float z, int highlight) {
    if (!m_bValid) return;

    CvornColour fill = m_colBack;
    if (highlight) fill.Change(0.04F);
    CvornColour frame = fill;
    frame.Change(0.1F);
    frame.m_fAlpha = 1;
    fill.m_fAlpha = 0.5F;

    const Place place = placeOf(*this, rc);
    const detail::WindowBox box = {place.x, place.y, place.x + m_fWidth, place.y + m_fHeight};
    m_rcHit = hitRect(box);

    detail::CompiledList list(m_nListBox);
    const detail::WindowPen pen(*map, box.left, box.bottom, m_fZ + z);
    outputFill(pen, fill, box, m_fZ + z);
    if (highlight) outputFrame(pen, frame, box, m_fZ + 0.001F, m_fZ + z);
    list.end();

    m_colText.glColor();
    ::glListBase(static_cast<GLuint>(m_nListBase));
    // The places are summed up on the way, since a sum from the table's corner to every cell would be
    // quadratic: each cell is drawn as the corner of a table that begins there.
    const std::span<const float> widths = sizes(m_pfColWidth, m_nCols);
    const std::span<const float> heights = sizes(m_pfRowHeight, m_nRows);
    double x = 0;
    double y = std::accumulate(heights.begin(), heights.end(), 0.0);
    forEachCell(detail::viewOf(m_strText), [&](int row, int col, std::string_view cell) {
        if (col == 0) {
            x = 0;
            y -= sizeAt(heights, row);
        } else {
            x += sizeAt(widths, col - 1);
        }
        if (cell.empty()) return;
        const float corner[3] = {static_cast<float>(place.textX + x), static_cast<float>(place.textY + y),
                                 m_fZ};
        glOutputCell(map, corner, m_nRows - 1, 0, cell.data(), static_cast<int>(cell.size()));
    });
}

void CvornTextPanel::glOutputCell(CvornOGLMapping* map, const float origin[3], int row, int col,
                                  const char* text, int length) const {
    float x = origin[0];
    float y = origin[1];
    for (int i = 0; i < col; ++i)
        x += sizeAt(sizes(m_pfColWidth, m_nCols), i);
    for (int i = row + 1; i < m_nRows; ++i)
        y += sizeAt(sizes(m_pfRowHeight, m_nRows), i);
    x += static_cast<float>(m_szGap.cx) * 0.5F;
    y += static_cast<float>(m_szGap.cy) * 0.5F;
    const detail::WindowPen pen(*map, x, y, origin[2]);
    pen.text(x, y, origin[2], {text, static_cast<std::size_t>(length)});
}

int CvornTextPanel::HitTest(const CRect& rc, POINT pt) const {
    if (!m_bEnabled) return 0;
    if (rc.top < rc.bottom) pt.y = rc.bottom - pt.y;
    return m_rcHit.PtInRect(pt);
}
