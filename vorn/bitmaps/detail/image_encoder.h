// SPDX-License-Identifier: MIT
#pragma once

#include "vorn/bitmaps/detail/memory_stream.h"

#include <span>
#include <wincodec.h>

namespace vorn::detail {

/// Pixels in memory: where the top row begins and how far it is to the next one below; or those of a GDI
/// bitmap.
struct PixelRows {
    const BYTE* top;
    ptrdiff_t step;
    int width;
    int height;
    int bits;                 ///< 24 (blue, green, red) or 32
    bool hasAlpha;            ///< the fourth byte of 32 bits is alpha; it counts for nothing otherwise
    HBITMAP bitmap = nullptr; ///< read with 32 bits instead of the rows in memory; no DC may hold it
};

/// The system's imaging factory; empty when there is none. COM must have been entered.
ComPtr<IWICImagingFactory> makeImagingFactory();

/// Encodes pixels as a file of the container format, into a block of the C heap; no data on failure.
HeapBytes encodeImage(REFGUID container, const PixelRows& rows);

/// The same into a file, which on failure is left as it was. Returns whether all was written.
bool saveImage(const char* file, REFGUID container, const PixelRows& rows);

} // namespace vorn::detail
