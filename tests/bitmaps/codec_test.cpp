// SPDX-License-Identifier: MIT
#include "tests/bitmaps/bitmap_test.h"
#include "tests/bitmaps/sample_pictures.h"
#include "vorn/bitmaps/image_codec.h"

#include <memory>
#include <thread>

namespace {

using Codec = CvornImageCodec;
using Buffer = std::unique_ptr<BYTE, decltype(&free)>;

/// A smooth picture that is the same neither upside down nor mirrored nor with red and blue exchanged.
COLORREF sampleAt(int x, int y) {
    return RGB(40 + 5 * x, 250 - 6 * y, 3 * x + 2 * y);
}

/// The sample as a DIB's rows: `height` negative for top-down, as in the header.
std::vector<BYTE> sampleBits(int width, int height, int bitCount) {
    const int stride = (width * bitCount + 31) / 32 * 4, rows = std::abs(height);
    std::vector<BYTE> bits(stride * rows, 0x77);
    for (int i = 0; i < width * rows; i++) {
        const int x = i % width, y = i / width;
        const COLORREF c = sampleAt(x, y);
        const BYTE pixel[] = {GetBValue(c), GetGValue(c), GetRValue(c)};
        memcpy(&bits[(height > 0 ? rows - 1 - y : y) * stride + x * bitCount / 8], pixel, 3);
    }
    return bits;
}

class ImageCodec : public BitmapTest {
protected:
    void expectSample(const Codec& image, int width, int height, int tolerance) {
        m_canvas.fill(backdrop);
        ASSERT_TRUE(image.Draw(m_canvas.dc(), 1, 1, width, height));
        for (int i = 0; i < (width + 2) * (height + 2); i++) {
            const int x = i % (width + 2) - 1, y = i / (width + 2) - 1;
            const bool inside = x >= 0 && y >= 0 && x < width && y < height;
            expectPixels("sample", {{x + 1, y + 1, inside ? sampleAt(x, y) : backdrop}},
                         inside ? tolerance : 0);
        }
    }
};

TEST_F(ImageCodec, EveryLayoutAndFormatComesBackPixelByPixel) {
    const std::string file = m_folder.pathOf("picture");
    for (const auto& [format, mark, tolerance] : {std::tuple(Codec::FORMAT_BMP, 'B', 0),
                                                  {Codec::FORMAT_JPEG, '\xFF', 12},
                                                  {Codec::FORMAT_PNG, '\x89', 0}}) {
        for (const auto& [width, height, bitCount] :
             {std::tuple(33, 17, 24), {33, -17, 24}, {33, 17, 32}, {30, -16, 32}, {1, 1, 24}}) {
            SCOPED_TRACE(testing::Message()
                         << format << ": " << width << " x " << height << " x " << bitCount);
            const std::vector<BYTE> bits = sampleBits(width, height, bitCount);
            ASSERT_TRUE(Codec::SaveBits(file.c_str(), format, bits.data(), width, height, bitCount));
            Codec image;
            ASSERT_TRUE(image.Load(file.c_str()));
            expectSample(image, width, std::abs(height), tolerance);
            DWORD size = 0;
            const Buffer buffer(Codec::EncodeBits(format, size, bits.data(), width, height, bitCount), free);
            EXPECT_EQ(std::vector<BYTE>(buffer.get(), buffer.get() + size), m_folder.read("picture"));
            EXPECT_EQ(buffer.get()[0], static_cast<BYTE>(mark));
        }
    }
}

TEST_F(ImageCodec, BitmapsOfTheScreenAndOfOneBitAreTakenAndHandlesComeBack) {
    support::Canvas canvas(40, 20);
    const std::vector<BYTE> bits = sampleBits(40, -20, 32), halves = {0xF0, 0, 0xF0, 0};
    ::SetBitmapBits(canvas.bitmap(), static_cast<DWORD>(bits.size()), bits.data());
    expectHandlesKept([&] {
        Codec image;
        ASSERT_TRUE(image.CreateFromHBITMAP(canvas.bitmap()));
        const Codec copy = image;
        DWORD size = 0;
        const Buffer png(copy.Encode(Codec::FORMAT_PNG, size), free);
        ASSERT_TRUE(image.Load(png.get(), size));
        expectSample(image, 40, 20, 0);
        expectSample(copy, 40, 20, 0);
        HBITMAP mono = ::CreateBitmap(8, 2, 1, 1, halves.data());
        EXPECT_TRUE(image.CreateFromHBITMAP(mono));
        ::DeleteObject(mono);
        EXPECT_FALSE(image.CreateFromHBITMAP(nullptr)) << "and keeps the picture:";
        ASSERT_TRUE(image.Draw(m_canvas.dc(), 0, 0, 8, 2));
        expectPixels("mono", {{3, 1, white}, {4, 1, RGB(0, 0, 0)}});
    });
}

TEST_F(ImageCodec, ScalesSmoothlyAndBlendsWhatIsTransparent) {
    // An icon of four columns: opaque black, opaque white, red at half opacity, fully transparent green.
    support::ByteWriter rows;
    for (int row = 0; row < 4; row++)
        rows.put(0xFF000000u, 0xFFFFFFFFu, 0x80FF0000u, 0x0000FF00u);
    const std::vector<BYTE> icon = support::iconOf(4, 4, rows.bytes);
    Codec image;
    ASSERT_TRUE(image.Load(icon.data(), icon.size()));
    m_canvas.fill(RGB(0, 0, 255));
    ASSERT_TRUE(image.Draw(m_canvas.dc(), 0, 0, 4, 4) && image.Draw(m_canvas.dc(), 0, 8, 16, 16));
    const COLORREF blended = RGB(128, 0, 127), blue = RGB(0, 0, 255);
    expectPixels("1:1", {{0, 2, RGB(0, 0, 0)}, {1, 2, white}, {2, 2, blended}, {3, 2, blue}}, 2);
    for (int x = 1; x < 5; x++)
        EXPECT_LT(GetRValue(m_canvas.at(x, 16)), GetRValue(m_canvas.at(x + 1, 16))) << x;
    expectPixels("transparent green must not bleed", {{15, 16, blue}}, 2);

    DWORD size = 0;
    const Buffer flat(image.Encode(Codec::FORMAT_BMP, size), free);
    ASSERT_TRUE(image.Load(flat.get(), size) && image.Draw(m_canvas.dc(), 0, 0, 4, 4));
    expectPixels("saved without transparency, on white", {{2, 0, RGB(255, 127, 127)}, {3, 0, white}}, 2);

    // A fine checkerboard shrinks to grey.
    std::vector<BYTE> checks(64 * 64 * 4);
    for (int i = 0; i < 64 * 64; i++)
        std::fill_n(&checks[i * 4], 3, (i + i / 64) % 2 ? 255 : 0);
    const Buffer png(Codec::EncodeBits(Codec::FORMAT_PNG, size, checks.data(), 64, 64, 32), free);
    ASSERT_TRUE(image.Load(png.get(), size) && image.Draw(m_canvas.dc(), 0, 0, 16, 16));
    for (int i = 0; i < 16; i++)
        expectPixels("grey", {{i, 15 - i, RGB(127, 127, 127)}}, 3);
}

TEST_F(ImageCodec, AFailedSaveLeavesTheOldFile) {
    const std::vector<BYTE> bits = sampleBits(4, 4, 24), old = {1, 2, 3};
    const std::string file = m_folder.write("old.png", old), nowhere = m_folder.pathOf("none\\picture.png");
    const auto save = [&](const std::string& name, int format = Codec::FORMAT_PNG, int cx = 4,
                          int bitCount = 24) {
        return Codec::SaveBits(name.c_str(), format, bits.data(), cx, 4, bitCount);
    };
    EXPECT_FALSE(save(file, 2)) << "no such format";
    EXPECT_FALSE(save(file, Codec::FORMAT_PNG, 4, 16) || save(file, Codec::FORMAT_PNG, 0));
    EXPECT_FALSE(save(file, Codec::FORMAT_JPEG, INT_MAX) || save(nowhere) || Codec().Save(file.c_str(), 4));
    EXPECT_FALSE(Codec::SaveBits(file.c_str(), Codec::FORMAT_PNG, nullptr, 4, 4, 24));
    ::SetFileAttributesA(file.c_str(), FILE_ATTRIBUTE_READONLY);
    EXPECT_FALSE(save(file));
    EXPECT_EQ(m_folder.read("old.png"), old);
    ::SetFileAttributesA(file.c_str(), FILE_ATTRIBUTE_NORMAL);
    EXPECT_TRUE(save(file));
    EXPECT_NE(m_folder.read("old.png"), old);
    WIN32_FIND_DATAA found;
    EXPECT_EQ(::FindFirstFileA(m_folder.pathOf("vrn*").c_str(), &found), INVALID_HANDLE_VALUE)
        << found.cFileName;
}

TEST_F(ImageCodec, RespectsTheApartmentOfTheThread) {
    const auto apartmentAfterUse = [&](int choice) {
        std::pair<HRESULT, APTTYPE> result;
        std::thread([&] {
            if (choice >= 0) ::CoInitializeEx(nullptr, choice);
            DWORD size = 0;
            const Buffer png(Codec::EncodeBits(4, size, sampleBits(4, 4, 24).data(), 4, 4, 24), free);
            EXPECT_TRUE(Codec().Load(png.get(), size));
            APTTYPEQUALIFIER qualifier;
            result.first = ::CoGetApartmentType(&result.second, &qualifier);
            if (choice >= 0) ::CoUninitialize();
        }).join();
        return result;
    };
    EXPECT_EQ(apartmentAfterUse(COINIT_MULTITHREADED), std::pair(S_OK, APTTYPE_MTA));
    EXPECT_NE(apartmentAfterUse(COINIT_APARTMENTTHREADED).second, APTTYPE_MTA);
    EXPECT_EQ(apartmentAfterUse(-1).first, CO_E_NOTINITIALIZED);
}

} // namespace
