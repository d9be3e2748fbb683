// SPDX-License-Identifier: MIT
#pragma once

#include "vorn/opengl.h"

#include <cmath>

namespace bench {

constexpr GLuint surfaceList = 5;

/// Fills that list with a surface of 200 x 200 quads, coloured by height and lit.
inline void compileSurface() {
    constexpr int size = 200;
    const auto vertex = [](int i, int j) {
        const float x = static_cast<float>(i) / size - 0.5F, y = static_cast<float>(j) / size - 0.5F;
        const float z = 0.2F * std::sin(12 * x) * std::cos(9 * y);
        glColor3f(0.5F + 2 * z, 0.5F, 0.5F - 2 * z);
        glNormal3f(-2.4F * std::cos(12 * x) * std::cos(9 * y), 1.8F * std::sin(12 * x) * std::sin(9 * y), 1);
        glVertex3f(x, y, z);
    };
    glNewList(surfaceList, GL_COMPILE);
    for (int i = 0; i < size; i++) {
        glBegin(GL_QUAD_STRIP);
        for (int j = 0; j <= size; j++) {
            vertex(i, j);
            vertex(i + 1, j);
        }
        glEnd();
    }
    glEndList();
}

} // namespace bench
