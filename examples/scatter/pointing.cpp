// SPDX-License-Identifier: MIT
#include "scatter_view.h"

#include "common/window_shapes.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr double reach = 12; ///< pixels from the mouse to a point's edge

} // namespace

/// By the mapping as the last paint left it, so without a context too.
CScatterView::Spot CScatterView::spotOf(std::size_t index) {
    const Point& point = m_data.points[index];
    const std::array<float, 3> model = modelPoint(point);
    double in[3] = {model[0], model[1], model[2]}, out[3];
    m_mapping.gluProject(in, out);
    return {out[0], out[1], out[2], m_mapping.ModelToScreen(radiusOf(point))};
}

/// The point whose edge comes nearest to the mouse; of several under it the foremost. -1 for none in reach.
int CScatterView::nearestTo(CPoint pt) {
    if (m_mapping.GetScreenRadius() == 0) return -1; // never painted
    std::pair best(reach, 1.0);
    int nearest = -1;
    for (std::size_t i = 0; i < m_data.points.size(); ++i) {
        const Spot spot = spotOf(i);
        const double distance = std::hypot(pt.x - spot.x, m_rcView.Height() - pt.y - spot.y) - spot.radius;
        const std::pair rank(std::max(distance, 0.0), spot.depth);
        if (!(rank < best)) continue;
        best = rank;
        nearest = static_cast<int>(i);
    }
    return nearest;
}

void CScatterView::setHot(int index) {
    if (index == m_hot) return;
    m_hot = index;
    if (m_hot >= 0) {
        const Point& point = m_data.points[static_cast<std::size_t>(m_hot)];
        const auto& titles = m_data.titles;
        CString text;
        text.Format("%s\n%s\t%s\n%s\t%g\n%s\t%g\n%s\t%g\n%s\t%g", point.name.c_str(), titles[1].c_str(),
                    m_data.classes[point.category].c_str(), titles[2].c_str(), point.position[0],
                    titles[3].c_str(), point.position[1], titles[4].c_str(), point.position[2],
                    titles[5].c_str(), point.value);
        m_tip.UpdateText(text);
    }
    if (m_hWnd != nullptr) Invalidate(FALSE);
}

/// Beside the point, on the side where there is room, and never out of the picture.
void CScatterView::drawTip() {
    if (!m_tip.m_bValid)
        m_tip.UpdateMetrics(ListFont, ListTip, CvornColour(examples::AxisLabels::ink, 1),
                            CvornColour(RGB(255, 250, 220), 1), m_oglDC.GetDC(), &m_labels.font());
    const Spot spot = spotOf(static_cast<std::size_t>(m_hot));
    const double gap = 1.4 * spot.radius + 6;
    const auto place = [gap](double centre, double length, double room) {
        const double after = centre + gap;
        const double wanted = after + length <= room ? after : centre - gap - length;
        return static_cast<int>(std::clamp(wanted, 0.0, std::max(room - length, 0.0)));
    };
    const int left = place(spot.x, m_tip.m_fWidth, m_rcView.Width());
    const int top = place(spot.y, m_tip.m_fHeight, m_rcView.Height()) + static_cast<int>(m_tip.m_fHeight);
    // The panel lets half of the points behind it show through, which texts cannot bear.
    constexpr double depth = 0.01;
    examples::fillBox(m_mapping, left, top - m_tip.m_fHeight, left + m_tip.m_fWidth, top, depth + 0.002,
                      CvornColour(RGB(255, 255, 255), 0.75F));
    m_tip.SetAlignment(TPA_LEFT, TPA_TOP);
    m_tip.SetZ(static_cast<float>(depth));
    m_tip.glOutput(CRect(left, top, m_rcView.Width(), 0), &m_mapping, 0.001F, TRUE);
}

bool CScatterView::pointAt(const std::string& name) {
    const auto found = std::find_if(m_data.points.begin(), m_data.points.end(),
                                    [&](const Point& point) { return point.name == name; });
    if (found == m_data.points.end()) return false;
    setHot(static_cast<int>(found - m_data.points.begin()));
    return true;
}

void CScatterView::OnMouseMove(UINT nFlags, CPoint pt) {
    CvornOGLWnd::OnMouseMove(nFlags, pt);
    // While a button is held the chart turns or moves, and the panel goes with its point.
    if ((nFlags & (MK_LBUTTON | MK_RBUTTON)) != 0) return;
    TRACKMOUSEEVENT track = {sizeof track, TME_LEAVE, m_hWnd, 0};
    ::TrackMouseEvent(&track);
    setHot(nearestTo(pt));
}

LRESULT CScatterView::OnMouseLeave(WPARAM, LPARAM) {
    setHot(-1);
    return 0;
}
