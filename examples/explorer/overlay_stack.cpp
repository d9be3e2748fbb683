// SPDX-License-Identifier: MIT
#include "overlay_stack.h"

#include <algorithm>
#include <utility>

void OverlayStack::updateMetrics(CDC& dc, CFont& font, int fontLists) {
    for (ChartOverlay* overlay : m_overlays) {
        overlay->updateMetrics(dc, font, fontLists);
        overlay->change();
    }
}

void OverlayStack::prepare(const CvornOGLMapping& mapping, CSize view) {
    // As seen by the eye itself: no camera, so that turning the chart changes nothing here.
    CvornOGLMapping eye = mapping;
    for (int i = 0; i < 16; ++i)
        eye.m_adModel[i] = i % 5 == 0;
    Lens lens;
    std::copy_n(eye.m_adProj, 16, lens.projection.begin());
    std::copy_n(eye.m_anViewport, 4, lens.viewport.begin());
    const bool sameLens = lens == m_lens;
    m_lens = lens;

    CRect free(CPoint(0, 0), view);
    for (std::size_t i = 0; i < m_overlays.size(); ++i) {
        ChartOverlay& overlay = *m_overlays[i];
        free = overlay.place(free);
        const CRect bounds = overlay.bounds();
        if (sameLens && bounds == m_bounds[i] && !overlay.m_changed) continue;
        m_bounds[i] = bounds;
        overlay.m_changed = false;
        ::glNewList(m_firstList + static_cast<GLuint>(i), GL_COMPILE);
        if (!bounds.IsRectEmpty()) overlay.draw(eye, view);
        ::glEndList();
    }
}

void OverlayStack::draw() const {
    ::glPushAttrib(GL_ENABLE_BIT | GL_CURRENT_BIT | GL_LIST_BIT | GL_LINE_BIT | GL_VIEWPORT_BIT);
    ::glDepthRange(0, 1);
    for (GLenum capability : {GL_LIGHTING, GL_TEXTURE_2D, GL_ALPHA_TEST})
        ::glDisable(capability);
    ::glPushMatrix();
    ::glLoadIdentity();
    for (std::size_t i = 0; i < m_overlays.size(); ++i)
        ::glCallList(m_firstList + static_cast<GLuint>(i));
    ::glPopMatrix();
    ::glPopAttrib();
}

bool OverlayStack::isChanged() const {
    return std::any_of(m_overlays.begin(), m_overlays.end(),
                       [](const ChartOverlay* overlay) { return overlay->isChanged(); });
}

ChartOverlay* OverlayStack::overlayAt(CPoint pt) const {
    // What took its place last lies on top.
    for (std::size_t i = m_overlays.size(); i-- > 0;)
        if (m_overlays[i]->bounds().PtInRect(pt)) return m_overlays[i];
    return nullptr;
}

bool OverlayStack::press(UINT flags, CPoint pt) {
    m_pressed = overlayAt(pt);
    if (m_pressed != nullptr) m_pressed->onPress(flags, pt);
    return m_pressed != nullptr;
}

bool OverlayStack::drag(UINT flags, CPoint pt) {
    if (m_pressed != nullptr) m_pressed->onDrag(flags, pt);
    return m_pressed != nullptr;
}

bool OverlayStack::release() {
    ChartOverlay* const pressed = std::exchange(m_pressed, nullptr);
    if (pressed != nullptr) pressed->onRelease();
    return pressed != nullptr;
}

void OverlayStack::hoverOver(ChartOverlay* overlay) {
    if (overlay == m_hovered) return;
    if (m_hovered != nullptr) m_hovered->onHover(false);
    m_hovered = overlay;
    if (m_hovered != nullptr) m_hovered->onHover(true);
}
