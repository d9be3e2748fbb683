// SPDX-License-Identifier: MIT
#pragma once

#include "grid.h"

#include <span>
#include <string>
#include <string_view>

namespace examples {

/// Rows of a grid as tab-separated text: a line each, with its label where the grid has labels, and its
/// numbers in as many digits as bring them back unchanged. A hole is a blank cell.
std::string rowsAsText(const Grid& grid, std::span<const int> rows);

/// The grid with the lines of such a text in place of its rows from `first` on; what goes beyond the last row
/// is added. Each line holds a number, or a hole as in a file, for each column, and may begin with a label.
/// Labels that are blank or missing leave those of the grid as they are. Takes time by the length of the
/// text.
/// @throws std::runtime_error with a message that names line and cell, when the text is anything else.
Grid withRows(Grid grid, int first, std::string_view text);

} // namespace examples
