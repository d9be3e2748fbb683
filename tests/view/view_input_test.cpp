// SPDX-License-Identifier: MIT
#include "tests/support/probe_view.h"

#include <cmath>
#include <cstring>
#include <gtest/gtest.h>

namespace {

class ViewInputTest : public testing::Test {
protected:
    ViewInputTest() {
        EXPECT_TRUE(m_view.open(400, 300));
        m_view.paint();
        m_view.hooks.clear();
    }
    void key(UINT code, int repeats) { m_view.SendMessage(WM_KEYDOWN, code, repeats); }
    void wheel(int delta) { m_view.SendMessage(WM_MOUSEWHEEL, MAKEWPARAM(0, delta), 0); }
    /// From the window's centre to 40 pixels right and 20 up.
    void drag(UINT flags) {
        m_view.mouse(WM_MOUSEMOVE, 0, 200, 150);
        m_view.mouse(WM_LBUTTONDOWN, flags, 200, 150);
        m_view.hooks.clear();
        m_view.mouse(WM_MOUSEMOVE, flags, 240, 130);
        EXPECT_EQ(m_view.m_ptLastMouse, CPoint(240, 130));
    }

    support::ProbeView m_view;
};

TEST_F(ViewInputTest, KeysAndWheelZoomWithinTheLimits) {
    const struct {
        std::function<void()> act;
        float from, to;
    } cases[] = {{[&] { key(VK_UP, 5); }, 1, 1.5F},   {[&] { key(VK_UP, 5); }, 5.8F, 6},
                 {[&] { key(VK_DOWN, 3); }, 1, 0.7F}, {[&] { key(VK_DOWN, 3); }, 0.1F, 0},
                 {[&] { wheel(240); }, 1, 1.2F},      {[&] { wheel(-30); }, 1, 0.975F},
                 {[&] { wheel(1200); }, 5.9F, 6},     {[&] { wheel(-1200); }, 0.5F, 0},
                 {[&] { key(VK_LEFT, 1); }, 1, 1}};
    for (const auto& [act, from, to] : cases) {
        m_view.m_fZoom = from;
        m_view.hooks.clear();
        act();
        EXPECT_NEAR(m_view.m_fZoom, to, 1e-5) << "case " << &from - &cases[0].from;
        EXPECT_EQ(m_view.hooks, from != to ? "update11" : "");
    }
}

TEST_F(ViewInputTest, ControlDragMovesTheModelAndZoomingOutDrawsItBack) {
    drag(MK_LBUTTON | MK_CONTROL | MK_SHIFT);
    EXPECT_EQ(m_view.hooks, "update11 metrics camera pre scene exclude") << "painted at once";
    // Along the model's z axis, which the scale is measured on, and which is not quite parallel to the
    // screen.
    m_view.m_mapping.gluProject(0, 0, 0);
    EXPECT_NEAR(m_view.m_mapping.m_dPosX, 200 + 40, 8);
    EXPECT_NEAR(m_view.m_mapping.m_dPosY, 150 + 20, 4);
    const float pan = m_view.m_fPanX;
    const std::pair<std::function<void()>, double> steps[] = {{[&] { wheel(1200); }, pan},
                                                              {[&] { wheel(-60); }, 0.95 * pan},
                                                              {[&] { key(VK_UP, 10); }, 0.95 * pan},
                                                              {[&] { key(VK_DOWN, 17); }, 0.25 * pan}};
    for (const auto& [act, expected] : steps) {
        act();
        EXPECT_NEAR(m_view.m_fPanX, expected, 1e-5) << m_view.m_fZoom;
        if (m_view.m_fZoom > 5) m_view.m_fZoom = 1;
    }
}

TEST_F(ViewInputTest, DragsTurnOnlyWithTheLeftButtonAlone) {
    const CvornMatrix before = *m_view.m_userRot.GetMatrix();
    for (const UINT flags : {MK_LBUTTON | MK_SHIFT, MK_LBUTTON | MK_RBUTTON, MK_RBUTTON, MK_LBUTTON}) {
        drag(flags);
        m_view.mouse(WM_LBUTTONUP, 0, 240, 130);
        const bool turned = std::memcmp(&before, m_view.m_userRot.GetMatrix(), sizeof before) != 0;
        EXPECT_EQ(turned, flags == MK_LBUTTON) << flags;
    }
    EXPECT_EQ(m_view.hooks, "update10 metrics camera pre scene exclude");
    // Mostly sideways, the three-quarter view turns about z: a degree a pixel, 44 in all.
    CvornMatrix expected;
    expected.RotateXDeg(-70, 0);
    expected.RotateZDeg(45 + 44, 1);
    float to[] = {0.5F, 0, 0}, wanted[] = {0.5F, 0, 0};
    m_view.m_userRot.GetMatrix()->Transform3fa(to);
    expected.Transform3fa(wanted);
    EXPECT_NEAR(to[0], wanted[0], 1e-3);
}

TEST_F(ViewInputTest, ButtonsKeepCaptureStateAndMenu) {
    m_view.mouse(WM_LBUTTONDOWN, MK_LBUTTON, 100, 100);
    EXPECT_EQ(::GetCapture(), m_view.m_hWnd);
    m_view.mouse(WM_RBUTTONDOWN, MK_LBUTTON | MK_RBUTTON, 100, 100);
    EXPECT_EQ(m_view.hooks, "update10 metrics camera pre scene exclude") << "snaps back and opens no menu";
    m_view.mouse(WM_RBUTTONUP, MK_LBUTTON, 100, 100);
    EXPECT_FALSE(m_view.m_userRot.IsRDown());
    EXPECT_EQ(m_view.m_dwState, DWORD{STATE_LDOWN});
    m_view.mouse(WM_LBUTTONUP, 0, 100, 100);
    EXPECT_EQ(::GetCapture(), nullptr);
    m_view.hooks.clear();
    m_view.m_dwState = STATE_NOCAPTURE;
    m_view.mouse(WM_RBUTTONDOWN, MK_RBUTTON, 100, 100);
    EXPECT_EQ(m_view.hooks, "menu");
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

} // namespace
