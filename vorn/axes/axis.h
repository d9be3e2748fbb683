// SPDX-License-Identifier: MIT
#pragma once

#include "vorn/api.h"
#include "vorn/geometry/colour.h"
#include "vorn/geometry/matrix.h"
#include "vorn/geometry/point_map.h"

/// Type bits of an axis: the model axis that it runs along, which is also the one that its circles lie
/// across, and whether an axis set made it.
enum : DWORD { AXIS_X = 0x1, AXIS_Y = 0x2, AXIS_Z = 0x4, AXIS_OF_SET = 0x8 };

/// One axis of a chart: a data range with a tick step, laid along a direction from an origin and drawn with a
/// length of its own in model units. Positions along it are fractions of that length.
///
/// The operations that emit vertices belong between glBegin and glEnd. A vertex goes through the matrix,
/// where there is one, and then has the origin added, which the matrix does not move.
///
///     CvornAxis axis(nullptr, AXIS_X, 1, 0, 0);
///     axis.SetMin(0);
///     axis.SetMax(250);
///     axis.SetTick(axis.CalculateTick());
///     for (int i = 0; i < axis.GetTickCount(); i++)
///         axis.vornVectorPos(axis.GetTickPos(i));
class CvornAxis {
public:
    /// 0: an axis set draws nothing of this axis.
    int m_bEnabled = 1;
    /// Type bits; without a model axis among them there are no circles.
    unsigned long m_dwType;
    /// The drawn length in model units.
    float m_fLength = 1;
    /// A second scale, for the application: nothing here reads it.
    float m_fSecondScale = 1;
    /// The unit vector along the axis in model space.
    float m_afDirection[3];
    /// Added to every vertex, in model units; the matrix does not move it.
    CvornPtMap m_ptOrigin;
    /// Of the tip that an axis set draws; an axis by itself sets no colour.
    CvornColour m_clrAxis;
    /// Not owned, shared by copies; may be null.
    CvornMatrix* m_pMatrix;
    /// The data range.
    float m_fMin = 0;
    float m_fMax = 1;
    /// The major tick step in data units; there are five minor steps to it.
    float m_fTick = 0.1F;

    /// (dx, dy, dz) is the direction, a unit vector. The matrix stays the caller's and may be null.
    CvornAxis(CvornMatrix* pMatrix, unsigned long dwType, float dx, float dy, float dz)
        : m_dwType(dwType), m_afDirection{dx, dy, dz}, m_pMatrix(pMatrix) {}
    /// A copy shares the matrix.
    CvornAxis(const CvornAxis&) = default;
    CvornAxis& operator=(const CvornAxis&) = default;

    /// The ends of the data range; setting one leaves the other and the tick step.
    float GetMin() const { return m_fMin; }
    void SetMin(float fMin) { m_fMin = fMin; }
    float GetMax() const { return m_fMax; }
    void SetMax(float fMax) { m_fMax = fMax; }
    /// The length of the data range; setting it moves the maximum.
    VORN_API float GetLength() const;
    void SetLength(float fLength) { m_fMax = m_fMin + fLength; }
    /// The major tick step, in data units.
    void SetTick(float fTick) { m_fTick = fTick; }
    /// The drawn length, in model units.
    float GetNormalLength() const { return m_fLength; }

    /// A round tick step for the range, a power of ten: it makes 3 to 32 major steps of a range above 1.
    /// Below 1 its exponent is rounded towards 0, so there may be few. 0 for an empty range. The tick step
    /// itself stays.
    VORN_API float CalculateTick() const;
    /// How many tick marks there are, minor ones and both ends included: 1 where the step does not divide the
    /// range, at most 100001 whatever the range.
    VORN_API int GetTickCount() const;
    /// The fraction of the drawn length at which tick mark i lies. The marks keep 0.04 model units free at
    /// the far end, for the tip of the axis.
    float GetTickPos(int i) const { return static_cast<float>(GetTickStep() * i); }
    /// The fraction from one tick mark to the next; 0 where there is but one, or the axis has no drawn
    /// length.
    VORN_API double GetTickStep() const;

    /// Emits the vertex at p on the axis.
    VORN_API void vornVectorPos(float p) const;
    /// Emits the vertex at p on this axis plus q on another: a point of the plane that they span.
    VORN_API void vornVectorPos(float p, const CvornAxis& b, float q) const;
    /// The same positions in out[0..2], with the origin but without the matrix; nothing is emitted.
    VORN_API void vornVectorPos(float* out, float p) const;
    VORN_API void vornVectorPos(float* out, float p, const CvornAxis& b, float q) const;
    /// Emits the vertex on the circle of radius r, in model units, around the axis at p; angles run from y to
    /// z around x, from x to z around y and from x to y around z. Nothing for an axis of no type.
    VORN_API void vornVectorPosAngleR(float p, float r, float fRadians) const;
    VORN_API void vornVectorPosAngleD(float p, float r, float fDegrees) const;
    /// The same for an angle whose cosine and sine are at hand.
    VORN_API void vornVectorPosAngle(float p, float r, double dCosine, double dSine) const;
    /// Emits the point of model space: through the matrix, with the origin added.
    VORN_API void vornVertex3f(float x, float y, float z) const;
    VORN_API void vornVertex3d(double x, double y, double z) const;

    /// Stores, or loads, the type, the minimum and the maximum; set all else again after loading. Throws what
    /// the archive throws, with the axis as it was.
    VORN_API void Serialize(CArchive& ar);
};
