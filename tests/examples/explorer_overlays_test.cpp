// SPDX-License-Identifier: MIT
#include "examples/explorer/explorer_menu.h"
#include "examples/explorer/explorer_view.h"
#include "tests/support/gl_window.h"

#include <cmath>
#include <gtest/gtest.h>

namespace {

examples::Grid hills() {
    examples::Grid grid;
    grid.rows = grid.columns = 20;
    for (int row = 0; row < 20; ++row)
        for (int column = 0; column < 20; ++column)
            grid.values.push_back(column < 3 && row < 3 ? NAN
                                                        : 5 * std::sin(row * 0.5) * std::cos(column * 0.4));
    return grid;
}

Options landOptions() {
    Options options;
    options.file = "C:\\charts\\hills.csv";
    options.ramp = "land";
    return options;
}

/// A shown chart window that keeps its last picture and takes mouse messages.
class View : public CExplorerView {
public:
    explicit View(const Options& options = landOptions()) : CExplorerView(hills(), options) {
        CreateEx(0, AfxRegisterWndClass(CS_OWNDC), "", WS_POPUP, CRect(0, 0, 640, 480), nullptr, 0);
        ShowWindow(SW_SHOWNA);
        paint();
    }
    ~View() override { DestroyWindow(); }

    void paint() { RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW); }
    void mouse(UINT message, UINT flags, CPoint pt) {
        SendMessage(message, flags, MAKELPARAM(pt.x, pt.y));
        UpdateWindow();
    }
    void click(CPoint pt) {
        mouse(WM_LBUTTONDOWN, MK_LBUTTON, pt);
        mouse(WM_LBUTTONUP, 0, pt);
    }
    CSize size() const { return m_rcView.Size(); }
    /// Of the last picture, from its upper left corner.
    COLORREF at(int x, int y) const { return picture[(m_rcView.Height() - 1 - y) * m_rcView.Width() + x]; }
    std::vector<float> rotation() const {
        const float* m = const_cast<View*>(this)->m_userRot.GetMatrix()->m_afElement;
        return {m, m + 16};
    }

    std::vector<COLORREF> picture;

protected:
    void OnExclude(CDC*) override { picture = support::pixelsIn(0, 0, m_rcView.Width(), m_rcView.Height()); }
};

/// How high the chart is for its width, seen from in front, below the bar.
double slopeOf(const View& view) {
    CRect chart(0, 0, 0, 0);
    for (int y = 60; y < view.size().cy; ++y)
        for (int x = 0; x < view.size().cx; ++x)
            if (view.at(x, y) != view.at(0, 479)) chart |= CRect(x, y, x + 1, y + 1);
    return static_cast<double>(chart.Height()) / chart.Width();
}

/// What differs between two pictures of one size; empty when nothing does.
CRect differenceOf(const std::vector<COLORREF>& a, const std::vector<COLORREF>& b, CSize size) {
    CRect all(0, 0, 0, 0);
    for (int y = 0; y < size.cy; ++y)
        for (int x = 0; x < size.cx; ++x)
            if (const int i = (size.cy - 1 - y) * size.cx + x; a[i] != b[i]) all |= CRect(x, y, x + 1, y + 1);
    return all;
}

TEST(ExplorerOverlays, TheLegendStandsWhereItIsPutInEverySize) {
    View view;
    for (const int horizontal : {TPA_LEFT, TPA_HCENTER, TPA_RIGHT}) {
        for (const int vertical : {TPA_TOP, TPA_VCENTER, TPA_BOTTOM}) {
            SCOPED_TRACE(horizontal * 10 + vertical);
            for (const CSize size : {CSize(500, 400), CSize(260, 390), CSize(640, 480)}) {
                view.SetWindowPos(nullptr, 0, 0, size.cx, size.cy, SWP_NOZORDER | SWP_NOACTIVATE);
                ASSERT_EQ(view.size(), size);
                view.legend().setPlace(std::nullopt);
                view.axes().toggle(ChartAxes::SHOW_LABELS); // they would make room
                view.paint();
                const auto without = view.picture;
                view.legend().setPlace(LegendPlace{horizontal, vertical});
                view.paint();
                view.axes().toggle(ChartAxes::SHOW_LABELS);
                const CRect drawn = differenceOf(without, view.picture, size),
                            legend = view.legend().bounds();
                EXPECT_EQ(drawn, legend);
                const CSize free(size.cx - drawn.Width(), size.cy - drawn.Height());
                const int x = horizontal == TPA_LEFT ? 0 : horizontal == TPA_RIGHT ? free.cx : free.cx / 2;
                EXPECT_NEAR(drawn.left, x, 12);
                EXPECT_GE(drawn.top, 0);
                EXPECT_LE(drawn.bottom, size.cy);
                if (vertical != TPA_TOP) { // there the toolbar is
                    EXPECT_NEAR(drawn.top, vertical == TPA_BOTTOM ? free.cy : free.cy / 2, 40);
                }
            }
        }
    }
    EXPECT_STREQ(view.legend().panel().m_strText.Left(6), "hills\n");
    EXPECT_NE(view.legend().panel().m_strText.Find("maximum"), -1);
}

TEST(ExplorerOverlays, TheLegendLightsUpUnderTheMouseAndLiesAboveTheScene) {
    View view;
    view.legend().setPlace(LegendPlace{TPA_HCENTER, TPA_VCENTER});
    view.paint();
    CRect legend = view.legend().bounds();
    const auto plain = view.picture;
    view.mouse(WM_MOUSEMOVE, 0, legend.CenterPoint());
    const CRect lit = differenceOf(plain, view.picture, view.size());
    legend.InflateRect(0, 0, 1, 1); // its frame
    EXPECT_EQ(lit, lit & legend);
    EXPECT_GT(lit.Width() * lit.Height(), legend.Width() * legend.Height() * 0.9);
    view.mouse(WM_MOUSELEAVE, 0, CPoint(0, 0));
    EXPECT_EQ(view.picture, plain);

    // As near as the eye goes, and through the surface.
    for (int turn = 0; turn < 12; ++turn) {
        for (int i = 0; i < 8; ++i)
            view.SendMessage(WM_KEYDOWN, VK_UP, 1);
        view.mouse(WM_LBUTTONDOWN, MK_LBUTTON, CPoint(5, 5));
        for (int i = 1; i < 20; ++i)
            view.mouse(WM_MOUSEMOVE, MK_LBUTTON, CPoint(5 + i * (turn % 3), 5 + i));
        view.mouse(WM_LBUTTONUP, 0, CPoint(5, 5));
        for (const auto& label : view.axes().labels()) {
            const int top = static_cast<int>(view.size().cy - label.bottom - label.height);
            const CRect text(CPoint(static_cast<int>(label.left), top),
                             CSize(static_cast<int>(label.width), static_cast<int>(label.height)));
            EXPECT_TRUE(!label.shown || (text & legend).IsRectEmpty()) << turn;
        }
        const COLORREF corner = view.at(legend.left, legend.top);
        EXPECT_EQ(corner, RGB(212, 214, 220)) << turn;
    }
}

TEST(ExplorerOverlays, ButtonsKeysAndMenuHaveOneState) {
    View view;
    const auto first = view.picture;
    struct Switch {
        int id;
        UINT key;
        bool ChartState::*shown;
    };
    for (const auto& [id, key, shown] : {Switch{ID_SHOW_GRIDS, 'G', &ChartState::grids},
                                         {ID_SHOW_TIPS, 'A', &ChartState::tips},
                                         {ID_SHOW_LIGHTING, 'I', &ChartState::lighting},
                                         {ID_SHOW_PLANES, 'P', &ChartState::planes}}) {
        SCOPED_TRACE(id);
        const CRect button = view.toolbar().buttonOf(id);
        view.mouse(WM_LBUTTONDOWN, MK_LBUTTON, button.CenterPoint());
        EXPECT_EQ(::GetCapture(), view.m_hWnd);
        EXPECT_FALSE(view.state().*shown);
        view.mouse(WM_LBUTTONUP, 0, button.CenterPoint());
        EXPECT_EQ(::GetCapture(), nullptr);
        EXPECT_FALSE((differenceOf(first, view.picture, view.size()) & button).IsRectEmpty());
        view.SendMessage(WM_KEYDOWN, key, 1);
        view.UpdateWindow();
        EXPECT_TRUE(view.state().*shown);
        EXPECT_EQ(view.picture, first);
    }
    for (const auto& [id, viewPoint] : {std::pair{ID_VIEW_TOP, ViewPoint::top},
                                        {ID_VIEW_SIDE, ViewPoint::side},
                                        {ID_VIEW_FRONT, ViewPoint::front},
                                        {ID_VIEW_3D, ViewPoint::threeD}}) {
        view.click(view.toolbar().buttonOf(id).CenterPoint());
        EXPECT_EQ(view.state().viewPoint, viewPoint);
        EXPECT_EQ(view.picture == first, id == ID_VIEW_3D);
    }
}

TEST(ExplorerOverlays, SlidersChangeTheChartWhileTheyMove) {
    Options options = landOptions();
    options.viewPoint = ViewPoint::front;
    options.hidden = {ChartAxes::SHOW_AXES};
    options.legend.reset();
    View view(options);
    view.lookFrom(ViewPoint::front);
    view.paint();
    const auto first = view.picture;
    const CRect slider = view.toolbar().buttonOf(ID_EXAGGERATION), ramps = view.toolbar().buttonOf(ID_RAMP);
    const double slope = slopeOf(view);
    view.mouse(WM_LBUTTONDOWN, MK_LBUTTON, slider.CenterPoint());
    EXPECT_EQ(view.picture.size(), first.size());
    view.mouse(WM_MOUSEMOVE, MK_LBUTTON, CPoint(slider.right - 1, slider.CenterPoint().y));
    EXPECT_DOUBLE_EQ(view.state().exaggeration, 10);
    EXPECT_NEAR(slopeOf(view), 10 * slope, 2 * slope);
    view.mouse(WM_MOUSEMOVE, MK_LBUTTON, CPoint(slider.left, slider.CenterPoint().y));
    EXPECT_LT(slopeOf(view), 0.25 * slope);
    view.mouse(WM_LBUTTONUP, 0, slider.TopLeft());
    view.mouse(WM_RBUTTONDOWN, MK_RBUTTON, slider.CenterPoint());
    EXPECT_EQ(view.picture, first);
    for (std::size_t ramp = examples::ColourRamp::names().size(); ramp-- > 0;) {
        view.click(CPoint(ramps.left + ramps.Width() * (2 * int(ramp) + 1) / 8, ramps.CenterPoint().y));
        EXPECT_EQ(view.state().ramp, ramp);
        EXPECT_EQ(view.picture == first, ramp == 0);
    }
}

TEST(ExplorerOverlays, ADragBelongsToWhatItBeganOn) {
    View view;
    const CPoint onModel(320, 300), onSlider = view.toolbar().buttonOf(ID_EXAGGERATION).CenterPoint();
    const CPoint onButton = view.toolbar().buttonOf(ID_SHOW_GRIDS).CenterPoint();
    const auto turned = view.rotation();
    for (const UINT flags : {UINT{MK_LBUTTON}, UINT{MK_LBUTTON | MK_CONTROL}}) {
        SCOPED_TRACE(flags);
        view.mouse(WM_MOUSEMOVE, 0, onSlider);
        const auto before = view.picture;
        view.mouse(WM_LBUTTONDOWN, flags, onSlider);
        for (int i = 0; i < 9; ++i)
            view.mouse(WM_MOUSEMOVE, flags, onModel + CSize(9 * i, 7 * i));
        view.mouse(WM_LBUTTONUP, flags & ~MK_LBUTTON, onModel);
        EXPECT_EQ(view.picture, before);

        // Taken away in the middle: neither bar nor chart go on, wherever the mouse is.
        view.mouse(WM_LBUTTONDOWN, flags, onSlider);
        ::ReleaseCapture();
        for (const CPoint pt : {onSlider + CSize(15, 0), onModel, onModel + CSize(40, 30)})
            view.mouse(WM_MOUSEMOVE, flags, pt);
        EXPECT_EQ(view.toolbar().IsButtonActive(), 0);
        view.paint();
        EXPECT_EQ(view.picture, before);
    }
    EXPECT_EQ(view.rotation(), turned);

    view.mouse(WM_LBUTTONDOWN, MK_LBUTTON, onModel);
    for (const CPoint pt : {onModel - CSize(4, 9), onModel - CSize(10, 40), onSlider, onButton})
        view.mouse(WM_MOUSEMOVE, MK_LBUTTON, pt);
    EXPECT_NE(view.rotation(), turned);
    EXPECT_EQ(view.state().viewPoint, std::nullopt);
    view.mouse(WM_LBUTTONUP, 0, onButton);
    EXPECT_TRUE(view.state().grids);
    EXPECT_EQ(view.state().exaggeration, 1);
    const auto after = view.rotation();
    view.mouse(WM_LBUTTONDOWN, MK_LBUTTON, onModel);
    ::ReleaseCapture();
    for (int i = 0; i < 20; ++i)
        view.mouse(WM_MOUSEMOVE, MK_LBUTTON, onModel + CSize(i, 2 * i));
    EXPECT_EQ(view.rotation(), after);
}

} // namespace
