// SPDX-License-Identifier: MIT
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace examples {

/// A rectangular table of numbers, as read from a CSV or TSV file.
struct Grid {
    /// The most data rows, and the most data columns, that a grid may have.
    static constexpr int maxSide = 1000;

    int rows = 0;
    int columns = 0;
    std::vector<double> values;            ///< rows * columns finite numbers, row by row; NaN is a hole
    std::vector<std::string> columnLabels; ///< the header row, one label a column; empty when there is none
    std::vector<std::string> rowLabels;    ///< the header column, one label a row; empty when there is none

    std::string corner; ///< the cell above the header column; "rows\\columns" may name both sides

    double at(int row, int column) const { return values[static_cast<std::size_t>(row) * columns + column]; }
};

/// Why a file holds no grid. `what()` is the whole message, naming file, line and column.
class GridError : public std::runtime_error {
public:
    GridError(const std::string& file, int line, int column, const std::string& reason);

    int line() const { return m_line; } ///< from 1; 0 when the fault is the whole file's
    int column() const {
        return m_column;
    } ///< the cell in its line, from 1; 0 when the fault is the whole line's

private:
    int m_line;
    int m_column;
};

/// Reads a grid from a file of comma, semicolon or tab separated values, at most 1000 x 1000.
///
/// A cell is a number with a decimal point, or a hole: blank, `NaN` or `NA`. Cells may be quoted. The
/// separator is found by itself, and so are the headers:
/// - The first row is a header when it holds labels and no number, or when its first cell is a label, all
/// others
///   are numbers, and the first column goes on with numbers.
/// - The first column is a header when it holds labels and no number, or when a header row leaves the first
/// cell
///   blank.
/// - Numbers are headers on both sides when the first cell is blank (or a label), first row and first column
/// are
///   evenly spaced scales, and neither continues the numbers beside it.
///
/// @throws GridError when the file cannot be read, is empty or too large, has rows of different lengths, or
/// text where a number belongs.
Grid readGrid(const std::string& file);

/// The same for text in memory; `file` is the name that messages give.
Grid parseGrid(std::string_view text, const std::string& file);

} // namespace examples
