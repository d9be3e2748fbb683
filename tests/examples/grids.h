// SPDX-License-Identifier: MIT
#pragma once

#include "examples/common/grid.h"

#include <limits>
#include <utility>

namespace support {

constexpr double hole = std::numeric_limits<double>::quiet_NaN();

inline examples::Grid gridOf(int rows, int columns, std::vector<double> values) {
    examples::Grid grid;
    grid.rows = rows;
    grid.columns = columns;
    grid.values = std::move(values);
    return grid;
}

/// The values are those of a function of a cell's number, row by row.
template <typename ValueOf>
examples::Grid gridFrom(int rows, int columns, ValueOf valueOf) {
    std::vector<double> values;
    for (int i = 0; i < rows * columns; ++i)
        values.push_back(valueOf(i));
    return gridOf(rows, columns, std::move(values));
}

inline std::string repeated(int count, std::string_view text) {
    std::string result;
    for (int i = 0; i < count; ++i)
        result += text;
    return result;
}

} // namespace support
