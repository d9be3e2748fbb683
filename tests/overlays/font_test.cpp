// SPDX-License-Identifier: MIT
#include "tests/overlays/overlay_test.h"
#include "tests/support/handle_counts.h"
#include "vorn/overlays/font.h"

namespace {

using FontTest = OverlayTest;

LONG realisedHeight(const CvornFont& font) {
    LOGFONTA lf = {};
    ::GetObjectA(static_cast<HFONT>(font), sizeof(lf), &lf);
    return lf.lfHeight;
}

TEST_F(FontTest, PointsBecomeTheUnitsOfTheMapMode) {
    const int pixels = 18 * ::GetDeviceCaps(m_dc, LOGPIXELSY) / 72;
    const std::pair<int, LONG> cases[] = {
        {MM_TEXT, -pixels}, {MM_ANISOTROPIC, -10 * pixels}, {MM_LOMETRIC, 18}};
    for (const auto& [mode, height] : cases) {
        m_dc.SetMapMode(mode);
        m_dc.SetWindowExt(1000, 1000); // ten logical units a pixel, where the mode allows it
        m_dc.SetViewportExt(100, 100);
        CvornFont font;
        font.m_lf.lfHeight = 18;
        EXPECT_TRUE(font.New(m_dc));
        EXPECT_EQ(realisedHeight(font), height) << "map mode " << mode;
        EXPECT_EQ(font.m_lf.lfHeight, 18);
    }
}

TEST_F(FontTest, SelectRealisesAndUnselectPutsBack) {
    const auto deviceFont = ::GetCurrentObject(m_dc, OBJ_FONT);
    m_dc.SetTextColor(RGB(1, 2, 3));
    CvornFont font;
    font.m_rgb = RGB(200, 100, 0);
    EXPECT_EQ(font.Select(m_dc), deviceFont);
    EXPECT_EQ(m_dc.GetTextColor(), RGB(200, 100, 0));
    TEXTMETRICA metrics = {};
    ::GetTextMetricsA(m_dc, &metrics);
    EXPECT_EQ(CvornFont::GetRealHeight(), metrics.tmHeight);
    EXPECT_EQ(font.Unselect(m_dc), static_cast<HFONT>(font));
    EXPECT_EQ(::GetCurrentObject(m_dc, OBJ_FONT), deviceFont);
    EXPECT_EQ(m_dc.GetTextColor(), RGB(1, 2, 3));
}

TEST_F(FontTest, CopiesShareOneHandleThatIsDeletedOnce) {
    const auto before = support::HandleCounts::now();
    {
        CvornFont first;
        first.New(m_dc);
        CvornFont second = first;
        const HFONT shared = first;
        first.m_lf.lfHeight = 40;
        first.Update(m_dc);
        EXPECT_LT(realisedHeight(first), realisedHeight(second)); // which still has the shared one
        second.Delete();
        EXPECT_EQ(::GetObjectType(shared), 0U);
        const HFONT earlier = first;
        first.New(m_dc); // leaves what may still be selected somewhere
        EXPECT_EQ(::GetObjectType(earlier), static_cast<DWORD>(OBJ_FONT));
    }
    EXPECT_EQ(support::HandleCounts::now(), before);
}

TEST_F(FontTest, BlanksOfTheListsAdvance) {
    const int width = extentOf("a b").cx - extentOf("b").cx;
    m_map.gluUnProject(100, 200, 0.5);
    const Picture picture = pictureOf([this] {
        m_map.glRasterPos3d();
        ::glListBase(m_nFontLists);
        ::glCallLists(3, GL_UNSIGNED_BYTE, "a b");
    });
    EXPECT_EQ(picture.characters.back(), character(100 + width, 400, 0.5));
}

} // namespace
