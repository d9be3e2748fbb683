// SPDX-License-Identifier: MIT
#include "tests/bitmaps/dib_samples.h"
#include "tests/support/canvas.h"
#include "tests/support/gl_test.h"
#include "tests/support/handle_counts.h"
#include "vorn/bitmaps/dib_palette.h"

#include <climits>
#include <gtest/gtest.h>
#include <memory>

namespace {

using support::Bytes;
using support::Canvas;
using support::GuardedBytes;
using support::HandleCounts;
using support::HeaderBlock;
using support::headerOf;
using support::strideOf;

/// An image whose pixels end at a guard page.
struct GuardedImage {
    GuardedImage(int width, int height, int bits)
        : stride(strideOf(width, bits)), pixels(static_cast<std::size_t>(stride * height)) {
        dib.Create(headerOf(width, height, bits).info(), pixels.data(), FALSE);
    }
    /// A byte of an image row, counted from the top.
    BYTE& at(int x, int y) { return pixels.data()[(dib.GetHeight() - 1 - y) * stride + x]; }

    int stride;
    GuardedBytes pixels;
    CvornDIB dib;
};

/// Random colours that leave none of a DIB's colours where it was.
RGBQUAD* paletteOf(CvornDIBPal& palette, int count) {
    static RGBQUAD colours[256];
    const Bytes bytes = support::noise(sizeof(colours), 5);
    std::memcpy(colours, bytes.data(), sizeof(colours));
    palette.Create(colours, count);
    return colours;
}

TEST(Dib, BlankImagesHaveAGreyRampAndZeroPixels) {
    struct {
        int width, height;
        DWORD size;
    } const cases[] = {{16, 16, 256}, {5, 3, 24}, {1, 1, 4}, {0, 7, 0}, {7, 0, 0}};
    for (const auto& [width, height, size] : cases) {
        CvornDIB dib;
        ASSERT_TRUE(dib.Create(width, height)) << width << " x " << height;
        EXPECT_EQ(dib.GetSize(), CSize(width, height));
        EXPECT_EQ(dib.GetBitSize(), size);
        EXPECT_EQ(Bytes(dib.GetBitsAddress(), dib.GetBitsAddress() + size), Bytes(size, 0));
        EXPECT_EQ(dib.GetNumClrEntries(), 256);
        for (int i = 0; i < 256; ++i)
            EXPECT_EQ(support::entryOf(dib, i), i * 0x010101u);
    }
    const SIZE refused[] = {{-1, 5}, {5, -1}, {INT_MIN, INT_MIN}, {INT_MAX, 1}, {65536, 65536}};
    for (const SIZE& size : refused) {
        CvornDIB dib;
        EXPECT_FALSE(dib.Create(size.cx, size.cy)) << size.cx << " x " << size.cy;
        EXPECT_EQ(dib.GetBitmapInfoAddress(), nullptr);
        EXPECT_EQ(dib.GetBitSize(), 0u);
        CMemFile file;
        dib.Draw(Canvas(2, 2).dc(), 0, 0); // nothing may be touched
        EXPECT_FALSE(dib.Save(&file));
        EXPECT_EQ(dib.GetSize(), CSize(0, 0));
    }
}

TEST(Dib, BlankImagesTakeAPalettesColours) {
    CvornDIBPal palette;
    const RGBQUAD* colours = paletteOf(palette, 100);
    CvornDIB dib;
    ASSERT_TRUE(dib.Create(4, 4, &palette));
    EXPECT_EQ(dib.GetBitmapInfoAddress()->bmiHeader.biClrUsed, 100u);
    EXPECT_EQ(dib.GetNumClrEntries(), 100);
    EXPECT_EQ(dib.GetClrTabAddress()[99].rgbGreen, colours[99].rgbGreen);
    EXPECT_EQ(dib.GetClrTabAddress()[99].rgbReserved, 0);
    EXPECT_EQ(dib.GetClrTabAddress()[100].rgbRed, 100);

    CPalette large, none;
    const std::unique_ptr<LOGPALETTE> log(static_cast<LOGPALETTE*>(::operator new(4 + 4 * 300)));
    log->palVersion = 0x300;
    log->palNumEntries = 300;
    ASSERT_TRUE(large.CreatePalette(log.get()));
    for (CPalette* refused : {&large, &none}) {
        EXPECT_EQ(dib.Create(4, 4, refused),
                  refused == &none); // without a handle there is no palette to take
        EXPECT_NE(dib.GetBitsAddress(), nullptr);
        EXPECT_FALSE(dib.SetColorTable(refused));
        EXPECT_FALSE(dib.MapColorsToPalette(refused));
        EXPECT_EQ(dib.GetClrTabAddress()[1].rgbRed, 1);
    }
}

TEST(Dib, PixelAddressesFollowDepthAndRow) {
    constexpr int none = INT_MIN;
    struct {
        int bits, x, y, offset;
    } const cases[] = {
        {8, 0, 0, 12},  {8, 3, 2, 7},     {8, 4, 0, none}, {8, 0, 4, none},  {8, INT_MAX, 0, none},
        {8, -1, 3, -1}, {8, 0, -1, 16},   {4, 0, 3, 0},    {4, 1, 3, 1},     {4, 2, 3, 1},
        {4, -3, 3, 0},  {1, 0, 3, 0},     {1, 1, 3, 1},    {1, -8, 3, 0},    {16, 3, 3, 6},
        {24, 2, 2, 18}, {32, 0, 0, none}, {0, 0, 0, none}, {33, 0, 0, none},
    };
    for (const auto& [bits, x, y, offset] : cases) {
        BYTE pixels[64];
        CvornDIB dib;
        ASSERT_TRUE(dib.Create(headerOf(4, 4, bits).info(), pixels, FALSE));
        EXPECT_EQ(dib.GetPixelAddress(x, y), offset == none ? nullptr : pixels + offset)
            << bits << " bits, " << x << ", " << y;
    }
}

TEST(Dib, HeadersTellTheirColours) {
    constexpr DWORD core = sizeof(BITMAPCOREHEADER), win = sizeof(BITMAPINFOHEADER), many = 0x80000000;
    struct {
        DWORD size;
        int bits;
        DWORD used;
        int entries, colours, tableBytes;
    } const cases[] = {
        {win, 1, 0, 2, 2, 8},          {win, 4, 0, 16, 16, 64},        {win, 8, 0, 256, 256, 1024},
        {win, 24, 0, 0, 0, 0},         {win, 4, 3, 3, 3, 12},          {win, 1, 5, 2, 5, 20},
        {win, 8, 300, 256, 300, 1200}, {win, 24, 300, 300, 300, 1200}, {win, 8, many, 256, 0, 0},
        {core, 1, 0, 2, 2, 6},         {core, 4, 0, 16, 16, 48},       {core, 8, 0, 256, 256, 768},
        {core, 24, 0, 0, 0, 0},        {108, 4, 2, 2, 2, 8},
    };
    for (const auto& [size, bits, used, entries, colours, tableBytes] : cases) {
        HeaderBlock block = headerOf(1, 1, bits);
        block.header.biClrUsed = used;
        block.header.biSize = size;
        const BITMAPCOREHEADER coreHeader = {core, 1, 1, 1, static_cast<WORD>(bits)};
        if (size == core) std::memcpy(block.info(), &coreHeader, core);
        SCOPED_TRACE(testing::Message() << size << ", " << bits << " bits, " << used << " used");
        EXPECT_EQ(CvornDIB::IsWinDIB(&block.info()->bmiHeader) != FALSE, size != core);
        EXPECT_EQ(CvornDIB::NumDIBColorEntries(block.info()), entries);
        EXPECT_EQ(CvornDIB().dibNumColors(&block), colours);
        EXPECT_EQ(CvornDIB().paletteSize(&block), tableBytes);
    }
}

TEST(Dib, TakesHeadersAndPixelsFromMemory) {
    struct {
        int bits;
        DWORD size, used;
        int entries;
    } const cases[] = {{4, 40, 3, 3}, {8, 40, 0, 256}, {24, 108, 5000, 256}, {24, 40, 0, 0}, {4, 12, 0, 16}};
    for (const auto& [bits, size, used, entries] : cases) {
        SCOPED_TRACE(testing::Message() << bits << " bits, header of " << size);
        HeaderBlock block = headerOf(4, 2, bits);
        block.header.biSize = size;
        block.header.biClrUsed = used;
        const bool isCore = size == sizeof(BITMAPCOREHEADER);
        const BITMAPCOREHEADER core = {size, 4, 2, 1, static_cast<WORD>(bits)};
        if (isCore) std::memcpy(block.info(), &core, sizeof(core));
        GuardedBytes packed(isCore ? 12 + 3 * 16 + 8 : 40 + 4 * std::max<DWORD>(entries, used) + 24);
        std::memcpy(packed.data(), &block, isCore ? 12 + 3 * 16 : 40 + 4 * entries);

        CvornDIB dib;
        ASSERT_TRUE(dib.Create(reinterpret_cast<BITMAPINFO*>(packed.data())));
        EXPECT_EQ(dib.GetBitmapInfoAddress()->bmiHeader.biSize, 40u);
        EXPECT_EQ(dib.GetSize(), CSize(4, 2));
        EXPECT_EQ(dib.GetBitsPerPixel(), bits);
        EXPECT_EQ(dib.GetNumClrEntries(), entries);
        EXPECT_EQ(dib.GetBitSize(), 256u); // of the blank image before
        const BYTE* table = packed.data() + (isCore ? 12 : 40);
        EXPECT_EQ(dib.GetBitsAddress(), table + (isCore ? 3 * 16 : 4 * std::max<DWORD>(entries, used)));
        for (int i = 0; i < entries; ++i)
            EXPECT_EQ(std::memcmp(dib.GetClrTabAddress() + i, table + i * (isCore ? 3 : 4), 3), 0) << i;
    }
}

TEST(Dib, CopiesShareTheirBlocksUntilTheLastIsGone) {
    auto* adopted = static_cast<BYTE*>(std::malloc(64 * 64));
    std::memset(adopted, 7, 64 * 64);
    auto first = std::make_unique<CvornDIB>();
    ASSERT_TRUE(first->Create(headerOf(64, 64, 8).info(), adopted, TRUE));
    CvornDIB second(*first), third;
    third = second;
    third = *&third;
    *second.GetPixelAddress(3, 3) = 9;
    EXPECT_EQ(*third.GetPixelAddress(3, 3), 9);
    // The same pixels again, under a new header, still are one block with one life.
    ASSERT_TRUE(first->Create(first->GetBitmapInfoAddress(), first->GetBitsAddress(), TRUE));
    EXPECT_NE(first->GetBitmapInfoAddress(), second.GetBitmapInfoAddress());
    ASSERT_TRUE(second.Create(2, 2));
    first.reset();
    EXPECT_EQ(third.GetBitsAddress(), adopted);
    EXPECT_EQ(*third.GetPixelAddress(3, 3), 9);
    EXPECT_EQ(*third.GetPixelAddress(63, 63), 7);
    EXPECT_EQ(third.GetSize(), CSize(64, 64));
    third.Create(1, 1);
    EXPECT_TRUE(::HeapValidate(::GetProcessHeap(), 0, nullptr));
}

TEST(Dib, CopiesGdiBitmaps) {
    CvornDIB dib;
    CBitmap none;
    EXPECT_FALSE(dib.Create(none));
    EXPECT_EQ(dib.GetSize(), CSize(16, 16));
    for (int bits : {1, 4, 8, 16, 24, 32}) {
        SCOPED_TRACE(testing::Message() << bits << " bits");
        CvornDIB source;
        const Bytes pixels = support::noise(static_cast<std::size_t>(strideOf(13, bits) * 9));
        source.Create(headerOf(13, 9, bits).info(), const_cast<BYTE*>(pixels.data()), FALSE);
        void* sectionBits = nullptr;
        const HandleCounts before = HandleCounts::now();
        {
            CBitmap section;
            section.Attach(::CreateDIBSection(nullptr, source.GetBitmapInfoAddress(), DIB_RGB_COLORS,
                                              &sectionBits, nullptr, 0));
            std::memcpy(sectionBits, pixels.data(), pixels.size());
            ASSERT_TRUE(dib.Create(section));
        }
        EXPECT_EQ(HandleCounts::now(), before);
        EXPECT_EQ(dib.GetBitSize(), pixels.size());
        EXPECT_EQ(dib.GetBitsPerPixel(), bits);
        for (int y = 0; y < 9; ++y)
            for (int x = 0; x < 13; ++x)
                ASSERT_EQ(support::colourAt(dib, x, y), support::colourAt(source, x, y)) << x << ", " << y;
    }
}

TEST(Dib, DrawsEachDepthPixelByPixel) {
    for (int bits : {1, 4, 8, 16, 24, 32}) {
        GuardedImage image(11, 6, bits);
        Canvas canvas(14, 9, RGB(1, 2, 3));
        CDC dc;
        dc.Attach(canvas.dc());
        image.dib.Draw(&dc, 2, 1);
        dc.Detach();
        image.dib.Draw(static_cast<CDC*>(nullptr), 0, 0);
        for (int y = 0; y < 9; ++y) {
            for (int x = 0; x < 14; ++x) {
                const bool isInside = x >= 2 && x < 13 && y >= 1 && y < 7;
                ASSERT_EQ(canvas.at(x, y),
                          isInside ? support::colourAt(image.dib, x - 2, y - 1) : RGB(1, 2, 3))
                    << bits << " bits, " << x << ", " << y;
            }
        }
    }
}

TEST(Dib, MapsEveryPixelToThePalettesNearestColour) {
    CvornDIBPal palette;
    const RGBQUAD* colours = paletteOf(palette, 16);
    for (int bits : {4, 8, 24, 1, 16, 32}) {
        SCOPED_TRACE(testing::Message() << bits << " bits");
        GuardedImage image(37, 21, bits);
        const Bytes before = image.pixels.copy();
        std::vector<COLORREF> expected;
        for (int i = 0; i < 37 * 21; ++i) {
            const UINT index = palette.GetNearestPaletteIndex(support::colourAt(image.dib, i % 37, i / 37));
            expected.push_back(RGB(colours[index].rgbRed, colours[index].rgbGreen, colours[index].rgbBlue));
        }
        const bool isMapped = bits == 4 || bits == 8 || bits == 24;
        ASSERT_EQ(image.dib.MapColorsToPalette(static_cast<HPALETTE>(palette)) != FALSE, isMapped);
        if (!isMapped) {
            EXPECT_EQ(image.pixels.copy(), before);
            EXPECT_EQ(image.dib.GetBitmapInfoAddress()->bmiHeader.biClrUsed, 0u);
            continue;
        }
        for (int i = 0; i < 37 * 21; ++i)
            ASSERT_EQ(support::colourAt(image.dib, i % 37, i / 37), expected[static_cast<std::size_t>(i)])
                << i;
        EXPECT_EQ(image.dib.GetBitmapInfoAddress()->bmiHeader.biClrUsed, 16u);
        EXPECT_EQ(support::entryOf(image.dib, 255), 0u);
    }
    CvornDIB dib;
    EXPECT_FALSE(dib.MapColorsToPalette(static_cast<CPalette*>(nullptr)));
    EXPECT_FALSE(dib.MapColorsToPalette(static_cast<HPALETTE>(nullptr)));
    dib.GetClrTabAddress()[2].rgbReserved = 77;
    ASSERT_TRUE(dib.SetColorTable(&palette));
    EXPECT_EQ(dib.GetClrTabAddress()[2].rgbBlue, colours[2].rgbBlue);
    EXPECT_EQ(dib.GetClrTabAddress()[2].rgbReserved, 77);
    EXPECT_EQ(dib.GetClrTabAddress()[16].rgbBlue, 16);
    EXPECT_EQ(dib.GetNumClrEntries(), 16);
}

/// A rectangle moved from an image of 70 x 40 to one of 90 x 60.
struct Transfer {
    int xDest, yDest, wDest, hDest, xSrc, ySrc, wSrc, hSrc;
};

void run(CvornDIB& from, CvornDIB& to, const Transfer& move, DWORD key) {
    from.StretchBits(&to, move.xDest, move.yDest, move.wDest, move.hDest, move.xSrc, move.ySrc, move.wSrc,
                     move.hSrc, key);
    if (move.wDest == move.wSrc && move.hDest == move.hSrc)
        from.CopyBits(&to, move.xDest, move.yDest, move.wSrc, move.hSrc, move.xSrc, move.ySrc, key);
    if (move.wDest == 2 * std::int64_t{move.wSrc} && move.hDest == 2 * std::int64_t{move.hSrc})
        from.DoubleBits(&to, move.xDest, move.yDest, move.xSrc, move.ySrc, move.wSrc, move.hSrc, key);
}

TEST(DibTransfer, MovesTheRightPixel) {
    const Transfer moves[] = {
        {0, 0, 70, 40, 0, 0, 70, 40}, {3, 5, 33, 17, 2, 1, 33, 17}, {0, 0, 80, 60, 10, 3, 40, 30},
        {7, 2, 34, 22, 1, 9, 17, 11}, {1, 1, 89, 59, 0, 0, 70, 40}, {20, 20, 9, 5, 3, 3, 64, 37},
        {89, 59, 1, 1, 69, 39, 1, 1}, {0, 0, 90, 1, 69, 0, 1, 40},  {5, 0, 2, 60, 0, 20, 70, 1},
    };
    for (DWORD key : {0xFFFFFFFFu, 0x105u}) {
        for (const Transfer& move : moves) {
            GuardedImage from(70, 40, 8), to(90, 60, 8);
            for (int i = 0; i < 70 * 40; i += 3)
                from.at(i % 70, i / 70) = 5;
            const Bytes before = to.pixels.copy();
            Bytes expected = before;
            for (int y = 0; y < move.hDest; ++y) {
                for (int x = 0; x < move.wDest; ++x) {
                    const BYTE pixel = from.at(move.xSrc + x * move.wSrc / move.wDest,
                                               move.ySrc + y * move.hSrc / move.hDest);
                    const int place = (59 - move.yDest - y) * to.stride + move.xDest + x;
                    if (key == 0xFFFFFFFFu || pixel != 5) expected[static_cast<std::size_t>(place)] = pixel;
                }
            }
            run(from.dib, to.dib, move, key);
            EXPECT_EQ(to.pixels.copy(), expected) << move.wDest << " x " << move.hDest << ", key " << key;
        }
    }
}

TEST(DibTransfer, LeavesTheBuffersAlone) {
    constexpr int huge = INT_MAX - 3;
    const Transfer moves[] = {
        {0, 0, 0, 5, 0, 0, 0, 5},
        {0, 0, 5, 0, 0, 0, 5, 0},
        {0, 0, -5, 5, 0, 0, -5, 5},
        {0, 0, 70, 41, 0, 0, 70, 41},
        {0, 60, 5, 5, 0, 0, 5, 5},
        {90, 0, 5, 5, 0, 0, 5, 5},
        {0, 0, 5, 5, 70, 0, 5, 5},
        {0, 0, 5, 5, 0, 36, 5, 5},
        {0, 0, 5, 5, 0, -1, 5, 5},
        {-1, 55, 5, 5, 0, 0, 5, 5},
        {88, 0, 7, 1, 0, 0, 7, 1},
        {0, -1, 9, 9, 0, 0, 4, 4},
        {0, 0, huge, huge, 0, 0, 9, 9},
        {0, 0, 9, 9, 0, 0, huge, huge},
        {huge, huge, huge, huge, huge, huge, huge, huge},
        {0, 0, 82, 80, 0, 0, 41, 40},
        {0, 0, 10, 10, INT_MIN, 0, 5, 5},
        {INT_MIN, INT_MIN, 5, 5, 0, 0, 5, 5},
        {0, 0, 4, 4, 0, INT_MIN, 2, 2},
        {0, 0, INT_MIN, 4, 0, 0, 2, 2},
        {0, 0, -2, 4, 0, 0, -1, 2},
    };
    for (const Transfer& move : moves) {
        GuardedImage from(70, 40, 8), to(90, 60, 8);
        const Bytes before = to.pixels.copy();
        for (DWORD key : {0xFFFFFFFFu, 0u})
            run(from.dib, to.dib, move, key);
        EXPECT_EQ(to.pixels.copy(), before) << move.xDest << ", " << move.yDest << ", " << move.wDest << " x "
                                            << move.hDest << " from " << move.xSrc << ", " << move.ySrc;
    }
    GuardedImage from(8, 8, 8), deep(8, 8, 32);
    const Bytes before = deep.pixels.copy();
    run(from.dib, deep.dib, {0, 0, 8, 8, 0, 0, 8, 8}, 0xFFFFFFFF); // its pixels have no addresses
    from.dib.CopyBits(nullptr, 0, 0, 8, 8, 0, 0);
    EXPECT_EQ(deep.pixels.copy(), before);
    GuardedImage wide(8, 8, 24);
    from.dib.CopyBits(&wide.dib, 1, 0, 8, 8, 0, 0); // whatever the depth, bytes are moved, from the pixel on
    EXPECT_EQ(std::memcmp(&wide.at(3, 2), &from.at(0, 2), 8), 0);
}

} // namespace
