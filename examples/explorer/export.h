// SPDX-License-Identifier: MIT
#pragma once

#include "options.h"

#include "common/grid.h"

/// Draws the grid off-screen, without any window, and writes the picture file.
/// @throws std::runtime_error, with a message for the user, when it cannot be drawn or written.
void exportPicture(examples::Grid grid, const Options& options);
