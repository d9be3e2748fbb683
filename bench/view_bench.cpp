// SPDX-License-Identifier: MIT
#include "bench/harness.h"
#include "tests/support/gl_window.h"
#include "vorn/view/mapping.h"

namespace {

constexpr int pointCount = 1000;

/// A mapping of a turned perspective view.
CvornOGLMapping someMapping() {
    const support::GlWindow window;
    glMatrixMode(GL_PROJECTION);
    gluPerspective(30, 4.0 / 3, 0.5, 20);
    glMatrixMode(GL_MODELVIEW);
    glTranslatef(0, 0, -5);
    glRotatef(-70, 1, 0, 0);
    glRotatef(45, 0, 0, 1);
    CvornOGLMapping mapping;
    mapping.Update(1);
    return mapping;
}

bench::Sides projectSides() {
    CvornOGLMapping mapping = someMapping();
    return {[=]() mutable {
                for (int i = 0; i < pointCount; i++) {
                    mapping.gluProject(i * 0.001, 0.2, 0.3);
                    bench::keep(mapping);
                }
            },
            [=] {
                double pos[3];
                for (int i = 0; i < pointCount; i++) {
                    ::gluProject(i * 0.001, 0.2, 0.3, mapping.m_adModel, mapping.m_adProj,
                                 mapping.m_anViewport, pos, pos + 1, pos + 2);
                    bench::keep(pos);
                }
            }};
}

bench::Sides unprojectSides() {
    CvornOGLMapping mapping = someMapping();
    return {[=]() mutable {
                for (int i = 0; i < pointCount; i++) {
                    mapping.gluUnProject(i, 60, 0.5);
                    bench::keep(mapping);
                }
            },
            [=] {
                double pos[3];
                for (int i = 0; i < pointCount; i++) {
                    ::gluUnProject(i, 60, 0.5, mapping.m_adModel, mapping.m_adProj, mapping.m_anViewport, pos,
                                   pos + 1, pos + 2);
                    bench::keep(pos);
                }
            }};
}

const bench::Registration project{
    {"view: gluProject of 1000 points", "GLU's with the same matrices", 0.5, projectSides}};
const bench::Registration unproject{
    {"view: gluUnProject of 1000 points", "GLU's with the same matrices", 0.2, unprojectSides}};

} // namespace
