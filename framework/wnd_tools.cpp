// SPDX-License-Identifier: MIT
#include <afxwin.h>
#include <algorithm>

// Operations of CWnd that are more than a call of the platform's function.

namespace {

BOOL modifyLong(HWND window, int index, DWORD remove, DWORD add, UINT positionFlags) {
    const auto former = static_cast<DWORD>(::GetWindowLongPtrA(window, index));
    const DWORD changed = (former & ~remove) | add;
    if (changed == former) return FALSE;
    ::SetWindowLongPtrA(window, index, static_cast<LONG_PTR>(changed));
    if (positionFlags != 0)
        ::SetWindowPos(window, nullptr, 0, 0, 0, 0,
                       SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE | positionFlags);
    return TRUE;
}

} // namespace

BOOL CWnd::ModifyStyle(HWND hWnd, DWORD dwRemove, DWORD dwAdd, UINT nFlags) {
    return modifyLong(hWnd, GWL_STYLE, dwRemove, dwAdd, nFlags);
}

BOOL CWnd::ModifyStyleEx(HWND hWnd, DWORD dwRemove, DWORD dwAdd, UINT nFlags) {
    return modifyLong(hWnd, GWL_EXSTYLE, dwRemove, dwAdd, nFlags);
}

BOOL CWnd::ModifyStyle(DWORD dwRemove, DWORD dwAdd, UINT nFlags) {
    return modifyLong(m_hWnd, GWL_STYLE, dwRemove, dwAdd, nFlags);
}

BOOL CWnd::ModifyStyleEx(DWORD dwRemove, DWORD dwAdd, UINT nFlags) {
    return modifyLong(m_hWnd, GWL_EXSTYLE, dwRemove, dwAdd, nFlags);
}

void CWnd::ClientToScreen(LPRECT lpRect) const {
    ::MapWindowPoints(m_hWnd, nullptr, reinterpret_cast<LPPOINT>(lpRect), 2);
}

void CWnd::ScreenToClient(LPRECT lpRect) const {
    ::MapWindowPoints(nullptr, m_hWnd, reinterpret_cast<LPPOINT>(lpRect), 2);
}

void CWnd::CenterWindow(CWnd* pAlternateOwner) {
    const bool child = (GetStyle() & WS_CHILD) != 0;
    HWND over = HandleOf(pAlternateOwner);
    if (over == nullptr) over = child ? ::GetParent(m_hWnd) : ::GetWindow(m_hWnd, GW_OWNER);
    if (over != nullptr && (!::IsWindowVisible(over) || ::IsIconic(over)) && !child) over = nullptr;

    // Everything in the coordinates that SetWindowPos wants: the screen's, or the parent's client area's.
    CRect area, middle, own;
    GetWindowRect(&own);
    if (child) {
        HWND parent = ::GetParent(m_hWnd);
        ::GetClientRect(parent, &area);
        ::GetClientRect(over, &middle);
        ::MapWindowPoints(over, parent, reinterpret_cast<LPPOINT>(&middle), 2);
    } else {
        MONITORINFO monitor{};
        monitor.cbSize = sizeof(monitor);
        ::GetMonitorInfoA(::MonitorFromWindow(over != nullptr ? over : m_hWnd, MONITOR_DEFAULTTOPRIMARY),
                          &monitor);
        area = monitor.rcWork;
        middle = area;
        if (over != nullptr) ::GetWindowRect(over, &middle);
    }
    int x = middle.CenterPoint().x - own.Width() / 2;
    int y = middle.CenterPoint().y - own.Height() / 2;
    x = std::max<int>(area.left, std::min<int>(x, area.right - own.Width()));
    y = std::max<int>(area.top, std::min<int>(y, area.bottom - own.Height()));
    SetWindowPos(nullptr, x, y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

HICON CWnd::SetIcon(HICON hIcon, BOOL bBigIcon) {
    return reinterpret_cast<HICON>(
        SendMessage(WM_SETICON, static_cast<WPARAM>(bBigIcon), reinterpret_cast<LPARAM>(hIcon)));
}

// ---- text

void CWnd::GetWindowText(CString& rString) const {
    const int length = ::GetWindowTextLengthA(m_hWnd);
    ::GetWindowTextA(m_hWnd, rString.GetBuffer(length), length + 1);
    rString.ReleaseBuffer();
}

int CWnd::GetDlgItemText(int nID, CString& rString) const {
    rString.Empty();
    if (HWND item = ::GetDlgItem(m_hWnd, nID)) FromHandle(item)->GetWindowText(rString);
    return rString.GetLength();
}

void CWnd::SetFont(CFont* pFont, BOOL bRedraw) {
    SendMessage(WM_SETFONT, reinterpret_cast<WPARAM>(pFont == nullptr ? nullptr : HFONT(*pFont)), bRedraw);
}

CFont* CWnd::GetFont() const {
    return CFont::FromHandle(reinterpret_cast<HFONT>(SendMessage(WM_GETFONT)));
}

int CWnd::MessageBox(LPCTSTR lpszText, LPCTSTR lpszCaption, UINT nType) {
    return ::MessageBoxA(this == nullptr ? nullptr : m_hWnd, lpszText,
                         lpszCaption == nullptr ? AfxGetAppName() : lpszCaption, nType);
}

// ---- relatives

CWnd* CWnd::GetTopLevelParent() const {
    HWND top = m_hWnd;
    for (HWND next = top; next != nullptr; next = ::GetParent(next))
        top = next;
    return FromHandle(top);
}

CFrameWnd* CWnd::GetParentFrame() const {
    for (HWND next = ::GetParent(m_hWnd); next != nullptr; next = ::GetParent(next)) {
        CWnd* window = FromHandlePermanent(next);
        if (window != nullptr && window->IsFrameWnd()) return static_cast<CFrameWnd*>(window);
    }
    return nullptr;
}

CFrameWnd* CWnd::GetTopLevelFrame() const {
    CWnd* self = FromHandlePermanent(m_hWnd);
    CFrameWnd* top = self != nullptr && self->IsFrameWnd() ? static_cast<CFrameWnd*>(self) : GetParentFrame();
    if (top == nullptr) return nullptr;
    while (CFrameWnd* next = top->GetParentFrame())
        top = next;
    return top;
}

CWnd* CWnd::GetDescendantWindow(int nID, BOOL bOnlyPerm) const {
    if (HWND item = ::GetDlgItem(m_hWnd, nID)) {
        CWnd* found = bOnlyPerm ? FromHandlePermanent(item) : FromHandle(item);
        if (found != nullptr) return found;
    }
    for (HWND child = ::GetTopWindow(m_hWnd); child != nullptr; child = ::GetWindow(child, GW_HWNDNEXT)) {
        if (CWnd* found = FromHandle(child)->GetDescendantWindow(nID, bOnlyPerm)) return found;
    }
    return nullptr;
}

void CWnd::SendMessageToDescendants(UINT message, WPARAM wParam, LPARAM lParam, BOOL bDeep, BOOL bOnlyPerm) {
    HWND next = nullptr;
    for (HWND child = ::GetTopWindow(m_hWnd); child != nullptr; child = next) {
        next = ::GetWindow(child, GW_HWNDNEXT); // the message may end the child
        CWnd* permanent = FromHandlePermanent(child);
        if (bDeep && ::GetTopWindow(child) != nullptr)
            FromHandle(child)->SendMessageToDescendants(message, wParam, lParam, bDeep, bOnlyPerm);
        if (permanent != nullptr || !bOnlyPerm) ::SendMessageA(child, message, wParam, lParam);
    }
}

int CWnd::GetCheckedRadioButton(int nIDFirst, int nIDLast) const {
    for (int id = nIDFirst; id <= nIDLast; ++id) {
        if (::IsDlgButtonChecked(m_hWnd, id) != 0) return id;
    }
    return 0;
}

// ---- drawing and scrolling

void CWnd::InvalidateRgn(CRgn* pRgn, BOOL bErase) {
    ::InvalidateRgn(m_hWnd, pRgn == nullptr ? nullptr : HRGN(*pRgn), bErase);
}

BOOL CWnd::RedrawWindow(LPCRECT lpRectUpdate, CRgn* prgnUpdate, UINT flags) {
    return ::RedrawWindow(m_hWnd, lpRectUpdate, prgnUpdate == nullptr ? nullptr : HRGN(*prgnUpdate), flags);
}

void CWnd::Print(CDC* pDC, DWORD dwFlags) const {
    SendMessage(WM_PRINT, reinterpret_cast<WPARAM>(pDC->GetSafeHdc()), static_cast<LPARAM>(dwFlags));
}

BOOL CWnd::SetScrollInfo(int nBar, LPSCROLLINFO lpScrollInfo, BOOL bRedraw) {
    lpScrollInfo->cbSize = sizeof(*lpScrollInfo);
    ::SetScrollInfo(m_hWnd, nBar, lpScrollInfo, bRedraw);
    return TRUE;
}

BOOL CWnd::GetScrollInfo(int nBar, LPSCROLLINFO lpScrollInfo, UINT nMask) {
    lpScrollInfo->cbSize = sizeof(*lpScrollInfo);
    lpScrollInfo->fMask |= nMask;
    return ::GetScrollInfo(m_hWnd, nBar, lpScrollInfo);
}

// ---- queued messages

BOOL CWnd::PreTranslateMessage(MSG*) {
    return FALSE;
}

BOOL CWnd::WalkPreTranslateTree(HWND hWndStop, MSG* pMsg) {
    for (HWND window = pMsg->hwnd; window != nullptr; window = ::GetParent(window)) {
        CWnd* object = FromHandlePermanent(window);
        if (object != nullptr && object->PreTranslateMessage(pMsg)) return TRUE;
        if (window == hWndStop) break;
    }
    return FALSE;
}

BOOL CWnd::PreTranslateInput(LPMSG lpMsg) {
    const UINT message = lpMsg->message;
    const bool key = message >= WM_KEYFIRST && message <= WM_KEYLAST;
    const bool mouse = message >= WM_MOUSEFIRST && message <= WM_MOUSELAST;
    return (key || mouse) && IsDialogMessage(lpMsg);
}

BOOL CWnd::IsDialogMessage(LPMSG lpMsg) {
    return ::IsDialogMessageA(m_hWnd, lpMsg);
}
