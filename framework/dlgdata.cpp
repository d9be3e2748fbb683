// SPDX-License-Identifier: MIT
#include "dlgdata.h"
#include "thread_state.h"
#include <cerrno>
#include <cfloat>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>

// Moving values between controls and variables.

CDataExchange::CDataExchange(CWnd* pDlgWnd, BOOL bSaveAndValidate)
    : m_bSaveAndValidate(bSaveAndValidate), m_pDlgWnd(pDlgWnd) {}

HWND CDataExchange::PrepareCtrl(int nIDC) {
    HWND control = ::GetDlgItem(m_pDlgWnd->m_hWnd, nIDC);
    if (control == nullptr) AfxThrowNotSupportedException();
    m_idLastControl = static_cast<UINT>(nIDC);
    m_bEditLastControl = false;
    return control;
}

HWND CDataExchange::PrepareEditCtrl(int nIDC) {
    HWND control = PrepareCtrl(nIDC);
    m_bEditLastControl = true;
    return control;
}

void CDataExchange::Fail() {
    if (m_bSaveAndValidate && m_idLastControl != 0) {
        HWND control = ::GetDlgItem(m_pDlgWnd->m_hWnd, static_cast<int>(m_idLastControl));
        ::SetFocus(control);
        if (m_bEditLastControl) ::SendMessageA(control, EM_SETSEL, 0, -1);
    }
    AfxThrowUserException();
}

BOOL CWnd::UpdateData(BOOL bSaveAndValidate) {
    if (m_hWnd == nullptr) return FALSE;
    // What the controls tell about changes that the exchange itself makes is not the user's doing.
    HWND& exchanging = vornafx::threadState().exchangingDialog;
    HWND former = std::exchange(exchanging, m_hWnd);
    CDataExchange exchange(this, bSaveAndValidate);
    BOOL done = FALSE;
    try {
        DoDataExchange(&exchange);
        done = TRUE;
    } catch (CUserException* exception) { // the user knows
        exception->Delete();
    } catch (CException* exception) {
        exception->ReportError(MB_ICONEXCLAMATION);
        exception->Delete();
    }
    exchanging = former;
    return done;
}

void CWnd::DoDataExchange(CDataExchange*) {}

namespace {

CString textOf(HWND control) {
    CString text;
    const int length = ::GetWindowTextLengthA(control);
    ::GetWindowTextA(control, text.GetBuffer(length), length + 1);
    text.ReleaseBuffer();
    return text;
}

/// Leaves a control that shows the text already alone, so that it neither flickers nor loses its selection.
void setText(HWND control, LPCTSTR text) {
    if (textOf(control) != text) ::SetWindowTextA(control, text);
}

bool onlyBlanks(const char* rest) {
    while (*rest == ' ' || *rest == '\t')
        ++rest;
    return *rest == '\0';
}

template <typename Integer>
bool parse(const char* text, Integer& value) {
    using Limits = std::numeric_limits<Integer>;
    char* end = nullptr;
    const long long number = std::strtoll(text, &end, 10);
    if (end == text || !onlyBlanks(end)) return false;
    if (number < static_cast<long long>(Limits::min()) || number > static_cast<long long>(Limits::max()))
        return false;
    value = static_cast<Integer>(number);
    return true;
}

bool parse(const char* text, double& value) {
    // Hexadecimal, infinite and undefined numbers are for programs, not for users.
    if (std::strpbrk(text, "xXnNiI") != nullptr) return false;
    char* end = nullptr;
    const double number = std::strtod(text, &end);
    if (end == text || !onlyBlanks(end) || !std::isfinite(number)) return false;
    value = number;
    return true;
}

bool parse(const char* text, float& value) {
    double number = 0;
    if (!parse(text, number) || std::fabs(number) > FLT_MAX) return false;
    value = static_cast<float>(number);
    return true;
}

/// Moves a number between an edit control and a variable.
template <typename Number>
void exchangeNumber(CDataExchange* pDX, int id, Number& value, vornafx::Prompt prompt) {
    HWND control = pDX->PrepareEditCtrl(id);
    if (!pDX->m_bSaveAndValidate)
        setText(control, vornafx::numberText(value));
    else if (!parse(textOf(control), value))
        vornafx::refuse(*pDX, prompt, {});
}

void exchangeIndex(CDataExchange* pDX, int id, int& index, UINT get, UINT set) {
    HWND control = pDX->PrepareCtrl(id);
    if (pDX->m_bSaveAndValidate)
        index = static_cast<int>(::SendMessageA(control, get, 0, 0));
    else
        ::SendMessageA(control, set, static_cast<WPARAM>(index), 0);
}

void selectExactly(HWND control, const CString& value, UINT find, UINT select) {
    const LRESULT index =
        ::SendMessageA(control, find, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(value.GetString()));
    if (index >= 0)
        ::SendMessageA(control, select, static_cast<WPARAM>(index), 0);
    else if (find == CB_FINDSTRINGEXACT)
        setText(control, value);
}

CString selectedText(HWND listBox) {
    CString text;
    const LRESULT index = ::SendMessageA(listBox, LB_GETCURSEL, 0, 0);
    const LRESULT length =
        index < 0 ? LB_ERR : ::SendMessageA(listBox, LB_GETTEXTLEN, static_cast<WPARAM>(index), 0);
    if (length <= 0) return text;
    char* buffer = text.GetBuffer(static_cast<int>(length));
    ::SendMessageA(listBox, LB_GETTEXT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(buffer));
    text.ReleaseBuffer();
    return text;
}

} // namespace

void AFXAPI DDX_Control(CDataExchange* pDX, int nIDC, CWnd& rControl) {
    if (rControl.m_hWnd != nullptr) return;
    if (!rControl.SubclassWindow(pDX->PrepareCtrl(nIDC))) AfxThrowNotSupportedException();
}

void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, BYTE& value) {
    exchangeNumber(pDX, nIDC, value, vornafx::Prompt::byte);
}
void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, short& value) {
    exchangeNumber(pDX, nIDC, value, vornafx::Prompt::integer);
}
void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, int& value) {
    exchangeNumber(pDX, nIDC, value, vornafx::Prompt::integer);
}
void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, UINT& value) {
    exchangeNumber(pDX, nIDC, value, vornafx::Prompt::positiveInteger);
}
void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, long& value) {
    exchangeNumber(pDX, nIDC, value, vornafx::Prompt::integer);
}
void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, DWORD& value) {
    exchangeNumber(pDX, nIDC, value, vornafx::Prompt::positiveInteger);
}
void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, float& value) {
    exchangeNumber(pDX, nIDC, value, vornafx::Prompt::number);
}
void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, double& value) {
    exchangeNumber(pDX, nIDC, value, vornafx::Prompt::number);
}

void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, CString& value) {
    HWND control = pDX->PrepareEditCtrl(nIDC);
    if (pDX->m_bSaveAndValidate)
        value = textOf(control);
    else
        setText(control, value);
}

void AFXAPI DDX_Check(CDataExchange* pDX, int nIDC, int& value) {
    HWND control = pDX->PrepareCtrl(nIDC);
    if (pDX->m_bSaveAndValidate) {
        value = static_cast<int>(::SendMessageA(control, BM_GETCHECK, 0, 0));
        return;
    }
    if (value < BST_UNCHECKED || value > BST_INDETERMINATE) value = BST_UNCHECKED;
    ::SendMessageA(control, BM_SETCHECK, static_cast<WPARAM>(value), 0);
}

void AFXAPI DDX_Radio(CDataExchange* pDX, int nIDC, int& value) {
    HWND control = pDX->PrepareCtrl(nIDC);
    if (pDX->m_bSaveAndValidate) value = -1;
    int button = 0;
    do {
        if ((::SendMessageA(control, WM_GETDLGCODE, 0, 0) & DLGC_RADIOBUTTON) != 0) {
            if (!pDX->m_bSaveAndValidate)
                ::SendMessageA(control, BM_SETCHECK, button == value, 0);
            else if (::SendMessageA(control, BM_GETCHECK, 0, 0) != 0)
                value = button;
            ++button;
        }
        control = ::GetWindow(control, GW_HWNDNEXT);
    } while (control != nullptr && (::GetWindowLongPtrA(control, GWL_STYLE) & WS_GROUP) == 0);
}

void AFXAPI DDX_LBString(CDataExchange* pDX, int nIDC, CString& value) {
    HWND control = pDX->PrepareCtrl(nIDC);
    if (pDX->m_bSaveAndValidate)
        value = selectedText(control);
    else
        ::SendMessageA(control, LB_SELECTSTRING, static_cast<WPARAM>(-1),
                       reinterpret_cast<LPARAM>(value.GetString()));
}

void AFXAPI DDX_LBStringExact(CDataExchange* pDX, int nIDC, CString& value) {
    HWND control = pDX->PrepareCtrl(nIDC);
    if (pDX->m_bSaveAndValidate)
        value = selectedText(control);
    else
        selectExactly(control, value, LB_FINDSTRINGEXACT, LB_SETCURSEL);
}

void AFXAPI DDX_CBString(CDataExchange* pDX, int nIDC, CString& value) {
    HWND control = pDX->PrepareCtrl(nIDC);
    if (pDX->m_bSaveAndValidate)
        value = textOf(control);
    else if (::SendMessageA(control, CB_SELECTSTRING, static_cast<WPARAM>(-1),
                            reinterpret_cast<LPARAM>(value.GetString())) == CB_ERR)
        setText(control, value);
}

void AFXAPI DDX_CBStringExact(CDataExchange* pDX, int nIDC, CString& value) {
    HWND control = pDX->PrepareCtrl(nIDC);
    if (pDX->m_bSaveAndValidate)
        value = textOf(control);
    else
        selectExactly(control, value, CB_FINDSTRINGEXACT, CB_SETCURSEL);
}

void AFXAPI DDX_LBIndex(CDataExchange* pDX, int nIDC, int& index) {
    exchangeIndex(pDX, nIDC, index, LB_GETCURSEL, LB_SETCURSEL);
}

void AFXAPI DDX_CBIndex(CDataExchange* pDX, int nIDC, int& index) {
    exchangeIndex(pDX, nIDC, index, CB_GETCURSEL, CB_SETCURSEL);
}

void AFXAPI DDX_Scroll(CDataExchange* pDX, int nIDC, int& value) {
    HWND control = pDX->PrepareCtrl(nIDC);
    if (pDX->m_bSaveAndValidate)
        value = ::GetScrollPos(control, SB_CTL);
    else
        ::SetScrollPos(control, SB_CTL, value, TRUE);
}
