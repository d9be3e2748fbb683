// SPDX-License-Identifier: MIT
#pragma once

#include "chart_axes.h"
#include "options.h"

/// Load the chart from the file that the options name, or save it there; nothing happens without a name.
/// @throws std::runtime_error, with a message for the user, and with the chart as it was
void loadChart(ChartAxes& axes, const Options& options);
void saveChart(ChartAxes& axes, const Options& options);
