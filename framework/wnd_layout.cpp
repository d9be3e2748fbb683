// SPDX-License-Identifier: MIT
#include <afxwin.h>

void CWnd::CalcWindowRect(LPRECT lpClientRect, UINT nAdjustType) {
    DWORD extended = GetExStyle();
    if (nAdjustType == adjustBorder) extended &= ~DWORD{WS_EX_CLIENTEDGE};
    ::AdjustWindowRectEx(lpClientRect, GetStyle(), FALSE, extended);
}

void CWnd::RepositionBars(UINT nIDFirst, UINT nIDLast, UINT nIDLeftOver, UINT nFlag, LPRECT lpRectParam,
                          LPCRECT lpRectClient, BOOL bStretch) {
    AFX_SIZEPARENTPARAMS layout{};
    layout.bStretch = bStretch;
    if (lpRectClient != nullptr)
        layout.rect = *lpRectClient;
    else
        GetClientRect(&layout.rect);
    const bool query = nFlag == reposQuery;
    if (!query) layout.hDWP = ::BeginDeferWindowPos(8);

    HWND leftOver = nullptr;
    for (HWND child = ::GetTopWindow(m_hWnd); child != nullptr; child = ::GetWindow(child, GW_HWNDNEXT)) {
        const auto id = static_cast<UINT>(::GetDlgCtrlID(child));
        if (nIDLeftOver != 0 && id == nIDLeftOver)
            leftOver = child;
        else if (id >= nIDFirst && id <= nIDLast)
            ::SendMessageA(child, WM_SIZEPARENT, 0, reinterpret_cast<LPARAM>(&layout));
    }
    if (query) {
        if (lpRectParam == nullptr) return;
        *lpRectParam = bStretch ? layout.rect : RECT{0, 0, layout.sizeTotal.cx, layout.sizeTotal.cy};
        return;
    }
    if (leftOver != nullptr) {
        CRect rest(layout.rect);
        if (nFlag == reposExtra && lpRectParam != nullptr) rest.DeflateRect(lpRectParam);
        FromHandle(leftOver)->CalcWindowRect(&rest);
        if (layout.hDWP != nullptr)
            layout.hDWP = ::DeferWindowPos(layout.hDWP, leftOver, nullptr, rest.left, rest.top, rest.Width(),
                                           rest.Height(), SWP_NOACTIVATE | SWP_NOZORDER);
    }
    if (layout.hDWP != nullptr) ::EndDeferWindowPos(layout.hDWP);
}

void CWnd::UpdateDialogControls(CCmdTarget* pTarget, BOOL bDisableIfNoHndler) {
    for (HWND child = ::GetTopWindow(m_hWnd); child != nullptr; child = ::GetWindow(child, GW_HWNDNEXT)) {
        CCmdUI update;
        update.m_nID = LOWORD(::GetDlgCtrlID(child));
        update.m_pOther = FromHandle(child);
        // Only what looks like a command, a push button, is disabled for want of a handler.
        const LRESULT code = update.m_pOther->SendMessage(WM_GETDLGCODE);
        const bool button = (code & (DLGC_DEFPUSHBUTTON | DLGC_UNDEFPUSHBUTTON)) != 0;
        update.DoUpdate(pTarget, bDisableIfNoHndler && button);
    }
}
