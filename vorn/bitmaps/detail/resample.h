// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace vorn::detail {

/// A picture of `width` x `height` pixels of four bytes each, scaled to another size with a triangle filter:
/// linear between pixels when it grows, averaging when it shrinks. Colours must be premultiplied with alpha.
std::vector<uint32_t> resampled(std::span<const uint32_t> pixels, int width, int height, int newWidth,
                                int newHeight);

} // namespace vorn::detail
