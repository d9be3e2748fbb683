// SPDX-License-Identifier: MIT
#include "tests/overlays/overlay_test.h"
#include "vorn/overlays/toolbar.h"

#include <memory>
#include <optional>

namespace {

/// Notes the rectangle that it is asked to draw into.
class SymbolButton : public CvornToolBarButton {
public:
    using CvornToolBarButton::CvornToolBarButton;
    std::optional<CRect> m_symbol;

protected:
    void oglOutputShape(CvornOGLMapping*, CRect& rc, float) override { m_symbol = rc; }
};

class ToolBarTest : public OverlayTest {
protected:
    ToolBarTest() {
        m_bar.Init(2, 4);
        for (CvornToolBarButton* button :
             {&m_plain, &m_slider, &m_caption, &m_dead, static_cast<CvornToolBarButton*>(&m_symbol)})
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
    CvornToolBarButton m_plain{7, 0, 0, 1, 1}, m_slider{8, 0, 1, 2, 2}, m_caption{9, 0, 3, 1, 1},
        m_dead{0, 1, 0, 1, 1};
    SymbolButton m_symbol{10, 1, 3, 1, 1};
    const CRect m_client{10, 10, 790, 590}; // inside, so that nothing is clipped
};

TEST_F(ToolBarTest, ListCursorStartsAgainAfterTheEnd) {
    CvornToolBarButtonList list;
    EXPECT_EQ(list.GetNext(), nullptr);
    list.Add(&m_plain);
    list.Add(&m_slider);
    EXPECT_EQ(list.GetNext(), nullptr); // the cursor was on the new button
    EXPECT_EQ(list.GetNext(), &m_plain);
    EXPECT_EQ(list.Find(8), &m_slider);
    EXPECT_EQ(list.GetNext(), &m_slider);
    EXPECT_EQ(list.GetNext(), nullptr);
    EXPECT_EQ(list.GetNext(), &m_plain);
    list.Restart();
    EXPECT_EQ(list.GetNext(), &m_plain);
    EXPECT_EQ(list.Find(99), nullptr);
    EXPECT_EQ(list.Add(nullptr), 0);
    EXPECT_EQ(list.GetCount(), 2);

    auto copy = std::make_unique<CvornToolBarButtonList>(list);
    list.Add(&m_caption);
    EXPECT_EQ(copy->Add(&m_symbol), 1); // behind the source's new one
    copy.reset();
    list.Restart();
    for (const auto* button : {&m_plain, &m_slider, &m_caption, static_cast<CvornToolBarButton*>(&m_symbol)})
        EXPECT_EQ(list.GetNext(), button);
    CvornToolBar other = m_bar;
    m_bar.m_listButtons.DeleteAll();
    EXPECT_EQ(m_bar.m_listButtons.GetNext(), nullptr);
    EXPECT_EQ(other.m_listButtons.Find(9), &m_caption);
}

TEST_F(ToolBarTest, StandsWhereItsBitsSay) {
    const int w = pixels(11000), h = pixels(1500);
    const struct {
        DWORD bits;
        int left, top;
    } cases[] = {
        {TBP_HCENTER | TBP_BOTTOM, 100 + (601 - w + 1) / 2, 500 - h},
        {TBP_RIGHT | TBP_VCENTER, 701 - w, 50 + (450 - h + 1) / 2},
        {TBP_LEFT | TBP_TOP, 100, 50},
        {TBP_HCENTER | TBP_RIGHT | TBP_TOP | TBP_BOTTOM, 100, 50},
        {0, 100, 50},
    };
    for (const auto& c : cases) {
        if (&c != cases) m_bar.SetParam(c.bits, 0xFC0); // the first are the default
        m_bar.UpdatePosition(CRect(100, 50, 701, 500));
        EXPECT_EQ(m_bar.m_rcBar, CRect(CPoint(c.left, c.top), CSize(w, h))) << std::hex << c.bits;
    }
    const double unitW = w / 4.0, unitH = h / 2.0;
    const auto at = [](double value) { return static_cast<int>(value + 0.5); };
    EXPECT_EQ(m_slider.m_rcButton, CRect(at(100 + unitW), 50, at(100 + 3 * unitW), 50 + h));
    EXPECT_EQ(m_dead.m_rcButton, CRect(100, at(50 + unitH), at(100 + unitW), 50 + h));

    CvornToolBar empty;
    empty.UpdateMetrics(&m_dc, &m_font, 0);
    empty.AddButton(&m_plain);
    empty.UpdatePosition(m_client); // without Init there is no grid
    EXPECT_TRUE(m_plain.m_rcButton.IsRectEmpty());
}

TEST_F(ToolBarTest, DrawsBarButtonsAndCaptions) {
    m_slider.m_colShape = CvornColour(RGB(255, 0, 0), 1);
    const Picture picture = draw();
    const CRect& bar = m_bar.m_rcBar;
    const int middle = static_cast<int>(bar.Height() * 0.75 + 0.5);
    // The bar's two, the plain shape, the raised background with its shape, and the dead one's shape.
    ASSERT_EQ(picture.quads.size(), 6U);
    EXPECT_TRUE(isAt(picture.quads[0], bar.left, 10, bar.right, 10 + middle, 0.4));
    EXPECT_TRUE(isAt(picture.quads[1], bar.left, 10 + middle, bar.right, 10 + bar.Height(), 0.4));
    EXPECT_TRUE(hasColour(picture.quads[0], RGB(40, 40, 40), 0.8));
    const int inset = pixels(100);
    const auto glBox = [](const CRect& rc, int in) {
        return CRect(rc.left + in, viewHeight - rc.bottom + in, rc.right - in, viewHeight - rc.top - in);
    };
    const CRect plain = glBox(m_plain.m_rcButton, inset), raised = glBox(m_slider.m_rcButton, 0);
    EXPECT_TRUE(isAt(picture.quads[2], plain.left, plain.top, plain.right, plain.bottom, 0.3));
    EXPECT_TRUE(isAt(picture.quads[3], raised.left, raised.top, raised.right, raised.bottom, 0.3));
    EXPECT_TRUE(isAt(picture.quads[4], raised.left + inset, raised.top + inset, raised.right - inset,
                     raised.bottom - inset, 0.3));
    EXPECT_TRUE(hasColour(picture.quads[4], RGB(255, 0, 0), 1));
    ASSERT_EQ(picture.loops.size(), 1U);
    EXPECT_TRUE(isAt(picture.loops[0], raised.left, raised.top, raised.right, raised.bottom, 0.3));
    EXPECT_LT(picture.loops[0].r, picture.quads[3].r);
    const CRect symbol = glBox(m_symbol.m_rcButton, inset);
    EXPECT_EQ(m_symbol.m_symbol,
              CRect(symbol.left, symbol.bottom, symbol.right, symbol.top)); // top above bottom

    ASSERT_EQ(picture.characters.size(), 2U); // the caption, and no shape with it
    const CSize text = extentOf("Go");
    const CRect caption = glBox(m_caption.m_rcButton, 0);
    const double x = (caption.left + caption.right - text.cx) * 0.5;
    const double y = (caption.top + caption.bottom - text.cy) * 0.5 + m_metrics.tmInternalLeading;
    EXPECT_TRUE(isAt(picture.characters[0], x, y, x, y, 0.2));

    m_bar.SetButtonText(9, "far too long to fit into one cell of the bar");
    m_bar.SetButtonText(1234, "nobody");
    m_bar.UpdateMetrics(&m_dc, &m_font, 0);
    EXPECT_TRUE(draw().characters.empty());
    m_bar.SetParam(0, TBP_VISIBLE);
    EXPECT_TRUE(draw().quads.empty());

    const Picture list = pictureOf([&] { ::glCallList(m_nList); });
    EXPECT_TRUE(isAt(list.quads.at(0), bar.left, 10, bar.right, 10 + middle, 0.4));
}

TEST_F(ToolBarTest, RoutesTheMouse) {
    const auto press = [&](const CvornToolBarButton& button, int dx, int dy) {
        return m_bar.OnLeftMouseButtonDown(button.m_rcButton.TopLeft() + CSize(dx, dy), MK_LBUTTON);
    };
    const CPoint onSlider = m_slider.m_rcButton.TopLeft() + CSize(10, 10);
    EXPECT_EQ(m_bar.OnMouseMove(onSlider, 0), 0);
    EXPECT_EQ(press(m_dead, 5, 5), 0);
    EXPECT_FALSE(m_bar.IsButtonActive());
    EXPECT_EQ(press(m_plain, 5, 5), 7);
    EXPECT_EQ(m_bar.OnMouseMove(m_plain.m_rcButton.CenterPoint(), MK_LBUTTON), 0); // it does not track

    const int inset = pixels(100);
    const CSize inner = m_slider.m_rcButton.Size() - CSize(2 * inset, 2 * inset);
    const struct {
        int dx, dy;
        float horizontal, vertical;
    } presses[] = {
        {0, 0, 0, 0},
        {inset, inset, 0, 0},
        {inset + 51, inset + 20, 51.0F / inner.cx, 20.0F / inner.cy},
        {inset + inner.cx, inset + inner.cy, 1, 1},
        {inset + inner.cx + 1, inset + inner.cy + 1, 1, 1},
    };
    for (const auto& p : presses) {
        EXPECT_EQ(press(m_slider, p.dx, p.dy), 8);
        EXPECT_EQ(m_bar.GetActiveButtonHMarkerPos(), p.horizontal) << p.dx;
        EXPECT_EQ(m_bar.GetActiveButtonVMarkerPos(), p.vertical) << p.dy;
    }
    EXPECT_EQ(m_bar.OnMouseMove(onSlider, MK_LBUTTON), 8);
    EXPECT_EQ(m_slider.GetHMarkerPos(), static_cast<float>(10 - inset) / inner.cx);
    EXPECT_EQ(m_bar.OnMouseMove(m_plain.m_rcButton.CenterPoint(), MK_LBUTTON),
              0); // outside: the markers stay
    EXPECT_EQ(m_slider.GetHMarkerPos(), static_cast<float>(10 - inset) / inner.cx);
    m_bar.SetButtonState(8, TBB_STATE);
    EXPECT_EQ(m_bar.GetActiveButtonState(), static_cast<DWORD>(TBB_STATE));
    EXPECT_EQ(m_slider.GetParam(~0UL), static_cast<DWORD>(TBB_TRACK | TBB_RAISED | TBB_STATE));
    m_bar.SetButtonState(8, 0);
    EXPECT_EQ(m_bar.GetActiveButtonState(), 0U);
    EXPECT_EQ(m_bar.OnLeftMouseButtonUp(onSlider, 0), 0);
    EXPECT_EQ(m_bar.OnMouseMove(onSlider, MK_LBUTTON), 0);

    EXPECT_EQ(m_bar.OnRightMouseButtonDown(m_plain.m_rcButton.CenterPoint(), 0), 7);
    EXPECT_EQ(m_bar.OnRightMouseButtonDown(onSlider, 0), 0);
    EXPECT_EQ(m_bar.OnRightMouseButtonDown(m_dead.m_rcButton.CenterPoint(), 0), 0);
    EXPECT_FALSE(m_bar.IsButtonActive());

    m_slider.UpdatePosition(m_slider.m_rcButton, CSize(1000, 0));
    m_slider.SetHMarkerPos(0.5F);
    EXPECT_EQ(m_slider.OnLeftMouseButtonDown(onSlider, 0), 8); // no inner rectangle: the marker stays
    EXPECT_EQ(m_slider.GetHMarkerPos(), 0.5F);
    m_bar.SetParam(0, TBP_VISIBLE);
    EXPECT_EQ(press(m_plain, 5, 5), 0);
    EXPECT_FALSE(m_bar.HitTest(onSlider));
}

} // namespace
