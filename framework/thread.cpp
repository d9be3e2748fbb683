// SPDX-License-Identifier: MIT
// The message loop.

#include "afxwin.h"
#include "thread_state.h"

#include "afxapp_.h"

IMPLEMENT_DYNAMIC(CWinThread, CCmdTarget)

namespace {

/// Not in the platform's headers: the blinking caret's timer.
constexpr UINT systemTimer = 0x0118;

/// What a thread without a thread object of its own remembers of its loop.
thread_local MSG looseMessage{};

} // namespace

CWinThread::CWinThread() : m_hThread(::GetCurrentThread()), m_nThreadID(::GetCurrentThreadId()) {}
CWinThread::~CWinThread() = default;

BOOL CWinThread::InitInstance() {
    return FALSE;
}
LRESULT CWinThread::ProcessWndProcException(CException* e, const MSG* pMsg) {
    return vornafx::resultOfException(*e, *pMsg);
}

CWnd* CWinThread::GetMainWnd() {
    return m_pMainWnd;
}

int CWinThread::ExitInstance() {
    return m_msgCur.message == WM_QUIT ? static_cast<int>(m_msgCur.wParam) : 0;
}

int CWinThread::Run() {
    BOOL idle = TRUE;
    LONG idleCount = 0;
    for (;;) {
        MSG next;
        while (idle && !::PeekMessageA(&next, nullptr, 0, 0, PM_NOREMOVE)) {
            if (!OnIdle(idleCount++)) idle = FALSE;
        }
        do {
            if (!PumpMessage()) return ExitInstance();
            if (IsIdleMessage(&m_msgCur)) {
                idle = TRUE;
                idleCount = 0;
            }
        } while (::PeekMessageA(&next, nullptr, 0, 0, PM_NOREMOVE));
    }
}

BOOL CWinThread::PumpMessage() {
    // GetMessage's third answer, -1, would come again at once for ever: end the loop then as well.
    if (::GetMessageA(&m_msgCur, nullptr, 0, 0) <= 0) return FALSE;
    MSG message = m_msgCur;
    if (!PreTranslateMessage(&message)) {
        ::TranslateMessage(&message);
        ::DispatchMessageA(&message);
    }
    return TRUE;
}

BOOL CWinThread::PreTranslateMessage(MSG* pMsg) {
    if (pMsg->hwnd == nullptr) return FALSE;
    CWnd* const main = GetMainWnd();
    const HWND top = main == nullptr ? nullptr : main->m_hWnd;
    if (CWnd::WalkPreTranslateTree(top, pMsg)) return TRUE;
    // A window outside the main window's tree: the main window may still want the message, for its keys.
    if (top == nullptr || pMsg->hwnd == top || ::IsChild(top, pMsg->hwnd)) return FALSE;
    return main->PreTranslateMessage(pMsg);
}

BOOL CWinThread::OnIdle(LONG lCount) {
    // Nobody keeps a temporary object over idle time, unless the maps are locked.
    if (lCount >= 0) {
        AfxLockTempMaps();
        AfxUnlockTempMaps();
    }
    return lCount < 0;
}

BOOL CWinThread::IsIdleMessage(MSG* pMsg) {
    if (pMsg->message == WM_MOUSEMOVE || pMsg->message == WM_NCMOUSEMOVE) {
        const bool same =
            pMsg->message == m_nMsgLast && pMsg->pt.x == m_ptCursorLast.x && pMsg->pt.y == m_ptCursorLast.y;
        m_ptCursorLast = pMsg->pt;
        m_nMsgLast = pMsg->message;
        return !same;
    }
    return pMsg->message != WM_PAINT && pMsg->message != systemTimer;
}

MSG* AFXAPI AfxGetCurrentMessage() {
    CWinThread* const thread = AfxGetThread();
    return thread != nullptr ? &thread->m_msgCur : &looseMessage;
}

CWinThread* AFXAPI AfxGetThread() {
    CWinThread* const app = AfxGetApp();
    return app != nullptr && app->m_nThreadID == ::GetCurrentThreadId() ? app : nullptr;
}

CWnd* AFXAPI AfxGetMainWnd() {
    CWinThread* const thread = AfxGetThread();
    return thread == nullptr ? nullptr : thread->GetMainWnd();
}

void AFXAPI AfxPostQuitMessage(int nExitCode) {
    ::PostQuitMessage(nExitCode);
}
