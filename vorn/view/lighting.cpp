// SPDX-License-Identifier: MIT
#include "vorn/view/lighting.h"

#include "vorn/opengl.h"

namespace {

void loadLightModel() {
    const float ambient[] = {0.2F, 0.2F, 0.2F, 1};
    ::glLightModelf(GL_LIGHT_MODEL_LOCAL_VIEWER, 1);
    ::glLightModelfv(GL_LIGHT_MODEL_AMBIENT, ambient);
    ::glLightModelf(GL_LIGHT_MODEL_TWO_SIDE, 0);
}

void loadLight(float x, float y, float z) {
    const float ambient[] = {0.4F, 0.4F, 0.4F, 1};
    const float white[] = {1, 1, 1, 1};
    const float position[] = {x, y, z, 1};
    ::glLightfv(GL_LIGHT0, GL_AMBIENT, ambient);
    ::glLightfv(GL_LIGHT0, GL_DIFFUSE, white);
    ::glLightfv(GL_LIGHT0, GL_SPECULAR, white);
    ::glLightfv(GL_LIGHT0, GL_POSITION, position);
    ::glLightf(GL_LIGHT0, GL_LINEAR_ATTENUATION, 0.8F);
}

void loadMaterial(bool isPreset) {
    const float ambient[] = {0.2F, 0.2F, 0.2F, 1};
    const float presetDiffuse[] = {0.8F, 0.8F, 0.8F, 0.8F};
    const float white[] = {1, 1, 1, 1};
    const float black[] = {0, 0, 0, 1};
    const float emission[] = {0.1F, 0.1F, 0.1F, 1};
    ::glMaterialfv(GL_FRONT_AND_BACK, GL_AMBIENT, ambient);
    ::glMaterialfv(GL_FRONT_AND_BACK, GL_DIFFUSE, isPreset ? presetDiffuse : white);
    ::glMaterialfv(GL_FRONT_AND_BACK, GL_SPECULAR, black);
    ::glMaterialfv(GL_FRONT_AND_BACK, GL_EMISSION, emission);
    ::glMaterialf(GL_FRONT_AND_BACK, GL_SHININESS, 128);
}

} // namespace

void CvornOGLLighting::Enable(int bEnable) {
    if (bEnable != 0) {
        ::glEnable(GL_LIGHTING);
        ::glEnable(GL_LIGHT0);
        ::glEnable(GL_NORMALIZE);
    } else {
        ::glDisable(GL_LIGHTING);
        ::glDisable(GL_NORMALIZE);
    }
}

void CvornOGLLighting::Update(CvornMatrix*, int bPreset, float) {
    ::glPushMatrix();
    loadLightModel();
    ::glColorMaterial(GL_FRONT_AND_BACK, GL_AMBIENT_AND_DIFFUSE);
    loadLight(m_fLightX, m_fLightY, m_fLightZ);
    loadMaterial(bPreset != 0);
    ::glPopMatrix();
}
