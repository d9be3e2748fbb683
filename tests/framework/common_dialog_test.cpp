// SPDX-License-Identifier: MIT
#include "tests/framework/quiet_app.h"
#include "tests/support/temp_folder.h"

#include <afxdlgs.h>
#include <gtest/gtest.h>

namespace {

/// Presses OK twice by itself, and takes only the second one.
class PickingDialog : public CFileDialog {
public:
    using CFileDialog::CFileDialog;
    int m_oks = 0;

protected:
    BOOL OnInitDialog() override {
        GetParent()->PostMessage(WM_COMMAND, IDOK);
        GetParent()->PostMessage(WM_COMMAND, IDOK);
        GetParent()->PostMessage(WM_COMMAND, IDCANCEL);
        return CFileDialog::OnInitDialog();
    }
    BOOL OnFileNameOK() override { return ++m_oks == 1; }
};

TEST(FileDialog, GivesThePartsOfTheChosenName) {
    QuietApp app;
    const support::TempFolder folder;
    const CString path = CString(folder.pathOf("surface.v2.csv").c_str());
    PickingDialog dialog(FALSE, "csv", path, OFN_HIDEREADONLY, "Grids (*.csv)|*.csv||");
    EXPECT_EQ(dialog.DoModal(), IDOK);
    EXPECT_EQ(dialog.m_oks, 2) << "the first was refused";
    EXPECT_EQ(dialog.GetPathName().CompareNoCase(path), 0) << dialog.GetPathName();
    EXPECT_STREQ(dialog.GetFileName(), "surface.v2.csv");
    EXPECT_STREQ(dialog.GetFileTitle(), "surface.v2");
    EXPECT_STREQ(dialog.GetFileExt(), "csv");
    EXPECT_EQ(dialog.GetFolderPath() + "\\surface.v2.csv", dialog.GetPathName());
}

} // namespace
