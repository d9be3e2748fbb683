// SPDX-License-Identifier: MIT
#include "points.h"

#include "common/cells.h"
#include "common/grid.h"

#include <algorithm>
#include <stdexcept>

using examples::Cell;
using examples::GridError;

namespace {

std::size_t indexOf(std::vector<std::string>& names, const std::string& name) {
    const auto found = std::find(names.begin(), names.end(), name);
    const auto index = static_cast<std::size_t>(found - names.begin());
    if (found == names.end()) names.push_back(name);
    return index;
}

} // namespace

Points Points::parse(std::string_view text, const std::string& file) {
    Points result;
    examples::CellReader reader(text, examples::findSeparator(text));
    Cell cell;
    const auto fail = [&](const std::string& reason) {
        throw GridError(file, cell.line, cell.column, reason);
    };
    const auto next = [&] {
        try {
            return reader.next(cell);
        } catch (const std::runtime_error& error) {
            throw GridError(file, cell.line, cell.column, error.what());
        }
    };
    for (int row = 0; next();) {
        if (cell.lastInRow && cell.text.empty()) continue; // an empty line
        Point point;
        for (std::size_t column = 0; column < result.titles.size(); ++column, column < 6 && next()) {
            if (cell.lastInRow != (column == 5)) fail("a row has six cells: name, class, x, y, z, value");
            if (row == 0)
                result.titles[column] = examples::labelOf(cell);
            else if (column == 0)
                point.name = examples::labelOf(cell);
            else if (column == 1)
                point.category = indexOf(result.classes, examples::labelOf(cell));
            else if (cell.kind != Cell::Kind::number)
                fail(examples::excerpt(cell) + " stands where a number belongs");
            else
                (column < 5 ? point.position[column - 2] : point.value) = cell.value;
        }
        if (row++ > 0) result.points.push_back(std::move(point));
        if (result.points.size() > most) fail("more than 5000 points");
    }
    if (result.points.empty()) throw GridError(file, 0, 0, "holds no points");
    return result;
}
