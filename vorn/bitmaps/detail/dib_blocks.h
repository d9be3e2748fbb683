// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <windows.h>

/// Sizes and blocks of device-independent bitmaps, shared by the sources of the DIB.
namespace vorn::detail {

constexpr UINT maxDibColours = 256;
constexpr std::size_t dibHeaderBlockBytes = sizeof(BITMAPINFOHEADER) + maxDibColours * sizeof(RGBQUAD);

/// Bytes from one row to the next, not narrowed to the interface's 32 bits.
constexpr std::int64_t dibRowBytes(const BITMAPINFOHEADER& header) {
    return ((std::int64_t{header.biBitCount} * header.biWidth + 31) >> 5) * 4;
}

/// Number of rows; a top-down image has a negative height.
constexpr std::int64_t dibRows(const BITMAPINFOHEADER& header) {
    return header.biHeight < 0 ? -std::int64_t{header.biHeight} : header.biHeight;
}

constexpr bool isDibCompressed(const BITMAPINFOHEADER& header) {
    return header.biCompression != BI_RGB && header.biCompression != BI_BITFIELDS;
}

/// How many bytes of pixels GDI and the DIB's operations may touch behind a header; nothing for a header
/// whose sizes leave the interface's signed 32 bits.
std::optional<std::size_t> dibBytesNeeded(const BITMAPINFOHEADER& header);

/// Entries of the colour table behind a header of either kind, before and after the limit by bit count.
DWORD dibColoursUsed(const BITMAPINFO& info);
DWORD dibColours(const BITMAPINFO& info);

/// Entries to take over with a 40-byte header: the colours, and at least the three masks of bit-field pixels,
/// which stand in their place.
DWORD dibEntriesBehind(const BITMAPINFOHEADER& header, DWORD colours);

inline RGBQUAD* dibColourTable(BITMAPINFO* info) {
    return reinterpret_cast<RGBQUAD*>(reinterpret_cast<BYTE*>(info) + sizeof(BITMAPINFOHEADER));
}

constexpr RGBQUAD dibColour(const PALETTEENTRY& entry) {
    return {entry.peBlue, entry.peGreen, entry.peRed, 0};
}

/// The core header in a block that begins with one, and the 40-byte form of it.
BITMAPCOREHEADER coreHeaderOf(const BITMAPINFO& info);
BITMAPINFOHEADER widenCoreHeader(const BITMAPCOREHEADER& core);
void widenCoreColours(const RGBTRIPLE* from, RGBQUAD* to, DWORD count);

/// A zeroed header block; null without memory.
std::shared_ptr<BITMAPINFO> newDibHeader() noexcept;

/// A pixel buffer from the C heap whose first `filled` bytes the caller fills; if there are more they are
/// zero. Null without memory.
std::shared_ptr<BYTE> newDibBits(std::size_t bytes, std::size_t filled = 0) noexcept;

/// The colours of a palette that fits into a colour table.
struct PaletteColours {
    UINT count = 0;
    std::array<PALETTEENTRY, maxDibColours> entries = {};
};

/// Nothing when the handle is not a palette or has more than 256 colours.
std::optional<PaletteColours> paletteColours(HPALETTE palette);

} // namespace vorn::detail
