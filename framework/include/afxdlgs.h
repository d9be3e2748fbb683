// SPDX-License-Identifier: MIT
#pragma once

/// The common dialogs.

#include <afxwin.h>
#include <commdlg.h>

/// What the common dialogs share.
class VORNAFX_API CCommonDialog : public CDialog {
    DECLARE_DYNAMIC(CCommonDialog)
public:
    explicit CCommonDialog(CWnd* pParentWnd) : CDialog(UINT(0), pParentWnd) {}

protected:
    void OnOK() override { Default(); }
    void OnCancel() override { Default(); }
};

/// Asks for a file to open or save.
class VORNAFX_API CFileDialog : public CCommonDialog {
    DECLARE_DYNAMIC(CFileDialog)
public:
    /// lpszFilter: pairs of text and patterns separated by '|', ended by "||".
    explicit CFileDialog(BOOL bOpenFileDialog, LPCTSTR lpszDefExt = nullptr, LPCTSTR lpszFileName = nullptr,
                         DWORD dwFlags = OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT, LPCTSTR lpszFilter = nullptr,
                         CWnd* pParentWnd = nullptr, DWORD dwSize = 0);

    OPENFILENAME m_ofn;
    BOOL m_bOpenFileDialog;

    /// IDOK or IDCANCEL; CommDlgExtendedError tells whether a cancel was a failure.
    INT_PTR DoModal() override;

    CString GetPathName() const;
    CString GetFileName() const;
    CString GetFileExt() const;
    CString GetFileTitle() const;
    CString GetFolderPath() const;
    BOOL GetReadOnlyPref() const { return (m_ofn.Flags & OFN_READONLY) != 0; }
    /// Steps through the chosen files of OFN_ALLOWMULTISELECT; the position is null after the last.
    POSITION GetStartPosition() const;
    CString GetNextPathName(POSITION& pos) const;

protected:
    /// Nonzero keeps the dialog open.
    virtual BOOL OnFileNameOK() { return FALSE; }
    BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* pResult) override;

    CString m_strFilter;
    CString m_strDefExt;
    TCHAR m_szFileTitle[MAX_PATH];
    TCHAR m_szFileName[MAX_PATH];
};

/// Asks for a colour.
class VORNAFX_API CColorDialog : public CCommonDialog {
    DECLARE_DYNAMIC(CColorDialog)
public:
    explicit CColorDialog(COLORREF clrInit = 0, DWORD dwFlags = 0, CWnd* pParentWnd = nullptr);

    CHOOSECOLOR m_cc;

    /// IDOK or IDCANCEL.
    INT_PTR DoModal() override;
    COLORREF GetColor() const { return m_cc.rgbResult; }
    /// Changes the selection of the open dialog.
    void SetCurrentColor(COLORREF clr);
    /// The sixteen custom colours, shared by all dialogs of the process.
    static COLORREF* GetSavedCustomColors();

protected:
    /// Nonzero keeps the dialog open.
    virtual BOOL OnColorOK() { return FALSE; }
    afx_msg LRESULT HandleColorOK(WPARAM wParam, LPARAM lParam);

    DECLARE_MESSAGE_MAP()
};

/// Asks for a printer. The handles in m_pd (hDC, hDevMode, hDevNames) are the caller's to free.
class VORNAFX_API CPrintDialog : public CCommonDialog {
    DECLARE_DYNAMIC(CPrintDialog)
public:
    explicit CPrintDialog(BOOL bPrintSetupOnly,
                          DWORD dwFlags = PD_ALLPAGES | PD_USEDEVMODECOPIES | PD_NOPAGENUMS |
                                          PD_HIDEPRINTTOFILE | PD_NOSELECTION,
                          CWnd* pParentWnd = nullptr);

    PRINTDLG m_pd;

    INT_PTR DoModal() override;
    /// Fills m_pd for the default printer without asking.
    BOOL GetDefaults();
    /// The DC that DoModal or CreatePrinterDC made.
    HDC GetPrinterDC() const { return m_pd.hDC; }
    HDC CreatePrinterDC();
    /// Locked memory; give it back with GlobalUnlock(m_pd.hDevMode).
    LPDEVMODE GetDevMode() const;
    CString GetDeviceName() const;
    CString GetDriverName() const;
    CString GetPortName() const;
    int GetCopies() const;
    int GetFromPage() const { return m_pd.Flags & PD_PAGENUMS ? m_pd.nFromPage : -1; }
    int GetToPage() const { return m_pd.Flags & PD_PAGENUMS ? m_pd.nToPage : -1; }
    BOOL PrintAll() const { return !PrintRange() && !PrintSelection(); }
    BOOL PrintRange() const { return (m_pd.Flags & PD_PAGENUMS) != 0; }
    BOOL PrintSelection() const { return (m_pd.Flags & PD_SELECTION) != 0; }
};
