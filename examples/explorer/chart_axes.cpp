// SPDX-License-Identifier: MIT
#include "chart_axes.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <utility>

using examples::AxisRange;
using examples::Grid;
using examples::MeshExtents;

namespace {

/// The axes with their tips stay in a ball of this radius, and so in view, however the chart is turned.
constexpr float ballRadius = 0.60f;
constexpr float tipLength = 0.04f;
constexpr int wantedTicks = 5;
constexpr int axisList = 900;
constexpr COLORREF ink = RGB(60, 62, 70);

// Numbers of even steps, such as years or metres; false for any other labels.
bool readScale(const std::vector<std::string>& labels, double& first, double& last) {
    if (labels.size() < 2) return false;
    std::vector<double> numbers;
    for (const std::string& label : labels) {
        char* end = nullptr;
        numbers.push_back(std::strtod(label.c_str(), &end));
        if (end == label.c_str() || *end != '\0' || !std::isfinite(numbers.back())) return false;
    }
    const double step = (numbers.back() - numbers.front()) / static_cast<double>(numbers.size() - 1);
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        if (std::abs(numbers[i] - numbers.front() - step * static_cast<double>(i)) >
            std::abs(step) * 0.2) // rounded figures
            return false;
    }
    first = numbers.front();
    last = numbers.back();
    return step != 0;
}

} // namespace

void ChartAxes::Scale::fit() {
    // Beyond, there is no room for sums and products.
    first = std::clamp(first, -1e300, 1e300);
    last = std::clamp(last, -1e300, 1e300);
    reversed = first > last;
    const double sign = reversed ? -1 : 1;
    range = AxisRange::around(sign * first, sign * last, wantedTicks);
    // A label belongs to a whole number.
    if (!names.empty() && range.tick < 1) {
        range.tick = 1;
        range.low = std::floor(sign * first);
        range.high = range.low + std::ceil((sign * last - range.low) * 5) / 5;
        if (range.high <= range.low) range.high = range.low + 1;
    }
}

double ChartAxes::Scale::valueAt(int tick) const {
    const double value = range.low + range.tick * tick;
    return reversed ? -value : value;
}

std::string ChartAxes::Scale::textAt(int tick) const {
    const double value = valueAt(tick);
    if (names.empty()) return examples::tickText(value, range);
    const auto index = static_cast<long long>(std::llround(value));
    return index >= 0 && index < static_cast<long long>(names.size()) ? names[static_cast<std::size_t>(index)]
                                                                      : "";
}

ChartAxes::Scale ChartAxes::scaleOf(const std::vector<std::string>& labels, int count, const char* what) {
    Scale scale;
    scale.title = what;
    if (!readScale(labels, scale.first, scale.last)) {
        scale.first = labels.empty() ? 1 : 0;
        scale.last = scale.first + count - 1;
        scale.names = labels;
        if (labels.size() > 1) scale.title = labels.front() + " to " + labels.back();
    }
    scale.fit();
    return scale;
}

ChartAxes::ChartAxes(const Grid& grid, Titles titles)
    : m_set(AXES_TIPS | AXES_GRIDS | SHOW_LABELS | SHOW_PLANES | SHOW_AXES),
      m_whole(MeshExtents::inBall(grid, ballRadius)) {
    Scale values;
    values.title = "value";
    values.first = HUGE_VAL;
    values.last = -HUGE_VAL;
    for (double value : grid.values) {
        values.first = std::min(values.first, std::isnan(value) ? HUGE_VAL : value);
        values.last = std::max(values.last, std::isnan(value) ? -HUGE_VAL : value);
    }
    if (values.first > values.last) values.first = values.last = 0; // all holes
    values.fit();
    m_scales = {scaleOf(grid.columnLabels, grid.columns, "column"), scaleOf(grid.rowLabels, grid.rows, "row"),
                values};
    const std::size_t cut = grid.corner.find_first_of("\\/");
    if (cut != std::string::npos) {
        m_scales[0].title = grid.corner.substr(cut + 1);
        m_scales[1].title = grid.corner.substr(0, cut);
    }
    // The first row lies at the far end, and the rows run towards the eye: so the three planes stand behind
    // the surface, seen from in front, from the right or from above.
    m_set.m_axisY.m_afDirection[1] = -1;
    for (std::size_t i = 0; i < titles.size(); ++i) {
        if (!titles[i].empty()) m_scales[i].title = std::move(titles[i]);
    }
    const CvornColour dark(ink, 1);
    m_set.m_clrAxis = dark;
    m_set.m_clrGrid = CvornColour(RGB(176, 178, 186), 1);
    m_set.m_clrMinorGrid = CvornColour(RGB(226, 227, 232), 1);
    m_set.m_axisX.m_clrAxis = m_set.m_axisY.m_clrAxis = m_set.m_axisZ.m_clrAxis = dark;
    place();
}

void ChartAxes::toggle(DWORD bits) {
    m_set.SetParam(m_set.GetParam(~0UL) ^ bits);
    if ((bits & SHOW_AXES) != 0) place();
}

// Sizes surface and axes so that all of it stays in the ball.
void ChartAxes::place() {
    if (!shows(SHOW_AXES)) {
        m_extents = m_whole;
        return;
    }
    const std::array<float, 3> whole = {m_whole.width, m_whole.depth, m_whole.height};
    std::array<double, 3> perUnit{}, low{}, high{};
    double reach = 0;
    for (std::size_t i = 0; i < 3; ++i) {
        const Scale& scale = m_scales[i];
        const double sign = scale.reversed ? -1 : 1;
        const double extent = std::abs(scale.last - scale.first);
        const double middle = sign * (scale.first + scale.last) / 2;
        perUnit[i] = whole[i] / (extent > 0 ? extent : scale.range.length());
        low[i] = (scale.range.low - middle) * perUnit[i];
        high[i] = (scale.range.high - middle) * perUnit[i];
        reach += std::pow(std::max(std::abs(low[i]), std::abs(high[i])), 2);
    }
    const double size = (ballRadius - tipLength) / std::sqrt(reach);
    m_extents = {static_cast<float>(whole[0] * size), static_cast<float>(whole[1] * size),
                 static_cast<float>(whole[2] * size)};

    const std::array<CvornAxis*, 3> axes = {&m_set.m_axisX, &m_set.m_axisY, &m_set.m_axisZ};
    std::array<float, 3> lengths{};
    for (std::size_t i = 0; i < 3; ++i) {
        const Scale& scale = m_scales[i];
        lengths[i] = static_cast<float>((high[i] - low[i]) * size) + tipLength;
        // A range that single precision cannot tell apart is counted in minor steps instead.
        const double length = scale.range.length();
        const double share = std::max(std::abs(scale.range.low), std::abs(scale.range.high)) / length;
        if (share > 1e4 || length > 1e30 || length < 1e-30) {
            axes[i]->SetMin(0);
            axes[i]->SetMax(static_cast<float>(scale.range.minorSteps()));
            axes[i]->SetTick(5);
            continue;
        }
        axes[i]->SetMin(static_cast<float>(scale.range.low));
        axes[i]->SetMax(static_cast<float>(scale.range.high));
        axes[i]->SetTick(static_cast<float>(scale.range.tick));
    }
    m_set.UpdateLength(lengths[0], lengths[1], lengths[2], 1);
    m_set.UpdateOrigin(static_cast<float>(low[0] * size), static_cast<float>(-low[1] * size),
                       static_cast<float>(low[2] * size));
}

void ChartAxes::build(float lineWidth) {
    if (!shows(SHOW_AXES)) return;
    if (shows(SHOW_PLANES)) {
        m_set.vornBuild(axisList, lineWidth);
        return;
    }
    CvornAxisSet bare(m_set);
    bare.m_imageXY = bare.m_imageXZ = bare.m_imageYZ = CvornDIBTexture();
    bare.vornBuild(axisList, lineWidth);
}

void ChartAxes::draw() const {
    if (!shows(SHOW_AXES)) return;
    ::glPushAttrib(GL_ENABLE_BIT | GL_CURRENT_BIT | GL_LINE_BIT);
    // Lines have no lit side, and an image on a plane keeps its colours seen from behind.
    ::glDisable(GL_LIGHTING);
    ::glCallList(axisList);
    ::glPopAttrib();
}

void ChartAxes::makeFont(CDC& dc, int pictureHeight, int listBase) {
    CFont font;
    font.CreateFont(-std::clamp(pictureHeight / 46, 10, 200), 0, 0, 0, FW_NORMAL, 0, 0, 0, ANSI_CHARSET,
                    OUT_TT_PRECIS, CLIP_DEFAULT_PRECIS, ANTIALIASED_QUALITY, VARIABLE_PITCH | FF_SWISS,
                    "Arial");
    CFont* old = dc.SelectObject(&font);
    dc.GetTextMetrics(&m_metrics);
    ::GetCharWidth32A(dc.m_hDC, 0, 255, m_advance.data());
    ::vornUseFontBitmaps(dc.m_hDC, listBase);
    dc.SelectObject(old);
}

SIZE ChartAxes::measure(const std::string& text) const {
    SIZE size = {0, m_metrics.tmHeight};
    for (unsigned char character : text)
        size.cx += m_advance[character];
    return size;
}

const CvornAxis& ChartAxes::axis(std::size_t which) const {
    return which == 0 ? m_set.m_axisX : which == 1 ? m_set.m_axisY : m_set.m_axisZ;
}

ChartAxes::Edge ChartAxes::edgeOf(CvornOGLMapping& mapping, std::size_t which) {
    const auto project = [&](const float* base, const float* offset, double& x, double& y) {
        mapping.gluProject(static_cast<double>(base[0] + offset[0]), static_cast<double>(base[1] + offset[1]),
                           static_cast<double>(base[2] + offset[2]));
        x = mapping.GetPosXf();
        y = mapping.GetPosYf();
    };
    float begin[3], end[3];
    axis(which).vornVectorPos(begin, 0);
    axis(which).vornVectorPos(end, 1);
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
            const float along = axis(i).GetNormalLength() - tipLength;
            for (std::size_t k = 0; k < 3; ++k)
                edge.offset[k] += along * axis(i).m_afDirection[k];
        }
        double x0, y0, x1, y1;
        project(begin, edge.offset, x0, y0);
        project(end, edge.offset, x1, y1);
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

void ChartAxes::addText(CvornOGLMapping& mapping, const Edge& edge, float position, std::size_t which,
                        const std::string& text, int priority, double distance) {
    if (text.empty()) return;
    float point[3];
    axis(which).vornVectorPos(point, position);
    mapping.gluProject(static_cast<double>(point[0] + edge.offset[0]),
                       static_cast<double>(point[1] + edge.offset[1]),
                       static_cast<double>(point[2] + edge.offset[2]));
    const SIZE size = measure(text);
    examples::PlacedLabel label;
    label.x = mapping.GetPosXf();
    label.y = mapping.GetPosYf();
    label.outX = edge.outX;
    label.outY = edge.outY;
    label.distance = distance;
    label.width = size.cx;
    label.height = size.cy;
    label.priority = priority;
    m_placed.push_back(label);
    m_texts.push_back(text);
}

void ChartAxes::addLabels(CvornOGLMapping& mapping, std::size_t which, int priority) {
    const Scale& scale = m_scales[which];
    const Edge edge = edgeOf(mapping, which);
    if (!edge.visible) return;
    // The title stands outside the numbers, as far as the widest of them needs; the ends matter most of
    // these, then every second tick, then the rest.
    double widest = 0;
    const int last = scale.ticks() - 1;
    for (int tick = 0; tick <= last; ++tick) {
        const std::string text = scale.textAt(tick);
        const SIZE size = measure(text);
        widest = std::max(widest, std::abs(edge.outX) * size.cx + std::abs(edge.outY) * size.cy);
        const int rank = tick == 0 || tick == last ? 3 : tick % 2 == 0 ? 6 : 9;
        addText(mapping, edge, axis(which).GetTickPos(5 * tick), which, text, priority + rank,
                m_metrics.tmHeight * 0.35);
    }
    addText(mapping, edge, 0.5F, which, scale.title, priority, widest + m_metrics.tmHeight * 0.8);
}

void ChartAxes::drawLabels(CvornOGLMapping& mapping, int listBase) {
    m_placed.clear();
    m_texts.clear();
    if (!shows(SHOW_AXES | SHOW_LABELS)) return;
    addLabels(mapping, 2, 0);
    addLabels(mapping, 0, 1);
    addLabels(mapping, 1, 2);
    GLint viewport[4];
    ::glGetIntegerv(GL_VIEWPORT, viewport);
    examples::layOutLabels(m_placed, viewport[2], viewport[3], m_metrics.tmHeight * 0.35);

    ::glPushAttrib(GL_ENABLE_BIT | GL_CURRENT_BIT | GL_LIST_BIT);
    for (GLenum capability : {GL_LIGHTING, GL_DEPTH_TEST, GL_TEXTURE_2D, GL_ALPHA_TEST})
        ::glDisable(capability);
    CvornColour(ink, 1).glColor();
    ::glListBase(static_cast<GLuint>(listBase));
    for (std::size_t i = 0; i < m_placed.size(); ++i) {
        const examples::PlacedLabel& label = m_placed[i];
        if (!label.shown) continue;
        // Whole pixels: bitmaps have no others.
        mapping.gluUnProject(viewport[0] + std::floor(label.left) + 0.5,
                             viewport[1] + std::floor(label.bottom + m_metrics.tmDescent) + 0.5, 0.01);
        mapping.glRasterPos3d();
        ::glCallLists(static_cast<GLsizei>(m_texts[i].size()), GL_UNSIGNED_BYTE, m_texts[i].data());
    }
    ::glPopAttrib();
}

void ChartAxes::serialize(CArchive& archive) {
    if (archive.IsStoring()) {
        for (const Scale& scale : m_scales)
            archive << scale.range.low << scale.range.high;
        m_set.Serialize(archive);
        return;
    }
    std::array<Scale, 3> scales = m_scales;
    for (Scale& scale : scales) {
        double low = 0, high = 0;
        archive >> low >> high;
        if (low != scale.range.low || high != scale.range.high)
            scale.range = AxisRange::given(low, high, wantedTicks);
    }
    m_set.Serialize(archive);
    m_scales = std::move(scales);
    place();
}
