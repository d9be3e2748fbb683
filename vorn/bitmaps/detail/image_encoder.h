// SPDX-License-Identifier: MIT
#pragma once

#include "vorn/bitmaps/detail/memory_stream.h"

#include <span>
#include <wincodec.h>

namespace vorn::detail {

/// Pixels in memory: where the top row begins and how far it is to the next one below.
struct PixelRows {
    const BYTE* top;
    ptrdiff_t step;
    int width;
    int height;
    int bits;      ///< 24 (blue, green, red) or 32
    bool hasAlpha; ///< the fourth byte of 32 bits is alpha; it counts for nothing otherwise
};

/// The system's imaging factory; empty when there is none. COM must have been entered.
ComPtr<IWICImagingFactory> makeImagingFactory();

/// Encodes pixels as a file of the container format. Empty data on failure.
HeapBytes encodeImage(REFGUID container, const PixelRows& rows);

} // namespace vorn::detail
