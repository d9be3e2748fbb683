// SPDX-License-Identifier: MIT
#pragma once

#include "common/surface_mesh.h"

#include <vorn/vorn.h>

#include <algorithm>
#include <span>
#include <vector>

/// Rows of a grid as coloured lines on its surface. A hole interrupts a line; a number between two holes is a
/// point.
class RowLines {
public:
    struct Line {
        int row;
        COLORREF colour;
        bool operator==(const Line&) const = default;
    };

    /// Whether it holds these lines.
    bool shows(std::span<const Line> lines) const { return std::ranges::equal(lines, m_lines); }
    /// Takes the lines' places from the mesher of the surface. Needs no context.
    void build(const examples::Grid& grid, const examples::SurfaceMesher& mesher,
               std::span<const Line> lines);
    /// Has no lines until they are built again.
    void clear();

    /// Draws the lines a hair in front of the surface, unlit. Width in pixels. Leaves the GL state as it was.
    void draw(float width) const;

private:
    /// Neighbours without a hole between them.
    struct Run {
        GLint first;
        GLsizei count;
    };

    std::vector<Line> m_lines;
    std::vector<examples::MeshVertex> m_vertices;
    std::vector<Run> m_runs;
};
