// SPDX-License-Identifier: MIT
#include "common_dialog_library.h"
#include "dialog_detail.h"
#include <afxdlgs.h>
#include <algorithm>
#include <cstring>

#include <utility>

IMPLEMENT_DYNAMIC(CCommonDialog, CDialog)
IMPLEMENT_DYNAMIC(CFileDialog, CCommonDialog)
IMPLEMENT_DYNAMIC(CColorDialog, CCommonDialog)
IMPLEMENT_DYNAMIC(CPrintDialog, CCommonDialog)

namespace {

/// The object that takes the window of the common dialog being opened.
thread_local CDialog* waitingDialog = nullptr;

const UINT colourAccepted = ::RegisterWindowMessageA(COLOROKSTRINGA);
const UINT setColour = ::RegisterWindowMessageA(SETRGBSTRINGA);

/// What the system calls in its dialog: the first call brings the window.
UINT_PTR CALLBACK takeDialog(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_INITDIALOG) {
        if (CDialog* dialog = std::exchange(waitingDialog, nullptr)) dialog->SubclassWindow(window);
    }
    auto* dialog = dynamic_cast<CDialog*>(CWnd::FromHandlePermanent(window));
    if (dialog == nullptr) return 0;
    if (message == WM_INITDIALOG) return static_cast<UINT_PTR>(dialog->OnInitDialog());
    // This one is not sent to the window; everything else comes through its window procedure as well.
    if (message == colourAccepted)
        return static_cast<UINT_PTR>(AfxCallWndProc(dialog, window, message, wParam, lParam));
    return 0;
}

/// Runs a common dialog as the object's window. The system disables and enables the owner itself.
template <typename Parameters>
INT_PTR run(CDialog& dialog, Parameters& parameters, const char* function) {
    auto* show = vornafx::commonDialogFunction<BOOL WINAPI(Parameters*)>(function);
    if (show == nullptr) return IDCANCEL;
    CDialog* former = std::exchange(waitingDialog, &dialog);
    const BOOL accepted = show(&parameters);
    waitingDialog = former;
    return accepted ? IDOK : IDCANCEL;
}

} // namespace

// ---- files

CFileDialog::CFileDialog(BOOL bOpenFileDialog, LPCTSTR lpszDefExt, LPCTSTR lpszFileName, DWORD dwFlags,
                         LPCTSTR lpszFilter, CWnd* pParentWnd, DWORD dwSize)
    : CCommonDialog(pParentWnd), m_ofn{}, m_bOpenFileDialog(bOpenFileDialog), m_strFilter(lpszFilter),
      m_strDefExt(lpszDefExt), m_szFileTitle{}, m_szFileName{} {
    m_strFilter.Replace('|', '\0');
    m_strFilter.AppendChar('\0'); // a filter that forgets its end has one all the same
    if (lpszFileName != nullptr) ::lstrcpynA(m_szFileName, lpszFileName, MAX_PATH);
    m_ofn.lStructSize = dwSize != 0 && dwSize < sizeof(m_ofn) ? dwSize : sizeof(m_ofn);
    m_ofn.hInstance = AfxGetResourceHandle();
    m_ofn.lpstrFile = m_szFileName;
    m_ofn.nMaxFile = MAX_PATH;
    m_ofn.lpstrFileTitle = m_szFileTitle;
    m_ofn.nMaxFileTitle = MAX_PATH;
    m_ofn.lpstrDefExt = lpszDefExt == nullptr ? nullptr : m_strDefExt.GetString();
    m_ofn.lpstrFilter = lpszFilter == nullptr ? nullptr : m_strFilter.GetString();
    m_ofn.lpfnHook = takeDialog;
    m_ofn.Flags = dwFlags | OFN_ENABLEHOOK | OFN_EXPLORER;
}

INT_PTR CFileDialog::DoModal() {
    m_ofn.hwndOwner = vornafx::modalOwner(m_pParentWnd);
    return run(*this, m_ofn, m_bOpenFileDialog ? "GetOpenFileNameA" : "GetSaveFileNameA");
}

BOOL CFileDialog::OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* pResult) {
    if (reinterpret_cast<const NMHDR*>(lParam)->code == CDN_FILEOK) {
        *pResult = OnFileNameOK();
        ::SetWindowLongPtrA(m_hWnd, DWLP_MSGRESULT, *pResult);
        return TRUE;
    }
    return CCommonDialog::OnNotify(wParam, lParam, pResult);
}

CString CFileDialog::GetPathName() const {
    if (m_hWnd != nullptr) {
        // The dialog is open: what is chosen now is not in the structure yet.
        CString path;
        const LRESULT length = ::SendMessageA(::GetParent(m_hWnd), CDM_GETFILEPATH, MAX_PATH,
                                              reinterpret_cast<LPARAM>(path.GetBuffer(MAX_PATH)));
        path.ReleaseBuffer(length < 0 ? 0 : -1);
        return path;
    }
    return CString(m_ofn.lpstrFile);
}

CString CFileDialog::GetFileName() const {
    const CString path = GetPathName();
    return path.Mid(std::max(path.ReverseFind('\\'), path.ReverseFind('/')) + 1);
}

CString CFileDialog::GetFileExt() const {
    const CString name = GetFileName();
    const int dot = name.ReverseFind('.');
    return dot < 0 ? CString() : name.Mid(dot + 1);
}

CString CFileDialog::GetFileTitle() const {
    const CString name = GetFileName();
    const int dot = name.ReverseFind('.');
    return dot < 0 ? name : name.Left(dot);
}

CString CFileDialog::GetFolderPath() const {
    const CString path = GetPathName();
    return path.Left(std::max({path.ReverseFind('\\'), path.ReverseFind('/'), 0}));
}

// A position is a place in the list of names: the folder and then each name, every one ended by a zero; one
// full path when only one file is chosen.

POSITION CFileDialog::GetStartPosition() const {
    return reinterpret_cast<POSITION>(m_ofn.lpstrFile);
}

CString CFileDialog::GetNextPathName(POSITION& pos) const {
    const char* first = m_ofn.lpstrFile;
    const char* name = reinterpret_cast<const char*>(pos);
    const char* second = first + std::strlen(first) + 1;
    const bool several = (m_ofn.Flags & OFN_ALLOWMULTISELECT) != 0 && *second != '\0';
    if (!several) {
        pos = nullptr;
        return CString(first);
    }
    if (name == first) name = second;
    const char* next = name + std::strlen(name) + 1;
    pos = *next == '\0' ? nullptr : reinterpret_cast<POSITION>(const_cast<char*>(next));
    CString path(first);
    if (path.Right(1) != "\\") path += '\\';
    return path + name;
}

// ---- colours

BEGIN_MESSAGE_MAP(CColorDialog, CCommonDialog)
    ON_REGISTERED_MESSAGE(colourAccepted, &CColorDialog::HandleColorOK)
END_MESSAGE_MAP()

COLORREF* CColorDialog::GetSavedCustomColors() {
    static COLORREF colours[16] = {
        RGB(255, 255, 255), RGB(255, 255, 255), RGB(255, 255, 255), RGB(255, 255, 255),
        RGB(255, 255, 255), RGB(255, 255, 255), RGB(255, 255, 255), RGB(255, 255, 255),
        RGB(255, 255, 255), RGB(255, 255, 255), RGB(255, 255, 255), RGB(255, 255, 255),
        RGB(255, 255, 255), RGB(255, 255, 255), RGB(255, 255, 255), RGB(255, 255, 255),
    };
    return colours;
}

CColorDialog::CColorDialog(COLORREF clrInit, DWORD dwFlags, CWnd* pParentWnd)
    : CCommonDialog(pParentWnd), m_cc{} {
    m_cc.lStructSize = sizeof(m_cc);
    m_cc.rgbResult = clrInit;
    m_cc.lpCustColors = GetSavedCustomColors();
    m_cc.lpfnHook = takeDialog;
    m_cc.Flags = dwFlags | CC_ENABLEHOOK | (clrInit != 0 ? CC_RGBINIT : 0);
}

INT_PTR CColorDialog::DoModal() {
    m_cc.hwndOwner = vornafx::modalOwner(m_pParentWnd);
    return run(*this, m_cc, "ChooseColorA");
}

void CColorDialog::SetCurrentColor(COLORREF clr) {
    if (m_hWnd != nullptr) SendMessage(setColour, 0, static_cast<LPARAM>(clr));
}

LRESULT CColorDialog::HandleColorOK(WPARAM, LPARAM lParam) {
    // The hook of the dialog sees a copy of the structure with the colour that is about to be taken.
    const COLORREF former = m_cc.rgbResult;
    if (const auto* chosen = reinterpret_cast<const CHOOSECOLORA*>(lParam))
        m_cc.rgbResult = chosen->rgbResult;
    const BOOL keepOpen = OnColorOK();
    if (keepOpen) m_cc.rgbResult = former;
    return keepOpen;
}

// ---- printers

CPrintDialog::CPrintDialog(BOOL bPrintSetupOnly, DWORD dwFlags, CWnd* pParentWnd)
    : CCommonDialog(pParentWnd), m_pd{} {
    m_pd.lStructSize = sizeof(m_pd);
    m_pd.lpfnPrintHook = takeDialog;
    m_pd.lpfnSetupHook = takeDialog;
    m_pd.Flags =
        dwFlags | PD_ENABLEPRINTHOOK | PD_ENABLESETUPHOOK | (bPrintSetupOnly ? PD_PRINTSETUP : PD_RETURNDC);
}

INT_PTR CPrintDialog::DoModal() {
    m_pd.hwndOwner = vornafx::modalOwner(m_pParentWnd);
    return run(*this, m_pd, "PrintDlgA");
}

BOOL CPrintDialog::GetDefaults() {
    m_pd.Flags |= PD_RETURNDEFAULT;
    auto* printDialog = vornafx::commonDialogFunction<decltype(::PrintDlgA)>("PrintDlgA");
    return printDialog != nullptr && printDialog(&m_pd);
}

LPDEVMODE CPrintDialog::GetDevMode() const {
    return m_pd.hDevMode == nullptr ? nullptr : static_cast<LPDEVMODE>(::GlobalLock(m_pd.hDevMode));
}

namespace {

/// One of the names that a DEVNAMES block holds.
CString nameFrom(HGLOBAL block, WORD DEVNAMES::*offset) {
    CString name;
    const auto* names = block == nullptr ? nullptr : static_cast<const DEVNAMES*>(::GlobalLock(block));
    if (names == nullptr) return name;
    name = reinterpret_cast<const char*>(names) + names->*offset;
    ::GlobalUnlock(block);
    return name;
}

} // namespace

CString CPrintDialog::GetDriverName() const {
    return nameFrom(m_pd.hDevNames, &DEVNAMES::wDriverOffset);
}

CString CPrintDialog::GetDeviceName() const {
    return nameFrom(m_pd.hDevNames, &DEVNAMES::wDeviceOffset);
}

CString CPrintDialog::GetPortName() const {
    return nameFrom(m_pd.hDevNames, &DEVNAMES::wOutputOffset);
}

HDC CPrintDialog::CreatePrinterDC() {
    if (m_pd.hDevNames == nullptr) return nullptr;
    m_pd.hDC = ::CreateDCA(GetDriverName(), GetDeviceName(), GetPortName(), GetDevMode());
    if (m_pd.hDevMode != nullptr) ::GlobalUnlock(m_pd.hDevMode);
    return m_pd.hDC;
}

int CPrintDialog::GetCopies() const {
    if ((m_pd.Flags & PD_USEDEVMODECOPIES) == 0) return m_pd.nCopies;
    const LPDEVMODE mode = GetDevMode();
    if (mode == nullptr) return 1;
    const int copies = mode->dmCopies;
    ::GlobalUnlock(m_pd.hDevMode);
    return copies;
}
