// SPDX-License-Identifier: MIT
#pragma once

/// The standard controls. Included by <afxwin.h>.

#include <afxwnd_.h>

class VORNAFX_API CStatic : public CWnd {
    DECLARE_DYNAMIC(CStatic)
public:
    using CWnd::Create;
    virtual BOOL Create(LPCTSTR lpszText, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd,
                        UINT nID = 0xffff) {
        return CWnd::Create("STATIC", lpszText, dwStyle, rect, pParentWnd, nID);
    }
    HICON SetIcon(HICON hIcon) {
        return reinterpret_cast<HICON>(SendMessage(STM_SETICON, reinterpret_cast<WPARAM>(hIcon)));
    }
    HBITMAP SetBitmap(HBITMAP hBitmap) {
        return reinterpret_cast<HBITMAP>(
            SendMessage(STM_SETIMAGE, IMAGE_BITMAP, reinterpret_cast<LPARAM>(hBitmap)));
    }
};

class VORNAFX_API CButton : public CWnd {
    DECLARE_DYNAMIC(CButton)
public:
    using CWnd::Create;
    virtual BOOL Create(LPCTSTR lpszCaption, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID) {
        return CWnd::Create("BUTTON", lpszCaption, dwStyle, rect, pParentWnd, nID);
    }
    UINT GetState() const { return static_cast<UINT>(SendMessage(BM_GETSTATE)); }
    void SetState(BOOL bHighlight) { SendMessage(BM_SETSTATE, static_cast<WPARAM>(bHighlight)); }
    int GetCheck() const { return static_cast<int>(SendMessage(BM_GETCHECK)); }
    void SetCheck(int nCheck) { SendMessage(BM_SETCHECK, static_cast<WPARAM>(nCheck)); }
    UINT GetButtonStyle() const { return GetStyle() & 0xff; }
    void SetButtonStyle(UINT nStyle, BOOL bRedraw = TRUE) { SendMessage(BM_SETSTYLE, nStyle, bRedraw); }
};

class VORNAFX_API CEdit : public CWnd {
    DECLARE_DYNAMIC(CEdit)
public:
    using CWnd::Create;
    virtual BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID) {
        return CWnd::Create("EDIT", nullptr, dwStyle, rect, pParentWnd, nID);
    }
    BOOL CanUndo() const { return static_cast<BOOL>(SendMessage(EM_CANUNDO)); }
    BOOL GetModify() const { return static_cast<BOOL>(SendMessage(EM_GETMODIFY)); }
    void SetModify(BOOL bModified = TRUE) { SendMessage(EM_SETMODIFY, static_cast<WPARAM>(bModified)); }
    int GetLineCount() const { return static_cast<int>(SendMessage(EM_GETLINECOUNT)); }
    DWORD GetSel() const { return static_cast<DWORD>(SendMessage(EM_GETSEL)); }
    void GetSel(int& nStartChar, int& nEndChar) const {
        SendMessage(EM_GETSEL, reinterpret_cast<WPARAM>(&nStartChar), reinterpret_cast<LPARAM>(&nEndChar));
    }
    void SetSel(int nStartChar, int nEndChar, BOOL bNoScroll = FALSE) {
        SendMessage(EM_SETSEL, static_cast<WPARAM>(nStartChar), nEndChar);
        if (!bNoScroll) SendMessage(EM_SCROLLCARET);
    }
    void ReplaceSel(LPCTSTR lpszNewText, BOOL bCanUndo = FALSE) {
        SendMessage(EM_REPLACESEL, static_cast<WPARAM>(bCanUndo), reinterpret_cast<LPARAM>(lpszNewText));
    }
    void LimitText(int nChars = 0) { SendMessage(EM_LIMITTEXT, static_cast<WPARAM>(nChars)); }
    void SetLimitText(UINT nMax) { SendMessage(EM_SETLIMITTEXT, nMax); }
    UINT GetLimitText() const { return static_cast<UINT>(SendMessage(EM_GETLIMITTEXT)); }
    BOOL SetReadOnly(BOOL bReadOnly = TRUE) {
        return static_cast<BOOL>(SendMessage(EM_SETREADONLY, static_cast<WPARAM>(bReadOnly)));
    }
    void SetPasswordChar(TCHAR ch) { SendMessage(EM_SETPASSWORDCHAR, static_cast<WPARAM>(ch)); }
    void SetMargins(UINT nLeft, UINT nRight) {
        SendMessage(EM_SETMARGINS, EC_LEFTMARGIN | EC_RIGHTMARGIN, MAKELONG(nLeft, nRight));
    }
    BOOL Undo() { return static_cast<BOOL>(SendMessage(EM_UNDO)); }
    void EmptyUndoBuffer() { SendMessage(EM_EMPTYUNDOBUFFER); }
    void Clear() { SendMessage(WM_CLEAR); }
    void Copy() { SendMessage(WM_COPY); }
    void Cut() { SendMessage(WM_CUT); }
    void Paste() { SendMessage(WM_PASTE); }
};

class VORNAFX_API CListBox : public CWnd {
    DECLARE_DYNAMIC(CListBox)
public:
    using CWnd::Create;
    virtual BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID) {
        return CWnd::Create("LISTBOX", nullptr, dwStyle, rect, pParentWnd, nID);
    }
    int GetCount() const { return Ask(LB_GETCOUNT); }
    int GetCurSel() const { return Ask(LB_GETCURSEL); }
    int SetCurSel(int nSelect) { return Ask(LB_SETCURSEL, nSelect); }
    int GetSel(int nIndex) const { return Ask(LB_GETSEL, nIndex); }
    int SetSel(int nIndex, BOOL bSelect = TRUE) { return Ask(LB_SETSEL, bSelect, nIndex); }
    int GetSelCount() const { return Ask(LB_GETSELCOUNT); }
    int GetTopIndex() const { return Ask(LB_GETTOPINDEX); }
    int SetTopIndex(int nIndex) { return Ask(LB_SETTOPINDEX, nIndex); }
    DWORD_PTR GetItemData(int nIndex) const {
        return static_cast<DWORD_PTR>(SendMessage(LB_GETITEMDATA, static_cast<WPARAM>(nIndex)));
    }
    int SetItemData(int nIndex, DWORD_PTR dwItemData) {
        return Ask(LB_SETITEMDATA, nIndex, static_cast<LPARAM>(dwItemData));
    }
    int GetTextLen(int nIndex) const { return Ask(LB_GETTEXTLEN, nIndex); }
    int GetText(int nIndex, LPTSTR lpszBuffer) const {
        return Ask(LB_GETTEXT, nIndex, reinterpret_cast<LPARAM>(lpszBuffer));
    }
    void GetText(int nIndex, CString& rString) const;
    int AddString(LPCTSTR lpszItem) { return Ask(LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(lpszItem)); }
    int InsertString(int nIndex, LPCTSTR lpszItem) {
        return Ask(LB_INSERTSTRING, nIndex, reinterpret_cast<LPARAM>(lpszItem));
    }
    int DeleteString(UINT nIndex) { return Ask(LB_DELETESTRING, static_cast<int>(nIndex)); }
    void ResetContent() { SendMessage(LB_RESETCONTENT); }
    int FindString(int nStartAfter, LPCTSTR lpszItem) const {
        return Ask(LB_FINDSTRING, nStartAfter, reinterpret_cast<LPARAM>(lpszItem));
    }
    int FindStringExact(int nIndexStart, LPCTSTR lpszFind) const {
        return Ask(LB_FINDSTRINGEXACT, nIndexStart, reinterpret_cast<LPARAM>(lpszFind));
    }
    int SelectString(int nStartAfter, LPCTSTR lpszItem) {
        return Ask(LB_SELECTSTRING, nStartAfter, reinterpret_cast<LPARAM>(lpszItem));
    }

private:
    int Ask(UINT message, int wParam = 0, LPARAM lParam = 0) const {
        return static_cast<int>(SendMessage(message, static_cast<WPARAM>(wParam), lParam));
    }
};

class VORNAFX_API CComboBox : public CWnd {
    DECLARE_DYNAMIC(CComboBox)
public:
    using CWnd::Create;
    virtual BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID) {
        return CWnd::Create("COMBOBOX", nullptr, dwStyle, rect, pParentWnd, nID);
    }
    int GetCount() const { return Ask(CB_GETCOUNT); }
    int GetCurSel() const { return Ask(CB_GETCURSEL); }
    int SetCurSel(int nSelect) { return Ask(CB_SETCURSEL, nSelect); }
    DWORD GetEditSel() const { return static_cast<DWORD>(SendMessage(CB_GETEDITSEL)); }
    BOOL SetEditSel(int nStartChar, int nEndChar) {
        return Ask(CB_SETEDITSEL, 0, MAKELONG(nStartChar, nEndChar));
    }
    BOOL LimitText(int nMaxChars) { return Ask(CB_LIMITTEXT, nMaxChars); }
    DWORD_PTR GetItemData(int nIndex) const {
        return static_cast<DWORD_PTR>(SendMessage(CB_GETITEMDATA, static_cast<WPARAM>(nIndex)));
    }
    int SetItemData(int nIndex, DWORD_PTR dwItemData) {
        return Ask(CB_SETITEMDATA, nIndex, static_cast<LPARAM>(dwItemData));
    }
    int GetLBTextLen(int nIndex) const { return Ask(CB_GETLBTEXTLEN, nIndex); }
    int GetLBText(int nIndex, LPTSTR lpszText) const {
        return Ask(CB_GETLBTEXT, nIndex, reinterpret_cast<LPARAM>(lpszText));
    }
    void GetLBText(int nIndex, CString& rString) const;
    void ShowDropDown(BOOL bShowIt = TRUE) { SendMessage(CB_SHOWDROPDOWN, static_cast<WPARAM>(bShowIt)); }
    BOOL GetDroppedState() const { return Ask(CB_GETDROPPEDSTATE); }
    int AddString(LPCTSTR lpszString) { return Ask(CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(lpszString)); }
    int InsertString(int nIndex, LPCTSTR lpszString) {
        return Ask(CB_INSERTSTRING, nIndex, reinterpret_cast<LPARAM>(lpszString));
    }
    int DeleteString(UINT nIndex) { return Ask(CB_DELETESTRING, static_cast<int>(nIndex)); }
    void ResetContent() { SendMessage(CB_RESETCONTENT); }
    int FindString(int nStartAfter, LPCTSTR lpszString) const {
        return Ask(CB_FINDSTRING, nStartAfter, reinterpret_cast<LPARAM>(lpszString));
    }
    int FindStringExact(int nIndexStart, LPCTSTR lpszFind) const {
        return Ask(CB_FINDSTRINGEXACT, nIndexStart, reinterpret_cast<LPARAM>(lpszFind));
    }
    int SelectString(int nStartAfter, LPCTSTR lpszString) {
        return Ask(CB_SELECTSTRING, nStartAfter, reinterpret_cast<LPARAM>(lpszString));
    }

private:
    int Ask(UINT message, int wParam = 0, LPARAM lParam = 0) const {
        return static_cast<int>(SendMessage(message, static_cast<WPARAM>(wParam), lParam));
    }
};

class VORNAFX_API CScrollBar : public CWnd {
    DECLARE_DYNAMIC(CScrollBar)
public:
    using CWnd::Create;
    virtual BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID) {
        return CWnd::Create("SCROLLBAR", nullptr, dwStyle, rect, pParentWnd, nID);
    }
    int GetScrollPos() const { return ::GetScrollPos(m_hWnd, SB_CTL); }
    int SetScrollPos(int nPos, BOOL bRedraw = TRUE) { return ::SetScrollPos(m_hWnd, SB_CTL, nPos, bRedraw); }
    void SetScrollRange(int nMinPos, int nMaxPos, BOOL bRedraw = TRUE) {
        ::SetScrollRange(m_hWnd, SB_CTL, nMinPos, nMaxPos, bRedraw);
    }
    BOOL SetScrollInfo(LPSCROLLINFO lpScrollInfo, BOOL bRedraw = TRUE) {
        return CWnd::SetScrollInfo(SB_CTL, lpScrollInfo, bRedraw);
    }
    BOOL GetScrollInfo(LPSCROLLINFO lpScrollInfo, UINT nMask = SIF_ALL) {
        return CWnd::GetScrollInfo(SB_CTL, lpScrollInfo, nMask);
    }
};
