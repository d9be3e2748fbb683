// SPDX-License-Identifier: MIT
#pragma once

#include "vorn/api.h"

#include <afxwin.h>

/// What the user chose for copies of a view: 24 bytes, of which the order and the widths are part of the
/// value stored in the profile.
struct VORN_COPY_INFO {
    INT32 nFormat;   ///< CF_BITMAP (2), CF_METAFILEPICT (3), or CF_DIB (8), which counts as a bitmap.
    INT32 nUnits;    ///< The unit of the size: 0 pixels, 1 centimetres, 2 inches.
    float fWidth;    ///< In `nUnits`.
    float fHeight;   ///< In `nUnits`.
    BOOL bFixedSize; ///< Nonzero: `fWidth` x `fHeight`; zero: the size of the window's client area.
    BOOL bBorder;    ///< Draw a border round the copy.
};
static_assert(sizeof(VORN_COPY_INFO) == 24);

/// The settings of one view's copies: kept in the profile, asked for in a dialog, turned into a size in
/// pixels. It holds the record and nothing else.
///
///     CvornCopyInfo info;
///     info.Load(AfxGetApp(), "Chart");
///     if (info.Setup(TRUE, "Chart")) info.Save(AfxGetApp(), "Chart");
class VORN_API CvornCopyInfo : public VORN_COPY_INFO {
public:
    /// A bitmap of 15 x 15 cm that follows the window instead while the size is not fixed; no border.
    CvornCopyInfo();

    /// Reads the entry "Copy Info" of the section. Unless the value is exactly one record, nothing changes.
    void Load(CWinApp* pApp, const char* pszSection);
    /// Writes the record, as it is, to the entry "Copy Info" of the section.
    void Save(CWinApp* pApp, const char* pszSection);

    /// Asks the user (see `vornGetUserCopyInfo`). Returns 1 for OK, 0 for Cancel, which changes nothing.
    int Setup(int bAllowMetafile, const char* pszCaption);

    /// The size of the copy in device pixels. The DC, needed unless the window's size is taken, turns
    /// centimetres and inches into pixels. (0, 0) for an unknown unit.
    CSize GetDPSize(CDC* pDC, CWnd* pWnd) const;

    /// The record's switches.
    int IsBorder() const { return bBorder; }
    int IsFixedSize() const { return bFixedSize; }
};

/// Shows the modal dialog "Copy Setup" on the record. `pszCaption`, which may be null, is added to its title.
/// Metafiles are offered only when `bAllowMetafile` is nonzero. Returns 1 for OK, with the choice in `info`
/// (a bitmap always as CF_BITMAP); 0 for Cancel or when the dialog cannot be shown, with `info` unchanged.
VORN_API int vornGetUserCopyInfo(const char* pszCaption, int bAllowMetafile, VORN_COPY_INFO& info);
