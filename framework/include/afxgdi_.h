// SPDX-License-Identifier: MIT
#pragma once

/// GDI objects. Included by <afxwin.h>.
///
/// An object that it has created or attached owns its handle and deletes it at its end; one that FromHandle
/// gave is temporary, owns nothing, and may be gone at the next idle time.

#include <afx.h>
#include <atltypes.h>

class CDC;

class VORNAFX_API CGdiObject : public CObject {
    DECLARE_DYNCREATE(CGdiObject)
public:
    CGdiObject() = default;
    ~CGdiObject() override;

    HGDIOBJ m_hObject = nullptr;

    operator HGDIOBJ() const { return m_hObject; }
    HGDIOBJ GetSafeHandle() const { return this == nullptr ? nullptr : m_hObject; }
    BOOL operator==(const CGdiObject& other) const { return m_hObject == other.m_hObject; }

    /// The object of a handle: the one that owns it, else a temporary one. Null for a null handle.
    static CGdiObject* FromHandle(HGDIOBJ hObject);
    /// Drops the temporary objects of this thread.
    static void DeleteTempMap();

    /// Takes the handle over. FALSE, with nothing taken, when it is null or this object has one.
    BOOL Attach(HGDIOBJ hObject);
    /// Gives the handle up; null when there was none.
    HGDIOBJ Detach();
    BOOL DeleteObject();

    int GetObject(int nCount, LPVOID lpObject) const { return ::GetObjectA(m_hObject, nCount, lpObject); }
#pragma push_macro("GetObject")
#undef GetObject
    int GetObject(int nCount, LPVOID lpObject) const {
        return ::GetObjectA(m_hObject, nCount, lpObject);
    }
#pragma pop_macro("GetObject")
    UINT GetObjectType() const {
        return ::GetObjectType(m_hObject);
    }
    BOOL CreateStockObject(int nIndex);
    BOOL UnrealizeObject() {
        return ::UnrealizeObject(m_hObject);
    }

protected:
    /// Attaches what a platform function has just made; deletes it when this object has a handle already.
    BOOL Take(HGDIOBJ hObject);
};

class VORNAFX_API CPen : public CGdiObject {
    DECLARE_DYNAMIC(CPen)
public:
    CPen() = default;
    /// Throws CResourceException when the pen cannot be made.
    CPen(int nPenStyle, int nWidth, COLORREF crColor);

    operator HPEN() const { return static_cast<HPEN>(m_hObject); }
    static CPen* FromHandle(HPEN hPen) { return static_cast<CPen*>(CGdiObject::FromHandle(hPen)); }

    BOOL CreatePen(int nPenStyle, int nWidth, COLORREF crColor) {
        return Take(::CreatePen(nPenStyle, nWidth, crColor));
    }
    BOOL CreatePen(int nPenStyle, int nWidth, const LOGBRUSH* pLogBrush, int nStyleCount = 0,
                   const DWORD* lpStyle = nullptr) {
        return Take(::ExtCreatePen(nPenStyle, nWidth, pLogBrush, nStyleCount, lpStyle));
    }
    BOOL CreatePenIndirect(LPLOGPEN lpLogPen) { return Take(::CreatePenIndirect(lpLogPen)); }
    int GetLogPen(LOGPEN* pLogPen) { return ::GetObjectA(m_hObject, sizeof(LOGPEN), pLogPen); }
};

class VORNAFX_API CBrush : public CGdiObject {
    DECLARE_DYNAMIC(CBrush)
public:
    CBrush() = default;
    /// These throw CResourceException when the brush cannot be made.
    CBrush(COLORREF crColor);
    CBrush(int nIndex, COLORREF crColor);
    CBrush(class CBitmap* pBitmap);

    operator HBRUSH() const { return static_cast<HBRUSH>(m_hObject); }
    static CBrush* FromHandle(HBRUSH hBrush) { return static_cast<CBrush*>(CGdiObject::FromHandle(hBrush)); }

    BOOL CreateSolidBrush(COLORREF crColor) { return Take(::CreateSolidBrush(crColor)); }
    BOOL CreateHatchBrush(int nIndex, COLORREF crColor) { return Take(::CreateHatchBrush(nIndex, crColor)); }
    BOOL CreateBrushIndirect(const LOGBRUSH* lpLogBrush) { return Take(::CreateBrushIndirect(lpLogBrush)); }
    BOOL CreatePatternBrush(CBitmap* pBitmap);
    BOOL CreateSysColorBrush(int nIndex) { return Take(::GetSysColorBrush(nIndex)); }
    int GetLogBrush(LOGBRUSH* pLogBrush) { return ::GetObjectA(m_hObject, sizeof(LOGBRUSH), pLogBrush); }
};

class VORNAFX_API CFont : public CGdiObject {
    DECLARE_DYNAMIC(CFont)
public:
    CFont() = default;

    operator HFONT() const { return static_cast<HFONT>(m_hObject); }
    static CFont* FromHandle(HFONT hFont) { return static_cast<CFont*>(CGdiObject::FromHandle(hFont)); }

    BOOL CreateFontIndirect(const LOGFONT* lpLogFont) { return Take(::CreateFontIndirectA(lpLogFont)); }
    BOOL CreateFont(int nHeight, int nWidth, int nEscapement, int nOrientation, int nWeight, BYTE bItalic,
                    BYTE bUnderline, BYTE cStrikeOut, BYTE nCharSet, BYTE nOutPrecision, BYTE nClipPrecision,
                    BYTE nQuality, BYTE nPitchAndFamily, LPCTSTR lpszFacename) {
        return Take(::CreateFontA(nHeight, nWidth, nEscapement, nOrientation, nWeight, bItalic, bUnderline,
                                  cStrikeOut, nCharSet, nOutPrecision, nClipPrecision, nQuality,
                                  nPitchAndFamily, lpszFacename));
    }
    /// nPointSize is in tenths of a point, measured on pDC or on the screen.
    BOOL CreatePointFont(int nPointSize, LPCTSTR lpszFaceName, CDC* pDC = nullptr);
    /// The same with the size, in tenths of a point, in lfHeight.
    BOOL CreatePointFontIndirect(const LOGFONT* lpLogFont, CDC* pDC = nullptr);
    int GetLogFont(LOGFONT* pLogFont) { return ::GetObjectA(m_hObject, sizeof(LOGFONT), pLogFont); }
};

class VORNAFX_API CBitmap : public CGdiObject {
    DECLARE_DYNAMIC(CBitmap)
public:
    CBitmap() = default;

    operator HBITMAP() const { return static_cast<HBITMAP>(m_hObject); }
    static CBitmap* FromHandle(HBITMAP hBitmap) {
        return static_cast<CBitmap*>(CGdiObject::FromHandle(hBitmap));
    }

    /// Loads from the resources of the current module state.
    BOOL LoadBitmap(LPCTSTR lpszResourceName);
    BOOL LoadBitmap(UINT nIDResource) { return LoadBitmap(MAKEINTRESOURCE(nIDResource)); }
    BOOL LoadOEMBitmap(UINT nIDBitmap) { return Take(::LoadBitmapA(nullptr, MAKEINTRESOURCE(nIDBitmap))); }
    BOOL CreateBitmap(int nWidth, int nHeight, UINT nPlanes, UINT nBitcount, const void* lpBits) {
        return Take(::CreateBitmap(nWidth, nHeight, nPlanes, nBitcount, lpBits));
    }
    BOOL CreateBitmapIndirect(LPBITMAP lpBitmap) { return Take(::CreateBitmapIndirect(lpBitmap)); }
    BOOL CreateCompatibleBitmap(CDC* pDC, int nWidth, int nHeight);
    BOOL CreateDiscardableBitmap(CDC* pDC, int nWidth, int nHeight);

    int GetBitmap(BITMAP* pBitMap) { return ::GetObjectA(m_hObject, sizeof(BITMAP), pBitMap); }
    DWORD SetBitmapBits(DWORD dwCount, const void* lpBits) {
        return static_cast<DWORD>(::SetBitmapBits(*this, dwCount, lpBits));
    }
    DWORD GetBitmapBits(DWORD dwCount, LPVOID lpBits) const {
        return static_cast<DWORD>(::GetBitmapBits(*this, static_cast<LONG>(dwCount), lpBits));
    }
    /// Size in units of 0.1 mm; GDI only stores it. Returns the former one.
    CSize SetBitmapDimension(int nWidth, int nHeight) {
        CSize former(0, 0);
        ::SetBitmapDimensionEx(*this, nWidth, nHeight, &former);
        return former;
    }
    CSize GetBitmapDimension() const {
        CSize size(0, 0);
        ::GetBitmapDimensionEx(*this, &size);
        return size;
    }
};

class VORNAFX_API CPalette : public CGdiObject {
    DECLARE_DYNAMIC(CPalette)
public:
    CPalette() = default;

    operator HPALETTE() const { return static_cast<HPALETTE>(m_hObject); }
    static CPalette* FromHandle(HPALETTE hPalette) {
        return static_cast<CPalette*>(CGdiObject::FromHandle(hPalette));
    }

    BOOL CreatePalette(LPLOGPALETTE lpLogPalette) { return Take(::CreatePalette(lpLogPalette)); }
    BOOL CreateHalftonePalette(CDC* pDC);

    int GetEntryCount() const {
        WORD count = 0;
        ::GetObjectA(m_hObject, sizeof(count), &count);
        return count;
    }
    UINT GetPaletteEntries(UINT nStartIndex, UINT nNumEntries, LPPALETTEENTRY lpPaletteColors) const {
        return ::GetPaletteEntries(*this, nStartIndex, nNumEntries, lpPaletteColors);
    }
    UINT SetPaletteEntries(UINT nStartIndex, UINT nNumEntries, LPPALETTEENTRY lpPaletteColors) {
        return ::SetPaletteEntries(*this, nStartIndex, nNumEntries, lpPaletteColors);
    }
    void AnimatePalette(UINT nStartIndex, UINT nNumEntries, LPPALETTEENTRY lpPaletteColors) {
        ::AnimatePalette(*this, nStartIndex, nNumEntries, lpPaletteColors);
    }
    UINT GetNearestPaletteIndex(COLORREF crColor) const { return ::GetNearestPaletteIndex(*this, crColor); }
    BOOL ResizePalette(UINT nNumEntries) { return ::ResizePalette(*this, nNumEntries); }
};

class VORNAFX_API CRgn : public CGdiObject {
    DECLARE_DYNAMIC(CRgn)
public:
    CRgn() = default;

    operator HRGN() const { return static_cast<HRGN>(m_hObject); }
    static CRgn* FromHandle(HRGN hRgn) { return static_cast<CRgn*>(CGdiObject::FromHandle(hRgn)); }

    BOOL CreateRectRgn(int x1, int y1, int x2, int y2) { return Take(::CreateRectRgn(x1, y1, x2, y2)); }
    BOOL CreateRectRgnIndirect(LPCRECT lpRect) { return Take(::CreateRectRgnIndirect(lpRect)); }
    BOOL CreateEllipticRgn(int x1, int y1, int x2, int y2) {
        return Take(::CreateEllipticRgn(x1, y1, x2, y2));
    }
    BOOL CreateEllipticRgnIndirect(LPCRECT lpRect) { return Take(::CreateEllipticRgnIndirect(lpRect)); }
    BOOL CreatePolygonRgn(const POINT* lpPoints, int nCount, int nMode) {
        return Take(::CreatePolygonRgn(lpPoints, nCount, nMode));
    }
    BOOL CreateRoundRectRgn(int x1, int y1, int x2, int y2, int x3, int y3) {
        return Take(::CreateRoundRectRgn(x1, y1, x2, y2, x3, y3));
    }
    BOOL CreateFromPath(CDC* pDC);

    void SetRectRgn(int x1, int y1, int x2, int y2) { ::SetRectRgn(*this, x1, y1, x2, y2); }
    void SetRectRgn(LPCRECT lpRect) {
        ::SetRectRgn(*this, lpRect->left, lpRect->top, lpRect->right, lpRect->bottom);
    }
    int CombineRgn(const CRgn* pRgn1, const CRgn* pRgn2, int nCombineMode) {
        return ::CombineRgn(*this, HandleOf(pRgn1), HandleOf(pRgn2), nCombineMode);
    }
    int CopyRgn(const CRgn* pRgnSrc) { return ::CombineRgn(*this, HandleOf(pRgnSrc), nullptr, RGN_COPY); }
    BOOL EqualRgn(const CRgn* pRgn) const { return ::EqualRgn(*this, HandleOf(pRgn)); }
    int OffsetRgn(int x, int y) { return ::OffsetRgn(*this, x, y); }
    int OffsetRgn(POINT point) { return ::OffsetRgn(*this, point.x, point.y); }
    int GetRgnBox(LPRECT lpRect) const { return ::GetRgnBox(*this, lpRect); }
    BOOL PtInRegion(int x, int y) const { return ::PtInRegion(*this, x, y); }
    BOOL PtInRegion(POINT point) const { return ::PtInRegion(*this, point.x, point.y); }
    BOOL RectInRegion(LPCRECT lpRect) const { return ::RectInRegion(*this, lpRect); }

private:
    static HRGN HandleOf(const CRgn* region) { return region == nullptr ? nullptr : HRGN(*region); }
};
