// SPDX-License-Identifier: MIT
#include "vorn/overlays/toolbar.h"

#include "vorn/overlays/detail/layout.h"
#include "vorn/overlays/detail/window_pen.h"

#include <cstdlib>

namespace detail = vorn::detail;

namespace {

/// Calls visit for the buttons in the order of the list, until it returns true, and returns that button or
/// null.
template <typename Visit>
CvornToolBarButton* firstButton(CvornToolBarButtonList& list, Visit visit) {
    list.Restart();
    while (CvornToolBarButton* const button = list.GetNext())
        if (visit(*button)) return button;
    return nullptr;
}

template <typename Visit>
void forEachButton(CvornToolBarButtonList& list, Visit visit) {
    firstButton(list, [&](CvornToolBarButton& button) {
        visit(button);
        return false;
    });
}

} // namespace

void CvornToolBar::UpdateMetrics(CDC* pDC, CFont* pFont, float) {
    m_szBar = detail::devicePixels(*pDC, 11000, 1500);
    m_szInset = detail::devicePixels(*pDC, 100, 100);
    const detail::SelectedFont selected(*pDC, pFont);
    forEachButton(m_listButtons, [&](CvornToolBarButton& button) { button.UpdateMetrics(pDC); });
}

void CvornToolBar::UpdatePosition(const CRect& rc) {
    m_rcBar = detail::placed(m_dwParam, rc, m_szBar);
    // Without a grid, which Init sets, the buttons have no size.
    m_fUnitW = m_nCols > 0 ? static_cast<float>(m_szBar.cx) / static_cast<float>(m_nCols) : 0;
    m_fUnitH = m_nRows > 0 ? static_cast<float>(m_szBar.cy) / static_cast<float>(m_nRows) : 0;

    const auto rounded = [](float value) { return static_cast<int>(value + 0.5); };
    forEachButton(m_listButtons, [&](CvornToolBarButton& button) {
        const float x = static_cast<float>(button.m_nColI) * m_fUnitW + static_cast<float>(m_rcBar.left);
        const float y = static_cast<float>(button.m_nRowI) * m_fUnitH + static_cast<float>(m_rcBar.top);
        const CRect rcButton(rounded(x), rounded(y),
                             rounded(static_cast<float>(button.m_nColCount) * m_fUnitW + x),
                             rounded(static_cast<float>(button.m_nRowCount) * m_fUnitH + y));
        button.UpdatePosition(rcButton, m_szInset);
    });
}

void CvornToolBar::oglOutput(CvornOGLMapping* map, int h, float z, float dz, float lineWidth, int list,
                             int listBase) {
    if (!GetParam(TBP_VISIBLE)) return;

    detail::CompiledList compiled(list);
    ::glLineWidth(2 * lineWidth);
    oglOutputBar(*map, h, 2 * dz + z);
    forEachButton(m_listButtons, [&](CvornToolBarButton& button) {
        button.oglOutput(map, h, z + dz, dz, lineWidth, 0, listBase);
    });
    compiled.end();

    ::glListBase(static_cast<GLuint>(listBase));
    forEachButton(m_listButtons, [&](CvornToolBarButton& button) { button.oglOutputText(map, h, z); });
}

/// Flat in its lower part, and from there shading towards a colour of more contrast at its upper edge.
void CvornToolBar::oglOutputBar(CvornOGLMapping& map, int h, float depth) const {
    const detail::WindowBox bar = detail::windowBox(m_rcBar, h);
    const double middle =
        bar.bottom + static_cast<int>(static_cast<float>(std::abs(m_rcBar.Height())) * m_fShade + 0.5);
    CvornColour flat = m_colBar;
    CvornColour edge = m_colBar;
    edge.Change(0.15F);

    ::glBegin(GL_QUADS);
    flat.glColor();
    detail::normalOfOverlay();
    detail::windowQuad(map, {bar.left, bar.bottom, bar.right, middle}, depth);
    flat.Change(0.02F);
    flat.glColor();
    detail::normalOfOverlay();
    detail::windowVertex(map, bar.left, middle, depth);
    edge.glColor();
    detail::windowVertex(map, bar.left, bar.top, depth);
    detail::windowVertex(map, bar.right, bar.top, depth);
    flat.glColor();
    detail::windowVertex(map, bar.right, middle, depth);
    ::glEnd();
}

int CvornToolBar::OnLeftMouseButtonDown(POINT pt, unsigned long flags) {
    if (!HitTest(pt)) return 0;
    int id = 0;
    CvornToolBarButton* const taker = firstButton(m_listButtons, [&](CvornToolBarButton& button) {
        id = button.OnLeftMouseButtonDown(pt, flags);
        return id != 0;
    });
    if (taker != nullptr) m_pActive = taker;
    return id;
}

int CvornToolBar::OnLeftMouseButtonUp(POINT, unsigned long) {
    m_pActive = nullptr;
    return 0;
}

int CvornToolBar::OnMouseMove(POINT pt, unsigned long flags) {
    return m_pActive == nullptr ? 0 : m_pActive->OnMouseMove(pt, flags);
}

int CvornToolBar::OnRightMouseButtonDown(POINT pt, unsigned long flags) {
    if (!HitTest(pt)) return 0;
    int id = 0;
    firstButton(m_listButtons, [&](CvornToolBarButton& button) {
        id = button.OnRightMouseButtonDown(pt, flags);
        return id != 0;
    });
    return id;
}

void CvornToolBar::SetButtonState(int id, unsigned long state) {
    if (CvornToolBarButton* const button = m_listButtons.Find(id)) button->SetParam(state, TBB_STATE);
}

void CvornToolBar::SetButtonHMarkerPos(int id, float pos) {
    if (CvornToolBarButton* const button = m_listButtons.Find(id)) button->SetHMarkerPos(pos);
}

void CvornToolBar::SetButtonVMarkerPos(int id, float pos) {
    if (CvornToolBarButton* const button = m_listButtons.Find(id)) button->SetVMarkerPos(pos);
}

void CvornToolBar::SetButtonText(int id, const char* text) {
    if (CvornToolBarButton* const button = m_listButtons.Find(id)) button->m_strText = text;
}

unsigned long CvornToolBar::GetActiveButtonState() const {
    return m_pActive == nullptr ? 0 : m_pActive->GetParam(TBB_STATE);
}

float CvornToolBar::GetActiveButtonHMarkerPos() const {
    return m_pActive == nullptr ? 0 : m_pActive->GetHMarkerPos();
}

float CvornToolBar::GetActiveButtonVMarkerPos() const {
    return m_pActive == nullptr ? 0 : m_pActive->GetVMarkerPos();
}
