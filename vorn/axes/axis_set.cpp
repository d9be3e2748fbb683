// SPDX-License-Identifier: MIT
#include "vorn/axes/axis_set.h"

#include "vorn/axes/detail/plane.h"
#include "vorn/detail/truncate.h"

#include <algorithm>

using vorn::detail::planeOf;

namespace {

long roundedPixels(float size) {
    return vorn::detail::truncateToInt(size + 0.5);
}

} // namespace

CvornAxisSet::CvornAxisSet(unsigned long dwParams)
    : m_axisX(&m_matrix, AXIS_X | AXIS_OF_SET, 1, 0, 0), m_axisY(&m_matrix, AXIS_Y | AXIS_OF_SET, 0, 1, 0),
      m_axisZ(&m_matrix, AXIS_Z | AXIS_OF_SET, 0, 0, 1), m_dwParams(dwParams) {}

CvornAxisSet::CvornAxisSet(const CvornAxisSet& other) : CvornAxisSet() {
    *this = other;
}

CvornAxisSet& CvornAxisSet::operator=(const CvornAxisSet& other) {
    m_axisX = other.m_axisX;
    m_axisY = other.m_axisY;
    m_axisZ = other.m_axisZ;
    m_imageXY = other.m_imageXY;
    m_imageXZ = other.m_imageXZ;
    m_imageYZ = other.m_imageYZ;
    m_clrAxis = other.m_clrAxis;
    m_clrGrid = other.m_clrGrid;
    m_clrMinorGrid = other.m_clrMinorGrid;
    m_fTipRadius = other.m_fTipRadius;
    m_fTipLength = other.m_fTipLength;
    m_dwParams = other.m_dwParams;
    m_matrix = other.m_matrix;
    m_nSpare = other.m_nSpare;
    m_ptOrigin = other.m_ptOrigin;
    m_bImagesValid = other.m_bImagesValid;
    ShareMatrix();
    return *this;
}

void CvornAxisSet::ShareMatrix() {
    for (CvornAxis* axis : {&m_axisX, &m_axisY, &m_axisZ})
        axis->m_pMatrix = &m_matrix;
}

void CvornAxisSet::UpdateOrigin(float x, float y, float z) {
    m_ptOrigin.SetNormal(x, y, z);
    for (CvornAxis* axis : {&m_axisX, &m_axisY, &m_axisZ})
        axis->m_ptOrigin = m_ptOrigin;
}

void CvornAxisSet::UpdateLength(float lx, float ly, float lz, float s) {
    m_fTipRadius = s * 0.01F;
    m_fTipLength = s * 0.04F;
    m_axisX.m_fLength = m_axisX.m_bEnabled != 0 ? lx * s : 0;
    m_axisY.m_fLength = m_axisY.m_bEnabled != 0 ? ly * s : 0;
    m_axisZ.m_fLength = m_axisZ.m_bEnabled != 0 ? lz * s : 0;
    for (CvornAxis* axis : {&m_axisX, &m_axisY, &m_axisZ})
        axis->m_ptOrigin = m_ptOrigin;
}

void CvornAxisSet::UpdateTicks() {
    float tick = 0;
    for (const CvornAxis* axis : {&m_axisX, &m_axisY, &m_axisZ})
        tick = std::max(tick, axis->CalculateTick());
    for (CvornAxis* axis : {&m_axisX, &m_axisY, &m_axisZ})
        axis->SetTick(tick);
}

void CvornAxisSet::GetGridImageRect(RECT* r, unsigned long dwPlane, float size) const {
    *r = {0, 0, 0, 0};
    const auto* plane = planeOf(dwPlane);
    if (plane == nullptr) return;
    const float a = (this->*plane->a).m_fLength, b = (this->*plane->b).m_fLength;
    if (a == 0 || b == 0) return;
    r->right = roundedPixels(a > b ? size : a / b * size);
    r->bottom = roundedPixels(a > b ? b / a * size : size);
}

void CvornAxisSet::ResizeGridImage(CDC* pDC, unsigned long dwPlane, float size) {
    const auto* plane = planeOf(dwPlane);
    if (plane == nullptr) return;
    CRect rect;
    GetGridImageRect(rect, dwPlane, size);
    (this->*plane->image).Resize(pDC, rect, 0);
}

void CvornAxisSet::ResizeImages(CDC* pDC, float size) {
    for (DWORD plane : {PLANE_XY, PLANE_XZ, PLANE_YZ})
        ResizeGridImage(pDC, plane, size);
    m_bImagesValid = 1;
}

void CvornAxisSet::Serialize(CArchive& ar) {
    if (ar.IsStoring()) {
        Transfer(ar);
        return;
    }
    // What an archive cuts short must not leave half a set.
    CvornAxisSet loaded(*this);
    loaded.Transfer(ar);
    *this = loaded;
}

void CvornAxisSet::Transfer(CArchive& ar) {
    if (ar.IsStoring())
        ar << m_dwParams;
    else
        ar >> m_dwParams;
    for (CvornAxis* axis : {&m_axisX, &m_axisY, &m_axisZ})
        axis->Serialize(ar);
    for (CvornDIBTexture* image : {&m_imageXY, &m_imageXZ, &m_imageYZ})
        image->Serialize(ar);
}
