// SPDX-License-Identifier: MIT
#include "vorn/overlays/detail/text.h"
#include "vorn/overlays/detail/window_pen.h"
#include "vorn/overlays/spread.h"

#include <algorithm>

namespace detail = vorn::detail;

namespace {

/// One drawing of a spread. Rectangles and points are in client coordinates.
class Drawing {
public:
    Drawing(const CvornSpread& spread, CvornOGLMapping& map, int viewHeight, float depth)
        : m_spread(spread), m_map(map),
          m_pen(map, spread.m_rcPos.left, viewHeight - spread.m_rcPos.bottom, depth), m_height(viewHeight) {}

    void background(float depth) const {
        m_spread.m_colBack.glColor();
        detail::normalOfOverlay();
        quad(m_spread.m_rcPos, depth);
    }

    void selectedRows(float depth) const {
        if (m_spread.GetParam(SPP_ROWSEL | SPP_COLSEL) != SPP_ROWSEL) return;
        CRect bar = m_spread.m_rcPos;
        bar.DeflateRect(m_spread.m_rcPad.left, 0, m_spread.m_rcPad.right, 0);
        for (int row = 0; row < m_spread.m_nRows; ++row) {
            if (!m_spread.IsRowSelected(row)) continue;
            bar.top = rowTop(row);
            bar.bottom = bar.top + m_spread.m_pRowHeaders[row].m_nSize;
            quad(bar, depth);
        }
    }

    void frame(float depth, float lineWidth) const {
        ::glLineWidth(lineWidth);
        ::glBegin(GL_LINE_LOOP);
        m_spread.m_colMark.glColor();
        detail::normalOfOverlay();
        loop(m_spread.m_rcPos, depth);
        ::glEnd();
    }

    void swatches(float depth) const {
        ::glBegin(GL_QUADS);
        detail::normalOfOverlay();
        forEachCell(CvornCell::ColourCell, [&](int row, int col, const CvornCell&) {
            m_spread.GetColour(row, col).glColor();
            m_pen.quadBehind(detail::windowBox(swatch(row, col), m_height), depth);
        });
        ::glEnd();
    }

    void swatchFrames(float depth, float lineWidth) const {
        ::glLineWidth(lineWidth);
        forEachCell(CvornCell::ColourCell, [&](int row, int col, const CvornCell&) {
            CvornColour colour(static_cast<unsigned long>(m_spread.GetColour(row, col)), 1);
            colour.Change(0.2F);
            ::glBegin(GL_LINE_LOOP);
            colour.glColor();
            detail::normalOfOverlay();
            loop(swatch(row, col), depth);
            ::glEnd();
        });
    }

    void title(float depth) const {
        if (m_spread.m_strTitle.IsEmpty()) return;
        const CRect& pos = m_spread.m_rcPos;
        const double x = pos.left + m_spread.m_rcPad.left +
                         (static_cast<double>(pos.left) + pos.right) * 0.5 - m_spread.m_nTitleWidth * 0.5;
        const int lineBottom = pos.top + m_spread.m_rcMargin.top + m_spread.m_nTitleHeight;
        text(x, lineBottom - m_spread.m_rcPad.bottom, depth, detail::viewOf(m_spread.m_strTitle));
    }

    void texts(float depth) const {
        std::string buffer;
        const CRect& pad = m_spread.m_rcPad;
        forEachCell(CvornCell::TextCell, [&](int row, int col, const CvornCell& cell) {
            const std::string_view value = detail::textOf(cell.m_value, buffer);
            if (value.empty()) return;
            const CvornSpreadHeader& column = m_spread.m_pColHeaders[col];
            const int spare = column.m_nSize - pad.left - pad.right - static_cast<int>(cell.m_dwReserved1);
            double x = colLeft(col) + pad.left;
            if (column.GetParam(SHP_ALIGNMENT) == SHP_RIGHT) x += spare;
            if (column.GetParam(SHP_ALIGNMENT) == SHP_HCENTER) x += spare * 0.5;
            text(x, rowTop(row) + m_spread.m_pRowHeaders[row].m_nSize - pad.bottom, depth, value);
        });
    }

private:
    int rowTop(int row) const { return m_spread.m_rcPos.top + m_spread.m_pRowHeaders[row].m_nLayout; }
    int colLeft(int col) const { return m_spread.m_rcPos.left + m_spread.m_pColHeaders[col].m_nLayout; }

    CRect swatch(int row, int col) const {
        const CRect& pad = m_spread.m_rcPad;
        const int inset = std::max(pad.top, pad.bottom);
        CRect rc(CPoint(colLeft(col), rowTop(row)),
                 CSize(m_spread.m_pColHeaders[col].m_nSize, m_spread.m_pRowHeaders[row].m_nSize));
        rc.DeflateRect(pad.left, inset, pad.right, inset);
        return rc;
    }

    void quad(const CRect& rc, float depth) const {
        detail::windowQuad(m_map, detail::windowBox(rc, m_height), depth);
    }

    void loop(const CRect& rc, float depth) const { m_pen.loop(detail::windowBox(rc, m_height), depth); }

    void text(double x, int y, float depth, std::string_view value) const {
        m_pen.text(x, m_height - y, depth, value);
    }

    template <typename Visit>
    void forEachCell(long type, Visit visit) const {
        const CvornCell* cell = m_spread.m_pCells.get();
        for (int row = 0; row < m_spread.m_nRows; ++row)
            for (int col = 0; col < m_spread.m_nCols; ++col, ++cell)
                if (cell->m_nType == type) visit(row, col, *cell);
    }

    const CvornSpread& m_spread;
    CvornOGLMapping& m_map;
    detail::WindowPen m_pen;
    int m_height;
};

} // namespace

void CvornSpread::oglOutput(CvornOGLMapping* pMap, int nViewHeight, float fZ, float fDZ, float fLineWidth,
                            int nList, int nFontBase) {
    const Drawing drawing(*this, *pMap, nViewHeight, fZ);

    detail::CompiledList list(nList);
    ::glBegin(GL_QUADS);
    drawing.background(fZ + 4 * fDZ);
    m_colMark.glColor();
    drawing.selectedRows(fZ + 3 * fDZ);
    ::glEnd();
    if (GetParam(SPP_FRAME)) drawing.frame(fZ, fLineWidth);
    drawing.swatches(fZ);
    drawing.swatchFrames(fZ, std::max(1.0F, fLineWidth * 0.5F));
    list.end();

    ::glListBase(static_cast<GLuint>(nFontBase));
    m_colText.glColor();
    drawing.title(fZ);
    drawing.texts(fZ);
}
