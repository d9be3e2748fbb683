// SPDX-License-Identifier: MIT
#include "chart_axes.h"

#include "common/axis_lines.h"

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
    : m_set(AXES_TIPS | AXES_GRIDS | SHOW_LABELS | SHOW_PLANES | SHOW_AXES), m_titles(std::move(titles)) {
    // The first row lies at the far end, and the rows run towards the eye: so the three planes stand behind
    // the surface, seen from in front, from the right or from above.
    m_set.m_axisY.m_afDirection[1] = -1;
    const CvornColour dark(examples::AxisLabels::ink, 1);
    m_set.m_clrAxis = dark;
    m_set.m_clrGrid = CvornColour(RGB(176, 178, 186), 1);
    m_set.m_clrMinorGrid = CvornColour(RGB(226, 227, 232), 1);
    m_set.m_axisX.m_clrAxis = m_set.m_axisY.m_clrAxis = m_set.m_axisZ.m_clrAxis = dark;
    fitTo(grid);
}

void ChartAxes::fitTo(const Grid& grid) {
    m_whole = MeshExtents::inBall(grid, ballRadius);
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
    for (std::size_t i = 0; i < m_titles.size(); ++i) {
        if (!m_titles[i].empty()) m_scales[i].title = m_titles[i];
    }
    m_set.InvalidateImages();
    place();
}

void ChartAxes::toggle(DWORD bits) {
    m_set.SetParam(m_set.GetParam(~0UL) ^ bits);
    if ((bits & SHOW_AXES) != 0) place();
}

void ChartAxes::setExaggeration(double exaggeration) {
    m_exaggeration = exaggeration;
    place();
}

// Sizes surface and axes so that all of it stays in the ball.
void ChartAxes::place() {
    // What is higher than by itself is fitted into the ball; what is lower stays as wide as it was.
    const double lift = std::max(m_exaggeration, 1.0), drop = std::min(m_exaggeration, 1.0);
    const std::array<double, 3> whole = {m_whole.width, m_whole.depth, m_whole.height * lift};
    if (!shows(SHOW_AXES)) {
        const double size =
            std::hypot(whole[0], whole[1], double{m_whole.height}) / std::hypot(whole[0], whole[1], whole[2]);
        m_extents = {static_cast<float>(whole[0] * size), static_cast<float>(whole[1] * size),
                     static_cast<float>(whole[2] * drop * size)};
        return;
    }
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
                 static_cast<float>(whole[2] * drop * size)};
    low[2] *= drop;
    high[2] *= drop;

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

void ChartAxes::draw(float lineWidth) const {
    if (!shows(SHOW_AXES)) return;
    ::glPushAttrib(GL_ENABLE_BIT | GL_CURRENT_BIT | GL_LINE_BIT);
    // Lines have no lit side, and an image on a plane keeps its colours seen from behind.
    ::glDisable(GL_LIGHTING);
    ::glCallList(axisList);
    examples::drawAxisLines(m_set, lineWidth);
    ::glPopAttrib();
}

void ChartAxes::addLabels(CvornOGLMapping& mapping, std::size_t which, int priority) {
    const CvornAxis& axis = which == 0 ? m_set.m_axisX : which == 1 ? m_set.m_axisY : m_set.m_axisZ;
    std::vector<examples::AxisLabels::Tick> ticks;
    for (int tick = 0; tick < m_scales[which].ticks(); ++tick)
        ticks.push_back({axis.GetTickPos(5 * tick), m_scales[which].textAt(tick)});
    m_labels.add(mapping, m_set, which, ticks, m_scales[which].title, priority);
}

void ChartAxes::drawLabels(CvornOGLMapping& mapping, std::span<const CRect> keptClear) {
    m_labels.clear();
    if (!shows(SHOW_AXES | SHOW_LABELS)) return;
    addLabels(mapping, 2, 0);
    addLabels(mapping, 0, 1);
    addLabels(mapping, 1, 2);
    m_labels.draw(mapping, keptClear);
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
