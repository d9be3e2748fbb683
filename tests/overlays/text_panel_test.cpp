// SPDX-License-Identifier: MIT
#include "tests/overlays/overlay_test.h"
#include "vorn/overlays/text_panel.h"

#include <memory>
#include <tuple>

namespace {

class TextPanelTest : public OverlayTest {
protected:
    void layOut(const char* text) {
        m_panel.UpdateText(text);
        m_panel.SetZ(0.25F);
        m_panel.UpdateMetrics(m_nFontLists, m_nList, CvornColour(0xFFFFFF, 1), m_back, &m_dc, &m_font);
    }
    Picture draw(CvornTextPanel& panel, int highlight = 0) {
        return pictureOf([&] { panel.glOutput(m_rc, &m_map, 0.1F, highlight); });
    }

    CvornTextPanel m_panel;
    const CvornColour m_back{0, 0, 0.4F, 1};
    const CRect m_rc{50, 500, 750, 100}; // y upwards
};

TEST_F(TextPanelTest, TextBecomesATable) {
    const std::tuple<const char*, int, std::vector<Lines>> cases[] = {
        // text, rows, columns
        {"a\tbbb\ncc", 2, {{"a", "cc"}, {"bbb"}}},
        {"\n", 2, {{"", ""}}},
        {"x\r\ny", 2, {{"x\r", "y"}}},
        {"a\t\t\tb", 1, {{"a"}, {""}, {""}, {"b"}}},
        {"\t\n\t\t", 2, {{"", ""}, {"", ""}, {""}}}};
    for (const auto& [text, rows, columns] : cases) {
        layOut(text);
        ASSERT_EQ(m_panel.m_nCols, static_cast<int>(columns.size())) << text;
        ASSERT_EQ(m_panel.m_nRows, rows) << text;
        float width = 2.0F * pixels(50);
        for (int col = 0; col < m_panel.m_nCols; width += m_panel.m_pfColWidth[col++]) {
            long widest = 0;
            for (const auto& cell : columns[col])
                widest = std::max(widest, extentOf(cell).cx);
            EXPECT_EQ(m_panel.m_pfColWidth[col], widest + 2 * m_metrics.tmAveCharWidth)
                << text << ", " << col;
        }
        EXPECT_EQ(m_panel.m_fWidth, width) << text;
        EXPECT_EQ(m_panel.GetHeight(), rows * (extentOf(columns[0][0]).cy + pixels(100)) + 2 * pixels(50) +
                                           m_metrics.tmInternalLeading);
    }
    layOut("");
    EXPECT_EQ(m_panel.m_nCols * m_panel.m_nRows, 1);
    EXPECT_EQ(m_panel.m_fWidth + m_panel.m_fHeight, 0);
    EXPECT_TRUE(draw(m_panel).characters.empty());
}

TEST_F(TextPanelTest, AlignmentPlacesBoxTextAndHitRectangle) {
    layOut("a\tb\nc");
    const double w = m_panel.m_fWidth, h = m_panel.m_fHeight;
    const int margin = pixels(50);
    // The alignments, the box's lower left corner, y upwards, and the left of the text.
    const std::tuple<int, int, double, double, double> cases[] = {
        {TPA_LEFT, TPA_TOP, 50, 500 - h, 50.0 + margin},
        {TPA_HCENTER, TPA_VCENTER, 400 - w / 2, 300 - h / 2, 400 - w / 2 + margin},
        {TPA_RIGHT, TPA_BOTTOM, 750 - w, 100 + margin * 0.5, 750 - w - margin},
        {77, -1, 50, 500 - h, 50.0 + margin}};
    const double col0 = m_panel.m_pfColWidth[0], row1 = m_panel.m_pfRowHeight[1];
    for (const auto& [horizontal, vertical, left, low, textX] : cases) {
        m_panel.SetAlignment(horizontal, vertical);
        const Picture picture = draw(m_panel);
        const double bottom = viewHeight - low;
        const CvornColour fill(0, 0, 0.4F, 0.5F);
        EXPECT_EQ(picture.quads, Lines{box(left, bottom - h, left + w, bottom, 0.35, fill)});
        const double x = textX + m_metrics.tmAveCharWidth;
        const double y = bottom - margin - m_metrics.tmInternalLeading - pixels(100);
        EXPECT_EQ(picture.characters, (Lines{character(x, y - row1, 0.25),
                                             character(x + col0, y - row1, 0.25), character(x, y, 0.25)}));

        const CPoint inside(static_cast<int>(left + 3), static_cast<int>(low + 3));
        EXPECT_TRUE(m_panel.HitTest(m_rc, inside));
        EXPECT_TRUE(m_panel.HitTest(CRect(0, 0, 800, viewHeight), CPoint(inside.x, viewHeight - inside.y)));
        EXPECT_FALSE(m_panel.HitTest(m_rc, inside - CSize(5, 0)));
        EXPECT_FALSE(m_panel.HitTest(m_rc, inside - CSize(0, 5)));
    }
    m_panel.SetEnabled(0);
    EXPECT_FALSE(m_panel.HitTest(m_rc, m_panel.m_rcHit.CenterPoint()));

    EXPECT_TRUE(draw(m_panel).loops.empty());
    CvornColour fill = m_back;
    fill.Change(0.04F);
    CvornColour frame = fill;
    frame.Change(0.1F);
    fill.m_fAlpha = 0.5F;
    const Picture highlit = draw(m_panel, 1);
    EXPECT_EQ(highlit.quads, Lines{box(50, 100, 50 + w, 100 + h, 0.35, fill)});
    EXPECT_EQ(highlit.loops,
              Lines{box(50, 100, 50 + w, 100 + h, 0.251, frame)}); // the depth of its first corner
}

TEST_F(TextPanelTest, CopiesOutliveTheirSourceAndTextsNeedMeasuring) {
    auto source = std::make_unique<CvornTextPanel>();
    layOut("one\ttwo\nthree");
    *source = m_panel;
    EXPECT_EQ(source->m_pfColWidth.get(), m_panel.m_pfColWidth.get());
    const Lines characters = draw(m_panel).characters;
    m_panel.UpdateText("one\ttwo\nthree");
    EXPECT_EQ(draw(m_panel).characters, characters);
    source->UpdateText("another\ntext\nof\nmany\tmore\tcells");
    EXPECT_TRUE(draw(*source).quads.empty());
    source.reset();
    EXPECT_EQ(draw(m_panel).characters, characters);
}

TEST_F(TextPanelTest, RowsReadDownwardsInPixels) {
    layOut("HHHH\n\n\t\tHHHH");
    drawSteadily([this] { m_panel.glOutput(m_rc, &m_map, 0.1F, 1); });
    const CRect hit = m_panel.m_rcHit;
    const CSize half(hit.Width() / 2, hit.Height() / 2);
    const CPoint corner(hit.left, viewHeight - hit.bottom);
    EXPECT_GT(countIn({corner, half}), 50);
    EXPECT_EQ(countIn({corner + CSize(half.cx, 0), half}), 0);
    EXPECT_EQ(countIn({corner + CSize(0, half.cy), half}), 0);
    EXPECT_GT(countIn({corner + half, half}), 50);
}

} // namespace
