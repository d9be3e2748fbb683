// SPDX-License-Identifier: MIT
#include "tests/support/canvas.h"
#include "tests/support/gl_test.h"
#include "tests/support/handle_counts.h"
#include "tests/support/probe_view.h"

#include <filesystem>

namespace {

constexpr COLORREF red = RGB(200, 20, 10), green = RGB(10, 200, 20), blue = RGB(10, 20, 200),
                   white = RGB(255, 255, 255);
constexpr const char* metafileName = "C:\\test.emf";

/// A view from above of two plates, the left one red, the right one blue, on green.
class ViewOutputTest : public testing::Test {
protected:
    ViewOutputTest() {
        m_view.m_clrBackground = green;
        m_view.m_userRot.SetTop();
        m_view.build = [] {
            support::drawPlate(red, -0.4F, -0.3F, 0, 0.3F);
            support::drawPlate(blue, 0, -0.3F, 0.4F, 0.3F);
        };
        EXPECT_TRUE(m_view.open());
        m_view.paint();
        m_view.hooks.clear();
    }
    int print(CRect rc) { return m_view.PrintScene(CDC::FromHandle(m_canvas.dc()), rc, 0); }
    /// The picture is in the rectangle of the canvas, which is white around it; and the view is as before:
    /// its size, a window context, and a repaint from scratch.
    void expectPictureAndViewAsBefore(CRect rc) {
        const CPoint centre = rc.CenterPoint();
        for (const auto& [x, colour] : {std::pair(centre.x - 4, red), std::pair(centre.x + 4, blue)})
            EXPECT_TRUE(support::isNear(m_canvas.at(x, centre.y), colour)) << x;
        for (const int x : {rc.left - 1, rc.left, rc.right - 1, rc.right})
            for (const int y : {rc.top - 1, rc.top, rc.bottom - 1, rc.bottom})
                EXPECT_EQ(m_canvas.at(x, y), rc.PtInRect(CPoint(x, y)) ? green : white) << x << ", " << y;
        m_canvas.fill(white);
        EXPECT_EQ(m_view.m_rcView, CRect(0, 0, 200, 150));
        EXPECT_FALSE(m_view.m_oglDC.IsRenderToDIB());
        EXPECT_EQ(m_view.m_dwState, 0U);
        EXPECT_EQ(m_view.paint(),
                  "metrics effects textures fonts textmetrics camera build pre scene exclude");
        EXPECT_TRUE(support::isNear(m_view.at(95, 70), red));
        m_view.hooks.clear();
    }

    support::Canvas m_canvas{330, 320};
    support::ProbeView m_view;
};

TEST_F(ViewOutputTest, PrintsThePictureInItsRectangleAndGoesOn) {
    for (const CRect& rc : {CRect(10, 20, 310, 245), CRect(5, 3, 106, 310)}) {
        EXPECT_EQ(print(rc), 1);
        EXPECT_EQ(m_view.hooks,
                  "size update0 update1 printmetrics effects textures fonts textmetrics camera build "
                  "pre scene exclude update1 update0 size update11");
        BITMAP bitmap = {};
        ::GetObjectA(m_canvas.bitmap(), sizeof bitmap, &bitmap);
        const auto* pixel = static_cast<const uint32_t*>(bitmap.bmBits) + rc.CenterPoint().y * bitmap.bmWidth;
        EXPECT_EQ(pixel[rc.CenterPoint().x] >> 24, 0U) << "seen as alpha by other programs";
        expectPictureAndViewAsBefore(rc);
    }
    print(CRect(50, 20, 50, 120)); // empty: the view's own size
    expectPictureAndViewAsBefore(CRect(50, 20, 250, 170));
    m_view.m_nBottomMargin = 30; // the window's, not the picture's
    m_view.SetViewportSize(200, 180, TRUE, 0, 0);
    print(CRect(10, 10, 210, 160));
    expectPictureAndViewAsBefore(CRect(10, 10, 210, 130));
    EXPECT_EQ(m_view.PrintScene(nullptr, CRect(0, 0, 100, 100), 0), 1);
    support::ProbeView closed;
    EXPECT_EQ(closed.PrintScene(CDC::FromHandle(m_canvas.dc()), CRect(0, 0, 40, 40), 0), 1);
}

TEST_F(ViewOutputTest, PicturesBeyondTheViewportComeOutWhole) {
    constexpr int width = 20'000, height = 40; // wider than GL draws at once
    support::Canvas canvas(width + 2, height);
    m_view.onHook = [](const std::string& hook) {
        if (hook != "scene") return;
        // What begins in one tile ends in the next.
        static const std::vector<GLubyte> row(1000, 0xFF);
        glColor3ub(0, 0, 0);
        glRasterPos3f(-100, 0.1F, 0);
        glBitmap(8000, 1, 0, 0, 0, 0, row.data());
    };
    m_view.cycles = 0;
    m_view.PrintScene(CDC::FromHandle(canvas.dc()), CRect(1, 0, width + 1, height), 0);
    EXPECT_EQ(m_view.cycles, 3) << "tiles";
    int reds = 0, blues = 0, whites = 0, blacks = 0, gaps = 0;
    for (int x = 0; x < width + 2; ++x) {
        const COLORREF colour = canvas.at(x, height / 2);
        reds += colour == red;
        if (colour == blue && ++blues == 1) {
            EXPECT_EQ(x, 1 + width / 2);
        }
        whites += colour == white;
        int y = 0;
        while (y < height && canvas.at(x, y) != RGB(0, 0, 0))
            ++y;
        if (y == height && blacks > 0 && blacks < 8000) ++gaps;
        blacks += y < height;
    }
    EXPECT_NEAR(reds, 12, 1) << "0.4 of 1.33 model units in 40 pixels";
    EXPECT_NEAR(blues, 12, 1);
    EXPECT_EQ(whites, 2) << "beside the picture";
    EXPECT_EQ(blacks, 8000);
    EXPECT_EQ(gaps, 0);
}

TEST_F(ViewOutputTest, TheClipboardAndTheFileHoldTheMetafile) {
    for (const bool isWritable : {false, true}) {
        std::filesystem::remove(metafileName);
        if (!isWritable) std::filesystem::create_directory(metafileName);
        m_view.OutputToMetafile(nullptr, CRect(0, 0, 240, 160), 0);
        EXPECT_EQ(std::filesystem::is_regular_file(metafileName), isWritable);
        ASSERT_TRUE(::OpenClipboard(nullptr));
        const auto metafile = static_cast<HENHMETAFILE>(::GetClipboardData(CF_ENHMETAFILE));
        ENHMETAHEADER header = {};
        ::GetEnhMetaFileHeader(metafile, sizeof header, &header);
        EXPECT_NEAR(header.rclFrame.right, ::MulDiv(240, 2540, ::GetDeviceCaps(m_canvas.dc(), LOGPIXELSX)),
                    1);
        EXPECT_NEAR(header.rclFrame.bottom, ::MulDiv(160, 2540, ::GetDeviceCaps(m_canvas.dc(), LOGPIXELSY)),
                    1);
        char text[32] = {};
        ::GetEnhMetaFileDescriptionA(metafile, sizeof text, text);
        EXPECT_EQ(std::string(text, 22), std::string("KEST Modal\0Model View\0", 22));
        const CRect rc(10, 10, 250, 170);
        EXPECT_TRUE(::PlayEnhMetaFile(m_canvas.dc(), metafile, &rc));
        ::CloseClipboard();
        expectPictureAndViewAsBefore(rc);
    }
    std::filesystem::remove(metafileName);
}

TEST_F(ViewOutputTest, AHundredOfEachKindLeaveNothingBehind) {
    const auto countsInPaint = [&] {
        support::HandleCounts counts;
        m_view.onHook = [&](const std::string& hook) {
            if (hook == "scene") counts = support::HandleCounts::now();
        };
        m_view.paint();
        m_view.onHook = nullptr;
        return counts;
    };
    support::HandleCounts before;
    for (int i = 0; i < 103; ++i) {
        if (i == 3) before = countsInPaint();
        print(CRect(0, 0, 60, 40));
        m_view.OutputToMetafile(nullptr, CRect(0, 0, 60, 40), 0);
    }
    EXPECT_EQ(countsInPaint(), before);
    std::filesystem::remove(metafileName);
}

TEST_F(ViewOutputTest, MenusAreUpdatedFromTheLastItemAndTheChoiceArrives) {
    CMenu bar, popup, inner;
    bar.CreateMenu();
    popup.CreatePopupMenu();
    inner.CreatePopupMenu();
    for (const UINT id : {21, 22})
        inner.AppendMenu(MF_STRING, id, "inner");
    popup.AppendMenu(MF_STRING, 11, "first");
    popup.AppendMenu(MF_SEPARATOR);
    popup.AppendMenu(MF_POPUP, reinterpret_cast<UINT_PTR>(inner.Detach()), "inner");
    popup.AppendMenu(MF_STRING, 12, "last");
    bar.AppendMenu(MF_POPUP, reinterpret_cast<UINT_PTR>(popup.Detach()), "popup");
    for (const WPARAM answer : {VK_RETURN, VK_ESCAPE}) {
        m_view.menuItems.clear();
        for (const WPARAM key : {WPARAM{VK_DOWN}, answer})
            m_view.PostMessage(WM_KEYDOWN, key, 1); // for the menu's own message loop
        m_view.ShowMenu(&bar, 0);
        EXPECT_EQ(m_view.menuItems,
                  answer == VK_RETURN ? std::vector({12, 22, 21, 11, -11}) : std::vector({12, 22, 21, 11}));
        EXPECT_EQ(m_view.m_dwState, 0U);
    }
    for (const UINT id : {11, 12, 21, 22})
        EXPECT_EQ((bar.GetMenuState(id, MF_BYCOMMAND) & MF_GRAYED) != 0, id % 2 == 0) << id;
    m_view.ShowMenu(&bar, 1);
    m_view.ShowMenu(nullptr, 0);
}

} // namespace
