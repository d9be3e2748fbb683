// SPDX-License-Identifier: MIT
#include "grid_rows.h"

#include "cells.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <stdexcept>
#include <utility>
#include <vector>

namespace examples {

namespace {

constexpr std::size_t longestLabel = 256;

void appendNumber(std::string& text, double value) {
    std::array<char, 32> digits;
    text.append(digits.data(), std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr);
}

/// A label in quotes where the reader needs them. A NUL would end the text on the clipboard.
void appendLabel(std::string& text, const std::string& label) {
    const bool quoted = label.find_first_of("\t\r\n\"") != std::string::npos;
    if (quoted) text += '"';
    for (char c : label) {
        if (c == '"') text += '"';
        if (c != '\0') text += c;
    }
    if (quoted) text += '"';
}

/// The lines of a text as rows for a grid of some columns.
class RowReader {
public:
    RowReader(int columns, int most) : m_columns(static_cast<std::size_t>(columns)), m_most(most) {}

    void read(std::string_view text);

    int rows() const { return static_cast<int>(labels.size()); }
    std::vector<double> values;
    std::vector<std::string> labels;

private:
    void add(const std::vector<Cell>& line);
    void addRow();

    std::size_t m_columns;
    int m_most;
};

void RowReader::read(std::string_view text) {
    CellReader reader(text, '\t');
    Cell cell;
    std::vector<Cell> line;
    std::size_t blankLines = 0;
    while (reader.next(cell)) {
        line.push_back(cell);
        if (line.size() > m_columns + 1)
            throw std::runtime_error("line " + std::to_string(cell.line) + " has more than " +
                                     std::to_string(m_columns) + " numbers");
        if (!cell.lastInRow) continue;
        // As in a file: empty lines are no rows, except between the numbers of a single column.
        if (line.size() == 1 && line.front().text.empty()) {
            ++blankLines;
        } else {
            for (std::size_t i = std::exchange(blankLines, 0); i > 0 && m_columns == 1 && !labels.empty();
                 --i) {
                addRow();
                values.push_back(std::numeric_limits<double>::quiet_NaN());
            }
            add(line);
        }
        line.clear();
    }
    if (labels.empty()) throw std::runtime_error("there are no numbers in the text");
}

void RowReader::addRow() {
    if (rows() == m_most) throw std::runtime_error("the chart would have more than 1000 rows");
    labels.emplace_back();
}

void RowReader::add(const std::vector<Cell>& line) {
    if (line.size() < m_columns)
        throw std::runtime_error("line " + std::to_string(line.front().line) + " has " +
                                 std::to_string(line.size()) + " cells, the chart " +
                                 std::to_string(m_columns) + " columns");
    addRow();
    auto first = line.begin();
    if (line.size() > m_columns) {
        if (first->text.size() > longestLabel)
            throw std::runtime_error("the label in line " + std::to_string(first->line) + " is too long");
        labels.back() = labelOf(*first++);
    }
    for (; first != line.end(); ++first) {
        if (first->kind == Cell::Kind::text)
            throw std::runtime_error("line " + std::to_string(first->line) + ", cell " +
                                     std::to_string(first->column) + ": " + excerpt(*first) +
                                     " stands where a number belongs");
        values.push_back(first->value);
    }
}

/// Labels for all rows, where some get one: the others' are their numbers, as they were without labels.
void numberRows(Grid& grid) {
    for (int row = 1; row <= grid.rows; ++row)
        grid.rowLabels.push_back(std::to_string(row));
}

} // namespace

std::string rowsAsText(const Grid& grid, std::span<const int> rows) {
    std::string text;
    for (int row : rows) {
        if (!grid.rowLabels.empty()) {
            appendLabel(text, grid.rowLabels[row]);
            text += '\t';
        }
        for (int column = 0; column < grid.columns; ++column) {
            if (column > 0) text += '\t';
            if (!std::isnan(grid.at(row, column)))
                appendNumber(text, grid.at(row, column));
            else if (grid.columns == 1)
                text += "NaN"; // a blank line could be anything
        }
        text += "\r\n";
    }
    return text;
}

Grid withRows(Grid grid, int first, std::string_view text) {
    RowReader pasted(grid.columns, Grid::maxSide - first);
    pasted.read(text);
    const int end = std::max(grid.rows, first + pasted.rows());
    const bool labelled =
        std::ranges::any_of(pasted.labels, [](const std::string& label) { return !label.empty(); });
    if (labelled && grid.rowLabels.empty()) numberRows(grid);
    grid.rows = end;
    grid.values.resize(static_cast<std::size_t>(end) * grid.columns);
    std::ranges::copy(pasted.values, grid.values.begin() + static_cast<std::ptrdiff_t>(first) * grid.columns);
    if (grid.rowLabels.empty()) return grid;
    grid.rowLabels.resize(end);
    for (int i = 0; i < pasted.rows(); ++i) {
        if (!pasted.labels[i].empty()) grid.rowLabels[first + i] = std::move(pasted.labels[i]);
    }
    return grid;
}

} // namespace examples
