// SPDX-License-Identifier: MIT
#include "vorn/geometry/colour.h"

#include <gtest/gtest.h>

namespace {

void expectNear(const CvornColour& actual, const float (&channels)[3]) {
    EXPECT_NEAR(actual.m_fRed, channels[0], 1e-6F);
    EXPECT_NEAR(actual.m_fGreen, channels[1], 1e-6F);
    EXPECT_NEAR(actual.m_fBlue, channels[2], 1e-6F);
}

TEST(ColourTest, TakesBytesKeepingTheOpacityAndGivesThemTruncated) {
    CvornColour colour(RGB(255, 255, 0), 0.5F);
    colour = RGB(51, 102, 204);
    expectNear(colour, {0.2F, 0.4F, 0.8F});
    EXPECT_EQ(colour.m_fAlpha, 0.5F);
    EXPECT_EQ(static_cast<COLORREF>(CvornColour(1, 0.999F, 0.5F, 1)), RGB(255, 254, 127));
    EXPECT_EQ(static_cast<COLORREF>(CvornColour(2, 0, 0, 1)), RGB(510 & 0xFF, 0, 0)); // wraps
}

TEST(ColourTest, ShiftsByWhatSaturatedChannelsCouldNotTake) {
    struct {
        CvornColour from;
        float lighter[3], darker[3];
        bool isLight;
    } const cases[] = {
        {{1, 0, 0, 1}, {1, 0.4F, 0.4F}, {0.4F, 0, 0}, false},
        {{0.1F, 0.5F, 0.5F, 1}, {0.3F, 0.7F, 0.7F}, {0, 0.2F, 0.2F}, false},
        {{0.5F, 0.5F, 0.5F, 1}, {0.7F, 0.7F, 0.7F}, {0.3F, 0.3F, 0.3F}, true},
        {{1, 1, 1, 1}, {1, 1, 1}, {0.8F, 0.8F, 0.8F}, true},
    };
    for (const auto& [from, lighter, darker, isLight] : cases) {
        CvornColour up = from, down = from, away = from;
        up.Lighter(0.2F);
        down.Darker(0.2F);
        away.Change(0.2F);
        expectNear(up, lighter);
        expectNear(down, darker);
        expectNear(away, isLight ? darker : lighter);
    }
}

} // namespace
