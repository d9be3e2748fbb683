// SPDX-License-Identifier: MIT
#pragma once

#include <vorn/vorn.h>

/// A box along the axes of the model.
struct Box {
    float low[3], high[3];

    /// The corner whose coordinates are the high ones where `which` has a bit.
    void vertex(int which) const {
        ::glVertex3f(which & 1 ? high[0] : low[0], which & 2 ? high[1] : low[1],
                     which & 4 ? high[2] : low[2]);
    }
    /// Its six sides, with their normals: GL_QUADS.
    void sides() const;
    /// Its twelve edges: GL_LINES.
    void edges() const;
};

inline void Box::sides() const {
    for (int axis = 0; axis < 3; ++axis) {
        const int u = 1 << (axis + 1) % 3, v = 1 << (axis + 2) % 3;
        for (int side : {0, 1}) {
            if (side == 0 && low[axis] == high[axis]) continue; // flat: the upper side alone
            float normal[3] = {};
            normal[axis] = side == 0 ? -1.0F : 1.0F;
            ::glNormal3fv(normal);
            for (int corner : {0, u, u | v, v})
                vertex(corner | side << axis);
        }
    }
}

inline void Box::edges() const {
    for (int axis = 0; axis < 3; ++axis) {
        const int u = 1 << (axis + 1) % 3, v = 1 << (axis + 2) % 3;
        for (int corner : {0, u, v, u | v}) {
            vertex(corner);
            vertex(corner | 1 << axis);
        }
    }
}
