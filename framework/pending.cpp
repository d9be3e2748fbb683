// SPDX-License-Identifier: MIT
// Stands in for the window sources until they are there; CMakeLists.txt leaves it out then.

#include "afxwin.h"

IMPLEMENT_DYNAMIC(CCmdTarget, CObject)

BOOL CCmdTarget::OnCmdMsg(UINT, int, void*, AFX_CMDHANDLERINFO*) { return FALSE; }
const AFX_MSGMAP* CCmdTarget::GetMessageMap() const { return GetThisMessageMap(); }
const AFX_MSGMAP* CCmdTarget::GetThisMessageMap() { return nullptr; }
BOOL CWnd::WalkPreTranslateTree(HWND, MSG*) { return FALSE; }
