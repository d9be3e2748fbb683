// SPDX-License-Identifier: MIT
#include <afxwin.h>

IMPLEMENT_DYNCREATE(CFrameWnd, CWnd)

BEGIN_MESSAGE_MAP(CFrameWnd, CWnd)
    ON_WM_SIZE()
    ON_WM_INITMENUPOPUP()
END_MESSAGE_MAP()

const CRect CFrameWnd::rectDefault(CW_USEDEFAULT, CW_USEDEFAULT, 0, 0);

BOOL CFrameWnd::Create(LPCTSTR lpszClassName, LPCTSTR lpszWindowName, DWORD dwStyle, const RECT& rect,
                       CWnd* pParentWnd, LPCTSTR lpszMenuName, DWORD dwExStyle, CCreateContext* pContext) {
    HMENU menu = nullptr;
    if (lpszMenuName != nullptr) {
        menu = ::LoadMenuA(AfxFindResourceHandle(lpszMenuName, RT_MENU), lpszMenuName);
        if (menu == nullptr) {
            PostNcDestroy();
            return FALSE;
        }
    }
    const bool placed = rect.left != CW_USEDEFAULT;
    const BOOL created =
        CreateEx(dwExStyle, lpszClassName, lpszWindowName, dwStyle, rect.left, rect.top,
                 placed ? rect.right - rect.left : CW_USEDEFAULT,
                 placed ? rect.bottom - rect.top : CW_USEDEFAULT, pParentWnd->GetSafeHwnd(), menu, pContext);
    if (!created && menu != nullptr) ::DestroyMenu(menu);
    return created;
}

BOOL CFrameWnd::LoadAccelTable(LPCTSTR lpszResourceName) {
    m_hAccelTable =
        ::LoadAcceleratorsA(AfxFindResourceHandle(lpszResourceName, RT_ACCELERATOR), lpszResourceName);
    return m_hAccelTable != nullptr;
}

BOOL CFrameWnd::PreCreateWindow(CREATESTRUCT& cs) {
    if (cs.lpszClass == nullptr)
        cs.lpszClass = AfxRegisterWndClass(CS_DBLCLKS, ::LoadCursorA(nullptr, IDC_ARROW),
                                           reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1),
                                           ::LoadIconA(nullptr, IDI_APPLICATION));
    return TRUE;
}

BOOL CFrameWnd::PreTranslateMessage(MSG* pMsg) {
    if (CWnd::PreTranslateMessage(pMsg)) return TRUE;
    const bool key = pMsg->message >= WM_KEYFIRST && pMsg->message <= WM_KEYLAST;
    return key && m_hAccelTable != nullptr && ::TranslateAcceleratorA(m_hWnd, m_hAccelTable, pMsg);
}

BOOL CFrameWnd::OnCmdMsg(UINT nID, int nCode, void* pExtra, AFX_CMDHANDLERINFO* pHandlerInfo) {
    if (CWnd::OnCmdMsg(nID, nCode, pExtra, pHandlerInfo)) return TRUE;
    CWinApp* app = AfxGetApp();
    return app != nullptr && app->OnCmdMsg(nID, nCode, pExtra, pHandlerInfo);
}

void CFrameWnd::RecalcLayout(BOOL) {
    RepositionBars(0, 0xFFFF, AFX_IDW_PANE_FIRST);
}

void CFrameWnd::OnSize(UINT nType, int cx, int cy) {
    CWnd::OnSize(nType, cx, cy);
    if (nType != SIZE_MINIMIZED) RecalcLayout();
}

void CFrameWnd::OnInitMenuPopup(CMenu* pPopupMenu, UINT, BOOL bSysMenu) {
    if (bSysMenu || pPopupMenu == nullptr) return;
    CCmdUI update;
    update.m_pMenu = pPopupMenu;
    update.m_nIndexMax = pPopupMenu->GetMenuItemCount();
    for (update.m_nIndex = 0; update.m_nIndex < update.m_nIndexMax; ++update.m_nIndex) {
        const int position = static_cast<int>(update.m_nIndex);
        update.m_nID = pPopupMenu->GetMenuItemID(position);
        update.m_pSubMenu = nullptr;
        if (update.m_nID == static_cast<UINT>(-1)) {
            // A popup follows the command of its first item.
            update.m_pSubMenu = pPopupMenu->GetSubMenu(position);
            update.m_nID = update.m_pSubMenu == nullptr ? 0 : update.m_pSubMenu->GetMenuItemID(0);
            if (update.m_nID == 0 || update.m_nID == static_cast<UINT>(-1)) continue;
            update.DoUpdate(this, FALSE);
        } else {
            // Menu bars that others put in may have ids of the system.
            update.DoUpdate(this, m_bAutoMenuEnable && update.m_nID < 0xF000);
        }
        // A handler may have put items in or taken some out.
        update.m_nIndexMax = pPopupMenu->GetMenuItemCount();
    }
}
