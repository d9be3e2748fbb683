// SPDX-License-Identifier: MIT
#include "vorn/axes/axis.h"

#include "vorn/detail/truncate.h"

#include <algorithm>
#include <cmath>

namespace {

/// Kept free for the tip at the far end of the axis, in model units.
constexpr double tipRoom = 0.04;
constexpr double radiansPerDegree = 0.017453292519943295;
/// A range from a damaged file may hold any number of steps; more than this no picture shows, and a grid of
/// them would never end.
constexpr int mostIntervals = 100'000;

/// How many minor steps make the range.
int intervalsOf(const CvornAxis& axis) {
    const float minorStep = axis.m_fTick / 5;
    const double intervals = static_cast<double>(axis.GetLength()) / minorStep;
    return std::clamp(vorn::detail::truncateToInt(intervals + 0.5), 0, mostIntervals);
}

struct Vector {
    double x, y, z;
};

Vector positionOn(const CvornAxis& axis, double p) {
    const double distance = p * axis.m_fLength;
    const float* direction = axis.m_afDirection;
    return {distance * direction[0], distance * direction[1], distance * direction[2]};
}

Vector positionIn(const CvornAxis& a, float p, const CvornAxis& b, float q) {
    const Vector u = positionOn(a, p), v = positionOn(b, q);
    return {u.x + v.x, u.y + v.y, u.z + v.z};
}

void store(float* out, const Vector& position, const CvornPtMap& origin) {
    out[0] = static_cast<float>(origin.m_fX + position.x);
    out[1] = static_cast<float>(origin.m_fY + position.y);
    out[2] = static_cast<float>(origin.m_fZ + position.z);
}

} // namespace

float CvornAxis::GetLength() const {
    return std::fabs(m_fMax - m_fMin);
}

float CvornAxis::CalculateTick() const {
    const int exponent = vorn::detail::truncateToInt(std::log10(static_cast<double>(GetLength())) + 0.5);
    return static_cast<float>(std::pow(10.0, exponent - 1.0));
}

int CvornAxis::GetTickCount() const {
    return intervalsOf(*this) + 1;
}

double CvornAxis::GetTickStep() const {
    const int intervals = intervalsOf(*this);
    if (intervals == 0 || m_fLength == 0) return 0;
    return (m_fLength - tipRoom) / m_fLength / intervals;
}

void CvornAxis::vornVectorPos(float p) const {
    const Vector v = positionOn(*this, p);
    vornVertex3d(v.x, v.y, v.z);
}

void CvornAxis::vornVectorPos(float p, const CvornAxis& b, float q) const {
    const Vector v = positionIn(*this, p, b, q);
    vornVertex3d(v.x, v.y, v.z);
}

void CvornAxis::vornVectorPos(float* out, float p) const {
    store(out, positionOn(*this, p), m_ptOrigin);
}

void CvornAxis::vornVectorPos(float* out, float p, const CvornAxis& b, float q) const {
    store(out, positionIn(*this, p, b, q), m_ptOrigin);
}

void CvornAxis::vornVectorPosAngleR(float p, float r, float fRadians) const {
    const double angle = fRadians;
    vornVectorPosAngle(p, r, std::cos(angle), std::sin(angle));
}

void CvornAxis::vornVectorPosAngleD(float p, float r, float fDegrees) const {
    vornVectorPosAngleR(p, r, static_cast<float>(fDegrees * radiansPerDegree));
}

void CvornAxis::vornVectorPosAngle(float p, float r, double dCosine, double dSine) const {
    const Vector v = positionOn(*this, p);
    if (m_dwType & AXIS_X)
        vornVertex3d(v.x, v.y + r * dCosine, v.z + r * dSine);
    else if (m_dwType & AXIS_Y)
        vornVertex3d(v.x + r * dCosine, v.y, v.z + r * dSine);
    else if (m_dwType & AXIS_Z)
        vornVertex3d(v.x + r * dCosine, v.y + r * dSine, v.z);
}

void CvornAxis::vornVertex3f(float x, float y, float z) const {
    const auto& [ox, oy, oz, extra1, extra2] = m_ptOrigin;
    if (m_pMatrix != nullptr)
        m_pMatrix->glVertexOffset3f(x, y, z, ox, oy, oz);
    else
        ::glVertex3f(x + ox, y + oy, z + oz);
}

void CvornAxis::vornVertex3d(double x, double y, double z) const {
    const auto& [ox, oy, oz, extra1, extra2] = m_ptOrigin;
    if (m_pMatrix != nullptr)
        m_pMatrix->glVertexOffset3d(x, y, z, ox, oy, oz);
    else
        ::glVertex3d(x + ox, y + oy, z + oz);
}

void CvornAxis::Serialize(CArchive& ar) {
    if (ar.IsStoring()) {
        ar << m_dwType << m_fMin << m_fMax;
        return;
    }
    DWORD type;
    float minimum, maximum;
    ar >> type >> minimum >> maximum;
    m_dwType = type;
    m_fMin = minimum;
    m_fMax = maximum;
}
