// SPDX-License-Identifier: MIT
#include "tests/support/canvas.h"
#include "tests/support/gl_test.h"
#include "tests/support/handle_counts.h"
#include "vorn/view/rendering_context.h"

namespace {

constexpr COLORREF red = RGB(200, 20, 10), blue = RGB(10, 20, 200), white = RGB(255, 255, 255);

class ContextTest : public testing::Test, public CvornOGLDC {
protected:
    ContextTest() {
        m_window.CreateEx(0, AfxRegisterWndClass(0), "", WS_POPUP, CRect(0, 0, 64, 48), nullptr, 0);
        SetRenderToDIB(1);
    }
    ~ContextTest() override {
        Destroy();
        m_window.DestroyWindow();
    }
    /// Fills a rectangle of GL window pixels.
    static void fill(COLORREF colour, int x, int y, int width, int height) {
        glEnable(GL_SCISSOR_TEST);
        glScissor(x, y, width, height);
        glClearColor(GetRValue(colour) / 255.0F, GetGValue(colour) / 255.0F, GetBValue(colour) / 255.0F, 0);
        glClear(GL_COLOR_BUFFER_BIT);
    }

    CWnd m_window;
    support::Canvas m_canvas{70, 40};
};

TEST_F(ContextTest, SurfacePicturesHaveTheirColoursAtAnySizeAndKeepTheirContext) {
    ASSERT_TRUE(CreateSurface(20, 10, nullptr) && MakeCurrentContext());
    glNewList(1, GL_COMPILE);
    fill(blue, 0, 0, 100, 10); // the lowest rows
    glEndList();
    for (const int width : {1, 61, 62, 63, 64}) {
        m_canvas.fill(white);
        ASSERT_TRUE(ResizeSurface(width, 30, nullptr) && MakeCurrentContext(CDC::FromHandle(m_canvas.dc())));
        fill(red, 0, 0, width, 30);
        glCallList(1);
        Render(3, 5, FALSE);
        const COLORREF rows[] = {white, red, red, blue, blue, white};
        const int ys[] = {4, 5, 24, 25, 34, 35};
        for (int i = 0; i < 6; ++i)
            for (const int x : {2, 3, 2 + width, 3 + width})
                EXPECT_EQ(m_canvas.at(x, ys[i]), x == 2 || x == 3 + width ? white : rows[i])
                    << x << ", " << ys[i];
    }
}

TEST_F(ContextTest, GdiDrawsOverAFinishedPictureAndLaterGlOverThat) {
    ASSERT_TRUE(CreateSurface(40, 40, nullptr) && MakeCurrentContext(CDC::FromHandle(m_canvas.dc())));
    for (const int defer : {FALSE, TRUE}) {
        fill(red, 0, 0, 40, 40);
        UpdateSurface(defer);
        GetDC()->FillSolidRect(0, 0, 20, 20, white);
        Render(0, 0, FALSE);
        EXPECT_EQ(m_canvas.at(5, 5), white);
        EXPECT_EQ(m_canvas.at(30, 30), red);
        fill(blue, 30, 0, 10, 10);
        if (defer) UpdateSurface(TRUE);
        Render(0, 0, FALSE);
        EXPECT_EQ(m_canvas.at(5, 5), red);
        EXPECT_EQ(m_canvas.at(35, 35), blue);
        EXPECT_EQ(::GetPixel(GetHDC(), 35, 35), blue) << "the picture comes late into the surface";
    }
}

TEST_F(ContextTest, OneWindowServesAllKindsOfOutputAndLeaksNothing) {
    support::HandleCounts before;
    for (int round = 0; round < 100; ++round) {
        if (round == 8) before = support::HandleCounts::now();
        SetRenderToDIB(round % 4 == 3);
        ASSERT_TRUE(IsRenderToDIB() ? CreateSurface(64, 48, nullptr) && ResizeSurface(66, 50, nullptr)
                                    : Create(&m_window, round % 4 == 1));
        CClientDC client(&m_window);
        ASSERT_TRUE(MakeCurrentContext(&client));
        fill(red, 0, 0, 64, 48);
        EXPECT_TRUE(support::isNear(support::pixelAt(60, 40), red));
        Destroy();
    }
    EXPECT_EQ(support::HandleCounts::now(), before);
}

TEST_F(ContextTest, FailuresLeaveNoContext) {
    EXPECT_FALSE(Create(&m_window, FALSE)) << "surface without bitmap";
    EXPECT_FALSE(CreateSurface(0, 0, &m_window));
    EXPECT_FALSE(CreateSurface(100'000, 100'000, &m_window));
    SetRenderToDIB(0);
    EXPECT_FALSE(Create(nullptr, FALSE));
    EXPECT_FALSE(MakeCurrentContext());
    EXPECT_EQ(GetRC(), nullptr);
    Render(0, 0, FALSE);
    ASSERT_TRUE(Create(&m_window, FALSE));
    CClientDC client(&m_window);
    for (CDC* unusable : {CDC::FromHandle(m_canvas.dc()), static_cast<CDC*>(nullptr)}) {
        ASSERT_TRUE(MakeCurrentContext(&client));
        EXPECT_FALSE(MakeCurrentContext(unusable));
        EXPECT_EQ(::wglGetCurrentContext(), nullptr) << "the earlier DC is still drawn to";
    }
}

TEST_F(ContextTest, PaletteOfEightBitDevicesHasSystemColours) {
    PIXELFORMATDESCRIPTOR format = {};
    format.cColorBits = 8;
    format.cRedBits = format.cGreenBits = format.cGreenShift = 3;
    format.cBlueBits = 2;
    format.cBlueShift = 6;
    PALETTEENTRY entries[256];
    FillPaletteEntries(format, entries);
    const BYTE expected[][4] = {
        {0x4A, 73, 36, 85}, {3, 128, 0, 0}, {91, 128, 128, 128}, {255, 255, 255, 255}};
    for (const auto& [i, r, g, b] : expected)
        EXPECT_EQ(RGB(entries[i].peRed, entries[i].peGreen, entries[i].peBlue), RGB(r, g, b)) << int{i};
}

} // namespace
