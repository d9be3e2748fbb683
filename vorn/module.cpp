// SPDX-License-Identifier: MIT
#include <afxwin.h>

/// The library's own application object, which gives it a module state and resources of its own.
class CVORNApp : public CWinApp {
public:
    BOOL InitInstance() override { return CWinApp::InitInstance(); }
};

namespace {

CVORNApp theApp;

} // namespace
