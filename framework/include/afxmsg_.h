// SPDX-License-Identifier: MIT
#pragma once

/// The lines of message maps. Included by <afxwin.h>.

/// Stands in message maps for all of WM_CTLCOLORMSGBOX to WM_CTLCOLORSTATIC.
#ifndef WM_CTLCOLOR
#define WM_CTLCOLOR 0x0019
#endif

/// Signatures of handlers: result, then arguments. v void or none, i int, u UINT, b BOOL, s structure, w
/// word-sized parameters as they came, W window, D device context, M menu, p point, h handle, t timer id, z
/// short.
enum AfxSig : UINT_PTR {
    AfxSig_end = 0,
    AfxSig_lww, ///< LRESULT (WPARAM, LPARAM)
    AfxSig_vv,  ///< void ()
    AfxSig_bv,  ///< BOOL ()
    AfxSig_uv,  ///< UINT ()
    AfxSig_is,  ///< int (LPCREATESTRUCT)
    AfxSig_vuii,
    AfxSig_vii,
    AfxSig_bD,
    AfxSig_vW,  ///< window in wParam
    AfxSig_vlW, ///< window in lParam
    AfxSig_vuWb,
    AfxSig_vbu,
    AfxSig_vb,
    AfxSig_vt,
    AfxSig_vuuu,
    AfxSig_vup,
    AfxSig_vul, ///< UINT, LPARAM
    AfxSig_buzp,
    AfxSig_bWuu,
    AfxSig_vWp,
    AfxSig_vMub,
    AfxSig_vuuW,
    AfxSig_vh,
    AfxSig_hDWu,
    AfxSig_vs, ///< structure in lParam
    AfxSigCmd_v,
    AfxSigCmd_u,
    AfxSigCmd_bu,
    AfxSigUpdate_C,
    AfxSigNotify_v,
    AfxSigNotify_u,
    AfxSigNotify_bu,
};

namespace vornafx {

/// Turns a handler into the form that message maps store.
template <typename Handler>
AFX_PMSG storedHandler(Handler handler) {
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wcast-function-type"
    return reinterpret_cast<AFX_PMSG>(handler);
#pragma GCC diagnostic pop
}

} // namespace vornafx

/// A line for a window message whose handler must have exactly the given type.
#define VORNAFX_WM_LINE(message, sig, result, memberFxn, arguments)                                          \
    {message, 0, 0, 0, sig, vornafx::storedHandler(static_cast<result(CWnd::*) arguments>(memberFxn))},
#define VORNAFX_CMD_LINE(message, code, first, last, sig, result, memberFxn, arguments)                      \
    {message,                                                                                                \
     static_cast<UINT>(code),                                                                                \
     static_cast<WORD>(first),                                                                               \
     static_cast<WORD>(last),                                                                                \
     sig,                                                                                                    \
     vornafx::storedHandler(static_cast<result(CCmdTarget::*) arguments>(memberFxn))},

// Commands and their updates.
#define ON_COMMAND(id, memberFxn)                                                                            \
    VORNAFX_CMD_LINE(WM_COMMAND, CN_COMMAND, id, id, AfxSigCmd_v, void, memberFxn, ())
#define ON_COMMAND_RANGE(id, idLast, memberFxn)                                                              \
    VORNAFX_CMD_LINE(WM_COMMAND, CN_COMMAND, id, idLast, AfxSigCmd_u, void, memberFxn, (UINT))
#define ON_COMMAND_EX(id, memberFxn)                                                                         \
    VORNAFX_CMD_LINE(WM_COMMAND, CN_COMMAND, id, id, AfxSigCmd_bu, BOOL, memberFxn, (UINT))
#define ON_UPDATE_COMMAND_UI(id, memberFxn)                                                                  \
    VORNAFX_CMD_LINE(WM_COMMAND, CN_UPDATE_COMMAND_UI, id, id, AfxSigUpdate_C, void, memberFxn, (CCmdUI*))
#define ON_UPDATE_COMMAND_UI_RANGE(id, idLast, memberFxn)                                                    \
    VORNAFX_CMD_LINE(WM_COMMAND, CN_UPDATE_COMMAND_UI, id, idLast, AfxSigUpdate_C, void, memberFxn, (CCmdUI*))

// Notifications of controls.
#define ON_CONTROL(wNotifyCode, id, memberFxn)                                                               \
    VORNAFX_CMD_LINE(WM_COMMAND, wNotifyCode, id, id, AfxSigCmd_v, void, memberFxn, ())
#define ON_CONTROL_RANGE(wNotifyCode, id, idLast, memberFxn)                                                 \
    VORNAFX_CMD_LINE(WM_COMMAND, wNotifyCode, id, idLast, AfxSigCmd_u, void, memberFxn, (UINT))
#define ON_NOTIFY(wNotifyCode, id, memberFxn)                                                                \
    VORNAFX_CMD_LINE(WM_NOTIFY, static_cast<WORD>(wNotifyCode), id, id, AfxSigNotify_v, void, memberFxn,     \
                     (NMHDR*, LRESULT*))
#define ON_NOTIFY_RANGE(wNotifyCode, id, idLast, memberFxn)                                                  \
    VORNAFX_CMD_LINE(WM_NOTIFY, static_cast<WORD>(wNotifyCode), id, idLast, AfxSigNotify_u, void, memberFxn, \
                     (UINT, NMHDR*, LRESULT*))
#define ON_NOTIFY_EX(wNotifyCode, id, memberFxn)                                                             \
    VORNAFX_CMD_LINE(WM_NOTIFY, static_cast<WORD>(wNotifyCode), id, id, AfxSigNotify_bu, BOOL, memberFxn,    \
                     (UINT, NMHDR*, LRESULT*))

#define ON_BN_CLICKED(id, memberFxn) ON_CONTROL(BN_CLICKED, id, memberFxn)
#define ON_BN_DOUBLECLICKED(id, memberFxn) ON_CONTROL(BN_DOUBLECLICKED, id, memberFxn)
#define ON_BN_SETFOCUS(id, memberFxn) ON_CONTROL(BN_SETFOCUS, id, memberFxn)
#define ON_BN_KILLFOCUS(id, memberFxn) ON_CONTROL(BN_KILLFOCUS, id, memberFxn)
#define ON_EN_SETFOCUS(id, memberFxn) ON_CONTROL(EN_SETFOCUS, id, memberFxn)
#define ON_EN_KILLFOCUS(id, memberFxn) ON_CONTROL(EN_KILLFOCUS, id, memberFxn)
#define ON_EN_CHANGE(id, memberFxn) ON_CONTROL(EN_CHANGE, id, memberFxn)
#define ON_EN_UPDATE(id, memberFxn) ON_CONTROL(EN_UPDATE, id, memberFxn)
#define ON_EN_MAXTEXT(id, memberFxn) ON_CONTROL(EN_MAXTEXT, id, memberFxn)
#define ON_LBN_SELCHANGE(id, memberFxn) ON_CONTROL(LBN_SELCHANGE, id, memberFxn)
#define ON_LBN_DBLCLK(id, memberFxn) ON_CONTROL(LBN_DBLCLK, id, memberFxn)
#define ON_LBN_SETFOCUS(id, memberFxn) ON_CONTROL(LBN_SETFOCUS, id, memberFxn)
#define ON_LBN_KILLFOCUS(id, memberFxn) ON_CONTROL(LBN_KILLFOCUS, id, memberFxn)
#define ON_CBN_SELCHANGE(id, memberFxn) ON_CONTROL(CBN_SELCHANGE, id, memberFxn)
#define ON_CBN_SELENDOK(id, memberFxn) ON_CONTROL(CBN_SELENDOK, id, memberFxn)
#define ON_CBN_DBLCLK(id, memberFxn) ON_CONTROL(CBN_DBLCLK, id, memberFxn)
#define ON_CBN_SETFOCUS(id, memberFxn) ON_CONTROL(CBN_SETFOCUS, id, memberFxn)
#define ON_CBN_KILLFOCUS(id, memberFxn) ON_CONTROL(CBN_KILLFOCUS, id, memberFxn)
#define ON_CBN_EDITCHANGE(id, memberFxn) ON_CONTROL(CBN_EDITCHANGE, id, memberFxn)
#define ON_CBN_DROPDOWN(id, memberFxn) ON_CONTROL(CBN_DROPDOWN, id, memberFxn)
#define ON_CBN_CLOSEUP(id, memberFxn) ON_CONTROL(CBN_CLOSEUP, id, memberFxn)
#define ON_STN_CLICKED(id, memberFxn) ON_CONTROL(STN_CLICKED, id, memberFxn)

// Any message, by number or by the variable that holds a registered message's number.
#define ON_MESSAGE(message, memberFxn)                                                                       \
    {static_cast<UINT>(message),                                                                             \
     0,                                                                                                      \
     0,                                                                                                      \
     0,                                                                                                      \
     AfxSig_lww,                                                                                             \
     vornafx::storedHandler(static_cast<LRESULT (CWnd::*)(WPARAM, LPARAM)>(memberFxn))},
#define ON_REGISTERED_MESSAGE(nMessageVariable, memberFxn)                                                   \
    {0xC000,                                                                                                 \
     0,                                                                                                      \
     0,                                                                                                      \
     0,                                                                                                      \
     reinterpret_cast<UINT_PTR>(&(nMessageVariable)),                                                        \
     vornafx::storedHandler(static_cast<LRESULT (CWnd::*)(WPARAM, LPARAM)>(memberFxn))},

// The window's life.
#define ON_WM_CREATE() VORNAFX_WM_LINE(WM_CREATE, AfxSig_is, int, &ThisClass::OnCreate, (LPCREATESTRUCT))
#define ON_WM_DESTROY() VORNAFX_WM_LINE(WM_DESTROY, AfxSig_vv, void, &ThisClass::OnDestroy, ())
#define ON_WM_NCDESTROY() VORNAFX_WM_LINE(WM_NCDESTROY, AfxSig_vv, void, &ThisClass::OnNcDestroy, ())
#define ON_WM_CLOSE() VORNAFX_WM_LINE(WM_CLOSE, AfxSig_vv, void, &ThisClass::OnClose, ())
#define ON_WM_SIZE() VORNAFX_WM_LINE(WM_SIZE, AfxSig_vuii, void, &ThisClass::OnSize, (UINT, int, int))
#define ON_WM_MOVE() VORNAFX_WM_LINE(WM_MOVE, AfxSig_vii, void, &ThisClass::OnMove, (int, int))
#define ON_WM_SHOWWINDOW()                                                                                   \
    VORNAFX_WM_LINE(WM_SHOWWINDOW, AfxSig_vbu, void, &ThisClass::OnShowWindow, (BOOL, UINT))
#define ON_WM_ENABLE() VORNAFX_WM_LINE(WM_ENABLE, AfxSig_vb, void, &ThisClass::OnEnable, (BOOL))
#define ON_WM_ACTIVATE()                                                                                     \
    VORNAFX_WM_LINE(WM_ACTIVATE, AfxSig_vuWb, void, &ThisClass::OnActivate, (UINT, CWnd*, BOOL))
#define ON_WM_SETFOCUS() VORNAFX_WM_LINE(WM_SETFOCUS, AfxSig_vW, void, &ThisClass::OnSetFocus, (CWnd*))
#define ON_WM_KILLFOCUS() VORNAFX_WM_LINE(WM_KILLFOCUS, AfxSig_vW, void, &ThisClass::OnKillFocus, (CWnd*))
#define ON_WM_CAPTURECHANGED()                                                                               \
    VORNAFX_WM_LINE(WM_CAPTURECHANGED, AfxSig_vlW, void, &ThisClass::OnCaptureChanged, (CWnd*))
#define ON_WM_GETMINMAXINFO()                                                                                \
    VORNAFX_WM_LINE(WM_GETMINMAXINFO, AfxSig_vs, void, &ThisClass::OnGetMinMaxInfo, (MINMAXINFO*))
#define ON_WM_TIMER() VORNAFX_WM_LINE(WM_TIMER, AfxSig_vt, void, &ThisClass::OnTimer, (UINT_PTR))
#define ON_WM_SYSCOMMAND()                                                                                   \
    VORNAFX_WM_LINE(WM_SYSCOMMAND, AfxSig_vul, void, &ThisClass::OnSysCommand, (UINT, LPARAM))

// Drawing.
#define ON_WM_PAINT() VORNAFX_WM_LINE(WM_PAINT, AfxSig_vv, void, &ThisClass::OnPaint, ())
#define ON_WM_ERASEBKGND() VORNAFX_WM_LINE(WM_ERASEBKGND, AfxSig_bD, BOOL, &ThisClass::OnEraseBkgnd, (CDC*))
#define ON_WM_CTLCOLOR()                                                                                     \
    VORNAFX_WM_LINE(WM_CTLCOLOR, AfxSig_hDWu, HBRUSH, &ThisClass::OnCtlColor, (CDC*, CWnd*, UINT))
#define ON_WM_PALETTECHANGED()                                                                               \
    VORNAFX_WM_LINE(WM_PALETTECHANGED, AfxSig_vW, void, &ThisClass::OnPaletteChanged, (CWnd*))
#define ON_WM_QUERYNEWPALETTE()                                                                              \
    VORNAFX_WM_LINE(WM_QUERYNEWPALETTE, AfxSig_bv, BOOL, &ThisClass::OnQueryNewPalette, ())

// Keyboard.
#define ON_WM_KEYDOWN()                                                                                      \
    VORNAFX_WM_LINE(WM_KEYDOWN, AfxSig_vuuu, void, &ThisClass::OnKeyDown, (UINT, UINT, UINT))
#define ON_WM_KEYUP() VORNAFX_WM_LINE(WM_KEYUP, AfxSig_vuuu, void, &ThisClass::OnKeyUp, (UINT, UINT, UINT))
#define ON_WM_CHAR() VORNAFX_WM_LINE(WM_CHAR, AfxSig_vuuu, void, &ThisClass::OnChar, (UINT, UINT, UINT))
#define ON_WM_GETDLGCODE() VORNAFX_WM_LINE(WM_GETDLGCODE, AfxSig_uv, UINT, &ThisClass::OnGetDlgCode, ())

// Mouse.
#define ON_WM_MOUSEMOVE()                                                                                    \
    VORNAFX_WM_LINE(WM_MOUSEMOVE, AfxSig_vup, void, &ThisClass::OnMouseMove, (UINT, CPoint))
#define ON_WM_LBUTTONDOWN()                                                                                  \
    VORNAFX_WM_LINE(WM_LBUTTONDOWN, AfxSig_vup, void, &ThisClass::OnLButtonDown, (UINT, CPoint))
#define ON_WM_LBUTTONUP()                                                                                    \
    VORNAFX_WM_LINE(WM_LBUTTONUP, AfxSig_vup, void, &ThisClass::OnLButtonUp, (UINT, CPoint))
#define ON_WM_LBUTTONDBLCLK()                                                                                \
    VORNAFX_WM_LINE(WM_LBUTTONDBLCLK, AfxSig_vup, void, &ThisClass::OnLButtonDblClk, (UINT, CPoint))
#define ON_WM_RBUTTONDOWN()                                                                                  \
    VORNAFX_WM_LINE(WM_RBUTTONDOWN, AfxSig_vup, void, &ThisClass::OnRButtonDown, (UINT, CPoint))
#define ON_WM_RBUTTONUP()                                                                                    \
    VORNAFX_WM_LINE(WM_RBUTTONUP, AfxSig_vup, void, &ThisClass::OnRButtonUp, (UINT, CPoint))
#define ON_WM_RBUTTONDBLCLK()                                                                                \
    VORNAFX_WM_LINE(WM_RBUTTONDBLCLK, AfxSig_vup, void, &ThisClass::OnRButtonDblClk, (UINT, CPoint))
#define ON_WM_MBUTTONDOWN()                                                                                  \
    VORNAFX_WM_LINE(WM_MBUTTONDOWN, AfxSig_vup, void, &ThisClass::OnMButtonDown, (UINT, CPoint))
#define ON_WM_MBUTTONUP()                                                                                    \
    VORNAFX_WM_LINE(WM_MBUTTONUP, AfxSig_vup, void, &ThisClass::OnMButtonUp, (UINT, CPoint))
#define ON_WM_MBUTTONDBLCLK()                                                                                \
    VORNAFX_WM_LINE(WM_MBUTTONDBLCLK, AfxSig_vup, void, &ThisClass::OnMButtonDblClk, (UINT, CPoint))
#define ON_WM_MOUSEWHEEL()                                                                                   \
    VORNAFX_WM_LINE(WM_MOUSEWHEEL, AfxSig_buzp, BOOL, &ThisClass::OnMouseWheel, (UINT, short, CPoint))
#define ON_WM_MOUSELEAVE() VORNAFX_WM_LINE(WM_MOUSELEAVE, AfxSig_vv, void, &ThisClass::OnMouseLeave, ())
#define ON_WM_SETCURSOR()                                                                                    \
    VORNAFX_WM_LINE(WM_SETCURSOR, AfxSig_bWuu, BOOL, &ThisClass::OnSetCursor, (CWnd*, UINT, UINT))
#define ON_WM_DROPFILES() VORNAFX_WM_LINE(WM_DROPFILES, AfxSig_vh, void, &ThisClass::OnDropFiles, (HDROP))

// Menus and scroll bars.
#define ON_WM_CONTEXTMENU()                                                                                  \
    VORNAFX_WM_LINE(WM_CONTEXTMENU, AfxSig_vWp, void, &ThisClass::OnContextMenu, (CWnd*, CPoint))
#define ON_WM_INITMENUPOPUP()                                                                                \
    VORNAFX_WM_LINE(WM_INITMENUPOPUP, AfxSig_vMub, void, &ThisClass::OnInitMenuPopup, (CMenu*, UINT, BOOL))
#define ON_WM_HSCROLL()                                                                                      \
    VORNAFX_WM_LINE(WM_HSCROLL, AfxSig_vuuW, void, &ThisClass::OnHScroll, (UINT, UINT, CScrollBar*))
#define ON_WM_VSCROLL()                                                                                      \
    VORNAFX_WM_LINE(WM_VSCROLL, AfxSig_vuuW, void, &ThisClass::OnVScroll, (UINT, UINT, CScrollBar*))
