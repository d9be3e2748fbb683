// SPDX-License-Identifier: MIT
#include "tests/support/gl_test.h"
#include "vorn/view/mapping.h"

#include <cmath>

namespace {

/// A camera in the manner of a chart's view, in a window that does not begin at 0.
class MappingTest : public support::GlTest {
protected:
    MappingTest() {
        glViewport(10, 20, 160, 120);
        glMatrixMode(GL_PROJECTION);
        gluPerspective(30, 160.0 / 120, 0.5, 20);
        glMatrixMode(GL_MODELVIEW);
        glTranslatef(0.1F, -0.2F, -5);
        glRotatef(-70, 1, 0, 0);
        glRotatef(45, 0, 0, 1);
        m_mapping.Update(1);
    }

    void expectPos(double x, double y, double z) const {
        EXPECT_NEAR(m_mapping.m_dPosX, x, 1e-9 * std::fabs(x) + 1e-12);
        EXPECT_NEAR(m_mapping.m_dPosY, y, 1e-9 * std::fabs(y) + 1e-12);
        EXPECT_NEAR(m_mapping.m_dPosZ, z, 1e-9 * std::fabs(z) + 1e-12);
    }

    /// Projects and unprojects a few points, each compared with what GLU gives for the mapping's fields.
    void expectAsGlu() {
        const double* model = m_mapping.m_adModel;
        const double* proj = m_mapping.m_adProj;
        const int* viewport = m_mapping.m_anViewport;
        const double points[][3] = {{0, 0, 0}, {0.5, -0.5, 0.25}, {-0.3, 0.7, 0.5}, {2, 1, 9}};
        for (const auto& [x, y, z] : points) {
            double wx, wy, wz, mx, my, mz;
            m_mapping.gluProject(x, y, z);
            ASSERT_TRUE(::gluProject(x, y, z, model, proj, viewport, &wx, &wy, &wz));
            expectPos(wx, wy, wz);
            m_mapping.gluUnProject(wx, wy, wz);
            ASSERT_TRUE(::gluUnProject(wx, wy, wz, model, proj, viewport, &mx, &my, &mz));
            expectPos(mx, my, mz);
            EXPECT_NEAR(mx, x, 1e-6);
        }
    }

    CvornOGLMapping m_mapping;
};

TEST_F(MappingTest, AgreesWithGluAlsoAfterItsFieldsChange) {
    expectAsGlu();
    m_mapping.m_adModel[12] += 0.25;
    expectAsGlu();
    m_mapping.m_adProj[0] *= 2;
    expectAsGlu();
    m_mapping.m_anViewport[2] = 55;
    expectAsGlu();
    CvornOGLMapping other;
    glLoadIdentity();
    glTranslatef(0, 0, -3);
    other.Update(0);
    EXPECT_EQ(other.GetScreenRadius(), 0);
    m_mapping = other;
    expectAsGlu();
}

TEST_F(MappingTest, KeepsThePositionWhereGluGivesNone) {
    m_mapping.OffsetPos(1, 2, 3);
    m_mapping.m_adProj[10] = m_mapping.m_adProj[14] = 0; // depth is lost
    m_mapping.gluUnProject(50, 50, 0.5);
    expectPos(1, 2, 3);
    m_mapping.m_adProj[11] = 0; // and with it w
    m_mapping.gluProject(0, 0, 0);
    expectPos(1, 2, 3);
}

TEST_F(MappingTest, RoundsIntoPointsButTruncatesThePosition) {
    const float in[] = {0.2F, 0.3F, 99}; // the third is never read
    POINT rounded;
    m_mapping.gluProject(in, &rounded);
    const double x = m_mapping.m_dPosX, y = m_mapping.m_dPosY;
    EXPECT_EQ(rounded.x, std::lround(x));
    EXPECT_EQ(rounded.y, std::lround(y));
    m_mapping.gluProject(in[0], in[1], in[1]);
    expectPos(x, y, m_mapping.m_dPosZ);
    m_mapping.OffsetPos(1e300, -0.9 - y, 0);
    EXPECT_EQ(CPoint(m_mapping.GetPosPt()), CPoint(0x7FFFFFFF, 0));
}

TEST_F(MappingTest, MeasuresTheWindowInPixels) {
    float a[] = {0, -0.5F, 0}, b[] = {0, -0.5F, 0.5F}, begin[3], end[3];
    m_mapping.gluProject(a, begin);
    const float length = m_mapping.GetWinMag3f(a, b);
    m_mapping.GetPos3f(end);
    EXPECT_NEAR(length, std::hypot(end[0] - begin[0], end[1] - begin[1]), 1e-4);
    // The radius is the same segment's, with the depth.
    EXPECT_NEAR(m_mapping.GetScreenRadius(), std::hypot(length, end[2] - begin[2]), 1e-4);
    EXPECT_NEAR(m_mapping.ModelToScreen(m_mapping.ScreenToModel(20)), 20, 1e-5);
}

TEST_F(MappingTest, GivesEyeCoordinatesOfTheLiveMatrix) {
    glLoadIdentity();
    glTranslatef(1, 2, 3);
    glRotatef(90, 0, 0, 1);
    m_mapping.gluProjectViewOnly(1, 0, 0);
    EXPECT_NEAR(m_mapping.m_dPosX, 1, 1e-6);
    EXPECT_NEAR(m_mapping.m_dPosY, 3, 1e-6);
}

} // namespace
