// SPDX-License-Identifier: MIT
#include "headers.h"

#include <algorithm>
#include <cmath>
#include <span>

namespace examples {

namespace {

struct Counts {
    int numbers = 0;
    int labels = 0;
};

Counts count(std::span<const Cell> cells) {
    Counts counts;
    for (const Cell& cell : cells) {
        counts.numbers += cell.kind == Cell::Kind::number;
        counts.labels += cell.kind == Cell::Kind::text;
    }
    return counts;
}

/// Whether the cells are at least two numbers in even steps, allowing for rounded figures.
bool isScale(std::span<const Cell> cells) {
    if (cells.size() < 2) return false;
    double step = (cells.back().value - cells.front().value) / static_cast<double>(cells.size() - 1);
    if (step == 0) return false;
    for (std::size_t i = 1; i < cells.size(); ++i) {
        if (!(std::abs(cells[i].value - cells[i - 1].value - step) <= 0.1 * std::abs(step))) return false;
    }
    return true;
}

/// The mean distance between row (or column) `index` and the next one, over the cells where both have
/// numbers.
double jump(const RawTable& table, int index, bool betweenRows) {
    double sum = 0;
    int count = 0;
    for (int i = 1; i < (betweenRows ? table.columns : table.rows); ++i) {
        double d = betweenRows ? table.at(index, i) - table.at(index + 1, i)
                               : table.at(i, index) - table.at(i, index + 1);
        if (std::isnan(d)) continue;
        sum += std::abs(d);
        ++count;
    }
    return count > 0 ? sum / count : 0;
}

/// Whether the first row (or column) is far from its neighbour, measured by the steps between all others.
/// With less than two others there is nothing to measure by.
bool standsApart(const RawTable& table, bool betweenRows) {
    if ((betweenRows ? table.rows : table.columns) < 3) return false;
    double most = 0;
    for (int i = 1; i + 1 < (betweenRows ? table.rows : table.columns); ++i)
        most = std::max(most, jump(table, i, betweenRows));
    return jump(table, 0, betweenRows) > 2 * most;
}

Headers findUnderLabel(const RawTable& table, Counts row, Counts column) {
    bool labelColumn = column.numbers == 0 && column.labels > 0;
    // A name above a column of numbers: no data row can begin like that.
    if (column.numbers > 0) return {.row = true, .column = row.labels == 0 && row.numbers > 0};
    if (row.labels > 0) return {.row = row.numbers == 0, .column = labelColumn};
    if (row.numbers == 0) return {.row = !labelColumn, .column = labelColumn};
    bool scale = isScale(std::span(table.firstRow).subspan(1)) && standsApart(table, true);
    return {.row = labelColumn && scale, .column = true};
}

Headers findUnderBlank(const RawTable& table, Counts row, Counts column) {
    if (row.labels > 0) return {.row = row.numbers == 0, .column = row.numbers == 0};
    if (column.labels > 0)
        return {.row = column.numbers == 0 && row.numbers > 0, .column = column.numbers == 0};
    bool scales = isScale(std::span(table.firstRow).subspan(1)) &&
                  isScale(std::span(table.firstColumn).subspan(1)) && standsApart(table, true) &&
                  standsApart(table, false);
    return {.row = scales, .column = scales};
}

} // namespace

bool allowsHeaders(const Cell& corner) {
    return corner.kind == Cell::Kind::text || (corner.kind == Cell::Kind::hole && corner.text.empty());
}

Headers findHeaders(const RawTable& table) {
    const Cell& corner = table.firstRow.front();
    if (!allowsHeaders(corner)) return {};
    bool label = corner.kind == Cell::Kind::text;
    if (table.columns == 1) return {.row = label, .column = false};
    Counts row = count(std::span(table.firstRow).subspan(1));
    Counts column = count(std::span(table.firstColumn).subspan(1));
    return label ? findUnderLabel(table, row, column) : findUnderBlank(table, row, column);
}

} // namespace examples
