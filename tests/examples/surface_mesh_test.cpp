// SPDX-License-Identifier: MIT
#include "common/surface_mesh.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <numeric>
#include <tuple>

namespace {

using namespace examples;

constexpr double hole = std::numeric_limits<double>::quiet_NaN();

SurfaceMesh meshOf(int rows, int columns, std::vector<double> values, MeshExtents extents = {1, 1, 1}) {
    Grid grid;
    grid.rows = rows;
    grid.columns = columns;
    grid.values = std::move(values);
    ColourRamp ramp = *ColourRamp::named("grey");
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
    std::vector<double> values;
    for (int i = 0; i < 6 * 11; ++i)
        values.push_back(i * 37 % 23);
    SurfaceMesh mesh = meshOf(6, 11, values, {1, 0.5f, 0.25f});
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
    std::vector<double> values(5 * 5);
    std::iota(values.begin(), values.end(), 0);
    values[12] = hole; // the middle: four squares of sixteen go
    SurfaceMesh mesh = meshOf(5, 5, values);
    EXPECT_NEAR(areaFromAbove(mesh), 12.0 / 16, 1e-6);
    EXPECT_EQ(std::count(mesh.indices.begin(), mesh.indices.end(), 12u), 0);
    values[0] = hole; // a corner: one more
    EXPECT_NEAR(areaFromAbove(meshOf(5, 5, values)), 11.0 / 16, 1e-6);
}

/// On a plane every normal is the plane's, at edges and beside holes too.
TEST(SurfaceMesh, NormalsFollowThePlaneAtEdgesAndHoles) {
    constexpr int rows = 7, columns = 9;
    std::vector<double> values;
    for (int i = 0; i < rows * columns; ++i)
        values.push_back(3 * (i % columns) + 2 * (i / columns));
    values[2 * columns + 3] = values[4 * columns + 5] = values[4 * columns + 6] = hole;
    SurfaceMesh mesh = meshOf(rows, columns, values, {1, 0.75f, 0.5f});
    // z falls away from the viewer: 36 levels are 0.5 high, 24 of them lie along x and 12 along y.
    double slopeX = 0.5 * 24 / 36, slopeY = -0.5 * 12 / 36 / 0.75, length = std::hypot(slopeX, slopeY, 1);
    for (std::size_t i = 0; i < mesh.vertices.size(); ++i) {
        if (std::isnan(values[i])) continue;
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
        SurfaceMesh mesh = meshOf(2, 2, values);
        EXPECT_EQ(std::count(mesh.indices.begin(), mesh.indices.end(), from), 2) << from;
        EXPECT_EQ(std::count(mesh.indices.begin(), mesh.indices.end(), to), 2) << from;
    }
}

TEST(SurfaceMesh, DegenerateGridsAreDrawnAsFarAsTheyGo) {
    constexpr double huge = 1.7e308;
    struct Case {
        const char* name;
        int rows, columns;
        std::vector<double> values;
        SurfaceMesher::Kind kind;
        std::size_t indices;
    };
    const Case cases[] = {
        {"row", 1, 4, {1, 2, 3, 4}, SurfaceMesher::Kind::lines, 6},
        {"column with a hole", 4, 1, {1, hole, 3, 4}, SurfaceMesher::Kind::lines, 2},
        {"one number", 1, 1, {5}, SurfaceMesher::Kind::points, 1},
        {"one hole", 1, 1, {hole}, SurfaceMesher::Kind::points, 0},
        {"all the same", 2, 2, {5, 5, 5, 5}, SurfaceMesher::Kind::triangles, 6},
        {"all holes", 2, 2, {hole, hole, hole, hole}, SurfaceMesher::Kind::triangles, 0},
        {"as far apart as can be", 2, 2, {-huge, huge, 0, huge}, SurfaceMesher::Kind::triangles, 6},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        SurfaceMesh mesh = meshOf(c.rows, c.columns, c.values);
        EXPECT_EQ(mesh.kind, c.kind);
        EXPECT_EQ(mesh.indices.size(), c.indices);
        for (std::uint32_t index : mesh.indices) {
            const MeshVertex& vertex = mesh.vertices.at(index);
            for (float coordinate : vertex.position)
                EXPECT_LE(std::abs(coordinate), 0.5001f);
            EXPECT_NEAR(std::hypot(vertex.normal[0], vertex.normal[1], vertex.normal[2]), 127, 1);
        }
    }
    EXPECT_EQ(meshOf(2, 2, {5, 5, 5, 5}).vertices[0].position[2], 0);
    EXPECT_EQ(meshOf(2, 2, {-huge, huge, 0, huge}).vertices[2].position[2], 0);
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
