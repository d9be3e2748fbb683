// SPDX-License-Identifier: MIT
#pragma once

#include <span>

namespace examples {

/// A rectangle of the picture. Pixels, y upwards, (0, 0) in the lower left corner.
struct LabelBox {
    double left = 0, bottom = 0;
    double width = 0, height = 0;
};

/// A text beside a point of the picture. Pixels, y upwards, (0, 0) in the lower left corner.
struct PlacedLabel {
    double x = 0, y = 0;          ///< the point that it names
    double outX = 0, outY = 0;    ///< the way from the point to the text; any length
    double distance = 0;          ///< how much further out than the gap
    double width = 0, height = 0; ///< of the text
    int priority = 0;             ///< the lowest number is placed first

    bool shown = false;          ///< set by layOutLabels
    double left = 0, bottom = 0; ///< set by layOutLabels: the text's lower left corner
};

/// Finds a place for each label: beside its point in its direction, moved inside a picture of the given size
/// where it would stick out. Labels are placed by priority, and in their order within one; what would come
/// closer than `gap` to a label that stands already or to what is taken (boxes without a size take nothing),
/// or would have to move further than its own size to be inside, is not shown.
void layOutLabels(std::span<PlacedLabel> labels, double width, double height, double gap,
                  std::span<const LabelBox> taken = {});

} // namespace examples
