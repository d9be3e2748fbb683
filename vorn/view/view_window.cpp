// SPDX-License-Identifier: MIT
#include "vorn/view/view_window.h"

#include "vorn/view/detail/current_context.h"

#include <algorithm>

IMPLEMENT_DYNCREATE(CvornOGLWnd, CWnd)

BEGIN_MESSAGE_MAP(CvornOGLWnd, CWnd)
    ON_WM_CREATE()
    ON_WM_SIZE()
    ON_WM_DESTROY()
    ON_WM_LBUTTONDOWN()
    ON_WM_LBUTTONUP()
    ON_WM_MOUSEMOVE()
    ON_WM_RBUTTONDOWN()
    ON_WM_RBUTTONUP()
    ON_WM_KEYDOWN()
    ON_WM_MOUSEWHEEL()
    ON_WM_PAINT()
    ON_WM_ERASEBKGND()
    ON_WM_PALETTECHANGED()
    ON_WM_QUERYNEWPALETTE()
END_MESSAGE_MAP()

CvornOGLWnd::CvornOGLWnd() = default;

CvornOGLWnd::~CvornOGLWnd() {
    // Here the window's last messages still find this class's handlers.
    if (m_hWnd != nullptr) DestroyWindow();
    m_oglDC.Destroy();
}

// The hooks that are the application's alone.
void CvornOGLWnd::OnSetViewportSize(int) {}
void CvornOGLWnd::OnToolBarRepos() {}
void CvornOGLWnd::OnUpdate(int, int) {}
void CvornOGLWnd::OnShowMenu() {}
void CvornOGLWnd::OnPreOutput() {}
void CvornOGLWnd::OnExclude(CDC*) {}
void CvornOGLWnd::OnUpdateTextMetrics(CDC*, int) {}
void CvornOGLWnd::OnUpdateFonts() {}
void CvornOGLWnd::OnUpdateTextureInfo() {}
void CvornOGLWnd::OnBuild() {}
void CvornOGLWnd::OnUpdateMenuItem(int, CCmdUI&) {}
void CvornOGLWnd::OnMenuItem(int) {}

void CvornOGLWnd::SetUpdate(DWORD dwFlags, int bRedraw, int bOther) {
    m_dwUpdate |= dwFlags;
    OnUpdate(bRedraw, bOther);
    if (m_hWnd != nullptr && bRedraw) InvalidateRect(m_rcView, TRUE);
}

int CvornOGLWnd::CreateDCA(int nMode) {
    return CreateContext(nMode, m_rcView.Size());
}

int CvornOGLWnd::CreateContext(int nMode, CSize surface) {
    m_oglDC.Destroy();
    // The names went with their context; as long as they counted, no new ones would be made.
    m_nTextures = 0;
    m_dwUpdate |= UPD_ALL;
    OnUpdate(FALSE, FALSE);
    m_oglDC.SetRenderToDIB(nMode == 1);
    const int created =
        nMode == 1 ? m_oglDC.CreateSurface(surface.cx, surface.cy, this) : m_oglDC.Create(this, nMode == 2);
    if (!created) return 0;
    vorn::detail::ClientDC client(this);
    PrepareContext(client.get());
    return 1;
}

/// Gives a new context the view's projection, which otherwise only a change of size would.
void CvornOGLWnd::PrepareContext(CDC* pDC) {
    const vorn::detail::CurrentContext current(m_oglDC, pDC);
    if (current && !m_rcView.IsRectEmpty()) SetProjection();
}

CSize CvornOGLWnd::SetViewportSize(int cx, int cy, int bRedraw, int x, int y) {
    const CSize previous = m_rcView.Size();
    if (cx <= 0 || cy <= 0) return previous;
    m_rcClient.SetRect(x, y, x + cx, y + cy);
    if (m_bToolBar) RepositionControlBars();
    m_rcView.SetRect(x, y, x + cx, y + std::max(1, cy - m_nBottomMargin));
    m_rcViewGL.SetRect(m_rcView.left, m_rcView.bottom, m_rcView.right, m_rcView.top);
    m_userRot.OnSize(m_rcView.Width(), m_rcView.Height());
    OnSetViewportSize(bRedraw);
    if (!bRedraw) return previous;
    {
        vorn::detail::ClientDC client(this);
        const vorn::detail::CurrentContext current(m_oglDC, client.get());
        SetProjection();
    }
    SetUpdate(UPD_VIEW, TRUE, TRUE);
    return previous;
}

void CvornOGLWnd::RepositionControlBars() {
    if (m_hWnd == nullptr) return;
    CRect rest;
    RepositionBars(AFX_IDW_TOOLBAR, AFX_IDW_TOOLBAR, AFX_IDW_PANE_FIRST, reposQuery, &rest, &m_rcClient);
    RepositionBars(AFX_IDW_TOOLBAR, AFX_IDW_TOOLBAR, AFX_IDW_PANE_FIRST, reposDefault, &rest, &m_rcClient);
    OnToolBarRepos();
}

int CvornOGLWnd::OnCreate(LPCREATESTRUCT lpCreateStruct) {
    if (CWnd::OnCreate(lpCreateStruct) == -1) return -1;
    return CreateDCA(0) ? 0 : -1;
}

void CvornOGLWnd::OnSize(UINT nType, int cx, int cy) {
    CWnd::OnSize(nType, cx, cy);
    SetViewportSize(cx, cy, TRUE, 0, 0);
}

void CvornOGLWnd::OnDestroy() {
    CWnd::OnDestroy();
    {
        vorn::detail::ClientDC client(this);
        const vorn::detail::CurrentContext current(m_oglDC, client.get());
        if (current && m_nTextures > 0) ::glDeleteTextures(m_nTextures, m_auTextures);
    }
    m_nTextures = 0;
    m_oglDC.Destroy();
}

BOOL CvornOGLWnd::OnEraseBkgnd(CDC*) {
    return TRUE;
}

void CvornOGLWnd::OnPaletteChanged(CWnd* pFocusWnd) {
    if (pFocusWnd->GetSafeHwnd() != m_hWnd) m_oglDC.OnQueryNewPalette(this);
}

BOOL CvornOGLWnd::OnQueryNewPalette() {
    return m_oglDC.OnQueryNewPalette(this);
}
