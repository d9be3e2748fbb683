// SPDX-License-Identifier: MIT
#include "tests/framework/module_probe.h"

#include <afxwin.h>

namespace {

CWinApp theApp("The probe");

class Probed : public CObject {
    DECLARE_SERIAL(Probed)
};
IMPLEMENT_SERIAL(Probed, CObject, 1)

} // namespace

extern "C" __declspec(dllexport) ModuleProbe moduleProbe() {
    return {
        .appOutside = [] { return AfxGetApp(); },
        .appInside =
            [] {
                AFX_MANAGE_STATE(AfxGetStaticModuleState());
                return AfxGetApp();
            },
        .loadString =
            [](unsigned id, char* buffer, unsigned size) {
                AFX_MANAGE_STATE(AfxGetStaticModuleState());
                return AfxLoadString(id, buffer, size);
            },
        .messageBox =
            [](const char* text) {
                AFX_MANAGE_STATE(AfxGetStaticModuleState());
                return AfxMessageBox(text, MB_YESNO);
            },
        .throwInside =
            [] {
                AFX_MANAGE_STATE(AfxGetStaticModuleState());
                AfxThrowUserException();
            },
    };
}
