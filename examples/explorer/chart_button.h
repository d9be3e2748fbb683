// SPDX-License-Identifier: MIT
#pragma once

#include <vorn/vorn.h>

/// A button of the chart's toolbar with a symbol for its command. Its state bit is on while what it stands
/// for is shown.
class ChartButton : public CvornToolBarButton {
public:
    ChartButton(int command, int column);

    /// Takes the colours for the state; `pressed` is while the mouse holds the button down.
    void dress(bool pressed);

    /// Cells of the toolbar: a button's side, and the space round it.
    static constexpr int side = 10, space = 1;

protected:
    void oglOutputShape(CvornOGLMapping* map, CRect& rc, float z) override;
};

/// A wedge that rises with the exaggeration, filled up to the marker; its middle is marked.
class ExaggerationSlider : public CvornToolBarButton {
public:
    ExaggerationSlider(int id, int column);
    static constexpr int width = 26;

protected:
    void oglOutputShape(CvornOGLMapping* map, CRect& rc, float z) override;
};

/// The colour ramps side by side, the chosen one in a frame.
class RampSlider : public CvornToolBarButton {
public:
    RampSlider(int id, int column);
    static constexpr int width = 26;

    std::size_t ramp() const;
    void setRamp(std::size_t ramp);

protected:
    void oglOutputShape(CvornOGLMapping* map, CRect& rc, float z) override;
};
