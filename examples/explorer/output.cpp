// SPDX-License-Identifier: MIT
#include "output.h"

#include "explorer_view.h"

#include <cstdint>
#include <stdexcept>

namespace {

/// Notices whether the clipboard was given something: the copy functions do not say.
class ClipboardWatch {
public:
    void expect(UINT format) const {
        if (::GetClipboardSequenceNumber() == m_before || !::IsClipboardFormatAvailable(format))
            throw std::runtime_error("the clipboard does not take the chart");
    }

private:
    DWORD m_before = ::GetClipboardSequenceNumber();
};

void prepare(CvornCopyRender& render, CvornCopyInfo& settings, CExplorerView& view) {
    if (!render.Setup(&settings, &view, nullptr))
        throw std::runtime_error("there is no memory for a picture of that size");
}

void draw(CvornCopyRender& render, CExplorerView& view) {
    if (!view.drawTo(*render.GetDC(), CRect(CPoint(0, 0), render.GetDPSize())))
        throw std::runtime_error("OpenGL cannot draw here");
}

/// @throws std::runtime_error
void openPrinter(CDC& printer, const std::string& name) {
    // NOTE: Wine asks the printing system for its printers no sooner than this library is loaded.
    const HMODULE spooler = ::LoadLibraryA("winspool.drv");
    const bool isOpen = printer.CreateDC("WINSPOOL", name.c_str(), nullptr, nullptr);
    if (spooler != nullptr) ::FreeLibrary(spooler);
    if (!isOpen) throw std::runtime_error("there is no printer " + name);
}

/// The settings, with the size of the command line where it gives one.
CvornCopyInfo settingsFor(const CvornCopyInfo& settings, const Options& options) {
    CvornCopyInfo result = settings;
    if (!options.sized) return result;
    result.bFixedSize = TRUE;
    result.nUnits = CdlgCopySetup::UNITS_PIXELS;
    result.fWidth = static_cast<float>(options.width);
    result.fHeight = static_cast<float>(options.height);
    return result;
}

} // namespace

void copyChart(CExplorerView& view, CvornCopyInfo settings) {
    if (settings.nFormat == CF_METAFILEPICT) return copyChartAsMetafile(view, settings);
    CvornCopyRender render;
    prepare(render, settings, view);
    draw(render, view);
    const ClipboardWatch watch;
    render.Copy();
    watch.expect(CF_BITMAP);
}

void copyChartAsMetafile(CExplorerView& view, CvornCopyInfo settings) {
    settings.nFormat = CF_METAFILEPICT;
    CvornCopyRender render;
    prepare(render, settings, view);
    const ClipboardWatch watch;
    if (!view.drawMetafile(render.GetDPSize())) throw std::runtime_error("OpenGL cannot draw here");
    watch.expect(CF_ENHMETAFILE);
}

void saveChartPicture(CExplorerView& view, CvornCopyInfo settings, const std::string& file) {
    settings.nFormat = CF_BITMAP;
    const CvornImageCodec::Format format = examples::pictureFormatOf(file);
    CvornCopyRender render;
    prepare(render, settings, view);
    draw(render, view);
    // The exports fail silently; a file that was not there before tells.
    const std::string fresh = file + ".part";
    ::DeleteFileA(fresh.c_str());
    if (format == CvornImageCodec::FORMAT_PNG)
        render.ExportPNG(fresh.c_str());
    else if (format == CvornImageCodec::FORMAT_JPEG)
        render.ExportJPEG(fresh.c_str());
    else
        render.ExportBMP(fresh.c_str());
    if (!::MoveFileExA(fresh.c_str(), file.c_str(), MOVEFILE_REPLACE_EXISTING)) {
        ::DeleteFileA(fresh.c_str());
        throw std::runtime_error(file + ": cannot be written");
    }
}

CRect centredOn(CSize page, CSize margin, CSize proportions) {
    std::int64_t width = std::max(page.cx - 2 * margin.cx, 1L);
    std::int64_t height = std::max(page.cy - 2 * margin.cy, 1L);
    if (width * proportions.cy > height * proportions.cx)
        width = height * proportions.cx / proportions.cy;
    else
        height = width * proportions.cy / proportions.cx;
    const CSize size(static_cast<int>(width), static_cast<int>(height));
    return {CPoint((page.cx - size.cx) / 2, (page.cy - size.cy) / 2), size};
}

void printChart(CExplorerView& view, CDC& printer, const CString& title, CSize proportions) {
    const CSize page(printer.GetDeviceCaps(HORZRES), printer.GetDeviceCaps(VERTRES));
    // 1 cm beside what the printer leaves free itself.
    const CSize margin(::MulDiv(printer.GetDeviceCaps(LOGPIXELSX), 100, 254),
                       ::MulDiv(printer.GetDeviceCaps(LOGPIXELSY), 100, 254));
    if (printer.StartDoc(title) <= 0) throw std::runtime_error("the printer takes no document");
    const bool drawn = printer.StartPage() > 0 && view.drawTo(printer, centredOn(page, margin, proportions));
    if (!drawn || printer.EndPage() <= 0) {
        printer.AbortDoc();
        throw std::runtime_error(drawn ? "the printer takes no page" : "the page cannot be drawn");
    }
    if (printer.EndDoc() <= 0) throw std::runtime_error("the printer does not finish the document");
}

void outputChart(CExplorerView& view, const Options& options) {
    const CvornCopyInfo settings = settingsFor(view.copySettings(), options);
    if (!options.printer.empty()) {
        CDC printer;
        openPrinter(printer, options.printer);
        CString title;
        view.GetWindowText(title);
        CRect client;
        view.GetClientRect(client);
        printChart(view, printer, title,
                   options.sized ? CSize(options.width, options.height) : client.Size());
    }
    if (options.copy) copyChart(view, settings);
    if (options.metafile) copyChartAsMetafile(view, settings);
}
