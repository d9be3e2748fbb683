// SPDX-License-Identifier: MIT
#include "tests/support/gl_test.h"
#include "vorn/geometry/matrix.h"

#include <cstring>

namespace {

const float shift[3] = {1, -2, 3};

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

TEST_F(MatrixTest, ComposesAsTheGlCallsOfTheSameNames) {
    CvornMatrix matrix;
    matrix.RotateXDeg(30, 0);
    matrix.Translation(shift, 1);
    matrix.RotateYDeg(-135, 1);
    matrix.InvertY(1);
    matrix.RotateZDeg(400, 1);
    matrix.InverseTranslation(shift, 1);
    expectAsGl(matrix, [] {
        glRotatef(30, 1, 0, 0);
        glTranslatef(1, -2, 3);
        glRotatef(-135, 0, 1, 0);
        glScalef(1, -1, 1);
        glRotatef(400, 0, 0, 1);
        glTranslatef(-1, 2, -3);
    });
    matrix.m_afElement[7] = 0.5F; // the bottom row takes part in products
    const CvornMatrix factor = matrix;
    matrix.Multiply(matrix);
    expectAsGl(matrix, [&] {
        factor.glMultMatrixf();
        factor.glMultMatrixf();
    });
}

TEST_F(MatrixTest, ScalesTranslationsOnlyWhenLoadedAndTransformsInPlace) {
    CvornMatrix matrix;
    matrix.TranslationMult(shift, 2, 0);
    matrix.TranslationMult(shift, 2, 1);
    matrix.m_afElement[8] = 10;
    matrix.m_afElement[15] = 4; // the bottom row takes no part in transforms
    float flat[] = {1, 2, 3};
    matrix.Transform2fa(flat);
    EXPECT_TRUE(flat[0] == 34 && flat[1] == -4 && flat[2] == 3)
        << flat[0] << ", " << flat[1] << ", " << flat[2];
    double x = 1e9, y = 0.5, z = 1e-9; // more digits than a float has
    matrix.Transform3d(x, y, z);
    EXPECT_EQ(x, 1e9 + 10 * 1e-9 + 3);
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
