// SPDX-License-Identifier: MIT
#include "vorn/axes/axis_set.h"

#include "vorn/axes/detail/plane.h"

#include <array>
#include <cmath>

using vorn::detail::Plane;
using vorn::detail::planeOf;
using vorn::detail::planeXY;
using vorn::detail::planeXZ;
using vorn::detail::planeYZ;

namespace {

/// Every so many grid lines, the first included, one is a major line.
constexpr int linesPerMajorLine = 5;

struct Direction {
    double cosine, sine;
};

/// The rim of a tip goes round in steps of 20 degrees, and 40 degrees on over its beginning.
using Rim = std::array<Direction, 21>;

const Rim& rimDirections() {
    static const Rim s_rim = [] {
        Rim rim;
        for (int i = 0; i < static_cast<int>(rim.size()); i++) {
            const double angle = static_cast<float>(i * 20.0F * 0.017453292519943295);
            rim[i] = {std::cos(angle), std::sin(angle)};
        }
        return rim;
    }();
    return s_rim;
}

/// The fraction of an axis' drawn length that is left before its tip.
float fractionBeforeTip(const CvornAxis& axis, float tipLength) {
    return axis.m_fLength != 0 ? (axis.m_fLength - tipLength) / axis.m_fLength : 0;
}

/// The grid lines at the ticks of axis a, each as long as axis b up to its last tick.
void emitLines(const CvornAxis& a, const CvornAxis& b, const CvornColour& major, const CvornColour& minor) {
    const int count = a.GetTickCount();
    const double step = a.GetTickStep();
    const float end = b.GetTickPos(b.GetTickCount() - 1);
    for (int i = 0; i < count; i++) {
        // The colour stays with GL until it is changed.
        if (i % linesPerMajorLine == 0)
            major.glColor();
        else if (i % linesPerMajorLine == 1)
            minor.glColor();
        const float p = static_cast<float>(step * i);
        a.vornVectorPos(p);
        b.vornVectorPos(end, a, p);
    }
}

} // namespace

void CvornAxisSet::vornBuild(int list, float width) {
    if (list >= 0) {
        UploadImages();
        ::glNewList(list, GL_COMPILE);
    }
    ::glLineWidth(2 * width);
    m_clrAxis.glColor();
    ::glBegin(GL_LINES);
    for (const CvornAxis* axis : {&m_axisX, &m_axisY, &m_axisZ}) {
        if (axis->m_bEnabled == 0) continue;
        axis->vornVectorPos(0);
        axis->vornVectorPos(1);
    }
    ::glEnd();
    ::glLineWidth(width);

    for (const Plane* plane : {&planeXZ, &planeXY, &planeYZ}) {
        const auto& [x, y, z] = plane->normal;
        vornBuildImage(x, y, z, this->*plane->a, this->*plane->b, this->*plane->image);
    }
    if (m_dwParams & AXES_TIPS) {
        for (const CvornAxis* axis : {&m_axisX, &m_axisY, &m_axisZ}) {
            vornNormal3d(axis == &m_axisX, axis == &m_axisY, axis == &m_axisZ);
            vornBuildTip(*axis);
        }
    }
    if (m_dwParams & AXES_GRIDS) {
        m_clrGrid.glColor();
        for (const Plane* plane : {&planeXY, &planeXZ, &planeYZ}) {
            vornNormalGrid(plane->code);
            vornBuildGrid(this->*plane->a, this->*plane->b);
        }
    }
    if (list >= 0) ::glEndList();
}

/// An image that is first bound within the list would be uploaded with every drawing of the list. One without
/// a texture name of its own must be: it shares GL's unnamed texture with the others.
void CvornAxisSet::UploadImages() {
    int bound;
    ::glGetIntegerv(GL_TEXTURE_BINDING_2D, &bound);
    for (CvornDIBTexture* image : {&m_imageXY, &m_imageXZ, &m_imageYZ})
        if (image->IsValid() && !image->IsScaled() && image->GetTextureName() != 0) image->Bind();
    ::glBindTexture(GL_TEXTURE_2D, bound);
}

void CvornAxisSet::vornBuildTip(const CvornAxis& a) {
    if (a.m_bEnabled == 0) return;
    CvornColour apex = a.m_clrAxis, rim = a.m_clrAxis;
    apex.Darker(0.2F);
    rim.Lighter(0.2F);
    rim.m_fAlpha = 0.7F;

    ::glBegin(GL_TRIANGLE_FAN);
    apex.glColor();
    a.vornVectorPos(1);
    rim.glColor();
    const float p = fractionBeforeTip(a, m_fTipLength);
    for (const Direction& direction : rimDirections())
        a.vornVectorPosAngle(p, m_fTipRadius, direction.cosine, direction.sine);
    ::glEnd();
}

void CvornAxisSet::vornBuildGrid(CvornAxis a, CvornAxis b) {
    if (a.m_bEnabled == 0 || b.m_bEnabled == 0) return;
    ::glBegin(GL_LINES);
    emitLines(a, b, m_clrGrid, m_clrMinorGrid);
    emitLines(b, a, m_clrGrid, m_clrMinorGrid);
    ::glEnd();
}

void CvornAxisSet::vornBuildImage(float nx, float ny, float nz, CvornAxis a, CvornAxis b,
                                  CvornDIBTexture& t) {
    if (a.m_bEnabled == 0 || b.m_bEnabled == 0 || !t.IsValid()) return;
    const bool hasTips = (m_dwParams & AXES_TIPS) != 0;
    const float endA = hasTips ? fractionBeforeTip(a, m_fTipLength) : 1;
    const float endB = hasTips ? fractionBeforeTip(b, m_fTipLength) : 1;

    CvornColour(0.5F, 0.5F, 0.5F, 0.5F).glColor();
    ::glEnable(GL_TEXTURE_2D);
    t.Bind();
    ::glBegin(GL_QUADS);
    vornNormal3f(nx, ny, nz);
    ::glTexCoord2f(0, 0);
    a.vornVectorPos(0);
    ::glTexCoord2f(0, 1);
    b.vornVectorPos(endB, a, 0);
    ::glTexCoord2f(1, 1);
    b.vornVectorPos(endB, a, endA);
    ::glTexCoord2f(1, 0);
    a.vornVectorPos(endA);
    ::glEnd();
    ::glDisable(GL_TEXTURE_2D);
}

void CvornAxisSet::vornVertexGrid(unsigned long dwPlane, float a, float b, float c) const {
    switch (dwPlane) {
    case PLANE_XY:
        ::glVertex3d(a, b, m_ptOrigin.m_fZ);
        break;
    case PLANE_XZ:
        ::glVertex3d(a, m_ptOrigin.m_fY, c);
        break;
    case PLANE_YZ:
        ::glVertex3d(m_ptOrigin.m_fX, b, c);
        break;
    default:
        break;
    }
}

void CvornAxisSet::vornNormalGrid(unsigned long dwPlane) const {
    const Plane* plane = planeOf(dwPlane);
    if (plane != nullptr) vornNormal3d(plane->normal[0], plane->normal[1], plane->normal[2]);
}

void CvornAxisSet::vornVertex3f(float x, float y, float z) const {
    const CvornPtMap& o = m_ptOrigin;
    if (m_dwParams & AXES_TRANSFORM_NORMALS)
        m_matrix.glVertexOffset3f(x, y, z, o.m_fX, o.m_fY, o.m_fZ);
    else
        ::glVertex3f(x + o.m_fX, y + o.m_fY, z + o.m_fZ);
}

void CvornAxisSet::vornVertex3d(double x, double y, double z) const {
    const CvornPtMap& o = m_ptOrigin;
    if (m_dwParams & AXES_TRANSFORM_NORMALS)
        m_matrix.glVertexOffset3d(x, y, z, o.m_fX, o.m_fY, o.m_fZ);
    else
        ::glVertex3d(x + o.m_fX, y + o.m_fY, z + o.m_fZ);
}

void CvornAxisSet::vornNormal3f(float x, float y, float z) const {
    if (m_dwParams & AXES_TRANSFORM_NORMALS)
        m_matrix.glNormal3f(x, y, z);
    else
        ::glNormal3f(x, y, z);
}

void CvornAxisSet::vornNormal3d(double x, double y, double z) const {
    if (m_dwParams & AXES_TRANSFORM_NORMALS)
        m_matrix.glNormal3d(x, y, z);
    else
        ::glNormal3d(x, y, z);
}
