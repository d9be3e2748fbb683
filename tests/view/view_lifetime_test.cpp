// SPDX-License-Identifier: MIT
#include "tests/support/gl_test.h"
#include "tests/support/handle_counts.h"
#include "tests/support/probe_view.h"

namespace {

/// A view that draws a plate in its list and with its texture, both numbered as in every other view.
class TexturedView : public support::ProbeView {
public:
    explicit TexturedView(COLORREF colour) {
        build = [] {
            glEnable(GL_TEXTURE_2D);
            support::drawPlate(RGB(255, 255, 255), -0.4F, -0.4F, 0.4F, 0.4F);
        };
        onHook = [this, colour](const std::string& hook) {
            if (hook != "textures") return;
            const GLubyte texel[] = {GetRValue(colour), GetGValue(colour), GetBValue(colour)};
            glBindTexture(GL_TEXTURE_2D, m_auTextures[0]);
            glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
            glTexImage2D(GL_TEXTURE_2D, 0, GL_RGB, 1, 1, 0, GL_RGB, GL_UNSIGNED_BYTE, texel);
        };
        EXPECT_TRUE(open());
    }
    COLORREF centre() {
        paint();
        return at(m_rcView.Width() / 2, m_rcView.Height() / 2);
    }
};

constexpr COLORREF red = RGB(200, 20, 10), blue = RGB(10, 20, 200);

TEST(ViewLifetimeTest, TwoViewsOpenAndCloseInAnyOrderAndAgain) {
    for (int closed = 0; closed < 2; ++closed) {
        TexturedView views[] = {TexturedView(red), TexturedView(blue)};
        const COLORREF colours[] = {red, blue};
        for (int i = 0; i < 2; ++i)
            EXPECT_TRUE(support::isNear(views[i].centre(), colours[i]));
        views[closed].DestroyWindow();
        EXPECT_EQ(views[closed].m_oglDC.GetRC(), nullptr);
        EXPECT_TRUE(support::isNear(views[1 - closed].centre(), colours[1 - closed]))
            << "the other view is closed";
        ASSERT_TRUE(views[closed].open());
        EXPECT_TRUE(support::isNear(views[closed].centre(), colours[closed]));
        EXPECT_TRUE(support::isNear(views[1 - closed].centre(), colours[1 - closed]))
            << "the other view is open again";
    }
}

TEST(ViewLifetimeTest, RoundsOfOpeningPaintingAndClosingLeakNothing) {
    support::HandleCounts before;
    for (int round = 0; round < 200; ++round) {
        if (round == 4) before = support::HandleCounts::now();
        TexturedView view(blue);
        view.paint();
        view.SetWindowPos(nullptr, 0, 0, 120, 100, SWP_NOZORDER | SWP_NOACTIVATE);
        view.mouse(WM_MOUSEMOVE, MK_LBUTTON | MK_CONTROL, 60, 40);
        if (round % 2 == 0) view.DestroyWindow();
    }
    EXPECT_EQ(support::HandleCounts::now(), before);
}

TEST(ViewLifetimeTest, CreationFailsWithoutAContextAndLeavesNothing) {
    class Unlucky : public support::ProbeView {
    public:
        Unlucky() {
            // The update before the context is made is the chance to hide the window from it.
            onHook = [this](const std::string& hook) {
                if (hook == "update0") m_hHidden = std::exchange(m_hWnd, nullptr);
            };
        }
        LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
            const LRESULT result = ProbeView::WindowProc(message, wParam, lParam);
            if (m_hHidden != nullptr) m_hWnd = std::exchange(m_hHidden, nullptr);
            return result;
        }
        HWND m_hHidden = nullptr;
    };
    support::HandleCounts before;
    for (int i = 0; i < 3; ++i) {
        if (i == 1) before = support::HandleCounts::now();
        Unlucky view;
        EXPECT_FALSE(view.open());
        EXPECT_EQ(view.m_hWnd, nullptr);
    }
    EXPECT_EQ(support::HandleCounts::now(), before);
}

TEST(ViewLifetimeTest, SizesBeforeCreationAndOfMinimisedWindows) {
    support::ProbeView view;
    EXPECT_EQ(view.SetViewportSize(300, 200, TRUE, 0, 0), CSize(0, 0));
    view.SetUpdate(UPD_BUILD, TRUE, TRUE);
    EXPECT_FALSE(view.CreateDCA(0)) << "without a window";
    ASSERT_TRUE(view.open());
    view.SendMessage(WM_SIZE, SIZE_MINIMIZED, 0);
    EXPECT_EQ(view.m_rcView, CRect(0, 0, 200, 150));
    view.paint();
    EXPECT_TRUE(support::isNear(view.at(0, 0), RGB(255, 255, 0)));
    view.m_bToolBar = 1;
    view.hooks.clear();
    view.SetViewportSize(180, 120, TRUE, 0, 0);
    EXPECT_EQ(view.hooks, "bars size update11");
    const std::unique_ptr<CObject> made(RUNTIME_CLASS(CvornOGLWnd)->CreateObject());
    EXPECT_TRUE(made->IsKindOf(RUNTIME_CLASS(CvornOGLWnd)));
}

} // namespace
