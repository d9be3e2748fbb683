// SPDX-License-Identifier: MIT
#include "tests/overlays/overlay_test.h"
#include "tests/support/handle_counts.h"
#include "vorn/overlays/font.h"

namespace {

class FontTest : public OverlayTest {
protected:
    static LONG realisedHeight(const CvornFont& font) {
        LOGFONTA lf = {};
        ::GetObjectA(static_cast<HFONT>(font), sizeof(lf), &lf);
        return lf.lfHeight;
    }
};

TEST_F(FontTest, PointsBecomeTheUnitsOfTheMapMode) {
    const int dpi = ::GetDeviceCaps(m_dc, LOGPIXELSY);
    const struct {
        int mode;
        int points;
        LONG height;
    } cases[] = {
        {MM_TEXT, 18, -18 * dpi / 72},
        {MM_ANISOTROPIC, 18, -18 * dpi / 72 * 10}, // ten logical units a pixel
        {MM_LOMETRIC, 18, 18},
    };
    for (const auto& c : cases) {
        const int saved = m_dc.SaveDC();
        m_dc.SetMapMode(c.mode);
        if (c.mode == MM_ANISOTROPIC) {
            m_dc.SetWindowExt(1000, 1000);
            m_dc.SetViewportExt(100, 100);
        }
        CvornFont font;
        font.m_lf.lfHeight = c.points;
        EXPECT_TRUE(font.New(m_dc));
        EXPECT_EQ(realisedHeight(font), c.height) << "map mode " << c.mode;
        EXPECT_EQ(font.m_lf.lfHeight, c.points);
        m_dc.RestoreDC(saved);
    }
}

TEST_F(FontTest, SelectRealisesAndUnselectPutsBack) {
    const auto deviceFont = ::GetCurrentObject(m_dc, OBJ_FONT);
    m_dc.SetTextColor(RGB(1, 2, 3));
    CvornFont font;
    font.m_rgb = RGB(200, 100, 0);
    font.m_lf.lfHeight = 30;

    EXPECT_EQ(font.Select(m_dc), deviceFont);
    EXPECT_EQ(::GetCurrentObject(m_dc, OBJ_FONT), static_cast<HFONT>(font));
    EXPECT_EQ(m_dc.GetTextColor(), RGB(200, 100, 0));
    TEXTMETRICA metrics = {};
    ::GetTextMetricsA(m_dc, &metrics);
    EXPECT_EQ(CvornFont::GetRealHeight(), metrics.tmHeight);
    EXPECT_EQ(CvornFont::GetRealWidth(), metrics.tmAveCharWidth);
    EXPECT_GE(metrics.tmHeight, 40); // 30 points at 96 dots an inch

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
        EXPECT_EQ(static_cast<HFONT>(second), shared);

        first.m_lf.lfHeight = 40;
        first.Update(m_dc);
        EXPECT_NE(static_cast<HFONT>(first), shared);
        EXPECT_LT(realisedHeight(first), realisedHeight(second));
        second.Delete();
        EXPECT_EQ(::GetObjectType(shared), 0U);

        const HFONT earlier = first;
        first.New(m_dc); // leaves what may still be selected somewhere
        EXPECT_EQ(::GetObjectType(earlier), static_cast<DWORD>(OBJ_FONT));
    }
    EXPECT_EQ(support::HandleCounts::now(), before);
}

} // namespace
