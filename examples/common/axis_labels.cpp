// SPDX-License-Identifier: MIT
#include "axis_labels.h"

#include <algorithm>
#include <cmath>

namespace examples {

namespace {

const CvornAxis& axisOf(const CvornAxisSet& set, std::size_t which) {
    return which == 0 ? set.m_axisX : which == 1 ? set.m_axisY : set.m_axisZ;
}

void project(CvornOGLMapping& mapping, const float* base, const float* offset, double& x, double& y) {
    mapping.gluProject(static_cast<double>(base[0] + offset[0]), static_cast<double>(base[1] + offset[1]),
                       static_cast<double>(base[2] + offset[2]));
    x = mapping.GetPosXf();
    y = mapping.GetPosYf();
}

} // namespace

void AxisLabels::makeFont(CDC& dc, int pictureHeight, int listBase) {
    m_listBase = listBase;
    m_font.DeleteObject();
    m_font.CreateFont(-std::clamp(pictureHeight / 46, 10, 200), 0, 0, 0, FW_NORMAL, 0, 0, 0, ANSI_CHARSET,
                      OUT_TT_PRECIS, CLIP_DEFAULT_PRECIS, ANTIALIASED_QUALITY, VARIABLE_PITCH | FF_SWISS,
                      "Arial");
    CFont* old = dc.SelectObject(&m_font);
    dc.GetTextMetrics(&m_metrics);
    ::GetCharWidth32A(dc.m_hDC, 0, 255, m_advance.data());
    ::vornUseFontBitmaps(dc.m_hDC, listBase);
    dc.SelectObject(old);
}

SIZE AxisLabels::measure(const std::string& text) const {
    SIZE size = {0, m_metrics.tmHeight};
    for (unsigned char character : text)
        size.cx += m_advance[character];
    return size;
}

void AxisLabels::clear() {
    m_placed.clear();
    m_texts.clear();
}

AxisLabels::Edge AxisLabels::edgeOf(CvornOGLMapping& mapping, const CvornAxisSet& set,
                                    std::size_t which) const {
    float begin[3], end[3];
    axisOf(set, which).vornVectorPos(begin, 0);
    axisOf(set, which).vornVectorPos(end, 1);
    mapping.gluProject(0.0, 0.0, 0.0);
    const double centreX = mapping.GetPosXf(), centreY = mapping.GetPosYf();

    const std::size_t first = which == 0 ? 1 : 0, second = which == 2 ? 1 : 2;
    Edge best;
    double farthest = -1;
    // The numbers of x and y stay on the floor; those of z may stand at any of the four corners.
    for (int corner = 0; corner < (which == 2 ? 4 : 2); ++corner) {
        Edge edge;
        for (std::size_t i = 0; i < 3; ++i) {
            const bool away = (i == first && (corner & 1) != 0) || (i == second && (corner & 2) != 0);
            if (!away) continue;
            const float along = axisOf(set, i).GetNormalLength() - set.m_fTipLength;
            for (std::size_t k = 0; k < 3; ++k)
                edge.offset[k] += along * axisOf(set, i).m_afDirection[k];
        }
        double x0, y0, x1, y1;
        project(mapping, begin, edge.offset, x0, y0);
        project(mapping, end, edge.offset, x1, y1);
        const double length = std::hypot(x1 - x0, y1 - y0);
        edge.visible = length > 2.5 * m_metrics.tmHeight;
        if (!edge.visible) continue;
        // Across the edge, away from the centre. Of equals the left one, for z, and the lower.
        edge.outX = (y1 - y0) / length;
        edge.outY = -(x1 - x0) / length;
        const double across = edge.outX * ((x0 + x1) / 2 - centreX) + edge.outY * ((y0 + y1) / 2 - centreY);
        if (across < 0) {
            edge.outX = -edge.outX;
            edge.outY = -edge.outY;
        }
        const double distance = std::abs(across) - (which == 2 ? edge.outX : edge.outY) * m_metrics.tmHeight;
        if (distance <= farthest) continue;
        farthest = distance;
        best = edge;
    }
    return best;
}

void AxisLabels::addText(CvornOGLMapping& mapping, const CvornAxis& axis, const Edge& edge, const Tick& tick,
                         int priority, double distance) {
    if (tick.text.empty()) return;
    float point[3];
    axis.vornVectorPos(point, tick.position);
    const SIZE size = measure(tick.text);
    PlacedLabel label;
    project(mapping, point, edge.offset, label.x, label.y);
    label.outX = edge.outX;
    label.outY = edge.outY;
    label.distance = distance;
    label.width = size.cx;
    label.height = size.cy;
    label.priority = priority;
    m_placed.push_back(label);
    m_texts.push_back(tick.text);
}

void AxisLabels::add(CvornOGLMapping& mapping, const CvornAxisSet& set, std::size_t which,
                     std::span<const Tick> ticks, const std::string& title, int priority) {
    const CvornAxis& axis = axisOf(set, which);
    const Edge edge = edgeOf(mapping, set, which);
    if (!edge.visible) return;
    // The title stands outside the numbers, as far as the widest of them needs; the ends matter most of
    // these, then every second tick, then the rest.
    double widest = 0;
    for (std::size_t i = 0; i < ticks.size(); ++i) {
        const SIZE size = measure(ticks[i].text);
        widest = std::max(widest, std::abs(edge.outX) * size.cx + std::abs(edge.outY) * size.cy);
        const int rank = i == 0 || i + 1 == ticks.size() ? 3 : i % 2 == 0 ? 6 : 9;
        addText(mapping, axis, edge, ticks[i], priority + rank, m_metrics.tmHeight * 0.35);
    }
    addText(mapping, axis, edge, {0.5F, title}, priority, widest + m_metrics.tmHeight * 0.8);
}

void AxisLabels::draw(CvornOGLMapping& mapping, std::span<const CRect> keptClear) {
    const int* const viewport = mapping.m_anViewport; // the whole picture's; GL's is a part of a large one
    std::vector<LabelBox> taken;
    for (const CRect& rc : keptClear)
        taken.push_back({static_cast<double>(rc.left), static_cast<double>(viewport[3] - rc.bottom),
                         static_cast<double>(rc.Width()), static_cast<double>(rc.Height())});
    layOutLabels(m_placed, viewport[2], viewport[3], m_metrics.tmHeight * 0.35, taken);

    ::glPushAttrib(GL_ENABLE_BIT | GL_CURRENT_BIT | GL_LIST_BIT);
    for (GLenum capability : {GL_LIGHTING, GL_DEPTH_TEST, GL_TEXTURE_2D, GL_ALPHA_TEST})
        ::glDisable(capability);
    CvornColour(ink, 1).glColor();
    ::glListBase(static_cast<GLuint>(m_listBase));
    for (std::size_t i = 0; i < m_placed.size(); ++i) {
        const PlacedLabel& label = m_placed[i];
        if (!label.shown) continue;
        // Whole pixels: bitmaps have no others.
        mapping.gluUnProject(viewport[0] + std::floor(label.left) + 0.5,
                             viewport[1] + std::floor(label.bottom + m_metrics.tmDescent) + 0.5, 0.01);
        mapping.glRasterPos3d();
        ::glCallLists(static_cast<GLsizei>(m_texts[i].size()), GL_UNSIGNED_BYTE, m_texts[i].data());
    }
    ::glPopAttrib();
}

} // namespace examples
