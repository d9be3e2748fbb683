// SPDX-License-Identifier: MIT
#pragma once

#include "vorn/bitmaps/detail/picture_check.h"

#include <cstdlib>
#include <memory>

namespace vorn::detail {

/// Size of a texture's buffer, four bytes a pixel.
constexpr size_t textureBytes(int width, int height) {
    return size_t{4} * static_cast<size_t>(width) * static_cast<size_t>(height);
}

/// A buffer for textures of that many pixels; null for sides that are not positive, too many pixels, or
/// without memory.
inline std::shared_ptr<unsigned char> newTextureBits(int width, int height) {
    if (width <= 0 || height <= 0 || int64_t{width} * height > int64_t{maxPicturePixels}) return nullptr;
    auto block = static_cast<unsigned char*>(std::malloc(textureBytes(width, height)));
    return block != nullptr ? std::shared_ptr<unsigned char>(block, std::free) : nullptr;
}

} // namespace vorn::detail
