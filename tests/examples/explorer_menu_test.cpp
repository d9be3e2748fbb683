// SPDX-License-Identifier: MIT
#include "explorer/explorer_menu.h"
#include "explorer/output.h"
#include "tests/examples/explorer_window.h"
#include "tests/support/dialog_driver.h"
#include "tests/support/handle_counts.h"
#include "tests/support/temp_folder.h"

#include <cstdlib>

namespace {

using support::ExplorerWindow;

TEST(ExplorerMenu, CopySetupComesBackAtTheNextStart) {
    const support::TempFolder folder;
    CWinApp application;
    CWinApp* app = &application;
    std::free(const_cast<char*>(app->m_pszProfileName)); // the application owns its names
    app->m_pszProfileName = ::_strdup(folder.pathOf("profile.ini").c_str());
    {
        ExplorerWindow window(support::waves(3, 3));
        ASSERT_TRUE(window.createWindow("menu"));
        support::DialogDriver driver({[](HWND dialog) {
            support::press(dialog, IDC_COPY_FIXED_SIZE);
            ::SetDlgItemTextA(dialog, IDC_COPY_WIDTH, "7");
            support::press(dialog, IDC_COPY_METAFILE);
            support::press(dialog, IDOK);
        }});
        window.choose(ID_COPY_SETUP);
        EXPECT_TRUE(driver.finished());
    }
    ExplorerWindow next(support::waves(3, 3));
    ASSERT_TRUE(next.createWindow("menu"));
    next.loadCopySettings();
    EXPECT_EQ(next.copySettings().fWidth, 7);
    EXPECT_EQ(next.copySettings().nFormat, CF_METAFILEPICT);
    next.choose(ID_COPY);
    EXPECT_TRUE(::IsClipboardFormatAvailable(CF_ENHMETAFILE));
}

TEST(ExplorerMenu, CopiesAndFilesLeaveViewAndHandlesAsTheyWere) {
    const support::TempFolder folder;
    ExplorerWindow window(support::waves(3, 3));
    ASSERT_TRUE(window.createWindow("menu"));
    const support::Picture before = window.picture({200, 150});
    const auto leave = [&] {
        window.choose(ID_COPY);
        EXPECT_TRUE(::IsClipboardFormatAvailable(CF_DIB));
        window.choose(ID_COPY_METAFILE);
        EXPECT_FALSE(::IsClipboardFormatAvailable(CF_DIB));
        CRect client;
        window.GetClientRect(client);
        for (const char* name : {"a.bmp", "a.jpg", "a.png"}) {
            saveChartPicture(window, window.copySettings(), folder.pathOf(name));
            CvornImageCodec image;
            EXPECT_TRUE(image.Load(folder.pathOf(name).c_str())) << name;
            EXPECT_EQ(CSize(image.GetWidth(), image.GetHeight()), client.Size());
        }
        for (const char* name : {"no folder\\a.png", "a.gif"})
            EXPECT_THROW(saveChartPicture(window, window.copySettings(), folder.pathOf(name)),
                         std::runtime_error);
        EXPECT_TRUE(folder.read("a.png.part").empty());
    };
    leave();
    const auto counts = support::HandleCounts::now();
    for (int i = 0; i < 3; ++i)
        leave();
    EXPECT_EQ(support::HandleCounts::now(), counts);
    EXPECT_EQ(window.picture({200, 150}), before);
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
