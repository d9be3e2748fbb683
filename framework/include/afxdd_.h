// SPDX-License-Identifier: MIT
#pragma once

/// Dialog data exchange and validation. Included by <afxwin.h>.
///
/// A DDX function moves one value between a control and a variable, in the direction of m_bSaveAndValidate; a
/// DDV function, called right after it, checks the value when saving. What is wrong is told with
/// AfxMessageBox, the control gets the focus back, and CUserException ends the exchange.

#include <afxwnd_.h>

class CComboBox;

class VORNAFX_API CDataExchange {
public:
    CDataExchange(CWnd* pDlgWnd, BOOL bSaveAndValidate);

    BOOL m_bSaveAndValidate;
    CWnd* m_pDlgWnd;
    UINT m_idLastControl = 0;
    bool m_bEditLastControl = false;

    /// Notes the control for Fail and returns its handle. A missing control throws CNotSupportedException.
    HWND PrepareCtrl(int nIDC);
    HWND PrepareEditCtrl(int nIDC);
    /// Puts the focus into the last prepared control, selects an edit's text, and throws CUserException.
    [[noreturn]] void Fail();
};

VORNAFX_API void AFXAPI DDX_Control(CDataExchange* pDX, int nIDC, CWnd& rControl);
VORNAFX_API void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, BYTE& value);
VORNAFX_API void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, short& value);
VORNAFX_API void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, int& value);
VORNAFX_API void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, UINT& value);
VORNAFX_API void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, long& value);
VORNAFX_API void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, DWORD& value);
VORNAFX_API void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, CString& value);
VORNAFX_API void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, float& value);
VORNAFX_API void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, double& value);
/// 0, 1, or 2 for undetermined.
VORNAFX_API void AFXAPI DDX_Check(CDataExchange* pDX, int nIDC, int& value);
/// nIDC is the first button of a group; the value counts buttons from 0, -1 for none.
VORNAFX_API void AFXAPI DDX_Radio(CDataExchange* pDX, int nIDC, int& value);
VORNAFX_API void AFXAPI DDX_LBString(CDataExchange* pDX, int nIDC, CString& value);
VORNAFX_API void AFXAPI DDX_CBString(CDataExchange* pDX, int nIDC, CString& value);
VORNAFX_API void AFXAPI DDX_LBStringExact(CDataExchange* pDX, int nIDC, CString& value);
VORNAFX_API void AFXAPI DDX_CBStringExact(CDataExchange* pDX, int nIDC, CString& value);
VORNAFX_API void AFXAPI DDX_LBIndex(CDataExchange* pDX, int nIDC, int& index);
VORNAFX_API void AFXAPI DDX_CBIndex(CDataExchange* pDX, int nIDC, int& index);
VORNAFX_API void AFXAPI DDX_Scroll(CDataExchange* pDX, int nIDC, int& value);

VORNAFX_API void AFXAPI DDV_MinMaxByte(CDataExchange* pDX, BYTE value, BYTE minVal, BYTE maxVal);
VORNAFX_API void AFXAPI DDV_MinMaxShort(CDataExchange* pDX, short value, short minVal, short maxVal);
VORNAFX_API void AFXAPI DDV_MinMaxInt(CDataExchange* pDX, int value, int minVal, int maxVal);
VORNAFX_API void AFXAPI DDV_MinMaxLong(CDataExchange* pDX, long value, long minVal, long maxVal);
VORNAFX_API void AFXAPI DDV_MinMaxUInt(CDataExchange* pDX, UINT value, UINT minVal, UINT maxVal);
VORNAFX_API void AFXAPI DDV_MinMaxDWord(CDataExchange* pDX, DWORD value, DWORD minVal, DWORD maxVal);
VORNAFX_API void AFXAPI DDV_MinMaxFloat(CDataExchange* pDX, float const& value, float minVal, float maxVal);
VORNAFX_API void AFXAPI DDV_MinMaxDouble(CDataExchange* pDX, double const& value, double minVal,
                                         double maxVal);
/// Limits what an edit control accepts when filling it, and checks when saving.
VORNAFX_API void AFXAPI DDV_MaxChars(CDataExchange* pDX, CString const& value, int nChars);
