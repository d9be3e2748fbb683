// SPDX-License-Identifier: MIT
#include "vorn/overlays/spread.h"

namespace {

bool covers(const CvornSpreadHeader& header, int offset) {
    return header.m_nLayout <= offset && offset <= header.m_nLayout + header.m_nSize;
}

/// A border that two rows share belongs to the upper one.
int rowAt(const CvornSpread& spread, int y) {
    for (int row = 0; row < spread.m_nRows; ++row)
        if (covers(spread.m_pRowHeaders[row], y - spread.m_rcPos.top)) return row;
    return -1;
}

/// A border that two columns share belongs to the right one.
int colAt(const CvornSpread& spread, int x) {
    for (int col = spread.m_nCols - 1; col >= 0; --col)
        if (covers(spread.m_pColHeaders[col], x - spread.m_rcPos.left)) return col;
    return -1;
}

/// What a click on one row or column does; clear(keep) deselects all of them but one. True for a change.
template <typename Clear>
bool click(CvornSpread& spread, CvornSpreadHeader& header, int index, bool ctrl, bool mayDeselect,
           Clear clear) {
    if (!header.GetParam(SHP_SELECTED)) {
        if (!ctrl) clear(-1);
        header.SetParam(SHP_SELECTED, SHP_SELECTED);
        ++spread.m_nSelCount;
        return true;
    }
    if (ctrl && mayDeselect) {
        header.SetParam(0, SHP_SELECTED);
        --spread.m_nSelCount;
        return true;
    }
    if (!ctrl && spread.m_nSelCount > 1) {
        clear(index);
        return true;
    }
    return false;
}

/// The anchor follows a selected item and leaves a deselected one.
void moveAnchor(CvornSpread& spread, int index, bool selected) {
    if (selected) {
        spread.m_nSelAnchor = index;
    } else if (spread.m_nSelAnchor == index) {
        spread.m_nSelAnchor = -1;
    }
}

} // namespace

int CvornSpread::OnLeftMouseButton(POINT pt, DWORD nFlags, int bEdit) {
    if (!HitTest(pt)) return 0;
    const int row = rowAt(*this, pt.y);
    const int col = colAt(*this, pt.x);
    const bool ctrl = (nFlags & MK_CONTROL) != 0;
    bool changed = false;

    if (IsRowMode()) {
        const bool mayDeselect = m_nSelCount > 1 || GetParam(SPP_DESELECTLAST);
        if (row >= 0)
            changed = click(*this, m_pRowHeaders[row], row, ctrl, mayDeselect,
                            [this](int keep) { ClearRowSelection(keep); });
        moveAnchor(*this, row, IsRowSelected(row));
    } else if (IsColMode()) {
        if (col >= 0)
            changed = click(*this, m_pColHeaders[col], col, ctrl, true,
                            [this](int keep) { ClearColSelection(keep); });
        moveAnchor(*this, col, IsColSelected(col));
    } else {
        ClearRowSelection(-1);
        ClearColSelection(-1);
    }

    if (bEdit && m_nSelCount == 1 && IsRowMode() && IsRowSelected(row) && col >= 0) EditCell(row, col);
    return changed;
}
