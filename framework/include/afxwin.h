// SPDX-License-Identifier: MIT
#pragma once

/// The framework's windows: everything but the common dialogs (<afxdlgs.h>) and metafile DCs (<afxext.h>).

#include <windows.h>

#include <commctrl.h>
#include <shellapi.h>

#include <afx.h>
#include <afxres.h>
#include <afxstat_.h>
#include <atltypes.h>

#include <afxcmdtarget_.h>
#include <afxmsg_.h>

#include <afxwnd_.h>

#include <afxctl_.h>
#include <afxdd_.h>
#include <afxdlg_.h>

#include <afxapp_.h>

/// Registers a window class for this module with the given parts and returns its name, the same for the same
/// parts. Throws CResourceException when it cannot be registered.
VORNAFX_API LPCTSTR AFXAPI AfxRegisterWndClass(UINT nClassStyle, HCURSOR hCursor = nullptr,
                                               HBRUSH hbrBackground = nullptr, HICON hIcon = nullptr);
/// Registers a class unless the name is taken already; TRUE when it can be used.
VORNAFX_API BOOL AFXAPI AfxRegisterClass(WNDCLASS* lpWndClass);

/// Makes the next window that this thread creates pWnd's; used around platform functions that create windows.
VORNAFX_API void AFXAPI AfxHookWindowCreate(CWnd* pWnd);
/// Ends that. FALSE when no window came.
VORNAFX_API BOOL AFXAPI AfxUnhookWindowCreate();

/// The window procedure of all permanent windows, and how it hands a message to its object.
VORNAFX_API LRESULT CALLBACK AfxWndProc(HWND hWnd, UINT nMsg, WPARAM wParam, LPARAM lParam);
VORNAFX_API LRESULT AFXAPI AfxCallWndProc(CWnd* pWnd, HWND hWnd, UINT nMsg, WPARAM wParam = 0,
                                          LPARAM lParam = 0);

/// While locked, idle time leaves temporary objects alone. Unlocking the last lock drops them if so wished.
VORNAFX_API void AFXAPI AfxLockTempMaps();
VORNAFX_API BOOL AFXAPI AfxUnlockTempMaps(BOOL bDeleteTemps = TRUE);
