// SPDX-License-Identifier: MIT
#pragma once

#include "vorn/axes/axis_set.h"

namespace vorn::detail {

/// One of the three planes of an axis set: the axes that span it, its image, and its normal.
struct Plane {
    DWORD code;
    CvornAxis CvornAxisSet::*a;
    CvornAxis CvornAxisSet::*b;
    CvornDIBTexture CvornAxisSet::*image;
    float normal[3];
};

inline constexpr Plane planeXY = {
    PLANE_XY, &CvornAxisSet::m_axisX, &CvornAxisSet::m_axisY, &CvornAxisSet::m_imageXY, {0, 0, 1}};
inline constexpr Plane planeXZ = {
    PLANE_XZ, &CvornAxisSet::m_axisX, &CvornAxisSet::m_axisZ, &CvornAxisSet::m_imageXZ, {0, 1, 0}};
inline constexpr Plane planeYZ = {
    PLANE_YZ, &CvornAxisSet::m_axisY, &CvornAxisSet::m_axisZ, &CvornAxisSet::m_imageYZ, {1, 0, 0}};

/// The plane of a code; null for what is none.
constexpr const Plane* planeOf(DWORD code) {
    for (const Plane* plane : {&planeXY, &planeXZ, &planeYZ})
        if (plane->code == code) return plane;
    return nullptr;
}

} // namespace vorn::detail
