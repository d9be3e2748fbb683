// SPDX-License-Identifier: MIT
#pragma once

#include "cells.h"

#include <vector>

namespace examples {

/// All rows of a file before it is known which of them are headers.
struct RawTable {
    int rows = 0;
    int columns = 0;
    std::vector<Cell> firstRow;    ///< `columns` cells
    std::vector<Cell> firstColumn; ///< `rows` cells
    std::vector<double> values;    ///< rows * columns, row by row; NaN where there is no number

    double at(int row, int column) const { return values[static_cast<std::size_t>(row) * columns + column]; }
};

/// Which sides of a table are labels.
struct Headers {
    bool row = false;
    bool column = false;
};

/// Whether the first cell of a file leaves room for headers: a number, `NaN` or `NA` there begins the data.
bool allowsHeaders(const Cell& corner);

/// Finds the headers by the rules that `readGrid` gives.
Headers findHeaders(const RawTable& table);

} // namespace examples
