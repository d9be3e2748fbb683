// SPDX-License-Identifier: MIT
#include "surface_mesh.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

namespace examples {

namespace {

/// The numbers of a grid as heights from 0 to 1; NaN stays NaN.
std::vector<float> relativeHeights(const Grid& grid) {
    double lowest = std::numeric_limits<double>::infinity(), highest = -lowest;
    for (double value : grid.values) {
        lowest = std::min(lowest, value); // keeps the first argument when the second is NaN
        highest = std::max(highest, value);
    }
    // Halves, because the distance between two doubles may be too large for one.
    double range = highest / 2 - lowest / 2;
    std::vector<float> heights(grid.values.size());
    std::transform(grid.values.begin(), grid.values.end(), heights.begin(), [=](double value) {
        double height = range > 0 ? (value / 2 - lowest / 2) / range : value - value + 0.5;
        return static_cast<float>(height);
    });
    return heights;
}

signed char rounded(float value) {
    return static_cast<signed char>(value + (value < 0 ? -0.5f : 0.5f));
}

} // namespace

SurfaceMesher::SurfaceMesher(const Grid& grid, const ColourRamp& ramp, const MeshExtents& extents)
    : m_rows(grid.rows), m_columns(grid.columns), m_ramp(ramp), m_extents(extents),
      m_stepX(extents.width / static_cast<float>(std::max(grid.columns - 1, 1))),
      m_stepY(extents.depth / static_cast<float>(std::max(grid.rows - 1, 1))),
      m_heights(relativeHeights(grid)) {}

SurfaceMesher::Kind SurfaceMesher::kind() const {
    if (m_rows > 1 && m_columns > 1) return Kind::triangles;
    return m_heights.size() > 1 ? Kind::lines : Kind::points;
}

std::size_t SurfaceMesher::mostIndices() const {
    if (kind() == Kind::triangles) return std::size_t{6} * (m_rows - 1) * (m_columns - 1);
    return 2 * m_heights.size();
}

/// Height steps per model unit at `at`, between the neighbours `stride` cells away that exist and are no
/// holes.
float SurfaceMesher::slope(const float* at, std::ptrdiff_t stride, bool hasBefore, bool hasAfter,
                           float step) const {
    hasBefore = hasBefore && !std::isnan(at[-stride]);
    hasAfter = hasAfter && !std::isnan(at[stride]);
    if (!hasBefore && !hasAfter) return 0;
    float before = hasBefore ? at[-stride] : *at;
    float after = hasAfter ? at[stride] : *at;
    return (after - before) / (step * static_cast<float>(hasBefore + hasAfter)) * m_extents.height;
}

void SurfaceMesher::writeVertices(MeshVertex* out) const {
    for (int row = 0; row < m_rows; ++row, out += m_columns)
        writeRow(row, out);
}

void SurfaceMesher::writeRow(int row, MeshVertex* out) const {
    const float* height = m_heights.data() + static_cast<std::ptrdiff_t>(row) * m_columns;
    float left = -m_stepX * static_cast<float>(m_columns - 1) / 2;
    float back = m_stepY * static_cast<float>(m_rows - 1) / 2;
    float y = back - m_stepY * static_cast<float>(row);
    for (int column = 0; column < m_columns; ++column, ++out, ++height) {
        if (std::isnan(*height)) {
            *out = {};
            continue;
        }
        float slopeX = slope(height, 1, column > 0, column + 1 < m_columns, m_stepX);
        // Rows run towards the viewer, y runs away.
        float slopeY = -slope(height, m_columns, row > 0, row + 1 < m_rows, m_stepY);
        float scale = 127 / std::sqrt(slopeX * slopeX + slopeY * slopeY + 1);
        Rgb colour = m_ramp.at(*height);
        *out = {{left + m_stepX * static_cast<float>(column), y, (*height - 0.5f) * m_extents.height},
                {rounded(-slopeX * scale), rounded(-slopeY * scale), rounded(scale), 0},
                {colour.red, colour.green, colour.blue, 255}};
    }
}

std::size_t SurfaceMesher::writeIndices(std::uint32_t* out) const {
    return (kind() == Kind::triangles ? writeTriangles(out) : writeLines(out)) - out;
}

std::uint32_t* SurfaceMesher::writeTriangles(std::uint32_t* out) const {
    for (int row = 0; row + 1 < m_rows; ++row) {
        for (int column = 0; column + 1 < m_columns; ++column) {
            auto farLeft = static_cast<std::uint32_t>(row * m_columns + column);
            std::uint32_t farRight = farLeft + 1, nearLeft = farLeft + m_columns, nearRight = nearLeft + 1;
            float falling = m_heights[farLeft] - m_heights[nearRight];
            float rising = m_heights[farRight] - m_heights[nearLeft];
            if (std::isnan(falling + rising)) continue;
            bool alongFalling = std::abs(falling) < std::abs(rising);
            for (std::uint32_t corner : {farLeft, nearLeft, alongFalling ? nearRight : farRight,
                                         alongFalling ? farLeft : nearLeft, nearRight, farRight})
                *out++ = corner;
        }
    }
    return out;
}

std::uint32_t* SurfaceMesher::writeLines(std::uint32_t* out) const {
    for (std::uint32_t i = 0; i < m_heights.size(); ++i) {
        if (std::isnan(m_heights[i])) continue;
        if (m_heights.size() == 1) {
            *out++ = i;
        } else if (i + 1 < m_heights.size() && !std::isnan(m_heights[i + 1])) {
            *out++ = i;
            *out++ = i + 1;
        }
    }
    return out;
}

MeshExtents MeshExtents::inBall(const Grid& grid, float radius) {
    constexpr float thinnest = 0.2f, relief = 0.28f;
    auto longer = static_cast<float>(std::max({grid.rows, grid.columns, 2}) - 1);
    MeshExtents extents = {.width = std::max(static_cast<float>(grid.columns - 1) / longer, thinnest),
                           .depth = std::max(static_cast<float>(grid.rows - 1) / longer, thinnest),
                           .height = relief};
    float scale = 2 * radius / std::hypot(extents.width, extents.depth, extents.height);
    return {extents.width * scale, extents.depth * scale, extents.height * scale};
}

SurfaceMesh::SurfaceMesh(const SurfaceMesher& mesher)
    : kind(mesher.kind()), vertices(mesher.vertexCount()), indices(mesher.mostIndices()) {
    mesher.writeVertices(vertices.data());
    indices.resize(mesher.writeIndices(indices.data()));
}

} // namespace examples
