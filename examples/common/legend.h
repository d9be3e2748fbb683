// SPDX-License-Identifier: MIT
#pragma once

#include <vorn/vorn.h>

#include <span>
#include <string>

namespace examples {

/// A colour for each category of a chart, told apart easily; after the tenth they begin again.
COLORREF categoryColour(std::size_t category);

/// Makes a sheet the legend of a chart: a colour and a name in each row, for the upper right corner.
void makeLegend(CvornSpread& sheet, std::span<const std::string> names);

/// A click into the legend chooses a category, with Ctrl one more or less; on the only one chosen it chooses
/// none. False when the point is elsewhere.
bool clickLegend(CvornSpread& sheet, CPoint pt, UINT nFlags);

/// The colour that a category has now: grey when others are chosen.
COLORREF legendColour(const CvornSpread& sheet, std::size_t category);

} // namespace examples
