// SPDX-License-Identifier: MIT
#pragma once

#include "vorn/api.h"
#include "vorn/opengl.h"

/// A snapshot of the GL matrices and viewport that turns model points into window points and back at any
/// later time, without a current context. Every projection writes the current position and every getter reads
/// it.
///
/// Window points are in pixels from the lower left corner, with a depth of 0 (near) to 1 (far). The results
/// are GLU's, and so are the failures: where GLU gives none (a w of 0; for unprojecting also a singular
/// product of the matrices) the current position and the output arguments receive the position as it was.
///
/// The fields are authoritative: they may be read, copied and changed at will.
class CvornOGLMapping {
public:
    /// The modelview and projection matrices, column-major, and the viewport's x, y, width and height.
    alignas(16) double m_adModel[16] = {};
    double m_adProj[16] = {};
    int m_anViewport[4] = {};
    /// The current position.
    double m_dPosX = 0;
    double m_dPosY = 0;
    double m_dPosZ = 0;
    /// How many pixels a model segment of length 0.5 covers; 0 until the first Update(1).
    float m_fScreenRadius = 0;

    /// Captures the matrices and the viewport of the current context; with bRadius set also measures the
    /// screen radius, between the model points (0, -0.5, 0) and (0, -0.5, 0.5). The current position stays.
    VORN_API void Update(int bRadius);

    /// Projects a model point into the current position.
    VORN_API void gluProject(double x, double y, double z);
    /// The same for in[0..2], with the resulting position in out[0..2] as well.
    VORN_API void gluProject(const double* in, double* out);
    VORN_API void gluProject(const float* in, float* out);
    /// Projects (in[0], in[1], in[1]): in[2] is not read. A non-null pt receives x and y rounded to the
    /// nearest.
    VORN_API void gluProject(const float* in, POINT* pt);
    /// The point in the eye coordinates of the context's own modelview matrix of this moment, not the
    /// captured one. Leaves the GL matrix mode at GL_MODELVIEW.
    VORN_API void gluProjectViewOnly(double x, double y, double z);
    /// Turns a window point and depth into the model point, into the current position.
    VORN_API void gluUnProject(double x, double y, double z);
    /// Unprojects the current position in place.
    void gluUnProjectPos() { gluUnProject(m_dPosX, m_dPosY, m_dPosZ); }

    /// Issue the current position to GL.
    void glRasterPos3d() const { ::glRasterPos3d(m_dPosX, m_dPosY, m_dPosZ); }
    void glVertex3d() const { ::glVertex3d(m_dPosX, m_dPosY, m_dPosZ); }

    /// The current position as floats: three of them, the first two, or one.
    VORN_API void GetPos3f(float* out) const;
    VORN_API void GetPos3f(float& x, float& y, float& z) const;
    VORN_API void GetPos2f(float* out) const;
    VORN_API void GetPos2f(float& x, float& y) const;
    float GetPosXf() const { return static_cast<float>(m_dPosX); }
    float GetPosYf() const { return static_cast<float>(m_dPosY); }
    float GetPosZf() const { return static_cast<float>(m_dPosZ); }
    /// x and y truncated towards zero, where gluProject into a POINT rounds.
    VORN_API POINT GetPosPt() const;
    VORN_API void GetPosPt(POINT* pt) const;
    /// Moves the current position.
    VORN_API void OffsetPos(double dx, double dy, double dz);

    /// The distance in the window, in pixels and without the depth, between two model points. Leaves the
    /// current position at the projection of b.
    VORN_API float GetWinMag3f(const float* a, const float* b);

    /// How many pixels a model segment of length 0.5 covers; 0 until the first Update(1).
    float GetScreenRadius() const { return m_fScreenRadius; }
    /// Pixels to model units and back by the screen radius: a scale, exact only near the origin and along the
    /// direction that it was measured in. Update(1) must have been called.
    float ScreenToModel(float fPixels) const { return fPixels / m_fScreenRadius * 0.5F; }
    float ModelToScreen(float fLength) const { return (fLength + fLength) * m_fScreenRadius; }

private:
    bool IsInverseValid() const;
    void UpdateInverse();

    // The matrix from window points to model points, with the fields that it was made from: it is good while
    // they are what the fields are, which anyone may change.
    alignas(16) double m_adInverse[16] = {};
    double m_adInverseModel[16] = {};
    double m_adInverseProj[16] = {};
    int m_anInverseViewport[4] = {};
    bool m_bInvertible = false;
};
