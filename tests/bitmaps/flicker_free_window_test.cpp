// SPDX-License-Identifier: MIT
#include "tests/support/canvas.h"
#include "tests/support/handle_counts.h"
#include "vorn/bitmaps/flicker_free_window.h"

#include <gtest/gtest.h>

namespace {

using support::Canvas;

constexpr COLORREF orange = RGB(250, 140, 10), backdrop = RGB(1, 2, 3);

/// Fills what it may with orange and writes down what it was given.
class OrangeWindow : public CvornDCWnd {
public:
    int m_nDraws = 0, m_nMapMode = 0, m_nBkMode = 0;
    CPoint m_origin;
    using CvornDCWnd::m_bitmap;
    using CvornDCWnd::m_rcClient;

protected:
    void Draw(CDC* pDC) override {
        m_nDraws++;
        m_nMapMode = pDC->GetMapMode();
        m_nBkMode = pDC->GetBkMode();
        m_origin = pDC->GetWindowOrg() + pDC->GetViewportOrg();
        EXPECT_NE(m_bitmap.m_hObject, nullptr);
        pDC->FillSolidRect(-10, -10, 1000, 1000, orange);
    }
};

TEST(FlickerFreeWindow, UpdatePaintsThroughABitmapAndRestoresTheDC) {
    Canvas canvas(60, 60, backdrop);
    CDC& dc = *CDC::FromHandle(canvas.dc());
    dc.SetMapMode(MM_HIMETRIC);
    dc.SetBkMode(OPAQUE);
    dc.SetWindowOrg(7, 8);
    OrangeWindow window;
    CRect rect(10, 20, 50, 40);
    RECT excluded[] = {{5, 5, 10, 10}, {30, 0, 40, 3}};
    const auto expectPainted = [&] {
        EXPECT_EQ(canvas.at(10, 20), orange);
        EXPECT_EQ(canvas.at(49, 39), orange);
        EXPECT_NE(canvas.at(15, 25), orange) << "excluded";
        EXPECT_NE(canvas.at(40, 22), orange) << "excluded";
        EXPECT_EQ(canvas.at(40, 23), orange);
        for (const auto& [x, y] : {CPoint(9, 20), CPoint(10, 19), CPoint(50, 30), CPoint(30, 40)})
            EXPECT_EQ(canvas.at(x, y), backdrop) << x << ", " << y;
    };
    window.Update(&dc, rect, excluded, 2);
    expectPainted();
    EXPECT_EQ(window.m_nMapMode, MM_TEXT);
    EXPECT_EQ(window.m_nBkMode, TRANSPARENT);
    EXPECT_EQ(window.m_origin, CPoint(0, 0));
    EXPECT_EQ(window.m_rcClient, rect);
    EXPECT_EQ(window.m_bitmap.m_hObject, nullptr);
    EXPECT_EQ(dc.GetMapMode(), MM_HIMETRIC);
    EXPECT_EQ(dc.GetBkMode(), OPAQUE);
    EXPECT_EQ(dc.GetWindowOrg(), CPoint(7, 8));

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
    EXPECT_TRUE(window.Create(&parent, 5));
    const CString className = CvornDCWnd::s_strDefClass;
    EXPECT_FALSE(className.IsEmpty());
    EXPECT_TRUE(second.Create(&parent, 6));
    EXPECT_EQ(CvornDCWnd::s_strDefClass, className);
    WNDCLASSA windowClass = {};
    EXPECT_TRUE(::GetClassInfoA(AfxGetInstanceHandle(), className, &windowClass) ||
                ::GetClassInfoA(::GetModuleHandleA("vorn.dll"), className, &windowClass));
    EXPECT_EQ(windowClass.style, UINT{CS_DBLCLKS | CS_PARENTDC | CS_BYTEALIGNCLIENT | CS_BYTEALIGNWINDOW});
    EXPECT_EQ(windowClass.hbrBackground, nullptr);
    EXPECT_EQ(window.GetStyle() & CvornDCWnd::s_dwDefStyle, 0x54000000u);
    EXPECT_EQ(window.GetDlgCtrlID(), 5);
    CString name;
    window.GetWindowText(name);
    EXPECT_STREQ(name, "Flicker Free Window");

    window.MoveWindow(0, 0, 30, 20);
    window.UpdateWindow();
    EXPECT_GT(window.m_nDraws, 0);
    EXPECT_EQ(window.m_rcClient, CRect(0, 0, 30, 20));
    {
        CClientDC dc(&window);
        EXPECT_EQ(dc.GetPixel(29, 19), orange);
        RECT excluded = {10, 10, 20, 20};
        CRect ignored(3, 3, 5, 5);
        window.Update(&dc, ignored, &excluded, 1);
        EXPECT_EQ(ignored, CRect(0, 0, 30, 20));
        dc.FillSolidRect(0, 0, 30, 20, backdrop);
    }
    for (int paint = 0; paint < 2; paint++) {
        window.Invalidate();
        window.UpdateWindow();
        CClientDC dc(&window);
        EXPECT_EQ(dc.GetPixel(9, 10), orange) << paint;
        EXPECT_NE(dc.GetPixel(10, 10), orange) << paint;
    }
    CClientDC dc(&window);
    dc.FillSolidRect(0, 0, 30, 20, backdrop);
    EXPECT_EQ(window.SendMessage(WM_ERASEBKGND, reinterpret_cast<WPARAM>(dc.m_hDC)), 1);
    EXPECT_EQ(dc.GetPixel(1, 1), backdrop) << "nothing erases the background";
}

} // namespace
