// SPDX-License-Identifier: MIT
#include "vorn/copy/copy_render.h"

#include "tests/support/canvas.h"
#include "tests/support/handle_counts.h"
#include "tests/support/temp_folder.h"
#include "vorn/bitmaps/image_codec.h"
#include "vorn/copy/copy_info.h"

#include <gtest/gtest.h>

namespace {

constexpr int width = 61;
constexpr int height = 40;

// Not symmetric, and a width that rows must be padded for.
COLORREF colourAt(int x, int y) {
    if (x < 20) return y < 10 ? RGB(255, 0, 0) : RGB(0, 0, 255);
    return y < 30 ? RGB(0, 128, 0) : RGB(250, 240, 30);
}

void paint(HDC dc) {
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            ::SetPixelV(dc, x, y, colourAt(x, y));
}

/// How far a picture is from the painted one, as differences of channels.
struct Distance {
    int largest = 0;
    double mean = 0;
};
Distance distances(const std::function<void(HDC)>& draw) {
    const support::Canvas canvas(width, height, RGB(1, 2, 3));
    draw(canvas.dc());
    ::GdiFlush();
    Distance result;
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            const COLORREF a = canvas.at(x, y);
            const COLORREF b = colourAt(x, y);
            for (const int shift : {0, 8, 16}) {
                const int difference = abs(int(a >> shift & 255) - int(b >> shift & 255));
                result.largest = std::max(result.largest, difference);
                result.mean += difference / (3.0 * width * height);
            }
        }
    return result;
}

int distance(const std::function<void(HDC)>& draw) {
    return distances(draw).largest;
}

Distance distanceOfFile(const std::string& path) {
    CvornImageCodec image;
    if (!image.Load(path.c_str()) || image.GetWidth() != width || image.GetHeight() != height)
        return {999, 999};
    return distances([&](HDC dc) { image.Draw(dc, 0, 0, width, height); });
}

int distanceOfBitmap(HBITMAP bitmap) {
    return distance([&](HDC dc) {
        const HDC memory = ::CreateCompatibleDC(dc);
        const HGDIOBJ old = ::SelectObject(memory, bitmap);
        ::BitBlt(dc, 0, 0, width, height, memory, 0, 0, SRCCOPY);
        ::SelectObject(memory, old);
        ::DeleteDC(memory);
    });
}

int distanceOfPackedDib(HGLOBAL block) {
    auto* info = static_cast<BITMAPINFO*>(::GlobalLock(block));
    if (info == nullptr || info->bmiHeader.biWidth != width || info->bmiHeader.biHeight != height) return 999;
    const BYTE* bits = reinterpret_cast<BYTE*>(info) + info->bmiHeader.biSize;
    const int result = distance([&](HDC dc) {
        ::StretchDIBits(dc, 0, 0, width, height, 0, 0, width, height, bits, info, DIB_RGB_COLORS, SRCCOPY);
    });
    ::GlobalUnlock(block);
    return result;
}

class CopyRender : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(m_window.CreateEx(0, AfxRegisterWndClass(0), "copy", WS_POPUP, CRect(0, 0, width, height),
                                      nullptr, 0));
    }
    void TearDown() override { m_window.DestroyWindow(); }

    CWnd m_window;
    CvornCopyInfo m_info;
};

/// Reaches the protected conversion.
class OpenRender : public CvornCopyRender {
public:
    using CvornCopyRender::dibFromBitmap;
};

} // namespace

TEST_F(CopyRender, FilesHoldThePicture) {
    const support::TempFolder folder;
    CvornCopyRender render;
    ASSERT_TRUE(render.Setup(&m_info, &m_window, nullptr));
    EXPECT_EQ(render.GetDPSize(), CSize(width, height));
    paint(render.GetDC()->m_hDC);
    render.ExportBMP(folder.pathOf("a.bmp").c_str());
    render.ExportPNG(folder.pathOf("a.png").c_str());
    render.ExportJPEG(folder.pathOf("a.jpg").c_str());
    EXPECT_EQ(distanceOfFile(folder.pathOf("a.bmp")).largest, 0);
    EXPECT_EQ(distanceOfFile(folder.pathOf("a.png")).largest, 0);
    EXPECT_LE(distanceOfFile(folder.pathOf("a.jpg")).mean, 6);
    DWORD size = 0;
    BYTE* buffer = render.ExportJPEGBuffer(size);
    ASSERT_NE(buffer, nullptr);
    CvornImageCodec decoded;
    EXPECT_EQ(memcmp(buffer, "\x89PNG\r\n\x1a\n", 8), 0);
    EXPECT_TRUE(decoded.Load(buffer, size));
    EXPECT_EQ(distance([&](HDC dc) { decoded.Draw(dc, 0, 0, width, height); }), 0);
    free(buffer);

    // A folder that is not there: nothing happens, and nothing appears.
    render.ExportPNG(folder.pathOf("none\\a.png").c_str());
    render.ExportPNG(nullptr);
    EXPECT_EQ(::GetFileAttributesA(folder.pathOf("none").c_str()), INVALID_FILE_ATTRIBUTES);
    render.Destroy(TRUE);
    EXPECT_EQ(render.GetSafeHandle(), nullptr);
}

TEST_F(CopyRender, BorderRunsRoundThePicture) {
    const support::TempFolder folder;
    m_info.bBorder = TRUE;
    CvornCopyRender render;
    ASSERT_TRUE(render.Setup(&m_info, &m_window, nullptr));
    paint(render.GetDC()->m_hDC);
    // What the view leaves selected must not colour the border.
    CPen red(PS_SOLID, 3, RGB(255, 0, 0));
    render.GetDC()->SelectObject(&red);
    render.ExportBMP(folder.pathOf("b.bmp").c_str());
    CvornImageCodec image;
    ASSERT_TRUE(image.Load(folder.pathOf("b.bmp").c_str()));
    const support::Canvas canvas(width, height);
    image.Draw(canvas.dc(), 0, 0, width, height);
    ::GdiFlush();
    // The size in 0.1 mm is truncated, so the far sides may lie a few pixels inside.
    const CSize size = render.GetBitmapDimension();
    CSize corner(size.cx * 10, size.cy * 10);
    render.GetDC()->HIMETRICtoLP(&corner);
    EXPECT_GE(corner.cx, width - 4);
    for (const CPoint& p :
         {CPoint(0, 0), CPoint(30, 0), CPoint(0, 20), CPoint(corner.cx - 1, 5), CPoint(5, corner.cy - 1)})
        EXPECT_EQ(canvas.at(p.x, p.y), RGB(0, 0, 0)) << p.x << ", " << p.y;
    EXPECT_EQ(canvas.at(1, 1), colourAt(1, 1));
    EXPECT_EQ(canvas.at(corner.cx - 2, corner.cy - 2), colourAt(corner.cx - 2, corner.cy - 2));
}

TEST_F(CopyRender, ClipboardHoldsThePictureAndOwnsIt) {
    CvornCopyRender render;
    ASSERT_TRUE(render.Setup(&m_info, &m_window, nullptr));
    paint(render.GetDC()->m_hDC);
    const HGDIOBJ given = render.GetSafeHandle();
    for (int round = 0; round < 2; ++round) {
        render.Copy();
        ASSERT_TRUE(::OpenClipboard(nullptr));
        const auto bitmap = static_cast<HBITMAP>(::GetClipboardData(CF_BITMAP));
        ASSERT_NE(bitmap, nullptr);
        EXPECT_TRUE(round > 0 || bitmap == given);
        EXPECT_EQ(distanceOfBitmap(bitmap), 0);
        EXPECT_EQ(distanceOfPackedDib(::GetClipboardData(CF_DIB)), 0);
        ::CloseClipboard();
    }
    // Another program takes the clipboard over; the renderer still has its picture.
    ::OpenClipboard(nullptr);
    ::EmptyClipboard();
    ::CloseClipboard();
    EXPECT_EQ(
        distance([&](HDC dc) { ::BitBlt(dc, 0, 0, width, height, render.GetDC()->m_hDC, 0, 0, SRCCOPY); }),
        0);

    render.Copy();
    render.Destroy(FALSE);
    ::OpenClipboard(nullptr);
    EXPECT_EQ(distanceOfBitmap(static_cast<HBITMAP>(::GetClipboardData(CF_BITMAP))), 0);
    ::EmptyClipboard();
    ::CloseClipboard();
}

TEST_F(CopyRender, AnOccupiedClipboardStaysAsItWas) {
    CvornCopyRender render;
    ASSERT_TRUE(render.Setup(&m_info, &m_window, nullptr));
    const HGDIOBJ own = render.GetSafeHandle();
    ASSERT_TRUE(::OpenClipboard(nullptr));
    ::EmptyClipboard();
    ::CloseClipboard();
    ASSERT_TRUE(::OpenClipboard(m_window.m_hWnd));
    render.Copy();
    ::CloseClipboard();
    EXPECT_EQ(::CountClipboardFormats(), 0);
    EXPECT_EQ(render.GetSafeHandle(), own);
}

TEST_F(CopyRender, SetUpCases) {
    CvornCopyRender render;
    EXPECT_FALSE(render.Setup(nullptr, &m_window, nullptr));
    EXPECT_FALSE(render.Setup(&m_info, nullptr, nullptr));
    CWnd notCreated;
    EXPECT_FALSE(render.Setup(&m_info, &notCreated, nullptr));

    m_info.nFormat = CF_METAFILEPICT;
    EXPECT_TRUE(render.Setup(&m_info, &m_window, nullptr));
    EXPECT_EQ(render.GetDPSize(), CSize(width, height));
    EXPECT_EQ(render.GetDC()->m_hDC, nullptr);
    EXPECT_EQ(render.GetSafeHandle(), nullptr);
    m_info.nFormat = CF_BITMAP;

    m_window.SetWindowPos(nullptr, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOZORDER);
    EXPECT_FALSE(render.Setup(&m_info, &m_window, nullptr));
    m_window.SetWindowPos(nullptr, 0, 0, width, height, SWP_NOMOVE | SWP_NOZORDER);

    // A caller's bitmap is drawn into, and stays the caller's.
    CBitmap callers;
    ASSERT_TRUE(render.Setup(&m_info, &m_window, &callers));
    paint(render.GetDC()->m_hDC);
    render.Copy();
    EXPECT_EQ(render.GetSafeHandle(), nullptr);
    render.Destroy(TRUE);
    EXPECT_EQ(distanceOfBitmap(static_cast<HBITMAP>(callers.GetSafeHandle())), 0);

    ASSERT_TRUE(render.Setup(CSize(100, 50), nullptr));
    BITMAP bitmap = {};
    ::GetObjectA(render.GetSafeHandle(), sizeof bitmap, &bitmap);
    EXPECT_EQ(bitmap.bmBitsPixel, 1);
    EXPECT_EQ(CSize(bitmap.bmWidth, bitmap.bmHeight), CSize(100, 50));
    render.Destroy(TRUE);
    EXPECT_FALSE(render.Setup(CSize(1 << 20, 1 << 20), &m_window)) << "no such bitmap fits";
    render.Destroy(TRUE);
}

TEST_F(CopyRender, PackedDibsOfEveryDepth) {
    for (const int bits : {1, 4, 8, 24, 32}) {
        SCOPED_TRACE(bits);
        struct {
            BITMAPINFOHEADER header;
            RGBQUAD table[256];
        } info = {};
        info.header = {sizeof(BITMAPINFOHEADER), 21, 9, 1, static_cast<WORD>(bits), BI_RGB, 0, 0, 0, 0, 0};
        for (int i = 0; i < 256; ++i)
            info.table[i] = {static_cast<BYTE>(i), static_cast<BYTE>(255 - i), 7, 0};
        void* pixels = nullptr;
        const HBITMAP bitmap = ::CreateDIBSection(nullptr, reinterpret_cast<BITMAPINFO*>(&info),
                                                  DIB_RGB_COLORS, &pixels, nullptr, 0);
        ASSERT_NE(bitmap, nullptr);
        const size_t size = (21U * bits + 31) / 32 * 4 * 9;
        for (size_t i = 0; i < size; ++i)
            static_cast<BYTE*>(pixels)[i] = static_cast<BYTE>(i * 37);
        OpenRender render;
        const HGLOBAL dib = render.dibFromBitmap(bitmap, BI_RGB, 0, nullptr);
        ASSERT_NE(dib, nullptr);
        const size_t table = bits <= 8 ? (size_t{1} << bits) * 4 : 0;
        EXPECT_GE(::GlobalSize(dib), sizeof(BITMAPINFOHEADER) + table + size);
        const BYTE* block = static_cast<BYTE*>(::GlobalLock(dib));
        // Rows agree up to the padding, which is nobody's.
        for (int row = 0; row < 9; ++row) {
            const size_t offset = size / 9 * row;
            EXPECT_EQ(memcmp(block + 40 + table + offset, static_cast<BYTE*>(pixels) + offset, 21 * bits / 8),
                      0);
        }
        ::GlobalUnlock(dib);
        ::GlobalFree(dib);
        ::DeleteObject(bitmap);
    }
}

TEST_F(CopyRender, AHundredOutputsLeaveNothingBehind) {
    const support::TempFolder folder;
    const auto output = [&] {
        CvornCopyRender render;
        if (!render.Setup(&m_info, &m_window, nullptr)) return;
        render.Copy();
        render.ExportBMP(folder.pathOf("c.bmp").c_str());
        render.Destroy(FALSE);
    };
    output();
    const auto before = support::HandleCounts::now();
    for (int i = 0; i < 100; ++i)
        output();
    EXPECT_EQ(support::HandleCounts::now(), before);
    ::OpenClipboard(nullptr);
    ::EmptyClipboard();
    ::CloseClipboard();
}
