// SPDX-License-Identifier: MIT
#pragma once

#include "chart_overlay.h"

#include <array>
#include <utility>
#include <vector>

/// The overlays of a chart: lays them out without overlaps, keeps them in display lists, and gives each mouse
/// event to the one that it belongs to.
///
/// The lists hold points in front of the eye, whatever the camera does, and are compiled anew only when an
/// overlay, the size of the picture or the font has changed.
class OverlayStack {
public:
    /// The overlays, in the order in which they take their places, outlive the stack. They get display lists
    /// from `firstList` on.
    OverlayStack(std::vector<ChartOverlay*> overlays, int firstList)
        : m_overlays(std::move(overlays)), m_firstList(firstList), m_bounds(m_overlays.size()) {}

    void updateMetrics(CDC& dc, CFont& font, int fontLists);
    /// Brings places and lists up to date, for a mapping with the projection of the whole picture. Needs the
    /// view's context.
    void prepare(const CvornOGLMapping& mapping, CSize view);
    /// Draws the lists over the scene.
    void draw() const;
    /// What the chart's labels have to keep clear of, as of the last `prepare`.
    const std::vector<CRect>& bounds() const { return m_bounds; }
    bool isChanged() const;

    /// The mouse; true when the event is an overlay's, and not for the chart. After a press the mouse is to
    /// be captured until `release`, which is also for a capture that is lost.
    bool press(UINT flags, CPoint pt);
    bool drag(UINT flags, CPoint pt);
    bool release();
    /// With no button held.
    void hover(CPoint pt) { hoverOver(overlayAt(pt)); }
    void leave() { hoverOver(nullptr); }
    /// The overlay at the point, or null.
    ChartOverlay* overlayAt(CPoint pt) const;
    bool isPressed() const { return m_pressed != nullptr; }

private:
    /// What display lists depend on.
    struct Lens {
        std::array<double, 16> projection{};
        std::array<int, 4> viewport{};
        bool operator==(const Lens&) const = default;
    };

    void hoverOver(ChartOverlay* overlay);

    std::vector<ChartOverlay*> m_overlays;
    int m_firstList;
    std::vector<CRect> m_bounds;
    Lens m_lens;
    ChartOverlay* m_pressed = nullptr;
    ChartOverlay* m_hovered = nullptr;
};
