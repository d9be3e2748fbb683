// SPDX-License-Identifier: MIT
#include "tests/bitmaps/dib_samples.h"
#include "tests/support/canvas.h"
#include "tests/support/dialog_driver.h"
#include "tests/support/gl_test.h"
#include "tests/support/temp_folder.h"
#include "vorn/bitmaps/dib_palette.h"

#include <functional>
#include <gtest/gtest.h>
#include <malloc.h>

namespace {

using support::Bytes;
using support::Canvas;
using support::HeaderBlock;
using support::headerOf;
using support::strideOf;

template <typename T>
void append(Bytes& bytes, const T& value, std::size_t size = sizeof(T)) {
    const auto* first = reinterpret_cast<const BYTE*>(&value);
    bytes.insert(bytes.end(), first, first + size);
}

/// A BMP file of `colours` table entries and the pixels.
Bytes bmpFile(const HeaderBlock& block, std::size_t colours, const Bytes& pixels) {
    const DWORD offset = static_cast<DWORD>(14 + 40 + 4 * colours);
    Bytes bytes;
    append(bytes, BITMAPFILEHEADER{0x4D42, offset + static_cast<DWORD>(pixels.size()), 0, 0, offset});
    append(bytes, block, 40 + 4 * colours);
    bytes.insert(bytes.end(), pixels.begin(), pixels.end());
    return bytes;
}

/// 5 x 3 pixels of 8 bits with 256 colours.
Bytes sampleFile() {
    return bmpFile(headerOf(5, 3, 8), 256, support::noise(24));
}

void poke(Bytes& bytes, std::size_t offset, DWORD value) {
    std::memcpy(bytes.data() + offset, &value, sizeof(value));
}

bool load(CvornDIB& dib, Bytes bytes, ULONGLONG position = 0) {
    CMemFile file(bytes.data(), static_cast<UINT>(bytes.size()));
    file.Seek(static_cast<LONGLONG>(position), CFile::begin);
    return dib.Load(&file);
}

// Offsets of the fields in a file.
enum : std::size_t {
    Mark,
    FileSize = 2,
    BitsOffset = 10,
    HeaderSize = 14,
    Width = 18,
    Height = 22,
    Depth = 26,
    Compression = 30,
    ImageSize = 34,
    Used = 46
};
struct Poke {
    std::size_t offset = Mark;
    DWORD value = 0;
};

TEST(DibFile, BrokenFilesLeaveTheImageAsItWas) {
    constexpr DWORD depth24 = 1 | 24 << 16, deep = 1 | 0xFFFFu << 16;
    struct {
        const char* name;
        std::vector<Poke> pokes;
    } const cases[] = {
        {"another mark", {{Mark, 0x4142}}},
        {"V4 header", {{HeaderSize, 108}}},
        {"V5 header", {{HeaderSize, 124}}},
        {"no header size", {{HeaderSize, 0}}},
        {"huge header size", {{HeaderSize, 0xFFFFFFFF}}},
        {"file size 0", {{FileSize, 0}}},
        {"file smaller than its header", {{FileSize, 1077}}},
        {"file claimed one byte longer", {{FileSize, 1103}}},
        {"file claimed huge", {{FileSize, 0xFFFFFFFF}}},
        {"pixels past the end", {{BitsOffset, 1102}, {FileSize, 1126}}},
        {"pixels past all ends", {{BitsOffset, 0xFFFFFFF0}, {FileSize, 0xFFFFFFFF}}},
        {"negative width", {{Width, DWORD(-5)}}},
        {"smallest width", {{Width, 0x80000000}}},
        {"largest width", {{Width, 0x7FFFFFFF}}},
        {"largest width, 1 bit", {{Width, 0x7FFFFFFF}, {Depth, 1 | 1 << 16}}},
        {"width of 2^28", {{Width, 0x10000000}}},
        {"largest height", {{Height, 0x7FFFFFFF}}},
        {"smallest height", {{Height, 0x80000000}}},
        {"everything largest", {{Width, 0x7FFFFFFF}, {Height, 0x7FFFFFFF}, {Depth, deep}}},
        {"compressed size huge", {{Compression, BI_RLE8}, {ImageSize, 0xFFFFFFFF}}},
        {"PNG inside, size huge", {{Compression, BI_PNG}, {ImageSize, 0x80000000}, {Depth, 0}}},
        {"more colours than fit", {{Depth, depth24}, {Used, 257}}},
        {"2^31 colours", {{Depth, depth24}, {Used, 0x80000000}}},
        {"2^30 + 1 colours", {{Depth, depth24}, {Used, 0x40000001}}},
    };
    CvornDIB dib;
    ASSERT_TRUE(load(dib, sampleFile()));
    const void *header = dib.GetBitmapInfoAddress(), *bits = dib.GetBitsAddress();
    const auto expectUnchanged = [&] {
        EXPECT_EQ(dib.GetBitmapInfoAddress(), header);
        EXPECT_EQ(dib.GetBitsAddress(), bits);
        EXPECT_EQ(Bytes(dib.GetBitsAddress(), dib.GetBitsAddress() + 24), support::noise(24));
    };
    for (const auto& [name, pokes] : cases) {
        SCOPED_TRACE(name);
        Bytes bytes = sampleFile();
        for (const Poke& change : pokes)
            poke(bytes, change.offset, change.value);
        EXPECT_FALSE(load(dib, bytes));
        expectUnchanged();
    }
    for (std::size_t length = 0; length < sampleFile().size(); ++length) {
        Bytes bytes = sampleFile();
        bytes.resize(length);
        ASSERT_FALSE(load(dib, bytes)) << "cut to " << length;
    }
    expectUnchanged();
    EXPECT_FALSE(dib.Load(static_cast<CFile*>(nullptr)));
    EXPECT_FALSE(dib.Load("no such folder\\picture.bmp"));
}

/// Whatever the header says, no operation may leave the pixel buffer.
void useEverything(CvornDIB& dib) {
    const int stride = std::abs(dib.GetStorageWidth()), rows = std::abs(dib.GetHeight());
    EXPECT_GE(_msize(dib.GetBitsAddress()), static_cast<std::size_t>(stride * rows));
    Canvas canvas(64, 64);
    dib.Draw(canvas.dc(), 1, 1);
    CvornDIB other;
    other.Create(200, 200);
    const int w = dib.GetWidth(), h = dib.GetHeight();
    dib.CopyBits(&other, 0, 0, w, h, 0, 0);
    dib.StretchBits(&other, 0, 0, 199, 199, 0, 0, w, h, 0);
    dib.DoubleBits(&other, 0, 0, 0, 0, w, h);
    other.CopyBits(&dib, 0, 0, 200, 200, 0, 0);
    other.StretchBits(&dib, 0, 0, w, h, 0, 0, 100, 99);
    CMemFile file;
    dib.Save(&file);
    CvornDIBPal palette;
    palette.CreateWash();
    dib.MapColorsToPalette(&palette);
    CvornDIBPal().Create(&dib);
    EXPECT_TRUE(::HeapValidate(::GetProcessHeap(), 0, nullptr));
}

TEST(DibFile, OddFilesLoadIntoBuffersThatCoverTheirHeaders) {
    constexpr DWORD plane = 1;
    struct {
        const char* name;
        std::vector<Poke> pokes;
        SIZE size = {5, 3};
        std::size_t filled = 24; // bytes from the file; the rest is zero
    } const cases[] = {
        {"plain", {}},
        {"wider than its pixels", {{Width, 300}, {Height, 40}}, {300, 40}},
        {"no width", {{Width, 0}}, {0, 3}},
        {"no height", {{Height, 0}}, {5, 0}},
        {"top-down", {{Height, DWORD(-3)}}, {5, -3}},
        {"no pixels", {{FileSize, 1078}}, {5, 3}, 0},
        {"deeper than its pixels", {{Depth, plane | 32 << 16}}},
        {"24 bits with 256 colours", {{Depth, plane | 24 << 16}, {Used, 256}}},
        {"more colours used than there are", {{Used, 0x80000000}}},
        {"image size nonsense", {{ImageSize, 0xFFFFFFFF}}},
        {"unheard-of depth", {{Depth, plane | 7 << 16}}},
        {"no depth", {{Depth, plane}}},
        {"RLE longer than the file", {{Compression, BI_RLE8}, {ImageSize, 100000}}},
        {"RLE 4 without size", {{Compression, BI_RLE4}, {Depth, plane | 4 << 16}}},
        {"bit fields", {{Compression, BI_BITFIELDS}, {Depth, plane | 16 << 16}}},
        {"unheard-of compression", {{Compression, 99}, {ImageSize, 5000}}},
        {"no planes", {{Depth, 8 << 16}}},
    };
    for (const auto& [name, pokes, size, filled] : cases) {
        SCOPED_TRACE(name);
        Bytes bytes = sampleFile();
        for (const Poke& change : pokes)
            poke(bytes, change.offset, change.value);
        CvornDIB dib;
        ASSERT_TRUE(load(dib, bytes));
        EXPECT_EQ(dib.GetSize(), CSize(size));
        EXPECT_EQ(dib.GetBitSize(), 256u); // of the blank image before
        Bytes expected = support::noise(24);
        expected.resize(filled);
        expected.resize(_msize(dib.GetBitsAddress()));
        EXPECT_EQ(Bytes(dib.GetBitsAddress(), dib.GetBitsAddress() + expected.size()), expected);
        useEverything(dib);
    }
}

TEST(DibFile, CoreHeadersBecomeLongOnes) {
    const Bytes pixels = support::noise(8);
    Bytes bytes;
    append(bytes, BITMAPFILEHEADER{0x4D42, 14 + 12 + 48 + 8, 0, 0, 14 + 12 + 48});
    append(bytes, BITMAPCOREHEADER{12, 7, 2, 1, 4});
    for (int i = 0; i < 16; ++i)
        append(bytes, RGBTRIPLE{BYTE(i), BYTE(2 * i), BYTE(3 * i)});
    bytes.insert(bytes.end(), pixels.begin(), pixels.end());
    CvornDIB dib;
    ASSERT_TRUE(load(dib, bytes));
    const BITMAPINFOHEADER expected = {40, 7, 2, 1, 4, BI_RGB, 0, 0, 0, 0, 0};
    EXPECT_EQ(std::memcmp(dib.GetBitmapInfoAddress(), &expected, 40), 0);
    EXPECT_EQ(support::entryOf(dib, 15), 0x002D1E0Fu);
    EXPECT_EQ(Bytes(dib.GetBitsAddress(), dib.GetBitsAddress() + 8), pixels);
    bytes.resize(60); // inside the colours
    EXPECT_FALSE(load(dib, bytes));
}

TEST(DibFile, BitFieldFilesKeepTheirMasks) {
    HeaderBlock block = headerOf(2, 1, 16);
    block.header.biCompression = BI_BITFIELDS;
    const DWORD masks[] = {0xF800, 0x07E0, 0x001F};
    std::memcpy(block.colours, masks, sizeof(masks));
    CvornDIB dib;
    ASSERT_TRUE(load(dib, bmpFile(block, 3, {0x00, 0xF8, 0xE0, 0x07})));
    Canvas canvas(2, 1);
    dib.Draw(canvas.dc(), 0, 0);
    EXPECT_TRUE(support::isNear(canvas.at(0, 0), RGB(255, 0, 0), 8));
    EXPECT_TRUE(support::isNear(canvas.at(1, 0), RGB(0, 255, 0), 8));
}

TEST(DibFile, EveryDepthComesBackPixelByPixel) {
    const support::TempFolder folder;
    const SIZE sizes[] = {{1, 1}, {37, 11}, {64, 5}};
    for (int bits : {1, 4, 8, 16, 24, 32}) {
        for (const SIZE& size : sizes) {
            SCOPED_TRACE(testing::Message() << bits << " bits, " << size.cx << " x " << size.cy);
            HeaderBlock block = headerOf(size.cx, size.cy, bits);
            const DWORD bytes = static_cast<DWORD>(strideOf(size.cx, bits) * size.cy);
            Bytes pixels = support::noise(bytes);
            CvornDIB saved, loaded;
            ASSERT_TRUE(saved.Create(block.info(), pixels.data(), FALSE));
            const std::string path = folder.pathOf("picture.bmp");
            ASSERT_TRUE(saved.Save(path.c_str()));
            for (int i = bits <= 8 ? 1 << bits : 0; i < 256; ++i)
                block.colours[i] = {}; // only its own entries were taken over
            EXPECT_TRUE(folder.read("picture.bmp") == bmpFile(block, 256, pixels));
            ASSERT_TRUE(loaded.Load(path.c_str()));
            EXPECT_EQ(std::memcmp(loaded.GetBitmapInfoAddress(), &block, sizeof(block)),
                      0);
            EXPECT_EQ(Bytes(loaded.GetBitsAddress(), loaded.GetBitsAddress() + bytes), pixels);
            Canvas canvas(size.cx, size.cy);
            loaded.Draw(canvas.dc(), 0, 0);
            for (int i = 0; i < size.cx * size.cy; ++i)
                ASSERT_EQ(canvas.at(i % size.cx, i / size.cx),
                          support::colourAt(saved, i % size.cx, i / size.cx))
                    << i;
        }
    }
}

TEST(DibFile, ImagesStandInsideLargerFilesAndArchives) {
    CvornDIB first, second, read;
    ASSERT_TRUE(load(first, sampleFile()));
    ASSERT_TRUE(second.Create(9, 4));
    *second.GetPixelAddress(8, 3) = 88;
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
    file.Seek(4, CFile::begin);
    EXPECT_TRUE(read.Load(&file));
    EXPECT_EQ(file.GetPosition(), 4u + 1078 + 24);
    file.SeekToBegin();
    CArchive ar(&file, CArchive::load);
    int marks[3];
    ar >> marks[0];
    read.Serialize(ar);
    EXPECT_EQ(Bytes(read.GetBitsAddress(), read.GetBitsAddress() + 24), support::noise(24));
    ar >> marks[1];
    read.Serialize(ar);
    EXPECT_EQ(read.GetSize(), CSize(9, 4));
    EXPECT_EQ(*read.GetPixelAddress(8, 3), 88);
    ar >> marks[2];
    EXPECT_EQ(marks[0] + 10 * marks[1] + 100 * marks[2], 987);

    const std::unique_ptr<CObject> made(RUNTIME_CLASS(CvornDIB)->CreateObject());
    ASSERT_NE(dynamic_cast<CvornDIB*>(made.get()), nullptr);
    EXPECT_EQ(static_cast<CvornDIB&>(*made).GetBitSize(), 256u);
}

TEST(DibFile, ResourcesAreTakenByTheEightBitRule) {
    struct {
        WORD id;
        bool isLoaded;
        int bits;
        std::vector<BYTE> pixels;
    } const cases[] = {
        {101, true, 8, {0, 1, 2, 3, 4, 5, 6, 7}},
        {102, true, 4, {0x12, 0x34, 0, 0, 0x56, 0x78, 0, 0}},
        {103, false, 0, {}},
        {104, false, 0, {}},
        {105, false, 0, {}},
        {999, false, 0, {}},
    };
    for (const auto& [id, isLoaded, bits, pixels] : cases) {
        SCOPED_TRACE(id);
        CvornDIB dib;
        ASSERT_EQ(dib.Load(id) != FALSE, isLoaded);
        EXPECT_EQ(dib.GetSize(), isLoaded ? CSize(4, 2) : CSize(16, 16));
        if (!isLoaded) continue;
        EXPECT_EQ(dib.GetBitsPerPixel(), bits);
        EXPECT_EQ(Bytes(dib.GetBitsAddress(), dib.GetBitsAddress() + pixels.size()), pixels);
        EXPECT_EQ(support::entryOf(dib, 1), bits == 8 ? 0x445566u : 0x101u);
        EXPECT_EQ(dib.GetClrTabAddress()[200].rgbBlue, 0);
    }
}

TEST(DibFile, FailedSavesAreToldAndChangeNothing) {
    const support::TempFolder folder;
    CvornDIB dib;
    std::string message;
    const auto note = [&](HWND box) {
        message = support::textOf(box, 0xFFFF);
        support::press(box, IDOK);
    };
    {
        support::DialogDriver driver({note});
        EXPECT_FALSE(dib.Save(folder.pathOf("none\\picture.bmp").c_str()));
        EXPECT_TRUE(driver.finished());
        EXPECT_EQ(message, "Failed to open file");
    }
    class FullDisk : public CMemFile {
    public:
        explicit FullDisk(int writes) : m_writes(writes) {}
        void Write(const void* bytes, UINT count) override {
            if (m_writes-- == 0) AfxThrowFileException(CFileException::diskFull);
            CMemFile::Write(bytes, count);
        }

    private:
        int m_writes;
    };
    for (int writes = 0; writes < 4; ++writes) {
        FullDisk file(writes);
        EXPECT_EQ(dib.Save(&file), writes == 3) << writes;
    }
    EXPECT_EQ(dib.GetSize(), CSize(16, 16));
    EXPECT_EQ(dib.GetNumClrEntries(), 256);
}

TEST(DibFile, AskForAName) {
    const support::TempFolder folder;
    const auto before = std::filesystem::current_path();
    CvornDIB dib, back;
    ASSERT_TRUE(load(dib, sampleFile()));
    const auto enter = [&](HWND dialog) {
        const HWND name = ::GetDlgItem(dialog, ::GetDlgItem(dialog, cmb13) != nullptr ? cmb13 : edt1);
        ::SendMessage(name, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(folder.pathOf("chosen.bmp").c_str()));
        ::PostMessage(dialog, WM_COMMAND, IDOK, 0);
    };
    const auto cancel = [](HWND dialog) { support::press(dialog, IDCANCEL); };
    support::DialogDriver driver({cancel, cancel, enter, enter});
    EXPECT_FALSE(back.Load(static_cast<const char*>(nullptr)));
    EXPECT_FALSE(back.Save(""));
    EXPECT_TRUE(dib.Save(static_cast<const char*>(nullptr)));
    EXPECT_TRUE(back.Load(""));
    EXPECT_TRUE(driver.finished());
    EXPECT_EQ(back.GetSize(), CSize(5, 3));
    std::filesystem::current_path(before); // the dialogs have changed it to the folder
}

} // namespace
