// SPDX-License-Identifier: MIT
#include "examples/scatter/scatter_view.h"

#include "tests/examples/shown_view.h"

#include <gtest/gtest.h>

namespace {

constexpr char threePoints[] = "n,c,x,y,z,v\nblue one,a,1,2,3,9\nred one,b,9,8,1,9\n\ngreen one,c,4,1,7,9\n";

class View : public support::Shown<CScatterView> {
public:
    View() : Shown(Points::parse(threePoints, "test")) {}

    void turn(int n) {
        n == 0 ? m_userRot.Set3D() : n == 1 ? m_userRot.SetFront() : m_userRot.SetTop();
        paint();
    }
    /// Where the colour is shown, told by its strongest channel: red 0, green 1, blue 2.
    std::vector<CPoint> placesOf(int channel) const {
        const int width = shown().size().cx;
        const CRect legend(width - 99, 0, width, 99); // its swatches have the same colours
        return shown().where([&](CPoint pt, COLORREF pixel) {
            const int rgb[] = {GetRValue(pixel), GetGValue(pixel), GetBValue(pixel)};
            const int others = std::max(rgb[(channel + 1) % 3], rgb[(channel + 2) % 3]);
            return rgb[channel] - others >= 15 && !legend.PtInRect(pt);
        });
    }
};

TEST(Scatter, ThePanelIsAboutThePointUnderTheMouseAndStaysInTheWindow) {
    const char* const names[] = {"red one", "green one", "blue one"};
    for (const CSize size : {CSize(800, 600), CSize(320, 420), CSize(700, 300)}) {
        View view;
        ASSERT_TRUE(view.open(size));
        for (int turned = 0; turned < 3; ++turned) {
            for (int channel = 0; channel < 3; ++channel) {
                SCOPED_TRACE(testing::Message()
                             << names[channel] << ", " << size.cx << ", turned " << turned);
                view.mouse(WM_MOUSEMOVE, 0, CPoint(0, size.cy - 1));
                view.turn(turned);
                EXPECT_EQ(view.tip(), nullptr) << "far from all";
                const auto places = view.placesOf(channel);
                ASSERT_FALSE(places.empty());
                const CPoint middle = support::middleOf(places);
                view.mouse(WM_MOUSEMOVE, 0, middle);
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
                view.mouse(WM_MOUSEMOVE, MK_LBUTTON, middle + CSize(90, 0));
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
