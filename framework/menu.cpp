// SPDX-License-Identifier: MIT
#include "thread_state.h"

using vornafx::threadState;

IMPLEMENT_DYNCREATE(CMenu, CObject)

CMenu* CMenu::FromHandle(HMENU hMenu) {
    CMenu* menu = threadState().menus.fromHandle(hMenu, [] { return std::make_unique<CMenu>(); });
    if (menu != nullptr) menu->m_hMenu = hMenu;
    return menu;
}

CMenu* CMenu::FromHandlePermanent(HMENU hMenu) {
    return hMenu == nullptr ? nullptr : threadState().menus.permanent(hMenu);
}

void CMenu::DeleteTempMap() {
    threadState().menus.deleteTemporaries();
}

BOOL CMenu::Attach(HMENU hMenu) {
    if (hMenu == nullptr || m_hMenu != nullptr) return FALSE;
    threadState().menus.setPermanent(hMenu, this);
    m_hMenu = hMenu;
    return TRUE;
}

HMENU CMenu::Detach() {
    HMENU menu = std::exchange(m_hMenu, nullptr);
    if (menu != nullptr) threadState().menus.removePermanent(menu, this);
    return menu;
}

BOOL CMenu::LoadMenu(LPCTSTR lpszResourceName) {
    if (m_hMenu != nullptr) return FALSE;
    return Attach(::LoadMenuA(AfxFindResourceHandle(lpszResourceName, RT_MENU), lpszResourceName));
}

BOOL CMenu::DestroyMenu() {
    return m_hMenu != nullptr && ::DestroyMenu(Detach());
}

BOOL CMenu::AppendMenu(UINT nFlags, UINT_PTR nIDNewItem, const CBitmap* pBmp) {
    return ::AppendMenuA(m_hMenu, nFlags | MF_BITMAP, nIDNewItem, reinterpret_cast<LPCSTR>(pBmp->m_hObject));
}

int CMenu::GetMenuString(UINT nIDItem, CString& rString, UINT nFlags) const {
    const int length = ::GetMenuStringA(m_hMenu, nIDItem, nullptr, 0, nFlags);
    ::GetMenuStringA(m_hMenu, nIDItem, rString.GetBuffer(length), length + 1, nFlags);
    rString.ReleaseBuffer();
    return rString.GetLength();
}

BOOL CMenu::TrackPopupMenu(UINT nFlags, int x, int y, CWnd* pWnd, LPCRECT lpRect) {
    return ::TrackPopupMenu(m_hMenu, nFlags, x, y, 0, pWnd->GetSafeHwnd(), lpRect);
}

BOOL CMenu::TrackPopupMenuEx(UINT fuFlags, int x, int y, CWnd* pWnd, LPTPMPARAMS lptpm) {
    return ::TrackPopupMenuEx(m_hMenu, fuFlags, x, y, pWnd->GetSafeHwnd(), lptpm);
}
