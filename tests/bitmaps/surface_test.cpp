// SPDX-License-Identifier: MIT
#include "tests/support/canvas.h"
#include "tests/support/gl_test.h"
#include "tests/support/handle_counts.h"
#include "tests/support/temp_folder.h"
#include "vorn/bitmaps/dib_palette.h"
#include "vorn/bitmaps/dib_simple.h"
#include "vorn/bitmaps/dib_surface.h"

#include <gtest/gtest.h>

namespace {

using support::Canvas;

constexpr COLORREF orange = RGB(250, 140, 10), backdrop = RGB(1, 2, 3);

CDC& dcOf(const Canvas& canvas) {
    return *CDC::FromHandle(canvas.dc());
}

/// A palette whose entry i is (i, 2 i, 255 - i).
void makePalette(CvornDIBPal& palette, int count) {
    std::vector<RGBQUAD> colours;
    for (int i = 0; i < count; i++)
        colours.push_back({static_cast<BYTE>(255 - i), static_cast<BYTE>(2 * i), static_cast<BYTE>(i), 0});
    ASSERT_TRUE(palette.Create(colours.data(), count));
}

TEST(Surface, DrawingAndPixelsAreTheSameMemory) {
    CvornDIBSurface surface;
    ASSERT_TRUE(surface.Create(101, 50, nullptr));
    const BITMAPINFOHEADER& header = surface.GetBitmapInfoAddress()->bmiHeader;
    EXPECT_EQ(header.biBitCount, 24);
    EXPECT_EQ(header.biClrUsed, 0u);
    BITMAP bitmap;
    ASSERT_NE(::GetObject(::GetCurrentObject(surface.GetHDC(), OBJ_BITMAP), sizeof bitmap, &bitmap), 0);
    EXPECT_EQ(bitmap.bmBits, surface.GetBitsAddress());
    EXPECT_EQ(surface.GetDC()->m_hDC, surface.GetHDC());
    EXPECT_EQ(::GetModuleHandleA("wing32"), nullptr);

    surface.GetDC()->FillSolidRect(0, 0, 101, 50, orange);
    ::GdiFlush();
    BYTE* corner = surface.GetPixelAddress(0, 0);
    EXPECT_EQ(RGB(corner[2], corner[1], corner[0]), orange);
    memset(corner, 0xFF, 3);

    Canvas canvas(120, 120, backdrop);
    const auto expectAt = [&](const char* what, int x, int y, COLORREF colour) {
        EXPECT_EQ(canvas.at(x, y), colour) << what << " at " << x << ", " << y;
    };
    surface.Draw(&dcOf(canvas));
    expectAt("Draw", 0, 0, RGB(255, 255, 255));
    expectAt("Draw", 100, 49, orange);
    expectAt("Draw", 101, 0, backdrop);
    canvas.fill(backdrop);
    surface.Draw(canvas.dc(), 5, 7);
    expectAt("Draw at a place", 5, 7, RGB(255, 255, 255));
    expectAt("Draw at a place", 105, 56, orange);
    canvas.fill(backdrop);
    EXPECT_TRUE(surface.BitBlt(&dcOf(canvas), 10, 20, 3, 3, 0, 0));
    expectAt("BitBlt", 10, 20, RGB(255, 255, 255));
    expectAt("BitBlt", 13, 20, backdrop);
    EXPECT_FALSE(surface.BitBlt(static_cast<CDC*>(nullptr), 10, 20, 3, 3, 0, 0));
    canvas.fill(backdrop);
    EXPECT_TRUE(surface.StretchBlt(&dcOf(canvas), 0, 0, 40, 40, 0, 0, 2, 2));
    expectAt("StretchBlt", 19, 19, RGB(255, 255, 255));
    expectAt("StretchBlt", 21, 21, orange);
    canvas.fill(backdrop);
    surface.Draw2(&dcOf(canvas), 3, 4);
    expectAt("Draw2", 3, 4, RGB(255, 255, 255));
    expectAt("Draw2", 103, 53, orange);
    EXPECT_EQ(::GetStretchBltMode(canvas.dc()), HALFTONE);
}

TEST(Surface, AFailedCreationKeepsTheOldPicture) {
    CvornDIBSurface surface;
    ASSERT_TRUE(surface.Create(8, 8, nullptr));
    surface.GetDC()->FillSolidRect(0, 0, 8, 8, orange);
    for (const auto& [cx, cy] :
         {CSize(0, 8), CSize(8, 0), CSize(-8, 8), CSize(8, -8), CSize(INT_MAX, INT_MAX)})
        EXPECT_FALSE(surface.Create(cx, cy, nullptr)) << cx << " x " << cy;
    Canvas canvas(8, 8);
    surface.Draw(&dcOf(canvas));
    EXPECT_EQ(canvas.at(7, 7), orange);
}

TEST(Surface, PaletteFillsTheColourTableAndMapsThePixels) {
    CvornDIBPal palette, greys;
    makePalette(palette, 5);
    RGBQUAD levels[] = {{0, 0, 0, 0}, {255, 255, 255, 0}};
    ASSERT_TRUE(greys.Create(levels, 2));
    CvornDIBSurface surface;
    ASSERT_TRUE(surface.Create(4, 4, &palette));
    EXPECT_EQ(surface.GetBitmapInfoAddress()->bmiHeader.biClrUsed, 5u);
    EXPECT_EQ(surface.GetClrTabAddress()[4].rgbGreen, 8);
    surface.GetDC()->FillSolidRect(0, 0, 4, 4, RGB(250, 240, 230));
    surface.GetDC()->FillSolidRect(0, 0, 2, 4, RGB(20, 30, 10));
    ASSERT_TRUE(surface.MapColorsToPalette(&greys));
    EXPECT_EQ(surface.GetDC()->GetPixel(1, 2), RGB(0, 0, 0));
    EXPECT_EQ(surface.GetDC()->GetPixel(2, 2), RGB(255, 255, 255));
    EXPECT_FALSE(surface.MapColorsToPalette(static_cast<CPalette*>(nullptr)));
}

TEST(Surface, LoadTakesOneByteAPixel) {
    const support::TempFolder folder;
    CvornDIB file;
    ASSERT_TRUE(file.Create(6, 2, nullptr));
    for (int x = 0; x < 6; x++)
        *file.GetPixelAddress(x, 1) = static_cast<BYTE>(10 + x);
    ASSERT_TRUE(file.Save(folder.pathOf("a.bmp").c_str()));
    CvornDIBSurface surface;
    ASSERT_TRUE(surface.Load(folder.pathOf("a.bmp").c_str()));
    EXPECT_EQ(surface.GetSize(), CSize(6, 2));
    const BYTE* row = surface.GetPixelAddress(0, 1);
    const BYTE expected[] = {10, 11, 12, 13, 14, 15, 0, 0, 0};
    EXPECT_EQ(memcmp(row, expected, sizeof expected), 0)
        << "six bytes of the row come from the file, no more";
    EXPECT_EQ(surface.GetClrTabAddress()[200].rgbRed, 200);
    EXPECT_FALSE(surface.Load(folder.pathOf("none.bmp").c_str()));
    EXPECT_EQ(surface.GetSize(), CSize(6, 2));
}

TEST(Surface, IsKnownByNameAndGivesItsHandlesBack) {
    const auto useAll = [] {
        CObject* object = CRuntimeClass::CreateObject("CvornDIBSurface");
        ASSERT_NE(dynamic_cast<CvornDIBSurface*>(object), nullptr);
        for (int side : {10, 20})
            EXPECT_TRUE(static_cast<CvornDIBSurface*>(object)->Create(side, side, nullptr));
        delete object;
    };
    useAll();
    const auto before = support::HandleCounts::now();
    for (int i = 0; i < 5; i++)
        useAll();
    EXPECT_EQ(support::HandleCounts::now(), before);
}

TEST(SimpleSection, CopiesShareUntilTheLastIsGone) {
    Canvas canvas(20, 20, backdrop);
    const auto useAll = [&] {
        CvornDIBSimple copy;
        {
            CvornDIBSimple first;
            ASSERT_TRUE(first.Create(10, 10, 24));
            first.GetDC()->FillSolidRect(0, 0, 10, 10, orange);
            copy = first;
            CvornDIBSimple another(copy);
            another.destroy();
            another.destroy();
            EXPECT_TRUE(first.Create(3, 3, 32)) << "makes its own, and the copy keeps the old one";
        }
        EXPECT_EQ(copy.GetDIBSize(), CSize(10, 10));
        EXPECT_EQ(static_cast<BYTE*>(copy.m_pBits)[2], GetRValue(orange));
        canvas.fill(backdrop);
        copy.Draw(&dcOf(canvas), 5, 6);
        EXPECT_EQ(canvas.at(14, 15), orange);
        EXPECT_EQ(canvas.at(15, 15), backdrop);
        EXPECT_FALSE(copy.Create(0, 0, 24));
        EXPECT_EQ(copy.GetDC(), nullptr);
        EXPECT_EQ(copy.GetHandle(), nullptr);
        copy.Draw(&dcOf(canvas), 0, 0);
    };
    useAll();
    COLORADJUSTMENT adjustment; // which Wine does not keep
    if (::GetColorAdjustment(canvas.dc(), &adjustment)) {
        EXPECT_EQ(adjustment.caColorfulness, -100);
    }
    const auto before = support::HandleCounts::now();
    for (int i = 0; i < 5; i++)
        useAll();
    EXPECT_EQ(support::HandleCounts::now(), before);
}

TEST(SimpleSection, PixelsAreReadAsTheColoursAndHeadersSay) {
    CvornDIBSimple section;
    CvornDIBPal palette;
    makePalette(palette, 100);
    ASSERT_TRUE(section.Create(8, 2, 8));
    memset(section.m_pBits, 60, 16);
    section.SetPalette(&palette);
    section.SetPalette(nullptr);
    Canvas canvas(20, 20, backdrop);
    section.Draw(&dcOf(canvas), 0, 0);
    EXPECT_EQ(canvas.at(7, 1), RGB(60, 120, 195));

    struct {
        BITMAPINFOHEADER header;
        RGBQUAD colours[256];
    } block = {{sizeof(BITMAPINFOHEADER), 8, 2, 1, 8, BI_RGB, 0, 0, 0, 0, 0}, {}};
    block.colours[60] = {10, 140, 250, 0};
    section.Draw(&dcOf(canvas), 0, 0, reinterpret_cast<BITMAPINFO*>(&block));
    EXPECT_EQ(canvas.at(7, 1), orange);
    block.header.biHeight = 2000000;
    canvas.fill(backdrop);
    section.Draw(&dcOf(canvas), 0, 0, reinterpret_cast<BITMAPINFO*>(&block));
    EXPECT_EQ(canvas.at(7, 1), backdrop) << "a header that reads beyond the section";
}

} // namespace
