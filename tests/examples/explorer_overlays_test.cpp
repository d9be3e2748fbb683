// SPDX-License-Identifier: MIT
#include "examples/explorer/explorer_menu.h"
#include "tests/examples/explorer_window.h"

#include <algorithm>

namespace {

using support::boundsOf, support::differencesOf, support::Picture;

/// A shown chart with its overlays.
class View : public support::ExplorerWindow {
public:
    explicit View(const Options& options = support::withOverlays())
        : ExplorerWindow(support::waves(20, 20), options) {
        EXPECT_TRUE(open({640, 480}));
    }
};

/// How high the chart is for its width, seen from in front, below the bar.
double slopeOf(const Picture& picture) {
    const CRect chart = boundsOf(picture.where(
        [](CPoint pt, COLORREF colour) { return pt.y >= 60 && colour != support::chartBackground; }));
    return static_cast<double>(chart.Height()) / chart.Width();
}

TEST(ExplorerOverlays, TheLegendStandsWhereItIsPutInEverySize) {
    Options options = support::withOverlays();
    options.hidden = {ChartAxes::SHOW_LABELS}; // they make room for it
    View view(options);
    for (const CSize size : {CSize(500, 400), CSize(260, 390), CSize(640, 480)}) {
        view.SetWindowPos(nullptr, 0, 0, size.cx, size.cy, SWP_NOZORDER | SWP_NOACTIVATE);
        view.legend().setPlace(std::nullopt);
        view.paint();
        const Picture without = view.shown();
        ASSERT_EQ(without.size(), size);
        for (const int horizontal : {TPA_LEFT, TPA_HCENTER, TPA_RIGHT}) {
            for (const int vertical : {TPA_TOP, TPA_VCENTER, TPA_BOTTOM}) {
                SCOPED_TRACE(testing::Message() << size.cx << ", " << horizontal << ", " << vertical);
                view.legend().setPlace(LegendPlace{horizontal, vertical});
                view.paint();
                const CRect drawn = boundsOf(differencesOf(without, view.shown()));
                EXPECT_EQ(drawn, view.legend().bounds());
                EXPECT_EQ(drawn & CRect(CPoint(0, 0), size), drawn);
                const CSize free(size.cx - drawn.Width(), size.cy - drawn.Height());
                const int x = horizontal == TPA_LEFT ? 0 : horizontal == TPA_RIGHT ? free.cx : free.cx / 2;
                EXPECT_NEAR(drawn.left, x, 12);
                if (vertical == TPA_TOP) continue; // there the toolbar is
                EXPECT_NEAR(drawn.top, vertical == TPA_BOTTOM ? free.cy : free.cy / 2, 40);
            }
        }
    }
    EXPECT_STREQ(view.legend().panel().m_strText.Left(6), "waves\n");
    EXPECT_NE(view.legend().panel().m_strText.Find("maximum"), -1);
}

TEST(ExplorerOverlays, TheLegendLightsUpUnderTheMouseAndLiesAboveTheScene) {
    View view;
    view.legend().setPlace(LegendPlace{TPA_HCENTER, TPA_VCENTER});
    view.paint();
    CRect legend = view.legend().bounds();
    const Picture plain = view.shown();
    view.mouse(WM_MOUSEMOVE, 0, legend.CenterPoint());
    const CRect lit = boundsOf(differencesOf(plain, view.shown()));
    legend.InflateRect(0, 0, 1, 1); // its frame
    EXPECT_EQ(lit, lit & legend);
    EXPECT_GT(lit.Width() * lit.Height(), legend.Width() * legend.Height() * 0.9);
    view.mouse(WM_MOUSELEAVE, 0, CPoint(0, 0));
    EXPECT_EQ(view.shown(), plain);

    // As near as the eye goes, and through the surface.
    for (int turn = 0; turn < 12; ++turn) {
        for (int i = 0; i < 8; ++i)
            view.key(VK_UP);
        view.drag({CPoint(5, 5), CPoint(5 + 9 * (turn % 3), 14), CPoint(5 + 19 * (turn % 3), 24)});
        view.mouse(WM_LBUTTONUP, 0, CPoint(5, 5));
        for (const auto& label : view.axes().labels()) {
            const int top = static_cast<int>(view.shown().size().cy - label.bottom - label.height);
            const CRect text(CPoint(static_cast<int>(label.left), top),
                             CSize(static_cast<int>(label.width), static_cast<int>(label.height)));
            EXPECT_TRUE(!label.shown || (text & legend).IsRectEmpty()) << turn;
        }
        EXPECT_EQ(view.shown().at(legend.TopLeft()), RGB(212, 214, 220)) << turn;
    }
}

TEST(ExplorerOverlays, ButtonsKeysAndMenuSwitchTheSame) {
    View view;
    CMenu menu;
    ASSERT_TRUE(createExplorerMenu(menu));
    const auto isChecked = [&](int id) {
        view.ProcessMenuCmdUI(&menu);
        return (menu.GetMenuState(id, MF_BYCOMMAND) & MF_CHECKED) != 0;
    };
    const Picture all = view.shown();
    for (const auto& [id, key] : {std::pair{ID_SHOW_GRIDS, 'G'},
                                  {ID_SHOW_TIPS, 'A'},
                                  {ID_SHOW_LABELS, 'L'},
                                  {ID_SHOW_PLANES, 'P'},
                                  {ID_SHOW_LIGHTING, 'I'}}) {
        SCOPED_TRACE(key);
        EXPECT_TRUE(isChecked(id));
        view.choose(id);
        EXPECT_FALSE(isChecked(id));
        const Picture without = view.shown();
        const CRect bar = view.toolbar().bounds(), button = view.toolbar().buttonOf(id);
        const auto changed = differencesOf(all, without);
        EXPECT_EQ(boundsOf(changed).bottom <= bar.bottom, id == ID_SHOW_PLANES)
            << "no plane has a picture to hide";
        view.key(key);
        EXPECT_TRUE(isChecked(id));
        EXPECT_EQ(view.shown(), all);
        if (id == ID_SHOW_LABELS) continue; // it has no button
        EXPECT_TRUE(std::ranges::any_of(changed, [&](CPoint pt) { return button.PtInRect(pt); }));
        view.mouse(WM_LBUTTONDOWN, MK_LBUTTON, button.CenterPoint());
        EXPECT_EQ(::GetCapture(), view.m_hWnd);
        EXPECT_FALSE(isChecked(id));
        view.mouse(WM_LBUTTONUP, 0, button.CenterPoint());
        EXPECT_EQ(::GetCapture(), nullptr);
        EXPECT_EQ(view.shown(), without);
        view.key(key);
    }
}

TEST(ExplorerOverlays, ButtonsKeysAndMenuLookFromWhereTheySay) {
    View view;
    std::vector<Picture> pictures;
    for (const auto& [id, key, viewPoint] : {std::tuple{ID_VIEW_TOP, 'T', ViewPoint::top},
                                             {ID_VIEW_SIDE, 'S', ViewPoint::side},
                                             {ID_VIEW_FRONT, 'F', ViewPoint::front},
                                             {ID_VIEW_3D, 'D', ViewPoint::threeD}}) {
        SCOPED_TRACE(key);
        view.lookFrom(viewPoint);
        view.UpdateWindow();
        const Picture expected = view.shown();
        EXPECT_EQ(view.state().viewPoint, viewPoint);
        for (const Picture& other : pictures)
            EXPECT_GT(boundsOf(differencesOf(other, expected)).bottom, view.toolbar().bounds().bottom);
        pictures.push_back(expected);
        for (int way = 0; way < 3; ++way) {
            view.rotation().RotateXRad(1, 1);
            if (way == 0) view.click(view.toolbar().buttonOf(id).CenterPoint());
            if (way == 1) view.key(key);
            if (way == 2) view.choose(id);
            EXPECT_EQ(view.shown(), expected) << way;
        }
    }
}

TEST(ExplorerOverlays, SlidersChangeTheChartWhileTheyMove) {
    Options options = support::withOverlays();
    options.viewPoint = ViewPoint::front;
    options.hidden = {ChartAxes::SHOW_AXES};
    options.legend.reset();
    View view(options);
    view.lookFrom(ViewPoint::front);
    view.paint();
    const Picture first = view.shown();
    const CRect slider = view.toolbar().buttonOf(ID_EXAGGERATION), ramps = view.toolbar().buttonOf(ID_RAMP);
    const double slope = slopeOf(view.shown());
    view.drag({slider.CenterPoint(), CPoint(slider.right - 1, slider.CenterPoint().y)});
    EXPECT_DOUBLE_EQ(view.state().exaggeration, 10);
    EXPECT_NEAR(slopeOf(view.shown()), 10 * slope, 2 * slope);
    view.mouse(WM_MOUSEMOVE, MK_LBUTTON, CPoint(slider.left, slider.CenterPoint().y));
    EXPECT_LT(slopeOf(view.shown()), 0.25 * slope);
    view.mouse(WM_LBUTTONUP, 0, slider.TopLeft());
    view.mouse(WM_RBUTTONDOWN, MK_RBUTTON, slider.CenterPoint());
    EXPECT_EQ(view.shown(), first);
    for (std::size_t ramp = examples::ColourRamp::names().size(); ramp-- > 0;) {
        view.click(CPoint(ramps.left + ramps.Width() * (2 * int(ramp) + 1) / 8, ramps.CenterPoint().y));
        EXPECT_EQ(view.state().ramp, ramp);
        EXPECT_EQ(view.shown() == first, ramp == 0);
    }
}

TEST(ExplorerOverlays, ADragBelongsToWhatItBeganOn) {
    View view;
    const CPoint onModel(320, 300), onSlider = view.toolbar().buttonOf(ID_EXAGGERATION).CenterPoint();
    const CPoint onButton = view.toolbar().buttonOf(ID_SHOW_GRIDS).CenterPoint();
    const auto turned = view.angles();
    for (const UINT flags : {0U, UINT{MK_CONTROL}}) {
        SCOPED_TRACE(flags);
        view.mouse(WM_MOUSEMOVE, 0, onSlider);
        const Picture before = view.shown();
        view.drag({onSlider, onModel, onModel + CSize(36, 28), onModel + CSize(72, 56)}, flags);
        view.mouse(WM_LBUTTONUP, flags, onModel);
        EXPECT_EQ(view.shown(), before);

        // Taken away in the middle: neither bar nor chart go on, wherever the mouse is.
        view.mouse(WM_LBUTTONDOWN, MK_LBUTTON | flags, onSlider);
        ::ReleaseCapture();
        for (const CPoint pt : {onSlider + CSize(15, 0), onModel, onModel + CSize(40, 30)})
            view.mouse(WM_MOUSEMOVE, MK_LBUTTON | flags, pt);
        EXPECT_EQ(view.toolbar().IsButtonActive(), 0);
        view.paint();
        EXPECT_EQ(view.shown(), before);
    }
    EXPECT_EQ(view.angles(), turned);

    view.drag({onModel, onModel - CSize(4, 9), onModel - CSize(10, 40), onSlider, onButton});
    EXPECT_NE(view.angles(), turned);
    EXPECT_EQ(view.state().viewPoint, std::nullopt);
    view.mouse(WM_LBUTTONUP, 0, onButton);
    EXPECT_TRUE(view.state().grids);
    EXPECT_EQ(view.state().exaggeration, 1);

    const auto after = view.angles();
    view.mouse(WM_LBUTTONDOWN, MK_LBUTTON, onModel);
    ::ReleaseCapture();
    for (int i = 0; i < 20; ++i)
        view.mouse(WM_MOUSEMOVE, MK_LBUTTON, onModel + CSize(i, 2 * i));
    EXPECT_EQ(view.angles(), after);
}

} // namespace
