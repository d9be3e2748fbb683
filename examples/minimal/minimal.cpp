// SPDX-License-Identifier: MIT
// A window with the default chart view: a cube that turns under the mouse. Derive from CvornOGLWnd and
// override OnBuild and OnOutputToDC to draw something of your own.
#include <vorn/vorn.h>

class CMinimalApp : public CWinApp {
public:
    BOOL InitInstance() override {
        m_pMainWnd = &m_view;
        if (!m_view.CreateEx(0, ::AfxRegisterWndClass(CS_OWNDC, ::LoadCursor(nullptr, IDC_ARROW)), "Minimal",
                             WS_OVERLAPPEDWINDOW, CW_USEDEFAULT, CW_USEDEFAULT, 800, 600, nullptr, nullptr))
            return FALSE;
        m_view.ShowWindow(m_nCmdShow);
        return TRUE;
    }

private:
    CvornOGLWnd m_view;
};

CMinimalApp theApp;
