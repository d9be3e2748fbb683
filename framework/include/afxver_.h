// SPDX-License-Identifier: MIT
#pragma once

/// Marks what the framework's DLL gives to other modules.
#if defined(VORNAFX_EXPORTS)
#define VORNAFX_API __declspec(dllexport)
#else
#define VORNAFX_API __declspec(dllimport)
#endif

#define AFXAPI __stdcall
#define AFX_CDECL __cdecl
/// Marks message handlers; for the reader only.
#define afx_msg
