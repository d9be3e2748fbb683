// SPDX-License-Identifier: MIT
#pragma once

#include <vorn/vorn.h>

/// Something that lies over the chart, in pixels of its window or picture. All rectangles and points are in
/// client coordinates, y downwards. An OverlayStack calls it.
class ChartOverlay {
public:
    ChartOverlay() = default;
    virtual ~ChartOverlay() = default;
    ChartOverlay(const ChartOverlay&) = delete;
    ChartOverlay& operator=(const ChartOverlay&) = delete;

    /// The font is another one: measure the texts. Its characters are display lists from `fontLists` on.
    virtual void updateMetrics(CDC& dc, CFont& font, int fontLists) = 0;
    /// Takes a place in the free part of the picture. Returns what it leaves free for the overlays after it.
    virtual CRect place(const CRect& free) = 0;
    /// What it covers; empty while it is not shown.
    virtual CRect bounds() const = 0;
    /// Draws from textDepth (texts) to less than sceneDepth, while a display list is compiled. Not called
    /// again before something has changed.
    virtual void draw(CvornOGLMapping& mapping, CSize view) = 0;

    /// The left button went down inside the bounds. Until it goes up the moves are this overlay's.
    virtual void onPress(UINT, CPoint) {}
    virtual void onDrag(UINT, CPoint) {}
    /// The button went up, or the mouse was taken away.
    virtual void onRelease() {}
    /// The right button went down inside the bounds. False: show the chart's menu.
    virtual bool onRightPress(UINT, CPoint) { return false; }
    /// The mouse, with no button held, came or went.
    virtual void onHover(bool) {}

    /// The overlay looks different now: it is to be drawn anew.
    void change() { m_changed = true; }
    bool isChanged() const { return m_changed; }

    /// Window depths. The scene keeps behind sceneDepth, so that overlays are never inside it.
    static constexpr float textDepth = 0.01F, depthStep = 0.004F, sceneDepth = 0.1F;

private:
    friend class OverlayStack;
    bool m_changed = true;
};
