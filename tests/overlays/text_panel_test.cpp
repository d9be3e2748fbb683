// SPDX-License-Identifier: MIT
#include "tests/overlays/overlay_test.h"
#include "vorn/overlays/text_panel.h"

#include <algorithm>
#include <memory>

namespace {

class TextPanelTest : public OverlayTest {
protected:
    TextPanelTest() { m_panel.SetZ(0.25F); }

    void layOut(const char* text) {
        m_panel.UpdateText(text);
        m_panel.UpdateMetrics(m_nFontLists, m_nList, CvornColour(RGB(255, 255, 255), 1),
                              CvornColour(RGB(0, 0, 100), 1), &m_dc, &m_font);
    }
    Picture draw(CvornTextPanel& panel, int highlight = 0) {
        return pictureOf([&] { panel.glOutput(m_rc, &m_map, 0.1F, highlight); });
    }

    CvornTextPanel m_panel;
    const CRect m_rc{50, 500, 750, 100}; // y upwards
};

TEST_F(TextPanelTest, TextBecomesATable) {
    const struct {
        const char* text;
        int cols;
        int rows;
        std::vector<std::vector<std::string>> cellsOfColumns;
    } cases[] = {
        {"a\tbbb\ncc", 2, 2, {{"a", "cc"}, {"bbb"}}},   {"\n", 1, 2, {{"", ""}}},
        {"a\t\t\tb", 4, 1, {{"a"}, {""}, {""}, {"b"}}}, {"x\r\ny", 1, 2, {{"x\r", "y"}}},
        {"\t\n\t\t", 3, 2, {{"", ""}, {"", ""}, {""}}},
    };
    const int gapX = 2 * m_metrics.tmAveCharWidth;
    const int gapY = pixels(100);
    for (const auto& c : cases) {
        layOut(c.text);
        ASSERT_EQ(m_panel.m_nCols, c.cols) << c.text;
        ASSERT_EQ(m_panel.m_nRows, c.rows) << c.text;
        int width = 2 * pixels(50);
        for (int col = 0; col < c.cols; ++col) {
            long widest = 0;
            for (const auto& cell : c.cellsOfColumns[col])
                widest = std::max(widest, extentOf(cell).cx + gapX);
            EXPECT_EQ(m_panel.m_pfColWidth[col], widest) << c.text << ", column " << col;
            width += widest;
        }
        EXPECT_EQ(m_panel.m_fWidth, width) << c.text;
        const int rowHeight = gapY + extentOf(c.cellsOfColumns[0][0]).cy; // of nothing, for an empty cell
        EXPECT_EQ(m_panel.GetHeight(), c.rows * rowHeight + 2 * pixels(50) + m_metrics.tmInternalLeading);
    }
}

TEST_F(TextPanelTest, DrawsOnlyWhatWasMeasured) {
    layOut("a\nb");
    m_panel.UpdateText("a\nb");
    EXPECT_EQ(draw(m_panel).characters.size(), 2U);
    m_panel.UpdateText("abc");
    EXPECT_TRUE(draw(m_panel).quads.empty());
    layOut("abc");
    EXPECT_EQ(draw(m_panel).characters.size(), 3U);
    layOut("");
    EXPECT_EQ(m_panel.m_nCols * m_panel.m_nRows, 1);
    EXPECT_EQ(m_panel.m_fWidth + m_panel.m_fHeight, 0);
    EXPECT_TRUE(draw(m_panel).characters.empty());
}

TEST_F(TextPanelTest, AlignmentPlacesBoxTextAndHitRectangle) {
    layOut("a\tb\nc");
    const double w = m_panel.m_fWidth, h = m_panel.m_fHeight;
    const int margin = pixels(50);
    const struct {
        int horizontal, vertical;
        double x, y, textX;
    } cases[] = {
        {TPA_LEFT, TPA_TOP, 50, 500 - h, 50.0 + margin},
        {TPA_HCENTER, TPA_VCENTER, 400 - w / 2, 300 - h / 2, 400 - w / 2 + margin},
        {TPA_RIGHT, TPA_BOTTOM, 750 - w, 100 + margin * 0.5, 750 - w - margin},
        {77, -1, 50, 500 - h, 50.0 + margin},
    };
    const double col0 = m_panel.m_pfColWidth[0], row1 = m_panel.m_pfRowHeight[1];
    for (const auto& c : cases) {
        m_panel.SetAlignment(c.horizontal, c.vertical);
        const Picture picture = draw(m_panel);
        ASSERT_EQ(picture.quads.size(), 1U);
        EXPECT_TRUE(isAt(picture.quads[0], c.x, c.y, c.x + w, c.y + h, 0.35));
        EXPECT_TRUE(hasColour(picture.quads[0], RGB(0, 0, 100), 0.5));

        const double x = c.textX + m_metrics.tmAveCharWidth;
        const double y = c.y + margin + m_metrics.tmInternalLeading + pixels(100);
        ASSERT_EQ(picture.characters.size(), 3U);
        EXPECT_TRUE(isAt(picture.characters[0], x, y + row1, x, y + row1, 0.25)) << "a";
        EXPECT_TRUE(isAt(picture.characters[1], x + col0, y + row1, x + col0, y + row1, 0.25)) << "b";
        EXPECT_TRUE(isAt(picture.characters[2], x, y, x, y, 0.25)) << "c";

        const CPoint inside(static_cast<int>(c.x + 3), static_cast<int>(c.y + 3));
        const CPoint client(inside.x, viewHeight - inside.y);
        const CRect rcClient(0, 0, 800, viewHeight);
        EXPECT_TRUE(m_panel.HitTest(m_rc, inside));
        EXPECT_TRUE(m_panel.HitTest(rcClient, client));
        EXPECT_FALSE(m_panel.HitTest(m_rc, inside - CSize(5, 0)));
        EXPECT_FALSE(m_panel.HitTest(m_rc, inside - CSize(0, 5)));
        m_panel.SetEnabled(0);
        EXPECT_FALSE(m_panel.HitTest(m_rc, inside));
        m_panel.SetEnabled(1);
    }
}

TEST_F(TextPanelTest, HighlightChangesTheFillAndAddsAnOpaqueFrame) {
    layOut("a");
    EXPECT_TRUE(draw(m_panel).loops.empty());
    const Picture picture = draw(m_panel, 1);
    CvornColour fill(RGB(0, 0, 100), 1);
    fill.Change(0.04F);
    CvornColour frame = fill;
    frame.Change(0.1F);
    ASSERT_EQ(picture.loops.size(), 1U);
    const Drawn& box = picture.quads[0];
    EXPECT_TRUE(hasColour(box, fill, 0.5));
    EXPECT_TRUE(hasColour(picture.loops[0], frame, 1));
    EXPECT_TRUE(isAt(picture.loops[0], box.left, box.bottom, box.right, box.top, 0.251)); // its first corner
}

TEST_F(TextPanelTest, CopiesOutliveTheirSource) {
    auto source = std::make_unique<CvornTextPanel>();
    std::swap(*source, m_panel);
    source->UpdateText("one\ttwo\nthree");
    source->UpdateMetrics(m_nFontLists, m_nList, CvornColour(), CvornColour(), &m_dc, &m_font);
    CvornTextPanel copy = *source;
    EXPECT_EQ(copy.m_pfColWidth.get(), source->m_pfColWidth.get());
    const Drawn last = draw(*source).characters.back();
    source->UpdateText("another\ntext\nof\nmany\tmore\tcells");
    source.reset();
    EXPECT_TRUE(isAt(draw(copy).characters.back(), last.left, last.bottom, last.right, last.top, last.depth));
}

TEST_F(TextPanelTest, RowsReadDownwardsInPixels) {
    ::glClearColor(0, 0, 0, 1);
    ::glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    layOut("HHHH\n\n\t\tHHHH");
    m_panel.glOutput(m_rc, &m_map, 0.1F, 0);
    ::glFinish();
    const auto whitePixels = [](double left, double bottom, double width, double height) {
        const auto seen = support::pixelsIn(static_cast<int>(left), static_cast<int>(bottom),
                                            static_cast<int>(width), static_cast<int>(height));
        return std::ranges::count(seen, RGB(255, 255, 255));
    };
    const CRect& box = m_panel.m_rcHit;
    const int halfWidth = box.Width() / 2, halfHeight = box.Height() / 2;
    EXPECT_GT(whitePixels(box.left, box.top + halfHeight, halfWidth, halfHeight), 50);
    EXPECT_EQ(whitePixels(box.left, box.top, halfWidth, halfHeight), 0);
    EXPECT_EQ(whitePixels(box.left + halfWidth, box.top + halfHeight, halfWidth, halfHeight), 0);
    EXPECT_GT(whitePixels(box.left + halfWidth, box.top, halfWidth, halfHeight), 50);
    EXPECT_TRUE(support::isNear(support::pixelAt(box.left + 1, box.top + 1), RGB(0, 0, 100)));
}

} // namespace
