// SPDX-License-Identifier: MIT
#include "bench/harness.h"
#include "bench/picture_files.h"
#include "bench/surface_list.h"
#include "tests/support/canvas.h"
#include "vorn/copy/copy_render.h"
#include "vorn/detail/handles.h"
#include "vorn/view/view_window.h"

#include <cmath>
#include <memory>

namespace {

using vorn::detail::SelectedObject;
using vorn::detail::UniqueBitmap;
using vorn::detail::UniqueMemoryDC;
using vorn::detail::WindowDC;

// ---- printing -----------------------------------------------------------------------------------

constexpr int pageWidth = 2480, pageHeight = 3508;

/// A context for a DIB section, which draws in the section's order of colours.
HGLRC createContext(HDC dc) {
    PIXELFORMATDESCRIPTOR format = {};
    for (int i = 1; ::DescribePixelFormat(dc, i, sizeof format, &format) != 0; i++) {
        constexpr DWORD wanted = PFD_DRAW_TO_BITMAP | PFD_SUPPORT_GDI | PFD_SUPPORT_OPENGL;
        if ((format.dwFlags & wanted) == wanted && format.cColorBits == 32 && format.cRedShift == 16 &&
            format.cDepthBits >= 24 && ::SetPixelFormat(dc, i, &format))
            return ::wglCreateContext(dc);
    }
    return nullptr;
}

class PageView : public CvornOGLWnd {
public:
    PageView() {
        CreateEx(0, AfxRegisterWndClass(0), "", WS_POPUP, CRect(0, 0, 800, 600), nullptr, 0);
        ShowWindow(SW_SHOWNA);
        UpdateWindow();
    }
    /// The picture of PrintScene, with GL and GDI alone.
    void printByHand(HDC target);

protected:
    void OnBuild() override { bench::compileSurface(); }
    void OnOutputToDC(CDC*, int, int) override { glCallList(bench::surfaceList); }

private:
    void drawByHand();
};

void PageView::drawByHand() {
    glViewport(0, 0, pageWidth, pageHeight);
    glMatrixMode(GL_PROJECTION);
    const double fieldOfView = std::atan(1.0 / 7) * 57.29578 / m_fFovScale;
    gluPerspective(fieldOfView * pageHeight / pageWidth, static_cast<double>(pageWidth) / pageHeight, 0.1,
                   100);
    glMatrixMode(GL_MODELVIEW);
    OnSetEffects();
    glTranslated(0, 0, -7);
    m_userRot.GetMatrix()->glMultMatrixf();
    m_lighting.Enable(TRUE);
    m_lighting.Update(nullptr, FALSE, 0);
    bench::compileSurface();
    glClearColor(1, 1, 0, 0);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glCallList(bench::surfaceList);
    glFinish();
}

void PageView::printByHand(HDC target) {
    BITMAPINFO info = {};
    info.bmiHeader = {sizeof info.bmiHeader, pageWidth, pageHeight, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    void* pixels = nullptr;
    const UniqueMemoryDC memory(::CreateCompatibleDC(nullptr));
    const UniqueBitmap section(::CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &pixels, nullptr, 0));
    const SelectedObject selected(memory.get(), section.get());
    const HGLRC context = createContext(memory.get());
    wglMakeCurrent(memory.get(), context);
    drawByHand();
    ::BitBlt(target, 0, 0, pageWidth, pageHeight, memory.get(), 0, 0, SRCCOPY);
    wglMakeCurrent(nullptr, nullptr);
    wglDeleteContext(context);
}

bench::Sides printSides() {
    const auto view = std::make_shared<PageView>();
    const auto page = std::make_shared<support::Canvas>(pageWidth, pageHeight);
    return {[=] { view->PrintScene(CDC::FromHandle(page->dc()), CRect(0, 0, pageWidth, pageHeight), 0); },
            [=] { view->printByHand(page->dc()); }};
}

// ---- the clipboard ------------------------------------------------------------------------------

constexpr int viewWidth = 800, viewHeight = 600;

/// A window, and a picture of it that a view has drawn.
struct CopySource {
    CopySource() {
        window.CreateEx(0, AfxRegisterWndClass(0), "", WS_POPUP, CRect(0, 0, viewWidth, viewHeight), nullptr,
                        0);
    }
    ~CopySource() {
        ::OpenClipboard(nullptr);
        ::EmptyClipboard();
        ::CloseClipboard();
    }
    void drawTo(HDC dc) const { ::BitBlt(dc, 0, 0, viewWidth, viewHeight, picture.dc(), 0, 0, SRCCOPY); }

    CWnd window;
    support::Canvas picture{viewWidth, viewHeight, RGB(20, 120, 220)};
};

void copyWithRender(CopySource& source) {
    CvornCopyRender render;
    render.Setup(CSize(viewWidth, viewHeight), &source.window);
    source.drawTo(render.GetDC()->m_hDC);
    render.Copy();
    render.Destroy(FALSE);
}

void copyByHand(const CopySource& source) {
    const WindowDC window(source.window.m_hWnd);
    UniqueBitmap bitmap(::CreateCompatibleBitmap(window.get(), viewWidth, viewHeight));
    {
        const UniqueMemoryDC memory(::CreateCompatibleDC(window.get()));
        const SelectedObject selected(memory.get(), bitmap.get());
        source.drawTo(memory.get());
    }
    const BITMAPINFOHEADER header = {sizeof header, viewWidth, viewHeight, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    const HGLOBAL block = ::GlobalAlloc(GMEM_MOVEABLE, sizeof header + viewWidth * viewHeight * 4);
    auto* info = static_cast<BITMAPINFO*>(::GlobalLock(block));
    info->bmiHeader = header;
    ::GetDIBits(window.get(), bitmap.get(), 0, viewHeight, info->bmiColors, info, DIB_RGB_COLORS);
    ::GlobalUnlock(block);
    ::OpenClipboard(nullptr);
    ::EmptyClipboard();
    ::SetClipboardData(CF_DIB, block);
    ::SetClipboardData(CF_BITMAP, bitmap.release());
    ::CloseClipboard();
}

bench::Sides copySides() {
    const auto source = std::make_shared<CopySource>();
    return {[=] { copyWithRender(*source); }, [=] { copyByHand(*source); }};
}

// ---- files --------------------------------------------------------------------------------------

/// The renderer with the picture drawn into it, as a view does.
struct PictureSource {
    PictureSource() {
        window.CreateEx(0, AfxRegisterWndClass(0), "", WS_POPUP, CRect(0, 0, 10, 10), nullptr, 0);
        render.Setup(CSize(bench::pictureWidth, bench::pictureHeight), &window);
        BITMAPINFO info = {};
        info.bmiHeader = {
            sizeof info.bmiHeader, bench::pictureWidth, -bench::pictureHeight, 1, 24, BI_RGB, 0, 0, 0, 0, 0};
        ::SetDIBitsToDevice(render.GetDC()->m_hDC, 0, 0, bench::pictureWidth, bench::pictureHeight, 0, 0, 0,
                            bench::pictureHeight, bits.data(), &info, DIB_RGB_COLORS);
    }

    CWnd window;
    std::vector<BYTE> bits = bench::chartPicture();
    CvornCopyRender render;
};

bench::Sides exportSides(void (CvornCopyRender::*save)(const char*), const GUID& container) {
    const auto source = std::make_shared<PictureSource>();
    const auto plain = std::make_shared<bench::PlainEncoder>();
    const auto files = std::make_shared<bench::PictureFiles>();
    return {[=, name = files->ours.string()] { (source->render.*save)(name.c_str()); },
            [=] { plain->save(files->plain.c_str(), container, source->bits); }};
}

const bench::Registration print{
    {"output: PrintScene, 2480 x 3508", "GL into a DIB section and one BitBlt", 1.1, printSides}};
const bench::Registration copy{
    {"output: Copy, 800 x 600", "one GetDIBits and two clipboard calls", 1.2, copySides}};
const bench::Registration png{{"output: ExportPNG, 2048 x 1536", "WIC called directly", 1.05, [] {
                                   return exportSides(&CvornCopyRender::ExportPNG, GUID_ContainerFormatPng);
                               }}};
const bench::Registration jpeg{
    {"output: ExportJPEG, 2048 x 1536", "WIC called directly", 1.05,
     [] { return exportSides(&CvornCopyRender::ExportJPEG, GUID_ContainerFormatJpeg); }}};
const bench::Registration bmp{{"output: ExportBMP, 2048 x 1536", "WIC called directly", 1.05, [] {
                                   return exportSides(&CvornCopyRender::ExportBMP, GUID_ContainerFormatBmp);
                               }}};

} // namespace
