// SPDX-License-Identifier: MIT
#include "label_layout.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <vector>

namespace examples {

namespace {

// Puts the box so that its edge, in the outward direction, is `gap` away from the point.
void placeBeside(PlacedLabel& label, double gap) {
    const double length = std::hypot(label.outX, label.outY);
    const double x = length > 0 ? label.outX / length : 0;
    const double y = length > 0 ? label.outY / length : -1;
    // How far the centre must go for the box to clear the point: the nearer of the two sides decides.
    const double clearX = std::abs(x) > 1e-6 ? (label.width / 2 + gap) / std::abs(x) : HUGE_VAL;
    const double clearY = std::abs(y) > 1e-6 ? (label.height / 2 + gap) / std::abs(y) : HUGE_VAL;
    const double way = std::min(clearX, clearY) + label.distance;
    label.left = label.x + x * way - label.width / 2;
    label.bottom = label.y + y * way - label.height / 2;
}

// False when the box is too large for the picture, or too far outside.
bool moveInside(PlacedLabel& label, double width, double height, double margin) {
    const double maxLeft = width - margin - label.width, maxBottom = height - margin - label.height;
    if (!(maxLeft >= margin) || !(maxBottom >= margin)) return false;
    const double left = std::clamp(label.left, margin, maxLeft);
    const double bottom = std::clamp(label.bottom, margin, maxBottom);
    const bool near =
        std::abs(left - label.left) <= label.width && std::abs(bottom - label.bottom) <= label.height;
    label.left = left;
    label.bottom = bottom;
    return near;
}

template <typename Box>
bool collide(const PlacedLabel& a, const Box& b, double gap) {
    return a.left < b.left + b.width + gap && b.left < a.left + a.width + gap &&
           a.bottom < b.bottom + b.height + gap && b.bottom < a.bottom + a.height + gap;
}

} // namespace

void layOutLabels(std::span<PlacedLabel> labels, double width, double height, double gap,
                  std::span<const LabelBox> taken) {
    std::vector<std::size_t> order(labels.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(),
                     [&](std::size_t a, std::size_t b) { return labels[a].priority < labels[b].priority; });
    std::vector<const PlacedLabel*> standing;
    for (std::size_t index : order) {
        PlacedLabel& label = labels[index];
        label.shown = false;
        if (!std::isfinite(label.x) || !std::isfinite(label.y)) continue;
        placeBeside(label, gap);
        if (!moveInside(label, width, height, gap)) continue;
        if (std::any_of(taken.begin(), taken.end(), [&](const LabelBox& box) {
                return box.width > 0 && box.height > 0 && collide(label, box, gap);
            }))
            continue;
        label.shown = std::none_of(standing.begin(), standing.end(),
                                   [&](const PlacedLabel* other) { return collide(label, *other, gap); });
        if (label.shown) standing.push_back(&label);
    }
}

} // namespace examples
