// SPDX-License-Identifier: MIT
// A table of categories by months as columns, with a legend. A click on a name in the legend takes the colour
// from all others, Ctrl and a click adds another name.
#include "box.h"

#include "common/axis_labels.h"
#include "common/axis_lines.h"
#include "common/axis_range.h"
#include "common/chart_app.h"
#include "common/grid.h"
#include "common/legend.h"

#include <vorn/vorn.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <stdexcept>

namespace {

using examples::AxisLabels;
using examples::AxisRange;
using examples::Grid;

/// The view's display lists, and the program's resource.
enum { ListBars = 1, ListAxes, ListLegend, ListFont = 256 };
constexpr int ownTable = 1;

constexpr float ballRadius = 0.62F; ///< the axes stay inside, and so in view, however they are turned

class CBarsView : public CvornOGLWnd {
public:
    explicit CBarsView(Grid table);

protected:
    void OnUpdateTextMetrics(CDC* pDC, int bPrint) override;
    void OnBuild() override;
    void OnOutputToDC(CDC* pDC, int x, int y) override;

    afx_msg void OnLButtonDown(UINT nFlags, CPoint pt);
    DECLARE_MESSAGE_MAP()

private:
    void placeAxes();
    Box boxOf(int row, int column) const;
    void emitBoxes(void (Box::*emit)() const, float darker) const;
    std::vector<AxisLabels::Tick> ticksOf(const CvornAxis& axis, const std::vector<std::string>& names) const;
    void drawLabels();

    Grid m_table;
    AxisRange m_range;
    std::array<std::string, 3> m_titles; ///< of the axes
    CvornAxisSet m_axes{AXES_TIPS | AXES_GRIDS};
    AxisLabels m_labels;
    CvornSpread m_legend;
};

BEGIN_MESSAGE_MAP(CBarsView, CvornOGLWnd)
    ON_WM_LBUTTONDOWN()
END_MESSAGE_MAP()

CBarsView::CBarsView(Grid table) : m_table(std::move(table)) {
    m_clrBackground = RGB(250, 250, 248);
    m_lighting.SetPosition(-0.3F, -0.8F, 0.9F);
    m_userRot.m_afPreset3D[0] = -64; // steeper than the base's: fewer columns hide behind others
    m_userRot.m_afPreset3D[2] = -24; // the corner where the axes meet lies at the back
    m_userRot.Set3D();

    double least = 0, greatest = 0; // columns stand on 0
    for (double value : m_table.values) {
        if (std::isnan(value)) continue;
        least = std::min(least, value);
        greatest = std::max(greatest, value);
    }
    m_range = AxisRange::around(least, greatest, 5);
    m_range.high = m_range.low + std::ceil(m_range.length() / m_range.tick - 1e-6) * m_range.tick;

    // "city\month\mm" above the names of the rows: what runs along y, x and z.
    std::array<std::string, 3> parts;
    std::size_t part = 0;
    for (char c : m_table.corner) {
        if (c == '\\')
            part = std::min<std::size_t>(part + 1, 2);
        else
            parts[part] += c;
    }
    m_titles = {parts[1], parts[0], parts[2]};
    examples::makeLegend(m_legend, m_table.rowLabels);
    placeAxes();
}

/// Gives the axes the table's proportions, the first row at the far end, and a grid line between any two
/// cells.
void CBarsView::placeAxes() {
    const double x = m_table.columns, y = std::clamp(1.6 * m_table.rows, x / 4, x * 4),
                 z = 0.55 * std::max(x, y);
    const auto size = static_cast<float>(2 * ballRadius / std::hypot(x, y, z));
    const float lengths[] = {static_cast<float>(x) * size, static_cast<float>(y) * size,
                             static_cast<float>(z) * size};
    m_axes.m_axisX.SetMax(static_cast<float>(m_table.columns));
    m_axes.m_axisY.SetMax(static_cast<float>(m_table.rows));
    m_axes.m_axisZ.SetMax(static_cast<float>(m_range.length() / m_range.tick));
    m_axes.m_axisY.m_afDirection[1] = -1;
    m_axes.UpdateLength(lengths[0] + m_axes.m_fTipLength, lengths[1] + m_axes.m_fTipLength,
                        lengths[2] + m_axes.m_fTipLength, 1);
    m_axes.UpdateOrigin(-lengths[0] / 2, lengths[1] / 2, -lengths[2] / 2);
    m_axes.m_clrGrid = m_axes.m_clrMinorGrid = CvornColour(RGB(206, 208, 214), 1);
    const CvornColour ink(AxisLabels::ink, 1);
    m_axes.m_clrAxis = ink;
    for (CvornAxis* axis : {&m_axes.m_axisX, &m_axes.m_axisY, &m_axes.m_axisZ}) {
        axis->SetTick(5); // of the five minor steps to a tick each is one cell
        axis->m_clrAxis = ink;
    }
}

Box CBarsView::boxOf(int row, int column) const {
    constexpr double gap = 0.16; // of the cell, on either side
    const auto along = [](const CvornAxis& axis, int coordinate, double steps) {
        float point[3];
        axis.vornVectorPos(point, static_cast<float>(steps * axis.GetTickStep()));
        return point[coordinate];
    };
    const double base = -m_range.low / m_range.tick, top = base + m_table.at(row, column) / m_range.tick;
    return {{along(m_axes.m_axisX, 0, column + gap), along(m_axes.m_axisY, 1, row + 1 - gap),
             along(m_axes.m_axisZ, 2, std::min(base, top))},
            {along(m_axes.m_axisX, 0, column + 1 - gap), along(m_axes.m_axisY, 1, row + gap),
             along(m_axes.m_axisZ, 2, std::max(base, top))}};
}

void CBarsView::emitBoxes(void (Box::*emit)() const, float darker) const {
    for (int row = 0; row < m_table.rows; ++row) {
        CvornColour colour(examples::legendColour(m_legend, static_cast<std::size_t>(row)), 1);
        colour.Darker(darker);
        colour.glColor();
        for (int column = 0; column < m_table.columns; ++column) {
            if (!std::isnan(m_table.at(row, column))) (boxOf(row, column).*emit)();
        }
    }
}

void CBarsView::OnBuild() {
    m_axes.vornBuild(ListAxes, m_fLineWidth);
    ::glNewList(ListBars, GL_COMPILE);
    ::glBegin(GL_QUADS);
    emitBoxes(&Box::sides, 0);
    ::glEnd();
    ::glDisable(GL_LIGHTING);
    ::glBegin(GL_LINES);
    emitBoxes(&Box::edges, 0.25F);
    ::glEnd();
    ::glEndList();
}

void CBarsView::OnUpdateTextMetrics(CDC* pDC, int) {
    CDC* const dc = m_oglDC.GetDC(); // what GL draws to: in print not the printer, but a surface
    if (dc == nullptr) return;
    m_labels.makeFont(*dc, m_rcView.Height(), ListFont);
    m_legend.UpdateMetrics(dc, &m_labels.font(), m_fLineWidth);
}

void CBarsView::OnOutputToDC(CDC*, int, int) {
    ::glPushAttrib(GL_ENABLE_BIT);
    ::glCallList(ListBars);
    ::glDisable(GL_LIGHTING);
    ::glCallList(ListAxes);
    examples::drawAxisLines(m_axes, m_fLineWidth);
    drawLabels();
    CRect client(CPoint(0, 0), m_rcView.Size());
    client.DeflateRect(m_labels.lineHeight(), m_labels.lineHeight());
    m_legend.UpdatePosition(client);
    m_legend.oglOutput(&m_mapping, m_rcView.Height(), 0.02F, 0.001F, m_fLineWidth, ListLegend, ListFont);
    ::glPopAttrib();
}

/// A name in the middle of each cell.
std::vector<AxisLabels::Tick> CBarsView::ticksOf(const CvornAxis& axis,
                                                 const std::vector<std::string>& names) const {
    std::vector<AxisLabels::Tick> ticks;
    for (std::size_t i = 0; i < names.size(); ++i)
        ticks.push_back({static_cast<float>((static_cast<double>(i) + 0.5) * axis.GetTickStep()), names[i]});
    return ticks;
}

void CBarsView::drawLabels() {
    std::vector<AxisLabels::Tick> heights;
    for (int i = 0; i < m_axes.m_axisZ.GetTickCount(); ++i)
        heights.push_back(
            {m_axes.m_axisZ.GetTickPos(i), examples::tickText(m_range.low + i * m_range.tick, m_range)});
    m_labels.clear();
    m_labels.add(m_mapping, m_axes, 2, heights, m_titles[2], 0);
    m_labels.add(m_mapping, m_axes, 0, ticksOf(m_axes.m_axisX, m_table.columnLabels), m_titles[0], 1);
    m_labels.add(m_mapping, m_axes, 1, ticksOf(m_axes.m_axisY, m_table.rowLabels), m_titles[1], 2);
    m_labels.draw(m_mapping);
}

void CBarsView::OnLButtonDown(UINT nFlags, CPoint pt) {
    if (examples::clickLegend(m_legend, pt, nFlags))
        SetUpdate(UPD_BUILD, TRUE, FALSE);
    else
        CvornOGLWnd::OnLButtonDown(nFlags, pt);
}

class CBarsApp : public examples::CChartApp {
public:
    CBarsApp()
        : CChartApp("bars",
                    "Shows a table, a CSV or TSV file of up to 50 x 50 numbers, as columns: a category in\n"
                    "each row, its name first. Without a file: rain in five cities.\n") {}

protected:
    std::unique_ptr<CvornOGLWnd> makeView(const examples::CommandLine& line) override {
        Grid table = line.file.empty() ? examples::parseGrid(examples::embeddedText(ownTable), "bars")
                                       : examples::readGrid(line.file);
        if (std::max(table.rows, table.columns) > 50)
            throw std::runtime_error(line.file + ": more than 50 rows or columns cannot be told apart");
        for (int row = static_cast<int>(table.rowLabels.size()); row < table.rows; ++row)
            table.rowLabels.push_back("row " + std::to_string(row + 1));
        return std::make_unique<CBarsView>(std::move(table));
    }
};

CBarsApp theApp;

} // namespace
