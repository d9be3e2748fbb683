// SPDX-License-Identifier: MIT
#include "vorn/bitmaps/flicker_free_window.h"

#include <algorithm>
#include <memory>

namespace {

/// Plain pixels for whatever draws: text mapping mode, transparent background, no origin.
void setPlain(CDC& dc) {
    dc.SetMapMode(MM_TEXT);
    dc.SetBkMode(TRANSPARENT);
    dc.SetWindowOrg(0, 0);
    dc.SetViewportOrg(0, 0);
}

} // namespace

IMPLEMENT_DYNCREATE(CvornDCWnd, CWnd)

BEGIN_MESSAGE_MAP(CvornDCWnd, CWnd)
    ON_WM_PAINT()
    ON_WM_ERASEBKGND()
END_MESSAGE_MAP()

DWORD CvornDCWnd::s_dwDefStyle = WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS;
CRect CvornDCWnd::s_rcDefRect(0, 0, 10, 10);
CString CvornDCWnd::s_strDefWindowName("Flicker Free Window");
CString CvornDCWnd::s_strDefClass;

CvornDCWnd::~CvornDCWnd() {
    delete[] m_pExcludeRects;
}

BOOL CvornDCWnd::Create(CWnd* pParent, UINT nID) {
    AFX_MANAGE_STATE(AfxGetStaticModuleState());
    if (s_strDefClass.IsEmpty()) {
        s_strDefClass =
            AfxRegisterWndClass(CS_DBLCLKS | CS_PARENTDC | CS_BYTEALIGNCLIENT | CS_BYTEALIGNWINDOW,
                                ::LoadCursor(nullptr, IDC_ARROW));
    }
    return CWnd::Create(s_strDefClass, s_strDefWindowName, s_dwDefStyle, s_rcDefRect, pParent, nID);
}

BOOL CvornDCWnd::Create(CString strClass, CWnd* pParent, UINT nID) {
    AFX_MANAGE_STATE(AfxGetStaticModuleState());
    return CWnd::Create(strClass, s_strDefWindowName, s_dwDefStyle, s_rcDefRect, pParent, nID);
}

void CvornDCWnd::Update(CDC* pDC, CRect& rect, RECT* pExclude, int nExclude) {
    AFX_MANAGE_STATE(AfxGetStaticModuleState());
    m_pDC = pDC;
    if (pDC == nullptr) return;
    if (m_hWnd != nullptr) GetClientRect(&rect);
    int saved = pDC->SaveDC();
    if (saved == 0) return;
    setPlain(*pDC);
    m_rcClient = rect;
    PaintBuffered(*pDC, rect, pExclude, nExclude);
    pDC->RestoreDC(saved);
}

void CvornDCWnd::PaintBuffered(CDC& dc, const CRect& rect, RECT* pExclude, int nExclude) {
    CDC memory;
    int saved = memory.CreateCompatibleDC(&dc) ? memory.SaveDC() : 0;
    if (saved == 0) return;
    m_bitmap.DeleteObject();
    if (m_bitmap.CreateCompatibleBitmap(&dc, rect.Width(), rect.Height())) {
        memory.SelectObject(&m_bitmap);
        setPlain(memory);
        ClipParentRectList(&memory, pExclude, nExclude);
        Draw(&memory);
        dc.BitBlt(rect.left, rect.top, rect.Width(), rect.Height(), &memory, 0, 0, SRCCOPY);
    }
    memory.RestoreDC(saved);
    m_bitmap.DeleteObject();
}

void CvornDCWnd::ClipParentRectList(CDC* pDC, RECT* pRects, int n) {
    // The given list may be the stored one: it is copied before that goes.
    std::unique_ptr<RECT[]> rects;
    if (n > 0 && pRects != nullptr) {
        rects = std::make_unique<RECT[]>(static_cast<size_t>(n));
        std::copy_n(pRects, n, rects.get());
    }
    delete[] m_pExcludeRects;
    m_nExcludeRects = rects ? n : 0;
    m_pExcludeRects = rects.release();
    for (int i = 0; i < m_nExcludeRects; ++i)
        pDC->ExcludeClipRect(&m_pExcludeRects[i]);
}

void CvornDCWnd::Draw(CDC*) {}

void CvornDCWnd::OnPaint() {
    CPaintDC dc(this);
    CRect rect(0, 0, 0, 0);
    Update(&dc, rect, m_pExcludeRects, m_nExcludeRects);
}

BOOL CvornDCWnd::OnEraseBkgnd(CDC*) {
    return TRUE;
}
