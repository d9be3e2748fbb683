// SPDX-License-Identifier: MIT
#include <afxwin.h>
#include <cstdlib>

namespace {

constexpr int himetricPerInch = 2540;

/// The metric and English modes have a fixed physical scale; GDI knows it best.
bool hasPhysicalScale(int mapMode) {
    return mapMode == MM_LOMETRIC || mapMode == MM_HIMETRIC || mapMode == MM_LOENGLISH ||
           mapMode == MM_HIENGLISH || mapMode == MM_TWIPS;
}

/// Puts a DC into MM_HIMETRIC for the length of a scope.
class HimetricMode {
public:
    explicit HimetricMode(const CDC& dc) : m_dc(dc.m_hAttribDC), m_saved(::SetMapMode(m_dc, MM_HIMETRIC)) {}
    ~HimetricMode() { ::SetMapMode(m_dc, m_saved); }
    HimetricMode(const HimetricMode&) = delete;
    HimetricMode& operator=(const HimetricMode&) = delete;

private:
    HDC m_dc;
    int m_saved;
};

void scale(SIZE& size, SIZE numerator, SIZE denominator) {
    size.cx = ::MulDiv(size.cx, std::abs(numerator.cx), std::abs(denominator.cx));
    size.cy = ::MulDiv(size.cy, std::abs(numerator.cy), std::abs(denominator.cy));
}

SIZE pixelsPerInch(const CDC& dc) {
    return {dc.GetDeviceCaps(LOGPIXELSX), dc.GetDeviceCaps(LOGPIXELSY)};
}

} // namespace

void CDC::DPtoLP(LPSIZE lpSize) const {
    scale(*lpSize, GetWindowExt(), GetViewportExt());
}

void CDC::LPtoDP(LPSIZE lpSize) const {
    scale(*lpSize, GetViewportExt(), GetWindowExt());
}

void CDC::DPtoHIMETRIC(LPSIZE lpSize) const {
    if (hasPhysicalScale(GetMapMode())) {
        HimetricMode himetric(*this);
        DPtoLP(lpSize);
    } else {
        scale(*lpSize, {himetricPerInch, himetricPerInch}, pixelsPerInch(*this));
    }
}

void CDC::HIMETRICtoDP(LPSIZE lpSize) const {
    if (hasPhysicalScale(GetMapMode())) {
        HimetricMode himetric(*this);
        LPtoDP(lpSize);
    } else {
        scale(*lpSize, pixelsPerInch(*this), {himetricPerInch, himetricPerInch});
    }
}

void CDC::LPtoHIMETRIC(LPSIZE lpSize) const {
    LPtoDP(lpSize);
    DPtoHIMETRIC(lpSize);
}

void CDC::HIMETRICtoLP(LPSIZE lpSize) const {
    HIMETRICtoDP(lpSize);
    DPtoLP(lpSize);
}
