// SPDX-License-Identifier: MIT
#pragma once

#include "chart_button.h"
#include "chart_overlay.h"
#include "options.h"

#include <array>
#include <functional>
#include <optional>

/// What of a chart the toolbar shows, and lets its user choose.
struct ChartState {
    std::optional<ViewPoint> viewPoint; ///< nothing: turned by hand
    bool grids, tips, lighting, planes;
    double exaggeration;
    std::size_t ramp; ///< of ColourRamp::names()
};

/// A bar at the top of the chart: buttons for the views and for what is shown, lit where they are on, a
/// slider for the vertical exaggeration and one for the colours. The right button puts a slider back. It
/// holds no state of the chart: it shows what it is told, and tells what is chosen. Not shown where it has no
/// room.
class ChartToolbar : public ChartOverlay, public CvornToolBar {
public:
    /// Called with what the user chooses; the buttons' are the menu's commands.
    struct Answers {
        std::function<void(int)> command;
        std::function<void(double)> exaggerate;
        std::function<void(std::size_t)> chooseRamp;
    };

    explicit ChartToolbar(Answers answers);

    void show(const ChartState& state);
    bool isShown() const { return GetParam(TBP_VISIBLE) != 0; }
    void setShown(bool shown);
    /// The button of a command, in client coordinates as it was placed last.
    CRect buttonOf(int id);

    void updateMetrics(CDC& dc, CFont& font, int fontLists) override;
    CRect place(const CRect& free) override;
    CRect bounds() const override { return isShown() && m_fits ? m_rcBar : CRect(0, 0, 0, 0); }
    void draw(CvornOGLMapping& mapping, CSize view) override;
    void onPress(UINT flags, CPoint pt) override;
    void onDrag(UINT flags, CPoint pt) override;
    void onRelease() override;
    bool onRightPress(UINT flags, CPoint pt) override;

    /// The exaggeration goes from a tenth to ten times.
    static constexpr double mostExaggeration = 10;

private:
    void turnOn(int id, bool on);
    void answerSlider(int id);

    Answers m_answers;
    std::array<ChartButton, 8> m_buttons;
    ExaggerationSlider m_exaggeration;
    RampSlider m_ramps;
    int m_lineHeight = 0;
    int m_fontLists = 0;
    bool m_fits = false;
};
