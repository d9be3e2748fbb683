// SPDX-License-Identifier: MIT
#include "tests/support/feedback.h"
#include "tests/support/gl_test.h"
#include "vorn/axes/axis.h"

#include <limits>

namespace {

CvornAxis axisOver(float range, float tick = 0.1F) {
    CvornAxis axis(nullptr, AXIS_X, 1, 0, 0);
    axis.SetMin(range);
    axis.SetMax(0);
    axis.SetTick(tick);
    return axis;
}

TEST(AxisTest, FindsARoundTickForItsRange) {
    const float cases[][2] = {{1, 0.1F},    {3.2F, 1},      {2.9F, 0.1F}, {100, 10},
                              {0.2F, 0.1F}, {0.01F, 0.01F}, {0, 0}};
    for (const auto& [range, tick] : cases)
        EXPECT_FLOAT_EQ(axisOver(range).CalculateTick(), tick) << range;
}

TEST(AxisTest, SpreadsItsTicksUpToTheTipAndKeepsThemWithinBounds) {
    EXPECT_EQ(axisOver(1).GetTickCount(), 51);
    EXPECT_FLOAT_EQ(axisOver(1).GetTickPos(50), 0.96F);
    const float infinite = std::numeric_limits<float>::infinity(),
                nan = std::numeric_limits<float>::quiet_NaN();
    const float cases[][2] = {{1, 0}, {0, 0}, {1e30F, 0.1F}, {infinite, 1}, {nan, 0.1F}, {1, -1}};
    for (const auto& [range, tick] : cases) {
        const CvornAxis axis = axisOver(range, tick);
        const int count = axis.GetTickCount();
        EXPECT_TRUE(count >= 1 && count <= 100001) << count;
        EXPECT_TRUE(axis.GetTickPos(count - 1) >= 0 && axis.GetTickPos(count - 1) <= 1);
    }
}

TEST(AxisTest, EmitsPositionsOnItselfOnPlanesAndRoundItself) {
    const support::GlWindow window;
    CvornMatrix matrix;
    matrix.RotateZDeg(90, 0);
    CvornAxis plain(nullptr, AXIS_X, 1, 0, 0), other(nullptr, AXIS_Y, 0, 1, 0);
    plain.m_fLength = 2;
    plain.m_ptOrigin = CvornPtMap(1, 2, 3);
    other.m_fLength = 4;
    CvornAxis turned = plain;
    turned.m_pMatrix = &matrix; // turns the position, not the origin
    const auto vertices = support::verticesOf(support::captureModel([&] {
        glBegin(GL_POINTS);
        plain.vornVectorPos(0.25F, other, 0.5F);
        turned.vornVectorPos(0.25F, other, 0.5F);
        turned.vornVertex3f(1, 0, 1);
        plain.vornVectorPosAngleD(0.5F, 0.5F, 90);
        plain.m_dwType = AXIS_Z;
        plain.vornVectorPosAngleD(0.5F, 0.5F, 90);
        plain.m_dwType = AXIS_OF_SET; // along nothing
        plain.vornVectorPosAngleD(0.5F, 0.5F, 90);
        glEnd();
    }));
    const double expected[][3] = {{1.5, 4, 3}, {-1, 2.5, 3}, {1, 3, 4}, {2, 2, 3.5}, {2, 2.5, 3}};
    ASSERT_EQ(vertices.size(), std::size(expected));
    for (std::size_t i = 0; i < vertices.size(); i++) {
        EXPECT_NEAR(vertices[i].x, expected[i][0], 1e-5) << i;
        EXPECT_NEAR(vertices[i].y, expected[i][1], 1e-5) << i;
        EXPECT_NEAR(vertices[i].z, expected[i][2], 1e-5) << i;
    }
    float out[3];
    turned.vornVectorPos(out, 0.25F, other, 0.5F);
    EXPECT_TRUE(out[0] == 1.5F && out[1] == 4 && out[2] == 3) << "written out, it is not turned";
}

} // namespace
