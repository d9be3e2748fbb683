// SPDX-License-Identifier: MIT
#include "tests/bitmaps/dib_samples.h"
#include "tests/support/canvas.h"
#include "tests/support/dialog_driver.h"
#include "tests/support/temp_folder.h"
#include "vorn/bitmaps/dib_palette.h"

#include <gtest/gtest.h>
#include <malloc.h>
#include <numeric>

namespace {

using support::Bytes;
using support::Canvas;
using support::HeaderBlock;

/// A BMP file: a header block of `headerSize` bytes, and pixels.
Bytes bmpFile(const void* header, DWORD headerSize, const Bytes& pixels) {
    const DWORD offset = 14 + headerSize;
    const BITMAPFILEHEADER file = {0x4D42, offset + static_cast<DWORD>(pixels.size()), 0, 0, offset};
    Bytes bytes(offset);
    std::memcpy(bytes.data(), &file, 14);
    std::memcpy(bytes.data() + 14, header, headerSize);
    bytes.insert(bytes.end(), pixels.begin(), pixels.end());
    return bytes;
}

// Offsets of the fields in a file.
constexpr std::size_t Mark = 0, FileSize = 2, BitsAt = 10, HeaderSize = 14, Width = 18, Height = 22,
                      Depth = 26, Packing = 30, ImageSize = 34, Used = 46;

/// What is changed in a file of 5 x 3 pixels of 8 bits with 256 colours.
struct Change {
    const char* name;
    std::size_t first;
    DWORD firstValue;
    std::size_t second = Mark;
    DWORD secondValue = 0; // nothing

    Bytes file() const {
        Bytes bytes = bmpFile(HeaderBlock(5, 3, 8).info(), 1064, support::noise(24));
        std::memcpy(&bytes[first], &firstValue, 4);
        if (secondValue != 0) std::memcpy(&bytes[second], &secondValue, 4);
        return bytes;
    }
};
constexpr Change plain = {"plain", Width, 5};

bool load(CvornDIB& dib, Bytes bytes) {
    struct : CMemFile {
        UINT Read(void* to, UINT count) override {
            EXPECT_LE(count, std::max<ULONGLONG>(GetLength(), 1024)); // room was made on the word of a header
            return CMemFile::Read(to, count);
        }
    } file;
    file.Attach(bytes.data(), static_cast<UINT>(bytes.size()));
    return dib.Load(&file);
}

Bytes bitsOf(const CvornDIB& dib, std::size_t size) {
    return Bytes(dib.GetBitsAddress(), dib.GetBitsAddress() + size);
}

TEST(DibFile, BrokenFilesLeaveTheImageAsItWas) {
    constexpr DWORD all = 0xFFFFFFFF, largest = 0x7FFFFFFF, smallest = 0x80000000, bits24 = 0x180001;
    const Change changes[] = {{"mark", Mark, 0x4142},
                              {"V4 header", HeaderSize, 108},
                              {"no header size", HeaderSize, 0},
                              {"no file size", FileSize, 0},
                              {"file ends in header", FileSize, 1077},
                              {"a byte more", FileSize, 1103},
                              {"huge file", FileSize, all},
                              {"bits at end", BitsAt, 1102, FileSize, 1126},
                              {"bits past all", BitsAt, all - 15, FileSize, all},
                              {"width -5", Width, DWORD(-5)},
                              {"width min", Width, smallest},
                              {"width max", Width, largest},
                              {"width max, 1 bit", Width, largest, Depth, 0x10001},
                              {"2^28 wide", Width, 1 << 28},
                              {"height max", Height, largest},
                              {"height min", Height, smallest},
                              {"both max", Width, largest, Height, largest},
                              {"RLE size", Packing, BI_RLE8, ImageSize, all},
                              {"PNG size", Packing, BI_PNG, ImageSize, smallest},
                              {"257 colours", Depth, bits24, Used, 257},
                              {"2^31 colours", Depth, bits24, Used, smallest},
                              {"2^30 + 1 colours", Depth, bits24, Used, 0x40000001}};
    CvornDIB dib;
    ASSERT_TRUE(load(dib, plain.file()));
    const void *header = dib.GetBitmapInfoAddress(), *bits = dib.GetBitsAddress();
    for (const Change& change : changes)
        EXPECT_FALSE(load(dib, change.file())) << change.name;
    for (const Bytes whole = plain.file(); const BYTE& end : whole)
        ASSERT_FALSE(load(dib, Bytes(whole.data(), &end))) << "cut to " << &end - whole.data();
    EXPECT_FALSE(dib.Load(static_cast<CFile*>(nullptr)) || dib.Load("no such folder\\picture.bmp"));
    EXPECT_TRUE(dib.GetBitmapInfoAddress() == header && dib.GetBitsAddress() == bits);
    EXPECT_EQ(bitsOf(dib, 24), support::noise(24));
}

/// Whatever the header says, no operation may leave the pixel buffer.
void useEverything(CvornDIB& dib) {
    const auto needed = std::abs(dib.GetStorageWidth() * dib.GetHeight());
    EXPECT_GE(_msize(dib.GetBitsAddress()), static_cast<std::size_t>(needed));
    dib.Draw(Canvas(64, 64).dc(), 1, 1);
    const int w = dib.GetWidth(), h = dib.GetHeight();
    CvornDIB other;
    other.Create(200, 200);
    dib.CopyBits(&other, 0, 0, w, h, 0, 0);
    dib.StretchBits(&other, 0, 0, 199, 199, 0, 0, w, h, 0);
    dib.DoubleBits(&other, 0, 0, 0, 0, w, h);
    other.CopyBits(&dib, 0, 0, 200, 200, 0, 0);
    other.StretchBits(&dib, 0, 0, w, h, 0, 0, 100, 99);
    CMemFile file;
    dib.Save(&file);
    CvornDIBPal palette, own;
    own.Create(&dib);
    palette.CreateWash();
    dib.MapColorsToPalette(&palette);
    EXPECT_TRUE(::HeapValidate(::GetProcessHeap(), 0, nullptr));
}

TEST(DibFile, OddFilesLoadIntoBuffersThatCoverTheirHeaders) {
    const Change changes[] = {plain,
                              {"large", Width, 300, Height, 40},
                              {"no width", Width, 0},
                              {"no height", Height, 0},
                              {"top-down", Height, DWORD(-3)},
                              {"no bits", FileSize, 1078},
                              {"32 bits", Depth, 0x200001},
                              {"24 bits", Depth, 0x180001, Used, 256},
                              {"used", Used, 0x80000000},
                              {"image size", ImageSize, 0xFFFFFFFF},
                              {"7 bits", Depth, 0x70001},
                              {"no depth", Depth, 0},
                              {"RLE", Packing, BI_RLE8, ImageSize, 100000},
                              {"RLE 4", Packing, BI_RLE4, Depth, 0x40001},
                              {"fields", Packing, BI_BITFIELDS, Depth, 0x100001},
                              {"packed", Packing, 99, ImageSize, 5000}};
    for (const Change& change : changes) {
        SCOPED_TRACE(change.name);
        CvornDIB dib;
        ASSERT_TRUE(load(dib, change.file()));
        EXPECT_EQ(std::memcmp(&dib.GetBitmapInfoAddress()->bmiHeader, &change.file()[HeaderSize], 40), 0);
        EXPECT_EQ(dib.GetBitSize(), 256u); // of the blank image before
        Bytes expected = support::noise(change.first == FileSize ? 0 : 24);
        expected.resize(_msize(dib.GetBitsAddress())); // zero beyond the file's pixels
        EXPECT_EQ(bitsOf(dib, expected.size()), expected);
        useEverything(dib);
    }
}

TEST(DibFile, CoreHeadersBecomeLongOnesAndBitFieldsKeepTheirMasks) {
    struct {
        BITMAPCOREHEADER header = {12, 7, 2, 1, 4};
        BYTE triples[48];
    } core;
    std::iota(core.triples, core.triples + 48, BYTE{0});
    CvornDIB dib;
    ASSERT_TRUE(load(dib, bmpFile(&core, 60, support::noise(8))));
    const BITMAPINFOHEADER expected = {40, 7, 2, 1, 4, BI_RGB, 0, 0, 0, 0, 0};
    EXPECT_EQ(std::memcmp(dib.GetBitmapInfoAddress(), &expected, 40), 0);
    EXPECT_EQ(std::memcmp(&dib.GetClrTabAddress()[15], "\x2D\x2E\x2F", 4), 0);
    EXPECT_EQ(bitsOf(dib, 8), support::noise(8));

    HeaderBlock fields(2, 1, 16);
    fields.header.biCompression = BI_BITFIELDS;
    const DWORD masks[] = {0xF800, 0x07E0, 0x001F};
    std::memcpy(fields.colours, masks, sizeof(masks));
    ASSERT_TRUE(load(dib, bmpFile(fields.info(), 52, {0x00, 0xF8, 0xE0, 0x07})));
    const Canvas canvas(2, 1);
    dib.Draw(canvas.dc(), 0, 0);
    EXPECT_EQ(canvas.at(0, 0), RGB(255, 0, 0));
    EXPECT_EQ(canvas.at(1, 0), RGB(0, 255, 0));
}

TEST(DibFile, EveryDepthComesBackPixelByPixel) {
    const support::TempFolder folder;
    const std::string path = folder.pathOf("picture.bmp");
    const SIZE sizes[] = {{1, 1}, {37, 11}, {64, 5}};
    for (int bits : {1, 4, 8, 16, 24, 32}) {
        for (const SIZE& size : sizes) {
            SCOPED_TRACE(testing::Message() << bits << " bits, " << size.cx << " x " << size.cy);
            HeaderBlock block(size.cx, size.cy, bits);
            Bytes pixels = support::noise(static_cast<std::size_t>(block.stride() * size.cy));
            CvornDIB saved, loaded;
            ASSERT_TRUE(saved.Create(block.info(), pixels.data(), FALSE));
            ASSERT_TRUE(saved.Save(path.c_str()));
            for (int i = bits <= 8 ? 1 << bits : 0; i < 256; ++i)
                block.colours[i] = {}; // only its own entries were taken over
            EXPECT_TRUE(folder.read("picture.bmp") == bmpFile(block.info(), 1064, pixels));
            ASSERT_TRUE(loaded.Load(path.c_str()));
            EXPECT_EQ(std::memcmp(loaded.GetBitmapInfoAddress(), &block, sizeof(block)), 0);
            EXPECT_TRUE(bitsOf(loaded, pixels.size()) == pixels);
            const Canvas canvas(size.cx, size.cy);
            loaded.Draw(canvas.dc(), 0, 0);
            const std::vector<COLORREF> expected = support::coloursOf(saved);
            for (int i = 0; i < size.cx * size.cy; ++i)
                ASSERT_EQ(canvas.at(i % size.cx, i / size.cx), expected[i]) << i;
        }
    }
}

TEST(DibFile, ImagesStandInsideLargerFilesAndArchives) {
    CvornDIB first, second, read;
    ASSERT_TRUE(load(first, plain.file()));
    ASSERT_TRUE(second.Create(9, 4));
    CMemFile file;
    {
        CArchive ar(&file, CArchive::store);
        ar << 7;
        first.Serialize(ar);
        ar << 8;
        second.Serialize(ar);
        ar << 9;
    }
    EXPECT_EQ(file.GetLength(), 3u * 4 + 2 * 1078 + 24 + 48);
    file.SeekToBegin();
    CArchive ar(&file, CArchive::load);
    int marks[3];
    ar >> marks[0];
    read.Serialize(ar);
    EXPECT_EQ(bitsOf(read, 24), support::noise(24));
    ar >> marks[1];
    read.Serialize(ar);
    EXPECT_EQ(read.GetSize(), CSize(9, 4));
    ar >> marks[2];
    EXPECT_EQ(marks[0] + 10 * marks[1] + 100 * marks[2], 987);
}

TEST(DibFile, ResourcesAreTakenByTheEightBitRule) {
    const struct {
        WORD id;
        Bytes pixels; // none: not loaded
    } cases[] = {{101, {0, 1, 2, 3, 4, 5, 6, 7}},
                 {102, {0x12, 0x34, 0, 0, 0x56, 0x78, 0, 0}},
                 {103, {}},
                 {104, {}},
                 {105, {}},
                 {999, {}}};
    for (const auto& [id, pixels] : cases) {
        CvornDIB dib;
        ASSERT_EQ(dib.Load(id) != FALSE, !pixels.empty()) << id;
        EXPECT_EQ(dib.GetSize(), pixels.empty() ? CSize(16, 16) : CSize(4, 2)) << id;
        EXPECT_EQ(bitsOf(dib, pixels.size()), pixels) << id;
        EXPECT_EQ(dib.GetClrTabAddress()[1].rgbBlue, id == 101 ? 0x66 : 1) << id;
    }
}

TEST(DibFile, FailedSavesAreToldAndNamesAskedFor) {
    CvornDIB dib, back;
    ASSERT_TRUE(load(dib, plain.file()));
    // Blocks that do not grow are full in the file's header, in the DIB's, in the pixels, and not at all.
    Bytes room(plain.file().size());
    for (const UINT left : {1097u, 100u, 1u, 0u}) {
        CMemFile file(room.data(), static_cast<UINT>(room.size()) - left);
        EXPECT_EQ(dib.Save(&file), left == 0) << left;
    }

    const support::TempFolder folder;
    const auto before = std::filesystem::current_path();
    const auto confirm = [](HWND box) {
        EXPECT_EQ(support::textOf(box, 0xFFFF), "Failed to open file");
        support::press(box, IDOK);
    };
    const auto cancel = [](HWND dialog) { support::press(dialog, IDCANCEL); };
    const auto enter = [&](HWND dialog) {
        const HWND name = ::GetDlgItem(dialog, ::GetDlgItem(dialog, cmb13) != nullptr ? cmb13 : edt1);
        ::SendMessage(name, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(folder.pathOf("chosen.bmp").c_str()));
        ::PostMessage(dialog, WM_COMMAND, IDOK, 0);
    };
    support::DialogDriver driver({confirm, cancel, cancel, enter, enter});
    EXPECT_FALSE(dib.Save(folder.pathOf("none\\picture.bmp").c_str()));
    EXPECT_FALSE(back.Load(static_cast<const char*>(nullptr)));
    EXPECT_FALSE(back.Save(""));
    EXPECT_TRUE(dib.Save(static_cast<const char*>(nullptr)));
    EXPECT_TRUE(back.Load(""));
    EXPECT_TRUE(driver.finished());
    EXPECT_EQ(back.GetSize(), CSize(5, 3));
    std::filesystem::current_path(before); // the dialogs have changed it to the folder
}

} // namespace
