// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <span>
#include <string>

/// Minimum, mean and maximum of numbers; holes do not count.
struct Statistics {
    double least = HUGE_VAL, mean = 0, greatest = -HUGE_VAL;
    int count = 0;

    explicit Statistics(std::span<const double> values) {
        for (double value : values) {
            if (std::isnan(value)) continue;
            least = std::min(least, value);
            greatest = std::max(greatest, value);
            ++count;
            mean += value / count - mean / count; // a sum, or a difference, could be too large for a double
        }
    }
};

/// How numbers between two others are written: with as many decimals as tell a thousandth of their range, or
/// of their size where they are all the same; those that are no plain numbers with an exponent.
class NumberFormat {
public:
    NumberFormat(double least, double greatest) {
        const double size = std::max(std::abs(least), std::abs(greatest));
        m_plain = size < 1e9 && (size >= 1e-3 || size == 0);
        const double range = greatest > least ? greatest - least : size;
        if (m_plain && range > 0)
            m_decimals = std::clamp(3 - static_cast<int>(std::floor(std::log10(range))), 0, 6);
    }
    std::string text(double value) const {
        char text[40];
        std::snprintf(text, sizeof text, m_plain ? "%.*f" : "%.*e", m_plain ? m_decimals : 3, value);
        return text;
    }

private:
    bool m_plain;
    int m_decimals = 0;
};
