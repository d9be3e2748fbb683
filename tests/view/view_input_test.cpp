// SPDX-License-Identifier: MIT
#include "tests/support/probe_view.h"

#include <cmath>
#include <gtest/gtest.h>

namespace {

class ViewInputTest : public testing::Test {
protected:
    ViewInputTest() {
        EXPECT_TRUE(m_view.open(400, 300));
        m_view.paint();
        m_view.hooks.clear();
    }
    void key(UINT code, int repeats = 1) { m_view.SendMessage(WM_KEYDOWN, code, repeats); }
    void wheel(int delta) { m_view.SendMessage(WM_MOUSEWHEEL, MAKEWPARAM(0, delta), 0); }
    void drag(UINT flags, CPoint from, CPoint to) {
        m_view.mouse(WM_MOUSEMOVE, 0, from.x, from.y);
        m_view.mouse(WM_LBUTTONDOWN, flags, from.x, from.y);
        m_view.mouse(WM_MOUSEMOVE, flags, to.x, to.y);
    }
    /// Where the end of the model's x axis, or its origin, is in the window, y downwards.
    CPoint windowPoint(double x) {
        m_view.m_mapping.gluProject(x, 0, 0);
        return CPoint(m_view.m_mapping.GetPosPt().x, 300 - m_view.m_mapping.GetPosPt().y);
    }

    support::ProbeView m_view;
};

TEST_F(ViewInputTest, KeysAndWheelZoomWithinTheLimits) {
    const struct {
        const char* what;
        std::function<void()> act;
        float from, to;
    } cases[] = {{"up held", [&] { key(VK_UP, 5); }, 1.0F, 1.5F},
                 {"up at the end", [&] { key(VK_UP, 5); }, 5.8F, 6.0F},
                 {"down", [&] { key(VK_DOWN, 3); }, 1.0F, 0.7F},
                 {"down at the start", [&] { key(VK_DOWN, 3); }, 0.1F, 0.0F},
                 {"wheel", [&] { wheel(240); }, 1.0F, 1.2F},
                 {"fine wheel", [&] { wheel(-30); }, 1.0F, 0.975F},
                 {"wheel to the end", [&] { wheel(1200); }, 5.9F, 6.0F},
                 {"wheel to the start", [&] { wheel(-1200); }, 0.5F, 0.0F},
                 {"other key", [&] { key(VK_LEFT); }, 1.0F, 1.0F}};
    for (const auto& [what, act, from, to] : cases) {
        m_view.m_fZoom = from;
        m_view.hooks.clear();
        act();
        EXPECT_NEAR(m_view.m_fZoom, to, 1e-5) << what;
        EXPECT_EQ(m_view.hooks, from != to ? "update11" : "") << what;
    }
}

TEST_F(ViewInputTest, ControlDragMovesTheModelWithTheMouseAndZoomingOutDrawsItBack) {
    const CPoint origin = windowPoint(0);
    drag(MK_LBUTTON | MK_CONTROL | MK_SHIFT, {200, 150}, {240, 130});
    EXPECT_EQ(m_view.hooks, "update11 metrics camera pre scene exclude") << "painted at once";
    // The scale is measured along the model's z axis, which is not quite parallel to the screen.
    const CSize moved = windowPoint(0) - origin;
    EXPECT_NEAR(moved.cx, 40, 8);
    EXPECT_NEAR(moved.cy, -20, 4);

    const float pan = m_view.m_fPanX;
    m_view.m_fZoom = 1;
    wheel(-60);
    EXPECT_NEAR(m_view.m_fPanX, pan * 0.95, 1e-5);
    key(VK_UP, 10);
    EXPECT_NEAR(m_view.m_fPanX, pan * 0.95, 1e-5);
    key(VK_DOWN, 17);
    EXPECT_NEAR(m_view.m_fPanX, pan * 0.25, 1e-5);
}

TEST_F(ViewInputTest, DragsTurnOnlyWithTheLeftButtonAlone) {
    const CPoint before = windowPoint(0.5);
    for (const UINT flags : {MK_LBUTTON | MK_SHIFT, MK_LBUTTON | MK_RBUTTON, MK_RBUTTON}) {
        drag(flags, {200, 150}, {240, 150});
        EXPECT_EQ(windowPoint(0.5), before) << flags;
        EXPECT_EQ(m_view.m_ptLastMouse, CPoint(240, 150)) << flags;
        m_view.mouse(WM_LBUTTONUP, 0, 240, 150);
    }
    m_view.hooks.clear();
    drag(MK_LBUTTON, {200, 150}, {240, 150});
    EXPECT_EQ(m_view.hooks, "update10 metrics camera pre scene exclude");
    // Sideways in the three-quarter view turns about z, a degree a pixel.
    CvornMatrix expected;
    expected.RotateXDeg(-70, 0);
    expected.RotateZDeg(45 + 40, 1);
    float turned[] = {0.5F, 0, 0}, wanted[] = {0.5F, 0, 0};
    m_view.m_userRot.GetMatrix()->Transform3fa(turned);
    expected.Transform3fa(wanted);
    EXPECT_NEAR(turned[0], wanted[0], 1e-3);
    EXPECT_NEAR(turned[1], wanted[1], 1e-3);
}

TEST_F(ViewInputTest, ButtonsKeepCaptureStateAndMenu) {
    m_view.mouse(WM_LBUTTONDOWN, MK_LBUTTON, 100, 100);
    EXPECT_EQ(::GetCapture(), m_view.m_hWnd);
    m_view.mouse(WM_RBUTTONDOWN, MK_LBUTTON | MK_RBUTTON, 100, 100);
    EXPECT_EQ(m_view.hooks.substr(0, 8), "update10") << "snaps back and opens no menu";
    m_view.mouse(WM_RBUTTONUP, MK_LBUTTON, 100, 100);
    EXPECT_FALSE(m_view.m_userRot.IsRDown());
    EXPECT_EQ(m_view.m_dwState, DWORD{STATE_LDOWN});
    m_view.mouse(WM_LBUTTONUP, 0, 100, 100);
    EXPECT_EQ(::GetCapture(), nullptr);
    m_view.hooks.clear();
    m_view.mouse(WM_RBUTTONDOWN, MK_RBUTTON, 100, 100);
    EXPECT_EQ(m_view.hooks, "menu");
    m_view.m_dwState = STATE_NOCAPTURE;
    m_view.mouse(WM_LBUTTONDOWN, MK_LBUTTON, 100, 100);
    EXPECT_EQ(::GetCapture(), nullptr);
}

TEST_F(ViewInputTest, ArrowsAndReturnReachTheViewBeforeDialogs) {
    for (const WPARAM code : {VK_RETURN, VK_LEFT, VK_UP, VK_RIGHT, VK_DOWN, VK_TAB, VK_ESCAPE}) {
        m_view.m_fZoom = 1;
        MSG msg = {m_view.m_hWnd, WM_KEYDOWN, code, 1, 0, {}};
        EXPECT_EQ(m_view.PreTranslateMessage(&msg) != FALSE, code != VK_TAB && code != VK_ESCAPE) << code;
        EXPECT_EQ(m_view.m_fZoom != 1, code == VK_UP || code == VK_DOWN) << code;
    }
}

TEST_F(ViewInputTest, DraggingBeforeTheFirstPictureDoesNoHarm) {
    support::ProbeView fresh;
    ASSERT_TRUE(fresh.CreateEx(0, AfxRegisterWndClass(0), "", WS_POPUP, CRect(0, 0, 50, 50), nullptr, 0));
    fresh.mouse(WM_MOUSEMOVE, MK_LBUTTON | MK_CONTROL, 30, 30);
    EXPECT_TRUE(std::isfinite(fresh.m_fPanX) && std::isfinite(fresh.m_fPanY));
}

} // namespace
