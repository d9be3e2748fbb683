// SPDX-License-Identifier: MIT
#include "chart_app.h"

#include "report.h"

#include <algorithm>
#include <cstdlib>
#include <exception>
#include <stdexcept>
#include <utility>

namespace examples {

CChartApp::CChartApp(std::string name, std::string help, std::vector<std::string> options)
    : m_name(std::move(name)), m_help(std::move(help)), m_options(std::move(options)) {}

BOOL CChartApp::InitInstance() {
    bool boxAllowed = true;
    try {
        const CommandLine line = CommandLine::parse({__argv + 1, __argv + __argc}, m_options);
        boxAllowed = line.exportFile.empty();
        if (line.help)
            printText(m_name + " [FILE] [--export PICTURE] [--size WxH]\n\n" + m_help);
        else
            run(line);
    } catch (const OptionsError& error) {
        reportError(m_name, error.what(), boxAllowed);
        m_status = 2;
    } catch (const std::exception& error) {
        reportError(m_name, error.what(), boxAllowed);
        m_status = 1;
    }
    return m_pMainWnd != nullptr;
}

void CChartApp::run(const CommandLine& line) {
    m_view = makeView(line);
    if (!line.exportFile.empty()) {
        exportPicture(*m_view, line.exportFile, line.size);
        return;
    }
    createWindow(line.size);
    m_pMainWnd = m_view.get();
    m_view->ShowWindow(m_nCmdShow);
}

void CChartApp::createWindow(CSize size) {
    const CString windowClass = ::AfxRegisterWndClass(CS_HREDRAW | CS_VREDRAW | CS_OWNDC,
                                                      ::LoadCursorA(nullptr, IDC_ARROW), nullptr, nullptr);
    CRect frame(CPoint(0, 0), size);
    ::AdjustWindowRect(&frame, WS_OVERLAPPEDWINDOW, FALSE);
    if (!m_view->CreateEx(0, windowClass, m_name.c_str(), WS_OVERLAPPEDWINDOW, CW_USEDEFAULT, CW_USEDEFAULT,
                          frame.Width(), frame.Height(), nullptr, nullptr))
        throw std::runtime_error("OpenGL has no window here");
}

int CChartApp::ExitInstance() {
    m_view.reset();
    const int result = CWinApp::ExitInstance();
    return m_status != 0 ? m_status : result;
}

void exportPicture(CvornOGLWnd& view, const std::string& file, CSize size) {
    CvornDIBSurface picture;
    if (!picture.Create(size.cx, size.cy, static_cast<HPALETTE>(nullptr)))
        throw std::runtime_error("there is no memory for a picture of that size");
    view.PrintScene(picture.GetDC(), CRect(CPoint(0, 0), size), 0);
    ::GdiFlush();
    // A paint cycle without a context leaves the picture black; no chart has a black background.
    const auto* bits = static_cast<const BYTE*>(picture.GetBitsAddress());
    if (bits[0] == 0 && bits[1] == 0 && bits[2] == 0) throw std::runtime_error("OpenGL cannot draw here");
    if (!CvornImageCodec::SaveBits(file.c_str(), pictureFormatOf(file), bits, size.cx, size.cy, 24))
        throw std::runtime_error(file + ": cannot be written");
}

std::string_view embeddedText(int resource) {
    const HRSRC found = ::FindResourceA(nullptr, MAKEINTRESOURCEA(resource), MAKEINTRESOURCEA(10)); // RCDATA
    const HGLOBAL loaded = ::LoadResource(nullptr, found);
    const auto* text = static_cast<const char*>(::LockResource(loaded));
    return text == nullptr ? std::string_view() : std::string_view(text, ::SizeofResource(nullptr, found));
}

} // namespace examples
