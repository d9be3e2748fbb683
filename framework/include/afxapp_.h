// SPDX-License-Identifier: MIT
#pragma once

#include "afxcmdtarget_.h"
#include "afxstat_.h"

class CWnd;

/// A thread with a message loop. The framework's subset starts none of its own: the program's thread is its
/// CWinApp.
class VORNAFX_API CWinThread : public CCmdTarget {
    DECLARE_DYNAMIC(CWinThread)
public:
    CWinThread();
    ~CWinThread() override;

    operator HANDLE() const { return m_hThread; }

    /// Called once before the loop; FALSE ends the program with what ExitInstance returns.
    virtual BOOL InitInstance();
    /// The message loop, with OnIdle when the queue is empty; returns the program's exit status.
    virtual int Run();
    /// Sees each message before it is translated; TRUE when it has been dealt with.
    virtual BOOL PreTranslateMessage(MSG* pMsg);
    /// Waits for a message and dispatches it; FALSE when it is WM_QUIT.
    virtual BOOL PumpMessage();
    /// Called with a growing count while the queue is empty, until it returns FALSE.
    virtual BOOL OnIdle(LONG lCount);
    /// FALSE for messages after which OnIdle need not run again (mouse moves in place, timers of the caret).
    virtual BOOL IsIdleMessage(MSG* pMsg);
    /// Decides what a message results in whose handler threw, and tells the user: -1 for WM_CREATE, and a
    /// WM_PAINT that fails is not repeated. The exception is deleted afterwards.
    virtual LRESULT ProcessWndProcException(CException* e, const MSG* pMsg);
    /// Called once after the loop; its result is the exit status, by default that of WM_QUIT.
    virtual int ExitInstance();
    /// The main window; null when there is none.
    virtual CWnd* GetMainWnd();

    CWnd* m_pMainWnd = nullptr; ///< The loop ends when this window is destroyed.
    CWnd* m_pActiveWnd = nullptr;
    BOOL m_bAutoDelete = FALSE;
    HANDLE m_hThread = nullptr;
    DWORD m_nThreadID = 0;

protected:
    MSG m_msgCur{};
    POINT m_ptCursorLast{};
    UINT m_nMsgLast = 0;

private:
    friend VORNAFX_API MSG* AFXAPI AfxGetCurrentMessage();
};

/// The application object of a module: a program has one, static; a DLL may have one of its own, which is
/// what AfxGetApp returns while the DLL's module state is current, and only then.
class VORNAFX_API CWinApp : public CWinThread {
    DECLARE_DYNAMIC(CWinApp)
public:
    explicit CWinApp(LPCTSTR lpszAppName = nullptr);
    ~CWinApp() override;

    virtual BOOL InitApplication();
    int Run() override;
    int ExitInstance() override;
    /// Shows what AfxMessageBox is asked to show. A DLL's application object hands it to the program's.
    virtual int DoMessageBox(LPCTSTR lpszPrompt, UINT nType, UINT nIDPrompt);
    /// 1 shows the wait cursor, -1 takes it back, 0 shows it again where it is wanted.
    virtual void DoWaitCursor(int nCode);

    HCURSOR LoadCursor(LPCTSTR lpszResourceName) const;
    HCURSOR LoadCursor(UINT nIDResource) const;
    HCURSOR LoadStandardCursor(LPCTSTR lpszCursorName) const;
    HICON LoadIcon(LPCTSTR lpszResourceName) const;
    HICON LoadIcon(UINT nIDResource) const;
    HICON LoadStandardIcon(LPCTSTR lpszIconName) const;

    // The profile: HKEY_CURRENT_USER\Software\<registry key>\<profile name> after SetRegistryKey, else the
    // INI file `m_pszProfileName`. Functions that write return 0 on failure.

    void SetRegistryKey(LPCTSTR lpszRegistryKey);
    void SetRegistryKey(UINT nIDRegistryKey);
    /// The default when the value is missing or not a number.
    UINT GetProfileInt(LPCTSTR lpszSection, LPCTSTR lpszEntry, int nDefault);
    BOOL WriteProfileInt(LPCTSTR lpszSection, LPCTSTR lpszEntry, int nValue);
    CString GetProfileString(LPCTSTR lpszSection, LPCTSTR lpszEntry, LPCTSTR lpszDefault = nullptr);
    /// A null value removes the entry, a null entry the section.
    BOOL WriteProfileString(LPCTSTR lpszSection, LPCTSTR lpszEntry, LPCTSTR lpszValue);
    /// On success the caller owns `*ppData` and frees it with `delete[]`. On failure it is null and `*pBytes`
    /// 0.
    BOOL GetProfileBinary(LPCTSTR lpszSection, LPCTSTR lpszEntry, LPBYTE* ppData, UINT* pBytes);
    BOOL WriteProfileBinary(LPCTSTR lpszSection, LPCTSTR lpszEntry, LPBYTE pData, UINT nBytes);
    /// An open key of the profile, made when missing, for the caller to close; null on failure.
    HKEY GetAppRegistryKey();
    HKEY GetSectionKey(LPCTSTR lpszSection);

    HINSTANCE m_hInstance = nullptr;
    LPTSTR m_lpCmdLine = nullptr; ///< The command line without the program's name.
    int m_nCmdShow = SW_SHOWNORMAL;
    // These strings are the object's, from the C heap: to change one, `free` it and set a `_strdup`.
    LPCTSTR m_pszAppName = nullptr; ///< Titles message boxes; after SetRegistryKey also the profile's name.
    LPCTSTR m_pszExeName = nullptr; ///< The module's file name without folder and extension.
    LPCTSTR m_pszProfileName = nullptr; ///< By default the file name with ".INI".
    LPCTSTR m_pszRegistryKey = nullptr;

private:
    void setNames(LPCTSTR lpszAppName);

    AFX_MODULE_STATE* m_pModuleState;

    CWinApp* m_pPreviousApp; // the module's application object before this one
    int m_nWaitCursorCount = 0;
    HCURSOR m_hCursorBeforeWait = nullptr;
};

/// The application object of the current module state, or null.
VORNAFX_API CWinApp* AFXAPI AfxGetApp();
/// The thread object of this thread, or null.
VORNAFX_API CWinThread* AFXAPI AfxGetThread();
VORNAFX_API CWnd* AFXAPI AfxGetMainWnd();
/// The message that this thread's loop has taken last.
VORNAFX_API MSG* AFXAPI AfxGetCurrentMessage();
VORNAFX_API LPCTSTR AFXAPI AfxGetAppName();

/// Shows a message box owned by the active window; the button chosen, 0 on failure.
VORNAFX_API int AFXAPI AfxMessageBox(LPCTSTR lpszText, UINT nType = MB_OK, UINT nIDHelp = 0);
VORNAFX_API int AFXAPI AfxMessageBox(UINT nIDPrompt, UINT nType = MB_OK,
                                     UINT nIDHelp = static_cast<UINT>(-1));

/// Ends the program at once, with status 3.
[[noreturn]] VORNAFX_API void AFXAPI AfxAbort();
VORNAFX_API void AFXAPI AfxPostQuitMessage(int nExitCode);
/// Tells the application object its instance, command line and names. AfxWinMain does it; a program with a
/// `main` of its own calls it first.
VORNAFX_API BOOL AFXAPI AfxWinInit(HINSTANCE hInstance, HINSTANCE hPrevInstance, LPTSTR lpCmdLine,
                                   int nCmdShow);
/// Runs the program's application object from InitInstance to ExitInstance; returns the exit status.
VORNAFX_API int AFXAPI AfxWinMain(HINSTANCE hInstance, HINSTANCE hPrevInstance, LPTSTR lpCmdLine,
                                  int nCmdShow);
