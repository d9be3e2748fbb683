// SPDX-License-Identifier: MIT
#include <afxwin.h>

// Attributes, mapping and clipping, set in the output DC and the attribute DC alike; and drawing that is more
// than one call.

namespace {

/// Calls an operation for the output DC and, when it is another, the attribute DC; its last result counts.
template <typename Operation>
auto onBoth(const CDC& dc, Operation operation) {
    auto result = decltype(operation(HDC())){};
    if (dc.m_hDC != nullptr && dc.m_hDC != dc.m_hAttribDC) result = operation(dc.m_hDC);
    if (dc.m_hAttribDC != nullptr) result = operation(dc.m_hAttribDC);
    return result;
}

/// The same for operations that give the former value of a pair through a pointer.
template <typename Pair, typename Operation>
Pair formerOnBoth(const CDC& dc, Operation operation) {
    Pair former(0, 0);
    onBoth(dc, [&](HDC handle) { return operation(handle, &former); });
    return former;
}

} // namespace

CPoint CDC::GetBrushOrg() const {
    CPoint origin;
    ::GetBrushOrgEx(m_hDC, &origin);
    return origin;
}

CPoint CDC::SetBrushOrg(int x, int y) {
    CPoint former;
    ::SetBrushOrgEx(m_hDC, x, y, &former);
    return former;
}

COLORREF CDC::SetBkColor(COLORREF crColor) {
    return onBoth(*this, [=](HDC dc) { return ::SetBkColor(dc, crColor); });
}

int CDC::SetBkMode(int nBkMode) {
    return onBoth(*this, [=](HDC dc) { return ::SetBkMode(dc, nBkMode); });
}

int CDC::SetPolyFillMode(int nPolyFillMode) {
    return onBoth(*this, [=](HDC dc) { return ::SetPolyFillMode(dc, nPolyFillMode); });
}

int CDC::SetROP2(int nDrawMode) {
    return onBoth(*this, [=](HDC dc) { return ::SetROP2(dc, nDrawMode); });
}

int CDC::SetStretchBltMode(int nStretchMode) {
    return onBoth(*this, [=](HDC dc) { return ::SetStretchBltMode(dc, nStretchMode); });
}

COLORREF CDC::SetTextColor(COLORREF crColor) {
    return onBoth(*this, [=](HDC dc) { return ::SetTextColor(dc, crColor); });
}

UINT CDC::SetTextAlign(UINT nFlags) {
    return onBoth(*this, [=](HDC dc) { return ::SetTextAlign(dc, nFlags); });
}

int CDC::SetTextCharacterExtra(int nCharExtra) {
    return onBoth(*this, [=](HDC dc) { return ::SetTextCharacterExtra(dc, nCharExtra); });
}

int CDC::SetTextJustification(int nBreakExtra, int nBreakCount) {
    return onBoth(*this, [=](HDC dc) { return ::SetTextJustification(dc, nBreakExtra, nBreakCount); });
}

int CDC::SetGraphicsMode(int nMode) {
    return onBoth(*this, [=](HDC dc) { return ::SetGraphicsMode(dc, nMode); });
}

BOOL CDC::SetWorldTransform(const XFORM* pXform) {
    return onBoth(*this, [=](HDC dc) { return ::SetWorldTransform(dc, pXform); });
}

// ---- mapping

int CDC::SetMapMode(int nMapMode) {
    return onBoth(*this, [=](HDC dc) { return ::SetMapMode(dc, nMapMode); });
}

CPoint CDC::GetViewportOrg() const {
    CPoint origin;
    ::GetViewportOrgEx(m_hAttribDC, &origin);
    return origin;
}

CPoint CDC::SetViewportOrg(int x, int y) {
    return formerOnBoth<CPoint>(*this, [=](HDC dc, POINT* old) { return ::SetViewportOrgEx(dc, x, y, old); });
}

CPoint CDC::OffsetViewportOrg(int nWidth, int nHeight) {
    return formerOnBoth<CPoint>(
        *this, [=](HDC dc, POINT* old) { return ::OffsetViewportOrgEx(dc, nWidth, nHeight, old); });
}

CSize CDC::GetViewportExt() const {
    CSize extent;
    ::GetViewportExtEx(m_hAttribDC, &extent);
    return extent;
}

CSize CDC::SetViewportExt(int cx, int cy) {
    return formerOnBoth<CSize>(*this, [=](HDC dc, SIZE* old) { return ::SetViewportExtEx(dc, cx, cy, old); });
}

CSize CDC::ScaleViewportExt(int xNum, int xDenom, int yNum, int yDenom) {
    return formerOnBoth<CSize>(
        *this, [=](HDC dc, SIZE* old) { return ::ScaleViewportExtEx(dc, xNum, xDenom, yNum, yDenom, old); });
}

CPoint CDC::GetWindowOrg() const {
    CPoint origin;
    ::GetWindowOrgEx(m_hAttribDC, &origin);
    return origin;
}

CPoint CDC::SetWindowOrg(int x, int y) {
    return formerOnBoth<CPoint>(*this, [=](HDC dc, POINT* old) { return ::SetWindowOrgEx(dc, x, y, old); });
}

CPoint CDC::OffsetWindowOrg(int nWidth, int nHeight) {
    return formerOnBoth<CPoint>(
        *this, [=](HDC dc, POINT* old) { return ::OffsetWindowOrgEx(dc, nWidth, nHeight, old); });
}

CSize CDC::GetWindowExt() const {
    CSize extent;
    ::GetWindowExtEx(m_hAttribDC, &extent);
    return extent;
}

CSize CDC::SetWindowExt(int cx, int cy) {
    return formerOnBoth<CSize>(*this, [=](HDC dc, SIZE* old) { return ::SetWindowExtEx(dc, cx, cy, old); });
}

CSize CDC::ScaleWindowExt(int xNum, int xDenom, int yNum, int yDenom) {
    return formerOnBoth<CSize>(
        *this, [=](HDC dc, SIZE* old) { return ::ScaleWindowExtEx(dc, xNum, xDenom, yNum, yDenom, old); });
}

// ---- clipping

int CDC::SelectClipRgn(CRgn* pRgn) {
    HRGN region = RgnHandle(pRgn);
    return onBoth(*this, [=](HDC dc) { return ::SelectClipRgn(dc, region); });
}

int CDC::SelectClipRgn(CRgn* pRgn, int nMode) {
    HRGN region = RgnHandle(pRgn);
    return onBoth(*this, [=](HDC dc) { return ::ExtSelectClipRgn(dc, region, nMode); });
}

int CDC::ExcludeClipRect(int x1, int y1, int x2, int y2) {
    return onBoth(*this, [=](HDC dc) { return ::ExcludeClipRect(dc, x1, y1, x2, y2); });
}

int CDC::ExcludeUpdateRgn(CWnd* pWnd) {
    return ::ExcludeUpdateRgn(m_hDC, pWnd->m_hWnd);
}

int CDC::IntersectClipRect(int x1, int y1, int x2, int y2) {
    return onBoth(*this, [=](HDC dc) { return ::IntersectClipRect(dc, x1, y1, x2, y2); });
}

int CDC::OffsetClipRgn(int x, int y) {
    return onBoth(*this, [=](HDC dc) { return ::OffsetClipRgn(dc, x, y); });
}

BOOL CDC::SelectClipPath(int nMode) {
    if (!::SelectClipPath(m_hDC, nMode)) return FALSE;
    if (m_hDC == m_hAttribDC || m_hAttribDC == nullptr) return TRUE;
    // The path is the output DC's; its clipping region is what the attribute DC can take over.
    HRGN region = ::CreateRectRgn(0, 0, 0, 0);
    const BOOL taken = ::GetClipRgn(m_hDC, region) >= 0 && ::SelectClipRgn(m_hAttribDC, region) != ERROR;
    ::DeleteObject(region);
    return taken;
}
