// SPDX-License-Identifier: MIT
#include "tests/support/feedback.h"
#include "tests/support/gl_test.h"
#include "vorn/axes/axis.h"

#include <limits>

namespace {

CvornAxis axisFrom(float minimum, float maximum, float tick = 0.1F) {
    CvornAxis axis(nullptr, AXIS_X, 1, 0, 0);
    axis.SetMin(minimum);
    axis.SetMax(maximum);
    axis.SetTick(tick);
    return axis;
}

TEST(AxisTest, FindsARoundTickForItsRange) {
    const float cases[][2] = {{1, 0.1F},    {3.2F, 1},      {2.9F, 0.1F}, {100, 10},
                              {0.2F, 0.1F}, {0.01F, 0.01F}, {0, 0}};
    for (const auto& [range, tick] : cases) {
        EXPECT_FLOAT_EQ(axisFrom(5, 5 + range).CalculateTick(), tick) << range;
        EXPECT_FLOAT_EQ(axisFrom(range, 0).CalculateTick(), tick) << -range;
    }
}

TEST(AxisTest, SpreadsItsTicksUpToTheTip) {
    CvornAxis axis = axisFrom(0, 1);
    EXPECT_EQ(axis.GetTickCount(), 51);
    EXPECT_FLOAT_EQ(axis.GetTickPos(50), 0.96F);
    EXPECT_EQ(axis.GetTickPos(0), 0);
    axis.m_fLength = 2;
    EXPECT_FLOAT_EQ(axis.GetTickPos(25), 0.49F);
    axis.SetMin(2);
    axis.SetLength(5);
    EXPECT_EQ(axis.GetMax(), 7);
}

TEST(AxisTest, KeepsItsTicksWithinBoundsWhateverItsRange) {
    const float infinite = std::numeric_limits<float>::infinity(),
                nan = std::numeric_limits<float>::quiet_NaN();
    const float cases[][3] = {{0, 1, 0},        {0, 0, 0},      {0, 1e30F, 0.1F},
                              {0, infinite, 1}, {nan, 1, 0.1F}, {0, 1, -1}};
    for (const auto& [minimum, maximum, tick] : cases) {
        const CvornAxis axis = axisFrom(minimum, maximum, tick);
        const int count = axis.GetTickCount();
        EXPECT_TRUE(count >= 1 && count <= 100001) << count;
        EXPECT_TRUE(axis.GetTickPos(count - 1) >= 0 && axis.GetTickPos(count - 1) <= 1);
    }
}

class AxisGeometryTest : public support::GlTest {
protected:
    AxisGeometryTest() {
        m_axis.m_fLength = 2;
        m_axis.m_ptOrigin = CvornPtMap(1, 2, 3);
        m_other.m_fLength = 4;
    }
    void expectVertex(const std::function<void()>& draw, double x, double y, double z) {
        const auto vertices = support::verticesOf(support::captureModel([&] {
            glBegin(GL_POINTS);
            draw();
            glEnd();
        }));
        ASSERT_EQ(vertices.size(), 1U);
        EXPECT_NEAR(vertices[0].x, x, 1e-5);
        EXPECT_NEAR(vertices[0].y, y, 1e-5);
        EXPECT_NEAR(vertices[0].z, z, 1e-5);
    }

    CvornAxis m_axis{nullptr, AXIS_X, 1, 0, 0};
    CvornAxis m_other{nullptr, AXIS_Y, 0, 1, 0};
};

TEST_F(AxisGeometryTest, PutsPositionsOnItselfAndOnThePlaneWithAnother) {
    expectVertex([&] { m_axis.vornVectorPos(0.25F); }, 1.5, 2, 3);
    expectVertex([&] { m_axis.vornVectorPos(0.25F, m_other, 0.5F); }, 1.5, 4, 3);
    CvornMatrix matrix;
    matrix.RotateZDeg(90, 0);
    m_axis.m_pMatrix = &matrix;
    // The matrix turns the position, not the origin, and not what is only written out.
    expectVertex([&] { m_axis.vornVectorPos(0.25F, m_other, 0.5F); }, 1 - 2, 2 + 0.5, 3);
    expectVertex([&] { m_axis.vornVertex3f(1, 0, 1); }, 1, 3, 4);
    float out[3];
    m_axis.vornVectorPos(out, 0.25F, m_other, 0.5F);
    EXPECT_TRUE(out[0] == 1.5F && out[1] == 4 && out[2] == 3);
}

TEST_F(AxisGeometryTest, GoesRoundItselfInCircles) {
    const auto quarter = [&] { m_axis.vornVectorPosAngleD(0.5F, 0.5F, 90); };
    expectVertex(quarter, 2, 2, 3.5);
    m_axis.m_dwType = AXIS_Y | AXIS_OF_SET;
    expectVertex(quarter, 2, 2, 3.5);
    m_axis.m_dwType = AXIS_Z;
    expectVertex(quarter, 2, 2.5, 3);
}

} // namespace
