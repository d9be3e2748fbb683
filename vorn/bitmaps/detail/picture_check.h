// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <span>
#include <windows.h>

namespace vorn::detail {

/// Most pixels of a picture that is loaded: 1 GB at four bytes each.
constexpr uint64_t maxPicturePixels = uint64_t{1} << 28;

enum class PictureState {
    unknown, ///< none of the formats below: left to whoever can read it
    sound,   ///< the structure promises no more than the bytes hold
    broken,  ///< cut off, contradictory or too large
};

/// Checks the bytes of a BMP, GIF, JPEG, PNG, icon or cursor file before a system loader sees them: those
/// loaders trust the sizes and offsets in a file more than they should.
PictureState checkPicture(std::span<const BYTE> bytes);

/// Whether a sound picture has half-transparent pixels, or in a PNG may have them.
bool mayBlend(std::span<const BYTE> bytes);

/// Bytes from the beginning of a bitmap header to the pixels behind its colour table; 0 for a header that
/// contradicts itself or that the bytes do not hold.
uint64_t bitmapPixelOffset(std::span<const BYTE> header);

} // namespace vorn::detail
