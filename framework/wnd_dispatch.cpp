// SPDX-License-Identifier: MIT
#include "stored_handler.h"
#include "thread_state.h"

// How a window message finds its handler.

using vornafx::handlerAs;
using vornafx::threadState;

namespace {

struct WindowMessage {
    UINT message;
    WPARAM wParam;
    LPARAM lParam;

    UINT low() const { return LOWORD(wParam); }
    UINT high() const { return HIWORD(wParam); }
    CPoint point() const { return CPoint(lParam); }
    CWnd* firstWindow() const { return CWnd::FromHandle(reinterpret_cast<HWND>(wParam)); }
    CWnd* secondWindow() const { return CWnd::FromHandle(reinterpret_cast<HWND>(lParam)); }
    CDC* dc() const { return CDC::FromHandle(reinterpret_cast<HDC>(wParam)); }
};

constexpr UINT firstRegisteredMessage = 0xC000;

const AFX_MSGMAP_ENTRY* findMessage(const AFX_MSGMAP* map, UINT message) {
    for (; map != nullptr; map = map->pfnGetBaseMap == nullptr ? nullptr : map->pfnGetBaseMap()) {
        for (const AFX_MSGMAP_ENTRY* entry = map->lpEntries; entry->nSig != AfxSig_end; ++entry) {
            if (entry->nMessage == message && message < firstRegisteredMessage) return entry;
            if (message >= firstRegisteredMessage && entry->nMessage == firstRegisteredMessage &&
                *reinterpret_cast<const UINT*>(entry->nSig) == message)
                return entry;
        }
    }
    return nullptr;
}

template <typename Handler, typename... Args>
auto invoke(CWnd& window, AFX_PMSG handler, Args... args) {
    return (window.*handlerAs<Handler>(handler))(args...);
}

LRESULT callWithResult(CWnd& w, const AFX_MSGMAP_ENTRY& entry, const WindowMessage& m) {
    switch (entry.nSig) {
    case AfxSig_bv:
        return invoke<BOOL (CWnd::*)()>(w, entry.pfn);
    case AfxSig_uv:
        return invoke<UINT (CWnd::*)()>(w, entry.pfn);
    case AfxSig_is:
        return invoke<int (CWnd::*)(LPCREATESTRUCT)>(w, entry.pfn,
                                                     reinterpret_cast<LPCREATESTRUCT>(m.lParam));
    case AfxSig_bD:
        return invoke<BOOL (CWnd::*)(CDC*)>(w, entry.pfn, m.dc());
    case AfxSig_buzp:
        return invoke<BOOL (CWnd::*)(UINT, short, CPoint)>(w, entry.pfn, m.low(),
                                                           static_cast<short>(m.high()), m.point());
    case AfxSig_bWuu:
        return invoke<BOOL (CWnd::*)(CWnd*, UINT, UINT)>(w, entry.pfn, m.firstWindow(), LOWORD(m.lParam),
                                                         HIWORD(m.lParam));
    case AfxSig_hDWu:
        return reinterpret_cast<LRESULT>(invoke<HBRUSH (CWnd::*)(CDC*, CWnd*, UINT)>(
            w, entry.pfn, m.dc(), m.secondWindow(), m.message - WM_CTLCOLORMSGBOX));
    default: // registered messages keep the address of their number where others have a signature
        return invoke<LRESULT (CWnd::*)(WPARAM, LPARAM)>(w, entry.pfn, m.wParam, m.lParam);
    }
}

/// Calls a handler without a result; FALSE when the line's handler has one.
bool callWithoutResult(CWnd& w, const AFX_MSGMAP_ENTRY& entry, const WindowMessage& m) {
    switch (entry.nSig) {
    case AfxSig_vv:
        invoke<void (CWnd::*)()>(w, entry.pfn);
        return true;
    case AfxSig_vuii:
        invoke<void (CWnd::*)(UINT, int, int)>(w, entry.pfn, static_cast<UINT>(m.wParam), LOWORD(m.lParam),
                                               HIWORD(m.lParam));
        return true;
    case AfxSig_vii:
        invoke<void (CWnd::*)(int, int)>(w, entry.pfn, m.point().x, m.point().y);
        return true;
    case AfxSig_vW:
        invoke<void (CWnd::*)(CWnd*)>(w, entry.pfn, m.firstWindow());
        return true;
    case AfxSig_vlW:
        invoke<void (CWnd::*)(CWnd*)>(w, entry.pfn, m.secondWindow());
        return true;
    case AfxSig_vuWb:
        invoke<void (CWnd::*)(UINT, CWnd*, BOOL)>(w, entry.pfn, m.low(), m.secondWindow(),
                                                  static_cast<BOOL>(m.high()));
        return true;
    case AfxSig_vbu:
        invoke<void (CWnd::*)(BOOL, UINT)>(w, entry.pfn, static_cast<BOOL>(m.wParam),
                                           static_cast<UINT>(m.lParam));
        return true;
    case AfxSig_vb:
        invoke<void (CWnd::*)(BOOL)>(w, entry.pfn, static_cast<BOOL>(m.wParam));
        return true;
    case AfxSig_vt:
        invoke<void (CWnd::*)(UINT_PTR)>(w, entry.pfn, m.wParam);
        return true;
    case AfxSig_vuuu:
        invoke<void (CWnd::*)(UINT, UINT, UINT)>(w, entry.pfn, static_cast<UINT>(m.wParam), LOWORD(m.lParam),
                                                 HIWORD(m.lParam));
        return true;
    case AfxSig_vup:
        invoke<void (CWnd::*)(UINT, CPoint)>(w, entry.pfn, static_cast<UINT>(m.wParam), m.point());
        return true;
    case AfxSig_vul:
        invoke<void (CWnd::*)(UINT, LPARAM)>(w, entry.pfn, static_cast<UINT>(m.wParam), m.lParam);
        return true;
    case AfxSig_vWp:
        invoke<void (CWnd::*)(CWnd*, CPoint)>(w, entry.pfn, m.firstWindow(), m.point());
        return true;
    case AfxSig_vMub:
        invoke<void (CWnd::*)(CMenu*, UINT, BOOL)>(w, entry.pfn,
                                                   CMenu::FromHandle(reinterpret_cast<HMENU>(m.wParam)),
                                                   LOWORD(m.lParam), HIWORD(m.lParam));
        return true;
    case AfxSig_vuuW:
        invoke<void (CWnd::*)(UINT, UINT, CScrollBar*)>(w, entry.pfn, m.low(), m.high(),
                                                        static_cast<CScrollBar*>(m.secondWindow()));
        return true;
    case AfxSig_vh:
        invoke<void (CWnd::*)(HDROP)>(w, entry.pfn, reinterpret_cast<HDROP>(m.wParam));
        return true;
    case AfxSig_vs:
        invoke<void (CWnd::*)(MINMAXINFO*)>(w, entry.pfn, reinterpret_cast<MINMAXINFO*>(m.lParam));
        return true;
    default:
        return false;
    }
}

} // namespace

BOOL CWnd::OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult) {
    LRESULT unwanted = 0;
    LRESULT& result = pResult == nullptr ? unwanted : *pResult;
    if (message == WM_COMMAND) {
        if (!OnCommand(wParam, lParam)) return FALSE;
        result = 1;
        return TRUE;
    }
    if (message == WM_NOTIFY) return lParam != 0 && OnNotify(wParam, lParam, &result);

    const bool colours = message >= WM_CTLCOLORMSGBOX && message <= WM_CTLCOLORSTATIC;
    const AFX_MSGMAP* map = GetMessageMap();
    const AFX_MSGMAP_ENTRY* entry = findMessage(map, message);
    if (entry == nullptr && colours) entry = findMessage(map, WM_CTLCOLOR);
    if (entry == nullptr) return FALSE;
    const WindowMessage parameters{message, wParam, lParam};
    if (message < firstRegisteredMessage && callWithoutResult(*this, *entry, parameters))
        result = 0;
    else
        result = callWithResult(*this, *entry, parameters);
    return TRUE;
}

namespace {

/// Asks whether a command is enabled, without a menu or a window to change.
class CommandProbe : public CCmdUI {
public:
    bool enabled = true;
    void Enable(BOOL bOn) override {
        enabled = bOn != FALSE;
        m_bEnableChanged = TRUE;
    }
    void SetCheck(int) override {}
    void SetRadio(BOOL) override {}
    void SetText(LPCTSTR) override {}
};

} // namespace

BOOL CWnd::OnCommand(WPARAM wParam, LPARAM lParam) {
    const UINT id = LOWORD(wParam);
    if (lParam != 0) {
        if (threadState().exchangingDialog == m_hWnd) return TRUE;
        return OnCmdMsg(id, HIWORD(wParam), nullptr, nullptr);
    }
    if (id == 0) return FALSE;
    // The state of a menu item or accelerator may be out of date: a disabled command is not run.
    CommandProbe probe;
    probe.m_nID = id;
    OnCmdMsg(id, static_cast<int>(CN_UPDATE_COMMAND_UI), &probe, nullptr);
    return !probe.enabled || OnCmdMsg(id, CN_COMMAND, nullptr, nullptr);
}

BOOL CWnd::OnNotify(WPARAM, LPARAM lParam, LRESULT* pResult) {
    auto* header = reinterpret_cast<NMHDR*>(lParam);
    if (threadState().exchangingDialog == m_hWnd) return TRUE;
    AFX_NOTIFY notify{pResult, header};
    return OnCmdMsg(static_cast<UINT>(header->idFrom), MAKELONG(header->code, WM_NOTIFY), &notify, nullptr);
}
