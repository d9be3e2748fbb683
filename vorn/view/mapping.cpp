// SPDX-License-Identifier: MIT
#include "vorn/view/mapping.h"

#include "vorn/detail/truncate.h"

#include <cmath>
#include <cstring>
#include <utility>

namespace {

struct Point {
    double x, y, z;
};

/// The window point of a model point. Returns false, with the window point as it was, where w is 0.
bool project(const CvornOGLMapping& mapping, const Point& model, Point& window) {
    const double* m = mapping.m_adModel;
    const double* p = mapping.m_adProj;
    double eye[4], clip[4];
    for (int row = 0; row < 4; row++)
        eye[row] = model.x * m[row] + model.y * m[4 + row] + model.z * m[8 + row] + m[12 + row];
    for (int row = 0; row < 4; row++)
        clip[row] = eye[0] * p[row] + eye[1] * p[4 + row] + eye[2] * p[8 + row] + eye[3] * p[12 + row];
    if (clip[3] == 0) return false;

    const int* viewport = mapping.m_anViewport;
    window.x = (clip[0] / clip[3] * 0.5 + 0.5) * viewport[2] + viewport[0];
    window.y = (clip[1] / clip[3] * 0.5 + 0.5) * viewport[3] + viewport[1];
    window.z = clip[2] / clip[3] * 0.5 + 0.5;
    return true;
}

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

    Point begin, end;
    const bool isVisible = project(*this, {0, -0.5, 0}, begin) && project(*this, {0, -0.5, 0.5}, end);
    if (bRadius != 0 && isVisible)
        m_fScreenRadius = static_cast<float>(std::hypot(end.x - begin.x, end.y - begin.y, end.z - begin.z));
}

void CvornOGLMapping::gluProject(double x, double y, double z) {
    Point window;
    if (!project(*this, {x, y, z}, window)) return;
    m_dPosX = window.x;
    m_dPosY = window.y;
    m_dPosZ = window.z;
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

bool CvornOGLMapping::UpdateInverse() {
    if (std::memcmp(m_adInverseModel, m_adModel, sizeof m_adModel) == 0 &&
        std::memcmp(m_adInverseProj, m_adProj, sizeof m_adProj) == 0)
        return m_bInvertible;

    double product[16];
    multiply(m_adProj, m_adModel, product);
    m_bInvertible = invert(product, m_adInverse);
    std::memcpy(m_adInverseModel, m_adModel, sizeof m_adModel);
    std::memcpy(m_adInverseProj, m_adProj, sizeof m_adProj);
    return m_bInvertible;
}

void CvornOGLMapping::gluUnProject(double x, double y, double z) {
    if (!UpdateInverse()) return;
    const double clip[3] = {(x - m_anViewport[0]) / m_anViewport[2] * 2 - 1,
                            (y - m_anViewport[1]) / m_anViewport[3] * 2 - 1, z * 2 - 1};
    const double* m = m_adInverse;
    double model[4];
    for (int row = 0; row < 4; row++)
        model[row] = clip[0] * m[row] + clip[1] * m[4 + row] + clip[2] * m[8 + row] + m[12 + row];
    if (model[3] == 0) return;
    m_dPosX = model[0] / model[3];
    m_dPosY = model[1] / model[3];
    m_dPosZ = model[2] / model[3];
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
