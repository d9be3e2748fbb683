// SPDX-License-Identifier: MIT
#include "tests/bitmaps/dib_samples.h"
#include "tests/support/canvas.h"
#include "tests/support/handle_counts.h"
#include "vorn/bitmaps/dib_palette.h"

#include <climits>
#include <gtest/gtest.h>
#include <memory>

namespace {

using support::Bytes;
using support::HandleCounts;
using support::HeaderBlock;

/// An image whose pixels end at a guard page.
struct GuardedImage {
    GuardedImage(int width, int height, int bits)
        : block(width, height, bits), pixels(static_cast<std::size_t>(block.stride() * height)) {
        dib.Create(block.info(), pixels.data(), FALSE);
    }
    /// A byte of an image row, counted from the top.
    BYTE& at(int x, int y) { return pixels.data()[(dib.GetHeight() - 1 - y) * block.stride() + x]; }

    HeaderBlock block;
    support::GuardedBytes pixels;
    CvornDIB dib;
};

TEST(Dib, BlankImagesAreZeroWithAGreyRampAndAPalettesColours) {
    HeaderBlock colours(1, 1, 8);
    CvornDIBPal palette;
    ASSERT_TRUE(palette.Create(colours.colours, 100));
    const SIZE sizes[] = {{16, 16}, {5, 3}, {1, 1}, {0, 7}, {7, 0}};
    for (const SIZE& size : sizes) {
        CvornDIB dib;
        ASSERT_TRUE(dib.Create(size.cx, size.cy, &palette));
        EXPECT_EQ(dib.GetSize(), CSize(size));
        const DWORD bytes = static_cast<DWORD>((size.cx + 3) / 4 * 4 * size.cy);
        EXPECT_EQ(dib.GetBitSize(), bytes);
        EXPECT_EQ(Bytes(dib.GetBitsAddress(), dib.GetBitsAddress() + bytes), Bytes(bytes, 0));
        EXPECT_EQ(dib.GetNumClrEntries(), 100);
        EXPECT_EQ(std::memcmp(dib.GetClrTabAddress(), colours.colours, 400), 0);
        EXPECT_EQ(dib.GetClrTabAddress()[100].rgbRed + dib.GetClrTabAddress()[255].rgbBlue, 355);
    }
    const SIZE refused[] = {{-1, 5}, {5, -1}, {INT_MIN, INT_MIN}, {INT_MAX, 1}, {65536, 65536}};
    for (const SIZE& size : refused) {
        CvornDIB dib;
        EXPECT_FALSE(dib.Create(size.cx, size.cy)) << size.cx << " x " << size.cy;
        EXPECT_EQ(dib.GetBitmapInfoAddress(), nullptr);
        EXPECT_EQ(dib.GetSize(), CSize(0, 0));
        dib.Draw(support::Canvas(2, 2).dc(), 0, 0); // nothing may be touched
        CMemFile file;
        EXPECT_FALSE(dib.Save(&file) || dib.MapColorsToPalette(&palette) || dib.SetColorTable(&palette));
    }
    ASSERT_TRUE(palette.ResizePalette(300)); // more than a colour table holds
    CvornDIB dib;
    EXPECT_FALSE(dib.Create(4, 4, &palette) || dib.SetColorTable(&palette) ||
                 dib.MapColorsToPalette(&palette));
    EXPECT_EQ(dib.GetSize(), CSize(4, 4));
}

TEST(Dib, PixelAddressesFollowDepthAndRow) {
    constexpr int none = INT_MIN;
    struct {
        int bits, x, y, offset;
    } const cases[] = {{8, 0, 0, 12},         {8, 3, 2, 7},    {8, 4, 0, none}, {8, 0, 4, none},
                       {8, INT_MAX, 0, none}, {8, -1, 3, -1},  {8, 0, -1, 16},  {4, 0, 3, 0},
                       {4, 1, 3, 1},          {4, 2, 3, 1},    {4, -3, 3, 0},   {1, 0, 3, 0},
                       {1, 1, 3, 1},          {1, -8, 3, 0},   {16, 3, 3, 6},   {24, 2, 2, 18},
                       {32, 0, 0, none},      {0, 0, 0, none}, {33, 0, 0, none}};
    for (const auto& [bits, x, y, offset] : cases) {
        BYTE pixels[64];
        CvornDIB dib;
        ASSERT_TRUE(dib.Create(HeaderBlock(4, 4, bits).info(), pixels, FALSE));
        EXPECT_EQ(dib.GetPixelAddress(x, y), offset == none ? nullptr : pixels + offset)
            << bits << " bits, " << x << ", " << y;
    }
}

TEST(Dib, HeadersOfEitherKindTellTheirColoursAndAreTakenOver) {
    struct {
        DWORD size;
        int bits;
        DWORD used;
        int entries, colours, bytes;
    } const cases[] = {
        {40, 1, 0, 2, 2, 8},          {40, 4, 0, 16, 16, 64},        {40, 8, 0, 256, 256, 1024},
        {40, 24, 0, 0, 0, 0},         {40, 4, 3, 3, 3, 12},          {40, 1, 5, 2, 5, 20},
        {40, 8, 300, 256, 300, 1200}, {40, 24, 300, 300, 300, 1200}, {108, 4, 2, 2, 2, 8},
        {12, 1, 0, 2, 2, 6},          {12, 4, 0, 16, 16, 48},        {12, 24, 0, 0, 0, 0}};
    for (const auto& [size, bits, used, entries, colours, bytes] : cases) {
        SCOPED_TRACE(testing::Message()
                     << "header of " << size << ", " << bits << " bits, " << used << " used");
        HeaderBlock block(4, 2, bits);
        block.header.biClrUsed = used;
        block.header.biSize = size;
        const BITMAPCOREHEADER core = {12, 4, 2, 1, static_cast<WORD>(bits)};
        if (size == 12) std::memcpy(block.info(), &core, 12);
        const std::size_t header = size == 12 ? 12 : 40, entry = size == 12 ? 3 : 4;
        const support::GuardedBytes packed(header + entry * static_cast<std::size_t>(entries) + 24);
        std::memcpy(packed.data(), block.info(), header);
        auto* info = reinterpret_cast<BITMAPINFO*>(packed.data());
        EXPECT_EQ(CvornDIB::IsWinDIB(&info->bmiHeader) != FALSE, size != 12);
        EXPECT_EQ(CvornDIB::NumDIBColorEntries(info), entries);
        CvornDIB dib;
        EXPECT_EQ(dib.dibNumColors(info), colours);
        EXPECT_EQ(dib.paletteSize(info), bytes);

        ASSERT_TRUE(dib.Create(info));
        EXPECT_EQ(dib.GetBitmapInfoAddress()->bmiHeader.biSize, 40u);
        EXPECT_EQ(dib.GetSize(), CSize(4, 2));
        EXPECT_EQ(dib.GetNumClrEntries(), std::min(entries, 256));
        EXPECT_EQ(dib.GetBitsAddress(), packed.data() + header + entry * static_cast<std::size_t>(entries));
        EXPECT_EQ(dib.GetBitSize(), 256u); // of the blank image before
        for (std::size_t i = 0; i < static_cast<std::size_t>(std::min(entries, 256)); ++i)
            EXPECT_EQ(std::memcmp(dib.GetClrTabAddress() + i, packed.data() + header + entry * i, 3), 0) << i;
    }
}

TEST(Dib, CopiesShareTheirBlocksUntilTheLastIsGone) {
    auto* adopted = static_cast<BYTE*>(std::calloc(64, 64));
    auto first = std::make_unique<CvornDIB>();
    ASSERT_TRUE(first->Create(HeaderBlock(64, 64, 8).info(), adopted, TRUE));
    CvornDIB second(*first), third;
    third = second;
    third = *&third;
    *second.GetPixelAddress(3, 3) = 9;
    // The same pixels again, under a new header, still are one block with one life.
    ASSERT_TRUE(first->Create(first->GetBitmapInfoAddress(), first->GetBitsAddress(), TRUE));
    EXPECT_NE(first->GetBitmapInfoAddress(), second.GetBitmapInfoAddress());
    ASSERT_TRUE(second.Create(2, 2));
    first.reset();
    const std::vector<Bytes> reuse(50, Bytes(64 * 64, 0xEE)); // whatever has been freed too early
    EXPECT_EQ(third.GetBitsAddress(), adopted);
    EXPECT_EQ(third.GetSize(), CSize(64, 64));
    EXPECT_EQ(*third.GetPixelAddress(3, 3) + *third.GetPixelAddress(63, 63), 9);
    third.Create(1, 1);
    EXPECT_TRUE(::HeapValidate(::GetProcessHeap(), 0, nullptr));
}

TEST(Dib, CopiesGdiBitmaps) {
    CvornDIB dib;
    CBitmap none;
    EXPECT_FALSE(dib.Create(none));
    EXPECT_EQ(dib.GetSize(), CSize(16, 16));
    { const CClientDC first(nullptr); } // the system makes what it keeps
    for (int bits : {1, 4, 8, 16, 24, 32}) {
        GuardedImage source(13, 9, bits);
        const HandleCounts before = HandleCounts::now();
        {
            void* sectionBits = nullptr;
            CBitmap section;
            section.Attach(
                ::CreateDIBSection(nullptr, source.block.info(), DIB_RGB_COLORS, &sectionBits, nullptr, 0));
            std::memcpy(sectionBits, source.pixels.data(), source.pixels.copy().size());
            ASSERT_TRUE(dib.Create(section));
        }
        EXPECT_EQ(HandleCounts::now(), before);
        EXPECT_EQ(dib.GetBitSize(), source.pixels.copy().size());
        EXPECT_EQ(dib.GetBitsPerPixel(), bits);
        EXPECT_EQ(support::coloursOf(dib), support::coloursOf(source.dib)) << bits << " bits";
    }
}

TEST(Dib, MapsEveryPixelToThePalettesNearestColour) {
    Bytes random = support::noise(64, 5);
    const auto* colours = reinterpret_cast<RGBQUAD*>(random.data());
    CvornDIBPal palette;
    ASSERT_TRUE(palette.Create(const_cast<RGBQUAD*>(colours), 16));
    for (int bits : {4, 8, 24, 1, 16, 32}) {
        GuardedImage image(37, 21, bits);
        const Bytes before = image.pixels.copy();
        const bool isMapped = bits == 4 || bits == 8 || bits == 24;
        std::vector<COLORREF> expected = support::coloursOf(image.dib);
        for (COLORREF& colour : expected) {
            const RGBQUAD& nearest = colours[palette.GetNearestPaletteIndex(colour)];
            if (isMapped) colour = RGB(nearest.rgbRed, nearest.rgbGreen, nearest.rgbBlue);
        }
        ASSERT_EQ(image.dib.MapColorsToPalette(static_cast<HPALETTE>(palette)) != FALSE, isMapped) << bits;
        EXPECT_EQ(support::coloursOf(image.dib), expected) << bits << " bits";
        EXPECT_EQ(image.pixels.copy() == before, !isMapped);
        EXPECT_EQ(image.dib.GetBitmapInfoAddress()->bmiHeader.biClrUsed, isMapped ? 16u : 0u);
        EXPECT_EQ(image.dib.GetClrTabAddress()[255].rgbRed, 0);
    }
}

/// A rectangle moved from an image of 70 x 40 to one of 90 x 60.
struct Transfer {
    int xDest, yDest, wDest, hDest, xSrc, ySrc, wSrc, hSrc;

    void run(CvornDIB& from, CvornDIB& to, DWORD key) const {
        from.StretchBits(&to, xDest, yDest, wDest, hDest, xSrc, ySrc, wSrc, hSrc, key);
        if (wDest == wSrc && hDest == hSrc) from.CopyBits(&to, xDest, yDest, wSrc, hSrc, xSrc, ySrc, key);
        if (wDest == 2LL * wSrc && hDest == 2LL * hSrc)
            from.DoubleBits(&to, xDest, yDest, xSrc, ySrc, wSrc, hSrc, key);
    }
};

TEST(DibTransfer, MovesTheRightPixel) {
    const Transfer moves[] = {
        {0, 0, 70, 40, 0, 0, 70, 40}, {3, 5, 33, 17, 2, 1, 33, 17}, {0, 0, 80, 60, 10, 3, 40, 30},
        {7, 2, 34, 22, 1, 9, 17, 11}, {1, 1, 89, 59, 0, 0, 70, 40}, {20, 20, 9, 5, 3, 3, 64, 37},
        {89, 59, 1, 1, 69, 39, 1, 1}, {0, 0, 90, 1, 69, 0, 1, 40},  {5, 0, 2, 60, 0, 20, 70, 1}};
    for (DWORD key : {0xFFFFFFFFu, 0x105u}) {
        for (const Transfer& move : moves) {
            GuardedImage from(70, 40, 8), to(90, 60, 8);
            for (int i = 0; i < 70 * 40; i += 3)
                from.at(i % 70, i / 70) = 5;
            Bytes expected = to.pixels.copy();
            for (int y = 0; y < move.hDest; ++y) {
                for (int x = 0; x < move.wDest; ++x) {
                    const BYTE pixel = from.at(move.xSrc + x * move.wSrc / move.wDest,
                                               move.ySrc + y * move.hSrc / move.hDest);
                    const auto place = &to.at(move.xDest + x, move.yDest + y) - to.pixels.data();
                    if (key == 0xFFFFFFFFu || pixel != 5) expected[static_cast<std::size_t>(place)] = pixel;
                }
            }
            move.run(from.dib, to.dib, key);
            EXPECT_TRUE(to.pixels.copy() == expected) << move.wDest << " x " << move.hDest << ", key " << key;
        }
    }
}

TEST(DibTransfer, LeavesWhatIsOutsideTheBuffersAlone) {
    constexpr int huge = INT_MAX - 3;
    const Transfer moves[] = {{0, 0, 0, 5, 0, 0, 0, 5},
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
                              {0, 0, 82, 80, 0, 0, 41, 40},
                              {0, 0, 9, 9, 0, 0, huge, huge},
                              {huge, huge, huge, huge, huge, huge, huge, huge},
                              {0, 0, 4, 4, 0, INT_MIN, 2, 2},
                              {0, 0, 10, 10, INT_MIN, 0, 5, 5},
                              {INT_MIN, INT_MIN, 5, 5, 0, 0, 5, 5}};
    GuardedImage from(70, 40, 8), to(90, 60, 8), deep(8, 8, 32), wide(8, 8, 24);
    const Bytes before = to.pixels.copy(), deepBefore = deep.pixels.copy();
    for (const Transfer& move : moves) {
        for (DWORD key : {0xFFFFFFFFu, 0u})
            move.run(from.dib, to.dib, key);
        EXPECT_TRUE(to.pixels.copy() == before)
            << move.xDest << ", " << move.yDest << ", " << move.wDest << " x " << move.hDest << " from "
            << move.xSrc << ", " << move.ySrc;
    }
    Transfer{0, 0, 8, 8, 0, 0, 8, 8}.run(from.dib, deep.dib, 0xFFFFFFFF); // its pixels have no addresses
    EXPECT_TRUE(deep.pixels.copy() == deepBefore);
    from.dib.CopyBits(nullptr, 0, 0, 8, 8, 0, 0);
    from.dib.CopyBits(&wide.dib, 1, 0, 8, 8, 0, 0); // whatever the depth, bytes are moved, from the pixel on
    EXPECT_EQ(std::memcmp(&wide.at(3, 2), &from.at(0, 2), 8), 0);
}

} // namespace
