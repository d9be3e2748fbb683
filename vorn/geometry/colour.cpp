// SPDX-License-Identifier: MIT
#include "vorn/geometry/colour.h"

#include "vorn/detail/truncate.h"

#include <algorithm>

namespace {

// One step below the float nearest to 1/255: what a COLORREF gave comes back as the next lower byte.
constexpr float unitPerByte = 0.0039215684F;

unsigned char byteOf(float channel) {
    return static_cast<unsigned char>(vorn::detail::truncateToInt(channel * 255.0));
}

} // namespace

CvornColour& CvornColour::operator=(unsigned long clr) {
    Set3i(clr & 0xFF, (clr >> 8) & 0xFF, (clr >> 16) & 0xFF);
    return *this;
}

CvornColour::operator unsigned long() const {
    return RGB(GetRedi(), GetGreeni(), GetBluei());
}

unsigned char CvornColour::GetRedi() const {
    return byteOf(m_fRed);
}

unsigned char CvornColour::GetGreeni() const {
    return byteOf(m_fGreen);
}

unsigned char CvornColour::GetBluei() const {
    return byteOf(m_fBlue);
}

void CvornColour::Set3i(int nRed, int nGreen, int nBlue) {
    Set3f(nRed * unitPerByte, nGreen * unitPerByte, nBlue * unitPerByte);
}

void CvornColour::Set4i(int nRed, int nGreen, int nBlue, float fAlpha) {
    Set3i(nRed, nGreen, nBlue);
    m_fAlpha = fAlpha;
}

void CvornColour::Set3f(float fRed, float fGreen, float fBlue) {
    m_fRed = fRed;
    m_fGreen = fGreen;
    m_fBlue = fBlue;
}

void CvornColour::Set4f(float fRed, float fGreen, float fBlue, float fAlpha) {
    Set3f(fRed, fGreen, fBlue);
    m_fAlpha = fAlpha;
}

void CvornColour::Lighter(float f) {
    const auto excess = [f](float channel) { return f - (std::min(1.0F, channel + f) - channel); };
    const float d = f + excess(m_fRed) + excess(m_fGreen) + excess(m_fBlue);
    for (float* channel : {&m_fRed, &m_fGreen, &m_fBlue})
        *channel = std::min(1.0F, *channel + d);
}

void CvornColour::Darker(float f) {
    const auto excess = [f](float channel) { return f - (channel - std::max(0.0F, channel - f)); };
    const float d = f + excess(m_fRed) + excess(m_fGreen) + excess(m_fBlue);
    for (float* channel : {&m_fRed, &m_fGreen, &m_fBlue})
        *channel = std::max(0.0F, *channel - d);
}

void CvornColour::Change(float f) {
    if (IsLight())
        Darker(f);
    else
        Lighter(f);
}
