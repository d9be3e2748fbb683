// SPDX-License-Identifier: MIT
#pragma once

#include "vorn/api.h"

#include <afxwin.h>
#include <memory>
#include <ocidl.h>

class CvornImageCodec;

/// One picture from a file, archive, stream or resource, drawn into a rectangle with alignment, aspect-ratio
/// and background rules. JPEG, PNG, GIF, BMP, TIFF and icons load; metafiles do not; broken and hostile files
/// fail. The system's OLE picture loader comes first, then the image codec, which also takes PNG files and
/// icons with half-transparent pixels, unknown to the former. Below, an OLE picture is one that the OLE
/// loader read, a codec picture one of the codec. Copies share the picture.
///
///     CvornImageX image;
///     if (image.Load("logo.png")) image.Render(&dc, FALSE, RGB(255, 255, 255), rcClient, nullptr);
class VORN_API CvornImageX {
public:
    CvornImageX() = default;
    /// A copy shares the picture, whichever loader read it.
    CvornImageX(const CvornImageX& other);
    CvornImageX& operator=(const CvornImageX& other);
    ~CvornImageX();

    /// Each gives up the current picture first and returns 0, with nothing open, on failure. An empty or null
    /// name closes the picture and counts as success. The OLE loader alone serves all but the first; it reads
    /// the source to its end.
    BOOL Load(const char* pszPath);
    BOOL Load(CFile& file);
    BOOL Load(CArchive& ar);
    BOOL Load(IStream* pStream);
    /// A bitmap resource of a module, of the library's own for null.
    BOOL Load(UINT nID, HINSTANCE hInst);

    /// Gives up the picture and forgets the file's name.
    void Close();
    /// Gives up the picture only.
    void Free();
    BOOL IsOpen() const { return m_bOpen; }

    /// The OLE picture, still owned by this object; null without one.
    operator IPicture*() const { return m_pPicture; }
    /// Size of an OLE picture in HIMETRIC units; 0 without one. The argument is not used.
    float GetWidth(int nUnused) const;
    float GetHeight(int nUnused) const;
    /// The same together, keeping the results of the queries.
    void GetHIMETRICSize(long& cx, long& cy) const;
    /// Size in pixels: a codec picture's own, an OLE picture's as the DC (or for null the screen) converts
    /// it. (0, 0) when nothing is open.
    CSize GetImageSize(CDC* pDC) const;

    /// 0 stretches to the rectangle's width, 2 centres, 3 aligns right, any other value left.
    int GetAlignH() const { return m_nAlignH; }
    void SetAlignH(int nAlign) { m_nAlignH = nAlign; }
    /// 0 stretches to the rectangle's height, 2 centres, 4 aligns at the bottom, any other value at the top.
    int GetAlignV() const { return m_nAlignV; }
    void SetAlignV(int nAlign) { m_nAlignV = nAlign; }
    /// Whether the proportions are kept when both alignments are 0.
    BOOL GetMaintainAspectRatio() const { return m_bMaintainAspect; }
    void SetMaintainAspectRatio(BOOL bMaintain) { m_bMaintainAspect = bMaintain; }

    /// Name of the file that was loaded by name, without its folder; and its whole path as given.
    CString GetName() const { return GetFileFromPathName(m_strPathName); }
    CString GetPathName() const { return m_strPathName; }

    /// Where `Render` places the picture in `rc`, in pixels: (0, 0, 1, 1) when there is nothing to place. A
    /// picture fitted by its proportions is measured from (0, 0), not from the corner of `rc`.
    CRect GetDrawRect(CDC* pDC, CRect rc) const;
    /// Draws the picture in `rc` over what the DC holds and fills the margins around it with `clrBack`. With
    /// nothing open, `bFill` fills `rc`. `pBounds` is handed to an OLE picture and may be null. Returns 1.
    BOOL Render(CDC* pDC, BOOL bFill, COLORREF clrBack, CRect rc, const RECT* pBounds) const;
    /// Draws the picture at the top-left corner of `rc`, as large as its proportions allow. Returns 1.
    BOOL Render2(CDC* pDC, int nUnused, DWORD dwUnused, CRect rc, const RECT* pBounds) const;

protected:
    /// The text after the last backslash; the whole text when there is none.
    static CString GetFileFromPathName(const char* pszPath);

    /// The codec picture; null for an OLE picture and when nothing is open.
    std::shared_ptr<const CvornImageCodec> m_pImage;
    /// The OLE picture, of which this object holds one reference; null for a codec picture.
    IPicture* m_pPicture = nullptr;
    /// Result of the last size query of `Render` or `GetHIMETRICSize`.
    mutable HRESULT m_hrLastQuery = S_OK;
    /// What the functions of these names tell.
    BOOL m_bOpen = FALSE;
    int m_nAlignV = 0;
    int m_nAlignH = 0;
    CString m_strPathName;
    BOOL m_bMaintainAspect = TRUE;

private:
    BOOL LoadOle(IStream* pStream, bool bLeaveBlended);
    BOOL LoadOle(CFile& file, bool bLeaveBlended);
    BOOL LoadCodec(const char* pszPath);
    bool Place(CDC* pDC, const CRect& rc, CRect& rcPlaced) const;
    void RenderOle(CDC* pDC, const CRect& rc, const RECT* pBounds) const;
};
