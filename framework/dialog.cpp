// SPDX-License-Identifier: MIT
#include "dialog_detail.h"
#include <utility>

IMPLEMENT_DYNAMIC(CDialog, CWnd)

BEGIN_MESSAGE_MAP(CDialog, CWnd)
    ON_COMMAND(IDOK, &CDialog::OnOK)
    ON_COMMAND(IDCANCEL, &CDialog::OnCancel)
    ON_MESSAGE(WM_INITDIALOG, &CDialog::HandleInitDialog)
END_MESSAGE_MAP()

CDialog::CDialog(LPCTSTR lpszTemplateName, CWnd* pParentWnd)
    : m_lpszTemplateName(lpszTemplateName), m_pParentWnd(pParentWnd) {
    if (IS_INTRESOURCE(lpszTemplateName)) m_nIDHelp = LOWORD(reinterpret_cast<UINT_PTR>(lpszTemplateName));
}

CDialog::CDialog(UINT nIDTemplate, CWnd* pParentWnd) : CDialog(MAKEINTRESOURCEA(nIDTemplate), pParentWnd) {}

CDialog::~CDialog() {
    if (m_hWnd != nullptr) CWnd::DestroyWindow();
}

// ---- making the window

/// What the system calls for the dialog's own share of a message; all but the start comes through the message
/// maps.
INT_PTR CALLBACK CDialog::DialogProc(HWND window, UINT message, WPARAM, LPARAM) {
    if (message != WM_INITDIALOG) return FALSE;
    auto* dialog = dynamic_cast<CDialog*>(CWnd::FromHandlePermanent(window));
    return dialog == nullptr || dialog->OnInitDialog();
}

BOOL CDialog::MakeWindow(LPCDLGTEMPLATE dialogTemplate, HWND parent, HINSTANCE instance) {
    const vornafx::TemplatePlace place = vornafx::placeOf(dialogTemplate);
    m_bTemplatePlaces = place.x != 0 || place.y != 0 ||
                        (place.style & (WS_CHILD | DS_CENTER | DS_CENTERMOUSE | DS_ABSALIGN)) != 0;
    AfxHookWindowCreate(this);
    HWND window = ::CreateDialogIndirectParamA(instance, dialogTemplate, parent, DialogProc, 0);
    if (!AfxUnhookWindowCreate()) PostNcDestroy();
    return window != nullptr;
}

BOOL CDialog::Create(UINT nIDTemplate, CWnd* pParentWnd) {
    return Create(MAKEINTRESOURCEA(nIDTemplate), pParentWnd);
}

BOOL CDialog::Create(LPCTSTR lpszTemplateName, CWnd* pParentWnd) {
    m_lpszTemplateName = lpszTemplateName;
    HINSTANCE instance = AfxFindResourceHandle(lpszTemplateName, RT_DIALOG);
    LPCDLGTEMPLATE dialogTemplate = vornafx::findTemplate(instance, lpszTemplateName);
    if (m_hWnd != nullptr || dialogTemplate == nullptr) return FALSE;
    HWND parent = pParentWnd != nullptr ? pParentWnd->m_hWnd : AfxGetMainWnd()->GetSafeHwnd();
    return MakeWindow(dialogTemplate, parent, instance);
}

BOOL CDialog::CreateIndirect(LPCDLGTEMPLATE lpDialogTemplate, CWnd* pParentWnd, void* lpDialogInit) {
    if (m_hWnd != nullptr || lpDialogTemplate == nullptr) return FALSE;
    m_lpDialogInit = lpDialogInit;
    HWND parent = pParentWnd != nullptr ? pParentWnd->m_hWnd : AfxGetMainWnd()->GetSafeHwnd();
    return MakeWindow(lpDialogTemplate, parent, AfxGetInstanceHandle());
}

BOOL CDialog::InitModalIndirect(LPCDLGTEMPLATE lpDialogTemplate, CWnd* pParentWnd, void* lpDialogInit) {
    if (lpDialogTemplate == nullptr) return FALSE;
    m_lpDialogTemplate = lpDialogTemplate;
    m_lpDialogInit = lpDialogInit;
    if (m_pParentWnd == nullptr) m_pParentWnd = pParentWnd;
    return TRUE;
}

// ---- running it

namespace {

/// The window that the user is to finish a dialog without a parent for: this module's main window, else the
/// program's, else whichever is active.
HWND mainWindow() {
    CWinApp* const program = AfxGetAppModuleState()->m_pCurrentWinApp;
    for (CWinThread* thread : {AfxGetThread(), static_cast<CWinThread*>(program)}) {
        CWnd* const main = thread == nullptr ? nullptr : thread->GetMainWnd();
        if (main != nullptr && main->m_hWnd != nullptr) return main->m_hWnd;
    }
    return ::GetActiveWindow();
}

} // namespace

HWND vornafx::modalOwner(CWnd* parent) {
    HWND window = parent != nullptr ? parent->m_hWnd : mainWindow();
    while (window != nullptr && (::GetWindowLongPtrA(window, GWL_STYLE) & WS_CHILD) != 0)
        window = ::GetParent(window);
    // The main window may have a modal window up already; that one is the owner then.
    if (parent == nullptr && window != nullptr) window = ::GetLastActivePopup(window);
    return window == ::GetDesktopWindow() ? nullptr : window;
}

namespace {

/// The window over which a modal dialog comes up, disabled until the scope ends.
class ModalOwner {
public:
    explicit ModalOwner(CWnd* parent) : m_window(vornafx::modalOwner(parent)) {
        m_disabled = m_window != nullptr && ::IsWindowEnabled(m_window);
        if (m_disabled) ::EnableWindow(m_window, FALSE);
    }
    ~ModalOwner() { enable(); }
    ModalOwner(const ModalOwner&) = delete;
    ModalOwner& operator=(const ModalOwner&) = delete;

    HWND window() const { return m_window; }
    void enable() {
        if (std::exchange(m_disabled, false)) ::EnableWindow(m_window, TRUE);
    }

private:
    HWND m_window;
    bool m_disabled = false;
};

} // namespace

INT_PTR CDialog::DoModal() {
    HINSTANCE instance = AfxGetResourceHandle();
    LPCDLGTEMPLATE dialogTemplate = m_lpDialogTemplate;
    if (dialogTemplate == nullptr && m_lpszTemplateName != nullptr) {
        instance = AfxFindResourceHandle(m_lpszTemplateName, RT_DIALOG);
        dialogTemplate = vornafx::findTemplate(instance, m_lpszTemplateName);
    }
    if (dialogTemplate == nullptr || m_hWnd != nullptr) return -1;
    return RunModal(dialogTemplate, instance);
}

INT_PTR CDialog::RunModal(LPCDLGTEMPLATE dialogTemplate, HINSTANCE instance) {
    ModalOwner owner(m_pParentWnd);
    m_nModalResult = -1;
    // Set before the window comes, so that EndDialog in OnInitDialog finds a loop to end.
    m_nFlags |= WF_CONTINUEMODAL;
    try {
        if (MakeWindow(dialogTemplate, owner.window(), instance) && ContinueModal()) {
            const bool noIdle = (GetStyle() & DS_NOIDLEMSG) != 0;
            RunModalLoop(MLF_SHOWONIDLE | (noIdle ? MLF_NOIDLEMSG : 0));
        }
    } catch (CException* exception) {
        exception->ReportError(MB_ICONSTOP);
        exception->Delete();
        m_nModalResult = -1;
    }
    m_nFlags &= ~UINT(WF_CONTINUEMODAL);
    const int result = m_nModalResult;
    if (m_hWnd != nullptr)
        SetWindowPos(nullptr, 0, 0, 0, 0,
                     SWP_HIDEWINDOW | SWP_NOSIZE | SWP_NOMOVE | SWP_NOACTIVATE | SWP_NOZORDER);
    // Enabled before the dialog goes: otherwise another program's window would be activated.
    owner.enable();
    if (owner.window() != nullptr && ::GetActiveWindow() == m_hWnd) ::SetActiveWindow(owner.window());
    DestroyWindow();
    return result;
}

void CDialog::EndDialog(int nResult) {
    if (m_nFlags & (WF_MODALLOOP | WF_CONTINUEMODAL)) EndModalLoop(nResult);
    if (m_hWnd != nullptr) ::EndDialog(m_hWnd, nResult);
}

// ---- what happens in it

namespace {

/// Data that a program hands over in memory ends itself with an id of 0; its length is not told.
std::span<const std::byte> initialisationData(const void* data) {
    constexpr size_t plenty = 0x10000;
    return {static_cast<const std::byte*>(data), plenty};
}

} // namespace

LRESULT CDialog::HandleInitDialog(WPARAM, LPARAM) {
    PreInitDialog();
    const BOOL filled = m_lpDialogInit != nullptr
                            ? vornafx::fillControls(m_hWnd, initialisationData(m_lpDialogInit))
                            : ExecuteDlgInit(m_lpszTemplateName);
    if (!filled) {
        EndDialog(-1);
        return FALSE;
    }
    CenterUnlessPlaced();
    return Default();
}

void CDialog::CenterUnlessPlaced() {
    if (!m_bTemplatePlaces && !IsWindowVisible()) CenterWindow();
}

BOOL CDialog::OnInitDialog() {
    if (UpdateData(FALSE)) return TRUE;
    EndDialog(-1);
    return FALSE;
}

void CDialog::OnOK() {
    if (UpdateData(TRUE)) EndDialog(IDOK);
}

void CDialog::OnCancel() {
    EndDialog(IDCANCEL);
}

void CDialog::GotoDlgCtrl(CWnd* pWndCtrl) {
    SendMessage(WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(pWndCtrl->m_hWnd), TRUE);
}

BOOL CDialog::PreTranslateMessage(MSG* pMsg) {
    return CWnd::PreTranslateMessage(pMsg) || PreTranslateInput(pMsg);
}

BOOL CDialog::OnCmdMsg(UINT nID, int nCode, void* pExtra, AFX_CMDHANDLERINFO* pHandlerInfo) {
    if (CWnd::OnCmdMsg(nID, nCode, pExtra, pHandlerInfo)) return TRUE;
    // Only commands of the application go on; what a control tells is the dialog's alone.
    const bool command = nCode == CN_COMMAND || nCode == static_cast<int>(CN_UPDATE_COMMAND_UI);
    if (!command || nID < 0x8000 || nID >= 0xF000) return FALSE;
    CWnd* owner = GetParent();
    if (owner != nullptr && owner->OnCmdMsg(nID, nCode, pExtra, pHandlerInfo)) return TRUE;
    CWinThread* thread = AfxGetThread();
    return thread != nullptr && thread->OnCmdMsg(nID, nCode, pExtra, pHandlerInfo);
}
