// SPDX-License-Identifier: MIT
#include "vorn/bitmaps/flicker_free_window.h"

#include "tests/bitmaps/bitmap_test.h"

namespace {

/// Fills what it may with orange and looks at what it was given.
struct OrangeWindow : CvornDCWnd {
    int m_nDraws = 0;
    using CvornDCWnd::m_bitmap, CvornDCWnd::m_rcClient;

    void Draw(CDC* pDC) override {
        m_nDraws++;
        EXPECT_TRUE(pDC->GetMapMode() == MM_TEXT && pDC->GetBkMode() == TRANSPARENT && m_bitmap.m_hObject);
        EXPECT_EQ(pDC->GetWindowOrg() + pDC->GetViewportOrg(), CPoint(0, 0));
        pDC->FillSolidRect(-10, -10, 1000, 1000, orange);
    }
};

class FlickerFreeWindow : public BitmapTest {
protected:
    OrangeWindow m_window;
};

TEST_F(FlickerFreeWindow, UpdatePaintsThroughABitmapAndRestoresTheDC) {
    m_dc.SetMapMode(MM_HIMETRIC);
    m_dc.SetWindowOrg(7, 8);
    CRect rect(10, 20, 50, 40);
    RECT excluded[] = {{5, 5, 10, 10}, {30, 0, 40, 3}};
    expectHandlesKept([&] { m_window.Update(&m_dc, rect, excluded, 2); });
    expectPixels("painted", {{10, 20, orange}, {49, 39, orange}, {40, 23, orange}});
    expectPixels("around", {{9, 20, backdrop}, {10, 19, backdrop}, {50, 30, backdrop}, {30, 40, backdrop}});
    EXPECT_TRUE(m_canvas.at(15, 25) != orange && m_canvas.at(40, 22) != orange) << "excluded";
    EXPECT_EQ(m_window.m_rcClient, rect);
    EXPECT_EQ(m_window.m_bitmap.m_hObject, nullptr);
    EXPECT_EQ(m_dc.GetWindowOrg(), CPoint(7, 8));
    EXPECT_TRUE(m_dc.GetMapMode() == MM_HIMETRIC && m_dc.GetBkMode() == OPAQUE);
    m_window.Update(nullptr, rect, nullptr, 0);
    EXPECT_EQ(m_window.m_nDraws, 3);
}

TEST_F(FlickerFreeWindow, PaintsItsClientAreaAndKeepsTheExclusions) {
    CWnd parent;
    ASSERT_TRUE(parent.CreateEx(0, AfxRegisterWndClass(0), "parent", WS_POPUP | WS_VISIBLE,
                                CRect(0, 0, 100, 80), nullptr, 0));
    ASSERT_TRUE(m_window.Create(&parent, 5));
    m_window.MoveWindow(0, 0, 30, 20);
    CClientDC dc(&m_window);
    const auto paint = [&](bool excluded) {
        dc.FillSolidRect(0, 0, 30, 20, backdrop);
        m_window.Invalidate();
        m_window.UpdateWindow();
        EXPECT_TRUE(dc.GetPixel(29, 19) == orange && (dc.GetPixel(10, 10) != orange) == excluded);
    };
    paint(false);
    RECT excluded = {10, 10, 20, 20};
    CRect rect(3, 3, 5, 5);
    m_window.Update(&dc, rect, &excluded, 1);
    EXPECT_EQ(rect, CRect(0, 0, 30, 20));
    paint(true);
    paint(true);
    dc.FillSolidRect(0, 0, 30, 20, backdrop);
    EXPECT_EQ(m_window.SendMessage(WM_ERASEBKGND, reinterpret_cast<WPARAM>(dc.m_hDC)), 1);
    EXPECT_EQ(dc.GetPixel(1, 1), backdrop) << "nothing erases the background";
}

} // namespace
