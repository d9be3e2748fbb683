// SPDX-License-Identifier: MIT
#include "vorn/geometry/matrix.h"

#include "vorn/detail/truncate.h"

#include <cmath>
#include <cstring>

namespace {

constexpr float radiansPerDegree = 0.017453292F;

/// Loads the matrix, or multiplies it, by the identity with what `change` does to it.
template <typename Change>
void apply(CvornMatrix& matrix, int multiply, Change change) {
    CvornMatrix built;
    change(built.m_afElement);
    if (multiply != 0)
        matrix.Multiply(built);
    else
        matrix = built;
}

/// A rotation that takes axis `from` towards axis `to` (0 is x, 1 y, 2 z).
void rotate(CvornMatrix& matrix, int multiply, float radians, int from, int to) {
    const float cosine = static_cast<float>(std::cos(static_cast<double>(radians)));
    const float sine = static_cast<float>(std::sin(static_cast<double>(radians)));
    apply(matrix, multiply, [=](float* m) {
        m[from * 4 + from] = cosine;
        m[from * 4 + to] = sine;
        m[to * 4 + from] = -sine;
        m[to * 4 + to] = cosine;
    });
}

FIXED fixedOf(float value) {
    const int bits = vorn::detail::truncateToInt(value * 65536.0);
    FIXED fixed;
    static_assert(sizeof fixed == sizeof bits);
    std::memcpy(&fixed, &bits, sizeof fixed);
    return fixed;
}

} // namespace

void CvornMatrix::Translation(const float* v, int bMultiply) {
    TranslationMult(v, 1.0F, bMultiply);
}

void CvornMatrix::TranslationMult(const float* v, float s, int bMultiply) {
    const float scale = bMultiply != 0 ? 1.0F : s;
    apply(*this, bMultiply, [=](float* m) {
        for (int i = 0; i < 3; i++)
            m[12 + i] = scale * v[i];
    });
}

void CvornMatrix::InverseTranslation(const float* v, int bMultiply) {
    const float opposite[3] = {-v[0], -v[1], -v[2]};
    Translation(opposite, bMultiply);
}

void CvornMatrix::RotateXRad(float fRadians, int bMultiply) {
    rotate(*this, bMultiply, fRadians, 1, 2);
}

void CvornMatrix::RotateYRad(float fRadians, int bMultiply) {
    rotate(*this, bMultiply, fRadians, 2, 0);
}

void CvornMatrix::RotateZRad(float fRadians, int bMultiply) {
    rotate(*this, bMultiply, fRadians, 0, 1);
}

void CvornMatrix::RotateXDeg(float fDegrees, int bMultiply) {
    RotateXRad(fDegrees * radiansPerDegree, bMultiply);
}

void CvornMatrix::RotateYDeg(float fDegrees, int bMultiply) {
    RotateYRad(fDegrees * radiansPerDegree, bMultiply);
}

void CvornMatrix::RotateZDeg(float fDegrees, int bMultiply) {
    RotateZRad(fDegrees * radiansPerDegree, bMultiply);
}

void CvornMatrix::InvertY(int bMultiply) {
    apply(*this, bMultiply, [](float* m) { m[5] = -1.0F; });
}

void CvornMatrix::GetMAT2(MAT2* pMat2) const {
    pMat2->eM11 = fixedOf(m_afElement[0]);
    pMat2->eM12 = fixedOf(m_afElement[4]);
    pMat2->eM21 = fixedOf(m_afElement[1]);
    pMat2->eM22 = fixedOf(m_afElement[5]);
}
