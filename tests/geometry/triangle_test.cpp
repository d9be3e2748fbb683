// SPDX-License-Identifier: MIT
#include "vorn/geometry/triangle.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace {

constexpr double pi = 3.14159265358979323846;
constexpr double right = pi / 2;
const double small = std::asin(0.6), large = std::asin(0.8); // of the triangle 3, 4, 5

/// Sides 1 to 3, then angles 1 to 3.
struct Parts {
    double s1, s2, s3, a1, a2, a3;
};

int solve(CvornTri& triangle, const Parts& given) {
    return triangle.SetTriangle(given.s1, given.s2, given.s3, given.a1, given.a2, given.a3);
}

void expectSides(const CvornTri& triangle, double s1, double s2, double s3) {
    const double tolerance = 1e-9; // of the solver's own pi
    EXPECT_NEAR(triangle.GetSide1(), s1, tolerance);
    EXPECT_NEAR(triangle.GetSide2(), s2, tolerance);
    EXPECT_NEAR(triangle.GetSide3(), s3, tolerance);
}

TEST(TriangleTest, SolvesThreePartsInAnyPlaces) {
    const Parts cases[] = {
        {3, 4, 5, 0, 0, 0},         {3, 0, 0, small, large, 0}, {3, 0, 0, 0, large, right},
        {0, 4, 0, small, 0, right}, {0, 0, 5, small, large, 0}, {3, 4, 0, 0, 0, right},
        {0, 4, 5, 0, 0, right},     {3, 0, 5, 0, 0, right},     {3, 4, 0, 0, large, 0},
    };
    for (const Parts& given : cases) {
        SCOPED_TRACE(&given - cases);
        CvornTri triangle;
        ASSERT_EQ(solve(triangle, given), 1);
        expectSides(triangle, 3, 4, 5);
        EXPECT_NEAR(triangle.GetAngle1(), small, 1e-9);
        EXPECT_NEAR(triangle.GetAngle2(), large, 1e-9);
        EXPECT_NEAR(triangle.GetAngle3(), right, 1e-9);
        EXPECT_NEAR(triangle.GetArea(), 6, 1e-9);
    }
}

TEST(TriangleTest, TakesTheCosineRuleOfSides1And2WhicheverAreGiven) {
    CvornTri triangle;
    ASSERT_EQ(solve(triangle, {3, 0, 4, 0, right, 0}), 1);
    expectSides(triangle, 3, 3, 4);
}

TEST(TriangleTest, GivesTheSecondRootFromTheSecondAmbiguousCaseOn) {
    const Parts given = {3, 4.5, 0, small, 0, 0};
    const double base = 4.5 * 0.8, root = std::sqrt(9 - 2.7 * 2.7); // 2.7 is the height
    CvornTri triangle;
    ASSERT_EQ(solve(triangle, {4, 3, 0, large, 0, 0}), 1); // not ambiguous: does not count
    for (double side : {base + root, base - root, base - root}) {
        ASSERT_EQ(solve(triangle, given), 1);
        expectSides(triangle, 3, 4.5, side);
    }
}

TEST(TriangleTest, RejectsWhatMakesNoTriangleAndLeavesItAsGiven) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const Parts cases[] = {
        {1, 1, 2, 0, 0, 0},     {1, 3, 2, 0, 0, 0}, {1, 2, 5, 0, 0, 0},     {0, 0, 0, 1, 1, 1},
        {3, 4, 5, 1, 0, 0},     {3, 4, 0, 0, 0, 0}, {3, 0, 0, 2, 2, 0},     {3, 4, 0, 0, -1, 0},
        {3, -4, 0, 0, 0, 1},    {3, 4, 0, 4, 0, 0}, {nan, 4, 5, 0, 0, 0},   {3, 4, 0, 0, 0, nan},
        {1, 4, 0, small, 0, 0}, {3, 4, 0, 2, 0, 0}, {3, 0, 4, right, 0, 0},
    };
    for (const Parts& given : cases) {
        CvornTri triangle;
        EXPECT_EQ(solve(triangle, given), 0) << "case " << &given - cases;
        EXPECT_EQ(triangle.GetSide3(), given.s3);
        EXPECT_EQ(triangle.GetAngle1(), given.a1);
    }
    EXPECT_EQ(CvornTri().SetTrianglePts(0, 0, 1, 1, 2, 2), 0);
}

} // namespace
