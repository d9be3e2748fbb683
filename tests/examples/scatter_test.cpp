// SPDX-License-Identifier: MIT
#include "examples/scatter/scatter_view.h"

#include "tests/support/gl_window.h"

#include <gtest/gtest.h>
#include <optional>

namespace {

constexpr char threePoints[] = "n,c,x,y,z,v\nblue one,a,1,2,3,9\nred one,b,9,8,1,9\n\ngreen one,c,4,1,7,9\n";

/// The view, painting at will, with the middle of what it shows in a colour.
class View : public CScatterView {
public:
    View() : CScatterView(Points::parse(threePoints, "test")) {}

    bool open(int width, int height) {
        const CRect rc(0, 0, width, height);
        if (!CreateEx(0, AfxRegisterWndClass(0), "", WS_POPUP, rc, nullptr, 0)) return false;
        ShowWindow(SW_SHOWNA);
        return true;
    }
    void paint() {
        Invalidate();
        UpdateWindow();
    }
    void turn(int n) {
        n == 0 ? m_userRot.Set3D() : n == 1 ? m_userRot.SetFront() : m_userRot.SetTop();
        paint();
    }
    /// In client coordinates. Colours are told by their strongest channel: red 0, green 1, blue 2.
    std::optional<CPoint> middleOf(int channel) const {
        CSize sum(0, 0);
        int count = 0;
        for (int y = 0; y < m_rcView.Height(); ++y) {
            for (int x = 0; x < m_rcView.Width(); ++x) {
                // Not in the legend, whose swatches have the same colours.
                if (x > m_rcView.Width() - 100 && y > m_rcView.Height() - 100) continue;
                const COLORREF pixel = m_picture[static_cast<std::size_t>(y) * m_rcView.Width() + x];
                const int rgb[] = {GetRValue(pixel), GetGValue(pixel), GetBValue(pixel)};
                const int others = std::max(rgb[(channel + 1) % 3], rgb[(channel + 2) % 3]);
                if (rgb[channel] - others < 15) continue;
                sum += CSize(x, m_rcView.Height() - 1 - y);
                ++count;
            }
        }
        if (count == 0) return std::nullopt;
        return CPoint(sum.cx / count, sum.cy / count);
    }
    void moveTo(CPoint pt, UINT flags = 0) { SendMessage(WM_MOUSEMOVE, flags, MAKELPARAM(pt.x, pt.y)); }

protected:
    void OnExclude(CDC*) override {
        m_picture = support::pixelsIn(0, 0, m_rcView.Width(), m_rcView.Height());
    }

private:
    std::vector<COLORREF> m_picture;
};

TEST(Scatter, ThePanelIsAboutThePointUnderTheMouseAndStaysInTheWindow) {
    const char* const names[] = {"red one", "green one", "blue one"};
    for (const CSize size : {CSize(800, 600), CSize(320, 420), CSize(700, 300)}) {
        View view;
        ASSERT_TRUE(view.open(size.cx, size.cy));
        for (int turned = 0; turned < 3; ++turned) {
            for (int channel = 0; channel < 3; ++channel) {
                SCOPED_TRACE(testing::Message()
                             << names[channel] << ", " << size.cx << ", turned " << turned);
                view.moveTo(CPoint(0, size.cy - 1));
                view.turn(turned);
                EXPECT_EQ(view.tip(), nullptr) << "far from all";
                const auto middle = view.middleOf(channel);
                ASSERT_TRUE(middle);
                view.moveTo(*middle);
                view.paint();
                ASSERT_NE(view.tip(), nullptr);
                EXPECT_EQ(view.tip()->m_strText.Find(names[channel]), 0) << view.tip()->m_strText.GetString();
                const CRect& panel = view.tip()->m_rcHit; // y upwards, top and bottom in order
                EXPECT_GE(panel.left, 0);
                EXPECT_GE(panel.top, 0);
                EXPECT_LE(panel.right, size.cx);
                EXPECT_LE(panel.bottom, size.cy);
                // Held, the mouse turns the chart: it points at nothing else on its way.
                const CRect before = panel;
                view.moveTo(*middle + CSize(90, 0), MK_LBUTTON);
                view.turn((turned + 1) % 3);
                EXPECT_EQ(view.tip()->m_strText.Find(names[channel]), 0);
                EXPECT_NE(view.tip()->m_rcHit, before) << "goes with its point";
            }
        }
    }
}

TEST(Scatter, RefusesWhatAreNoPoints) {
    struct Case {
        std::string text;
        const char* message;
    };
    const Case cases[] = {
        {"", "holds no points"},
        {"n,c,x,y,z,v\n", "holds no points"},
        {"n,c,x,y,z,v\np,q,1,2,3\n", "line 2, column 5: a row has six cells"},
        {"n,c,x,y,z,v,w\n", "line 1, column 6: a row has six cells"},
        {"n,c,x,y,z,v\np,q,1,two,3,4\n", "line 2, column 4: \"two\""},
        {"n,c,x,y,z,v\np,q,1,,3,4\n", "line 2, column 4"},
        {"n,c,x,y,z,v\np,\"q,1,2,3,4\n", "never closed"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.text);
        try {
            Points::parse(c.text, "test");
            ADD_FAILURE() << "was read";
        } catch (const std::exception& error) {
            EXPECT_NE(std::string(error.what()).find(c.message), std::string::npos) << error.what();
        }
    }
}

} // namespace
