// SPDX-License-Identifier: MIT
#include "tests/overlays/overlay_test.h"
#include "vorn/overlays/toolbar.h"

#include <memory>
#include <tuple>

namespace {

/// Notes the rectangle that it is asked to draw into.
class SymbolButton : public CvornToolBarButton {
public:
    using CvornToolBarButton::CvornToolBarButton;
    CRect m_symbol;

protected:
    void oglOutputShape(CvornOGLMapping*, CRect& rc, float) override { m_symbol = rc; }
};

class ToolBarTest : public OverlayTest {
protected:
    ToolBarTest() {
        m_bar.Init(2, 4);
        for (CvornToolBarButton* button : m_buttons)
            m_bar.AddButton(button);
        m_slider.SetParam(TBB_TRACK | TBB_RAISED);
        m_plain.SetParam(TBB_RCLICK);
        m_dead.SetParam(TBB_RCLICK | TBB_TRACK);
        m_caption.m_strText = "Go";
        m_bar.UpdateMetrics(&m_dc, &m_font, 0);
        m_bar.UpdatePosition(m_client);
    }
    Picture draw() {
        return pictureOf([&] { m_bar.oglOutput(&m_map, viewHeight, 0.2F, 0.1F, 1, m_nList, m_nFontLists); });
    }

    CvornToolBar m_bar;
    CvornToolBarButton m_plain{7, 0, 0, 1, 1}, m_slider{8, 0, 1, 2, 2}, m_caption{9, 0, 3, 1, 1};
    CvornToolBarButton m_dead{0, 1, 0, 1, 1};
    SymbolButton m_symbol{10, 1, 3, 1, 1};
    CvornToolBarButton* const m_buttons[5] = {&m_plain, &m_slider, &m_caption, &m_dead, &m_symbol};
    const CRect m_client{10, 10, 790, 590}; // inside, so that nothing is clipped
};

TEST_F(ToolBarTest, ListCursorStartsAgainAndCopiesShareNodes) {
    CvornToolBarButtonList list;
    list.Add(&m_plain);
    list.Add(&m_slider); // the cursor is on the new button
    for (const int next : {-1, 0, 1, -1, 0})
        EXPECT_EQ(list.GetNext(), next < 0 ? nullptr : m_buttons[next]) << next;
    EXPECT_EQ(list.Find(8), &m_slider);
    EXPECT_EQ(list.Find(99), nullptr);
    EXPECT_EQ(list.Add(nullptr), 0);

    auto copy = std::make_unique<CvornToolBarButtonList>(list);
    list.Add(&m_caption);
    copy->Add(&m_dead); // behind the source's new one
    copy.reset();
    list.Restart();
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(list.GetNext(), m_buttons[i]);
    const CvornToolBar other = m_bar;
    m_bar.m_listButtons.DeleteAll();
    EXPECT_EQ(m_bar.m_listButtons.GetNext(), nullptr);
    EXPECT_EQ(other.m_listButtons.Find(9), &m_caption);
}

TEST_F(ToolBarTest, StandsWhereItsBitsSay) {
    const int w = pixels(11000), h = pixels(1500);
    const std::pair<DWORD, CPoint> cases[] = {{m_bar.GetParam(~0UL), {100 + (602 - w) / 2, 500 - h}},
                                              {TBP_RIGHT | TBP_VCENTER, {701 - w, 50 + (451 - h) / 2}},
                                              {TBP_HCENTER | TBP_RIGHT | TBP_TOP | TBP_BOTTOM, {100, 50}},
                                              {TBP_LEFT | TBP_TOP, {100, 50}}};
    for (const auto& [bits, corner] : cases) {
        m_bar.SetParam(bits);
        m_bar.UpdatePosition(CRect(100, 50, 701, 500));
        EXPECT_EQ(m_bar.m_rcBar, CRect(corner, CSize(w, h))) << std::hex << bits;
    }
    const auto at = [](double value) { return static_cast<int>(value + 0.5); };
    EXPECT_EQ(m_slider.m_rcButton, CRect(at(100 + w / 4.0), 50, at(100 + 3 * w / 4.0), 50 + h));
    EXPECT_EQ(m_dead.m_rcButton, CRect(100, at(50 + h / 2.0), at(100 + w / 4.0), 50 + h));
    m_bar.Init(0, 0); // no grid
    m_bar.UpdatePosition(m_client);
    EXPECT_TRUE(m_slider.m_rcButton.IsRectEmpty());
}

TEST_F(ToolBarTest, DrawsBarButtonsAndCaptions) {
    const Picture picture = draw();
    const auto inner = [&](const CvornToolBarButton& button) {
        CRect rc = button.m_rcButton;
        rc.DeflateRect(m_bar.m_szInset);
        return rc;
    };
    CRect lower = m_bar.m_rcBar, upper = lower;
    lower.top = upper.bottom = lower.bottom - static_cast<int>(lower.Height() * 0.75 + 0.5);
    CvornColour shaded = m_bar.m_colBar, frame = m_slider.m_colBack, back = m_slider.m_colBack;
    shaded.Change(0.02F);
    frame.Darker(0.05F);
    back.Lighter(0.04F);
    const CvornColour& shape = m_plain.m_colShape; // none where there is a caption
    EXPECT_EQ(picture.quads, (Lines{box(lower, 0.4, CvornColour(0x282828, 0.8F)), box(upper, 0.4, shaded),
                                    box(inner(m_plain), 0.3, shape), box(m_slider.m_rcButton, 0.3, back),
                                    box(inner(m_slider), 0.3, shape), box(inner(m_dead), 0.3, shape)}));
    EXPECT_EQ(picture.loops, Lines{box(m_slider.m_rcButton, 0.3, frame)});
    CRect symbol = m_symbol.m_symbol; // y upwards
    symbol.SetRect(symbol.left, viewHeight - symbol.top, symbol.right, viewHeight - symbol.bottom);
    EXPECT_EQ(symbol, inner(m_symbol));
    const CRect& caption = m_caption.m_rcButton;
    const double x = (caption.left + caption.right - extentOf("Go").cx) * 0.5;
    const double y = (caption.top + caption.bottom + extentOf("Go").cy) * 0.5 - m_metrics.tmInternalLeading;
    ASSERT_EQ(picture.characters.size(), 2U);
    EXPECT_EQ(picture.characters[0], character(x, y, 0.2));
    EXPECT_EQ(pictureOf([&] { ::glCallList(m_nList); }).quads.at(0), picture.quads[0]);

    m_bar.SetButtonText(9, "far too long to fit into one cell of the bar");
    m_bar.SetButtonText(1234, "nobody");
    m_bar.UpdateMetrics(&m_dc, &m_font, 0);
    EXPECT_TRUE(draw().characters.empty());
    m_bar.SetParam(0, TBP_VISIBLE);
    EXPECT_TRUE(draw().quads.empty());
}

TEST_F(ToolBarTest, ShapesCoverRaisedBackgroundsInPixels) {
    drawSteadily([this] { m_bar.oglOutput(&m_map, viewHeight, 0.2F, 0.1F, 1, m_nList, m_nFontLists); });
    CRect shape = m_slider.m_rcButton;
    shape.DeflateRect(m_bar.m_szInset);
    EXPECT_EQ(countIn(shape), shape.Width() * shape.Height());
}

TEST_F(ToolBarTest, RoutesTheMouse) {
    m_slider.UpdatePosition(CRect(100, 100, 200, 140), CSize(10, 5)); // the active part is 80 x 30
    m_bar.m_rcBar = CRect(0, 0, 800, viewHeight);
    const CPoint onPlain = m_plain.m_rcButton.CenterPoint(), onDead = m_dead.m_rcButton.CenterPoint();
    using Bar = CvornToolBar;
    const auto press = &Bar::OnLeftMouseButtonDown, release = &Bar::OnLeftMouseButtonUp;
    const auto move = &Bar::OnMouseMove, right = &Bar::OnRightMouseButtonDown;
    using Outcome = std::tuple<int, float, float>; // the answer and the slider's markers
    using Step = std::tuple<decltype(press), CPoint, Outcome>;
    const Step script[] = {{move, {150, 120}, {0, 0, 0}},
                           {press, onDead, {0, 0, 0}},
                           {press, onPlain, {7, 0, 0}},
                           {move, onPlain, {0, 0, 0}},
                           {press, {130, 111}, {8, 0.25F, 0.2F}},
                           {move, {100, 139}, {8, 0, 1}},
                           {move, {200, 120}, {0, 0, 1}},
                           {move, onPlain, {0, 0, 1}},
                           {press, {199, 100}, {8, 1, 0}},
                           {right, onPlain, {7, 1, 0}},
                           {right, onDead, {0, 1, 0}},
                           {move, {150, 120}, {8, 0.5F, 0.5F}},
                           {release, {150, 120}, {0, 0.5F, 0.5F}},
                           {move, {130, 111}, {0, 0.5F, 0.5F}}};
    for (const auto& [event, at, outcome] : script) {
        const int answer = (m_bar.*event)(at, 0);
        EXPECT_EQ(Outcome(answer, m_slider.GetHMarkerPos(), m_slider.GetVMarkerPos()), outcome)
            << at.x << ", " << at.y;
    }
    EXPECT_FALSE(m_bar.IsButtonActive());
    m_slider.UpdatePosition(m_slider.m_rcButton, CSize(50, 0)); // no active part: the markers stay
    EXPECT_EQ(m_bar.OnLeftMouseButtonDown(CPoint(110, 110), 0), 8);
    EXPECT_EQ(m_bar.GetActiveButtonHMarkerPos(), 0.5F);
    m_bar.SetButtonState(8, TBB_STATE);
    EXPECT_EQ(m_bar.GetActiveButtonState(), static_cast<DWORD>(TBB_STATE));
    EXPECT_EQ(m_slider.GetParam(~0UL), static_cast<DWORD>(TBB_TRACK | TBB_RAISED | TBB_STATE));
    m_bar.SetParam(0, TBP_VISIBLE);
    EXPECT_EQ(m_bar.OnLeftMouseButtonDown(onPlain, 0), 0);
    EXPECT_FALSE(m_bar.HitTest(onPlain));
}

} // namespace
