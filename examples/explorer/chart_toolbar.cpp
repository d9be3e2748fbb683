// SPDX-License-Identifier: MIT
#include "chart_toolbar.h"

#include "explorer_menu.h"

#include "common/window_shapes.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

// In cells: four views, four switches and two sliders, in groups.
constexpr int pitch = ChartButton::side + ChartButton::space, groupGap = 3, edge = 2;
constexpr int switches = edge + 4 * pitch + groupGap, sliders = switches + 4 * pitch + groupGap;
constexpr int ramps = sliders + ExaggerationSlider::width + groupGap;
constexpr int columns = ramps + RampSlider::width + edge, rows = ChartButton::side + 2 * ChartButton::space;
/// Symbols in smaller cells, in pixels, cannot be told apart.
constexpr double leastCell = 1.4;

double exaggerationAt(float marker) {
    const double exponent = 2.0 * marker - 1;
    // Easy to find: as the chart is by itself.
    return std::abs(exponent) < 0.06 ? 1 : std::pow(ChartToolbar::mostExaggeration, exponent);
}

float markerOf(double exaggeration) {
    return static_cast<float>((std::log(exaggeration) / std::log(ChartToolbar::mostExaggeration) + 1) / 2);
}

} // namespace

ChartToolbar::ChartToolbar(Answers answers)
    : m_answers(std::move(answers)), m_buttons{{{ID_VIEW_3D, edge},
                                                {ID_VIEW_FRONT, edge + pitch},
                                                {ID_VIEW_TOP, edge + 2 * pitch},
                                                {ID_VIEW_SIDE, edge + 3 * pitch},
                                                {ID_SHOW_GRIDS, switches},
                                                {ID_SHOW_TIPS, switches + pitch},
                                                {ID_SHOW_LIGHTING, switches + 2 * pitch},
                                                {ID_SHOW_PLANES, switches + 3 * pitch}}},
      m_exaggeration(ID_EXAGGERATION, sliders), m_ramps(ID_RAMP, ramps) {
    m_colBar = CvornColour(RGB(232, 233, 237), 0.92F);
    m_fShade = 1; // plain, as the other overlays
    SetParam(TBP_VISIBLE | TBP_HCENTER | TBP_TOP);
    Init(rows, columns);
    for (ChartButton& button : m_buttons)
        AddButton(&button);
    AddButton(&m_exaggeration);
    AddButton(&m_ramps);
}

void ChartToolbar::turnOn(int id, bool on) {
    if ((m_listButtons.Find(id)->GetParam(TBB_STATE) != 0) == on) return;
    SetButtonState(id, on ? DWORD{TBB_STATE} : 0);
    change();
}

void ChartToolbar::show(const ChartState& state) {
    turnOn(ID_VIEW_3D, state.viewPoint == ViewPoint::threeD);
    turnOn(ID_VIEW_FRONT, state.viewPoint == ViewPoint::front);
    turnOn(ID_VIEW_TOP, state.viewPoint == ViewPoint::top);
    turnOn(ID_VIEW_SIDE, state.viewPoint == ViewPoint::side);
    turnOn(ID_SHOW_GRIDS, state.grids);
    turnOn(ID_SHOW_TIPS, state.tips);
    turnOn(ID_SHOW_LIGHTING, state.lighting);
    turnOn(ID_SHOW_PLANES, state.planes);
    const float marker = markerOf(state.exaggeration);
    if (marker == m_exaggeration.GetHMarkerPos() && state.ramp == m_ramps.ramp()) return;
    m_exaggeration.SetHMarkerPos(marker);
    m_ramps.setRamp(state.ramp);
    change();
}

void ChartToolbar::setShown(bool shown) {
    SetParam(shown ? DWORD{TBP_VISIBLE} : 0, TBP_VISIBLE);
    change();
}

CRect ChartToolbar::buttonOf(int id) {
    const CvornToolBarButton* const button = m_listButtons.Find(id);
    return button != nullptr ? button->m_rcButton : CRect(0, 0, 0, 0);
}

void ChartToolbar::updateMetrics(CDC& dc, CFont& font, int fontLists) {
    UpdateMetrics(&dc, &font, 0);
    CFont* const old = dc.SelectObject(&font);
    TEXTMETRICA metrics = {};
    ::GetTextMetricsA(dc.m_hAttribDC, &metrics);
    dc.SelectObject(old);
    m_lineHeight = metrics.tmHeight;
    m_fontLists = fontLists;
}

// The toolkit's bar has its size in millimetres of the device. This one goes by the font, and so by the
// picture.
CRect ChartToolbar::place(const CRect& free) {
    const int margin = m_lineHeight / 2;
    const double cell =
        std::min(m_lineHeight / 5.0, static_cast<double>(free.Width() - 2 * margin) / columns);
    m_szBar = CSize(static_cast<int>(cell * columns), static_cast<int>(std::round(cell * rows)));
    const int inset = static_cast<int>(std::round(cell * 1.6));
    m_szInset = CSize(inset, inset);
    m_fits = cell >= leastCell && 3 * m_szBar.cy < free.Height();
    CRect rc = free;
    rc.top += margin;
    UpdatePosition(rc);
    if (bounds().IsRectEmpty()) return free;
    rc.top = m_rcBar.bottom;
    return rc;
}

void ChartToolbar::draw(CvornOGLMapping& mapping, CSize view) {
    for (ChartButton& button : m_buttons)
        button.dress(m_pActive == &button);
    const double line = std::max(1.0, std::round(m_lineHeight / 16.0));
    oglOutput(&mapping, view.cy, textDepth, depthStep, static_cast<float>(line / 2), 0, m_fontLists);
    examples::frameBox(mapping, m_rcBar.left, view.cy - m_rcBar.bottom, m_rcBar.right, view.cy - m_rcBar.top,
                       textDepth, line, CvornColour(RGB(206, 208, 214), 1));
}

void ChartToolbar::answerSlider(int id) {
    if (id == ID_EXAGGERATION) m_answers.exaggerate(exaggerationAt(m_exaggeration.GetHMarkerPos()));
    if (id == ID_RAMP) m_answers.chooseRamp(m_ramps.ramp());
}

void ChartToolbar::onPress(UINT flags, CPoint pt) {
    const int id = OnLeftMouseButtonDown(pt, flags);
    change();
    if (id == ID_EXAGGERATION || id == ID_RAMP)
        answerSlider(id);
    else if (id != 0)
        m_answers.command(id);
}

void ChartToolbar::onDrag(UINT flags, CPoint pt) {
    answerSlider(OnMouseMove(pt, flags));
}

void ChartToolbar::onRelease() {
    OnLeftMouseButtonUp(CPoint(0, 0), 0);
    change();
}

bool ChartToolbar::onRightPress(UINT flags, CPoint pt) {
    const int id = OnRightMouseButtonDown(pt, flags);
    if (id == ID_EXAGGERATION) m_answers.exaggerate(1);
    if (id == ID_RAMP) m_answers.chooseRamp(0);
    return id != 0;
}
