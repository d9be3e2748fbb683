// SPDX-License-Identifier: MIT
#pragma once

#include "vorn/api.h"
#include "vorn/opengl.h"

/// A colour of four floats, each 0 to 1 (opacity 1 is opaque), that converts from and to a COLORREF.
/// Nothing clamps the channels except Lighter (to 1) and Darker (to 0).
class CvornColour {
public:
    /// Opacity and channels, 0 to 1.
    float m_fAlpha = 1;
    float m_fRed = 0;
    float m_fGreen = 0;
    float m_fBlue = 0;

    /// Opaque black.
    CvornColour() = default;
    CvornColour(const CvornColour&) = default;
    /// From a COLORREF, with its own opacity.
    CvornColour(unsigned long clr, float fAlpha) : m_fAlpha(fAlpha) { *this = clr; }
    /// From its channels and opacity, not clamped.
    CvornColour(float fRed, float fGreen, float fBlue, float fAlpha)
        : m_fAlpha(fAlpha), m_fRed(fRed), m_fGreen(fGreen), m_fBlue(fBlue) {}

    /// Takes the opacity along.
    CvornColour& operator=(const CvornColour&) = default;
    /// Takes red, green and blue from a COLORREF; the opacity stays.
    VORN_API CvornColour& operator=(unsigned long clr);

    /// The COLORREF: each channel times 255, truncated, of which the low byte (so a channel above 1 wraps).
    VORN_API operator unsigned long() const;

    /// A channel, 0 to 1.
    float GetRedf() const { return m_fRed; }
    float GetGreenf() const { return m_fGreen; }
    float GetBluef() const { return m_fBlue; }
    /// A channel times 255, truncated: 0.999 gives 254.
    VORN_API unsigned char GetRedi() const;
    VORN_API unsigned char GetGreeni() const;
    VORN_API unsigned char GetBluei() const;

    /// Sets the channels from 0 to 255; the opacity stays.
    VORN_API void Set3i(int nRed, int nGreen, int nBlue);
    /// The same, and the opacity from 0 to 1.
    VORN_API void Set4i(int nRed, int nGreen, int nBlue, float fAlpha);
    /// Sets the channels; the opacity stays.
    VORN_API void Set3f(float fRed, float fGreen, float fBlue);
    /// Sets channels and opacity.
    VORN_API void Set4f(float fRed, float fGreen, float fBlue, float fAlpha);

    /// Light is a sum of the channels of at least 1.5; every other colour is dark.
    int IsLight() const { return m_fGreen + m_fRed + m_fBlue >= 1.5F; }
    int IsDark() const { return !IsLight(); }

    /// Raises every channel by f, and by what the saturated channels could not take of it, to at most 1.
    VORN_API void Lighter(float f);
    /// Lowers every channel by f, and by what the channels at 0 could not give of it, to at least 0.
    VORN_API void Darker(float f);
    /// Moves the colour away from its own lightness: a light one darker, a dark one lighter.
    VORN_API void Change(float f);

    /// Makes this GL's current colour.
    void glColor() const { ::glColor4f(m_fRed, m_fGreen, m_fBlue, m_fAlpha); }
};
