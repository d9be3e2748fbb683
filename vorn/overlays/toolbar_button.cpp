// SPDX-License-Identifier: MIT
#include "vorn/overlays/toolbar_button.h"

#include "vorn/overlays/detail/layout.h"
#include "vorn/overlays/detail/text.h"
#include "vorn/overlays/detail/window_pen.h"

#include <algorithm>

namespace detail = vorn::detail;

void CvornToolBarButton::UpdateMetrics(CDC* pDC) {
    m_szText = CSize(0, 0);
    if (m_strText.IsEmpty()) return;

    TEXTMETRICA metrics = {};
    ::GetTextMetricsA(pDC->m_hAttribDC, &metrics);
    m_nTextDY = metrics.tmInternalLeading;
    m_szText = detail::textExtent(*pDC, detail::viewOf(m_strText));
}

void CvornToolBarButton::UpdatePosition(const CRect& rc, const CSize& inset) {
    m_rcButton = rc;
    m_szInset = inset;
}

int CvornToolBarButton::OnLeftMouseButtonDown(POINT pt, unsigned long) {
    if (m_nID < 1 || !HitTest(pt)) return 0;
    UpdateMarkers(pt);
    return m_nID;
}

int CvornToolBarButton::OnMouseMove(POINT pt, unsigned long) {
    if (m_nID < 1 || !GetParam(TBB_TRACK) || !HitTest(pt)) return 0;
    UpdateMarkers(pt);
    return m_nID;
}

int CvornToolBarButton::OnRightMouseButtonDown(POINT pt, unsigned long) {
    return m_nID >= 1 && GetParam(TBB_RCLICK) && HitTest(pt) ? m_nID : 0;
}

void CvornToolBarButton::UpdateMarkers(POINT pt) {
    CRect inner = m_rcButton;
    inner.DeflateRect(m_szInset);
    if (inner.IsRectEmpty()) return;
    const auto along = [](int offset, int extent) {
        return static_cast<float>(std::clamp(offset, 0, extent)) / static_cast<float>(extent);
    };
    m_fHMarker = along(pt.x - inner.left, inner.Width());
    m_fVMarker = along(pt.y - inner.top, inner.Height());
}

void CvornToolBarButton::oglOutput(CvornOGLMapping* map, int h, float z, float, float, int list, int) {
    CRect rc(m_rcButton.left, h - m_rcButton.top, m_rcButton.right, h - m_rcButton.bottom);
    const detail::CompiledList compiled(list);
    if (GetParam(TBB_RAISED)) {
        const detail::WindowBox box = detail::windowBox(m_rcButton, h);
        const detail::WindowPen pen(*map, box.left, box.bottom, z);
        CvornColour frame = m_colBack;
        frame.Darker(0.05F);
        CvornColour back = m_colBack;
        back.Lighter(0.04F);
        // NOTE: between glBegin and glEnd, Mesa would hang here, compiling a list in feedback mode.
        detail::normalOfOverlay();
        ::glBegin(GL_LINE_LOOP);
        frame.glColor();
        pen.loop(box, z);
        ::glEnd();
        ::glBegin(GL_QUADS);
        back.glColor();
        pen.quadBehind(box, z);
        ::glEnd();
    }
    rc.InflateRect(-m_szInset.cx, m_szInset.cy);
    oglOutputShape(map, rc, z);
}

void CvornToolBarButton::oglOutputShape(CvornOGLMapping* map, CRect& rc, float z) {
    if (!m_strText.IsEmpty()) return;
    const detail::WindowBox box = {static_cast<double>(rc.left), static_cast<double>(rc.bottom),
                                   static_cast<double>(rc.right), static_cast<double>(rc.top)};
    ::glBegin(GL_QUADS);
    m_colShape.glColor();
    detail::normalOfOverlay();
    detail::windowQuad(*map, box, z);
    ::glEnd();
}

void CvornToolBarButton::oglOutputText(CvornOGLMapping* map, int h, float z) const {
    if (m_strText.IsEmpty() || m_szText.cx > m_rcButton.Width() || m_szText.cy > m_rcButton.Height()) return;
    const detail::WindowBox box = detail::windowBox(m_rcButton, h);
    m_colText.glColor();
    const double x = (box.right + box.left) * 0.5 - m_szText.cx * 0.5 + m_nTextDX;
    const double y = (box.top + box.bottom) * 0.5 - m_szText.cy * 0.5 + m_nTextDY;
    const detail::WindowPen pen(*map, x, y, z);
    pen.text(x, y, z, detail::viewOf(m_strText));
}
