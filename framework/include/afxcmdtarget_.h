// SPDX-License-Identifier: MIT
#pragma once

/// Command targets and message maps. Included by <afxwin.h>.

#include <afx.h>

class CCmdTarget;
class CCmdUI;
class CMenu;
class CWnd;
struct AFX_CMDHANDLERINFO;

/// A handler of a message map in its stored form; AFX_MSGMAP_ENTRY::nSig tells what it really is.
typedef void (CCmdTarget::*AFX_PMSG)();

/// One line of a message map.
struct AFX_MSGMAP_ENTRY {
    UINT nMessage; ///< window message
    UINT nCode;    ///< control code, or the WM_NOTIFY code
    UINT nID;      ///< control id; 0 for window messages
    UINT nLastID;  ///< end of a range of ids
    UINT_PTR nSig; ///< signature of the handler, or where a registered message keeps its number
    AFX_PMSG pfn;  ///< the handler
};

/// A class's message map: its own lines, and the way to its base's map.
struct AFX_MSGMAP {
    const AFX_MSGMAP* (*pfnGetBaseMap)();
    const AFX_MSGMAP_ENTRY* lpEntries;
};

/// What OnCmdMsg found, when it is asked to find a handler and not to call it.
struct AFX_CMDHANDLERINFO {
    CCmdTarget* pTarget;
    AFX_PMSG pmf;
};

#define CN_COMMAND 0
#define CN_UPDATE_COMMAND_UI (static_cast<UINT>(-1))

/// Goes into the class definition; leaves the access at protected.
#define DECLARE_MESSAGE_MAP()                                                                                \
protected:                                                                                                   \
    static const AFX_MSGMAP* GetThisMessageMap();                                                            \
    virtual const AFX_MSGMAP* GetMessageMap() const;

#define BEGIN_MESSAGE_MAP(theClass, baseClass)                                                               \
    const AFX_MSGMAP* theClass::GetMessageMap() const {                                                      \
        return GetThisMessageMap();                                                                          \
    }                                                                                                        \
    const AFX_MSGMAP* theClass::GetThisMessageMap() {                                                        \
        using ThisClass [[maybe_unused]] = theClass;                                                         \
        using TheBaseClass = baseClass;                                                                      \
        static const AFX_MSGMAP_ENTRY _messageEntries[] = {

// clang-format off
#define END_MESSAGE_MAP()                                                                                    \
            {0, 0, 0, 0, AfxSig_end, static_cast<AFX_PMSG>(nullptr)}};                                       \
        static const AFX_MSGMAP messageMap = {&TheBaseClass::GetThisMessageMap, &_messageEntries[0]};        \
        return &messageMap;                                                                                  \
    }
// clang-format on

/// An object that commands can be routed to.
class VORNAFX_API CCmdTarget : public CObject {
    DECLARE_DYNAMIC(CCmdTarget)
public:
    CCmdTarget() = default;

    /// Offers a command, a notification or an update request to this object's message maps, the most derived
    /// first. nCode is CN_COMMAND, CN_UPDATE_COMMAND_UI (pExtra is the CCmdUI) or a control's code; for
    /// WM_NOTIFY its high word is WM_NOTIFY and pExtra the AFX_NOTIFY. With pHandlerInfo the handler is only
    /// looked up. Returns whether one was found.
    virtual BOOL OnCmdMsg(UINT nID, int nCode, void* pExtra, AFX_CMDHANDLERINFO* pHandlerInfo);

    /// Shows and counts the wait cursor.
    void BeginWaitCursor();
    void EndWaitCursor();
    void RestoreWaitCursor();

    DECLARE_MESSAGE_MAP()
};

/// A WM_NOTIFY on its way through OnCmdMsg.
struct AFX_NOTIFY {
    LRESULT* pResult;
    NMHDR* pNMHDR;
};

/// Hands the state of one user interface element to the ON_UPDATE_COMMAND_UI handler of its command. The
/// default forms act on a menu item, or on the window m_pOther when there is no menu.
class VORNAFX_API CCmdUI {
public:
    CCmdUI() = default;
    virtual ~CCmdUI() = default;

    UINT m_nID = 0;
    UINT m_nIndex = 0; ///< position in the menu
    CMenu* m_pMenu = nullptr;
    CMenu* m_pSubMenu = nullptr; ///< set when the element is itself a popup
    CWnd* m_pOther = nullptr;
    BOOL m_bEnableChanged = FALSE;
    BOOL m_bContinueRouting = FALSE;
    UINT m_nIndexMax = 0;
    CMenu* m_pParentMenu = nullptr;

    virtual void Enable(BOOL bOn = TRUE);
    /// nCheck: 0 off, 1 on, 2 indeterminate.
    virtual void SetCheck(int nCheck = 1);
    virtual void SetRadio(BOOL bOn = TRUE);
    virtual void SetText(LPCTSTR lpszText);
    /// Lets the next target be asked as well.
    void ContinueRouting() { m_bContinueRouting = TRUE; }
    /// Routes the update request to pTarget; an element without a command handler is disabled if so wished.
    BOOL DoUpdate(CCmdTarget* pTarget, BOOL bDisableIfNoHndler);
};

/// Shows the wait cursor while it lives.
class CWaitCursor {
public:
    CWaitCursor() { m_target.BeginWaitCursor(); }
    ~CWaitCursor() { m_target.EndWaitCursor(); }
    CWaitCursor(const CWaitCursor&) = delete;
    CWaitCursor& operator=(const CWaitCursor&) = delete;
    void Restore() { m_target.RestoreWaitCursor(); }

private:
    CCmdTarget m_target;
};
