// SPDX-License-Identifier: MIT
#include "tests/bitmaps/bitmap_test.h"
#include "tests/bitmaps/dib_samples.h"
#include "vorn/bitmaps/dib_palette.h"
#include "vorn/bitmaps/dib_simple.h"
#include "vorn/bitmaps/dib_surface.h"

#include <functional>

namespace {

class Surface : public BitmapTest {
protected:
    CvornDIBSurface m_surface;
};

TEST_F(Surface, DrawingAndPixelsAreTheSameMemory) {
    ASSERT_TRUE(m_surface.Create(101, 50, nullptr));
    BITMAP bitmap;
    EXPECT_TRUE(m_surface.GetDC()->GetCurrentBitmap()->GetBitmap(&bitmap));
    EXPECT_EQ(bitmap.bmBits, m_surface.GetBitsAddress());
    m_surface.GetDC()->FillSolidRect(0, 0, 101, 50, orange);
    ::GdiFlush();
    BYTE* corner = m_surface.GetPixelAddress(0, 0);
    EXPECT_EQ(RGB(corner[2], corner[1], corner[0]), orange);
    memset(corner, 0xFF, 3);

    // Each draws with the white corner at (3, 4), something orange below it, and nothing farther.
    const auto expectDrawn = [&](const char* what, int x, int y, const std::function<void()>& draw) {
        m_canvas.fill(backdrop);
        draw();
        expectPixels(what, {{3, 4, white}, {x, y, orange}, {x + 1, y, backdrop}, {x, y + 1, backdrop}});
    };
    expectDrawn("Draw", 103, 53, [&] { m_surface.Draw(m_dc.m_hDC, 3, 4); });
    expectDrawn("Draw2", 103, 53, [&] { m_surface.Draw2(&m_dc, 3, 4); });
    expectDrawn("BitBlt", 4, 5, [&] { EXPECT_TRUE(m_surface.BitBlt(&m_dc, 3, 4, 2, 2, 0, 0)); });
    expectDrawn("StretchBlt", 42, 43, [&] { m_surface.StretchBlt(&m_dc, 3, 4, 40, 40, 0, 0, 2, 2); });
    m_dc.SetViewportOrg(3, 4);
    expectDrawn("Draw whole", 103, 53, [&] { m_surface.Draw(&m_dc); });
    EXPECT_FALSE(m_surface.BitBlt(static_cast<CDC*>(nullptr), 3, 4, 2, 2, 0, 0));
}

TEST_F(Surface, AFailedCreationKeepsTheOldPictureAndHandlesComeBack) {
    expectHandlesKept([&] {
        CvornDIBSurface surface;
        ASSERT_TRUE(surface.Create(20, 20, nullptr) && surface.Create(8, 8, nullptr));
        surface.GetDC()->FillSolidRect(0, 0, 8, 8, orange);
        for (const auto& [cx, cy] : {CSize(0, 8), {8, 0}, {-8, 8}, {8, -8}, {INT_MAX, INT_MAX}})
            EXPECT_FALSE(surface.Create(cx, cy, nullptr)) << cx << " x " << cy;
        surface.Draw(&m_dc);
        expectPixels("old", {{7, 7, orange}});
    });
}

TEST_F(Surface, PalettesAndFilesFillTheColourTable) {
    CvornDIBPal palette, greys;
    RGBQUAD colours[] = {{0, 0, 0, 0}, {255, 255, 255, 0}, {9, 8, 7, 0}};
    ASSERT_TRUE(palette.Create(colours, 3) && greys.Create(colours, 2) && m_surface.Create(4, 4, &palette));
    EXPECT_EQ(m_surface.GetBitmapInfoAddress()->bmiHeader.biClrUsed, 3u);
    EXPECT_EQ(memcmp(m_surface.GetClrTabAddress(), colours, sizeof colours), 0);
    m_surface.GetDC()->FillSolidRect(0, 0, 4, 4, RGB(250, 240, 230));
    m_surface.GetDC()->FillSolidRect(0, 0, 2, 4, RGB(20, 30, 10));
    EXPECT_FALSE(m_surface.MapColorsToPalette(static_cast<CPalette*>(nullptr)));
    ASSERT_TRUE(m_surface.MapColorsToPalette(&greys));
    m_surface.Draw(&m_dc);
    expectPixels("mapped", {{1, 2, RGB(0, 0, 0)}, {2, 2, white}});

    CvornDIB file;
    const BYTE row[] = {10, 11, 12, 13, 14, 15, 0, 0, 0};
    const std::string name = m_folder.pathOf("a.bmp");
    ASSERT_TRUE(file.Create(6, 2, nullptr));
    memcpy(file.GetPixelAddress(0, 1), row, 6);
    ASSERT_TRUE(file.Save(name.c_str()) && m_surface.Load(name.c_str()));
    EXPECT_FALSE(m_surface.Load(m_folder.pathOf("none.bmp").c_str()));
    EXPECT_EQ(m_surface.GetSize(), CSize(6, 2));
    EXPECT_EQ(memcmp(m_surface.GetPixelAddress(0, 1), row, sizeof row), 0)
        << "six bytes of the file, no more";
    EXPECT_EQ(m_surface.GetClrTabAddress()[200].rgbRed, 200);
}

TEST_F(Surface, CopiesOfASimpleSectionShareUntilTheLastIsGone) {
    expectHandlesKept([&] {
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
        expectPixels("copy", {{14, 15, orange}, {15, 15, backdrop}});
        EXPECT_FALSE(copy.Create(0, 0, 24) || copy.GetDC() != nullptr || copy.GetHandle() != nullptr);
        copy.Draw(&m_dc, 0, 0);
    });
}

TEST_F(Surface, PixelsOfASimpleSectionAreReadAsPaletteAndHeaderSay) {
    CvornDIBSimple section;
    CvornDIBPal palette;
    support::HeaderBlock block(8, 2, 8);
    ASSERT_TRUE(palette.Create(block.colours, 61) && section.Create(8, 2, 8));
    memset(section.m_pBits, 60, 16);
    section.SetPalette(&palette);
    section.SetPalette(nullptr);
    section.Draw(&m_dc, 0, 0);
    block.colours[60] = {10, 140, 250, 0};
    section.Draw(&m_dc, 20, 0, block.info());
    block.header.biHeight = 2000000;
    section.Draw(&m_dc, 40, 0, block.info());
    expectPixels("by palette, by header, beyond the section",
                 {{7, 1, RGB(60, 195, 450 - 256)}, {27, 1, orange}, {47, 1, backdrop}});
}

} // namespace
