// SPDX-License-Identifier: MIT
#include "explorer/explorer_menu.h"
#include "explorer/explorer_view.h"
#include "explorer/output.h"
#include "tests/support/dialog_driver.h"
#include "tests/support/handle_counts.h"
#include "tests/support/temp_folder.h"

#include <cstdlib>
#include <gtest/gtest.h>

namespace {

examples::Grid slope() {
    examples::Grid grid;
    grid.rows = grid.columns = 3;
    grid.values = {0, 1, 2, 1, 2, 3, 2, 3, 5};
    return grid;
}

Options landOptions() {
    Options options;
    options.ramp = "land";
    options.toolbar = false; // it shows what is on
    return options;
}

/// A hidden chart window with the menu's hooks open to the test.
class View : public CExplorerView {
public:
    View() : CExplorerView(slope(), landOptions()) { EXPECT_TRUE(createWindow("menu")); }
    ~View() override { DestroyWindow(); }

    using CExplorerView::OnMenuItem;
    std::vector<BYTE> picture() {
        CvornDIBSurface surface;
        EXPECT_TRUE(surface.Create(200, 150, static_cast<HPALETTE>(nullptr)));
        EXPECT_TRUE(drawPicture(surface));
        const BYTE* bits = surface.GetBitsAddress();
        return {bits, bits + static_cast<std::size_t>(surface.GetStorageWidth()) * 150};
    }
};

TEST(ExplorerMenu, SwitchesAndPresetsShowInPictureAndCheckMarks) {
    View view;
    CMenu menu;
    ASSERT_TRUE(createExplorerMenu(menu));
    const auto isChecked = [&](int id) {
        view.ProcessMenuCmdUI(&menu);
        return (menu.GetMenuState(id, MF_BYCOMMAND) & MF_CHECKED) != 0;
    };
    const std::vector<BYTE> all = view.picture();
    for (int id : {ID_SHOW_GRIDS, ID_SHOW_TIPS, ID_SHOW_LABELS, ID_SHOW_PLANES, ID_SHOW_LIGHTING}) {
        SCOPED_TRACE(id);
        EXPECT_TRUE(isChecked(id));
        view.OnMenuItem(id);
        EXPECT_FALSE(isChecked(id));
        EXPECT_EQ(view.picture() == all, id == ID_SHOW_PLANES) << "no plane has a picture to hide";
        view.OnMenuItem(id);
        EXPECT_TRUE(isChecked(id));
        EXPECT_EQ(view.picture(), all);
    }
    for (auto [id, viewPoint] : {std::pair{ID_VIEW_TOP, ViewPoint::top},
                                 {ID_VIEW_FRONT, ViewPoint::front},
                                 {ID_VIEW_SIDE, ViewPoint::side},
                                 {ID_VIEW_3D, ViewPoint::threeD}}) {
        view.OnMenuItem(id);
        const std::vector<BYTE> chosen = view.picture();
        EXPECT_EQ(chosen == all, id == ID_VIEW_3D);
        view.lookFrom(viewPoint);
        EXPECT_EQ(view.picture(), chosen) << id;
    }
}

TEST(ExplorerMenu, CopySetupComesBackAtTheNextStart) {
    const support::TempFolder folder;
    const std::string profile = folder.pathOf("profile.ini");
    CWinApp application;
    CWinApp* app = &application;
    std::free(const_cast<char*>(app->m_pszProfileName)); // the application owns its names
    app->m_pszProfileName = ::_strdup(profile.c_str());
    {
        View view;
        support::DialogDriver driver({[](HWND dialog) {
            support::press(dialog, IDC_COPY_FIXED_SIZE);
            ::SetDlgItemTextA(dialog, IDC_COPY_WIDTH, "7");
            support::press(dialog, IDC_COPY_METAFILE);
            support::press(dialog, IDOK);
        }});
        view.OnMenuItem(ID_COPY_SETUP);
        EXPECT_TRUE(driver.finished());
    }
    View next;
    next.loadCopySettings();
    EXPECT_EQ(next.copySettings().fWidth, 7);
    EXPECT_EQ(next.copySettings().nFormat, CF_METAFILEPICT);
    next.OnMenuItem(ID_COPY);
    EXPECT_TRUE(::IsClipboardFormatAvailable(CF_ENHMETAFILE));
}

TEST(ExplorerMenu, CopiesAndFilesLeaveViewAndHandlesAsTheyWere) {
    const support::TempFolder folder;
    View view;
    const std::vector<BYTE> before = view.picture();
    const auto leave = [&] {
        view.OnMenuItem(ID_COPY);
        EXPECT_TRUE(::IsClipboardFormatAvailable(CF_DIB));
        view.OnMenuItem(ID_COPY_METAFILE);
        EXPECT_FALSE(::IsClipboardFormatAvailable(CF_DIB));
        CRect client;
        view.GetClientRect(client);
        for (const char* name : {"a.bmp", "a.jpg", "a.png"}) {
            saveChartPicture(view, view.copySettings(), folder.pathOf(name));
            CvornImageCodec image;
            EXPECT_TRUE(image.Load(folder.pathOf(name).c_str())) << name;
            EXPECT_EQ(CSize(image.GetWidth(), image.GetHeight()), client.Size());
        }
        for (const char* name : {"no folder\\a.png", "a.gif"})
            EXPECT_THROW(saveChartPicture(view, view.copySettings(), folder.pathOf(name)),
                         std::runtime_error);
        EXPECT_TRUE(folder.read("a.png.part").empty());
    };
    leave();
    const auto counts = support::HandleCounts::now();
    for (int i = 0; i < 3; ++i)
        leave();
    EXPECT_EQ(support::HandleCounts::now(), counts);
    EXPECT_EQ(view.picture(), before);
}

TEST(ExplorerMenu, PagesAreFilledFromTheMiddle) {
    struct Case {
        CSize page, margin, proportions;
        CRect expected;
    };
    for (const Case& c : {Case{{1000, 2000}, {50, 50}, {3, 2}, {50, 700, 950, 1300}},
                          {{2000, 1000}, {50, 50}, {300, 200}, {325, 50, 1675, 950}},
                          {{9900, 14000}, {200, 200}, {1 << 20, 1 << 20}, {200, 2250, 9700, 11750}},
                          {{10, 10}, {9, 9}, {1, 1}, {4, 4, 5, 5}}})
        EXPECT_EQ(centredOn(c.page, c.margin, c.proportions), c.expected);
}

} // namespace
