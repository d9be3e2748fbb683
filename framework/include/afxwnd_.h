// SPDX-License-Identifier: MIT
#pragma once

/// Windows. Included by <afxwin.h>.

#include <afxcmdtarget_.h>
#include <afxdc_.h>
#include <afxmenu_.h>
#include <atltypes.h>
#include <shellapi.h>

class CDataExchange;
class CFrameWnd;
class CScrollBar;

/// Told to Create by those who know about documents; the subset hands it through only.
struct CCreateContext;

/// Message of a modal or main loop about to wait, and of a window asked to lay out a control bar.
#ifndef WM_KICKIDLE
#define WM_KICKIDLE 0x036A
#endif
#ifndef WM_SIZEPARENT
#define WM_SIZEPARENT 0x0361
#endif

/// What WM_SIZEPARENT carries in lParam: a bar cuts its strip off rect, adds its size to sizeTotal, and moves
/// itself through hDWP unless that is null.
struct AFX_SIZEPARENTPARAMS {
    HDWP hDWP;
    RECT rect;
    SIZE sizeTotal;
    BOOL bStretch;
};

/// Values of CWnd::RepositionBars.
enum RepositionFlags { reposDefault = 0, reposQuery = 1, reposExtra = 2 };

// Flags of CWnd::RunModalLoop.
#define MLF_NOIDLEMSG 0x0001
#define MLF_NOKICKIDLE 0x0002
#define MLF_SHOWONIDLE 0x0004

// State bits of CWnd::m_nFlags.
#define WF_TEMPHIDE 0x0004
#define WF_MODALLOOP 0x0010
#define WF_CONTINUEMODAL 0x0020

/// A window. An object made by the program and created, attached or subclassed is permanent: FromHandle finds
/// it, and messages come to its message maps. One that FromHandle had to make is temporary and receives
/// nothing. Destroying the object destroys its window.
class VORNAFX_API CWnd : public CCmdTarget {
    DECLARE_DYNCREATE(CWnd)
public:
    CWnd() = default;
    ~CWnd() override;

    HWND m_hWnd = nullptr;

    /// Places in the order of windows, for SetWindowPos only.
    static const CWnd wndTop, wndBottom, wndTopMost, wndNoTopMost;

    operator HWND() const { return m_hWnd; }
    HWND GetSafeHwnd() const { return this == nullptr ? nullptr : m_hWnd; }
    BOOL operator==(const CWnd& wnd) const { return m_hWnd == wnd.m_hWnd; }
    static CWnd* FromHandle(HWND hWnd);
    static CWnd* FromHandlePermanent(HWND hWnd);
    static void DeleteTempMap();
    BOOL Attach(HWND hWndNew);
    HWND Detach();

    // Making and ending.
    /// Adjusts what the window is created with; FALSE stops the creation.
    virtual BOOL PreCreateWindow(CREATESTRUCT& cs);
    /// Called before any message reaches the window, also of a subclassed one.
    virtual void PreSubclassWindow() {}
    /// Makes a child window.
    virtual BOOL Create(LPCTSTR lpszClassName, LPCTSTR lpszWindowName, DWORD dwStyle, const RECT& rect,
                        CWnd* pParentWnd, UINT nID, CCreateContext* pContext = nullptr);
    BOOL CreateEx(DWORD dwExStyle, LPCTSTR lpszClassName, LPCTSTR lpszWindowName, DWORD dwStyle, int x, int y,
                  int nWidth, int nHeight, HWND hWndParent, HMENU nIDorHMenu, LPVOID lpParam = nullptr);
    BOOL CreateEx(DWORD dwExStyle, LPCTSTR lpszClassName, LPCTSTR lpszWindowName, DWORD dwStyle,
                  const RECT& rect, CWnd* pParentWnd, UINT nID, LPVOID lpParam = nullptr);
    virtual BOOL DestroyWindow();
    /// Attaches a window that has its own procedure and receives its messages from now on.
    BOOL SubclassWindow(HWND hWnd);
    BOOL SubclassDlgItem(UINT nID, CWnd* pParent);
    /// Puts the own procedure back; returns the handle.
    HWND UnsubclassWindow();

    // State and position.
    DWORD GetStyle() const { return static_cast<DWORD>(::GetWindowLongPtrA(m_hWnd, GWL_STYLE)); }
    DWORD GetExStyle() const { return static_cast<DWORD>(::GetWindowLongPtrA(m_hWnd, GWL_EXSTYLE)); }
    BOOL ModifyStyle(DWORD dwRemove, DWORD dwAdd, UINT nFlags = 0);
    BOOL ModifyStyleEx(DWORD dwRemove, DWORD dwAdd, UINT nFlags = 0);
    static BOOL ModifyStyle(HWND hWnd, DWORD dwRemove, DWORD dwAdd, UINT nFlags);
    static BOOL ModifyStyleEx(HWND hWnd, DWORD dwRemove, DWORD dwAdd, UINT nFlags);
    int GetDlgCtrlID() const { return ::GetDlgCtrlID(m_hWnd); }
    int SetDlgCtrlID(int nID) { return static_cast<int>(::SetWindowLongPtrA(m_hWnd, GWLP_ID, nID)); }
    BOOL IsWindowVisible() const { return ::IsWindowVisible(m_hWnd); }
    BOOL IsWindowEnabled() const { return ::IsWindowEnabled(m_hWnd); }
    BOOL EnableWindow(BOOL bEnable = TRUE) { return ::EnableWindow(m_hWnd, bEnable); }
    BOOL ShowWindow(int nCmdShow) { return ::ShowWindow(m_hWnd, nCmdShow); }
    BOOL IsIconic() const { return ::IsIconic(m_hWnd); }
    BOOL IsZoomed() const { return ::IsZoomed(m_hWnd); }
    void MoveWindow(int x, int y, int nWidth, int nHeight, BOOL bRepaint = TRUE) {
        ::MoveWindow(m_hWnd, x, y, nWidth, nHeight, bRepaint);
    }
    void MoveWindow(LPCRECT lpRect, BOOL bRepaint = TRUE) {
        MoveWindow(lpRect->left, lpRect->top, lpRect->right - lpRect->left, lpRect->bottom - lpRect->top,
                   bRepaint);
    }
    BOOL SetWindowPos(const CWnd* pWndInsertAfter, int x, int y, int cx, int cy, UINT nFlags) {
        return ::SetWindowPos(m_hWnd, HandleOf(pWndInsertAfter), x, y, cx, cy, nFlags);
    }
    void BringWindowToTop() { ::BringWindowToTop(m_hWnd); }
    BOOL GetWindowPlacement(WINDOWPLACEMENT* lpwndpl) const { return ::GetWindowPlacement(m_hWnd, lpwndpl); }
    BOOL SetWindowPlacement(const WINDOWPLACEMENT* lpwndpl) { return ::SetWindowPlacement(m_hWnd, lpwndpl); }
    void GetWindowRect(LPRECT lpRect) const { ::GetWindowRect(m_hWnd, lpRect); }
    void GetClientRect(LPRECT lpRect) const { ::GetClientRect(m_hWnd, lpRect); }
    void ClientToScreen(LPPOINT lpPoint) const { ::ClientToScreen(m_hWnd, lpPoint); }
    void ClientToScreen(LPRECT lpRect) const;
    void ScreenToClient(LPPOINT lpPoint) const { ::ScreenToClient(m_hWnd, lpPoint); }
    void ScreenToClient(LPRECT lpRect) const;
    void MapWindowPoints(CWnd* pwndTo, LPPOINT lpPoint, UINT nCount) const {
        ::MapWindowPoints(m_hWnd, HandleOf(pwndTo), lpPoint, nCount);
    }
    void MapWindowPoints(CWnd* pwndTo, LPRECT lpRect) const {
        ::MapWindowPoints(m_hWnd, HandleOf(pwndTo), reinterpret_cast<LPPOINT>(lpRect), 2);
    }
    /// Centres over pAlternateOwner, or over the owner, or over the screen, within the work area.
    void CenterWindow(CWnd* pAlternateOwner = nullptr);
    HICON SetIcon(HICON hIcon, BOOL bBigIcon);
    int SetWindowRgn(HRGN hRgn, BOOL bRedraw) { return ::SetWindowRgn(m_hWnd, hRgn, bRedraw); }

    // Text and fonts.
    void SetWindowText(LPCTSTR lpszString) { ::SetWindowTextA(m_hWnd, lpszString); }
    int GetWindowText(LPTSTR lpszStringBuf, int nMaxCount) const {
        return ::GetWindowTextA(m_hWnd, lpszStringBuf, nMaxCount);
    }
    void GetWindowText(CString& rString) const;
    int GetWindowTextLength() const { return ::GetWindowTextLengthA(m_hWnd); }
    void SetFont(CFont* pFont, BOOL bRedraw = TRUE);
    CFont* GetFont() const;

    // Relatives.
    CWnd* GetParent() const { return FromHandle(::GetParent(m_hWnd)); }
    CWnd* SetParent(CWnd* pWndNewParent) { return FromHandle(::SetParent(m_hWnd, HandleOf(pWndNewParent))); }
    CWnd* GetOwner() const { return m_hWndOwner != nullptr ? FromHandle(m_hWndOwner) : GetParent(); }
    void SetOwner(CWnd* pOwnerWnd) { m_hWndOwner = HandleOf(pOwnerWnd); }
    CWnd* GetWindow(UINT nCmd) const { return FromHandle(::GetWindow(m_hWnd, nCmd)); }
    CWnd* GetTopWindow() const { return FromHandle(::GetTopWindow(m_hWnd)); }
    CWnd* GetLastActivePopup() const { return FromHandle(::GetLastActivePopup(m_hWnd)); }
    BOOL IsChild(const CWnd* pWnd) const { return ::IsChild(m_hWnd, HandleOf(pWnd)); }
    CWnd* GetTopLevelParent() const;
    CFrameWnd* GetParentFrame() const;
    CFrameWnd* GetTopLevelFrame() const;
    /// Also finds a control inside the children.
    CWnd* GetDescendantWindow(int nID, BOOL bOnlyPerm = FALSE) const;
    void SendMessageToDescendants(UINT message, WPARAM wParam = 0, LPARAM lParam = 0, BOOL bDeep = TRUE,
                                  BOOL bOnlyPerm = FALSE);
    virtual BOOL IsFrameWnd() const { return FALSE; }
    static CWnd* FindWindow(LPCTSTR lpszClassName, LPCTSTR lpszWindowName) {
        return FromHandle(::FindWindowA(lpszClassName, lpszWindowName));
    }
    static CWnd* WindowFromPoint(POINT point) { return FromHandle(::WindowFromPoint(point)); }
    CWnd* ChildWindowFromPoint(POINT point) const {
        return FromHandle(::ChildWindowFromPoint(m_hWnd, point));
    }
    static CWnd* GetDesktopWindow() { return FromHandle(::GetDesktopWindow()); }
    static CWnd* GetForegroundWindow() { return FromHandle(::GetForegroundWindow()); }
    BOOL SetForegroundWindow() { return ::SetForegroundWindow(m_hWnd); }
    static CWnd* GetActiveWindow() { return FromHandle(::GetActiveWindow()); }
    CWnd* SetActiveWindow() { return FromHandle(::SetActiveWindow(m_hWnd)); }
    static CWnd* GetFocus() { return FromHandle(::GetFocus()); }
    CWnd* SetFocus() { return FromHandle(::SetFocus(m_hWnd)); }
    static CWnd* GetCapture() { return FromHandle(::GetCapture()); }
    CWnd* SetCapture() { return FromHandle(::SetCapture(m_hWnd)); }

    // Drawing.
    CDC* GetDC() { return CDC::FromHandle(::GetDC(m_hWnd)); }
    CDC* GetWindowDC() { return CDC::FromHandle(::GetWindowDC(m_hWnd)); }
    int ReleaseDC(CDC* pDC) { return ::ReleaseDC(m_hWnd, pDC->m_hDC); }
    CDC* BeginPaint(LPPAINTSTRUCT lpPaint) { return CDC::FromHandle(::BeginPaint(m_hWnd, lpPaint)); }
    void EndPaint(LPPAINTSTRUCT lpPaint) { ::EndPaint(m_hWnd, lpPaint); }
    void Invalidate(BOOL bErase = TRUE) { ::InvalidateRect(m_hWnd, nullptr, bErase); }
    void InvalidateRect(LPCRECT lpRect, BOOL bErase = TRUE) { ::InvalidateRect(m_hWnd, lpRect, bErase); }
    void InvalidateRgn(CRgn* pRgn, BOOL bErase = TRUE);
    void ValidateRect(LPCRECT lpRect) { ::ValidateRect(m_hWnd, lpRect); }
    BOOL GetUpdateRect(LPRECT lpRect, BOOL bErase = FALSE) { return ::GetUpdateRect(m_hWnd, lpRect, bErase); }
    void UpdateWindow() { ::UpdateWindow(m_hWnd); }
    BOOL RedrawWindow(LPCRECT lpRectUpdate = nullptr, CRgn* prgnUpdate = nullptr,
                      UINT flags = RDW_INVALIDATE | RDW_UPDATENOW | RDW_ERASE);
    void SetRedraw(BOOL bRedraw = TRUE) { SendMessage(WM_SETREDRAW, static_cast<WPARAM>(bRedraw)); }
    BOOL LockWindowUpdate() { return ::LockWindowUpdate(m_hWnd); }
    void UnlockWindowUpdate() { ::LockWindowUpdate(nullptr); }
    void Print(CDC* pDC, DWORD dwFlags) const;

    // Scrolling.
    int SetScrollPos(int nBar, int nPos, BOOL bRedraw = TRUE) {
        return ::SetScrollPos(m_hWnd, nBar, nPos, bRedraw);
    }
    int GetScrollPos(int nBar) const { return ::GetScrollPos(m_hWnd, nBar); }
    void SetScrollRange(int nBar, int nMinPos, int nMaxPos, BOOL bRedraw = TRUE) {
        ::SetScrollRange(m_hWnd, nBar, nMinPos, nMaxPos, bRedraw);
    }
    void GetScrollRange(int nBar, LPINT lpMinPos, LPINT lpMaxPos) const {
        ::GetScrollRange(m_hWnd, nBar, lpMinPos, lpMaxPos);
    }
    BOOL SetScrollInfo(int nBar, LPSCROLLINFO lpScrollInfo, BOOL bRedraw = TRUE);
    BOOL GetScrollInfo(int nBar, LPSCROLLINFO lpScrollInfo, UINT nMask = SIF_ALL);
    void ShowScrollBar(UINT nBar, BOOL bShow = TRUE) {
        ::ShowScrollBar(m_hWnd, static_cast<int>(nBar), bShow);
    }
    void ScrollWindow(int xAmount, int yAmount, LPCRECT lpRect = nullptr, LPCRECT lpClipRect = nullptr) {
        ::ScrollWindow(m_hWnd, xAmount, yAmount, lpRect, lpClipRect);
    }

    // Messages.
    LRESULT SendMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
        return ::SendMessageA(m_hWnd, message, wParam, lParam);
    }
    BOOL PostMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
        return ::PostMessageA(m_hWnd, message, wParam, lParam);
    }
    BOOL SendNotifyMessage(UINT message, WPARAM wParam, LPARAM lParam) {
        return ::SendNotifyMessageA(m_hWnd, message, wParam, lParam);
    }
    UINT_PTR SetTimer(UINT_PTR nIDEvent, UINT nElapse, TIMERPROC lpfnTimer = nullptr) {
        return ::SetTimer(m_hWnd, nIDEvent, nElapse, lpfnTimer);
    }
    BOOL KillTimer(UINT_PTR nIDEvent) { return ::KillTimer(m_hWnd, nIDEvent); }
    int MessageBox(LPCTSTR lpszText, LPCTSTR lpszCaption = nullptr, UINT nType = MB_OK);
    BOOL OpenClipboard() { return ::OpenClipboard(m_hWnd); }
    void DragAcceptFiles(BOOL bAccept = TRUE) { ::DragAcceptFiles(m_hWnd, bAccept); }
    static const MSG* GetCurrentMessage();
    /// A chance to handle a queued message before it is dispatched; TRUE when it has been.
    virtual BOOL PreTranslateMessage(MSG* pMsg);
    /// Offers a queued message to its window and that one's parents, up to hWndStop.
    static BOOL WalkPreTranslateTree(HWND hWndStop, MSG* pMsg);
    /// IsDialogMessage for this window.
    BOOL PreTranslateInput(LPMSG lpMsg);
    BOOL IsDialogMessage(LPMSG lpMsg);

    // Menus.
    CMenu* GetMenu() const { return CMenu::FromHandle(::GetMenu(m_hWnd)); }
    BOOL SetMenu(CMenu* pMenu) { return ::SetMenu(m_hWnd, pMenu == nullptr ? nullptr : pMenu->m_hMenu); }
    void DrawMenuBar() { ::DrawMenuBar(m_hWnd); }
    CMenu* GetSystemMenu(BOOL bRevert) const { return CMenu::FromHandle(::GetSystemMenu(m_hWnd, bRevert)); }

    // Dialog items.
    CWnd* GetDlgItem(int nID) const { return FromHandle(::GetDlgItem(m_hWnd, nID)); }
    void GetDlgItem(int nID, HWND* phWnd) const { *phWnd = ::GetDlgItem(m_hWnd, nID); }
    void SetDlgItemText(int nID, LPCTSTR lpszString) { ::SetDlgItemTextA(m_hWnd, nID, lpszString); }
    int GetDlgItemText(int nID, LPTSTR lpStr, int nMaxCount) const {
        return static_cast<int>(::GetDlgItemTextA(m_hWnd, nID, lpStr, nMaxCount));
    }
    int GetDlgItemText(int nID, CString& rString) const;
    void SetDlgItemInt(int nID, UINT nValue, BOOL bSigned = TRUE) {
        ::SetDlgItemInt(m_hWnd, nID, nValue, bSigned);
    }
    UINT GetDlgItemInt(int nID, BOOL* lpTrans = nullptr, BOOL bSigned = TRUE) const {
        return ::GetDlgItemInt(m_hWnd, nID, lpTrans, bSigned);
    }
    void CheckDlgButton(int nIDButton, UINT nCheck) { ::CheckDlgButton(m_hWnd, nIDButton, nCheck); }
    void CheckRadioButton(int nIDFirst, int nIDLast, int nIDCheck) {
        ::CheckRadioButton(m_hWnd, nIDFirst, nIDLast, nIDCheck);
    }
    UINT IsDlgButtonChecked(int nIDButton) const { return ::IsDlgButtonChecked(m_hWnd, nIDButton); }
    int GetCheckedRadioButton(int nIDFirst, int nIDLast) const;
    LRESULT SendDlgItemMessage(int nID, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
        return ::SendDlgItemMessageA(m_hWnd, nID, message, wParam, lParam);
    }
    CWnd* GetNextDlgTabItem(CWnd* pWndCtl, BOOL bPrevious = FALSE) const {
        return FromHandle(::GetNextDlgTabItem(m_hWnd, HandleOf(pWndCtl), bPrevious));
    }
    CWnd* GetNextDlgGroupItem(CWnd* pWndCtl, BOOL bPrevious = FALSE) const {
        return FromHandle(::GetNextDlgGroupItem(m_hWnd, HandleOf(pWndCtl), bPrevious));
    }

    // Data exchange.
    /// Runs DoDataExchange: TRUE reads and validates the controls, FALSE fills them. FALSE is returned when a
    /// validation failed; the user has been told.
    BOOL UpdateData(BOOL bSaveAndValidate = TRUE);
    /// Asks for the state of each child control that is a command.
    void UpdateDialogControls(CCmdTarget* pTarget, BOOL bDisableIfNoHndler);
    /// Fills the controls from the RT_DLGINIT resource of that name; TRUE also when there is none.
    BOOL ExecuteDlgInit(LPCTSTR lpszResourceName);

    // Layout.
    enum { reposDefault = ::reposDefault, reposQuery = ::reposQuery, reposExtra = ::reposExtra };
    /// Lets each child with an id in the range take its strip of the client area (WM_SIZEPARENT), and gives
    /// the rest to the child nIDLeftOver. reposQuery moves nothing and returns the rest in lpRectParam;
    /// reposExtra leaves the margins of lpRectParam free around the leftover child.
    void RepositionBars(UINT nIDFirst, UINT nIDLast, UINT nIDLeftOver, UINT nFlag = reposDefault,
                        LPRECT lpRectParam = nullptr, LPCRECT lpRectClient = nullptr, BOOL bStretch = TRUE);

    enum AdjustType { adjustBorder = 0, adjustOutside = 1 };
    /// Grows a wished client rectangle to the window's; the sunken edge counts only for adjustOutside.
    virtual void CalcWindowRect(LPRECT lpClientRect, UINT nAdjustType = adjustBorder);

    // Modal loop.
    int RunModalLoop(DWORD dwFlags = 0);
    virtual BOOL ContinueModal() { return m_nFlags & WF_CONTINUEMODAL; }
    virtual void EndModalLoop(int nResult);

    int m_nModalResult = 0;
    UINT m_nFlags = 0;
    HWND m_hWndOwner = nullptr;

protected:
    // What happens to a message: WindowProc asks OnWndMsg, which asks the message maps; what none handles
    // goes to DefWindowProc. A handler reaches it for its own message with Default.
    virtual LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    virtual BOOL OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult);
    virtual LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT Default();
    virtual WNDPROC* GetSuperWndProcAddr() { return &m_pfnSuper; }
    /// The last that is heard of a window; the place for `delete this`.
    virtual void PostNcDestroy() {}
    virtual BOOL OnCommand(WPARAM wParam, LPARAM lParam);
    virtual BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* pResult);
    virtual void DoDataExchange(CDataExchange* pDX);

    // Handlers that message maps can name; these only do the default.
    afx_msg int OnCreate(LPCREATESTRUCT lpCreateStruct);
    afx_msg void OnDestroy() { Default(); }
    afx_msg void OnNcDestroy();
    afx_msg void OnClose() { Default(); }
    afx_msg void OnSize(UINT nType, int cx, int cy);
    afx_msg void OnMove(int x, int y);
    afx_msg void OnShowWindow(BOOL bShow, UINT nStatus);
    afx_msg void OnEnable(BOOL bEnable);
    afx_msg void OnActivate(UINT nState, CWnd* pWndOther, BOOL bMinimized);
    afx_msg void OnSetFocus(CWnd* pOldWnd);
    afx_msg void OnKillFocus(CWnd* pNewWnd);
    afx_msg void OnCaptureChanged(CWnd* pWnd);
    afx_msg void OnGetMinMaxInfo(MINMAXINFO* lpMMI);
    afx_msg void OnTimer(UINT_PTR nIDEvent);
    afx_msg void OnSysCommand(UINT nID, LPARAM lParam);
    afx_msg void OnPaint() { Default(); }
    afx_msg BOOL OnEraseBkgnd(CDC* pDC);
    afx_msg HBRUSH OnCtlColor(CDC* pDC, CWnd* pWnd, UINT nCtlColor);
    afx_msg void OnPaletteChanged(CWnd* pFocusWnd);
    afx_msg BOOL OnQueryNewPalette() { return static_cast<BOOL>(Default()); }
    afx_msg void OnKeyDown(UINT nChar, UINT nRepCnt, UINT nFlags);
    afx_msg void OnKeyUp(UINT nChar, UINT nRepCnt, UINT nFlags);
    afx_msg void OnChar(UINT nChar, UINT nRepCnt, UINT nFlags);
    afx_msg UINT OnGetDlgCode() { return static_cast<UINT>(Default()); }
    afx_msg void OnMouseMove(UINT nFlags, CPoint point);
    afx_msg void OnLButtonDown(UINT nFlags, CPoint point);
    afx_msg void OnLButtonUp(UINT nFlags, CPoint point);
    afx_msg void OnLButtonDblClk(UINT nFlags, CPoint point);
    afx_msg void OnRButtonDown(UINT nFlags, CPoint point);
    afx_msg void OnRButtonUp(UINT nFlags, CPoint point);
    afx_msg void OnRButtonDblClk(UINT nFlags, CPoint point);
    afx_msg void OnMButtonDown(UINT nFlags, CPoint point);
    afx_msg void OnMButtonUp(UINT nFlags, CPoint point);
    afx_msg void OnMButtonDblClk(UINT nFlags, CPoint point);
    afx_msg BOOL OnMouseWheel(UINT nFlags, short zDelta, CPoint pt);
    afx_msg void OnMouseLeave() { Default(); }
    afx_msg BOOL OnSetCursor(CWnd* pWnd, UINT nHitTest, UINT message);
    afx_msg void OnDropFiles(HDROP hDropInfo);
    afx_msg void OnContextMenu(CWnd* pWnd, CPoint pos);
    afx_msg void OnInitMenuPopup(CMenu* pPopupMenu, UINT nIndex, BOOL bSysMenu);
    afx_msg void OnHScroll(UINT nSBCode, UINT nPos, CScrollBar* pScrollBar);
    afx_msg void OnVScroll(UINT nSBCode, UINT nPos, CScrollBar* pScrollBar);

    DECLARE_MESSAGE_MAP()

private:
    explicit CWnd(HWND place) : m_hWnd(place) {}
    friend VORNAFX_API LRESULT AFXAPI AfxCallWndProc(CWnd*, HWND, UINT, WPARAM, LPARAM);
    static HWND HandleOf(const CWnd* window) { return window == nullptr ? nullptr : window->m_hWnd; }
    WNDPROC m_pfnSuper = nullptr;
};

/// A top-level window that sends commands on to the application and deletes itself with its window.
class VORNAFX_API CFrameWnd : public CWnd {
    DECLARE_DYNCREATE(CFrameWnd)
public:
    CFrameWnd() = default;

    /// Asks Windows for a position and size of its own choice.
    static const CRect rectDefault;
    BOOL m_bAutoMenuEnable = TRUE; ///< menu items without a handler are disabled
    HACCEL m_hAccelTable = nullptr;

    BOOL Create(LPCTSTR lpszClassName, LPCTSTR lpszWindowName, DWORD dwStyle = WS_OVERLAPPEDWINDOW,
                const RECT& rect = rectDefault, CWnd* pParentWnd = nullptr, LPCTSTR lpszMenuName = nullptr,
                DWORD dwExStyle = 0, CCreateContext* pContext = nullptr);
    BOOL LoadAccelTable(LPCTSTR lpszResourceName);

    BOOL IsFrameWnd() const override { return TRUE; }
    BOOL PreCreateWindow(CREATESTRUCT& cs) override;
    BOOL PreTranslateMessage(MSG* pMsg) override;
    BOOL OnCmdMsg(UINT nID, int nCode, void* pExtra, AFX_CMDHANDLERINFO* pHandlerInfo) override;
    /// Lays out control bars and gives the rest to the pane AFX_IDW_PANE_FIRST.
    virtual void RecalcLayout(BOOL bNotify = TRUE);

protected:
    void PostNcDestroy() override { delete this; }
    afx_msg void OnSize(UINT nType, int cx, int cy);
    afx_msg void OnInitMenuPopup(CMenu* pPopupMenu, UINT nIndex, BOOL bSysMenu);

    DECLARE_MESSAGE_MAP()
};
