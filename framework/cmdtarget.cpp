// SPDX-License-Identifier: MIT
#include "stored_handler.h"
#include <afxwin.h>
#include <utility>

IMPLEMENT_DYNAMIC(CCmdTarget, CObject)

const AFX_MSGMAP* CCmdTarget::GetThisMessageMap() {
    static const AFX_MSGMAP_ENTRY entries[] = {{0, 0, 0, 0, AfxSig_end, nullptr}};
    static const AFX_MSGMAP map = {nullptr, entries};
    return &map;
}

const AFX_MSGMAP* CCmdTarget::GetMessageMap() const {
    return GetThisMessageMap();
}

namespace {

const AFX_MSGMAP_ENTRY* findCommand(const AFX_MSGMAP* map, UINT message, UINT code, UINT id) {
    for (; map != nullptr; map = map->pfnGetBaseMap == nullptr ? nullptr : map->pfnGetBaseMap()) {
        for (const AFX_MSGMAP_ENTRY* entry = map->lpEntries; entry->nSig != AfxSig_end; ++entry) {
            if (entry->nMessage == message && entry->nCode == code && entry->nID <= id &&
                id <= entry->nLastID)
                return entry;
        }
    }
    return nullptr;
}

/// Calls a command handler; returns whether the command is dealt with.
BOOL callCommand(CCmdTarget& target, const AFX_MSGMAP_ENTRY& entry, UINT id, void* extra) {
    using vornafx::handlerAs;
    switch (entry.nSig) {
    case AfxSigCmd_v:
        (target.*entry.pfn)();
        return TRUE;
    case AfxSigCmd_u:
        (target.*handlerAs<void (CCmdTarget::*)(UINT)>(entry.pfn))(id);
        return TRUE;
    case AfxSigCmd_bu:
        return (target.*handlerAs<BOOL (CCmdTarget::*)(UINT)>(entry.pfn))(id);
    case AfxSigUpdate_C: {
        auto* update = static_cast<CCmdUI*>(extra);
        (target.*handlerAs<void (CCmdTarget::*)(CCmdUI*)>(entry.pfn))(update);
        return !std::exchange(update->m_bContinueRouting, FALSE);
    }
    default:
        break;
    }
    auto* notify = static_cast<AFX_NOTIFY*>(extra);
    switch (entry.nSig) {
    case AfxSigNotify_v:
        (target.*handlerAs<void (CCmdTarget::*)(NMHDR*, LRESULT*)>(entry.pfn))(notify->pNMHDR,
                                                                               notify->pResult);
        return TRUE;
    case AfxSigNotify_u:
        (target.*handlerAs<void (CCmdTarget::*)(UINT, NMHDR*, LRESULT*)>(entry.pfn))(id, notify->pNMHDR,
                                                                                     notify->pResult);
        return TRUE;
    case AfxSigNotify_bu:
        return (target.*handlerAs<BOOL (CCmdTarget::*)(UINT, NMHDR*, LRESULT*)>(entry.pfn))(
            id, notify->pNMHDR, notify->pResult);
    default:
        return FALSE;
    }
}

} // namespace

BOOL CCmdTarget::OnCmdMsg(UINT nID, int nCode, void* pExtra, AFX_CMDHANDLERINFO* pHandlerInfo) {
    UINT message = WM_COMMAND;
    UINT code = static_cast<UINT>(nCode);
    if (code != CN_UPDATE_COMMAND_UI && HIWORD(code) != 0) {
        message = HIWORD(code);
        code = LOWORD(code);
    }
    const AFX_MSGMAP_ENTRY* entry = findCommand(GetMessageMap(), message, code, nID);
    if (entry == nullptr) return FALSE;
    if (pHandlerInfo != nullptr) {
        *pHandlerInfo = {this, entry->pfn};
        return TRUE;
    }
    return callCommand(*this, *entry, nID, pExtra);
}

void CCmdTarget::BeginWaitCursor() {
    if (CWinApp* app = AfxGetApp()) app->DoWaitCursor(1);
}

void CCmdTarget::EndWaitCursor() {
    if (CWinApp* app = AfxGetApp()) app->DoWaitCursor(-1);
}

void CCmdTarget::RestoreWaitCursor() {
    if (CWinApp* app = AfxGetApp()) app->DoWaitCursor(0);
}
