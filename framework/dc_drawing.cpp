// SPDX-License-Identifier: MIT
#include <afxwin.h>

CPoint CDC::GetCurrentPosition() const {
    CPoint position;
    ::GetCurrentPositionEx(m_hAttribDC, &position);
    return position;
}

CPoint CDC::MoveTo(int x, int y) {
    CPoint former;
    if (m_hDC != m_hAttribDC) ::MoveToEx(m_hDC, x, y, &former);
    if (m_hAttribDC != nullptr) ::MoveToEx(m_hAttribDC, x, y, &former);
    return former;
}

BOOL CDC::LineTo(int x, int y) {
    // The attribute DC must not draw, but its position has to follow.
    if (m_hAttribDC != nullptr && m_hDC != m_hAttribDC) ::MoveToEx(m_hAttribDC, x, y, nullptr);
    return ::LineTo(m_hDC, x, y);
}

void CDC::FillSolidRect(LPCRECT lpRect, COLORREF clr) {
    // An opaque empty text is the cheapest filled rectangle.
    ::SetBkColor(m_hDC, clr);
    ::ExtTextOutA(m_hDC, 0, 0, ETO_OPAQUE, lpRect, nullptr, 0, nullptr);
}

void CDC::FillSolidRect(int x, int y, int cx, int cy, COLORREF clr) {
    const RECT rect{x, y, x + cx, y + cy};
    FillSolidRect(&rect, clr);
}

void CDC::Draw3dRect(LPCRECT lpRect, COLORREF clrTopLeft, COLORREF clrBottomRight) {
    Draw3dRect(lpRect->left, lpRect->top, lpRect->right - lpRect->left, lpRect->bottom - lpRect->top,
               clrTopLeft, clrBottomRight);
}

void CDC::Draw3dRect(int x, int y, int cx, int cy, COLORREF clrTopLeft, COLORREF clrBottomRight) {
    FillSolidRect(x, y, cx - 1, 1, clrTopLeft);
    FillSolidRect(x, y, 1, cy - 1, clrTopLeft);
    FillSolidRect(x + cx - 1, y, 1, cy, clrBottomRight);
    FillSolidRect(x, y + cy - 1, cx, 1, clrBottomRight);
}

BOOL CDC::BitBlt(int x, int y, int nWidth, int nHeight, CDC* pSrcDC, int xSrc, int ySrc, DWORD dwRop) {
    return ::BitBlt(m_hDC, x, y, nWidth, nHeight, pSrcDC->GetSafeHdc(), xSrc, ySrc, dwRop);
}

BOOL CDC::StretchBlt(int x, int y, int nWidth, int nHeight, CDC* pSrcDC, int xSrc, int ySrc, int nSrcWidth,
                     int nSrcHeight, DWORD dwRop) {
    return ::StretchBlt(m_hDC, x, y, nWidth, nHeight, pSrcDC->GetSafeHdc(), xSrc, ySrc, nSrcWidth, nSrcHeight,
                        dwRop);
}

BOOL CDC::TransparentBlt(int x, int y, int nWidth, int nHeight, CDC* pSrcDC, int xSrc, int ySrc,
                         int nSrcWidth, int nSrcHeight, UINT clrTransparent) {
    return ::TransparentBlt(m_hDC, x, y, nWidth, nHeight, pSrcDC->GetSafeHdc(), xSrc, ySrc, nSrcWidth,
                            nSrcHeight, clrTransparent);
}

CSize CDC::GetTextExtent(LPCTSTR lpszString, int nCount) const {
    CSize extent;
    ::GetTextExtentPoint32A(m_hAttribDC, lpszString, nCount, &extent);
    return extent;
}

CSize CDC::GetOutputTextExtent(LPCTSTR lpszString, int nCount) const {
    CSize extent;
    ::GetTextExtentPoint32A(m_hDC, lpszString, nCount, &extent);
    return extent;
}

int CDC::GetTextFace(CString& rString) const {
    char name[LF_FACESIZE] = "";
    const int length = ::GetTextFaceA(m_hAttribDC, LF_FACESIZE, name);
    rString = name;
    return length;
}
