// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

class CPoint;
class CRect;

/// A width and a height; the platform's `SIZE` with operators.
class CSize : public tagSIZE {
public:
    CSize() noexcept : tagSIZE{0, 0} {}
    CSize(int initCX, int initCY) noexcept : tagSIZE{initCX, initCY} {}
    CSize(SIZE initSize) noexcept : tagSIZE(initSize) {}
    explicit CSize(POINT initPt) noexcept : tagSIZE{initPt.x, initPt.y} {}
    /// The low word is the width, the high word the height.
    explicit CSize(DWORD dwSize) noexcept
        : tagSIZE{static_cast<short>(LOWORD(dwSize)), static_cast<short>(HIWORD(dwSize))} {}

    bool operator==(SIZE size) const noexcept { return cx == size.cx && cy == size.cy; }
    bool operator!=(SIZE size) const noexcept { return cx != size.cx || cy != size.cy; }
    void operator+=(SIZE size) noexcept { SetSize(cx + size.cx, cy + size.cy); }
    void operator-=(SIZE size) noexcept { SetSize(cx - size.cx, cy - size.cy); }
    void SetSize(int CX, int CY) noexcept {
        cx = CX;
        cy = CY;
    }

    CSize operator+(SIZE size) const noexcept { return {cx + size.cx, cy + size.cy}; }
    CSize operator-(SIZE size) const noexcept { return {cx - size.cx, cy - size.cy}; }
    CSize operator-() const noexcept { return {-cx, -cy}; }
    CPoint operator+(POINT point) const noexcept;
    CPoint operator-(POINT point) const noexcept;
    CRect operator+(const RECT* lpRect) const noexcept;
    CRect operator-(const RECT* lpRect) const noexcept;
};

/// A position; the platform's `POINT` with operators.
class CPoint : public tagPOINT {
public:
    CPoint() noexcept : tagPOINT{0, 0} {}
    CPoint(int initX, int initY) noexcept : tagPOINT{initX, initY} {}
    CPoint(POINT initPt) noexcept : tagPOINT(initPt) {}
    explicit CPoint(SIZE initSize) noexcept : tagPOINT{initSize.cx, initSize.cy} {}
    /// The low word is x and the high word y, both signed, as mouse messages pack them.
    explicit CPoint(LPARAM dwPoint) noexcept
        : tagPOINT{static_cast<short>(LOWORD(dwPoint)), static_cast<short>(HIWORD(dwPoint))} {}

    void Offset(int xOffset, int yOffset) noexcept { SetPoint(x + xOffset, y + yOffset); }
    void Offset(POINT point) noexcept { Offset(point.x, point.y); }
    void Offset(SIZE size) noexcept { Offset(size.cx, size.cy); }
    void SetPoint(int X, int Y) noexcept {
        x = X;
        y = Y;
    }

    bool operator==(POINT point) const noexcept { return x == point.x && y == point.y; }
    bool operator!=(POINT point) const noexcept { return x != point.x || y != point.y; }
    void operator+=(SIZE size) noexcept { Offset(size.cx, size.cy); }
    void operator-=(SIZE size) noexcept { Offset(-size.cx, -size.cy); }
    void operator+=(POINT point) noexcept { Offset(point.x, point.y); }
    void operator-=(POINT point) noexcept { Offset(-point.x, -point.y); }

    CPoint operator+(SIZE size) const noexcept { return {x + size.cx, y + size.cy}; }
    CPoint operator-(SIZE size) const noexcept { return {x - size.cx, y - size.cy}; }
    CPoint operator-() const noexcept { return {-x, -y}; }
    CPoint operator+(POINT point) const noexcept { return {x + point.x, y + point.y}; }
    CSize operator-(POINT point) const noexcept { return {x - point.x, y - point.y}; }
    CRect operator+(const RECT* lpRect) const noexcept;
    CRect operator-(const RECT* lpRect) const noexcept;
};

/// A rectangle whose right and bottom edges lie outside; the platform's `RECT` with operators.
/// Most operations expect a normalised rectangle (left <= right, top <= bottom).
class CRect : public tagRECT {
public:
    CRect() noexcept : tagRECT{0, 0, 0, 0} {}
    CRect(int l, int t, int r, int b) noexcept : tagRECT{l, t, r, b} {}
    CRect(const RECT& srcRect) noexcept : tagRECT(srcRect) {}
    CRect(LPCRECT lpSrcRect) noexcept : tagRECT(*lpSrcRect) {}
    CRect(POINT point, SIZE size) noexcept
        : tagRECT{point.x, point.y, point.x + size.cx, point.y + size.cy} {}
    CRect(POINT topLeft, POINT bottomRight) noexcept
        : tagRECT{topLeft.x, topLeft.y, bottomRight.x, bottomRight.y} {}
    CRect(const CRect&) = default;

    int Width() const noexcept { return right - left; }
    int Height() const noexcept { return bottom - top; }
    CSize Size() const noexcept { return {Width(), Height()}; }
    CPoint& TopLeft() noexcept { return *reinterpret_cast<CPoint*>(&left); }
    CPoint& BottomRight() noexcept { return *reinterpret_cast<CPoint*>(&right); }
    const CPoint& TopLeft() const noexcept { return *reinterpret_cast<const CPoint*>(&left); }
    const CPoint& BottomRight() const noexcept { return *reinterpret_cast<const CPoint*>(&right); }
    CPoint CenterPoint() const noexcept { return {(left + right) / 2, (top + bottom) / 2}; }
    void SwapLeftRight() noexcept { SetRect(right, top, left, bottom); }

    operator LPRECT() noexcept { return this; }
    operator LPCRECT() const noexcept { return this; }

    /// True when the width or the height is zero or negative.
    BOOL IsRectEmpty() const noexcept { return ::IsRectEmpty(this); }
    /// True when all four coordinates are zero.
    BOOL IsRectNull() const noexcept { return left == 0 && right == 0 && top == 0 && bottom == 0; }
    BOOL PtInRect(POINT point) const noexcept { return ::PtInRect(this, point); }

    void SetRect(int x1, int y1, int x2, int y2) noexcept {
        left = x1;
        top = y1;
        right = x2;
        bottom = y2;
    }
    void SetRect(POINT topLeft, POINT bottomRight) noexcept {
        SetRect(topLeft.x, topLeft.y, bottomRight.x, bottomRight.y);
    }
    void SetRectEmpty() noexcept { SetRect(0, 0, 0, 0); }
    void CopyRect(LPCRECT lpSrcRect) noexcept { *this = *lpSrcRect; }
    BOOL EqualRect(LPCRECT lpRect) const noexcept { return ::EqualRect(this, lpRect); }

    void InflateRect(int x, int y) noexcept { InflateRect(x, y, x, y); }
    void InflateRect(SIZE size) noexcept { InflateRect(size.cx, size.cy); }
    void InflateRect(LPCRECT lpRect) noexcept {
        InflateRect(lpRect->left, lpRect->top, lpRect->right, lpRect->bottom);
    }
    void InflateRect(int l, int t, int r, int b) noexcept {
        SetRect(left - l, top - t, right + r, bottom + b);
    }
    void DeflateRect(int x, int y) noexcept { DeflateRect(x, y, x, y); }
    void DeflateRect(SIZE size) noexcept { DeflateRect(size.cx, size.cy); }
    void DeflateRect(LPCRECT lpRect) noexcept {
        DeflateRect(lpRect->left, lpRect->top, lpRect->right, lpRect->bottom);
    }
    void DeflateRect(int l, int t, int r, int b) noexcept {
        SetRect(left + l, top + t, right - r, bottom - b);
    }

    void OffsetRect(int x, int y) noexcept { SetRect(left + x, top + y, right + x, bottom + y); }
    void OffsetRect(SIZE size) noexcept { OffsetRect(size.cx, size.cy); }
    void OffsetRect(POINT point) noexcept { OffsetRect(point.x, point.y); }
    void MoveToX(int x) noexcept { OffsetRect(x - left, 0); }
    void MoveToY(int y) noexcept { OffsetRect(0, y - top); }
    void MoveToXY(int x, int y) noexcept { OffsetRect(x - left, y - top); }
    void MoveToXY(POINT point) noexcept { MoveToXY(point.x, point.y); }
    /// Exchanges edges where needed, so that neither width nor height is negative.
    void NormalizeRect() noexcept {
        if (left > right) SetRect(right, top, left, bottom);
        if (top > bottom) SetRect(left, bottom, right, top);
    }

    /// Becomes the common part of two rectangles; empty and 0 when there is none.
    BOOL IntersectRect(LPCRECT lpRect1, LPCRECT lpRect2) noexcept {
        return ::IntersectRect(this, lpRect1, lpRect2);
    }
    /// Becomes the smallest rectangle around two; an empty one counts for nothing. 0 when both are empty.
    BOOL UnionRect(LPCRECT lpRect1, LPCRECT lpRect2) noexcept { return ::UnionRect(this, lpRect1, lpRect2); }
    /// Becomes what is left of the first when the second, where it spans the whole width or height, is cut
    /// off.
    BOOL SubtractRect(LPCRECT lpRectSrc1, LPCRECT lpRectSrc2) noexcept {
        return ::SubtractRect(this, lpRectSrc1, lpRectSrc2);
    }

    void operator=(const RECT& srcRect) noexcept { tagRECT::operator=(srcRect); }
    CRect& operator=(const CRect&) = default;
    bool operator==(const RECT& rect) const noexcept { return ::EqualRect(this, &rect); }
    bool operator!=(const RECT& rect) const noexcept { return !::EqualRect(this, &rect); }
    void operator+=(POINT point) noexcept { OffsetRect(point); }
    void operator+=(SIZE size) noexcept { OffsetRect(size); }
    void operator+=(LPCRECT lpRect) noexcept { InflateRect(lpRect); }
    void operator-=(POINT point) noexcept { OffsetRect(-point.x, -point.y); }
    void operator-=(SIZE size) noexcept { OffsetRect(-size.cx, -size.cy); }
    void operator-=(LPCRECT lpRect) noexcept { DeflateRect(lpRect); }
    void operator&=(const RECT& rect) noexcept { ::IntersectRect(this, this, &rect); }
    void operator|=(const RECT& rect) noexcept { ::UnionRect(this, this, &rect); }

    CRect operator+(POINT pt) const noexcept {
        return changed([&](CRect& r) { r += pt; });
    }
    CRect operator-(POINT pt) const noexcept {
        return changed([&](CRect& r) { r -= pt; });
    }
    CRect operator+(SIZE size) const noexcept {
        return changed([&](CRect& r) { r += size; });
    }
    CRect operator-(SIZE size) const noexcept {
        return changed([&](CRect& r) { r -= size; });
    }
    CRect operator+(LPCRECT lpRect) const noexcept {
        return changed([&](CRect& r) { r += lpRect; });
    }
    CRect operator-(LPCRECT lpRect) const noexcept {
        return changed([&](CRect& r) { r -= lpRect; });
    }
    CRect operator&(const RECT& rect2) const noexcept {
        return changed([&](CRect& r) { r &= rect2; });
    }
    CRect operator|(const RECT& rect2) const noexcept {
        return changed([&](CRect& r) { r |= rect2; });
    }
    /// `value * multiplier / divisor` of each edge, rounded.
    CRect MulDiv(int nMultiplier, int nDivisor) const noexcept {
        return {::MulDiv(left, nMultiplier, nDivisor), ::MulDiv(top, nMultiplier, nDivisor),
                ::MulDiv(right, nMultiplier, nDivisor), ::MulDiv(bottom, nMultiplier, nDivisor)};
    }

private:
    template <typename Change>
    CRect changed(Change change) const noexcept {
        CRect rect(*this);
        change(rect);
        return rect;
    }
};

inline CPoint CSize::operator+(POINT point) const noexcept {
    return {cx + point.x, cy + point.y};
}
inline CPoint CSize::operator-(POINT point) const noexcept {
    return {cx - point.x, cy - point.y};
}
inline CRect CSize::operator+(const RECT* lpRect) const noexcept {
    return CRect(*lpRect) + *this;
}
inline CRect CSize::operator-(const RECT* lpRect) const noexcept {
    return CRect(*lpRect) - *this;
}
inline CRect CPoint::operator+(const RECT* lpRect) const noexcept {
    return CRect(*lpRect) + *this;
}
inline CRect CPoint::operator-(const RECT* lpRect) const noexcept {
    return CRect(*lpRect) - *this;
}
