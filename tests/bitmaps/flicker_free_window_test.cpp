// SPDX-License-Identifier: MIT
#include "tests/support/canvas.h"
#include "tests/support/handle_counts.h"
#include "vorn/bitmaps/flicker_free_window.h"

#include <gtest/gtest.h>

namespace {

constexpr COLORREF orange = RGB(250, 140, 10), backdrop = RGB(1, 2, 3);

/// Fills what it may with orange and looks at what it was given.
struct OrangeWindow : CvornDCWnd {
    int m_nDraws = 0;
    using CvornDCWnd::m_bitmap, CvornDCWnd::m_rcClient;

    void Draw(CDC* pDC) override {
        m_nDraws++;
        EXPECT_TRUE(pDC->GetMapMode() == MM_TEXT && pDC->GetBkMode() == TRANSPARENT);
        EXPECT_EQ(pDC->GetWindowOrg() + pDC->GetViewportOrg(), CPoint(0, 0));
        EXPECT_NE(m_bitmap.m_hObject, nullptr);
        pDC->FillSolidRect(-10, -10, 1000, 1000, orange);
    }
};

TEST(FlickerFreeWindow, UpdatePaintsThroughABitmapAndRestoresTheDC) {
    support::Canvas canvas(60, 60, backdrop);
    CDC& dc = *CDC::FromHandle(canvas.dc());
    dc.SetMapMode(MM_HIMETRIC);
    dc.SetWindowOrg(7, 8);
    OrangeWindow window;
    CRect rect(10, 20, 50, 40);
    RECT excluded[] = {{5, 5, 10, 10}, {30, 0, 40, 3}};
    window.Update(&dc, rect, excluded, 2);
    for (const auto& [x, y] : {CPoint(10, 20), CPoint(49, 39), CPoint(40, 23)})
        EXPECT_EQ(canvas.at(x, y), orange) << x << ", " << y;
    for (const auto& [x, y] : {CPoint(15, 25), CPoint(40, 22), CPoint(9, 20), CPoint(10, 19), CPoint(50, 30)})
        EXPECT_NE(canvas.at(x, y), orange) << x << ", " << y;
    EXPECT_EQ(window.m_rcClient, rect);
    EXPECT_EQ(window.m_bitmap.m_hObject, nullptr);
    EXPECT_TRUE(dc.GetMapMode() == MM_HIMETRIC && dc.GetBkMode() == OPAQUE &&
                dc.GetWindowOrg() == CPoint(7, 8));

    const auto before = support::HandleCounts::now();
    for (int i = 0; i < 5; i++)
        window.Update(&dc, rect, excluded, 2);
    EXPECT_EQ(support::HandleCounts::now(), before);
    window.Update(nullptr, rect, nullptr, 0);
    EXPECT_EQ(window.m_nDraws, 6);
}

TEST(FlickerFreeWindow, PaintsItsClientAreaAndKeepsTheExclusions) {
    CWnd parent;
    ASSERT_TRUE(parent.CreateEx(0, AfxRegisterWndClass(0), "parent", WS_POPUP | WS_VISIBLE, 0, 0, 100, 80,
                                nullptr, nullptr));
    OrangeWindow window, second;
    ASSERT_TRUE(window.Create(&parent, 5));
    const CString className = CvornDCWnd::s_strDefClass;
    EXPECT_TRUE(second.Create(&parent, 6));
    EXPECT_STREQ(CvornDCWnd::s_strDefClass, className) << "registered once";
    EXPECT_EQ(::GetClassLongPtrA(window, GCL_STYLE),
              ULONG_PTR{CS_DBLCLKS | CS_PARENTDC | CS_BYTEALIGNCLIENT | CS_BYTEALIGNWINDOW});
    EXPECT_EQ(::GetClassLongPtrA(window, GCLP_HBRBACKGROUND), 0u);
    EXPECT_EQ(window.GetStyle(), 0x54000000u);
    CString name;
    window.GetWindowText(name);
    EXPECT_STREQ(name, "Flicker Free Window");

    window.MoveWindow(0, 0, 30, 20);
    CClientDC dc(&window);
    const auto paint = [&] {
        dc.FillSolidRect(0, 0, 30, 20, backdrop);
        window.Invalidate();
        window.UpdateWindow();
    };
    paint();
    EXPECT_TRUE(dc.GetPixel(29, 19) == orange && dc.GetPixel(10, 10) == orange);
    RECT excluded = {10, 10, 20, 20};
    CRect rect(3, 3, 5, 5);
    window.Update(&dc, rect, &excluded, 1);
    EXPECT_EQ(rect, CRect(0, 0, 30, 20));
    for (int i = 0; i < 2; i++) {
        paint();
        EXPECT_TRUE(dc.GetPixel(9, 10) == orange && dc.GetPixel(10, 10) != orange) << i;
    }
    dc.FillSolidRect(0, 0, 30, 20, backdrop);
    EXPECT_EQ(window.SendMessage(WM_ERASEBKGND, reinterpret_cast<WPARAM>(dc.m_hDC)), 1);
    EXPECT_EQ(dc.GetPixel(1, 1), backdrop) << "nothing erases the background";
}

} // namespace
