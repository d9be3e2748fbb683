// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <tchar.h>

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

// Placement and linkage words of older sources: accepted, and without effect.
#define BASED_CODE
#define AFX_DATA
#define AFX_DATADEF
#define AFX_CORE_DATA
#define AFX_CORE_DATADEF
#define AFX_STATIC static
#define AFX_INLINE inline
#define AFX_NOVTABLE
#define AFX_COMDAT
#define AFX_EXT_CLASS
#define AFX_EXT_DATA
#define AFX_EXT_DATADEF
#define AFX_EXT_API
#define UNUSED_ALWAYS(x) static_cast<void>(x)
#ifdef _DEBUG
#define UNUSED(x)
#else
#define UNUSED(x) static_cast<void>(x)
#endif
