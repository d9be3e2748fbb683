// SPDX-License-Identifier: MIT
#include "thread_state.h"

// The life of a window: its handle, its creation, its window procedure, its end.

using vornafx::ThreadState;
using vornafx::threadState;

IMPLEMENT_DYNCREATE(CWnd, CCmdTarget)

BEGIN_MESSAGE_MAP(CWnd, CCmdTarget)
    ON_WM_NCDESTROY()
END_MESSAGE_MAP()

const CWnd CWnd::wndTop(HWND_TOP);
const CWnd CWnd::wndBottom(HWND_BOTTOM);
const CWnd CWnd::wndTopMost(HWND_TOPMOST);
const CWnd CWnd::wndNoTopMost(HWND_NOTOPMOST);

CWnd::~CWnd() {
    if (m_hWnd == nullptr || !::IsWindow(m_hWnd)) return;
    // A window of another thread cannot be destroyed from here; it must at least not call back any more.
    if (!CWnd::DestroyWindow() && m_hWnd != nullptr) CWnd::UnsubclassWindow();
}

// ---- handles

CWnd* CWnd::FromHandle(HWND hWnd) {
    CWnd* window = threadState().windows.fromHandle(hWnd, [] { return std::make_unique<CWnd>(); });
    if (window != nullptr) window->m_hWnd = hWnd;
    return window;
}

CWnd* CWnd::FromHandlePermanent(HWND hWnd) {
    return hWnd == nullptr ? nullptr : threadState().windows.permanent(hWnd);
}

void CWnd::DeleteTempMap() {
    threadState().windows.deleteTemporaries();
}

BOOL CWnd::Attach(HWND hWndNew) {
    if (hWndNew == nullptr || m_hWnd != nullptr || FromHandlePermanent(hWndNew) != nullptr) return FALSE;
    threadState().windows.setPermanent(hWndNew, this);
    m_hWnd = hWndNew;
    return TRUE;
}

HWND CWnd::Detach() {
    HWND window = std::exchange(m_hWnd, nullptr);
    if (window != nullptr) threadState().windows.removePermanent(window, this);
    return window;
}

// ---- creation

namespace {

WNDPROC setWindowProcedure(HWND window, WNDPROC procedure) {
    return reinterpret_cast<WNDPROC>(
        ::SetWindowLongPtrA(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(procedure)));
}

WNDPROC windowProcedure(HWND window) {
    return reinterpret_cast<WNDPROC>(::GetWindowLongPtrA(window, GWLP_WNDPROC));
}

/// Gives the window that is just being created to the object that waits for one, before its first message.
LRESULT CALLBACK takeWindowBeingMade(int code, WPARAM wParam, LPARAM lParam) {
    ThreadState& state = threadState();
    HWND window = reinterpret_cast<HWND>(wParam);
    // The system may make its input method window first.
    if (code == HCBT_CREATEWND && state.windowBeingMade != nullptr &&
        (::GetClassLongPtrA(window, GCL_STYLE) & CS_IME) == 0)
        std::exchange(state.windowBeingMade, nullptr)->SubclassWindow(window);
    return ::CallNextHookEx(state.creationHook, code, wParam, lParam);
}

} // namespace

void AFXAPI AfxHookWindowCreate(CWnd* pWnd) {
    ThreadState& state = threadState();
    if (state.creationHook == nullptr)
        state.creationHook =
            ::SetWindowsHookExA(WH_CBT, takeWindowBeingMade, nullptr, ::GetCurrentThreadId());
    if (state.creationHook == nullptr) AfxThrowMemoryException();
    state.windowBeingMade = pWnd;
}

BOOL AFXAPI AfxUnhookWindowCreate() {
    ThreadState& state = threadState();
    if (HHOOK hook = std::exchange(state.creationHook, nullptr)) ::UnhookWindowsHookEx(hook);
    return std::exchange(state.windowBeingMade, nullptr) == nullptr;
}

BOOL CWnd::PreCreateWindow(CREATESTRUCT& cs) {
    if (cs.lpszClass == nullptr)
        cs.lpszClass =
            AfxRegisterWndClass(CS_DBLCLKS | CS_HREDRAW | CS_VREDRAW, ::LoadCursorA(nullptr, IDC_ARROW));
    return TRUE;
}

BOOL CWnd::Create(LPCTSTR lpszClassName, LPCTSTR lpszWindowName, DWORD dwStyle, const RECT& rect,
                  CWnd* pParentWnd, UINT nID, CCreateContext* pContext) {
    if (pParentWnd == nullptr || (dwStyle & WS_POPUP) != 0) return FALSE;
    return CreateEx(0, lpszClassName, lpszWindowName, dwStyle | WS_CHILD, rect, pParentWnd, nID, pContext);
}

BOOL CWnd::CreateEx(DWORD dwExStyle, LPCTSTR lpszClassName, LPCTSTR lpszWindowName, DWORD dwStyle,
                    const RECT& rect, CWnd* pParentWnd, UINT nID, LPVOID lpParam) {
    return CreateEx(dwExStyle, lpszClassName, lpszWindowName, dwStyle, rect.left, rect.top,
                    rect.right - rect.left, rect.bottom - rect.top, HandleOf(pParentWnd),
                    reinterpret_cast<HMENU>(UINT_PTR{nID}), lpParam);
}

BOOL CWnd::CreateEx(DWORD dwExStyle, LPCTSTR lpszClassName, LPCTSTR lpszWindowName, DWORD dwStyle, int x,
                    int y, int nWidth, int nHeight, HWND hWndParent, HMENU nIDorHMenu, LPVOID lpParam) {
    if (m_hWnd != nullptr) return FALSE;
    CREATESTRUCTA cs{};
    cs.dwExStyle = dwExStyle;
    cs.lpszClass = lpszClassName;
    cs.lpszName = lpszWindowName;
    cs.style = static_cast<LONG>(dwStyle);
    cs.x = x;
    cs.y = y;
    cs.cx = nWidth;
    cs.cy = nHeight;
    cs.hwndParent = hWndParent;
    cs.hMenu = nIDorHMenu;
    cs.hInstance = AfxGetInstanceHandle();
    cs.lpCreateParams = lpParam;
    if (!PreCreateWindow(cs)) {
        PostNcDestroy();
        return FALSE;
    }
    AfxHookWindowCreate(this);
    HWND window =
        ::CreateWindowExA(cs.dwExStyle, cs.lpszClass, cs.lpszName, static_cast<DWORD>(cs.style), cs.x, cs.y,
                          cs.cx, cs.cy, cs.hwndParent, cs.hMenu, cs.hInstance, cs.lpCreateParams);
    // When it failed before there was a window, no message has told the object so. Otherwise the object may
    // be gone already.
    if (!AfxUnhookWindowCreate()) PostNcDestroy();
    return window != nullptr;
}

BOOL CWnd::SubclassWindow(HWND hWnd) {
    if (!Attach(hWnd)) return FALSE;
    PreSubclassWindow();
    WNDPROC former = setWindowProcedure(hWnd, AfxWndProc);
    WNDPROC* super = GetSuperWndProcAddr();
    if (former != AfxWndProc && *super == nullptr) *super = former;
    return TRUE;
}

BOOL CWnd::SubclassDlgItem(UINT nID, CWnd* pParent) {
    return SubclassWindow(::GetDlgItem(pParent->m_hWnd, static_cast<int>(nID)));
}

HWND CWnd::UnsubclassWindow() {
    WNDPROC* super = GetSuperWndProcAddr();
    if (*super != nullptr && windowProcedure(m_hWnd) == AfxWndProc) setWindowProcedure(m_hWnd, *super);
    *super = nullptr;
    return Detach();
}

// ---- the window procedure

namespace {

/// Makes a message the current one for as long as it is handled.
class CurrentMessage {
public:
    CurrentMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
        : m_former(threadState().currentMessage) {
        MSG& now = threadState().currentMessage;
        now = {};
        now.hwnd = window;
        now.message = message;
        now.wParam = wParam;
        now.lParam = lParam;
    }
    ~CurrentMessage() { threadState().currentMessage = m_former; }
    CurrentMessage(const CurrentMessage&) = delete;
    CurrentMessage& operator=(const CurrentMessage&) = delete;

private:
    MSG m_former;
};

constexpr UINT queryWindowProcedure = 0x0360; // asks whether a window is the framework's

} // namespace

LRESULT vornafx::resultOfException(CException& exception, const MSG& message) {
    if (message.message == WM_CREATE) return -1;
    if (message.message == WM_PAINT) {
        ::ValidateRect(message.hwnd, nullptr);
        return 0;
    }
    if (!exception.IsKindOf(RUNTIME_CLASS(CUserException))) exception.ReportError(MB_ICONSTOP);
    return message.message == WM_COMMAND ? TRUE : 0;
}

LRESULT AFXAPI AfxCallWndProc(CWnd* pWnd, HWND hWnd, UINT nMsg, WPARAM wParam, LPARAM lParam) {
    CurrentMessage current(hWnd, nMsg, wParam, lParam);
    try {
        return pWnd->WindowProc(nMsg, wParam, lParam);
    } catch (CException* exception) {
        const MSG message = threadState().currentMessage;
        CWinThread* thread = AfxGetThread();
        LRESULT result = thread != nullptr ? thread->ProcessWndProcException(exception, &message)
                                           : vornafx::resultOfException(*exception, message);
        exception->Delete();
        return result;
    }
}

LRESULT CALLBACK AfxWndProc(HWND hWnd, UINT nMsg, WPARAM wParam, LPARAM lParam) {
    if (nMsg == queryWindowProcedure) return 1;
    CWnd* window = CWnd::FromHandlePermanent(hWnd);
    if (window == nullptr) return ::DefWindowProcA(hWnd, nMsg, wParam, lParam);
    return AfxCallWndProc(window, hWnd, nMsg, wParam, lParam);
}

LRESULT CWnd::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    LRESULT result = 0;
    if (!OnWndMsg(message, wParam, lParam, &result)) result = DefWindowProc(message, wParam, lParam);
    return result;
}

LRESULT CWnd::DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    WNDPROC super = *GetSuperWndProcAddr();
    if (super == nullptr) return ::DefWindowProcA(m_hWnd, message, wParam, lParam);
    return ::CallWindowProcA(super, m_hWnd, message, wParam, lParam);
}

LRESULT CWnd::Default() {
    const MSG& message = threadState().currentMessage;
    return DefWindowProc(message.message, message.wParam, message.lParam);
}

const MSG* CWnd::GetCurrentMessage() {
    return &threadState().currentMessage;
}

// ---- the end

BOOL CWnd::DestroyWindow() {
    if (m_hWnd == nullptr) return FALSE;
    // WM_NCDESTROY detaches a permanent object, which may even be deleted then; a temporary one is not told.
    const bool permanent = FromHandlePermanent(m_hWnd) == this;
    BOOL destroyed = ::DestroyWindow(m_hWnd);
    if (destroyed && !permanent) Detach();
    return destroyed;
}

void CWnd::OnNcDestroy() {
    if (CWinThread* thread = AfxGetThread()) {
        if (thread->m_pActiveWnd == this) thread->m_pActiveWnd = nullptr;
        if (thread->m_pMainWnd == this) {
            thread->m_pMainWnd = nullptr;
            AfxPostQuitMessage(0);
        }
    }
    const WNDPROC before = windowProcedure(m_hWnd);
    Default();
    // Unless somebody has subclassed on top, the window gets its own procedure back for what still comes.
    WNDPROC* super = GetSuperWndProcAddr();
    if (windowProcedure(m_hWnd) == before && *super != nullptr) setWindowProcedure(m_hWnd, *super);
    *super = nullptr;
    Detach();
    // A modal window that goes without having been ended must not leave its loop waiting for ever.
    if ((m_nFlags & WF_CONTINUEMODAL) != 0) EndModalLoop(-1);
    PostNcDestroy();
}
