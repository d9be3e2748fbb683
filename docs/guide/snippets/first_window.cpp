// SPDX-License-Identifier: MIT
//! [program]
#include <vorn/vorn.h>

class CFirstApp : public CWinApp {
public:
    BOOL InitInstance() override {
        m_pMainWnd = &m_view;
        if (!m_view.CreateEx(0, ::AfxRegisterWndClass(CS_OWNDC, ::LoadCursor(nullptr, IDC_ARROW)),
                             "First chart", WS_OVERLAPPEDWINDOW, CW_USEDEFAULT, CW_USEDEFAULT, 800, 600,
                             nullptr, nullptr))
            return FALSE;
        m_view.ShowWindow(m_nCmdShow);
        return TRUE;
    }

private:
    CvornOGLWnd m_view;
};

CFirstApp theApp;
//! [program]
