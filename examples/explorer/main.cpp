// SPDX-License-Identifier: MIT
#include "chart_file.h"
#include "explorer_view.h"
#include "export.h"
#include "options.h"
#include "output.h"

#include "common/report.h"

#include <cstdlib>
#include <exception>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>

namespace {

/// The application: reads the command line and the file, then shows a window or writes a picture.
class CExplorerApp : public CWinApp {
public:
    BOOL InitInstance() override;
    int ExitInstance() override;

private:
    enum ExitStatus { done = 0, failed = 1, misused = 2 };

    bool start(const Options& options);

    std::unique_ptr<CExplorerView> m_view;
    int m_status = done;
};

CExplorerApp theApp;

/// The title names the file first, as a narrow taskbar shows only the beginning.
CString titleOf(const std::string& file) {
    std::size_t slash = file.find_last_of("\\/:");
    return ((slash == std::string::npos ? file : file.substr(slash + 1)) + " - explorer").c_str();
}

BOOL CExplorerApp::InitInstance() {
    SetRegistryKey("Vorn");
    try {
        Options options = parseOptions(__argc - 1, __argv + 1);
        if (options.help) {
            examples::printText(usageText());
            return FALSE;
        }
        return start(options);
    } catch (const OptionsError& error) {
        examples::reportError("explorer", error.what(), true);
        m_status = misused;
        return FALSE;
    }
}

/// True when there is a window to run.
bool CExplorerApp::start(const Options& options) {
    try {
        examples::Grid grid = examples::readGrid(options.file);
        if (!options.exportFile.empty()) {
            exportPicture(options.needsWindow() ? grid : std::move(grid), options);
            if (!options.needsWindow()) return false;
        }
        m_view = std::make_unique<CExplorerView>(std::move(grid), options);
        loadChart(m_view->axes(), options);
        saveChart(m_view->axes(), options);
        m_view->loadCopySettings();
        m_view->lookFrom(options.viewPoint);
        if (!m_view->createWindow(titleOf(options.file)))
            throw std::runtime_error("OpenGL has no window here");
        if (options.needsWindow()) {
            outputChart(*m_view, options);
            return false;
        }
        m_pMainWnd = m_view.get();
        m_view->ShowWindow(m_nCmdShow);
        m_view->UpdateWindow();
        return true;
    } catch (const std::exception& error) {
        examples::reportError("explorer", error.what(), !options.isOutput());
        m_status = failed;
    }
    return false;
}

int CExplorerApp::ExitInstance() {
    m_view.reset();
    int result = CWinApp::ExitInstance();
    return m_status != done ? m_status : result;
}

} // namespace
