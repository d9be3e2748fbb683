// SPDX-License-Identifier: MIT
// The application object: its making, its resources and its message boxes.

#include "afxwin.h"

#include <cstdlib>
#include <cstring>
#include <utility>

IMPLEMENT_DYNAMIC(CWinApp, CWinThread)

namespace {

char emptyCommandLine[1] = "";

void replace(LPCTSTR& name, LPCTSTR value) {
    char* const copy = value == nullptr ? nullptr : ::_strdup(value);
    if (value != nullptr && copy == nullptr) AfxThrowMemoryException();
    std::free(const_cast<char*>(std::exchange(name, copy)));
}

/// The module's file name without its folder and extension.
CString moduleName(HINSTANCE module) {
    CString path;
    for (int size = MAX_PATH; size <= 0x8000; size *= 2) {
        const DWORD length = ::GetModuleFileNameA(module, path.GetBuffer(size), static_cast<DWORD>(size));
        path.ReleaseBuffer(static_cast<int>(length));
        if (length < static_cast<DWORD>(size)) break;
    }
    const CString name = path.Mid(path.ReverseFind('\\') + 1);
    const int dot = name.ReverseFind('.');
    return dot < 0 ? name : name.Left(dot);
}

/// A message box belongs to the window that the user is in.
HWND messageBoxOwner(CWinApp* app) {
    CWnd* const main = app == nullptr ? nullptr : app->GetMainWnd();
    if (main != nullptr && ::IsWindow(main->m_hWnd)) return ::GetLastActivePopup(main->m_hWnd);
    return ::GetActiveWindow();
}

int showMessageBox(CWinApp* app, LPCTSTR text, UINT type) {
    if ((type & MB_ICONMASK) == 0) {
        switch (type & MB_TYPEMASK) {
        case MB_OK:
        case MB_OKCANCEL:
            type |= MB_ICONEXCLAMATION;
            break;
        case MB_YESNO:
        case MB_YESNOCANCEL:
            type |= MB_ICONQUESTION;
            break;
        default:
            break;
        }
    }
    const HWND owner = messageBoxOwner(app);
    if (owner == nullptr) type |= MB_TASKMODAL;
    const CString fallback = moduleName(nullptr);
    const bool named = app != nullptr && app->m_pszAppName != nullptr;
    return ::MessageBoxA(owner, text, named ? app->m_pszAppName : fallback.GetString(), type);
}

int askApplication(LPCTSTR text, UINT type, UINT help) {
    CWinApp* const app = AfxGetApp() != nullptr ? AfxGetApp() : AfxGetAppModuleState()->m_pCurrentWinApp;
    return app != nullptr ? app->DoMessageBox(text, type, help) : showMessageBox(nullptr, text, type);
}

} // namespace

CWinApp::CWinApp(LPCTSTR lpszAppName)
    // A static object lies in its module, which is how a DLL's is told from the program's.
    : m_lpCmdLine(emptyCommandLine), m_pModuleState(vornafx::moduleStateOf(this)),
      m_pPreviousApp(std::exchange(m_pModuleState->m_pCurrentWinApp, this)) {
    m_hInstance = m_pModuleState->m_hCurrentInstanceHandle;
    setNames(lpszAppName);
    m_pModuleState->m_lpszCurrentAppName = m_pszAppName;
}

CWinApp::~CWinApp() {
    if (m_pModuleState->m_pCurrentWinApp == this) {
        m_pModuleState->m_pCurrentWinApp = m_pPreviousApp;
        m_pModuleState->m_lpszCurrentAppName =
            m_pPreviousApp == nullptr ? nullptr : m_pPreviousApp->m_pszAppName;
    }
    for (LPCTSTR name : {m_pszAppName, m_pszExeName, m_pszProfileName, m_pszRegistryKey})
        std::free(const_cast<char*>(name));
}

void CWinApp::setNames(LPCTSTR lpszAppName) {
    const CString exeName = moduleName(m_hInstance);
    replace(m_pszExeName, exeName);
    replace(m_pszAppName, lpszAppName != nullptr ? lpszAppName : exeName.GetString());
    replace(m_pszProfileName, exeName + ".INI");
}

void CWinApp::SetRegistryKey(LPCTSTR lpszRegistryKey) {
    replace(m_pszRegistryKey, lpszRegistryKey);
    replace(m_pszProfileName, m_pszAppName);
}

void CWinApp::SetRegistryKey(UINT nIDRegistryKey) {
    CString key;
    if (key.LoadString(nIDRegistryKey)) SetRegistryKey(key.GetString());
}

BOOL CWinApp::InitApplication() {
    return TRUE;
}

int CWinApp::Run() {
    // Without a window there is nothing that would ever end the loop, unless the program has ended it
    // already.
    MSG quit;
    const bool ended = ::PeekMessageA(&quit, nullptr, WM_QUIT, WM_QUIT, PM_NOREMOVE);
    if (m_pMainWnd == nullptr && !ended) AfxPostQuitMessage(0);
    return CWinThread::Run();
}

int CWinApp::ExitInstance() {
    return CWinThread::ExitInstance();
}

int CWinApp::DoMessageBox(LPCTSTR lpszPrompt, UINT nType, UINT nIDPrompt) {
    CWinApp* const program = AfxGetAppModuleState()->m_pCurrentWinApp;
    const bool ownedByDll = m_pModuleState != AfxGetAppModuleState();
    if (ownedByDll && program != nullptr) return program->DoMessageBox(lpszPrompt, nType, nIDPrompt);
    return showMessageBox(this, lpszPrompt, nType);
}

void CWinApp::DoWaitCursor(int nCode) {
    const int before = m_nWaitCursorCount;
    m_nWaitCursorCount = nCode > 0 ? before + 1 : (nCode < 0 && before > 0 ? before - 1 : before);
    if (m_nWaitCursorCount > 0) {
        const HCURSOR old = ::SetCursor(::LoadCursorA(nullptr, IDC_WAIT));
        if (before == 0) m_hCursorBeforeWait = old;
    } else if (before > 0) {
        ::SetCursor(m_hCursorBeforeWait);
    }
}

HCURSOR CWinApp::LoadCursor(LPCTSTR lpszResourceName) const {
    return ::LoadCursorA(AfxFindResourceHandle(lpszResourceName, RT_GROUP_CURSOR), lpszResourceName);
}
HCURSOR CWinApp::LoadCursor(UINT nIDResource) const {
    return LoadCursor(MAKEINTRESOURCE(nIDResource));
}
HCURSOR CWinApp::LoadStandardCursor(LPCTSTR lpszCursorName) const {
    return ::LoadCursorA(nullptr, lpszCursorName);
}

HICON CWinApp::LoadIcon(LPCTSTR lpszResourceName) const {
    return ::LoadIconA(AfxFindResourceHandle(lpszResourceName, RT_GROUP_ICON), lpszResourceName);
}
HICON CWinApp::LoadIcon(UINT nIDResource) const {
    return LoadIcon(MAKEINTRESOURCE(nIDResource));
}
HICON CWinApp::LoadStandardIcon(LPCTSTR lpszIconName) const {
    return ::LoadIconA(nullptr, lpszIconName);
}

CWinApp* AFXAPI AfxGetApp() {
    return AfxGetModuleState()->m_pCurrentWinApp;
}

LPCTSTR AFXAPI AfxGetAppName() {
    const CWinApp* const app = AfxGetApp();
    return app == nullptr ? AfxGetModuleState()->m_lpszCurrentAppName : app->m_pszAppName;
}

int AFXAPI AfxMessageBox(LPCTSTR lpszText, UINT nType, UINT nIDHelp) {
    return askApplication(lpszText, nType, nIDHelp);
}

int AFXAPI AfxMessageBox(UINT nIDPrompt, UINT nType, UINT nIDHelp) {
    CString text;
    text.LoadString(nIDPrompt);
    return askApplication(text, nType, nIDHelp == static_cast<UINT>(-1) ? nIDPrompt : nIDHelp);
}

void AFXAPI AfxAbort() {
    ::TerminateProcess(::GetCurrentProcess(), 3);
    std::abort();
}

BOOL AFXAPI AfxWinInit(HINSTANCE hInstance, HINSTANCE, LPTSTR lpCmdLine, int nCmdShow) {
    AFX_MODULE_STATE* const state = AfxGetAppModuleState();
    state->m_hCurrentInstanceHandle = hInstance;
    state->m_hCurrentResourceHandle = hInstance;
    if (CWinApp* app = state->m_pCurrentWinApp; app != nullptr) {
        app->m_hInstance = hInstance;
        app->m_lpCmdLine = lpCmdLine == nullptr ? emptyCommandLine : lpCmdLine;
        app->m_nCmdShow = nCmdShow;
        app->m_nThreadID = ::GetCurrentThreadId();
    }
    return TRUE;
}

int AFXAPI AfxWinMain(HINSTANCE hInstance, HINSTANCE hPrevInstance, LPTSTR lpCmdLine, int nCmdShow) {
    CWinApp* const app = AfxGetAppModuleState()->m_pCurrentWinApp;
    if (app == nullptr || !AfxWinInit(hInstance, hPrevInstance, lpCmdLine, nCmdShow)) return -1;
    if (!app->InitApplication()) return -1;
    if (app->InitInstance()) return app->Run();
    if (app->m_pMainWnd != nullptr) app->m_pMainWnd->DestroyWindow();
    return app->ExitInstance();
}
