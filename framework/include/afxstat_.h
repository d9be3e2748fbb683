// SPDX-License-Identifier: MIT
#pragma once

#include "afx.h"

class CWinApp;

/// What belongs to one module (the program or a DLL): its instance, where its resources come from, its
/// application object. The framework keeps one for each module that asks for it, for the length of the
/// process.
class VORNAFX_API AFX_MODULE_STATE {
public:
    HINSTANCE m_hCurrentInstanceHandle = nullptr;
    HINSTANCE m_hCurrentResourceHandle = nullptr;
    CWinApp* m_pCurrentWinApp = nullptr;
    LPCTSTR m_lpszCurrentAppName = nullptr;

    explicit AFX_MODULE_STATE(HINSTANCE hInstance);
    AFX_MODULE_STATE(const AFX_MODULE_STATE&) = delete;
    AFX_MODULE_STATE& operator=(const AFX_MODULE_STATE&) = delete;
};

/// The state in use on this thread: what was set last, the program's own before that.
VORNAFX_API AFX_MODULE_STATE* AFXAPI AfxGetModuleState();
/// Makes a state current on this thread (null: the program's own); returns what was set before (null
/// likewise).
VORNAFX_API AFX_MODULE_STATE* AFXAPI AfxSetModuleState(AFX_MODULE_STATE* pNewState);
/// The program's own state.
VORNAFX_API AFX_MODULE_STATE* AFXAPI AfxGetAppModuleState();
/// The state of the module that calls it; comes with the static library `vornafx_module`.
AFX_MODULE_STATE* AFXAPI AfxGetStaticModuleState();

namespace vornafx {
/// The state of the module that holds an address (code or static data); the program's when no module does.
VORNAFX_API AFX_MODULE_STATE* moduleStateOf(const void* address);
/// Puts a module's state back into its first condition, for when the module is loaded again.
VORNAFX_API void moduleUnloaded(AFX_MODULE_STATE* state);
} // namespace vornafx

/// Makes a module's state current on this thread for the length of a scope.
class VORNAFX_API AFX_MAINTAIN_STATE2 {
public:
    explicit AFX_MAINTAIN_STATE2(AFX_MODULE_STATE* pModuleState) : m_pPrev(AfxSetModuleState(pModuleState)) {}
    ~AFX_MAINTAIN_STATE2() { AfxSetModuleState(m_pPrev); }
    AFX_MAINTAIN_STATE2(const AFX_MAINTAIN_STATE2&) = delete;
    AFX_MAINTAIN_STATE2& operator=(const AFX_MAINTAIN_STATE2&) = delete;

private:
    AFX_MODULE_STATE* m_pPrev;
};

#define AFX_MANAGE_STATE(p) AFX_MAINTAIN_STATE2 _ctlState(p);

VORNAFX_API HINSTANCE AFXAPI AfxGetInstanceHandle();
VORNAFX_API HINSTANCE AFXAPI AfxGetResourceHandle();
VORNAFX_API void AFXAPI AfxSetResourceHandle(HINSTANCE hInstResource);
/// The module that holds the resource: the current resource module, else the framework's own DLL, else the
/// program; the current resource module when none does.
VORNAFX_API HINSTANCE AFXAPI AfxFindResourceHandle(LPCTSTR lpszName, LPCTSTR lpszType);
/// Likewise for one string of a string table.
VORNAFX_API HINSTANCE AFXAPI AfxFindStringResourceHandle(UINT nID);
/// Loads a string of the current resource module into a buffer; its length, 0 with an empty text when there
/// is none.
VORNAFX_API int AFXAPI AfxLoadString(UINT nIDS, LPTSTR lpszBuf, UINT nMaxBuf = 256);
