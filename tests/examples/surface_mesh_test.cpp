// SPDX-License-Identifier: MIT
#include "common/surface_mesh.h"

#include "tests/examples/grids.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <tuple>

namespace {

using namespace examples;

using support::gridOf, support::hole;

SurfaceMesh meshOf(const Grid& grid, MeshExtents extents = {1, 1, 1}) {
    const ColourRamp ramp = *ColourRamp::named("grey");
    return SurfaceMesh({grid, ramp, extents});
}

/// The area as seen from above; triangles whose front looks down count against it.
double areaFromAbove(const SurfaceMesh& mesh) {
    double area = 0;
    for (std::size_t i = 0; i < mesh.indices.size(); i += 3) {
        const float* a = mesh.vertices[mesh.indices[i]].position;
        const float* b = mesh.vertices[mesh.indices[i + 1]].position;
        const float* c = mesh.vertices[mesh.indices[i + 2]].position;
        area += ((b[0] - a[0]) * (c[1] - a[1]) - (c[0] - a[0]) * (b[1] - a[1])) / 2;
    }
    return area;
}

TEST(SurfaceMesh, CoversItsExtentsWithFrontsUp) {
    SurfaceMesh mesh = meshOf(support::gridFrom(6, 11, [](int i) { return i * 37 % 23; }), {1, 0.5f, 0.25f});
    ASSERT_EQ(mesh.indices.size(), 6u * 5 * 10);
    EXPECT_NEAR(areaFromAbove(mesh), 1 * 0.5, 1e-6);
    // The first number is at the far left, where the top of the table is seen from above.
    EXPECT_NEAR(mesh.vertices[0].position[0], -0.5, 1e-6);
    EXPECT_NEAR(mesh.vertices[0].position[1], 0.25, 1e-6);
    auto [lowest, highest] = std::minmax_element(
        mesh.vertices.begin(), mesh.vertices.end(),
        [](const MeshVertex& a, const MeshVertex& b) { return a.position[2] < b.position[2]; });
    EXPECT_FLOAT_EQ(lowest->position[2], -0.125f);
    EXPECT_FLOAT_EQ(highest->position[2], 0.125f);
    EXPECT_LT(lowest->colour[0], 60);
    EXPECT_GT(highest->colour[0], 220);
}

TEST(SurfaceMesh, SquaresThatTouchAHoleStayOpen) {
    Grid grid = support::gridFrom(5, 5, [](int i) { return i; });
    grid.values[12] = hole; // the middle: four squares of sixteen go
    SurfaceMesh mesh = meshOf(grid);
    EXPECT_NEAR(areaFromAbove(mesh), 12.0 / 16, 1e-6);
    EXPECT_EQ(std::count(mesh.indices.begin(), mesh.indices.end(), 12u), 0);
    grid.values[0] = hole; // a corner: one more
    EXPECT_NEAR(areaFromAbove(meshOf(grid)), 11.0 / 16, 1e-6);
}

/// On a plane every normal is the plane's, at edges and beside holes too.
TEST(SurfaceMesh, NormalsFollowThePlaneAtEdgesAndHoles) {
    constexpr int rows = 7, columns = 9;
    Grid grid = support::gridFrom(rows, columns, [](int i) { return 3 * (i % columns) + 2 * (i / columns); });
    for (const int i : {2 * columns + 3, 4 * columns + 5, 4 * columns + 6})
        grid.values[i] = hole;
    SurfaceMesh mesh = meshOf(grid, {1, 0.75f, 0.5f});
    // z falls away from the viewer: 36 levels are 0.5 high, 24 of them lie along x and 12 along y.
    double slopeX = 0.5 * 24 / 36, slopeY = -0.5 * 12 / 36 / 0.75, length = std::hypot(slopeX, slopeY, 1);
    for (std::size_t i = 0; i < mesh.vertices.size(); ++i) {
        if (std::isnan(grid.values[i])) continue;
        const auto& normal = mesh.vertices[i].normal;
        EXPECT_NEAR(normal[0], -127 * slopeX / length, 0.51) << i;
        EXPECT_NEAR(normal[1], -127 * slopeY / length, 0.51) << i;
        EXPECT_NEAR(normal[2], 127 / length, 0.51) << i;
    }
}

TEST(SurfaceMesh, DividesASquareAlongItsFlatterDiagonal) {
    // A ridge must not be cut across: both triangles share it.
    for (auto [values, from, to] :
         {std::tuple{std::vector<double>{3, 0, 1, 3}, 0u, 3u}, {{0, 3, 3, 1}, 1u, 2u}}) {
        SurfaceMesh mesh = meshOf(gridOf(2, 2, values));
        EXPECT_EQ(std::count(mesh.indices.begin(), mesh.indices.end(), from), 2) << from;
        EXPECT_EQ(std::count(mesh.indices.begin(), mesh.indices.end(), to), 2) << from;
    }
}

TEST(SurfaceMesh, DegenerateGridsAreDrawnAsFarAsTheyGo) {
    constexpr double huge = 1.7e308;
    struct Case {
        const char* name;
        Grid grid;
        SurfaceMesher::Kind kind;
        std::size_t indices;
    };
    const Case cases[] = {
        {"row", gridOf(1, 4, {1, 2, 3, 4}), SurfaceMesher::Kind::lines, 6},
        {"column with a hole", gridOf(4, 1, {1, hole, 3, 4}), SurfaceMesher::Kind::lines, 2},
        {"one number", gridOf(1, 1, {5}), SurfaceMesher::Kind::points, 1},
        {"one hole", gridOf(1, 1, {hole}), SurfaceMesher::Kind::points, 0},
        {"all the same", gridOf(2, 2, {5, 5, 5, 5}), SurfaceMesher::Kind::triangles, 6},
        {"all holes", gridOf(2, 2, {hole, hole, hole, hole}), SurfaceMesher::Kind::triangles, 0},
        {"as far apart as can be", gridOf(2, 2, {-huge, huge, 0, huge}), SurfaceMesher::Kind::triangles, 6},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        SurfaceMesh mesh = meshOf(c.grid);
        EXPECT_EQ(mesh.kind, c.kind);
        EXPECT_EQ(mesh.indices.size(), c.indices);
        for (std::uint32_t index : mesh.indices) {
            const MeshVertex& vertex = mesh.vertices.at(index);
            for (float coordinate : vertex.position)
                EXPECT_LE(std::abs(coordinate), 0.5001f);
            EXPECT_NEAR(std::hypot(vertex.normal[0], vertex.normal[1], vertex.normal[2]), 127, 1);
        }
    }
    EXPECT_EQ(meshOf(gridOf(2, 2, {5, 5, 5, 5})).vertices[0].position[2], 0);
    EXPECT_EQ(meshOf(gridOf(2, 2, {-huge, huge, 0, huge})).vertices[2].position[2], 0);
}

/// CIE lightness, 0 to 100, of an sRGB colour.
double lightness(Rgb colour) {
    auto linear = [](unsigned char byte) {
        double v = byte / 255.0;
        return v <= 0.04045 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4);
    };
    double y = 0.2126 * linear(colour.red) + 0.7152 * linear(colour.green) + 0.0722 * linear(colour.blue);
    return 116 * std::cbrt(y) - 16;
}

TEST(ColourRamp, EveryRampGetsEvenlyLighter) {
    for (std::string_view name : ColourRamp::names()) {
        SCOPED_TRACE(name);
        ColourRamp ramp = *ColourRamp::named(name);
        double whole = lightness(ramp.at(1)) - lightness(ramp.at(0));
        EXPECT_GT(whole, 55);
        for (int i = 0; i < 20; ++i) {
            double step = lightness(ramp.at((i + 1) / 20.0)) - lightness(ramp.at(i / 20.0));
            EXPECT_NEAR(step, whole / 20, whole / 20 * 0.45) << i;
        }
        EXPECT_EQ(lightness(ramp.at(-5)), lightness(ramp.at(0)));
        EXPECT_EQ(lightness(ramp.at(7)), lightness(ramp.at(1)));
    }
    EXPECT_FALSE(ColourRamp::named("nonesuch"));
}

} // namespace
