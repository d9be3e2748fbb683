// SPDX-License-Identifier: MIT
#include "tests/framework/quiet_app.h"
#include "tests/support/temp_folder.h"

#include <afxdlgs.h>
#include <colordlg.h>
#include <gtest/gtest.h>

namespace {

/// Types a colour and presses OK by itself. The question whether the colour is good is asked here, as not
/// every system asks it.
class ChoosingDialog : public CColorDialog {
public:
    using CColorDialog::CColorDialog;
    COLORREF m_seen = 0;
    LRESULT m_answer = 0;

protected:
    BOOL OnInitDialog() override {
        EXPECT_EQ(CWnd::FromHandlePermanent(m_hWnd), this);
        CHOOSECOLOR asked = m_cc;
        asked.rgbResult = RGB(7, 7, 7);
        m_answer = SendMessage(::RegisterWindowMessageA(COLOROKSTRINGA), 0, reinterpret_cast<LPARAM>(&asked));
        SetCurrentColor(RGB(9, 9, 9)); // not known everywhere, either; what is typed counts
        for (int i = 0; i < 3; i++)
            SetDlgItemInt(COLOR_RED + i, static_cast<UINT>(10 * (i + 1)));
        PostMessage(WM_COMMAND, IDOK);
        return CColorDialog::OnInitDialog();
    }
    BOOL OnColorOK() override {
        m_seen = GetColor();
        return m_seen == RGB(7, 7, 7);
    }
};

TEST(ColorDialog, ObjectReceivesTheDialogsMessages) {
    QuietApp app;
    ChoosingDialog dialog(RGB(1, 2, 3), CC_FULLOPEN);
    EXPECT_EQ(dialog.DoModal(), IDOK);
    EXPECT_EQ(dialog.m_hWnd, nullptr);
    EXPECT_EQ(dialog.GetColor(), static_cast<COLORREF>(RGB(10, 20, 30)));
    EXPECT_NE(dialog.m_seen, 0u) << "the colour that was asked about";
    EXPECT_NE(dialog.m_answer, 0) << "refused";
}

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

TEST(FileDialog, StepsThroughSeveralNames) {
    const struct {
        const char* files; // each name ended by a zero
        size_t size;
        const char* paths;
    } cases[] = {{"C:\\a.csv\0", 10, "C:\\a.csv;"},
                 {"C:\\in\0a.csv\0b.csv\0", 19, "C:\\in\\a.csv;C:\\in\\b.csv;"},
                 {"C:\\\0a.csv\0", 10, "C:\\a.csv;"}};
    for (const auto& c : cases) {
        CFileDialog dialog(TRUE, nullptr, nullptr, OFN_ALLOWMULTISELECT);
        char names[64] = "";
        memcpy(names, c.files, c.size);
        dialog.m_ofn.lpstrFile = names;
        CString paths;
        for (POSITION next = dialog.GetStartPosition(); next != nullptr;)
            paths += dialog.GetNextPathName(next) + ";";
        EXPECT_STREQ(paths, c.paths);
    }
}

TEST(PrintDialog, ReadsTheChosenPrinter) {
    CPrintDialog dialog(FALSE);
    EXPECT_STREQ(dialog.GetDeviceName(), "");
    EXPECT_EQ(dialog.CreatePrinterDC(), nullptr);
    struct Chosen {
        DEVNAMES offsets = {8, 16, 24, 0};
        char names[24] = "driver\0\0printer\0port";
    } chosen;
    dialog.m_pd.hDevNames = ::GlobalAlloc(GMEM_FIXED, sizeof chosen);
    memcpy(dialog.m_pd.hDevNames, &chosen, sizeof chosen);
    EXPECT_STREQ(dialog.GetDriverName(), "driver");
    EXPECT_STREQ(dialog.GetDeviceName(), "printer");
    EXPECT_STREQ(dialog.GetPortName(), "port");
    ::GlobalFree(dialog.m_pd.hDevNames);
}

} // namespace
