// SPDX-License-Identifier: MIT
#pragma once

#include "vorn/api.h"

#include <afxwin.h>

class CvornCopyInfo;

/// An off-screen bitmap with a memory DC of its own, into which a view draws a copy of itself, and which then
/// goes to the clipboard or into a file.
///
///     CvornCopyRender render;
///     if (render.Setup(&copyInfo, this, nullptr)) {
///         PrintScene(render.GetDC(), CRect(CPoint(0, 0), render.GetDPSize()), 0);
///         render.ExportPNG("chart.png");
///     }
///     render.Destroy(TRUE);
///
/// Between a successful `Setup` and `Destroy` the copies may be repeated. `Setup` again only after `Destroy`.
class VORN_API CvornCopyRender : public CBitmap {
public:
    CvornCopyRender() = default;
    ~CvornCopyRender() override;

    /// Prepares a copy as the settings say, compatible with the window. The picture is this object's own
    /// bitmap, or `pBitmap` when given (made there when it has no handle yet): then `Copy` and the exports,
    /// which work on the own bitmap, have nothing to do. For the metafile format only the size is worked out.
    /// Returns 0 on failure, with what was made so far left to `Destroy`.
    BOOL Setup(CvornCopyInfo* pInfo, CWnd* pWnd, CBitmap* pBitmap = nullptr);
    /// Prepares a bitmap of a size in pixels, compatible with the window; a monochrome one without a window.
    BOOL Setup(CSize size, CWnd* pWnd);

    /// Puts the picture on the clipboard, as CF_DIB and CF_BITMAP. The clipboard takes the bitmap; the object
    /// goes on with a copy of it. An occupied clipboard stays as it was.
    void Copy();

    /// Write the picture to a file. A file that cannot be written stays as it was, without a word.
    void ExportBMP(const char* pszFile);
    void ExportJPEG(const char* pszFile);
    void ExportPNG(const char* pszFile);
    /// The picture, without border, in PNG coding despite the name. The caller gives the buffer of `nSize`
    /// bytes back with `free`. Null, with a size of 0, on failure.
    BYTE* ExportJPEGBuffer(DWORD& nSize);

    /// Leaves the own bitmap selected in the DC, which is what a picture on that DC amounts to. It must not
    /// be selected into `GetDC()` any more: call `Destroy(FALSE)` before.
    void Draw(CDC* pDC);

    /// Releases the memory DC and, when asked, the bitmap.
    void Destroy(BOOL bDeleteBitmap);

    /// Where to draw; it has no handle before `Setup` and for the metafile format.
    CDC* GetDC() { return &m_dc; }
    /// The size of the copy in pixels, as the settings gave it.
    CSize GetDPSize() const { return m_sizeDP; }

protected:
    /// A packed DIB of the bitmap in movable global memory, owned by the caller; null on failure. A bit count
    /// of 0 takes the bitmap's own; a null palette is the default one.
    HGLOBAL dibFromBitmap(HBITMAP hBitmap, DWORD dwCompression, WORD wBitCount, HPALETTE hPal);

    /// The memory DC, and what SaveDC gave for it before and after the bitmap was selected; 0 without one.
    CDC m_dc;
    int m_nSavedDC = 0;
    int m_nSavedDCBitmap = 0;
    CSize m_sizeDimension = {0, 0}; ///< In 0.1 mm.
    /// A border belongs round the copy.
    BOOL m_bBorder = FALSE;
    /// The size in pixels.
    CSize m_sizeDP = {0, 0};

private:
    BOOL CreateMemoryDC(HDC hdcReference);
    void SelectBitmap(CBitmap* pBitmap);
    CSize SetDimension(CBitmap* pBitmap, CSize size);
    void DrawBorder();
    void GiveToClipboard();
    HGDIOBJ ReplacedBitmap() const;
    void Export(const char* pszFile, int nFormat);

    HGDIOBJ m_hOldBitmap = nullptr; ///< What the memory DC held at first.
};
