// SPDX-License-Identifier: MIT
#include <afxwin.h>
#include <utility>

namespace {

/// The message loop of a thread that has no thread object.
class PlainLoop {
public:
    /// Waits for one message and dispatches it; false when it was WM_QUIT.
    bool pump() {
        if (::GetMessageA(&m_message, nullptr, 0, 0) <= 0) return false;
        if (!CWnd::WalkPreTranslateTree(nullptr, &m_message)) {
            ::TranslateMessage(&m_message);
            ::DispatchMessageA(&m_message);
        }
        return true;
    }
    const MSG& message() const { return m_message; }

private:
    MSG m_message{};
};

bool queueIsEmpty() {
    MSG next;
    return !::PeekMessageA(&next, nullptr, 0, 0, PM_NOREMOVE);
}

} // namespace

int CWnd::RunModalLoop(DWORD dwFlags) {
    CWinThread* thread = AfxGetThread();
    PlainLoop plain;
    HWND parent = ::GetParent(m_hWnd);
    bool showWhenIdle = (dwFlags & MLF_SHOWONIDLE) != 0 && !IsWindowVisible();
    bool idle = true;
    LPARAM idleCount = 0;
    m_nFlags |= WF_MODALLOOP | WF_CONTINUEMODAL;

    while (ContinueModal()) {
        while (idle && queueIsEmpty()) {
            if (std::exchange(showWhenIdle, false)) {
                ShowWindow(SW_SHOWNORMAL);
                UpdateWindow();
            }
            if ((dwFlags & MLF_NOIDLEMSG) == 0 && parent != nullptr && idleCount == 0)
                ::SendMessageA(parent, WM_ENTERIDLE, MSGF_DIALOGBOX, reinterpret_cast<LPARAM>(m_hWnd));
            if ((dwFlags & MLF_NOKICKIDLE) != 0 || !SendMessage(WM_KICKIDLE, MSGF_DIALOGBOX, idleCount++))
                idle = false;
        }
        if (!ContinueModal()) break; // idle work may have ended it
        const bool alive = thread != nullptr ? thread->PumpMessage() != FALSE : plain.pump();
        const MSG& message = thread != nullptr ? *AfxGetCurrentMessage() : plain.message();
        if (!alive) {
            // The program is ending: the outer loops are to see that as well.
            ::PostQuitMessage(static_cast<int>(message.wParam));
            m_nFlags &= ~UINT(WF_MODALLOOP | WF_CONTINUEMODAL);
            return -1;
        }
        MSG judged = message;
        if (thread == nullptr || thread->IsIdleMessage(&judged)) {
            idle = true;
            idleCount = 0;
        }
    }
    m_nFlags &= ~UINT(WF_MODALLOOP | WF_CONTINUEMODAL);
    return m_nModalResult;
}

void CWnd::EndModalLoop(int nResult) {
    m_nModalResult = nResult;
    if ((m_nFlags & WF_CONTINUEMODAL) == 0) return;
    m_nFlags &= ~UINT(WF_CONTINUEMODAL);
    ::PostMessageA(m_hWnd, WM_NULL, 0, 0); // wakes the loop; goes to the thread when the window is gone
}
