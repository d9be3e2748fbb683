// SPDX-License-Identifier: MIT
#include "row_lines.h"

#include <cmath>

using examples::MeshVertex;

void RowLines::build(const examples::Grid& grid, const examples::SurfaceMesher& mesher,
                     std::span<const Line> lines) {
    m_vertices.assign(lines.size() * grid.columns, {});
    m_lines.assign(lines.begin(), lines.end());
    m_runs.clear();
    GLint next = 0;
    for (const Line& line : lines) {
        mesher.writeRow(line.row, m_vertices.data() + next);
        bool open = false;
        for (int column = 0; column < grid.columns; ++column, ++next) {
            const bool hole = std::isnan(grid.at(line.row, column));
            if (!hole && !open) m_runs.push_back({next, 0});
            open = !hole;
            if (hole) continue;
            ++m_runs.back().count;
            auto& colour = m_vertices[next].colour;
            colour[0] = GetRValue(line.colour);
            colour[1] = GetGValue(line.colour);
            colour[2] = GetBValue(line.colour);
        }
    }
}

void RowLines::clear() {
    m_lines.clear();
    m_runs.clear();
}

void RowLines::draw(float width) const {
    if (m_runs.empty()) return;
    ::glPushAttrib(GL_ENABLE_BIT | GL_CURRENT_BIT | GL_LINE_BIT | GL_POINT_BIT | GL_VIEWPORT_BIT);
    ::glPushClientAttrib(GL_CLIENT_VERTEX_ARRAY_BIT);
    ::glDisable(GL_LIGHTING);
    // The lines lie on the surface's edges, and wide ones reach beyond its slope: this is a 200th of the
    // chart's size at its distance.
    constexpr double nearer = 1e-5;
    GLdouble range[2];
    ::glGetDoublev(GL_DEPTH_RANGE, range);
    ::glDepthRange(range[0] - nearer, range[1] - nearer);
    ::glLineWidth(width);
    ::glPointSize(width);
    ::glEnableClientState(GL_VERTEX_ARRAY);
    ::glEnableClientState(GL_COLOR_ARRAY);
    ::glVertexPointer(3, GL_FLOAT, sizeof(MeshVertex), m_vertices.data()->position);
    ::glColorPointer(4, GL_UNSIGNED_BYTE, sizeof(MeshVertex), m_vertices.data()->colour);
    for (const Run& run : m_runs)
        ::glDrawArrays(run.count > 1 ? GL_LINE_STRIP : GL_POINTS, run.first, run.count);
    ::glPopClientAttrib();
    ::glPopAttrib();
}
