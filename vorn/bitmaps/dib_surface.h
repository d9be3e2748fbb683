// SPDX-License-Identifier: MIT
#pragma once

#include "vorn/api.h"
#include "vorn/bitmaps/dib.h"

#include <afxwin.h>
#include <concepts>

/// A 24-bit bitmap that GDI can draw into and whose pixels can be touched directly: a DIB section selected
/// into a memory DC of its own. The inherited `GetBitsAddress` is the section's memory, which lives as long
/// as the surface or until the next `Create`. Call `GdiFlush` between drawing with GDI and reading the
/// pixels.
///
///     CvornDIBSurface surface;
///     if (surface.Create(640, 480, nullptr)) {
///         surface.GetDC()->FillSolidRect(0, 0, 640, 480, RGB(255, 255, 255));
///         surface.Draw(&dc);
///     }
///
/// On systems older than DIB sections the bitmap comes from WinG instead; which of the two serves is decided
/// once, when the library is loaded. A surface cannot be copied: a bitmap is selected into one DC at a time.
class VORN_API CvornDIBSurface : public CvornDIB {
    DECLARE_SERIAL(CvornDIBSurface)

public:
    CvornDIBSurface();
    ~CvornDIBSurface() override;
    CvornDIBSurface(const CvornDIBSurface&) = delete;
    CvornDIBSurface& operator=(const CvornDIBSurface&) = delete;

    /// Makes the bitmap, `cx` x `cy` pixels, and releases a previous one. The palette may be null and is not
    /// owned; its entries fill the colour table. Returns 0, with nothing changed, on failure.
    BOOL Create(int cx, int cy, HPALETTE hPal);
    /// The same with a palette object. A template, so that a plain null means the handle.
    template <std::derived_from<CPalette> Palette>
    BOOL Create(int cx, int cy, Palette* pPal) {
        return Create(cx, cy, static_cast<HPALETTE>(pPal == nullptr ? nullptr : pPal->m_hObject));
    }

    /// Takes size and palette from a BMP file (asked for in a file dialog when the name is null or empty) and
    /// copies the file's rows into the surface, one byte a pixel: only the first width bytes of each
    /// 24-bit row are filled. Returns 0 on failure.
    BOOL Load(const char* pszFileName) override;
    using CvornDIB::Load;

    /// Copies a rectangle of the surface, in pixels, to a DC. Returns 0 on failure.
    BOOL BitBlt(CDC* pDC, int xDest, int yDest, int w, int h, int xSrc, int ySrc);
    BOOL BitBlt(HDC hdc, int xDest, int yDest, int w, int h, int xSrc, int ySrc);
    /// As `BitBlt`, scaled with the stretch mode of the DC.
    BOOL StretchBlt(CDC* pDC, int xDest, int yDest, int wDest, int hDest, int xSrc, int ySrc, int wSrc,
                    int hSrc);

    /// Copies the whole surface to (0, 0) of the DC.
    void Draw(CDC* pDC);
    /// Copies the whole surface to (x, y) of the DC.
    void Draw(HDC hdc, int x, int y) override;
    using CvornDIB::Draw;
    /// Sends the pixels themselves to (x, y) of the DC, which is left in halftone stretch mode.
    void Draw2(CDC* pDC, int x, int y);

    /// Keeps the palette (not owned) and makes its entries the bitmap's colour table.
    void SetPalette(HPALETTE hPal);
    /// The same; nothing happens for null.
    void SetPalette(CPalette* pPal);
    /// Maps the pixels to the palette and then sets it. Returns 0, with nothing changed, when the mapping
    /// fails.
    BOOL MapColorsToPalette(HPALETTE hPal) override;
    BOOL MapColorsToPalette(CPalette* pPal) override;

    /// The memory DC that the bitmap is selected into; owned by the surface.
    CDC* GetDC() { return &m_dcBuffer; }
    HDC GetHDC() const { return m_dcBuffer.m_hDC; }

protected:
    /// The palette set last; not owned.
    HPALETTE m_hPal = nullptr;
    /// The memory DC, the bitmap selected into it, and what it held before.
    CDC m_dcBuffer;
    HBITMAP m_hBitmap = nullptr;
    HBITMAP m_hOldBitmap = nullptr;

private:
    static BOOL TestPlatform();
    void ReleaseBitmap();
    BOOL CreateSection(BITMAPINFO* pBMI, HPALETTE hPal);
    BOOL CreateWinG(BITMAPINFO* pBMI, HPALETTE hPal);
    BOOL Adopt(HBITMAP hBitmap, BITMAPINFO* pBMI, void* pPixels, HPALETTE hPal);

    static BOOL m_bUseCreateDIBSection;
    static BOOL m_bUseWinG;
    static HDC(WINAPI* m_pWinGCDCProc)();
    static HBITMAP(WINAPI* m_pWinGCBProc)(HDC, const BITMAPINFO*, void**);
    static UINT(WINAPI* m_pWinGSDCTProc)(HDC, UINT, UINT, const RGBQUAD*);
    static BOOL(WINAPI* m_pWinGBBProc)(HDC, int, int, int, int, HDC, int, int);
    static BOOL(WINAPI* m_pWinGSBProc)(HDC, int, int, int, int, HDC, int, int, int, int);
};
