// SPDX-License-Identifier: MIT
#include "legend.h"

#include "statistics.h"

#include "common/window_shapes.h"

#include <algorithm>
#include <cmath>

using examples::Grid;

namespace {

constexpr COLORREF ink = RGB(40, 42, 50);
constexpr COLORREF edge = RGB(212, 214, 220);
constexpr COLORREF paper = RGB(255, 255, 255);

/// A longer title ends in dots.
constexpr std::size_t longestTitle = 24;

int widthOf(const CDC& dc, const std::string& text) {
    CSize size;
    ::GetTextExtentPoint32A(dc.m_hAttribDC, text.data(), static_cast<int>(text.size()), &size);
    return size.cx;
}

} // namespace

ChartLegend::ChartLegend(const std::string& title, const Grid& grid, const examples::ColourRamp& ramp)
    : m_title(title.size() <= longestTitle ? title : title.substr(0, longestTitle - 3) + "..."),
      m_ramp(ramp) {
    // Tabs and line feeds would be columns and rows of the panel.
    std::replace_if(
        m_title.begin(), m_title.end(), [](unsigned char c) { return c < ' '; }, ' ');
    m_panel.SetZ(textDepth);
    setPlace(LegendPlace());
    setNumbers(grid);
}

void ChartLegend::setPlace(const std::optional<LegendPlace>& place) {
    m_place = place;
    m_lastPlace = place.value_or(LegendPlace());
    m_panel.SetAlignment(m_lastPlace.horizontal, m_lastPlace.vertical);
    change();
}

void ChartLegend::setShown(bool shown) {
    m_place = shown ? std::optional(m_lastPlace) : std::nullopt;
    change();
}

void ChartLegend::setNumbers(const Grid& grid) {
    const Statistics numbers(grid.values);
    const NumberFormat format(numbers.least, numbers.greatest);
    const auto text = [&](double number) { return numbers.count > 0 ? format.text(number) : "-"; };
    m_rows = {{"rows", std::to_string(grid.rows)},
              {"columns", std::to_string(grid.columns)},
              {"minimum", text(numbers.least)},
              {"maximum", text(numbers.greatest)},
              {"mean", text(numbers.mean)}};
}

void ChartLegend::updateMetrics(CDC& dc, CFont& font, int fontLists) {
    CFont* const old = dc.SelectObject(&font);
    TEXTMETRICA metrics = {};
    ::GetTextMetricsA(dc.m_hAttribDC, &metrics);
    m_lineHeight = metrics.tmHeight;
    int widest = 0;
    for (const Row& row : m_rows)
        widest = std::max(widest, widthOf(dc, row.number));
    const int blank = std::max(widthOf(dc, " "), 1);
    // Blanks put the numbers to the right, and a blank last row makes room for the colours.
    std::string text = m_title;
    for (const Row& row : m_rows) {
        const int blanks = (widest - widthOf(dc, row.number) + blank / 2) / blank;
        text += "\n" + row.name + "\t" + std::string(static_cast<std::size_t>(blanks), ' ') + row.number;
    }
    text += "\n ";
    dc.SelectObject(old);
    m_panel.UpdateText(text.c_str());
    m_panel.UpdateMetrics(fontLists, 0, CvornColour(ink, 1), CvornColour(paper, 1), &dc, &font);
}

CRect ChartLegend::place(const CRect& free) {
    m_bounds = CRect(0, 0, 0, 0);
    CRect area = free;
    area.DeflateRect(m_lineHeight / 2, m_lineHeight / 2);
    const CSize size(static_cast<int>(std::ceil(m_panel.m_fWidth)),
                     static_cast<int>(std::ceil(m_panel.m_fHeight)));
    const bool fits = size.cx <= area.Width() && size.cy <= area.Height() &&
                      3 * size.cx * size.cy < free.Width() * free.Height();
    if (!m_place || !fits) return free;
    CPoint corner = area.TopLeft();
    if (m_place->horizontal == TPA_RIGHT) corner.x = area.right - size.cx;
    if (m_place->horizontal == TPA_HCENTER) corner.x += (area.Width() - size.cx) / 2;
    if (m_place->vertical == TPA_BOTTOM) corner.y = area.bottom - size.cy;
    if (m_place->vertical == TPA_VCENTER) corner.y += (area.Height() - size.cy) / 2;
    m_bounds = CRect(corner, size);
    return free;
}

void ChartLegend::draw(CvornOGLMapping& mapping, CSize view) {
    // The panel covers half of what is behind it; texts need more than that over a dark surface.
    const double left = m_bounds.left, right = m_bounds.right;
    const double bottom = view.cy - m_bounds.bottom, top = view.cy - m_bounds.top;
    examples::fillBox(mapping, left, bottom, right, top, textDepth + 3 * depthStep,
                      CvornColour(paper, 0.65F));
    // A panel at the bottom keeps half of its margin from there.
    const int ground = m_place->vertical == TPA_BOTTOM ? m_panel.m_szMargin.cy / 2 : 0;
    m_panel.glOutput(
        CRect(m_bounds.left, view.cy - m_bounds.top, m_bounds.right, view.cy - m_bounds.bottom - ground),
        &mapping, 2 * depthStep, m_hot);
    const double line = std::max(1.0, std::round(m_lineHeight / 16.0)), inset = m_panel.m_szGap.cx / 2.0 + 1;
    examples::frameBox(mapping, left, bottom, right, top, textDepth, line, CvornColour(edge, 1));
    const double underTitle = top - std::round(m_lineHeight * 1.4);
    examples::fillBox(mapping, left + inset, underTitle, right - inset, underTitle + line, textDepth,
                      CvornColour(edge, 1));
    drawColours(mapping, left + inset, bottom + std::round(m_lineHeight * 0.45), right - inset);
}

/// From the least number's colour to the greatest's.
void ChartLegend::drawColours(CvornOGLMapping& mapping, double left, double bottom, double right) const {
    constexpr int steps = 64;
    const auto colourAt = [this](int step) {
        const examples::Rgb colour = m_ramp.at(step / double{steps});
        return CvornColour(RGB(colour.red, colour.green, colour.blue), 1);
    };
    const double step = (right - left) / steps, top = bottom + std::round(m_lineHeight * 0.45);
    for (int i = 0; i < steps; ++i)
        examples::fillBox(mapping, left + i * step, bottom, left + (i + 1) * step, top, textDepth,
                          colourAt(i), colourAt(i + 1));
}

void ChartLegend::onHover(bool inside) {
    m_hot = inside;
    change();
}
