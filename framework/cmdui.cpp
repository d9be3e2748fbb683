// SPDX-License-Identifier: MIT
#include <afxwin.h>

void CCmdUI::Enable(BOOL bOn) {
    if (m_pMenu != nullptr) {
        if (m_pSubMenu != nullptr) return;
        m_pMenu->EnableMenuItem(m_nIndex, MF_BYPOSITION | (bOn ? MF_ENABLED : MF_DISABLED | MF_GRAYED));
    } else if (m_pOther != nullptr) {
        // A disabled window must not keep the focus: the keyboard would be lost.
        if (!bOn && ::GetFocus() == m_pOther->m_hWnd)
            ::SendMessageA(::GetParent(m_pOther->m_hWnd), WM_NEXTDLGCTL, 0, FALSE);
        m_pOther->EnableWindow(bOn);
    }
    m_bEnableChanged = TRUE;
}

void CCmdUI::SetCheck(int nCheck) {
    if (m_pMenu != nullptr) {
        if (m_pSubMenu != nullptr) return;
        m_pMenu->CheckMenuItem(m_nIndex, MF_BYPOSITION | (nCheck != 0 ? MF_CHECKED : MF_UNCHECKED));
    } else if (m_pOther != nullptr && (m_pOther->SendMessage(WM_GETDLGCODE) & DLGC_BUTTON) != 0) {
        m_pOther->SendMessage(BM_SETCHECK, static_cast<WPARAM>(nCheck));
    }
}

void CCmdUI::SetRadio(BOOL bOn) {
    SetCheck(bOn ? 1 : 0);
    if (m_pMenu == nullptr || m_pSubMenu != nullptr) return;
    MENUITEMINFOA info{};
    info.cbSize = sizeof(info);
    info.fMask = MIIM_FTYPE;
    if (!m_pMenu->GetMenuItemInfo(m_nIndex, &info, TRUE)) return;
    info.fType |= MFT_RADIOCHECK;
    m_pMenu->SetMenuItemInfo(m_nIndex, &info, TRUE);
}

void CCmdUI::SetText(LPCTSTR lpszText) {
    if (m_pMenu != nullptr) {
        if (m_pSubMenu != nullptr) return;
        MENUITEMINFOA info{};
        info.cbSize = sizeof(info);
        info.fMask = MIIM_STRING;
        info.dwTypeData = const_cast<char*>(lpszText);
        m_pMenu->SetMenuItemInfo(m_nIndex, &info, TRUE);
    } else if (m_pOther != nullptr) {
        CString former;
        m_pOther->GetWindowText(former);
        if (former != lpszText) m_pOther->SetWindowText(lpszText);
    }
}

BOOL CCmdUI::DoUpdate(CCmdTarget* pTarget, BOOL bDisableIfNoHndler) {
    if (m_nID == 0 || LOWORD(m_nID) == 0xFFFF) return TRUE;
    m_bEnableChanged = FALSE;
    BOOL updated = pTarget->OnCmdMsg(m_nID, static_cast<int>(CN_UPDATE_COMMAND_UI), this, nullptr);
    if (bDisableIfNoHndler && !m_bEnableChanged) {
        AFX_CMDHANDLERINFO handler{};
        Enable(pTarget->OnCmdMsg(m_nID, CN_COMMAND, this, &handler));
    }
    return updated;
}
