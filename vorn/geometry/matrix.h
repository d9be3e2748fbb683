// SPDX-License-Identifier: MIT
#pragma once

#include "vorn/api.h"
#include "vorn/opengl.h"

/// A 4x4 single-precision transform in OpenGL's column-major order: element [c*4 + r] is row r, column c.
///
/// Points are transformed by the affine part only: w is taken as 1, the bottom row is never read and nothing
/// is divided by w. The trailing flag of the builders is 0 to load (overwrite this matrix) and nonzero to
/// multiply: this <- this * R, the order of glMultMatrixf, so R acts on a point first.
///
///     CvornMatrix m;
///     m.Translation(anchor, 0);
///     m.RotateZDeg(90.0F, 1); // turns first, then moves
///     glBegin(GL_POINTS);
///     m.glVertex3f(1, 0, 0);
///     glEnd();
class CvornMatrix {
public:
    /// The elements, ready for glMultMatrixf and glLoadMatrixf.
    float m_afElement[16];

    /// The identity.
    CvornMatrix() { LoadIdentity(); }
    /// Copies 16 floats in storage order.
    explicit CvornMatrix(const float* pfElements) { Set(pfElements); }
    CvornMatrix(const CvornMatrix&) = default;
    CvornMatrix& operator=(const CvornMatrix&) = default;

    /// Copies 16 floats in storage order.
    void Set(const float* pfElements) {
        for (int i = 0; i < 16; i++)
            m_afElement[i] = pfElements[i];
    }
    void LoadIdentity() {
        for (int i = 0; i < 16; i++)
            m_afElement[i] = i % 5 == 0 ? 1.0F : 0.0F;
    }

    /// this <- this * matrix, the full 4x4 product; the matrix may be this one.
    void Multiply(const CvornMatrix& matrix);

    /// Translation by v[0..2] in model units.
    VORN_API void Translation(const float* v, int bMultiply);
    /// Loads the translation by s * v[0..2]; with the flag set multiplies by the translation by v[0..2], and
    /// s is not used.
    VORN_API void TranslationMult(const float* v, float s, int bMultiply);
    /// Translation by -v[0..2].
    VORN_API void InverseTranslation(const float* v, int bMultiply);
    /// Right-handed rotations about the unit axes, as glRotatef about the same axis.
    VORN_API void RotateXRad(float fRadians, int bMultiply);
    VORN_API void RotateYRad(float fRadians, int bMultiply);
    VORN_API void RotateZRad(float fRadians, int bMultiply);
    VORN_API void RotateXDeg(float fDegrees, int bMultiply);
    VORN_API void RotateYDeg(float fDegrees, int bMultiply);
    VORN_API void RotateZDeg(float fDegrees, int bMultiply);
    /// Mirrors y.
    VORN_API void InvertY(int bMultiply);

    /// Replaces the point by its image, computed in float.
    void Transform3f(float& x, float& y, float& z) const;
    /// Replaces the point by its image, computed in double.
    void Transform3d(double& x, double& y, double& z) const;
    /// Replaces p[0..2] by the image of the point.
    void Transform3fa(float* p) const { Transform3f(p[0], p[1], p[2]); }
    /// Reads p[0..2] (z takes part) and replaces p[0] and p[1] only.
    void Transform2fa(float* p) const {
        float z = p[2];
        Transform3f(p[0], p[1], z);
    }

    /// Multiplies this matrix into the current GL matrix.
    void glMultMatrixf() const { ::glMultMatrixf(m_afElement); }

    // The emitters below belong between glBegin and glEnd: they transform here and issue the GL call.

    /// Emits the image of the point.
    void glVertex3f(float x, float y, float z) const;
    void glVertex3d(double x, double y, double z) const;
    /// Normals take the translation like points and are not normalised: for plain normals use a matrix whose
    /// translation is zero.
    void glNormal3f(float x, float y, float z) const;
    void glNormal3d(double x, double y, double z) const;
    /// The offset is added after the transform and is not itself transformed.
    void glVertexOffset3f(float x, float y, float z, float ox, float oy, float oz) const;
    void glVertexOffset3d(double x, double y, double z, double ox, double oy, double oz) const;

    /// Fills a glyph outline's transform from the upper left 2x2 block, in 16.16 fixed point, truncated
    /// towards zero; an element beyond +-32768 gives the nearest end of that range.
    VORN_API void GetMAT2(MAT2* pMat2) const;
};

inline void CvornMatrix::Multiply(const CvornMatrix& matrix) {
    const float* a = m_afElement;
    const float* b = matrix.m_afElement;
    float product[16];
    for (int column = 0; column < 4; column++) {
        for (int row = 0; row < 4; row++) {
            float sum = 0;
            for (int k = 0; k < 4; k++)
                sum += a[k * 4 + row] * b[column * 4 + k];
            product[column * 4 + row] = sum;
        }
    }
    Set(product);
}

inline void CvornMatrix::Transform3f(float& x, float& y, float& z) const {
    const float* m = m_afElement;
    const float px = x, py = y, pz = z;
    x = m[0] * px + m[4] * py + m[8] * pz + m[12];
    y = m[1] * px + m[5] * py + m[9] * pz + m[13];
    z = m[2] * px + m[6] * py + m[10] * pz + m[14];
}

inline void CvornMatrix::Transform3d(double& x, double& y, double& z) const {
    double m[16];
    for (int i = 0; i < 16; i++)
        m[i] = m_afElement[i];
    const double px = x, py = y, pz = z;
    x = m[0] * px + m[4] * py + m[8] * pz + m[12];
    y = m[1] * px + m[5] * py + m[9] * pz + m[13];
    z = m[2] * px + m[6] * py + m[10] * pz + m[14];
}

inline void CvornMatrix::glVertex3f(float x, float y, float z) const {
    Transform3f(x, y, z);
    ::glVertex3f(x, y, z);
}

inline void CvornMatrix::glVertex3d(double x, double y, double z) const {
    Transform3d(x, y, z);
    ::glVertex3d(x, y, z);
}

inline void CvornMatrix::glNormal3f(float x, float y, float z) const {
    Transform3f(x, y, z);
    ::glNormal3f(x, y, z);
}

inline void CvornMatrix::glNormal3d(double x, double y, double z) const {
    Transform3d(x, y, z);
    ::glNormal3d(x, y, z);
}

inline void CvornMatrix::glVertexOffset3f(float x, float y, float z, float ox, float oy, float oz) const {
    Transform3f(x, y, z);
    ::glVertex3f(x + ox, y + oy, z + oz);
}

inline void CvornMatrix::glVertexOffset3d(double x, double y, double z, double ox, double oy,
                                          double oz) const {
    Transform3d(x, y, z);
    ::glVertex3d(x + ox, y + oy, z + oz);
}
