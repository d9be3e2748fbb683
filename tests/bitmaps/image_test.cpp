// SPDX-License-Identifier: MIT
#include "tests/bitmaps/bitmap_test.h"
#include "tests/bitmaps/sample_pictures.h"
#include "vorn/bitmaps/image.h"

#include <afxpriv.h>
#include <random>

namespace {

using Bytes = std::vector<BYTE>;

constexpr COLORREF margin = RGB(200, 100, 50);
const std::string formats[] = {"bmp", "gif", "ico", "jpeg", "png", "tiff"};

struct NamedImage : CvornImageX {
    using CvornImageX::GetFileFromPathName;
};

class Image : public BitmapTest {
protected:
    void render(const CvornImageX& image, const CRect& rc, BOOL fill = FALSE) {
        m_canvas.fill(backdrop);
        EXPECT_TRUE(image.Render(&m_dc, fill, margin, rc, nullptr));
    }
    /// The middles of the picture's quarters, and what lies beside its right and lower edges.
    void expectRendered(const char* what, const CRect& picture, COLORREF beside, int tolerance = 1) {
        for (int i = 0; i < 4; i++) {
            const int x = picture.left + picture.Width() * (i % 2 * 2 + 1) / 4;
            const int y = picture.top + picture.Height() * (i / 2 * 2 + 1) / 4;
            expectPixels(what, {{x, y, support::quarterColours[i]}}, tolerance);
        }
        expectPixels(what,
                     {{picture.right, picture.top, beside}, {picture.right - 1, picture.bottom, beside}});
    }
    std::string write(const std::string& format) {
        return m_folder.write("a." + format, support::samplePicture(format));
    }

    NamedImage m_image;
};

TEST_F(Image, EveryFormatLoadsByNameAndDrawsItsColours) {
    for (const std::string& format : formats) {
        const std::string path = write(format);
        ASSERT_TRUE(m_image.Load(path.c_str())) << format;
        EXPECT_STREQ(m_image.GetPathName(), path.c_str());
        EXPECT_EQ(m_image.GetImageSize(&m_dc), CSize(support::sampleWidth, support::sampleHeight));
        EXPECT_EQ(m_image.GetWidth(0) > 0, static_cast<IPicture*>(m_image) != nullptr);
        render(m_image, CRect(10, 2, 110, 112));
        expectRendered(format.c_str(), CRect(0, 30, 100, 80), margin, format == "jpeg" ? 25 : 1);
        expectPixels("margins",
                     {{10, 29, margin}, {109, 111, margin}, {110, 50, backdrop}, {50, 112, backdrop}});
    }
}

TEST_F(Image, NamesHoldSpacesAndAccentsAndEndBehindTheLastBackslash) {
    char path[MAX_PATH + 30];
    ::GetTempPathA(MAX_PATH, path);
    strcat(path, "vorn \xE9t\xE9 \xFC b.png");
    ASSERT_TRUE(CvornImageCodec::SaveBits(path, 4, support::sampleBits().data(), 40, 20, 32));
    EXPECT_TRUE(m_image.Load(path));
    EXPECT_STREQ(m_image.GetName(), "vorn \xE9t\xE9 \xFC b.png");
    EXPECT_TRUE(::DeleteFileA(path));
    for (const auto& [whole, name] : {std::pair("C:\\b\\a.bmp", "a.bmp"),
                                      {"a.bmp", "a.bmp"},
                                      {"C:\\b\\", ""},
                                      {"", ""},
                                      {"C:/a", "C:/a"}})
        EXPECT_STREQ(NamedImage::GetFileFromPathName(whole), name);
}

TEST_F(Image, EverySourceLoads) {
    Bytes bytes = support::samplePicture("bmp");
    CMemFile file(bytes.data(), static_cast<UINT>(bytes.size()));
    for (int source = 0; source < 3; source++) {
        file.SeekToBegin();
        CArchive ar(&file, CArchive::load);
        CArchiveStream stream(&ar);
        EXPECT_TRUE(source == 0   ? m_image.Load(file)
                    : source == 1 ? m_image.Load(ar)
                                  : m_image.Load(&stream));
        render(m_image, CRect(5, 5, 45, 25));
        expectRendered("source", CRect(5, 5, 45, 25), backdrop);
    }
    EXPECT_EQ(m_image.GetHeight(0), 529.0F) << "in HIMETRIC units";
    EXPECT_FALSE(m_image.Load(static_cast<IStream*>(nullptr)) || m_image.IsOpen());

    // The common controls bring toolbar pictures as bitmap resources.
    const HINSTANCE module = ::LoadLibraryA("comctl32.dll");
    CBitmap expected;
    BITMAP bitmap = {};
    EXPECT_TRUE(expected.Attach(::LoadBitmapA(module, MAKEINTRESOURCEA(120))) && expected.GetBitmap(&bitmap));
    EXPECT_TRUE(m_image.Load(120, module));
    EXPECT_EQ(m_image.GetImageSize(nullptr), CSize(bitmap.bmWidth, bitmap.bmHeight));
    EXPECT_FALSE(m_image.Load(54321, module) || m_image.Load(54321, nullptr) || m_image.IsOpen());
    ::FreeLibrary(module);
}

TEST_F(Image, PlacesByAlignmentAndProportions) {
    EXPECT_EQ(m_image.GetDrawRect(&m_dc, CRect(0, 0, 100, 100)), CRect(0, 0, 1, 1)) << "nothing is loaded";
    ASSERT_TRUE(m_image.Load(write("bmp").c_str()));
    // Fitted pictures are measured from (0, 0), not from the corner; vertical centring asks for the width.
    const struct {
        int alignH, alignV, keep;
        CRect rc, placed;
    } cases[] = {
        {0, 0, 1, {0, 0, 100, 100}, {0, 25, 100, 75}},    {0, 0, 1, {10, 20, 110, 120}, {0, 25, 100, 75}},
        {0, 0, 1, {10, 20, 170, 60}, {40, 0, 120, 40}},   {0, 0, 1, {10, 20, 90, 60}, {10, 20, 90, 60}},
        {0, 0, 0, {9, 20, 109, 120}, {9, 20, 109, 120}},  {1, 1, 1, {10, 20, 110, 120}, {10, 20, 50, 40}},
        {2, 0, 1, {10, 20, 110, 120}, {30, 20, 70, 120}}, {2, 2, 1, {10, 20, 110, 120}, {30, 40, 70, 60}},
        {2, 2, 1, {10, 20, 40, 120}, {10, 20, 50, 40}},   {3, 4, 1, {10, 20, 110, 120}, {70, 100, 110, 120}},
        {3, 4, 1, {10, 20, 30, 30}, {10, 20, 50, 40}},    {0, 4, 1, {10, 20, 110, 120}, {10, 100, 110, 120}},
        {0, 0, 1, {10, 20, 10, 120}, {0, 0, 1, 1}},       {0, 0, 1, {10, 20, 110, 10}, {0, 0, 1, 1}}};
    for (const auto& [alignH, alignV, keep, rc, placed] : cases) {
        m_image.SetAlignH(alignH);
        m_image.SetAlignV(alignV);
        m_image.SetMaintainAspectRatio(keep);
        EXPECT_EQ(m_image.GetDrawRect(&m_dc, rc), placed) << alignH << alignV << keep << " in " << rc.right;
    }
    EXPECT_EQ(m_image.GetDrawRect(nullptr, CRect(0, 0, 100, 100)), CRect(0, 0, 1, 1));
}

TEST_F(Image, RenderFillsTheMarginsAndRender2StaysInTheCorner) {
    for (BOOL fill : {FALSE, TRUE}) {
        render(m_image, CRect(0, 0, 50, 50), fill);
        EXPECT_EQ(m_canvas.at(49, 49), fill ? margin : backdrop) << "nothing is open";
    }
    // The OLE loader draws the one, the codec the other, which takes Render2's sizes in HIMETRIC units.
    for (const char* format : {"bmp", "tiff"}) {
        ASSERT_TRUE(m_image.Load(write(format).c_str())) << format;
        m_image.SetAlignH(2);
        m_image.SetAlignV(2);
        render(m_image, CRect(10, 10, 110, 110));
        expectRendered(format, CRect(30, 40, 70, 60), margin);
        expectPixels("margins", {{29, 50, margin}, {50, 39, margin}, {9, 50, backdrop}, {110, 50, backdrop}});
        CSize extent(80, 60);
        if (static_cast<IPicture*>(m_image) == nullptr) m_dc.DPtoHIMETRIC(&extent);
        m_canvas.fill(backdrop);
        m_image.Render2(&m_dc, 0, 0, CRect(CPoint(10, 10), extent), nullptr);
        expectRendered(format, CRect(10, 10, 90, 50), backdrop);
    }
}

TEST_F(Image, HalfTransparentPixelsBlend) {
    Bytes icon = support::sampleIcon();
    for (size_t alpha = support::iconPixels + 3; alpha < support::iconMask; alpha += 4)
        icon[alpha] = 128;
    CvornImageCodec codec;
    ASSERT_TRUE(codec.Load(m_folder.write("a.ico", icon).c_str()));
    ASSERT_TRUE(codec.Save(m_folder.pathOf("a.png").c_str(), CvornImageCodec::FORMAT_PNG));
    for (const char* name : {"a.ico", "a.png"}) {
        ASSERT_TRUE(m_image.Load(m_folder.pathOf(name).c_str())) << name;
        render(m_image, CRect(0, 0, 40, 20));
        expectPixels(name, {{10, 5, RGB(134, 17, 28)}}, 2);
    }
}

TEST_F(Image, CopiesShareAndHandlesComeBack) {
    const std::string names[] = {write("bmp"), write("tiff")};
    expectHandlesKept([&] {
        for (const std::string& name : names) {
            CvornImageX assigned, first;
            EXPECT_TRUE(first.Load(name.c_str()) && assigned.Load(names[0].c_str()));
            assigned = CvornImageX(first);
            assigned = *&assigned;
            first.Close();
            render(assigned, CRect(5, 5, 45, 25));
            expectRendered("copy", CRect(5, 5, 45, 25), backdrop);
        }
    });
}

TEST_F(Image, BrokenFilesFailAndLeaveNothingOpen) {
    // A value of so many bytes put somewhere into a good file: sizes and offsets beyond the file, sizes that
    // wrap, a depth that does not exist, no frame, no packed data.
    constexpr struct {
        const char* format;
        int offset, bytes;
        uint32_t value;
    } changes[] = {{"bmp", 10, 4, 0x7FFFFFFF}, {"bmp", 10, 4, 4},          {"bmp", 14, 4, 0x7FFFFFFF},
                   {"bmp", 18, 4, 0x10000},    {"bmp", 18, 4, 0x7FFFFFFF}, {"bmp", 18, 4, 0},
                   {"bmp", 22, 4, 0x80000000}, {"bmp", 28, 2, 7},          {"bmp", 30, 4, 1},
                   {"bmp", 30, 4, 4},          {"png", 16, 4, 0xFFFFFF7F}, {"png", 41, 1, 0},
                   {"gif", 25, 1, 0x3B},       {"ico", 4, 2, 0},           {"ico", 4, 2, 2},
                   {"ico", 18, 4, 0x7FFFFFFF}, {"ico", 14, 4, 0xFFFFFFFF}, {"ico", 26, 4, 4000},
                   {"jpeg", 3, 1, 0xD9},       {"tiff", 4, 4, 0x7FFFFFFF}};
    std::vector<std::pair<std::string, Bytes>> cases = {{"empty", {}}, {"text", Bytes(100, 'x')}};
    for (const auto& [format, offset, bytes, value] : changes) {
        Bytes changed = support::samplePicture(format);
        memcpy(&changed[offset], &value, bytes);
        cases.emplace_back(format + (" at " + std::to_string(offset)), changed);
    }
    for (const std::string& format : formats) {
        const Bytes whole = support::samplePicture(format);
        for (size_t kept : {size_t{3}, whole.size() / 20, whole.size() / 4, whole.size() * 3 / 4})
            cases.emplace_back(format + " cut off", Bytes(whole.begin(), whole.begin() + kept));
    }
    const std::string good = write("bmp");
    for (const auto& [what, bytes] : cases) {
        ASSERT_TRUE(m_image.Load(good.c_str()));
        EXPECT_FALSE(m_image.Load(m_folder.write("x", bytes).c_str()) || m_image.IsOpen()) << what;
    }
    ASSERT_TRUE(m_image.Load(good.c_str()) && m_image.Load(""));
    EXPECT_FALSE(m_image.IsOpen() || !m_image.GetPathName().IsEmpty() || m_image.Load("none.bmp"));
}

TEST_F(Image, ChangedFilesNeverCrash) {
    std::mt19937 random(7);
    for (const std::string& format : formats) {
        const Bytes whole = support::samplePicture(format);
        int opened = 0;
        for (int i = 0; i < 60; i++) {
            Bytes bytes = whole;
            for (int change = random() % 4; change >= 0; change--)
                bytes[random() % (random() % 2 ? bytes.size() : 60)] =
                    static_cast<BYTE>(random() % 3 ? random() : 255);
            opened += m_image.Load(m_folder.write("x", bytes).c_str());
            render(m_image, CRect(0, 0, 64, 64), TRUE);
        }
        EXPECT_GT(opened, 0) << format << ": every change was refused, so nothing was tried";
    }
}

} // namespace
