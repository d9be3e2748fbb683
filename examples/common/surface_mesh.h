// SPDX-License-Identifier: MIT
#pragma once

#include "colour_ramp.h"
#include "grid.h"

#include <cstdint>
#include <vector>

namespace examples {

/// The size of a surface in model units: x to the right (columns), y away (rows), z up (values).
struct MeshExtents {
    float width = 1;
    float depth = 1;
    float height = 1;

    /// Extents that keep the cells of a grid square (as far as neither side gets too thin to see), with a
    /// height that suits a landscape, so large that a ball of the radius holds the surface: it stays in view
    /// at any angle.
    static MeshExtents inBall(const Grid& grid, float radius);
};

/// One vertex as `glInterleavedArrays`-like pointers read it.
struct MeshVertex {
    float position[3];
    float normal[3]; ///< of unit length, pointing up
    unsigned char colour[4];
};

/// A grid as vertices and indices, centred on the origin.
struct SurfaceMesh {
    enum class Kind { triangles, lines, points };

    Kind kind = Kind::triangles;      ///< lines for a single row or column, points for a single number
    std::vector<MeshVertex> vertices; ///< one for each cell of the grid, in its order; unused ones for holes
    std::vector<std::uint32_t> indices; ///< three, two or one for each primitive; front faces look up
};

/// Builds the surface. The first row lies at the far side, so that the view from above shows the table as it
/// reads. A square between four numbers becomes two triangles, divided along its flatter diagonal; a square
/// that touches a hole stays open. Normals follow the slope between the neighbours on both sides, or on the
/// one that is no hole. Lowest and highest number get the ends of the ramp; numbers that are all the same lie
/// flat in the middle.
SurfaceMesh buildSurfaceMesh(const Grid& grid, const ColourRamp& ramp, const MeshExtents& extents);

} // namespace examples
