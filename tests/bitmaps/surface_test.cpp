// SPDX-License-Identifier: MIT
#include "tests/bitmaps/dib_samples.h"
#include "tests/support/canvas.h"
#include "tests/support/handle_counts.h"
#include "tests/support/temp_folder.h"
#include "vorn/bitmaps/dib_palette.h"
#include "vorn/bitmaps/dib_simple.h"
#include "vorn/bitmaps/dib_surface.h"

#include <functional>
#include <gtest/gtest.h>
#include <memory>

namespace {

constexpr COLORREF orange = RGB(250, 140, 10), white = RGB(255, 255, 255), backdrop = RGB(1, 2, 3);

class Surface : public testing::Test {
protected:
    support::Canvas m_canvas{120, 120, backdrop};
    CDC& m_dc = *CDC::FromHandle(m_canvas.dc());
    CvornDIBSurface m_surface;
};

TEST_F(Surface, DrawingAndPixelsAreTheSameMemory) {
    ASSERT_TRUE(m_surface.Create(101, 50, nullptr));
    const BITMAPINFOHEADER& header = m_surface.GetBitmapInfoAddress()->bmiHeader;
    EXPECT_EQ(header.biBitCount, 24);
    EXPECT_EQ(header.biClrUsed, 0u);
    BITMAP bitmap;
    EXPECT_TRUE(m_surface.GetDC()->GetCurrentBitmap()->GetBitmap(&bitmap));
    EXPECT_EQ(bitmap.bmBits, m_surface.GetBitsAddress());
    EXPECT_EQ(::GetModuleHandleA("wing32"), nullptr);
    m_surface.GetDC()->FillSolidRect(0, 0, 101, 50, orange);
    ::GdiFlush();
    BYTE* corner = m_surface.GetPixelAddress(0, 0);
    EXPECT_EQ(RGB(corner[2], corner[1], corner[0]), orange);
    memset(corner, 0xFF, 3);

    // Each draws with its white corner at (3, 4) and something orange at another place.
    const struct {
        const char* what;
        CPoint orangeAt, outside;
        std::function<void()> draw;
    } ways[] = {{"Draw", {103, 53}, {104, 4}, [&] { m_surface.Draw(m_dc.m_hDC, 3, 4); }},
                {"Draw whole",
                 {103, 53},
                 {2, 4},
                 [&] { m_dc.SetViewportOrg(3, 4), m_surface.Draw(&m_dc), m_dc.SetViewportOrg(0, 0); }},
                {"Draw2", {103, 53}, {3, 54}, [&] { m_surface.Draw2(&m_dc, 3, 4); }},
                {"BitBlt", {4, 5}, {5, 4}, [&] { EXPECT_TRUE(m_surface.BitBlt(&m_dc, 3, 4, 2, 2, 0, 0)); }},
                {"StretchBlt", {41, 42}, {43, 4}, [&] {
                     EXPECT_TRUE(m_surface.StretchBlt(&m_dc, 3, 4, 40, 40, 0, 0, 2, 2));
                 }}};
    for (const auto& [what, orangeAt, outside, draw] : ways) {
        m_canvas.fill(backdrop);
        draw();
        EXPECT_EQ(m_canvas.at(3, 4), white) << what;
        EXPECT_EQ(m_canvas.at(orangeAt.x, orangeAt.y), orange) << what;
        EXPECT_EQ(m_canvas.at(outside.x, outside.y), backdrop) << what;
    }
    EXPECT_FALSE(m_surface.BitBlt(static_cast<CDC*>(nullptr), 3, 4, 2, 2, 0, 0));
}

TEST_F(Surface, AFailedCreationKeepsTheOldPicture) {
    ASSERT_TRUE(m_surface.Create(8, 8, nullptr));
    m_surface.GetDC()->FillSolidRect(0, 0, 8, 8, orange);
    for (const auto& [cx, cy] :
         {CSize(0, 8), CSize(8, 0), CSize(-8, 8), CSize(8, -8), CSize(INT_MAX, INT_MAX)})
        EXPECT_FALSE(m_surface.Create(cx, cy, nullptr)) << cx << " x " << cy;
    m_surface.Draw(&m_dc);
    EXPECT_EQ(m_canvas.at(7, 7), orange);
}

TEST_F(Surface, PaletteFillsTheColourTableAndMapsThePixels) {
    CvornDIBPal palette, greys;
    RGBQUAD colours[] = {{0, 0, 0, 0}, {255, 255, 255, 0}, {9, 8, 7, 0}};
    ASSERT_TRUE(palette.Create(colours, 3) && greys.Create(colours, 2) && m_surface.Create(4, 4, &palette));
    EXPECT_EQ(m_surface.GetBitmapInfoAddress()->bmiHeader.biClrUsed, 3u);
    EXPECT_EQ(memcmp(m_surface.GetClrTabAddress(), colours, sizeof colours), 0);
    m_surface.GetDC()->FillSolidRect(0, 0, 4, 4, RGB(250, 240, 230));
    m_surface.GetDC()->FillSolidRect(0, 0, 2, 4, RGB(20, 30, 10));
    ASSERT_TRUE(m_surface.MapColorsToPalette(&greys));
    EXPECT_EQ(m_surface.GetDC()->GetPixel(1, 2), RGB(0, 0, 0));
    EXPECT_EQ(m_surface.GetDC()->GetPixel(2, 2), white);
    EXPECT_FALSE(m_surface.MapColorsToPalette(static_cast<CPalette*>(nullptr)));
}

TEST_F(Surface, LoadTakesOneByteAPixel) {
    const support::TempFolder folder;
    CvornDIB file;
    const BYTE row[] = {10, 11, 12, 13, 14, 15, 0, 0, 0};
    ASSERT_TRUE(file.Create(6, 2, nullptr));
    memcpy(file.GetPixelAddress(0, 1), row, 6);
    ASSERT_TRUE(file.Save(folder.pathOf("a.bmp").c_str()));
    ASSERT_TRUE(m_surface.Load(folder.pathOf("a.bmp").c_str()));
    EXPECT_FALSE(m_surface.Load(folder.pathOf("none.bmp").c_str()));
    EXPECT_EQ(m_surface.GetSize(), CSize(6, 2));
    EXPECT_EQ(memcmp(m_surface.GetPixelAddress(0, 1), row, sizeof row), 0)
        << "six bytes of the file, no more";
    EXPECT_EQ(m_surface.GetClrTabAddress()[200].rgbRed, 200);
}

TEST_F(Surface, IsKnownByNameAndGivesItsHandlesBack) {
    const auto useAll = [] {
        const std::unique_ptr<CObject> object(CRuntimeClass::CreateObject("CvornDIBSurface"));
        auto* surface = dynamic_cast<CvornDIBSurface*>(object.get());
        ASSERT_NE(surface, nullptr);
        EXPECT_TRUE(surface->Create(10, 10, nullptr) && surface->Create(20, 20, nullptr));
    };
    useAll();
    const auto before = support::HandleCounts::now();
    useAll();
    useAll();
    EXPECT_EQ(support::HandleCounts::now(), before);
}

TEST_F(Surface, CopiesOfASimpleSectionShareUntilTheLastIsGone) {
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
        m_canvas.fill(backdrop);
        copy.Draw(&m_dc, 5, 6);
        EXPECT_EQ(m_canvas.at(14, 15), orange);
        EXPECT_EQ(m_canvas.at(15, 15), backdrop);
        EXPECT_FALSE(copy.Create(0, 0, 24) || copy.GetDC() != nullptr || copy.GetHandle() != nullptr);
        copy.Draw(&m_dc, 0, 0);
    };
    useAll();
    COLORADJUSTMENT adjustment; // which Wine does not keep
    EXPECT_TRUE(!::GetColorAdjustment(m_dc, &adjustment) || adjustment.caColorfulness == -100);
    const auto before = support::HandleCounts::now();
    useAll();
    useAll();
    EXPECT_EQ(support::HandleCounts::now(), before);
}

TEST_F(Surface, PixelsOfASimpleSectionAreReadAsPaletteAndHeaderSay) {
    CvornDIBSimple section;
    CvornDIBPal palette;
    RGBQUAD colours[61] = {};
    colours[60] = {195, 120, 60, 0};
    ASSERT_TRUE(palette.Create(colours, 61) && section.Create(8, 2, 8));
    memset(section.m_pBits, 60, 16);
    section.SetPalette(&palette);
    section.SetPalette(nullptr);
    section.Draw(&m_dc, 0, 0);
    EXPECT_EQ(m_canvas.at(7, 1), RGB(60, 120, 195));

    support::HeaderBlock block(8, 2, 8);
    block.colours[60] = {10, 140, 250, 0};
    section.Draw(&m_dc, 0, 0, block.info());
    EXPECT_EQ(m_canvas.at(7, 1), orange);
    block.header.biHeight = 2000000;
    section.Draw(&m_dc, 20, 20, block.info());
    EXPECT_EQ(m_canvas.at(27, 21), backdrop) << "the header reads beyond the section";
}

} // namespace
