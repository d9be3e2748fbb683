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
        CPen pen(PS_DASH, 1, RGB(1, 2, 3));
        EXPECT_FALSE(pen.CreatePen(PS_SOLID, 5, RGB(0, 0, 0))) << "it has one, and the new one must not leak";
        LOGPEN made{};
        pen.GetLogPen(&made);
        EXPECT_EQ(made.lopnColor, static_cast<COLORREF>(RGB(1, 2, 3)));
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

TEST(GdiObject, BitmapsAndPalettesTellWhatTheyHold) {
    CBitmap bitmap;
    ASSERT_TRUE(bitmap.CreateBitmap(3, 2, 1, 32, nullptr));
    BITMAP size{};
    bitmap.GetObject(sizeof(size), &size);
    EXPECT_EQ(size.bmWidth, 3);
    DWORD pixels[6] = {1, 2, 3, 4, 5, 6}, back[6] = {};
    EXPECT_EQ(bitmap.SetBitmapBits(sizeof(pixels), pixels), sizeof(pixels));
    EXPECT_EQ(bitmap.GetBitmapBits(sizeof(back), back), sizeof(back));
    EXPECT_EQ(back[5], 6u);
    bitmap.SetBitmapDimension(150, 120);
    EXPECT_EQ(bitmap.SetBitmapDimension(1, 2), CSize(150, 120));
    EXPECT_EQ(bitmap.GetBitmapDimension(), CSize(1, 2));

    struct {
        LOGPALETTE head{0x300, 3, {{255, 0, 0, 0}}};
        PALETTEENTRY more[2] = {{0, 255, 0, 0}, {0, 0, 255, 0}};
    } colours;
    CPalette palette;
    ASSERT_TRUE(palette.CreatePalette(&colours.head));
    EXPECT_EQ(palette.GetEntryCount(), 3);
    EXPECT_EQ(palette.GetNearestPaletteIndex(RGB(10, 200, 10)), 1u);
    EXPECT_TRUE(palette.ResizePalette(5));
    PALETTEENTRY white{255, 255, 255, 0}, read{};
    EXPECT_EQ(palette.SetPaletteEntries(4, 1, &white), 1u);
    EXPECT_EQ(palette.GetPaletteEntries(4, 1, &read), 1u);
    EXPECT_EQ(palette.GetEntryCount(), 5);
    EXPECT_EQ(read.peGreen, 255);
}

TEST(DeviceContext, SelectsAndGivesBack) {
    const HandleCounts before = HandleCounts::now();
    {
        CDC dc;
        ASSERT_TRUE(dc.CreateCompatibleDC(nullptr));
        EXPECT_FALSE(dc.CreateCompatibleDC(nullptr)) << "it has one";
        CBitmap bitmap;
        ASSERT_TRUE(bitmap.CreateBitmap(20, 10, 1, 32, nullptr));
        CBitmap* oldBitmap = dc.SelectObject(&bitmap);
        ASSERT_NE(oldBitmap, nullptr);
        EXPECT_EQ(dc.GetCurrentBitmap(), &bitmap);
        CBrush red(RGB(255, 0, 0));
        CBrush* oldBrush = dc.SelectObject(&red);
        dc.PatBlt(0, 0, 20, 10, PATCOPY);
        dc.FillSolidRect(2, 3, 4, 5, RGB(0, 0, 255));
        dc.Draw3dRect(10, 0, 5, 5, RGB(0, 255, 0), RGB(255, 255, 0));
        const struct {
            int x, y;
            COLORREF colour;
        } probes[] = {{1, 3, RGB(255, 0, 0)},    {2, 3, RGB(0, 0, 255)},    {5, 7, RGB(0, 0, 255)},
                      {6, 7, RGB(255, 0, 0)},    {5, 8, RGB(255, 0, 0)},    {10, 0, RGB(0, 255, 0)},
                      {13, 0, RGB(0, 255, 0)},   {14, 0, RGB(255, 255, 0)}, {14, 4, RGB(255, 255, 0)},
                      {10, 4, RGB(255, 255, 0)}, {11, 1, RGB(255, 0, 0)}};
        for (const auto& p : probes)
            EXPECT_EQ(dc.GetPixel(p.x, p.y), p.colour) << p.x << ", " << p.y;
        CRgn clip;
        clip.CreateRectRgn(0, 0, 3, 3);
        EXPECT_EQ(dc.SelectObject(&clip), SIMPLEREGION);
        dc.ExcludeClipRect(0, 0, 3, 1);
        CRect box;
        dc.GetClipBox(&box);
        EXPECT_EQ(box, CRect(0, 1, 3, 3));
        EXPECT_EQ(dc.SelectObject(oldBrush), &red);
        EXPECT_EQ(dc.SelectObject(oldBitmap), &bitmap);
        EXPECT_EQ(CDC::FromHandle(dc), &dc);
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
    CClientDC screen(nullptr);
    EXPECT_EQ(screen.GetDeviceCaps(HORZRES), ::GetSystemMetrics(SM_CXSCREEN));
}

TEST(DeviceContext, AttributesGoToBothAndQuestionsToTheAttributeDC) {
    CDC drawing, attributes;
    drawing.CreateCompatibleDC(nullptr);
    attributes.CreateCompatibleDC(nullptr);
    drawing.SetAttribDC(attributes);
    EXPECT_EQ(drawing.SetTextColor(RGB(9, 8, 7)), RGB(0, 0, 0));
    drawing.SetBkMode(TRANSPARENT);
    drawing.SetMapMode(MM_ANISOTROPIC);
    drawing.SetWindowExt(100, 100);
    EXPECT_EQ(drawing.SetViewportOrg(5, 6), CPoint(0, 0));
    EXPECT_EQ(drawing.SetViewportOrg(7, 8), CPoint(5, 6));
    drawing.SelectStockObject(GRAY_BRUSH);
    drawing.IntersectClipRect(0, 0, 1, 1);
    drawing.MoveTo(3, 4);
    drawing.LineTo(11, 12);
    for (HDC dc : {drawing.m_hDC, attributes.m_hDC}) {
        EXPECT_EQ(::GetTextColor(dc), static_cast<COLORREF>(RGB(9, 8, 7)));
        EXPECT_EQ(::GetBkMode(dc), TRANSPARENT);
        EXPECT_EQ(::GetMapMode(dc), MM_ANISOTROPIC);
        POINT point{};
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
    size = CSize(10, 10);
    dc.LPtoDP(&size);
    EXPECT_EQ(size, CSize(20, 40));
    CRect rect(0, 0, 10, 10);
    dc.LPtoDP(&rect);
    EXPECT_EQ(rect, CRect(0, 0, 20, -40)) << "places keep the axes' directions";

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
    const int pixels = ::MulDiv(dc.GetDeviceCaps(LOGPIXELSY), 12, 72);
    CFont plain, scaled;
    LOGFONT font{};
    ASSERT_TRUE(plain.CreatePointFont(120, "Arial", &dc));
    plain.GetLogFont(&font);
    EXPECT_EQ(font.lfHeight, -pixels);
    EXPECT_STREQ(font.lfFaceName, "Arial");
    dc.SetMapMode(MM_ANISOTROPIC);
    dc.SetWindowExt(10, 10);
    dc.SetViewportExt(1, 1);
    dc.SetViewportOrg(50, 60);
    ASSERT_TRUE(scaled.CreatePointFont(120, "Arial", &dc));
    scaled.GetLogFont(&font);
    EXPECT_EQ(font.lfHeight, -pixels * 10);
}

TEST(MetaFileDC, RecordsWithAnAttributeDC) {
    CClientDC screen(nullptr);
    {
        CMetaFileDC first;
        first.CreateEnhanced(&screen, nullptr, nullptr, nullptr);
    }
    const HandleCounts before = HandleCounts::now();
    {
        CMetaFileDC recorder;
        const CRect frame(0, 0, 5000, 2500);
        ASSERT_TRUE(recorder.CreateEnhanced(&screen, nullptr, &frame, "Vorn\0Test\0"));
        EXPECT_EQ(recorder.m_hAttribDC, nullptr) << "until one is set";
        recorder.SetAttribDC(screen.m_hAttribDC);
        EXPECT_EQ(recorder.GetDeviceCaps(LOGPIXELSX), screen.GetDeviceCaps(LOGPIXELSX));
        const COLORREF screenColour = screen.GetTextColor();
        recorder.SaveDC();
        recorder.Rectangle(0, 0, 20, 10);
        recorder.RestoreDC(-1);
        recorder.ReleaseAttribDC();
        EXPECT_EQ(screen.GetTextColor(), screenColour);
        HENHMETAFILE file = recorder.CloseEnhanced();
        ASSERT_NE(file, nullptr);
        EXPECT_EQ(recorder.m_hDC, nullptr);
        ENHMETAHEADER header{};
        ::GetEnhMetaFileHeader(file, sizeof(header), &header);
        EXPECT_EQ(header.rclFrame.right, 5000);
        EXPECT_EQ(header.nDescription, 11u);
        ::DeleteEnhMetaFile(file);

        CMetaFileDC old, thrownAway;
        ASSERT_TRUE(old.Create());
        old.LineTo(5, 5);
        HMETAFILE oldFile = old.Close();
        EXPECT_GT(::GetMetaFileBitsEx(oldFile, 0, nullptr), 0u);
        ::DeleteMetaFile(oldFile);
        EXPECT_TRUE(thrownAway.CreateEnhanced(&screen, nullptr, nullptr, nullptr));
        EXPECT_FALSE(thrownAway.Create()) << "it is recording";
        EXPECT_FALSE(CMetaFileDC().CreateEnhanced(&screen, "Z:\\no such folder\\x.emf", nullptr, nullptr));
    }
    EXPECT_EQ(HandleCounts::now(), before);
}

} // namespace
