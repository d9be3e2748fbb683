// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace examples {

/// The range that an axis shows for some data: from a multiple of the tick step at or below the least number
/// to a fifth of a step at or above the greatest, so that every tick stands on a round number.
struct AxisRange {
    double low = 0;
    double high = 1;
    double tick = 0.2; ///< 1, 2 or 5 times a power of ten

    double length() const { return high - low; }
    /// Fifths of a step: what lies between the minor ticks.
    int minorSteps() const;

    /// For data from `least` to `greatest`, at about `wanted` ticks (2 or more). Data without extent, or with
    /// less than a double can tell apart, get a range around them; what is no number gets 0 to 1.
    static AxisRange around(double least, double greatest, int wanted);
    /// A range that was read from somewhere, with a tick step to suit; nothing but around(0, 1) for one that
    /// cannot be drawn.
    static AxisRange given(double low, double high, int wanted);
};

/// The number at a tick as short as the step allows: "0.0015" at a step of 0.0005, "1000001" at 1, "2e+12".
std::string tickText(double value, const AxisRange& range);

} // namespace examples
