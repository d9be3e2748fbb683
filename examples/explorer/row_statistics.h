// SPDX-License-Identifier: MIT
#pragma once

#include "common/grid.h"

#include <afxwin.h>

#include <algorithm>
#include <cmath>
#include <vector>

/// Minimum, mean and maximum of a row's numbers.
struct RowStatistics {
    double least = HUGE_VAL, mean = 0, greatest = -HUGE_VAL;
    int count = 0;

    RowStatistics(const examples::Grid& grid, int row) {
        for (int column = 0; column < grid.columns; ++column) {
            const double value = grid.at(row, column);
            if (std::isnan(value)) continue;
            least = std::min(least, value);
            greatest = std::max(greatest, value);
            ++count;
            mean += value / count - mean / count; // a sum, or a difference, could be too large for a double
        }
    }
};

/// The numbers of a sheet, with as many decimals as tell a thousandth of their range; those that are no plain
/// numbers with an exponent.
class NumberFormat {
public:
    explicit NumberFormat(const std::vector<RowStatistics>& rows) {
        double least = HUGE_VAL, greatest = -HUGE_VAL;
        for (const RowStatistics& row : rows) {
            least = std::min(least, row.least);
            greatest = std::max(greatest, row.greatest);
        }
        const double size = std::max(std::abs(least), std::abs(greatest)), range = greatest - least;
        m_plain = size < 1e9 && (size >= 1e-3 || size == 0);
        if (m_plain && range > 0)
            m_decimals = std::clamp(3 - static_cast<int>(std::floor(std::log10(range))), 0, 6);
    }
    CString text(double value) const {
        CString text;
        text.Format(m_plain ? "%.*f" : "%.*e", m_plain ? m_decimals : 3, value);
        return text;
    }

private:
    bool m_plain;
    int m_decimals = 0;
};
