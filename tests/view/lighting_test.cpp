// SPDX-License-Identifier: MIT
#include "tests/support/feedback.h"
#include "tests/support/gl_test.h"
#include "vorn/view/lighting.h"

namespace {

using LightingTest = support::GlTest;

/// The colour of a point at (0, 0, -3) with its normal towards a light at distance 1.
support::FeedbackVertex litPoint(int preset) {
    CvornOGLLighting lighting;
    lighting.SetPosition(0, 0, 1);
    const auto vertices = support::verticesOf(support::captureModel([&] {
        glTranslatef(0, 0, -3); // the light moves with the model
        lighting.Enable(1);
        lighting.Update(nullptr, preset, 0);
        glBegin(GL_POINTS);
        glNormal3f(0, 0, 5); // normalised
        glVertex3f(0, 0, 0);
        glEnd();
    }));
    return vertices.at(0);
}

TEST_F(LightingTest, LightsByTheEquationOfItsLightAndMaterials) {
    // Emission, scene ambient, then the light's ambient and diffuse parts weakened by the distance.
    for (int preset : {0, 1}) {
        const double diffuse = preset != 0 ? 0.8 : 1;
        const auto lit = litPoint(preset);
        EXPECT_NEAR(lit.g, 0.1 + 0.2 * 0.2 + (0.4 * 0.2 + diffuse) / 1.8, 1e-4) << "preset " << preset;
        EXPECT_NEAR(lit.a, diffuse, 1e-6);
    }
    CvornOGLLighting().Enable(0);
    EXPECT_FALSE(glIsEnabled(GL_LIGHTING) || glIsEnabled(GL_NORMALIZE));
    EXPECT_TRUE(glIsEnabled(GL_LIGHT0));
}

} // namespace
