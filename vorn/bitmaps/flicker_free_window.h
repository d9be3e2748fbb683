// SPDX-License-Identifier: MIT
#pragma once

#include "vorn/api.h"

#include <afxwin.h>

/// A child window that paints through an off-screen bitmap and therefore never flickers. Derive from it and
/// override `Draw`; the background is never erased, so `Draw` covers the whole client area.
class VORN_API CvornDCWnd : public CWnd {
    DECLARE_DYNCREATE(CvornDCWnd)

public:
    CvornDCWnd() = default;
    ~CvornDCWnd() override;

    /// Creates the window as a child of `pParent` with the default style, place and name and the library's
    /// own window class, which is registered on first use. Returns 0 on failure.
    virtual BOOL Create(CWnd* pParent, UINT nID);
    /// The same with the caller's window class.
    virtual BOOL Create(CString strClass, CWnd* pParent, UINT nID);

    /// Paints the window on `pDC` through an off-screen bitmap. `rect`, in pixels of `pDC`, is replaced by
    /// the client rectangle when the window exists. The `nExclude` rectangles at `pExclude`, in pixels of the
    /// off-screen bitmap, are left out of the drawing now and on later paints (they are copied). Nothing is
    /// drawn when the bitmap cannot be made; the DC's state is restored in any case.
    void Update(CDC* pDC, CRect& rect, RECT* pExclude, int nExclude);

    /// Style, place in the parent and name of windows that Create makes from now on.
    static DWORD s_dwDefStyle;
    static CRect s_rcDefRect;
    static CString s_strDefWindowName;
    /// Name of the library's window class; empty until the first `Create`.
    static CString s_strDefClass;

protected:
    /// Called for each paint with the off-screen DC (text mapping mode, transparent background, origin at the
    /// top-left corner of the painted area). The base does nothing.
    virtual void Draw(CDC* pDC);

    /// Paints through Update, and answers that the background needs no erasing.
    afx_msg void OnPaint();
    afx_msg BOOL OnEraseBkgnd(CDC* pDC);
    DECLARE_MESSAGE_MAP()

    /// The rectangle of the last Update, the DC that it painted on and the off-screen bitmap.
    CRect m_rcClient = CRect(0, 0, 0, 0);
    CDC* m_pDC = nullptr;
    CBitmap m_bitmap;
    /// The copied rectangles that Update was given; owned.
    RECT* m_pExcludeRects = nullptr;
    int m_nExcludeRects = 0;

private:
    void PaintBuffered(CDC& dc, const CRect& rect, RECT* pExclude, int nExclude);
    void ClipParentRectList(CDC* pDC, RECT* pRects, int n);
};
