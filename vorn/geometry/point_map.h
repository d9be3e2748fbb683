// SPDX-License-Identifier: MIT
#pragma once

/// A point or vector in model units, with two words for whoever carries it along: the class never interprets
/// them, and copies take them too.
class CvornPtMap {
public:
    /// In model units.
    float m_fX = 0;
    float m_fY = 0;
    float m_fZ = 0;
    /// The carrier's own.
    unsigned long m_dwExtra1 = 0;
    unsigned long m_dwExtra2 = 0;

    /// The origin, or the point given; extra words of 0.
    CvornPtMap() = default;
    CvornPtMap(float x, float y, float z) : m_fX(x), m_fY(y), m_fZ(z) {}
    /// Copies take the extra words along.
    CvornPtMap(const CvornPtMap&) = default;
    CvornPtMap& operator=(const CvornPtMap&) = default;

    /// Sets x, y and z; the extra words stay.
    void SetNormal(float x, float y, float z) {
        m_fX = x;
        m_fY = y;
        m_fZ = z;
    }
};
