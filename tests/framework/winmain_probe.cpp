// SPDX-License-Identifier: MIT
// A program without a main function: what it does is in its command line, how it went in its exit status.

#include <afxwin.h>

#include <cstdlib>
#include <cstring>

namespace {

class ProbeApp : public CWinApp {
public:
    BOOL InitInstance() override {
        if (std::strcmp(m_pszExeName, "winmain_probe") != 0 || AfxGetApp() != this) return FALSE;
        if (std::strncmp(m_lpCmdLine, "quit ", 5) == 0) {
            AfxPostQuitMessage(std::atoi(m_lpCmdLine + 5));
        } else if (std::strcmp(m_lpCmdLine, "close") == 0) {
            m_pMainWnd = &m_window;
            if (!m_window.CreateEx(0, AfxRegisterWndClass(0), "probe", WS_POPUP, 0, 0, 10, 10, nullptr,
                                   nullptr))
                return FALSE;
            m_window.PostMessage(WM_CLOSE);
        } else if (std::strcmp(m_lpCmdLine, "no window") != 0) {
            return FALSE;
        }
        return TRUE;
    }
    int ExitInstance() override {
        const int status = CWinApp::ExitInstance();
        return AfxGetCurrentMessage()->message == WM_QUIT ? status + 10 : 99;
    }

private:
    CWnd m_window;
} theApp;

} // namespace
