// SPDX-License-Identifier: MIT
#include "vorn/bitmaps/detail/dib_blocks.h"

#include "vorn/detail/handles.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <new>

namespace vorn::detail {

std::optional<std::size_t> dibBytesNeeded(const BITMAPINFOHEADER& header) {
    constexpr std::int64_t limit = std::numeric_limits<std::int32_t>::max();
    if (header.biWidth < 0 || std::int64_t{header.biBitCount} * header.biWidth + 31 > limit) return {};
    std::int64_t bytes = dibRowBytes(header) * dibRows(header);
    // GDI reads compressed pixels as far as the header claims.
    if (isDibCompressed(header)) bytes = std::max(bytes, std::int64_t{header.biSizeImage});
    if (bytes > limit) return {};
    return static_cast<std::size_t>(bytes);
}

DWORD dibColoursUsed(const BITMAPINFO& info) {
    const bool isCore = info.bmiHeader.biSize == sizeof(BITMAPCOREHEADER);
    if (!isCore && info.bmiHeader.biClrUsed != 0) return info.bmiHeader.biClrUsed;
    switch (isCore ? coreHeaderOf(info).bcBitCount : info.bmiHeader.biBitCount) {
    case 1:
        return 2;
    case 4:
        return 16;
    case 8:
        return 256;
    default:
        return 0;
    }
}

DWORD dibColours(const BITMAPINFO& info) {
    const DWORD used = dibColoursUsed(info);
    if (info.bmiHeader.biSize == sizeof(BITMAPCOREHEADER)) return used;
    switch (info.bmiHeader.biBitCount) {
    case 1:
        return std::min<DWORD>(used, 2);
    case 4:
        return std::min<DWORD>(used, 16);
    case 8:
        return std::min<DWORD>(used, 256);
    default:
        return used;
    }
}

DWORD dibEntriesBehind(const BITMAPINFOHEADER& header, DWORD colours) {
    return header.biCompression == BI_BITFIELDS ? std::max<DWORD>(colours, 3) : colours;
}

BITMAPCOREHEADER coreHeaderOf(const BITMAPINFO& info) {
    BITMAPCOREHEADER core;
    std::memcpy(&core, &info, sizeof(core));
    return core;
}

BITMAPINFOHEADER widenCoreHeader(const BITMAPCOREHEADER& core) {
    BITMAPINFOHEADER header = {};
    header.biSize = sizeof(header);
    header.biWidth = core.bcWidth;
    header.biHeight = core.bcHeight;
    header.biPlanes = core.bcPlanes;
    header.biBitCount = core.bcBitCount;
    return header;
}

void widenCoreColours(const RGBTRIPLE* from, RGBQUAD* to, DWORD count) {
    std::transform(from, from + count, to, [](const RGBTRIPLE& colour) {
        return RGBQUAD{colour.rgbtBlue, colour.rgbtGreen, colour.rgbtRed, 0};
    });
}

std::shared_ptr<BITMAPINFO> newDibHeader() noexcept try {
    return MallocPtr<BITMAPINFO>(static_cast<BITMAPINFO*>(std::calloc(1, dibHeaderBlockBytes)));
} catch (const std::bad_alloc&) {
    return nullptr;
}

std::shared_ptr<BYTE> newDibBits(std::size_t bytes, std::size_t filled) noexcept try {
    const std::size_t room = std::max<std::size_t>(bytes, 1);
    return MallocPtr<BYTE>(static_cast<BYTE*>(filled < room ? std::calloc(1, room) : std::malloc(room)));
} catch (const std::bad_alloc&) {
    return nullptr;
}

std::optional<PaletteColours> paletteColours(HPALETTE palette) {
    WORD count = 0;
    if (::GetObject(palette, sizeof(count), &count) == 0 || count > maxDibColours) return {};
    PaletteColours colours;
    colours.count = count;
    ::GetPaletteEntries(palette, 0, count, colours.entries.data());
    return colours;
}

} // namespace vorn::detail
