// SPDX-License-Identifier: MIT
#include "vorn/view/view_window.h"

#include "vorn/detail/truncate.h"
#include "vorn/view/detail/current_context.h"

#include <algorithm>
#include <cmath>

void CvornOGLWnd::OnLButtonDown(UINT nFlags, CPoint pt) {
    SetFocus();
    if ((m_dwState & STATE_NOCAPTURE) == 0) SetCapture();
    m_dwState |= STATE_LDOWN;
    if (nFlags == MK_LBUTTON) m_userRot.OnLButtonDown(pt);
    Default();
}

void CvornOGLWnd::OnLButtonUp(UINT, CPoint pt) {
    m_userRot.OnLButtonUp(pt);
    m_dwState &= ~STATE_LDOWN;
    if ((m_dwState & STATE_NOCAPTURE) == 0) ::ReleaseCapture();
    Default();
}

void CvornOGLWnd::OnMouseMove(UINT nFlags, CPoint pt) {
    constexpr UINT panning = MK_LBUTTON | MK_CONTROL;
    if ((nFlags & panning) == panning)
        Pan(pt);
    else if (nFlags == MK_LBUTTON)
        Rotate(pt);
    m_ptLastMouse = pt;
    Default();
}

/// Moves the model with the mouse.
void CvornOGLWnd::Pan(CPoint pt) {
    {
        vorn::detail::ClientDC client(this);
        const vorn::detail::CurrentContext current(m_oglDC, client.get());
        m_mapping.Update(TRUE);
    }
    const float dx = m_mapping.ScreenToModel(static_cast<float>(pt.x - m_ptLastMouse.x));
    const float dy = m_mapping.ScreenToModel(static_cast<float>(pt.y - m_ptLastMouse.y));
    // Before the first picture there is no scale.
    if (std::isfinite(dx) && std::isfinite(dy)) {
        m_fPanX += dx;
        m_fPanY -= dy;
        m_fPanLimitX = std::abs(m_fPanX);
        m_fPanLimitY = std::abs(m_fPanY);
    }
    SetUpdate(UPD_VIEW, TRUE, TRUE);
    RedrawView();
}

/// Offers a drag to the rotation controller, which has to know where the model's axes point on the screen.
void CvornOGLWnd::Rotate(CPoint pt) {
    vorn::detail::ClientDC client(this);
    const vorn::detail::CurrentContext current(m_oglDC, client.get());
    const auto onScreen = [this](double x, double y, double z) {
        m_mapping.gluProject(x, y, z);
        const POINT window = m_mapping.GetPosPt();
        return CPoint(window.x, vorn::detail::truncateToInt(static_cast<double>(m_rcView.bottom) - window.y -
                                                            m_rcView.top));
    };
    const CPoint x = onScreen(0.5, 0, 0);
    const CPoint y = onScreen(0, 0.5, 0);
    const CPoint z = onScreen(0, 0, 0.5);
    if (!m_userRot.OnMouseMove(pt, x, y, z)) return;
    SetUpdate(UPD_VIEW, TRUE, FALSE);
    RedrawView();
}

/// Paints at once, so that the picture follows the mouse.
void CvornOGLWnd::RedrawView() {
    RedrawWindow(m_rcView, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
}

void CvornOGLWnd::OnRButtonDown(UINT, CPoint pt) {
    if (m_userRot.OnRButtonDown(pt)) {
        SetUpdate(UPD_VIEW, TRUE, FALSE);
        RedrawView();
    } else {
        OnShowMenu();
    }
    Default();
}

void CvornOGLWnd::OnRButtonUp(UINT, CPoint pt) {
    m_userRot.OnRButtonUp(pt);
    Default();
}

void CvornOGLWnd::OnKeyDown(UINT nChar, UINT nRepCnt, UINT) {
    const auto step = static_cast<float>(nRepCnt * 0.1);
    if (nChar == VK_UP) {
        m_fZoom = std::min(m_fZoom + step, m_fDistance - m_fMinDistance);
        SetUpdate(UPD_VIEW, TRUE, TRUE);
    } else if (nChar == VK_DOWN) {
        m_fZoom = std::max(m_fZoom - step, 0.0F);
        ClampPan();
        SetUpdate(UPD_VIEW, TRUE, TRUE);
    }
    Default();
}

BOOL CvornOGLWnd::OnMouseWheel(UINT, short zDelta, CPoint) {
    const auto step = static_cast<float>(static_cast<double>(zDelta) / WHEEL_DELTA * 0.1);
    m_fZoom = std::max(0.0F, std::min(m_fZoom + step, m_fDistance - m_fMinDistance));
    if (zDelta < 0) ClampPan();
    SetUpdate(UPD_VIEW, TRUE, TRUE);
    return static_cast<BOOL>(Default());
}

/// Draws the model back to the centre as the eye moves away.
void CvornOGLWnd::ClampPan() {
    const float limitX = std::abs(m_fPanLimitX * m_fZoom);
    const float limitY = std::abs(m_fPanLimitY * m_fZoom);
    m_fPanX = std::clamp(m_fPanX, -limitX, limitX);
    m_fPanY = std::clamp(m_fPanY, -limitY, limitY);
}

BOOL CvornOGLWnd::PreTranslateMessage(MSG* pMsg) {
    if (pMsg->message == WM_KEYDOWN) {
        switch (pMsg->wParam) {
        case VK_RETURN:
        case VK_LEFT:
        case VK_UP:
        case VK_RIGHT:
        case VK_DOWN:
            SendMessage(WM_KEYDOWN, pMsg->wParam, pMsg->lParam);
            return TRUE;
        default:
            break;
        }
    }
    return CWnd::PreTranslateMessage(pMsg);
}
