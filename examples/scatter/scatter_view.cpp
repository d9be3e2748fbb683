// SPDX-License-Identifier: MIT
#include "scatter_view.h"

#include "common/axis_lines.h"
#include "common/legend.h"

#include <algorithm>
#include <cmath>
#include <utility>

using examples::AxisLabels;
using examples::AxisRange;

namespace {

constexpr float ballRadius = 0.62F; ///< the axes stay inside, and so in view, however they are turned
constexpr float leastRadius = 0.008F, greatestRadius = 0.03F; ///< of points

} // namespace

BEGIN_MESSAGE_MAP(CScatterView, CvornOGLWnd)
    ON_WM_LBUTTONDOWN()
    ON_WM_MOUSEMOVE()
    ON_MESSAGE(WM_MOUSELEAVE, &CScatterView::OnMouseLeave)
END_MESSAGE_MAP()

CScatterView::CScatterView(Points data) : m_data(std::move(data)) {
    m_clrBackground = RGB(250, 250, 248);
    m_lighting.SetPosition(0.6F, 0.9F, 1.1F);
    m_userRot.m_afPreset3D[2] = -148; // the corner where the axes meet lies at the back
    m_userRot.Set3D();
    const auto byValue = [](const Point& a, const Point& b) { return a.value < b.value; };
    const auto [least, greatest] = std::minmax_element(m_data.points.begin(), m_data.points.end(), byValue);
    m_least = least->value;
    m_greatest = greatest->value;
    m_logarithmic = m_least > 0 && m_greatest > 1000 * m_least;
    examples::makeLegend(m_legend, m_data.classes);
    placeAxes();
}

CvornAxis& CScatterView::axis(std::size_t which) {
    return which == 0 ? m_axes.m_axisX : which == 1 ? m_axes.m_axisY : m_axes.m_axisZ;
}

void CScatterView::placeAxes() {
    std::array<float, 3> lengths{};
    for (std::size_t i = 0; i < 3; ++i) {
        double least = HUGE_VAL, greatest = -HUGE_VAL;
        for (const Point& point : m_data.points) {
            least = std::min(least, point.position[i]);
            greatest = std::max(greatest, point.position[i]);
        }
        m_ranges[i] = AxisRange::around(least, greatest, 5);
        lengths[i] = static_cast<float>(m_ranges[i].length());
        axis(i).SetMin(0); // in minor steps: single precision may not hold the numbers themselves
        axis(i).SetMax(static_cast<float>(m_ranges[i].minorSteps()));
        axis(i).SetTick(5);
        axis(i).m_clrAxis = CvornColour(AxisLabels::ink, 1);
    }
    // Ranges of about the same length are taken for the same unit, and keep their proportions.
    const auto [shortest, longest] = std::minmax_element(lengths.begin(), lengths.end());
    if (!(*longest < 2 * *shortest)) lengths = {1, 1, 1};
    const float size = 2 * ballRadius / std::hypot(lengths[0], lengths[1], lengths[2]);
    for (float& length : lengths)
        length *= size;
    const float tip = m_axes.m_fTipLength;
    m_axes.UpdateLength(lengths[0] + tip, lengths[1] + tip, lengths[2] + tip, 1);
    m_axes.UpdateOrigin(-lengths[0] / 2, -lengths[1] / 2, -lengths[2] / 2);
    m_axes.m_clrAxis = CvornColour(AxisLabels::ink, 1);
    m_axes.m_clrGrid = CvornColour(RGB(190, 192, 200), 1);
    m_axes.m_clrMinorGrid = CvornColour(RGB(232, 233, 238), 1);
}

std::array<float, 3> CScatterView::modelPoint(const Point& point) {
    std::array<float, 3> model{};
    for (std::size_t i = 0; i < 3; ++i) {
        const double steps = (point.position[i] - m_ranges[i].low) / (m_ranges[i].tick / 5);
        float along[3];
        axis(i).vornVectorPos(along, static_cast<float>(steps * axis(i).GetTickStep()));
        model[i] = along[i];
    }
    return model;
}

float CScatterView::radiusOf(const Point& point) const {
    if (m_greatest == m_least) return (leastRadius + greatestRadius) / 2;
    const double share = m_logarithmic ? std::log(point.value / m_least) / std::log(m_greatest / m_least)
                                       : (point.value - m_least) / (m_greatest - m_least);
    return std::lerp(leastRadius, greatestRadius, static_cast<float>(share));
}

void CScatterView::drawSphere(std::size_t index, float scale) {
    const Point& point = m_data.points[index];
    const std::array<float, 3> centre = modelPoint(point);
    const float radius = scale * radiusOf(point);
    CvornColour(examples::legendColour(m_legend, point.category), 1).glColor();
    ::glPushMatrix();
    ::glTranslatef(centre[0], centre[1], centre[2]);
    ::glScalef(radius, radius, radius);
    ::glCallList(ListSphere);
    ::glPopMatrix();
}

void CScatterView::OnBuild() {
    m_axes.vornBuild(ListAxes, m_fLineWidth);
    ::glNewList(ListSphere, GL_COMPILE);
    GLUquadric* sphere = ::gluNewQuadric();
    ::gluSphere(sphere, 1, 20, 12);
    ::gluDeleteQuadric(sphere);
    ::glEndList();

    ::glNewList(ListPoints, GL_COMPILE);
    for (std::size_t i = 0; i < m_data.points.size(); ++i)
        drawSphere(i, 1);
    // A line from each point down to the floor tells where in the room it is.
    ::glDisable(GL_LIGHTING);
    CvornColour(RGB(150, 152, 160), 0.7F).glColor();
    ::glBegin(GL_LINES);
    for (const Point& point : m_data.points) {
        std::array<float, 3> end = modelPoint(point);
        ::glVertex3fv(end.data());
        float floor[3];
        m_axes.m_axisZ.vornVectorPos(floor, 0);
        end[2] = floor[2];
        ::glVertex3fv(end.data());
    }
    ::glEnd();
    ::glEndList();
}

void CScatterView::OnUpdateTextMetrics(CDC*, int) {
    CDC* const dc = m_oglDC.GetDC(); // what GL draws to: in print not the printer, but a surface
    if (dc == nullptr) return;
    m_labels.makeFont(*dc, m_rcView.Height(), ListFont);
    m_legend.UpdateMetrics(dc, &m_labels.font(), m_fLineWidth);
    m_tip.m_bValid = FALSE;
}

void CScatterView::OnOutputToDC(CDC*, int, int) {
    ::glPushAttrib(GL_ENABLE_BIT);
    if (m_hot >= 0) drawSphere(static_cast<std::size_t>(m_hot), 1.4F);
    ::glCallList(ListPoints);
    ::glDisable(GL_LIGHTING);
    ::glCallList(ListAxes);
    examples::drawAxisLines(m_axes, m_fLineWidth);
    drawLabels();
    CRect client(CPoint(0, 0), m_rcView.Size());
    client.DeflateRect(m_labels.lineHeight(), m_labels.lineHeight());
    m_legend.UpdatePosition(client);
    m_legend.oglOutput(&m_mapping, m_rcView.Height(), 0.03F, 0.001F, m_fLineWidth, ListLegend, ListFont);
    if (m_hot >= 0) drawTip();
    ::glPopAttrib();
}

void CScatterView::drawLabels() {
    m_labels.clear();
    for (std::size_t i : {2, 0, 1}) {
        std::vector<AxisLabels::Tick> ticks;
        for (int tick = 0; tick <= m_ranges[i].minorSteps() / 5; ++tick)
            ticks.push_back({axis(i).GetTickPos(5 * tick),
                             examples::tickText(m_ranges[i].low + tick * m_ranges[i].tick, m_ranges[i])});
        m_labels.add(m_mapping, m_axes, i, ticks, m_data.titles[i + 2], static_cast<int>((i + 1) % 3));
    }
    m_labels.draw(m_mapping);
}

void CScatterView::OnLButtonDown(UINT nFlags, CPoint pt) {
    if (examples::clickLegend(m_legend, pt, nFlags))
        SetUpdate(UPD_BUILD, TRUE, FALSE);
    else
        CvornOGLWnd::OnLButtonDown(nFlags, pt);
}
