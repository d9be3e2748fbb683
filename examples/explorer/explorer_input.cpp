// SPDX-License-Identifier: MIT
// What mouse and keys do in the chart window: an overlay's, the chart's, or a command.
#include "explorer_menu.h"
#include "explorer_view.h"

#include <utility>

BEGIN_MESSAGE_MAP(CExplorerView, CvornOGLWnd)
    ON_WM_KEYDOWN()
    ON_WM_LBUTTONDOWN()
    ON_WM_LBUTTONUP()
    ON_WM_MOUSEMOVE()
    ON_WM_RBUTTONDOWN()
    ON_WM_MOUSEWHEEL()
    ON_MESSAGE(WM_ROW_COLOUR, &CExplorerView::OnRowColour)
    ON_MESSAGE(WM_CAPTURECHANGED, &CExplorerView::OnCaptureChanged)
    ON_MESSAGE(WM_MOUSELEAVE, &CExplorerView::OnMouseLeave)
END_MESSAGE_MAP()

/// Mouse messages come before paint messages: after a new size or a picture in another one the overlays are
/// not yet where the user will see them.
void CExplorerView::layOutNow() {
    if (!m_laidOut) RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
}

void CExplorerView::showChanges() {
    if (m_overlays.isChanged()) InvalidateRect(m_rcView, FALSE);
}

void CExplorerView::OnLButtonDown(UINT nFlags, CPoint pt) {
    layOutNow();
    if (m_overlays.overlayAt(pt) == nullptr) return CvornOGLWnd::OnLButtonDown(nFlags, pt);
    SetFocus();
    SetCapture(); // first: a dialog that the press opens takes the mouse away
    m_overlays.press(nFlags, pt);
    showChanges();
}

void CExplorerView::OnLButtonUp(UINT nFlags, CPoint pt) {
    if (!m_overlays.release()) return CvornOGLWnd::OnLButtonUp(nFlags, pt);
    ::ReleaseCapture();
    m_overlays.hover(pt);
    showChanges();
}

void CExplorerView::OnMouseMove(UINT nFlags, CPoint pt) {
    if (m_overlays.drag(nFlags, pt)) {
        m_ptLastMouse = pt; // the chart's next drag begins here
        showChanges();
        return UpdateWindow(); // the picture follows a slider
    }
    const bool turning = (m_dwState & STATE_LDOWN) != 0;
    if (!turning && (nFlags & MK_LBUTTON) == 0) {
        layOutNow();
        m_overlays.hover(pt);
        showChanges();
        TRACKMOUSEEVENT leaving = {sizeof leaving, TME_LEAVE, m_hWnd, 0};
        ::TrackMouseEvent(&leaving);
    }
    // A drag that did not begin on the chart is not the chart's.
    CvornOGLWnd::OnMouseMove(turning ? nFlags : nFlags & ~MK_LBUTTON, pt);
}

void CExplorerView::OnRButtonDown(UINT nFlags, CPoint pt) {
    if (m_overlays.isPressed()) return;
    if ((m_dwState & STATE_LDOWN) == 0) {
        layOutNow();
        ChartOverlay* const overlay = m_overlays.overlayAt(pt);
        if (overlay != nullptr && overlay->onRightPress(nFlags, pt)) return showChanges();
    }
    CvornOGLWnd::OnRButtonDown(nFlags, pt);
}

/// The mouse was taken away: the button may go up elsewhere.
LRESULT CExplorerView::OnCaptureChanged(WPARAM, LPARAM lParam) {
    if (reinterpret_cast<HWND>(lParam) == m_hWnd) return 0;
    m_overlays.release();
    m_userRot.OnLButtonUp(m_ptLastMouse);
    m_dwState &= ~STATE_LDOWN;
    showChanges();
    return 0;
}

LRESULT CExplorerView::OnMouseLeave(WPARAM, LPARAM) {
    m_overlays.leave();
    showChanges();
    return 0;
}

void CExplorerView::OnKeyDown(UINT nChar, UINT nRepCnt, UINT nFlags) {
    const bool ctrl = ::GetKeyState(VK_CONTROL) < 0;
    if (const int command = ctrl ? commandOfCtrlKey(nChar) : commandOfKey(nChar))
        OnMenuItem(command);
    else if ((nChar == VK_PRIOR || nChar == VK_NEXT) && m_sheet.scrollPages(nChar == VK_NEXT ? 1 : -1))
        showChanges();
    CvornOGLWnd::OnKeyDown(nChar, nRepCnt, nFlags);
}
