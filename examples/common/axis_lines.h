// SPDX-License-Identifier: MIT
#pragma once

#include <vorn/vorn.h>

namespace examples {

/// Draws the lines of an axis set once more, a hair nearer to the eye than its list has: the first lines of
/// the grids lie on them, the others end there, and all shine through. Unlit, with a context current.
inline void drawAxisLines(const CvornAxisSet& set, float lineWidth) {
    constexpr double hair = 4e-5; // of the window's depth: two hundredths of a model unit at the origin
    double depths[2];
    ::glGetDoublev(GL_DEPTH_RANGE, depths);
    ::glPushAttrib(GL_VIEWPORT_BIT | GL_LINE_BIT | GL_CURRENT_BIT);
    ::glDepthRange(depths[0], depths[1] - hair);
    ::glLineWidth(2 * lineWidth);
    set.m_clrAxis.glColor();
    ::glBegin(GL_LINES);
    for (const CvornAxis* axis : {&set.m_axisX, &set.m_axisY, &set.m_axisZ}) {
        if (!axis->m_bEnabled) continue;
        axis->vornVectorPos(0);
        axis->vornVectorPos(1 - set.m_fTipLength / axis->m_fLength);
    }
    ::glEnd();
    ::glPopAttrib();
}

} // namespace examples
