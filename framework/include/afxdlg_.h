// SPDX-License-Identifier: MIT
#pragma once

/// Dialogs. Included by <afxwin.h>.

#include <afxwnd_.h>

/// A dialog made from a template of the current module state's resources.
class VORNAFX_API CDialog : public CWnd {
    DECLARE_DYNAMIC(CDialog)
public:
    /// For modeless dialogs, made with Create, and for InitModalIndirect.
    CDialog() = default;
    explicit CDialog(LPCTSTR lpszTemplateName, CWnd* pParentWnd = nullptr);
    explicit CDialog(UINT nIDTemplate, CWnd* pParentWnd = nullptr);
    ~CDialog() override;

    /// Modeless. FALSE when the template is missing or the window could not be made.
    virtual BOOL Create(LPCTSTR lpszTemplateName, CWnd* pParentWnd = nullptr);
    virtual BOOL Create(UINT nIDTemplate, CWnd* pParentWnd = nullptr);
    virtual BOOL CreateIndirect(LPCDLGTEMPLATE lpDialogTemplate, CWnd* pParentWnd = nullptr,
                                void* lpDialogInit = nullptr);
    /// Makes DoModal use a template in memory, which must live as long as the dialog.
    BOOL InitModalIndirect(LPCDLGTEMPLATE lpDialogTemplate, CWnd* pParentWnd = nullptr,
                           void* lpDialogInit = nullptr);

    /// Runs the dialog and returns what EndDialog was given; -1 when the template is missing or the window
    /// could not be made. The parent is disabled meanwhile; messages are pumped by the thread's message loop.
    virtual INT_PTR DoModal();
    void EndDialog(int nResult);

    void MapDialogRect(LPRECT lpRect) const { ::MapDialogRect(m_hWnd, lpRect); }
    void NextDlgCtrl() const { ::SendMessageA(m_hWnd, WM_NEXTDLGCTL, 0, 0); }
    void PrevDlgCtrl() const { ::SendMessageA(m_hWnd, WM_NEXTDLGCTL, 1, 0); }
    void GotoDlgCtrl(CWnd* pWndCtrl);
    void SetDefID(UINT nID) { SendMessage(DM_SETDEFID, nID); }
    DWORD GetDefID() const { return static_cast<DWORD>(SendMessage(DM_GETDEFID)); }

    /// Called with WM_INITDIALOG, the controls made and filled from the template's initialisation data; this
    /// fills them with UpdateData(FALSE). FALSE when the override has set the focus itself.
    virtual BOOL OnInitDialog();
    BOOL PreTranslateMessage(MSG* pMsg) override;
    BOOL OnCmdMsg(UINT nID, int nCode, void* pExtra, AFX_CMDHANDLERINFO* pHandlerInfo) override;

protected:
    /// Closes with IDOK when UpdateData(TRUE) succeeds.
    virtual void OnOK();
    virtual void OnCancel();
    virtual void PreInitDialog() {}
    afx_msg LRESULT HandleInitDialog(WPARAM wParam, LPARAM lParam);

    UINT m_nIDHelp = 0;
    LPCTSTR m_lpszTemplateName = nullptr; ///< a resource id, or a string that the caller keeps
    LPCDLGTEMPLATE m_lpDialogTemplate = nullptr;
    void* m_lpDialogInit = nullptr;
    CWnd* m_pParentWnd = nullptr;

    DECLARE_MESSAGE_MAP()

private:
    static INT_PTR CALLBACK DialogProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    BOOL MakeWindow(LPCDLGTEMPLATE dialogTemplate, HWND parent, HINSTANCE instance);
    INT_PTR RunModal(LPCDLGTEMPLATE dialogTemplate, HINSTANCE instance);
    void CenterUnlessPlaced();

    bool m_bTemplatePlaces = true; ///< the template says where the dialog comes up
};
