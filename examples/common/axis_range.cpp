// SPDX-License-Identifier: MIT
#include "axis_range.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

namespace examples {

namespace {

// Below this share of the numbers themselves a step is lost in their last digits.
constexpr double leastShare = 1e-12;

// What lies beyond has no room for sums and products.
constexpr double most = 1e301;

double roundStep(double length, int wanted) {
    const double raw = length / std::max(wanted, 2);
    const double power = std::pow(10.0, std::floor(std::log10(raw)));
    for (double factor : {1.0, 2.0, 5.0}) {
        if (factor * power >= raw * 0.85) return factor * power;
    }
    return 10 * power;
}

} // namespace

int AxisRange::minorSteps() const {
    return static_cast<int>(std::lround(length() / (tick / 5)));
}

AxisRange AxisRange::around(double least, double greatest, int wanted) {
    if (!std::isfinite(least) || !std::isfinite(greatest) || least > greatest ||
        std::max(std::abs(least), std::abs(greatest)) > most)
        return around(0, 1, wanted);
    const double size = std::max(std::abs(least), std::abs(greatest));
    if (greatest - least <= size * leastShare || greatest == least) {
        const double pad = size == 0 ? 1 : std::max(std::min(size * 0.1, 1.0), size * 1e-9);
        return around(least - pad, greatest + pad, wanted);
    }
    AxisRange range;
    range.tick = roundStep(greatest - least, wanted);
    const double minor = range.tick / 5;
    // A hair's breadth of tolerance: 0.3 / 0.1 is not quite 3.
    range.low = std::floor(least / range.tick + 1e-9) * range.tick;
    range.high = range.low + std::ceil((greatest - range.low) / minor - 1e-9) * minor;
    return range;
}

AxisRange AxisRange::given(double low, double high, int wanted) {
    const double size = std::max(std::abs(low), std::abs(high));
    if (!std::isfinite(low) || !std::isfinite(high) || !(high - low > size * leastShare) || size > 1e30)
        return around(0, 1, wanted);
    AxisRange range{low, high, roundStep(high - low, wanted)};
    // The ends stay where they are; only a step that divides the range keeps its ticks on round numbers.
    const double steps = range.length() / (range.tick / 5);
    if (std::abs(steps - std::round(steps)) > 1e-3) range.tick = range.length() / std::max(wanted, 2);
    return range;
}

std::string tickText(double value, const AxisRange& range) {
    if (std::abs(value) < range.tick * 1e-6) value = 0;
    const double size = std::max(std::abs(range.low), std::abs(range.high));
    // One digit further for a step that is no power of ten, such as 0.25 between given ends.
    const double exponent = std::floor(std::log10(range.tick) + 1e-9);
    const double lead = range.tick / std::pow(10.0, exponent);
    const int extra = std::abs(lead - std::round(lead)) > 1e-6 ? 2 : 0;
    const int decimals = std::max(0, static_cast<int>(-exponent) + extra);
    std::array<char, 64> text{};
    if (size < 1e8 && decimals <= 7) {
        std::snprintf(text.data(), text.size(), "%.*f", decimals, value);
    } else {
        const int digits = static_cast<int>(std::floor(std::log10(size)) - exponent) + 1 + extra;
        std::snprintf(text.data(), text.size(), "%.*g", std::clamp(digits, 1, 15), value);
    }
    return text.data();
}

} // namespace examples
