// SPDX-License-Identifier: MIT
#include "vorn/copy/copy_info.h"

#include "tests/support/temp_folder.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <limits>

TEST(CopyInfo, SizeFollowsTheWindowOrTheUnits) {
    CWnd window;
    ASSERT_TRUE(
        window.CreateEx(0, AfxRegisterWndClass(0), "size", WS_POPUP, CRect(0, 0, 320, 240), nullptr, 0));
    CClientDC dc(&window);
    const int dpi = dc.GetDeviceCaps(LOGPIXELSX);
    const auto fromHimetric = [&](int himetric) { return ::MulDiv(himetric, dpi, 2540); };
    struct Case {
        const char* name;
        int units;
        float width, height;
        BOOL fixedSize;
        CSize size;
    };
    const Case cases[] = {
        {"the window's client area", 1, 15, 15, FALSE, {320, 240}},
        {"centimetres", 1, 15, 10.001F, TRUE, {fromHimetric(15000), fromHimetric(10001)}},
        {"inches", 2, 2, 0.5F, TRUE, {fromHimetric(5080), fromHimetric(1270)}},
        {"pixels are truncated", 0, 10.4F, 99.99F, TRUE, {10, 99}},
        {"unknown unit", 3, 10, 10, TRUE, {0, 0}},
        {"no number", 0, std::numeric_limits<float>::quiet_NaN(), 1e30F, TRUE, {0, INT_MAX}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        CvornCopyInfo info;
        info.nUnits = c.units;
        info.fWidth = c.width;
        info.fHeight = c.height;
        info.bFixedSize = c.fixedSize;
        EXPECT_EQ(info.GetDPSize(&dc, &window), c.size);
    }
    CvornCopyInfo noWindow;
    EXPECT_EQ(noWindow.GetDPSize(&dc, nullptr), CSize(fromHimetric(15000), fromHimetric(15000)));
    window.DestroyWindow();
}

TEST(CopyInfo, LivesInTheProfile) {
    const support::TempFolder folder;
    const std::string path = folder.pathOf("profile.ini");
    CWinApp application;
    CWinApp* app = &application;
    std::free(const_cast<char*>(app->m_pszProfileName)); // the application owns its names
    app->m_pszProfileName = ::_strdup(path.c_str());

    CvornCopyInfo saved;
    saved.nFormat = CF_METAFILEPICT;
    saved.fWidth = 7.25F;
    saved.bBorder = TRUE;
    saved.Save(app, "Chart");
    CvornCopyInfo loaded;
    loaded.Load(app, "Chart");
    EXPECT_EQ(memcmp(&loaded, &saved, 24), 0);

    BYTE junk[20] = {1, 2, 3};
    const CvornCopyInfo defaults;
    for (const UINT size : {20U, 0U, 1U}) {
        app->WriteProfileBinary("Broken", "Copy Info", junk, size);
        CvornCopyInfo unchanged;
        unchanged.Load(app, "Broken");
        EXPECT_EQ(memcmp(&unchanged, &defaults, 24), 0) << size << " bytes";
    }
}
