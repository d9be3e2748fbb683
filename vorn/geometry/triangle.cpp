// SPDX-License-Identifier: MIT
#include "vorn/geometry/triangle.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

namespace {

constexpr double pi = 3.14159265359;
constexpr double halfPi = 1.570796326795;

/// The three sides, or angles, of a triangle; number i of the one kind lies opposite number i of the other.
using Triple = std::array<double, 3>;

/// The angle between sides a and b, by the law of cosines.
double angleBetween(double a, double b, double opposite) {
    const double cosine = (a * a + b * b - opposite * opposite) / (2 * a * b);
    // Rounding takes the cosine of a very flat triangle beyond 1: the angle is then 0 or pi, not undefined.
    return halfPi - std::atan(cosine / std::sqrt(std::max(0.0, 1 - cosine * cosine)));
}

int countGiven(const Triple& parts) {
    return static_cast<int>(std::count_if(parts.begin(), parts.end(), [](double part) { return part > 0; }));
}

/// The index of the part that is not given; of the last one of several.
int missingOne(const Triple& parts) {
    return parts[2] > 0 ? (parts[1] > 0 ? 0 : 1) : 2;
}

bool isSolvable(const Triple& sides, const Triple& angles) {
    // Written so that what is no number fails too.
    const auto isAngle = [](double angle) { return angle >= 0 && angle <= pi; };
    const auto isSide = [](double side) { return side >= 0; };
    return std::all_of(angles.begin(), angles.end(), isAngle) &&
           std::all_of(sides.begin(), sides.end(), isSide) && countGiven(sides) > 0 &&
           countGiven(sides) + countGiven(angles) == 3 && angles[0] + angles[1] + angles[2] <= pi;
}

bool solveThreeSides(const Triple& sides, Triple& angles) {
    const auto [a, b, c] = sides;
    if (std::fabs(a - b) >= c || c >= a + b) return false;
    angles = {angleBetween(b, c, a), angleBetween(c, a, b), angleBetween(a, b, c)};
    return true;
}

bool solveOneSide(Triple& sides, Triple& angles) {
    const int missing = missingOne(angles);
    angles[missing] = pi - angles[(missing + 1) % 3] - angles[(missing + 2) % 3];
    const int given = static_cast<int>(std::max_element(sides.begin(), sides.end()) - sides.begin());
    const double side = sides[given];
    for (int i = 0; i < 3; i++) {
        if (i != given) sides[i] = std::sin(angles[i]) * side / std::sin(angles[given]);
    }
    return true;
}

/// The third side of a triangle with the angle alpha opposite side p, and another side q. Of two solutions
/// the shorter is given once the flag is set, which the first such case does.
std::optional<double> thirdSide(double alpha, double p, double q, int& secondRoot) {
    const double height = std::sin(alpha) * q;
    if (height > p || (alpha >= halfPi && q >= p)) return std::nullopt;
    const double base = std::cos(alpha) * q;
    const double root = std::sqrt(p * p - height * height);
    const bool isAmbiguous = q > p && alpha < halfPi;
    if (isAmbiguous && secondRoot != 0) return base - root;
    if (isAmbiguous) secondRoot = 1;
    return base + root;
}

bool solveTwoSides(Triple& sides, Triple& angles, int& secondRoot) {
    const int missing = missingOne(sides);
    int first = missing == 0 ? 2 : 0;
    int second = 3 - missing - first;
    if (angles[missing] > 0) {
        // Sides 1 and 2 whichever are given: where one of them is missing it takes part as 0.
        const auto [a, b, c] = sides;
        sides[missing] = std::sqrt(a * a + b * b - 2 * a * b * std::cos(angles[missing]));
        angles[first] = angleBetween(sides[second], sides[missing], sides[first]);
    } else {
        if (!(angles[first] > 0)) std::swap(first, second);
        const auto side = thirdSide(angles[first], sides[first], sides[second], secondRoot);
        if (!side) return false;
        sides[missing] = *side;
        angles[missing] = angleBetween(sides[first], sides[second], sides[missing]);
    }
    angles[second] = angleBetween(sides[first], sides[missing], sides[second]);
    return true;
}

double heronArea(const Triple& sides) {
    const double half = (sides[0] + sides[1] + sides[2]) / 2;
    return std::sqrt(((half - sides[0]) * half) * (half - sides[1]) * (half - sides[2]));
}

} // namespace

int CvornTri::SetTriangle(double s1, double s2, double s3, double a1, double a2, double a3) {
    m_dSide1 = s1;
    m_dSide2 = s2;
    m_dSide3 = s3;
    m_dAngle1 = a1;
    m_dAngle2 = a2;
    m_dAngle3 = a3;
    m_dArea = 0;
    return CalculateTriangle(&m_dSide1, &m_dSide2, &m_dSide3, &m_dAngle1, &m_dAngle2, &m_dAngle3, &m_dArea);
}

int CvornTri::SetTrianglePts(double x1, double y1, double x2, double y2, double x3, double y3) {
    return SetTriangle(GetSideLength(x1, y1, x2, y2), GetSideLength(x2, y2, x3, y3),
                       GetSideLength(x3, y3, x1, y1), 0, 0, 0);
}

double CvornTri::GetSideLength(double x1, double y1, double x2, double y2) const {
    return std::sqrt((x2 - x1) * (x2 - x1) + (y2 - y1) * (y2 - y1));
}

int CvornTri::CalculateTriangle(double* s1, double* s2, double* s3, double* a1, double* a2, double* a3,
                                double* area) {
    Triple sides = {*s1, *s2, *s3};
    Triple angles = {*a1, *a2, *a3};
    if (!isSolvable(sides, angles)) return 0;

    bool solved = false;
    switch (countGiven(sides)) {
    case 1:
        solved = solveOneSide(sides, angles);
        break;
    case 2:
        solved = solveTwoSides(sides, angles, m_bSecondRoot);
        break;
    default:
        solved = solveThreeSides(sides, angles);
        break;
    }
    if (!solved) return 0;

    *s1 = sides[0];
    *s2 = sides[1];
    *s3 = sides[2];
    *a1 = angles[0];
    *a2 = angles[1];
    *a3 = angles[2];
    *area = heronArea(sides);
    return 1;
}

void CvornTri::CalculateAngle(int i, double* angles, double* sides) const {
    const int own = (i % 3 + 3) % 3;
    angles[own] = angleBetween(sides[(own + 1) % 3], sides[(own + 2) % 3], sides[own]);
}

void CvornTri::Exchange(int i, int j, double* sides, int* index, double* angles) const {
    std::swap(sides[i], sides[j]);
    std::swap(index[i], index[j]);
    std::swap(angles[i], angles[j]);
}
