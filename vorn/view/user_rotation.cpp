// SPDX-License-Identifier: MIT
#include "vorn/view/user_rotation.h"

#include "vorn/detail/truncate.h"
#include "vorn/geometry/triangle.h"

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <cstdlib>

namespace {

constexpr float radiansPerDegree = 0.017453292F;
constexpr double degreesPerRadian = 57.29577951308232;
constexpr double quarterTurn = 1.5707963267948966;
constexpr double threeQuarterTurn = 4.71238898038469;
/// How far from the press point, in pixels, a drag must come before it chooses its axis.
constexpr double deadZone = 5;

_qx_double_pt_ pointOf(POINT pt) {
    return {static_cast<double>(pt.x), static_cast<double>(pt.y)};
}

bool isLocked(int direction) {
    return direction >= 0 && direction <= 5;
}

void loadPreset(CvornMatrix& matrix, const float (&degrees)[3]) {
    matrix.RotateXRad(degrees[0] * radiansPerDegree, 0);
    matrix.RotateYRad(degrees[1] * radiansPerDegree, 1);
    matrix.RotateZRad(degrees[2] * radiansPerDegree, 1);
}

} // namespace

CvornUserRot::CvornUserRot() {
    loadPreset(m_matrix, m_afPreset3D);
}

void CvornUserRot::OnSize(int cx, int cy) {
    m_rcArea = {0, 0, cx, cy};
    m_ptCentre = {static_cast<double>(cx / 2), static_cast<double>(cy / 2)};
}

void CvornUserRot::OnLButtonDown(POINT pt) {
    if (m_bEnabled == 0) return;
    m_bLDown = 1;
    m_nLockDir = -1;
    m_ptLast = pointOf(pt);
}

void CvornUserRot::OnLButtonUp(POINT pt) {
    if (m_bEnabled == 0) return;
    EndDrag(pointOf(pt));
}

int CvornUserRot::OnRButtonDown(POINT) {
    if (m_bEnabled == 0) return 0;
    m_bRDown = 1;
    if (m_bLDown == 0) return 0;
    loadPreset(m_matrix, m_afPreset3D);
    m_bRotating = 1;
    return 1;
}

void CvornUserRot::OnRButtonUp(POINT) {
    m_bRDown = 0;
}

int CvornUserRot::OnMouseMove(CPoint pt, CPoint ptX, CPoint ptY, CPoint ptZ) {
    if (m_bEnabled == 0 || m_bLDown == 0) return 0;

    const _qx_double_pt_ point = pointOf(pt);
    const bool isInside =
        pt.x > m_rcArea.left && pt.y > m_rcArea.top && pt.x < m_rcArea.right && pt.y < m_rcArea.bottom;
    if (!isInside) {
        EndDrag(point);
        return 0;
    }

    const double distance = GetDistance(m_ptLast, point);
    if (!(distance > 0)) return 0;
    if (!isLocked(m_nLockDir)) {
        if (distance < deadZone) return 0;
        if (LockDirection(m_ptLast, point, pointOf(ptX), pointOf(ptY), pointOf(ptZ)) == 0) return 0;
    }

    const _qx_double_pt_ direction = Normalize(point.x - m_ptLast.x, point.y - m_ptLast.y);
    m_ptLast = point;
    if (AddRotation(vorn::detail::truncateToInt(distance), direction) == 0) return 0;
    m_bRotating = 1;
    return 1;
}

void CvornUserRot::EndDrag(_qx_double_pt_ pt) {
    m_bRotating = 0;
    m_bLDown = 0;
    m_nLockDir = -1;
    m_ptLast = pt;
}

void CvornUserRot::SetFront() {
    loadPreset(m_matrix, m_afPresetFront);
}

void CvornUserRot::SetTop() {
    loadPreset(m_matrix, m_afPresetTop);
}

void CvornUserRot::SetSide() {
    loadPreset(m_matrix, m_afPresetSide);
}

void CvornUserRot::Set3D() {
    loadPreset(m_matrix, m_afPreset3D);
}

void CvornUserRot::RotateY(float fDegrees) {
    m_matrix.RotateYRad(fDegrees * radiansPerDegree, 1);
}

_qx_double_pt_ CvornUserRot::Normalize(double x, double y) const {
    const double length = std::sqrt(x * x + y * y);
    if (length < FLT_EPSILON) return {};
    return {x / length, y / length};
}

double CvornUserRot::GetDistance(_qx_double_pt_ a, _qx_double_pt_ b) const {
    return std::sqrt((b.y - a.y) * (b.y - a.y) + (b.x - a.x) * (b.x - a.x));
}

int CvornUserRot::GetAngle(_qx_double_pt_ a, _qx_double_pt_ b, _qx_double_pt_ c) const {
    CvornTri triangle;
    triangle.SetTrianglePts(a.x, a.y, b.x, b.y, c.x, c.y);
    return vorn::detail::truncateToInt(triangle.GetAngle2() * degreesPerRadian);
}

int CvornUserRot::LockDirection(_qx_double_pt_ last, _qx_double_pt_ pt, _qx_double_pt_ ptX,
                                _qx_double_pt_ ptY, _qx_double_pt_ ptZ) {
    _qx_double_pt_ candidates[6];
    const _qx_double_pt_ axes[] = {ptX, ptY, ptZ};
    for (int i = 0; i < 3; i++) {
        const _qx_double_pt_ unit = Normalize(axes[i].x - m_ptCentre.x, axes[i].y - m_ptCentre.y);
        candidates[i * 2] = unit;
        candidates[i * 2 + 1] = {-unit.x, -unit.y};
    }

    const _qx_double_pt_ motion = Normalize(pt.x - last.x, pt.y - last.y);
    const auto distanceFromRightAngle = [&](int candidate) {
        const int offset = std::abs(GetAngle({}, motion, candidates[candidate]) - 90);
        return std::min(offset, 360 - offset);
    };
    int best = 0, bestDistance = 9999;
    for (int i = 0; i < 6; i++) {
        const int distance = distanceFromRightAngle(i);
        if (distance < bestDistance) {
            best = i;
            bestDistance = distance;
        }
    }
    // Only the axis matters here; AddRotation finds the sense.
    m_nLockDir = best | 1;
    GetPosNegPts(candidates[m_nLockDir], &m_ptPos, &m_ptNeg);
    GetPosNegPts(candidates[m_nLockDir - 1], &m_ptPartnerPos, &m_ptPartnerNeg);
    return isLocked(m_nLockDir);
}

int CvornUserRot::AddRotation(int nPixels, _qx_double_pt_ dir) {
    const double toPos = GetDistance(dir, m_ptPos);
    const double toNeg = GetDistance(dir, m_ptNeg);
    if (toPos == toNeg) return 0;
    if (!isLocked(m_nLockDir)) return 1;

    const bool isOdd = toNeg < toPos;
    m_nLockDir = (m_nLockDir & ~1) | (isOdd ? 1 : 0);
    const float angle = (isOdd ? 1.0F : -1.0F) * nPixels * radiansPerDegree;
    switch (m_nLockDir / 2) {
    case 0:
        m_matrix.RotateXRad(angle, 1);
        break;
    case 1:
        m_matrix.RotateYRad(angle, 1);
        break;
    default:
        m_matrix.RotateZRad(angle, 1);
        break;
    }
    return 1;
}

void CvornUserRot::GetPosNegPts(_qx_double_pt_ v, _qx_double_pt_* pPos, _qx_double_pt_* pNeg) const {
    const auto turned = [&](double angle) {
        const double cosine = std::cos(angle), sine = std::sin(angle);
        return Normalize(cosine * v.x - sine * v.y, sine * v.x + cosine * v.y);
    };
    *pPos = turned(quarterTurn);
    *pNeg = turned(threeQuarterTurn);
}
