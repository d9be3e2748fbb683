// SPDX-License-Identifier: MIT
#pragma once

#include <afxwin.h>

/// The commands of the explorer's context menu, and of its toolbar.
enum ExplorerCommand : int {
    ID_COPY = 100,
    ID_COPY_METAFILE,
    ID_COPY_SETUP,
    ID_EXPORT,
    ID_PRINT,
    ID_VIEW_3D,
    ID_VIEW_FRONT,
    ID_VIEW_TOP,
    ID_VIEW_SIDE,
    ID_SHOW_GRIDS,
    ID_SHOW_TIPS,
    ID_SHOW_LABELS,
    ID_SHOW_PLANES,
    ID_SHOW_LIGHTING,
    ID_SHOW_LEGEND,
    ID_SHOW_TOOLBAR,
    ID_EXAGGERATION, ///< the toolbar's sliders
    ID_RAMP,
    ID_SHOW_SHEET,
    ID_COPY_ROWS,
    ID_PASTE_ROWS
};

/// Fills an empty menu object with the commands. False when the system refuses.
bool createExplorerMenu(CMenu& menu);
/// The command of a key; 0 for a key without one.
int commandOfKey(UINT key);
/// The same for a key with Ctrl.
int commandOfCtrlKey(UINT key);
