// SPDX-License-Identifier: MIT
#include <afxwin.h>

// The handlers of CWnd: each does what the window would do without it.

int CWnd::OnCreate(LPCREATESTRUCT) {
    return static_cast<int>(Default());
}
void CWnd::OnSize(UINT, int, int) {
    Default();
}
void CWnd::OnMove(int, int) {
    Default();
}
void CWnd::OnShowWindow(BOOL, UINT) {
    Default();
}
void CWnd::OnEnable(BOOL) {
    Default();
}
void CWnd::OnActivate(UINT, CWnd*, BOOL) {
    Default();
}
void CWnd::OnSetFocus(CWnd*) {
    Default();
}
void CWnd::OnKillFocus(CWnd*) {
    Default();
}
void CWnd::OnCaptureChanged(CWnd*) {
    Default();
}
void CWnd::OnGetMinMaxInfo(MINMAXINFO*) {
    Default();
}
void CWnd::OnTimer(UINT_PTR) {
    Default();
}
void CWnd::OnSysCommand(UINT, LPARAM) {
    Default();
}
BOOL CWnd::OnEraseBkgnd(CDC*) {
    return static_cast<BOOL>(Default());
}
HBRUSH CWnd::OnCtlColor(CDC*, CWnd*, UINT) {
    return reinterpret_cast<HBRUSH>(Default());
}
void CWnd::OnPaletteChanged(CWnd*) {
    Default();
}
void CWnd::OnKeyDown(UINT, UINT, UINT) {
    Default();
}
void CWnd::OnKeyUp(UINT, UINT, UINT) {
    Default();
}
void CWnd::OnChar(UINT, UINT, UINT) {
    Default();
}
void CWnd::OnMouseMove(UINT, CPoint) {
    Default();
}
void CWnd::OnLButtonDown(UINT, CPoint) {
    Default();
}
void CWnd::OnLButtonUp(UINT, CPoint) {
    Default();
}
void CWnd::OnLButtonDblClk(UINT, CPoint) {
    Default();
}
void CWnd::OnRButtonDown(UINT, CPoint) {
    Default();
}
void CWnd::OnRButtonUp(UINT, CPoint) {
    Default();
}
void CWnd::OnRButtonDblClk(UINT, CPoint) {
    Default();
}
void CWnd::OnMButtonDown(UINT, CPoint) {
    Default();
}
void CWnd::OnMButtonUp(UINT, CPoint) {
    Default();
}
void CWnd::OnMButtonDblClk(UINT, CPoint) {
    Default();
}
BOOL CWnd::OnMouseWheel(UINT, short, CPoint) {
    return static_cast<BOOL>(Default());
}
BOOL CWnd::OnSetCursor(CWnd*, UINT, UINT) {
    return static_cast<BOOL>(Default());
}
void CWnd::OnDropFiles(HDROP) {
    Default();
}
void CWnd::OnContextMenu(CWnd*, CPoint) {
    Default();
}
void CWnd::OnInitMenuPopup(CMenu*, UINT, BOOL) {
    Default();
}
void CWnd::OnHScroll(UINT, UINT, CScrollBar*) {
    Default();
}
void CWnd::OnVScroll(UINT, UINT, CScrollBar*) {
    Default();
}
