// SPDX-License-Identifier: MIT
#pragma once

#include <afxwin.h>
#include <cstddef>
#include <span>

/// What the sources of dialogs share.
namespace vornafx {

struct TemplatePlace {
    DWORD style;
    short x;
    short y;
};

/// Where and how a template, of the old or the extended form, puts its dialog.
TemplatePlace placeOf(LPCDLGTEMPLATE dialogTemplate);

/// A dialog template among the resources of a module; null when it is not there.
LPCDLGTEMPLATE findTemplate(HINSTANCE instance, LPCTSTR name);

/// Sends the initialisation data of a dialog to its controls. FALSE when the data ends in the middle of an
/// item or a control refuses one.
BOOL fillControls(HWND dialog, std::span<const std::byte> data);

/// The top-level window that owns a modal dialog: the parent's, or the main window's; null when there is
/// none.
HWND modalOwner(CWnd* parent);

} // namespace vornafx
