// SPDX-License-Identifier: MIT
#pragma once

#include <limits>

namespace vorn::detail {

/// Towards zero, as a cast; what an int cannot hold gives the nearest that it can, and no number gives 0.
constexpr int truncateToInt(double value) {
    using Limits = std::numeric_limits<int>;
    if (value >= Limits::max()) return Limits::max();
    if (value <= Limits::min()) return Limits::min();
    return value == value ? static_cast<int>(value) : 0;
}

} // namespace vorn::detail
