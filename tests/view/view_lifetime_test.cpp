// SPDX-License-Identifier: MIT
#include "tests/support/gl_test.h"
#include "tests/support/handle_counts.h"
#include "tests/support/probe_view.h"

namespace {

/// A view that draws a plate from its list with its texture, both numbered as in every other view.
class TexturedView : public support::ProbeView {
public:
    explicit TexturedView(COLORREF colour) {
        build = [] {
            glEnable(GL_TEXTURE_2D);
            support::drawPlate(RGB(255, 255, 255), -0.4F, -0.4F, 0.4F, 0.4F);
        };
        onHook = [this, colour](const std::string& hook) {
            if (hook != "textures") return;
            glBindTexture(GL_TEXTURE_2D, m_auTextures[0]);
            glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
            glTexImage2D(GL_TEXTURE_2D, 0, GL_RGB, 1, 1, 0, GL_RGBA, GL_UNSIGNED_BYTE, &colour);
        };
        EXPECT_TRUE(open());
    }
    COLORREF centre() {
        paint();
        return at(100, 75);
    }
};

TEST(ViewLifetimeTest, TwoViewsOpenAndCloseInAnyOrderAndAgain) {
    const COLORREF colours[] = {RGB(200, 20, 10), RGB(10, 20, 200)};
    for (int closed = 0; closed < 2; ++closed) {
        TexturedView views[] = {TexturedView(colours[0]), TexturedView(colours[1])};
        for (const int i : {closed, 1 - closed})
            EXPECT_TRUE(support::isNear(views[i].centre(), colours[i]));
        views[closed].DestroyWindow();
        EXPECT_EQ(views[closed].m_oglDC.GetRC(), nullptr);
        EXPECT_TRUE(support::isNear(views[1 - closed].centre(), colours[1 - closed]))
            << "the other is closed";
        ASSERT_TRUE(views[closed].open());
        for (const int i : {closed, 1 - closed})
            EXPECT_TRUE(support::isNear(views[i].centre(), colours[i])) << "closed and opened again";
    }
}

TEST(ViewLifetimeTest, RoundsOfOpeningPaintingAndClosingLeakNothing) {
    support::HandleCounts before;
    for (int round = 0; round < 200; ++round) {
        if (round == 4) before = support::HandleCounts::now();
        auto view = std::make_unique<TexturedView>(RGB(10, 20, 200));
        view->paint();
        view->mouse(WM_MOUSEMOVE, MK_LBUTTON | MK_CONTROL, 60, 40);
        if (round % 10 == 0) view->OutputToMetafile(nullptr, CRect(0, 0, 50, 40), 0);
        if (round % 10 == 1) view->PrintScene(nullptr, CRect(0, 0, 50, 40), 0);
        const HGLRC context = view->m_oglDC.GetRC();
        if (round % 2 == 0) view->DestroyWindow();
        view.reset();
        EXPECT_FALSE(::wglDeleteContext(context)) << "it is still there";
    }
    EXPECT_EQ(support::HandleCounts::now(), before);
}

TEST(ViewLifetimeTest, CreationFailsWithoutAContextAndLeavesNothing) {
    support::HandleCounts before;
    for (int round = 0; round < 3; ++round) {
        if (round == 1) before = support::HandleCounts::now();
        support::ProbeView view;
        HWND hidden = nullptr;
        view.onHook = [&](const std::string& hook) {
            // The update before the context is made is the chance to hide the window from it.
            if (hook == "update0") hidden = std::exchange(view.m_hWnd, nullptr);
        };
        EXPECT_FALSE(view.open());
        EXPECT_EQ(view.m_oglDC.GetRC(), nullptr);
        EXPECT_FALSE(::IsWindow(hidden));
    }
    EXPECT_EQ(support::HandleCounts::now(), before);
}

TEST(ViewLifetimeTest, HooksThatPaintOrDestroyTheWindowDoNoHarm) {
    support::ProbeView view;
    ASSERT_TRUE(view.open());
    view.onHook = [&](const std::string& hook) {
        if (hook != "scene") return;
        view.Invalidate();
        view.UpdateWindow();
        if (view.cycles == 1) view.DestroyWindow();
    };
    view.paint();
    EXPECT_EQ(view.cycles, 1) << "a cycle within the cycle";
    view.paint();
    EXPECT_EQ(view.m_hWnd, nullptr);
    EXPECT_EQ(::wglGetCurrentContext(), nullptr);
}

TEST(ViewLifetimeTest, SizesBeforeCreationAndOfMinimisedWindows) {
    support::ProbeView view;
    EXPECT_EQ(view.SetViewportSize(300, 200, TRUE, 0, 0), CSize(0, 0));
    EXPECT_FALSE(view.CreateDCA(0)) << "without a window";
    ASSERT_TRUE(view.open());
    view.mouse(WM_MOUSEMOVE, MK_LBUTTON | MK_CONTROL, 30, 30); // a drag before the first picture
    view.SendMessage(WM_SIZE, SIZE_MINIMIZED, 0);
    EXPECT_EQ(view.m_rcView, CRect(0, 0, 200, 150));
    view.paint();
    EXPECT_TRUE(support::isNear(view.at(100, 75), RGB(0x71, 0x4D, 0x4D), 20)) << "the cube";
    view.m_bToolBar = 1;
    view.hooks.clear();
    view.SetViewportSize(180, 120, TRUE, 0, 0);
    EXPECT_EQ(view.hooks, "bars size update11");
}

} // namespace
