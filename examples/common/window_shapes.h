// SPDX-License-Identifier: MIT
#pragma once

#include <vorn/vorn.h>

namespace examples {

/// Issues a vertex at GL window coordinates: pixels, y upwards, and depth.
inline void windowVertex(CvornOGLMapping& mapping, double x, double y, double depth) {
    mapping.gluUnProject(x, y, depth);
    mapping.glVertex3d();
}

/// A box of one colour at its lower, or left, end and another at the other.
inline void fillBox(CvornOGLMapping& mapping, double left, double bottom, double right, double top,
                    double depth, const CvornColour& from, const CvornColour& to, bool upwards = false) {
    ::glBegin(GL_QUADS);
    from.glColor();
    windowVertex(mapping, left, bottom, depth);
    (upwards ? to : from).glColor();
    windowVertex(mapping, left, top, depth);
    to.glColor();
    windowVertex(mapping, right, top, depth);
    (upwards ? from : to).glColor();
    windowVertex(mapping, right, bottom, depth);
    ::glEnd();
}

inline void fillBox(CvornOGLMapping& mapping, double left, double bottom, double right, double top,
                    double depth, const CvornColour& colour) {
    fillBox(mapping, left, bottom, right, top, depth, colour, colour);
}

/// The outline of a box, `width` pixels wide and inside it.
inline void frameBox(CvornOGLMapping& mapping, double left, double bottom, double right, double top,
                     double depth, double width, const CvornColour& colour) {
    fillBox(mapping, left, bottom, right, bottom + width, depth, colour);
    fillBox(mapping, left, top - width, right, top, depth, colour);
    fillBox(mapping, left, bottom + width, left + width, top - width, depth, colour);
    fillBox(mapping, right - width, bottom + width, right, top - width, depth, colour);
}

} // namespace examples
