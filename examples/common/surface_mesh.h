// SPDX-License-Identifier: MIT
#pragma once

#include "colour_ramp.h"
#include "grid.h"

#include <cstddef>
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

/// One vertex, as OpenGL's vertex arrays read it.
struct MeshVertex {
    float position[3];
    signed char normal[4]; ///< pointing up, 127 long: a fourth of the memory, and as fine as colours are
    unsigned char colour[4];
};

/// Makes the vertices and indices of a grid's surface, centred on the origin, in memory that the caller
/// provides.
///
/// The first row lies at the far side, so that the view from above shows the table as it reads. A square
/// between four numbers becomes two triangles, divided along its flatter diagonal; a square that touches a
/// hole stays open. Normals follow the slope between the neighbours on both sides, or to the one that is no
/// hole. Lowest and highest number get the ends of the ramp; numbers that are all the same lie flat in the
/// middle. A single row or column is a line, a single number a point.
class SurfaceMesher {
public:
    enum class Kind { triangles, lines, points };

    /// Grid and ramp must live as long as the mesher.
    SurfaceMesher(const Grid& grid, const ColourRamp& ramp, const MeshExtents& extents);

    Kind kind() const;
    /// One for each cell of the grid, in its order; those of holes are not used.
    std::size_t vertexCount() const { return m_heights.size(); }
    /// At most so many; less with holes.
    std::size_t mostIndices() const;

    /// Writes all vertices, one after the other and without looking back.
    void writeVertices(MeshVertex* out) const;
    /// Writes those of one row only.
    void writeRow(int row, MeshVertex* out) const;
    /// Writes three, two or one indices for each triangle, line or point; front faces look up. Returns how
    /// many.
    std::size_t writeIndices(std::uint32_t* out) const;

private:
    float slope(const float* at, std::ptrdiff_t stride, bool hasBefore, bool hasAfter, float step) const;
    std::uint32_t* writeTriangles(std::uint32_t* out) const;
    std::uint32_t* writeLines(std::uint32_t* out) const;

    int m_rows;
    int m_columns;
    const ColourRamp& m_ramp;
    MeshExtents m_extents;
    float m_stepX; ///< model units between columns
    float m_stepY;
    std::vector<float> m_heights; ///< from 0 to 1; NaN for holes
};

/// A surface in memory of its own.
struct SurfaceMesh {
    SurfaceMesher::Kind kind;
    std::vector<MeshVertex> vertices;
    std::vector<std::uint32_t> indices;

    explicit SurfaceMesh(const SurfaceMesher& mesher);
};

} // namespace examples
