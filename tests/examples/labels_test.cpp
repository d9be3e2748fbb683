// SPDX-License-Identifier: MIT
#include "common/axis_range.h"
#include "common/label_layout.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <vector>

using examples::AxisRange;
using examples::PlacedLabel;

TEST(AxisRange, TicksStandOnRoundNumbersRoundTheData) {
    struct Case {
        double least, greatest, low, high, tick;
        const char* first;
        const char* second;
    };
    const Case cases[] = {
        {0, 100, 0, 100, 20, "0", "20"},
        {94, 195, 80, 196, 20, "80", "100"},
        {0.001, 0.002, 0.001, 0.002, 0.0002, "0.0010", "0.0012"},
        {1e6, 1e6 + 3, 1e6, 1e6 + 3, 1, "1000000", "1000001"},
        {-5, 5, -6, 5.2, 2, "-6", "-4"},
        {0.1, 0.4, 0.1, 0.4, 0.1, "0.1", "0.2"},
        {2e12, 9e12, 2e12, 9.2e12, 2e12, "2e+12", "4e+12"},
        {7, 7, 6, 8, 0.5, "6.0", "6.5"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.least);
        const AxisRange range = AxisRange::around(c.least, c.greatest, 5);
        EXPECT_NEAR(range.low, c.low, c.tick * 1e-6);
        EXPECT_NEAR(range.tick, c.tick, c.tick * 1e-6);
        EXPECT_LE(range.low, c.least + c.tick * 1e-6);
        EXPECT_GE(range.high, c.greatest - c.tick * 1e-6);
        EXPECT_LT(range.high, c.high + c.tick * 0.3);
        const double steps = range.length() / (range.tick / 5);
        EXPECT_NEAR(steps, std::round(steps), 1e-6);
        EXPECT_EQ(examples::tickText(range.low, range), c.first);
        EXPECT_EQ(examples::tickText(range.low + range.tick, range), c.second);
    }
}

TEST(AxisRange, WhatCannotBeDrawnGivesADrawableRange) {
    const double inf = std::numeric_limits<double>::infinity(),
                 nan = std::numeric_limits<double>::quiet_NaN();
    const std::pair<double, double> pairs[] = {
        {nan, 1},    {0, inf}, {5, 1}, {-1e308, 1e308}, {0, 0}, {1e300, 1e300}, {1e15, 1e15 + 1e-9},
        {-inf, -inf}};
    for (auto [low, high] : pairs) {
        for (const AxisRange& range : {AxisRange::around(low, high, 5), AxisRange::given(low, high, 5)}) {
            EXPECT_TRUE(std::isfinite(range.low) && range.length() > 0 && range.tick > 0)
                << low << ", " << high;
            EXPECT_LE(range.minorSteps(), 60) << low << ", " << high;
            EXPECT_GE(range.minorSteps(), 5) << low << ", " << high;
        }
    }
}

TEST(LabelLayout, PlacesBesideInsideAndByPriority) {
    const auto label = [](double x, double y, double outX, double outY, int priority) {
        return PlacedLabel{
            .x = x, .y = y, .outX = outX, .outY = outY, .width = 40, .height = 10, .priority = priority};
    };
    std::vector<PlacedLabel> labels = {
        label(100, 100, 1, 0, 1),  // to the right
        label(100, 100, 0, -3, 1), // below
        label(120, 100, 1, 0, 0),  // would stand on the first, and comes before it
        label(10, 50, -1, 0, 1),   // pushed in from the left edge
        label(-500, 50, -1, 0, 1), // out of the picture
        label(NAN, 50, 0, 1, 1),
    };
    examples::layOutLabels(labels, 300, 200, 4);
    const bool shown[] = {false, true, true, true, false, false};
    for (std::size_t i = 0; i < labels.size(); ++i)
        EXPECT_EQ(labels[i].shown, shown[i]) << i;
    EXPECT_DOUBLE_EQ(labels[1].bottom, 100 - 4 - 10);
    EXPECT_DOUBLE_EQ(labels[2].left, 124);
    EXPECT_DOUBLE_EQ(labels[2].bottom, 95);
    EXPECT_GE(labels[3].left, 0);
    examples::layOutLabels(labels, 30, 200, 4);
    for (const PlacedLabel& each : labels)
        EXPECT_FALSE(each.shown) << "none fits such a narrow picture";
}
