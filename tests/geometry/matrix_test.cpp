// SPDX-License-Identifier: MIT
#include "tests/support/feedback.h"
#include "tests/support/gl_test.h"
#include "vorn/geometry/matrix.h"

#include <cstring>

namespace {

const float shift[3] = {1, -2, 3};

void expectPoint(double x, double y, double z, const float (&expected)[3]) {
    EXPECT_NEAR(x, expected[0], 1e-5);
    EXPECT_NEAR(y, expected[1], 1e-5);
    EXPECT_NEAR(z, expected[2], 1e-5);
}

/// Compares with GL's own product of what the calls multiply into its modelview matrix.
template <typename Calls>
void expectAsGl(const CvornMatrix& actual, Calls calls) {
    float expected[16];
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    calls();
    glGetFloatv(GL_MODELVIEW_MATRIX, expected);
    for (int i = 0; i < 16; i++)
        EXPECT_NEAR(actual.m_afElement[i], expected[i], 1e-5F) << "element " << i;
}

using MatrixTest = support::GlTest;

TEST_F(MatrixTest, BuildersComposeAsTheGlCallsOfTheSameNames) {
    for (float angle : {0.0F, 30.0F, 90.0F, -135.0F, 400.0F}) {
        SCOPED_TRACE(angle);
        CvornMatrix matrix;
        matrix.RotateXDeg(angle, 0);
        matrix.Translation(shift, 1);
        matrix.RotateYDeg(angle, 1);
        matrix.InvertY(1);
        matrix.RotateZDeg(angle, 1);
        matrix.InverseTranslation(shift, 1);
        expectAsGl(matrix, [=] {
            glRotatef(angle, 1, 0, 0);
            glTranslatef(1, -2, 3);
            glRotatef(angle, 0, 1, 0);
            glScalef(1, -1, 1);
            glRotatef(angle, 0, 0, 1);
            glTranslatef(-1, 2, -3);
        });
        matrix.RotateYDeg(angle, 0);
        expectAsGl(matrix, [=] { glRotatef(angle, 0, 1, 0); });
    }
}

TEST_F(MatrixTest, MultipliesAllSixteenElementsAlsoByItself) {
    float elements[16];
    for (int i = 0; i < 16; i++)
        elements[i] = static_cast<float>((i * 7) % 11) / 4 - 1;
    CvornMatrix matrix(elements);
    matrix.Multiply(matrix);
    expectAsGl(matrix, [&] {
        glMultMatrixf(elements);
        glMultMatrixf(elements);
    });
}

TEST_F(MatrixTest, ScalesTranslationsOnlyWhenLoadedAndTransformsInPlace) {
    CvornMatrix matrix;
    matrix.TranslationMult(shift, 2, 0);
    matrix.TranslationMult(shift, 2, 1);
    matrix.m_afElement[8] = 10;
    matrix.m_afElement[15] = 4; // the bottom row takes no part
    float flat[] = {1, 2, 3};
    matrix.Transform2fa(flat);
    expectPoint(flat[0], flat[1], flat[2], {34, -4, 3});
    double x = 1e9, y = 0.5, z = 1e-9; // more digits than a float has
    matrix.Transform3d(x, y, z);
    EXPECT_EQ(x, 1e9 + 10 * 1e-9 + 3);
    EXPECT_EQ(z, 9 + 1e-9);
}

TEST_F(MatrixTest, EmitsTransformedVerticesAndMovesNormalsLikePoints) {
    CvornMatrix matrix;
    matrix.Translation(shift, 0);
    matrix.RotateZDeg(90, 1);
    float normals[2][4];
    const auto vertices = support::verticesOf(support::captureModel([&] {
        glBegin(GL_POINTS);
        matrix.glVertex3f(1, 0, 0);
        matrix.glVertex3d(1, 0, 0);
        matrix.glVertexOffset3f(1, 0, 0, 0.5F, 1, 2);
        matrix.glVertexOffset3d(1, 0, 0, 0.5, 1, 2);
        matrix.glNormal3f(1, 0, 0);
        glEnd();
        glGetFloatv(GL_CURRENT_NORMAL, normals[0]);
        glBegin(GL_POINTS);
        matrix.glNormal3d(1, 0, 0);
        glEnd();
        glGetFloatv(GL_CURRENT_NORMAL, normals[1]);
    }));
    const float expected[][3] = {{1, -1, 3}, {1, -1, 3}, {1.5F, 0, 5}, {1.5F, 0, 5}};
    ASSERT_EQ(vertices.size(), std::size(expected));
    for (std::size_t i = 0; i < vertices.size(); i++)
        expectPoint(vertices[i].x, vertices[i].y, vertices[i].z, expected[i]);
    for (const auto& normal : normals)
        expectPoint(normal[0], normal[1], normal[2], {1, -1, 3});
}

TEST_F(MatrixTest, GivesGlyphTransformsInFixedPoint) {
    CvornMatrix matrix;
    matrix.m_afElement[0] = -0.5F;
    matrix.m_afElement[4] = 1.25F;
    matrix.m_afElement[1] = -1.0F / 65536 / 2; // truncated, not rounded down
    matrix.m_afElement[5] = 1e6F;              // more than the format holds
    MAT2 mat2;
    matrix.GetMAT2(&mat2);
    const long expected[4] = {-32768, 0x14000, 0, 0x7FFFFFFF};
    EXPECT_EQ(std::memcmp(&mat2, expected, sizeof expected), 0);
}

} // namespace
