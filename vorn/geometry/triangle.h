// SPDX-License-Identifier: MIT
#pragma once

#include "vorn/api.h"

/// Solves a plane triangle from three of its six parts, at least one of them a side, or from its corners.
/// Angles are in radians, angle i lies opposite side i; a part of 0 is one that is not given.
class CvornTri {
public:
    /// No triangle: all parts are 0.
    CvornTri() = default;
    CvornTri(const CvornTri&) = default;
    CvornTri& operator=(const CvornTri&) = default;

    /// Stores the six parts and solves for those that are 0. Returns 1 when solved; 0 when the parts make no
    /// triangle, and then they stay as given.
    ///
    /// Two sides and the angle between them are solved only when the sides are 1 and 2: the cosine rule is
    /// applied to those two whichever are given, so with side 3 given the missing side comes out as long as
    /// the other given one. Two sides and an angle opposite the shorter have two solutions: the first such
    /// call on an object gives the longer missing side, every later one the shorter.
    VORN_API int SetTriangle(double s1, double s2, double s3, double a1, double a2, double a3);
    /// Solves from the corners: side 1 is P1 to P2, side 2 P2 to P3, side 3 P3 to P1. Returns as SetTriangle;
    /// corners on one line are rejected.
    VORN_API int SetTrianglePts(double x1, double y1, double x2, double y2, double x3, double y3);

    /// The parts of the triangle as solved last: sides, and angles in radians.
    double GetSide1() const { return m_dSide1; }
    double GetSide2() const { return m_dSide2; }
    double GetSide3() const { return m_dSide3; }
    double GetAngle1() const { return m_dAngle1; }
    double GetAngle2() const { return m_dAngle2; }
    double GetAngle3() const { return m_dAngle3; }
    /// The area of the triangle solved last, 0 when it was rejected.
    double GetArea() const { return m_dArea; }

protected:
    /// Distance between two points.
    VORN_API double GetSideLength(double x1, double y1, double x2, double y2) const;
    /// Solves in place. Returns 1, or 0 with all seven values as they were.
    VORN_API int CalculateTriangle(double* s1, double* s2, double* s3, double* a1, double* a2, double* a3,
                                   double* area);
    /// Angle i (0 to 2) of the triangle with these three sides, by the law of cosines; stored in angles[i].
    VORN_API void CalculateAngle(int i, double* angles, double* sides) const;
    /// Swaps entries i and j of all three arrays.
    VORN_API void Exchange(int i, int j, double* sides, int* index, double* angles) const;

private:
    double m_dSide1 = 0;
    double m_dSide2 = 0;
    double m_dSide3 = 0;
    double m_dAngle1 = 0;
    double m_dAngle2 = 0;
    double m_dAngle3 = 0;
    double m_dArea = 0;
    int m_bSecondRoot = 0;
};
