// SPDX-License-Identifier: MIT
#include "tests/bitmaps/sample_pictures.h"
#include "tests/support/canvas.h"
#include "tests/support/gl_test.h"
#include "tests/support/handle_counts.h"
#include "tests/support/temp_folder.h"
#include "vorn/bitmaps/image.h"

#include <afxpriv.h>
#include <random>

namespace {

using support::Canvas;
using Bytes = std::vector<BYTE>;

constexpr COLORREF backdrop = RGB(12, 34, 56), margin = RGB(200, 100, 50);
const char* const formats[] = {"bmp", "gif", "ico", "jpeg", "png", "tiff"};

/// The middles of the picture's quarters at a place on the canvas.
void expectQuarters(const Canvas& canvas, const CRect& place, int tolerance = 2) {
    for (int quarter = 0; quarter < 4; quarter++) {
        const int x = place.left + place.Width() * (quarter % 2 * 2 + 1) / 4;
        const int y = place.top + place.Height() * (quarter / 2 * 2 + 1) / 4;
        EXPECT_TRUE(support::isNear(canvas.at(x, y), support::quarterColours[quarter], tolerance)) << quarter;
    }
}

CDC& dcOf(const Canvas& canvas) {
    return *CDC::FromHandle(canvas.dc());
}

TEST(Image, EveryFormatLoadsByNameAndDrawsItsColours) {
    const support::TempFolder folder;
    for (const std::string format : formats) {
        SCOPED_TRACE(format);
        const std::string path = folder.write("a." + format, support::samplePicture(format));
        CvornImageX image;
        ASSERT_TRUE(image.Load(path.c_str()));
        EXPECT_STREQ(image.GetName(), ("a." + format).c_str());
        EXPECT_STREQ(image.GetPathName(), path.c_str());
        Canvas canvas(120, 60, backdrop);
        const CSize size = image.GetImageSize(&dcOf(canvas));
        EXPECT_EQ(size, CSize(support::sampleWidth, support::sampleHeight));
        image.Render(&dcOf(canvas), FALSE, margin, CRect(0, 0, 80, 60), nullptr);
        expectQuarters(canvas, CRect(0, 10, 80, 50), format == "jpeg" ? 25 : 2);
        EXPECT_EQ(canvas.at(40, 5), margin);
        EXPECT_EQ(canvas.at(40, 55), margin);
        EXPECT_EQ(canvas.at(80, 30), backdrop);
        EXPECT_EQ(image.GetWidth(0) > 0, static_cast<IPicture*>(image) != nullptr);
    }
}

TEST(Image, NamesHoldSpacesAndAccents) {
    char folder[MAX_PATH];
    ::GetTempPathA(MAX_PATH, folder);
    const std::string path = std::string(folder) + "vorn \xE9t\xE9 \xFC b.png";
    ASSERT_TRUE(CvornImageCodec::SaveBits(path.c_str(), CvornImageCodec::FORMAT_PNG,
                                          support::sampleBits(24).data(), support::sampleWidth,
                                          support::sampleHeight, 24));
    CvornImageX image;
    EXPECT_TRUE(image.Load(path.c_str()));
    EXPECT_STREQ(image.GetName(), "vorn \xE9t\xE9 \xFC b.png");
    EXPECT_TRUE(::DeleteFileA(path.c_str()));
}

TEST(Image, HalfTransparentPixelsBlend) {
    const support::TempFolder folder;
    Bytes icon = support::samplePicture("ico");
    for (size_t alpha = 62 + 3; alpha < 62 + 40 * 20 * 4; alpha += 4)
        icon[alpha] = 128;
    CvornImageCodec codec;
    ASSERT_TRUE(codec.Load(folder.write("a.ico", icon).c_str()));
    ASSERT_TRUE(codec.Save(folder.pathOf("a.png").c_str(), CvornImageCodec::FORMAT_PNG));
    for (const char* name : {"a.ico", "a.png"}) {
        CvornImageX image;
        ASSERT_TRUE(image.Load(folder.pathOf(name).c_str())) << name;
        Canvas canvas(40, 20, RGB(0, 0, 200));
        image.Render(&dcOf(canvas), FALSE, margin, CRect(0, 0, 40, 20), nullptr);
        EXPECT_TRUE(support::isNear(canvas.at(10, 5), RGB(128, 0, 100), 2)) << name;
    }
}

class NamedImage : public CvornImageX {
public:
    using CvornImageX::GetFileFromPathName;
    using CvornImageX::m_hrLastQuery;
};

TEST(Image, NameIsWhatFollowsTheLastBackslash) {
    constexpr const char* names[][2] = {{"C:\\pics\\a.bmp", "a.bmp"},
                                        {"a.bmp", "a.bmp"},
                                        {"C:\\pics\\", ""},
                                        {"", ""},
                                        {"C:/pics/a.bmp", "C:/pics/a.bmp"}};
    for (const auto& [path, name] : names)
        EXPECT_STREQ(NamedImage::GetFileFromPathName(path), name);
}

TEST(Image, EverySourceLoads) {
    const Bytes bytes = support::samplePicture("bmp");
    Canvas canvas(40, 20);
    const auto expectPicture = [&](CvornImageX& image) {
        EXPECT_TRUE(image.IsOpen());
        canvas.fill(backdrop);
        image.Render(&dcOf(canvas), FALSE, margin, CRect(0, 0, 40, 20), nullptr);
        expectQuarters(canvas, CRect(0, 0, 40, 20), 0);
    };
    NamedImage image;
    CMemFile file(const_cast<BYTE*>(bytes.data()), static_cast<UINT>(bytes.size()));
    ASSERT_TRUE(image.Load(file));
    expectPicture(image);
    file.SeekToBegin();
    CArchive ar(&file, CArchive::load);
    ASSERT_TRUE(image.Load(ar));
    expectPicture(image);
    file.SeekToBegin();
    CArchive again(&file, CArchive::load);
    CArchiveStream stream(&again);
    ASSERT_TRUE(image.Load(&stream));
    expectPicture(image);
    long cx = 0, cy = 0;
    image.m_hrLastQuery = E_FAIL;
    image.GetHIMETRICSize(cx, cy);
    EXPECT_EQ(image.m_hrLastQuery, S_OK);
    EXPECT_NEAR(static_cast<double>(cx) / cy, 2.0, 0.01);
    EXPECT_FLOAT_EQ(image.GetHeight(0), static_cast<float>(cy));
    EXPECT_FALSE(image.Load(static_cast<IStream*>(nullptr)));
    EXPECT_FALSE(image.IsOpen());
}

TEST(Image, LoadsBitmapResources) {
    // The common controls bring toolbar pictures as bitmap resources.
    constexpr UINT toolbarPictures = 120;
    const HINSTANCE module = ::LoadLibraryA("comctl32.dll");
    HBITMAP expected = ::LoadBitmapA(module, MAKEINTRESOURCEA(toolbarPictures));
    BITMAP bitmap = {};
    ASSERT_NE(::GetObject(expected, sizeof bitmap, &bitmap), 0);
    CvornImageX image;
    EXPECT_TRUE(image.Load(toolbarPictures, module));
    EXPECT_EQ(image.GetImageSize(nullptr), CSize(bitmap.bmWidth, bitmap.bmHeight));
    EXPECT_FALSE(image.Load(54321, module));
    EXPECT_FALSE(image.IsOpen());
    EXPECT_FALSE(image.Load(54321, nullptr));
    ::DeleteObject(expected);
    ::FreeLibrary(module);
}

TEST(Image, PlacesByAlignmentAndProportions) {
    const support::TempFolder folder;
    CvornImageX image;
    Canvas canvas(10, 10);
    CDC& dc = dcOf(canvas);
    EXPECT_EQ(image.GetDrawRect(&dc, CRect(0, 0, 100, 100)), CRect(0, 0, 1, 1)) << "nothing is loaded";
    ASSERT_TRUE(image.Load(folder.write("a.bmp", support::samplePicture("bmp")).c_str()));
    const struct {
        int alignH, alignV, keep;
        CRect rc, placed;
    } cases[] = {
        {0, 0, 1, {0, 0, 100, 100}, {0, 25, 100, 75}},
        {0, 0, 1, {10, 20, 110, 120}, {0, 25, 100, 75}}, // fitted from (0, 0), not from the corner
        {0, 0, 1, {10, 20, 170, 60}, {40, 0, 120, 40}},
        {0, 0, 1, {10, 20, 90, 60}, {10, 20, 90, 60}}, // equal proportions
        {0, 0, 0, {10, 20, 110, 120}, {10, 20, 110, 120}},
        {1, 1, 1, {10, 20, 110, 120}, {10, 20, 50, 40}},
        {2, 0, 1, {10, 20, 110, 120}, {30, 20, 70, 120}},
        {2, 2, 1, {10, 20, 110, 120}, {30, 40, 70, 60}},
        {2, 2, 1, {10, 20, 40, 120}, {10, 20, 50, 40}}, // the vertical centring asks for the width
        {3, 4, 1, {10, 20, 110, 120}, {70, 100, 110, 120}},
        {3, 4, 1, {10, 20, 30, 30}, {10, 20, 50, 40}},
        {0, 4, 1, {10, 20, 110, 120}, {10, 100, 110, 120}},
        {0, 0, 1, {10, 20, 10, 120}, {0, 0, 1, 1}},
        {0, 0, 1, {10, 20, 110, 10}, {0, 0, 1, 1}},
    };
    for (const auto& [alignH, alignV, keep, rc, placed] : cases) {
        image.SetAlignH(alignH);
        image.SetAlignV(alignV);
        image.SetMaintainAspectRatio(keep);
        EXPECT_EQ(image.GetDrawRect(&dc, rc), placed)
            << alignH << alignV << keep << " in " << rc.left << ", " << rc.right;
    }
    EXPECT_EQ(image.GetDrawRect(nullptr, CRect(0, 0, 100, 100)), CRect(0, 0, 1, 1));
}

TEST(Image, RenderFillsTheMarginsAndRender2StaysInTheCorner) {
    const support::TempFolder folder;
    Canvas canvas(120, 120, backdrop);
    CDC& dc = dcOf(canvas);
    CvornImageX image;
    EXPECT_TRUE(image.Render(&dc, FALSE, margin, CRect(0, 0, 50, 50), nullptr));
    EXPECT_EQ(canvas.at(25, 25), backdrop);
    EXPECT_TRUE(image.Render(&dc, TRUE, margin, CRect(0, 0, 50, 50), nullptr));
    EXPECT_EQ(canvas.at(49, 49), margin);
    EXPECT_TRUE(image.Render(nullptr, TRUE, margin, CRect(0, 0, 50, 50), nullptr));
    // The OLE loader draws the one, the codec the other.
    for (const std::string format : {"bmp", "tiff"}) {
        SCOPED_TRACE(format);
        ASSERT_TRUE(image.Load(folder.write("a", support::samplePicture(format)).c_str()));
        image.SetAlignH(2);
        image.SetAlignV(2);
        canvas.fill(backdrop);
        image.Render(&dc, FALSE, margin, CRect(10, 10, 110, 110), nullptr);
        expectQuarters(canvas, CRect(30, 40, 70, 60), 0);
        for (const auto& [x, y] :
             {CPoint(29, 50), CPoint(70, 50), CPoint(50, 39), CPoint(50, 60), CPoint(10, 109)})
            EXPECT_EQ(canvas.at(x, y), margin) << x << ", " << y;
        EXPECT_EQ(canvas.at(9, 50), backdrop);
        EXPECT_EQ(canvas.at(110, 50), backdrop);

        // A codec picture takes the rectangle's size in HIMETRIC units.
        CSize extent(80, 60);
        if (static_cast<IPicture*>(image) == nullptr) dc.DPtoHIMETRIC(&extent);
        canvas.fill(backdrop);
        image.Render2(&dc, 0, 0, CRect(CPoint(10, 10), extent), nullptr);
        expectQuarters(canvas, CRect(10, 10, 90, 50));
        EXPECT_EQ(canvas.at(50, 52), backdrop);
        EXPECT_EQ(canvas.at(92, 30), backdrop);
    }
}

TEST(Image, ClosesOnEveryFailureAndOnAnEmptyName) {
    const support::TempFolder folder;
    const std::string good = folder.write("a.bmp", support::samplePicture("bmp"));
    const std::string bad = folder.write("b.bmp", Bytes{'B', 'M', 0});
    for (const std::string name : {"", "none.bmp", bad.c_str()}) {
        CvornImageX image;
        ASSERT_TRUE(image.Load(good.c_str()));
        EXPECT_EQ(image.Load(name.c_str()), name.empty()) << name;
        EXPECT_FALSE(image.IsOpen()) << name;
        EXPECT_TRUE(image.GetPathName().IsEmpty()) << name;
    }
    CvornImageX image;
    ASSERT_TRUE(image.Load(good.c_str()));
    image.Free();
    EXPECT_FALSE(image.IsOpen());
    EXPECT_STREQ(image.GetPathName(), good.c_str()) << "Free keeps the name";
}

TEST(Image, CopiesShareAndHandlesComeBack) {
    const support::TempFolder folder;
    const std::string names[] = {folder.write("a.bmp", support::samplePicture("bmp")),
                                 folder.write("a.tiff", support::samplePicture("tiff"))};
    Canvas canvas(40, 20);
    const auto useAll = [&] {
        for (const std::string& name : names) {
            auto first = std::make_unique<CvornImageX>();
            EXPECT_TRUE(first->Load(name.c_str()));
            CvornImageX copy(*first), assigned;
            assigned.Load(names[0].c_str());
            assigned = copy;
            assigned = *&assigned;
            first->Close();
            first.reset();
            copy.Free();
            canvas.fill(backdrop);
            assigned.Render(&dcOf(canvas), FALSE, margin, CRect(0, 0, 40, 20), nullptr);
            expectQuarters(canvas, CRect(0, 0, 40, 20), 0);
        }
    };
    useAll();
    const auto before = support::HandleCounts::now();
    for (int i = 0; i < 3; i++)
        useAll();
    EXPECT_EQ(support::HandleCounts::now(), before);
}

/// Bytes of a good file with a value put somewhere.
template <typename T>
Bytes with(const char* format, size_t offset, T value) {
    Bytes bytes = support::samplePicture(format);
    memcpy(&bytes[offset], &value, sizeof value);
    return bytes;
}

TEST(Image, BrokenFilesFail) {
    const support::TempFolder folder;
    const struct {
        const char* what;
        Bytes bytes;
    } cases[] = {
        {"empty", {}},
        {"text", Bytes(100, 'x')},
        {"bmp: pixels beyond the end", with("bmp", 10, 0x7FFFFFFF)},
        {"bmp: pixels in the header", with("bmp", 10, 4)},
        {"bmp: huge header", with("bmp", 14, 0x7FFFFFFF)},
        {"bmp: too wide", with("bmp", 18, 0x10000)},
        {"bmp: size that wraps", with("bmp", 18, 0x7FFFFFFF)},
        {"bmp: height without an absolute value", with("bmp", 22, INT_MIN)},
        {"bmp: no width", with("bmp", 18, 0)},
        {"bmp: odd depth", with<WORD>("bmp", 28, 7)},
        {"bmp: runs of no length", with("bmp", 30, 1)},
        {"bmp: JPEG inside", with("bmp", 30, 4)},
        {"png: huge", with("png", 16, 0xFFFFFF7FU)},
        {"png: no packed data", with<BYTE>("png", 41, 0)},
        {"gif: no frame", with<BYTE>("gif", 25, 0x3B)},
        {"ico: no pictures", with<WORD>("ico", 4, 0)},
        {"ico: more pictures than there are", with<WORD>("ico", 4, 2)},
        {"ico: picture beyond the end", with("ico", 18, 0x7FFFFFFF)},
        {"ico: picture that wraps", with("ico", 14, 0xFFFFFFFF)},
        {"ico: too large for its place", with("ico", 26, 4000)},
        {"jpeg: no size", with<BYTE>("jpeg", 3, 0xD9)},
        {"tiff: directory beyond the end", with("tiff", 4, 0x7FFFFFFF)},
    };
    for (const auto& [what, bytes] : cases) {
        CvornImageX image;
        EXPECT_FALSE(image.Load(folder.write("x", bytes).c_str())) << what;
        EXPECT_FALSE(image.IsOpen()) << what;
    }
    for (const std::string format : formats) {
        const Bytes whole = support::samplePicture(format);
        for (size_t kept :
             {size_t{3}, whole.size() / 20, whole.size() / 4, whole.size() / 2, whole.size() * 3 / 4}) {
            CvornImageX image;
            EXPECT_FALSE(image.Load(folder.write("x", std::span(whole).first(kept)).c_str()))
                << format << " cut at " << kept;
        }
    }
}

TEST(Image, ChangedFilesNeverCrash) {
    const support::TempFolder folder;
    Canvas canvas(64, 64);
    std::mt19937 random(7);
    for (const std::string format : formats) {
        const Bytes whole = support::samplePicture(format);
        int opened = 0;
        for (int i = 0; i < 60; i++) {
            Bytes bytes = whole;
            for (int change = random() % 4; change >= 0; change--) {
                // Mostly in the headers.
                const size_t at =
                    random() % (random() % 2 ? bytes.size() : std::min<size_t>(bytes.size(), 64));
                bytes[at] = static_cast<BYTE>(random() % 3 ? random() : 0xFF);
            }
            CvornImageX image;
            opened += image.Load(folder.write("x", bytes).c_str());
            image.Render(&dcOf(canvas), TRUE, margin, CRect(0, 0, 64, 64), nullptr);
        }
        EXPECT_GT(opened, 0) << format << ": every change was refused, so nothing was tried";
    }
}

} // namespace
