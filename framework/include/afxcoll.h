// SPDX-License-Identifier: MIT
#pragma once

#include "afxtempl.h"

// The ready-made arrays.

class CByteArray : public CArray<BYTE, BYTE> {};
class CWordArray : public CArray<WORD, WORD> {};
class CDWordArray : public CArray<DWORD, DWORD> {};
class CUIntArray : public CArray<UINT, UINT> {};
class CPtrArray : public CArray<void*, void*> {};
class CStringArray : public CArray<CString, LPCTSTR> {};
