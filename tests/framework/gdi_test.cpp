// SPDX-License-Identifier: MIT
#include "tests/support/handle_counts.h"

#include <afxext.h>
#include <gtest/gtest.h>

using support::HandleCounts;

namespace {

TEST(GdiObject, OwnsItsHandleOnce) {
    { CPen first(PS_SOLID, 1, 0); }
    const HandleCounts before = HandleCounts::now();
    {
        CPen pen(PS_DASH, 1, 0);
        EXPECT_FALSE(pen.CreatePen(PS_SOLID, 5, RGB(0, 0, 0))) << "it has one, and the new one must not leak";
        EXPECT_EQ(CPen::FromHandle(pen), &pen);
        HGDIOBJ handle = pen.Detach();
        EXPECT_NE(CGdiObject::FromHandle(handle), &pen);
        EXPECT_TRUE(CGdiObject::FromHandle(handle)->IsKindOf(RUNTIME_CLASS(CPen)));
        CPen other;
        EXPECT_TRUE(other.Attach(handle));
        EXPECT_FALSE(pen.Attach(nullptr));
        EXPECT_TRUE(other.DeleteObject());
        EXPECT_FALSE(other.DeleteObject());
        CBitmap bitmap;
        EXPECT_FALSE(bitmap.LoadBitmap(31999)) << "no such resource";
    }
    EXPECT_EQ(HandleCounts::now(), before);
}

TEST(DeviceContext, SelectsAndGivesBack) {
    const HandleCounts before = HandleCounts::now();
    {
        CDC dc;
        ASSERT_TRUE(dc.CreateCompatibleDC(nullptr));
        EXPECT_FALSE(dc.CreateCompatibleDC(nullptr)) << "it has one";
        EXPECT_EQ(CDC::FromHandle(dc), &dc);
        CBitmap bitmap;
        ASSERT_TRUE(bitmap.CreateBitmap(20, 10, 1, 32, nullptr));
        CBitmap* oldBitmap = dc.SelectObject(&bitmap);
        ASSERT_NE(oldBitmap, nullptr);
        EXPECT_EQ(dc.GetCurrentBitmap(), &bitmap);
        CBrush red(RGB(255, 0, 0));
        CBrush* oldBrush = dc.SelectObject(&red);
        dc.PatBlt(0, 0, 20, 10, PATCOPY);
        dc.FillSolidRect(2, 3, 4, 5, RGB(0, 0, 255));
        for (const CPoint inside : {CPoint(2, 3), CPoint(5, 7)})
            EXPECT_EQ(dc.GetPixel(inside), static_cast<COLORREF>(RGB(0, 0, 255)));
        for (const CPoint outside : {CPoint(1, 3), CPoint(6, 7), CPoint(5, 8)})
            EXPECT_EQ(dc.GetPixel(outside), static_cast<COLORREF>(RGB(255, 0, 0)));
        EXPECT_EQ(dc.SelectObject(oldBrush), &red);
        EXPECT_EQ(dc.SelectObject(oldBitmap), &bitmap);
    }
    EXPECT_EQ(HandleCounts::now(), before);
}

TEST(DeviceContext, OfWindowsAreReleased) {
    CWnd window;
    ASSERT_TRUE(window.CreateEx(0, nullptr, "", WS_POPUP | WS_BORDER, CRect(0, 0, 60, 40), nullptr, 0));
    const auto drawSomeTimes = [&](int times) {
        for (int i = 0; i < times; i++) {
            CClientDC client(&window);
            CWindowDC whole(&window);
            CPaintDC paint(&window);
            EXPECT_EQ(paint.GetWindow(), &window);
            CDC* temporary = window.GetDC();
            EXPECT_EQ(CDC::FromHandle(temporary->m_hDC), temporary);
            EXPECT_EQ(window.ReleaseDC(temporary), 1);
        }
    };
    drawSomeTimes(1); // the system keeps some DCs for the next time
    const HandleCounts before = HandleCounts::now();
    drawSomeTimes(100);
    EXPECT_EQ(HandleCounts::now(), before);
}

TEST(DeviceContext, AttributesGoToBothAndQuestionsToTheAttributeDC) {
    CDC drawing, attributes;
    drawing.CreateCompatibleDC(nullptr);
    attributes.CreateCompatibleDC(nullptr);
    drawing.SetAttribDC(attributes);
    EXPECT_EQ(drawing.SetTextColor(RGB(9, 8, 7)), RGB(0, 0, 0));
    drawing.SetBkMode(TRANSPARENT);
    drawing.SetMapMode(MM_ANISOTROPIC);
    drawing.SetViewportOrg(5, 6);
    EXPECT_EQ(drawing.SetViewportOrg(7, 8), CPoint(5, 6));
    drawing.SelectStockObject(GRAY_BRUSH);
    drawing.MoveTo(3, 4);
    drawing.LineTo(11, 12);
    for (HDC dc : {drawing.m_hDC, attributes.m_hDC}) {
        POINT point{};
        EXPECT_EQ(::GetTextColor(dc), static_cast<COLORREF>(RGB(9, 8, 7)));
        EXPECT_EQ(::GetMapMode(dc), MM_ANISOTROPIC);
        ::GetViewportOrgEx(dc, &point);
        EXPECT_EQ(CPoint(point), CPoint(7, 8));
        EXPECT_EQ(::GetCurrentObject(dc, OBJ_BRUSH), ::GetStockObject(GRAY_BRUSH));
        ::GetCurrentPositionEx(dc, &point);
        EXPECT_EQ(CPoint(point), CPoint(11, 12));
    }
    // Only the attribute DC answers.
    ::SetTextColor(attributes, RGB(1, 1, 1));
    EXPECT_EQ(drawing.GetTextColor(), static_cast<COLORREF>(RGB(1, 1, 1)));
    // The state of two DCs is saved and put back together.
    const int saved = drawing.SaveDC();
    drawing.SetBkMode(OPAQUE);
    EXPECT_EQ(saved, -1);
    EXPECT_TRUE(drawing.RestoreDC(saved));
    EXPECT_EQ(::GetBkMode(drawing), TRANSPARENT);
    EXPECT_EQ(::GetBkMode(attributes), TRANSPARENT);
    ::DeleteDC(drawing.Detach());
    EXPECT_EQ(drawing.m_hAttribDC, nullptr) << "it is not this one's to keep";
}

TEST(DeviceContext, HimetricFollowsTheLogicalInchOrTheMapMode) {
    CDC dc;
    ASSERT_TRUE(dc.CreateCompatibleDC(nullptr));
    const CSize inch(dc.GetDeviceCaps(LOGPIXELSX), dc.GetDeviceCaps(LOGPIXELSY));
    for (int mode : {MM_TEXT, MM_ANISOTROPIC}) {
        dc.SetMapMode(mode);
        dc.SetWindowExt(10, 10);
        dc.SetViewportExt(20, -40);
        CSize size = inch;
        dc.DPtoHIMETRIC(&size);
        EXPECT_EQ(size, CSize(2540, 2540)) << "an inch of pixels, mode " << mode;
        size = CSize(2540 * 3, -1270);
        dc.HIMETRICtoDP(&size);
        EXPECT_EQ(size, CSize(inch.cx * 3, -inch.cy / 2));
        size = CSize(20, 20); // 0.2 mm are less than one pixel, but not much
        dc.HIMETRICtoDP(&size);
        EXPECT_EQ(size, CSize(1, 1));
    }
    // Logical units: two pixels each across, four each down, whatever the axes' directions.
    CSize size(2540, 2540);
    dc.HIMETRICtoLP(&size);
    EXPECT_EQ(size, CSize(inch.cx / 2, inch.cy / 4));
    dc.LPtoHIMETRIC(&size);
    EXPECT_EQ(size, CSize(2540, 2540));

    // In a physical mode it is GDI's own scale, and the mode is what it was afterwards.
    dc.SetMapMode(MM_LOMETRIC);
    size = CSize(100, 100);
    dc.LPtoHIMETRIC(&size);
    EXPECT_NEAR(size.cx, 1000, 30);
    EXPECT_NEAR(size.cy, 1000, 30);
    EXPECT_EQ(dc.GetMapMode(), MM_LOMETRIC);
}

TEST(DeviceContext, PointFontsHaveTheirSizeOnTheDevice) {
    CDC dc;
    dc.CreateCompatibleDC(nullptr);
    dc.SetMapMode(MM_ANISOTROPIC);
    dc.SetWindowExt(10, 10);
    dc.SetViewportExt(1, 1);
    dc.SetViewportOrg(50, 60);
    CFont font;
    LOGFONT made{};
    ASSERT_TRUE(font.CreatePointFont(120, "Arial", &dc) && font.GetLogFont(&made));
    EXPECT_STREQ(made.lfFaceName, "Arial");
    EXPECT_EQ(made.lfHeight, -10 * ::MulDiv(dc.GetDeviceCaps(LOGPIXELSY), 12, 72)) << "in logical units";
}

TEST(MetaFileDC, RecordsOneFileAndThrowsAwayWhatNobodyTakes) {
    CClientDC screen(nullptr);
    CMetaFileDC().CreateEnhanced(&screen, nullptr, nullptr, nullptr); // the system makes what it keeps
    const HandleCounts before = HandleCounts::now();
    {
        CMetaFileDC recorder, thrownAway;
        ASSERT_TRUE(recorder.CreateEnhanced(&screen, nullptr, nullptr, nullptr));
        EXPECT_EQ(recorder.m_hAttribDC, nullptr) << "until one is set";
        HENHMETAFILE file = recorder.CloseEnhanced();
        ASSERT_NE(file, nullptr);
        EXPECT_EQ(recorder.m_hDC, nullptr);
        ::DeleteEnhMetaFile(file);
        EXPECT_TRUE(thrownAway.CreateEnhanced(&screen, nullptr, nullptr, nullptr));
        EXPECT_FALSE(thrownAway.Create()) << "it is recording";
        EXPECT_FALSE(CMetaFileDC().CreateEnhanced(&screen, "Z:\\no such folder\\x.emf", nullptr, nullptr));
    }
    EXPECT_EQ(HandleCounts::now(), before);
}

} // namespace
