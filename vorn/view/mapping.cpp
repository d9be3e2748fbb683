// SPDX-License-Identifier: MIT
#include "vorn/view/mapping.h"

#include "vorn/detail/truncate.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <utility>

namespace {

/// The image of (x, y, z, w) under a column-major matrix.
[[gnu::always_inline]] inline void transform(const double* m, double x, double y, double z, double w,
                                             double (&image)[4]) {
    for (int row = 0; row < 4; row++)
        image[row] = x * m[row] + y * m[4 + row] + z * m[8 + row] + w * m[12 + row];
}

/// The window point of a model point. Returns false, and gives none, where w is 0.
[[gnu::always_inline]] inline bool project(const CvornOGLMapping& mapping, double x, double y, double z,
                                           double (&window)[3]) {
    double eye[4], clip[4];
    transform(mapping.m_adModel, x, y, z, 1, eye);
    transform(mapping.m_adProj, eye[0], eye[1], eye[2], eye[3], clip);
    if (clip[3] == 0) return false;

    const double scale = 0.5 / clip[3];
    const int* viewport = mapping.m_anViewport;
    window[0] = (clip[0] * scale + 0.5) * viewport[2] + viewport[0];
    window[1] = (clip[1] * scale + 0.5) * viewport[3] + viewport[1];
    window[2] = clip[2] * scale + 0.5;
    return true;
}

[[gnu::always_inline]] inline void projectPosition(CvornOGLMapping& mapping, double x, double y, double z) {
    double window[3];
    if (!project(mapping, x, y, z, window)) return;
    mapping.m_dPosX = window[0];
    mapping.m_dPosY = window[1];
    mapping.m_dPosZ = window[2];
}

using Projection = void (*)(CvornOGLMapping&, double, double, double);

void projectPlain(CvornOGLMapping& mapping, double x, double y, double z) {
    projectPosition(mapping, x, y, z);
}

#if defined(__GNUC__)
// A third faster than the plain one where the processor multiplies and adds in one instruction. The vectors
// stay at 16 bytes: this compiler does not align larger ones on a Windows stack.
[[gnu::target("avx,fma,prefer-vector-width=128")]] void projectFused(CvornOGLMapping& mapping, double x,
                                                                     double y, double z) {
    projectPosition(mapping, x, y, z);
}

Projection fastestProjection() {
    __builtin_cpu_init();
    return __builtin_cpu_supports("avx") && __builtin_cpu_supports("fma") ? projectFused : projectPlain;
}
#else
Projection fastestProjection() {
    return projectPlain;
}
#endif

const Projection projectFastest = fastestProjection();

/// a * b, both column-major.
void multiply(const double* a, const double* b, double (&product)[16]) {
    for (int column = 0; column < 4; column++) {
        for (int row = 0; row < 4; row++) {
            double sum = 0;
            for (int k = 0; k < 4; k++)
                sum += a[k * 4 + row] * b[column * 4 + k];
            product[column * 4 + row] = sum;
        }
    }
}

/// Zero for two matrices that are the same bit by bit. In four parts that do not wait for each other: the C
/// library's memcmp would take longer than all the rest of unprojecting a point.
[[gnu::always_inline]] inline std::uint64_t differenceOf(const double (&a)[16], const double (&b)[16]) {
    std::uint64_t parts[4] = {};
    for (int row = 0; row < 16; row += 4) {
        for (int i = 0; i < 4; i++)
            parts[i] |= std::bit_cast<std::uint64_t>(a[row + i]) ^ std::bit_cast<std::uint64_t>(b[row + i]);
    }
    return parts[0] | parts[1] | parts[2] | parts[3];
}

/// Gauss-Jordan elimination, pivoting on the largest element left in each column: where a column has none,
/// the matrix is singular and false is returned. The order of rows and columns does not matter to an inverse.
bool invert(const double (&matrix)[16], double (&inverse)[16]) {
    double rest[4][4], result[4][4] = {{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}};
    std::memcpy(rest, matrix, sizeof rest);
    for (int column = 0; column < 4; column++) {
        int pivot = column;
        for (int row = column + 1; row < 4; row++) {
            if (std::fabs(rest[row][column]) > std::fabs(rest[pivot][column])) pivot = row;
        }
        if (rest[pivot][column] == 0) return false;
        std::swap(rest[pivot], rest[column]);
        std::swap(result[pivot], result[column]);

        const double scale = rest[column][column];
        for (int k = 0; k < 4; k++) {
            rest[column][k] /= scale;
            result[column][k] /= scale;
        }
        for (int row = 0; row < 4; row++) {
            if (row == column) continue;
            const double factor = rest[row][column];
            for (int k = 0; k < 4; k++) {
                rest[row][k] -= factor * rest[column][k];
                result[row][k] -= factor * result[column][k];
            }
        }
    }
    std::memcpy(inverse, result, sizeof result);
    return true;
}

} // namespace

void CvornOGLMapping::Update(int bRadius) {
    ::glGetDoublev(GL_MODELVIEW_MATRIX, m_adModel);
    ::glGetDoublev(GL_PROJECTION_MATRIX, m_adProj);
    ::glGetIntegerv(GL_VIEWPORT, m_anViewport);

    double begin[3], end[3];
    const bool isVisible = project(*this, 0, -0.5, 0, begin) && project(*this, 0, -0.5, 0.5, end);
    if (bRadius != 0 && isVisible)
        m_fScreenRadius =
            static_cast<float>(std::hypot(end[0] - begin[0], end[1] - begin[1], end[2] - begin[2]));
}

void CvornOGLMapping::gluProject(double x, double y, double z) {
    projectFastest(*this, x, y, z);
}

void CvornOGLMapping::gluProject(const double* in, double* out) {
    gluProject(in[0], in[1], in[2]);
    out[0] = m_dPosX;
    out[1] = m_dPosY;
    out[2] = m_dPosZ;
}

void CvornOGLMapping::gluProject(const float* in, float* out) {
    gluProject(in[0], in[1], in[2]);
    GetPos3f(out);
}

void CvornOGLMapping::gluProject(const float* in, POINT* pt) {
    gluProject(in[0], in[1], in[1]);
    if (pt == nullptr) return;
    pt->x = vorn::detail::truncateToInt(m_dPosX + 0.5);
    pt->y = vorn::detail::truncateToInt(m_dPosY + 0.5);
}

void CvornOGLMapping::gluProjectViewOnly(double x, double y, double z) {
    float m[16];
    ::glMatrixMode(GL_MODELVIEW);
    ::glGetFloatv(GL_MODELVIEW_MATRIX, m);
    m_dPosX = m[0] * x + m[4] * y + m[8] * z + m[12];
    m_dPosY = m[1] * x + m[5] * y + m[9] * z + m[13];
    m_dPosZ = m[2] * x + m[6] * y + m[10] * z + m[14];
}

inline bool CvornOGLMapping::IsInverseValid() const {
    unsigned difference = 0;
    for (int i = 0; i < 4; i++)
        difference |= static_cast<unsigned>(m_anInverseViewport[i] ^ m_anViewport[i]);
    return (differenceOf(m_adInverseModel, m_adModel) | differenceOf(m_adInverseProj, m_adProj) |
            difference) == 0;
}

void CvornOGLMapping::UpdateInverse() {
    std::memcpy(m_adInverseModel, m_adModel, sizeof m_adModel);
    std::memcpy(m_adInverseProj, m_adProj, sizeof m_adProj);
    std::memcpy(m_anInverseViewport, m_anViewport, sizeof m_anViewport);

    double product[16];
    multiply(m_adProj, m_adModel, product);
    m_bInvertible = invert(product, m_adInverse);
    if (!m_bInvertible) return;
    // From the window to the cube of clip coordinates first: x' = (x - left) / width * 2 - 1, and so on.
    double offset[4] = {0, 0, 0, 0};
    for (int column = 0; column < 3; column++) {
        const double scale = column == 2 ? 2 : 2.0 / m_anViewport[2 + column];
        const double start = column == 2 ? -1 : -m_anViewport[column] * scale - 1;
        for (int row = 0; row < 4; row++) {
            offset[row] += m_adInverse[column * 4 + row] * start;
            m_adInverse[column * 4 + row] *= scale;
        }
    }
    for (int row = 0; row < 4; row++)
        m_adInverse[12 + row] += offset[row];
}

void CvornOGLMapping::gluUnProject(double x, double y, double z) {
    if (!IsInverseValid()) UpdateInverse();
    if (!m_bInvertible) return;
    double model[4];
    transform(m_adInverse, x, y, z, 1, model);
    if (model[3] == 0) return;
    const double scale = 1 / model[3];
    m_dPosX = model[0] * scale;
    m_dPosY = model[1] * scale;
    m_dPosZ = model[2] * scale;
}

void CvornOGLMapping::GetPos3f(float* out) const {
    GetPos3f(out[0], out[1], out[2]);
}

void CvornOGLMapping::GetPos3f(float& x, float& y, float& z) const {
    GetPos2f(x, y);
    z = GetPosZf();
}

void CvornOGLMapping::GetPos2f(float* out) const {
    GetPos2f(out[0], out[1]);
}

void CvornOGLMapping::GetPos2f(float& x, float& y) const {
    x = GetPosXf();
    y = GetPosYf();
}

POINT CvornOGLMapping::GetPosPt() const {
    return {vorn::detail::truncateToInt(m_dPosX), vorn::detail::truncateToInt(m_dPosY)};
}

void CvornOGLMapping::GetPosPt(POINT* pt) const {
    *pt = GetPosPt();
}

void CvornOGLMapping::OffsetPos(double dx, double dy, double dz) {
    m_dPosX += dx;
    m_dPosY += dy;
    m_dPosZ += dz;
}

float CvornOGLMapping::GetWinMag3f(const float* a, const float* b) {
    gluProject(a[0], a[1], a[2]);
    float x, y;
    GetPos2f(x, y);
    gluProject(b[0], b[1], b[2]);
    return static_cast<float>(std::hypot(m_dPosX - x, m_dPosY - y));
}
