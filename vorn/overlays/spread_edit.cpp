// SPDX-License-Identifier: MIT
#include "vorn/overlays/spread.h"

#include <afxdlgs.h>

void CvornSpread::EditCell(int row, int col) {
    if (Contains(row, col) && GetType(row, col) == CvornCell::ColourCell) EditCellColour(row, col);
}

void CvornSpread::EditCellColour(int row, int col) {
    AFX_MANAGE_STATE(AfxGetStaticModuleState());
    const CvornColour current = Contains(row, col) ? GetColour(row, col) : CvornColour();
    CColorDialog dialog(current, CC_RGBINIT | CC_FULLOPEN, m_pParent);
    if (dialog.DoModal() != IDOK) return;

    SetColour(row, col, dialog.GetColor());
    if (m_pMsgWnd == nullptr) return;
    int place[2] = {row, col};
    ::SendMessageA(m_pMsgWnd->m_hWnd, m_nMsgID, static_cast<WPARAM>(m_nID), reinterpret_cast<LPARAM>(place));
}
