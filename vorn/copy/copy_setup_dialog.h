// SPDX-License-Identifier: MIT
#pragma once

#include "vorn/api.h"
#include "vorn/copy/resource.h"

#include <afxwin.h>

/// The modal dialog "Copy Setup". Fill the fields, call `DoModal` with the library's module state current,
/// and read them back after IDOK; `vornGetUserCopyInfo` does all of that.
class VORN_API CdlgCopySetup : public CDialog {
public:
    enum { IDD = IDD_COPY_SETUP };
    /// Indices of the units combo box, and values of `VORN_COPY_INFO::nUnits`.
    enum Units { UNITS_PIXELS = 0, UNITS_CM = 1, UNITS_INCHES = 2 };
    /// Indices of the radio group.
    enum Type { TYPE_BITMAP = 0, TYPE_METAFILE = 1 };

    /// The caption, which may be null, is added to the title and must outlive the dialog.
    explicit CdlgCopySetup(const char* pszCaption, CWnd* pParent = nullptr);

    /// One of Units.
    int m_nUnits = UNITS_CM;
    /// Added to the title; not owned, may be null.
    const char* m_pszCaption;
    /// One of Type.
    int m_nType = TYPE_BITMAP;
    float m_fWidth = 0;  ///< In the current units, 1 to 100000.
    float m_fHeight = 0; ///< In the current units, 1 to 100000.
    /// The two check boxes: the size counts, and a border is drawn.
    BOOL m_bFixedSize = FALSE;
    BOOL m_bBorder = FALSE;
    int m_nLogPixelsX = 1; ///< Dots per inch of the screen, from opening on.
    int m_nLogPixelsY = 1;
    /// 0 hides the choice of a metafile.
    BOOL m_bAllowMetafile = TRUE;

protected:
    /// Fills the controls; exchanges and checks the values, telling a wrong one and keeping the dialog open.
    BOOL OnInitDialog() override;
    void DoDataExchange(CDataExchange* pDX) override;

    /// Handlers: another unit converts the size shown, the check box enables or disables it.
    void OnSelchangeUnits();
    void OnFixedSize();

    DECLARE_MESSAGE_MAP()

private:
    void UpdateControls();
};
