// SPDX-License-Identifier: MIT
#include "tests/support/canvas.h"
#include "tests/support/gl_test.h"
#include "tests/support/handle_counts.h"
#include "tests/support/temp_folder.h"
#include "vorn/bitmaps/image_codec.h"

#include <gtest/gtest.h>
#include <thread>

namespace {

using support::Canvas;
using Codec = CvornImageCodec;

/// A smooth picture that is the same neither upside down nor mirrored nor with red and blue exchanged.
COLORREF sampleAt(int x, int y) {
    return RGB(40 + 5 * x, 250 - 6 * y, 3 * x + 2 * y);
}

/// The sample as a DIB's rows: `height` negative for top-down, as in the header.
std::vector<BYTE> sampleBits(int width, int height, int bitCount) {
    const int stride = (width * bitCount + 31) / 32 * 4, rows = std::abs(height);
    std::vector<BYTE> bits(stride * rows, 0x77);
    for (int y = 0; y < rows; y++) {
        for (int x = 0; x < width; x++) {
            BYTE* pixel = &bits[(height > 0 ? rows - 1 - y : y) * stride + x * bitCount / 8];
            const COLORREF colour = sampleAt(x, y);
            pixel[0] = GetBValue(colour);
            pixel[1] = GetGValue(colour);
            pixel[2] = GetRValue(colour);
        }
    }
    return bits;
}

void expectSample(const Codec& image, int width, int height, int tolerance) {
    ASSERT_EQ(image.GetWidth(), width);
    ASSERT_EQ(image.GetHeight(), height);
    Canvas canvas(width + 2, height + 2, RGB(1, 2, 3));
    ASSERT_TRUE(image.Draw(canvas.dc(), 1, 1, width, height));
    for (int y = -1; y <= height; y++) {
        for (int x = -1; x <= width; x++) {
            const bool inside = x >= 0 && y >= 0 && x < width && y < height;
            ASSERT_TRUE(support::isNear(canvas.at(x + 1, y + 1), inside ? sampleAt(x, y) : RGB(1, 2, 3),
                                        inside ? tolerance : 0))
                << "at " << x << ", " << y;
        }
    }
}

TEST(Codec, EveryLayoutAndFormatComesBackPixelByPixel) {
    const support::TempFolder folder;
    constexpr struct {
        Codec::Format format;
        const char* mark;
        int tolerance;
    } formats[] = {
        {Codec::FORMAT_BMP, "BM", 0}, {Codec::FORMAT_JPEG, "\xFF\xD8", 12}, {Codec::FORMAT_PNG, "\x89P", 0}};
    constexpr struct {
        int width, height, bitCount;
    } layouts[] = {{33, 17, 24}, {33, -17, 24}, {33, 17, 32}, {30, -16, 32}, {1, 1, 24}};
    for (const auto& [format, mark, tolerance] : formats) {
        for (const auto& [width, height, bitCount] : layouts) {
            SCOPED_TRACE(testing::Message()
                         << "format " << format << ", " << width << " x " << height << " x " << bitCount);
            const std::vector<BYTE> bits = sampleBits(width, height, bitCount);
            const std::string file = folder.pathOf("picture");
            ASSERT_TRUE(Codec::SaveBits(file.c_str(), format, bits.data(), width, height, bitCount));
            EXPECT_EQ(std::string(mark),
                      std::string(reinterpret_cast<const char*>(folder.read("picture").data()), 2));
            Codec image;
            ASSERT_TRUE(image.Load(file.c_str()));
            expectSample(image, width, std::abs(height), tolerance);

            DWORD size = 0;
            BYTE* buffer = Codec::EncodeBits(format, size, bits.data(), width, height, bitCount);
            EXPECT_EQ(std::vector<BYTE>(buffer, buffer + size), folder.read("picture"));
            free(buffer);
        }
    }
}

TEST(Codec, BitmapsOfTheScreenAndOfOneBitAreTaken) {
    Canvas canvas(40, 20);
    const std::vector<BYTE> bits = sampleBits(40, -20, 32);
    ::SetBitmapBits(canvas.bitmap(), static_cast<DWORD>(bits.size()), bits.data());
    Codec image, copy;
    ASSERT_TRUE(image.CreateFromHBITMAP(canvas.bitmap()));
    copy = image;
    DWORD size = 0;
    BYTE* png = copy.Encode(Codec::FORMAT_PNG, size);
    ASSERT_NE(png, nullptr);
    EXPECT_TRUE(image.Load(png, size));
    free(png);
    expectSample(image, 40, 20, 0);
    expectSample(copy, 40, 20, 0);

    const BYTE halves[] = {0xF0, 0, 0xF0, 0};
    HBITMAP mono = ::CreateBitmap(8, 2, 1, 1, halves);
    ASSERT_TRUE(image.CreateFromHBITMAP(mono));
    ::DeleteObject(mono);
    ASSERT_TRUE(image.Draw(canvas.dc(), 0, 0, 8, 2));
    EXPECT_EQ(canvas.at(3, 1), RGB(255, 255, 255));
    EXPECT_EQ(canvas.at(4, 1), RGB(0, 0, 0));
    EXPECT_FALSE(image.CreateFromHBITMAP(nullptr));
    EXPECT_EQ(image.GetWidth(), 8) << "a failure must leave the picture";
}

TEST(Codec, ScalesSmoothlyAndBlendsWhatIsTransparent) {
    // Four columns: opaque black, opaque white, red at half opacity, fully transparent green.
    const support::TempFolder folder;
    const uint32_t columns[] = {0xFF000000, 0xFFFFFFFF, 0x80FF0000, 0x0000FF00};
    std::vector<BYTE> icon = {0, 0, 1, 0, 1, 0, 4, 4, 0, 0, 1, 0, 32, 0, 120, 0, 0, 0, 22, 0, 0, 0};
    const BITMAPINFOHEADER header = {sizeof header, 4, 8, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    const auto* raw = reinterpret_cast<const BYTE*>(&header);
    icon.insert(icon.end(), raw, raw + sizeof header);
    for (int row = 0; row < 4; row++) {
        icon.insert(icon.end(), reinterpret_cast<const BYTE*>(columns),
                    reinterpret_cast<const BYTE*>(columns + 4));
    }
    icon.resize(icon.size() + 16);
    Codec image;
    ASSERT_TRUE(image.Load(icon.data(), icon.size()));
    Canvas canvas(16, 16, RGB(0, 0, 255));
    ASSERT_TRUE(image.Draw(canvas.dc(), 0, 0, 4, 4));
    const COLORREF expected[] = {RGB(0, 0, 0), RGB(255, 255, 255), RGB(128, 0, 127), RGB(0, 0, 255)};
    for (int x = 0; x < 4; x++)
        EXPECT_TRUE(support::isNear(canvas.at(x, 2), expected[x], 2)) << x;

    canvas.fill(RGB(0, 0, 255));
    ASSERT_TRUE(image.Draw(canvas.dc(), 0, 0, 16, 16));
    EXPECT_TRUE(support::isNear(canvas.at(0, 8), RGB(0, 0, 0)));
    for (int x = 2; x < 5; x++)
        EXPECT_LT(GetRValue(canvas.at(x, 8)), GetRValue(canvas.at(x + 1, 8))) << x;
    EXPECT_TRUE(support::isNear(canvas.at(15, 8), RGB(0, 0, 255), 2)) << "transparent green must not bleed";

    // Saved without transparency, it lies on white.
    ASSERT_TRUE(image.Save(folder.pathOf("flat.bmp").c_str(), Codec::FORMAT_BMP));
    ASSERT_TRUE(image.Load(folder.pathOf("flat.bmp").c_str()));
    ASSERT_TRUE(image.Draw(canvas.dc(), 0, 0, 4, 4));
    EXPECT_TRUE(support::isNear(canvas.at(2, 0), RGB(255, 127, 127), 2));
    EXPECT_EQ(canvas.at(3, 0), RGB(255, 255, 255));

    // A fine checkerboard shrinks to grey.
    std::vector<BYTE> checks(64 * 64 * 4);
    for (int i = 0; i < 64 * 64; i++)
        std::fill_n(&checks[i * 4], 3, (i + i / 64) % 2 ? 255 : 0);
    DWORD size = 0;
    BYTE* png = Codec::EncodeBits(Codec::FORMAT_PNG, size, checks.data(), 64, 64, 32);
    ASSERT_TRUE(image.Load(png, size));
    free(png);
    ASSERT_TRUE(image.Draw(canvas.dc(), 0, 0, 16, 16));
    for (int i = 0; i < 16; i++)
        EXPECT_TRUE(support::isNear(canvas.at(i, 15 - i), RGB(127, 127, 127), 3));
}

TEST(Codec, AFailedSaveLeavesTheOldFile) {
    const support::TempFolder folder;
    const std::vector<BYTE> bits = sampleBits(4, 4, 24), old = {1, 2, 3};
    const std::string file = folder.write("old.png", old);
    EXPECT_FALSE(Codec::SaveBits(file.c_str(), 2, bits.data(), 4, 4, 24)) << "no such format";
    EXPECT_FALSE(Codec::SaveBits(file.c_str(), Codec::FORMAT_PNG, bits.data(), 4, 4, 16));
    EXPECT_FALSE(Codec::SaveBits(file.c_str(), Codec::FORMAT_PNG, bits.data(), 0, 4, 24));
    EXPECT_FALSE(Codec::SaveBits(file.c_str(), Codec::FORMAT_PNG, nullptr, 4, 4, 24));
    EXPECT_FALSE(Codec::SaveBits(file.c_str(), Codec::FORMAT_JPEG, bits.data(), INT_MAX, INT_MIN, 24));
    EXPECT_FALSE(Codec().Save(file.c_str(), Codec::FORMAT_PNG)) << "nothing to save";
    const std::string nowhere = folder.pathOf("none\\picture.png");
    EXPECT_FALSE(Codec::SaveBits(nowhere.c_str(), Codec::FORMAT_PNG, bits.data(), 4, 4, 24));
    ::SetFileAttributesA(file.c_str(), FILE_ATTRIBUTE_READONLY);
    EXPECT_FALSE(Codec::SaveBits(file.c_str(), Codec::FORMAT_PNG, bits.data(), 4, 4, 24));
    EXPECT_EQ(folder.read("old.png"), old);
    ::SetFileAttributesA(file.c_str(), FILE_ATTRIBUTE_NORMAL);
    EXPECT_TRUE(Codec::SaveBits(file.c_str(), Codec::FORMAT_PNG, bits.data(), 4, 4, 24));
    EXPECT_NE(folder.read("old.png"), old);
    WIN32_FIND_DATAA found;
    HANDLE search = ::FindFirstFileA(folder.pathOf("vrn*").c_str(), &found);
    EXPECT_EQ(search, INVALID_HANDLE_VALUE) << "left behind: " << found.cFileName;
}

TEST(Codec, RespectsTheApartmentOfTheThread) {
    const std::vector<BYTE> bits = sampleBits(4, 4, 24);
    const auto apartmentAfterUse = [&](int choice) {
        APTTYPE type = APTTYPE_NA;
        HRESULT result = S_OK;
        std::thread([&] {
            if (choice >= 0) ::CoInitializeEx(nullptr, choice);
            DWORD size = 0;
            BYTE* png = Codec::EncodeBits(Codec::FORMAT_PNG, size, bits.data(), 4, 4, 24);
            EXPECT_TRUE(Codec().Load(png, size));
            free(png);
            APTTYPEQUALIFIER qualifier;
            result = ::CoGetApartmentType(&type, &qualifier);
            if (choice >= 0) ::CoUninitialize();
        }).join();
        return std::pair(result, type);
    };
    EXPECT_EQ(apartmentAfterUse(COINIT_MULTITHREADED), std::pair(S_OK, APTTYPE_MTA));
    EXPECT_NE(apartmentAfterUse(COINIT_APARTMENTTHREADED).second, APTTYPE_MTA);
    EXPECT_EQ(apartmentAfterUse(-1).first, CO_E_NOTINITIALIZED);
}

TEST(Codec, HandlesComeBack) {
    const std::vector<BYTE> bits = sampleBits(20, 20, 32);
    Canvas canvas(30, 30);
    const auto useAll = [&] {
        DWORD size = 0;
        BYTE* jpeg = Codec::EncodeBits(Codec::FORMAT_JPEG, size, bits.data(), 20, 20, 32);
        Codec image;
        EXPECT_TRUE(image.Load(jpeg, size) && image.Draw(canvas.dc(), 0, 0, 30, 30));
        EXPECT_TRUE(image.CreateFromHBITMAP(canvas.bitmap()));
        free(jpeg);
    };
    useAll();
    const auto before = support::HandleCounts::now();
    for (int i = 0; i < 5; i++)
        useAll();
    EXPECT_EQ(support::HandleCounts::now(), before);
}

} // namespace
