// SPDX-License-Identifier: MIT
#include "vorn/overlays/detail/window_pen.h"

#include <algorithm>
#include <cmath>

namespace {

struct Point {
    double x, y, z;
};

Point unprojected(CvornOGLMapping& map, double x, double y, double depth) {
    map.gluUnProject(x, y, depth);
    return {map.m_dPosX, map.m_dPosY, map.m_dPosZ};
}

/// Not by hypot: it takes as long as all the rest of a pen, and only guards against extremes that single
/// precision does not have.
double length(double x, double y, double z) {
    return std::sqrt(x * x + y * y + z * z);
}

double distance(const Point& a, const Point& b) {
    return length(a.x - b.x, a.y - b.y, a.z - b.z);
}

/// Single precision rounds a scene point itself, and its sum with the translation that takes it to the eye.
double roundingOf(const CvornOGLMapping& map, const Point& point) {
    const double* m = map.m_adModel;
    const double translation = length(m[12], m[13], m[14]) / length(m[0], m[1], m[2]);
    return (length(point.x, point.y, point.z) + translation) / (1 << 24);
}

/// At most the limit; that also where there is no number, since the mapping has no inverse.
double limited(double value, double limit) {
    return value < limit ? value : limit;
}

constexpr double safety = 2;

} // namespace

namespace vorn::detail {

WindowPen::WindowPen(CvornOGLMapping& map, double x, double y, double depth) : m_map(map) {
    constexpr double depthStep = 1.0 / (1 << 10);
    constexpr double subpixel = 1.0 / 200; // drivers round to 256ths of a pixel
    const Point point = unprojected(map, x, y, depth);
    const double pixel = distance(point, unprojected(map, x + 1, y, depth));
    const double deeper = distance(point, unprojected(map, x, y, depth + depthStep)) / depthStep;
    const double rounding = roundingOf(map, point) * safety;
    m_pixels = limited(rounding / pixel + subpixel, 0.25);
    m_depth = limited(rounding / deeper + 1.0 / (1 << 23), 1.0 / (1 << 10));
}

void WindowPen::loop(const WindowBox& box, double firstDepth, double depth) const {
    const double left = box.left + m_pixels, right = box.right + m_pixels;
    const double bottom = box.bottom - m_pixels, top = box.top - m_pixels;
    windowVertex(m_map, left, bottom, firstDepth);
    windowVertex(m_map, left, top, depth);
    windowVertex(m_map, right, top, depth);
    windowVertex(m_map, right, bottom, depth);
}

void WindowPen::text(double x, double y, double depth, std::string_view text) const {
    m_map.gluUnProject(x + m_pixels, y + m_pixels, depth);
    m_map.glRasterPos3d();
    ::glCallLists(static_cast<GLsizei>(text.size()), GL_UNSIGNED_BYTE, text.data());
}

} // namespace vorn::detail
