// SPDX-License-Identifier: MIT
#include "vorn/bitmaps/detail/picture_check.h"

#include <algorithm>
#include <cstring>
#include <optional>

namespace vorn::detail {

namespace {

using Bytes = std::span<const BYTE>;

/// Little-endian value at an offset; zero past the end, which every caller refuses as a size.
template <typename T>
T valueAt(Bytes bytes, uint64_t offset) {
    T value = 0;
    if (offset + sizeof(T) <= bytes.size()) std::memcpy(&value, bytes.data() + offset, sizeof(T));
    return value;
}

uint32_t bigEndianAt(Bytes bytes, uint64_t offset, int count) {
    uint32_t value = 0;
    for (int i = 0; i < count; ++i)
        value = value << 8 | valueAt<uint8_t>(bytes, offset + i);
    return value;
}

bool startsWith(Bytes bytes, const char* mark, size_t length) {
    return bytes.size() >= length && std::memcmp(bytes.data(), mark, length) == 0;
}

bool fits(uint64_t width, uint64_t height) {
    return width > 0 && height > 0 && width <= maxPicturePixels && width * height <= maxPicturePixels;
}

/// What a bitmap header promises.
struct BitmapLayout {
    uint64_t pixelOffset; ///< of the pixels from the header's beginning when they follow the colour table
    uint64_t width;
    uint64_t height;
    uint64_t storedBytes; ///< of the pixels
};

uint64_t rowBytes(uint64_t width, uint64_t bits) {
    return (width * bits + 31) / 32 * 4;
}

std::optional<BitmapLayout> coreLayout(Bytes header) {
    uint64_t width = valueAt<uint16_t>(header, 4);
    uint64_t height = valueAt<uint16_t>(header, 6);
    unsigned bits = valueAt<uint16_t>(header, 10);
    if (!fits(width, height) || (bits != 1 && bits != 4 && bits != 8 && bits != 24)) return {};
    return BitmapLayout{12 + (bits <= 8 ? 3u << bits : 0), width, height, rowBytes(width, bits) * height};
}

std::optional<BitmapLayout> bitmapLayout(Bytes header) {
    auto size = valueAt<uint32_t>(header, 0);
    if (size == sizeof(BITMAPCOREHEADER)) return coreLayout(header);
    if (size < sizeof(BITMAPINFOHEADER) || size > sizeof(BITMAPV5HEADER) || header.size() < size) return {};
    BITMAPINFOHEADER info;
    std::memcpy(&info, header.data(), sizeof info);
    bool topDown = info.biHeight < 0;
    auto width = static_cast<uint64_t>(std::max<int64_t>(info.biWidth, 0));
    auto height = static_cast<uint64_t>(topDown ? -int64_t{info.biHeight} : info.biHeight);
    unsigned bits = info.biBitCount;
    constexpr unsigned depths[] = {1, 4, 8, 16, 24, 32};
    if (!fits(width, height) || std::ranges::find(depths, bits) == std::end(depths)) return {};

    uint64_t masks = 0;
    uint64_t stored = rowBytes(width, bits) * height;
    switch (info.biCompression) {
    case BI_RGB:
        break;
    case BI_RLE8:
    case BI_RLE4:
        if (bits != (info.biCompression == BI_RLE8 ? 8u : 4u) || topDown || info.biSizeImage == 0) return {};
        stored = info.biSizeImage;
        break;
    case BI_BITFIELDS:
        if (bits != 16 && bits != 32) return {};
        if (size == sizeof(BITMAPINFOHEADER)) masks = 3 * sizeof(DWORD);
        break;
    default:
        return {};
    }
    uint64_t most = bits <= 8 ? 1u << bits : 0;
    uint64_t colours = info.biClrUsed == 0 || (bits <= 8 && info.biClrUsed > most) ? most : info.biClrUsed;
    return BitmapLayout{size + masks + colours * sizeof(RGBQUAD), width, height, stored};
}

bool isSoundBitmap(Bytes file) {
    constexpr uint64_t fileHeader = sizeof(BITMAPFILEHEADER);
    if (file.size() < fileHeader + sizeof(BITMAPCOREHEADER)) return false;
    auto layout = bitmapLayout(file.subspan(fileHeader));
    uint64_t pixels = valueAt<uint32_t>(file, 10);
    return layout && fileHeader + layout->pixelOffset <= file.size() && pixels > fileHeader &&
           pixels + layout->storedBytes <= file.size();
}

bool isSoundPng(Bytes file) {
    return startsWith(file, "\x89PNG\r\n\x1a\n", 8) &&
           fits(bigEndianAt(file, 16, 4), bigEndianAt(file, 20, 4));
}

/// Offset after a chain of length-led blocks and its terminator; nothing when the file ends before.
std::optional<uint64_t> afterSubBlocks(Bytes file, uint64_t at) {
    while (at < file.size()) {
        uint64_t length = file[at];
        at += 1 + length;
        if (length == 0) return at;
    }
    return {};
}

uint64_t gifTableBytes(BYTE flags) {
    return (flags & 0x80) != 0 ? 3u << ((flags & 7) + 1) : 0;
}

/// The first frame must be whole; no frame may be too large.
bool isSoundGif(Bytes file) {
    if (file.size() < 13 || !fits(valueAt<uint16_t>(file, 6), valueAt<uint16_t>(file, 8))) return false;
    bool hasFrame = false;
    uint64_t at = 13 + gifTableBytes(file[10]);
    while (at < file.size() && file[at] != 0x3B) {
        uint64_t blocks = at + 2;
        if (file[at] == 0x2C) {
            if (!fits(valueAt<uint16_t>(file, at + 5), valueAt<uint16_t>(file, at + 7))) return false;
            blocks = at + 11 + gifTableBytes(valueAt<uint8_t>(file, at + 9));
        } else if (file[at] != 0x21) {
            break;
        }
        auto next = afterSubBlocks(file, blocks);
        if (!next) break;
        hasFrame |= file[at] == 0x2C;
        at = *next;
    }
    return hasFrame;
}

/// A frame header, a scan and an end mark, in this order: a picture cut off in transfer has no end mark.
bool isSoundJpeg(Bytes file) {
    bool hasSize = false;
    uint64_t at = 2;
    while (at + 4 <= file.size() && file[at] == 0xFF) {
        BYTE mark = file[at + 1];
        if (mark == 0xFF) {
            ++at;
            continue;
        }
        if (mark == 0xDA) {
            constexpr BYTE end[] = {0xFF, 0xD9};
            return hasSize && !std::ranges::search(file.subspan(at), end).empty();
        }
        bool isFrame = mark >= 0xC0 && mark <= 0xCF && mark != 0xC4 && mark != 0xC8 && mark != 0xCC;
        if (isFrame) {
            if (!fits(bigEndianAt(file, at + 7, 2), bigEndianAt(file, at + 5, 2))) return false;
            hasSize = true;
        }
        at += 2 + bigEndianAt(file, at + 2, 2);
    }
    return false;
}

bool isSoundIconImage(Bytes image) {
    if (startsWith(image, "\x89PNG", 4)) return isSoundPng(image);
    auto layout = bitmapLayout(image);
    if (!layout || valueAt<uint32_t>(image, 0) != sizeof(BITMAPINFOHEADER)) return false;
    // The header counts the rows of the colours and of the mask together.
    uint64_t mask = rowBytes(layout->width, 1) * (layout->height / 2);
    return layout->height % 2 == 0 && layout->pixelOffset + layout->storedBytes / 2 + mask <= image.size();
}

bool isSoundIcon(Bytes file) {
    uint64_t count = valueAt<uint16_t>(file, 4);
    if (count == 0 || 6 + 16 * count > file.size()) return false;
    for (uint64_t entry = 6; entry < 6 + 16 * count; entry += 16) {
        uint64_t size = valueAt<uint32_t>(file, entry + 8);
        uint64_t offset = valueAt<uint32_t>(file, entry + 12);
        if (offset + size > file.size() || !isSoundIconImage(file.subspan(offset, size))) return false;
    }
    return true;
}

bool isIcon(Bytes file) {
    return startsWith(file, "\0\0\1\0", 4) || startsWith(file, "\0\0\2\0", 4);
}

/// A PNG has transparency in its pixels (the bit 4 of its colour type) or in a chunk of its own.
bool mayBlendPng(Bytes file) {
    if ((valueAt<uint8_t>(file, 25) & 4) != 0) return true;
    constexpr BYTE chunk[] = {'t', 'R', 'N', 'S'}, pixels[] = {'I', 'D', 'A', 'T'};
    auto before = std::ranges::search(file, pixels).begin();
    return std::search(file.begin(), before, std::begin(chunk), std::end(chunk)) != before;
}

bool mayBlendIconImage(Bytes image) {
    if (isSoundPng(image)) return mayBlendPng(image);
    auto layout = bitmapLayout(image);
    if (!layout || valueAt<uint16_t>(image, 14) != 32) return false;
    Bytes pixels = image.subspan(layout->pixelOffset, layout->storedBytes / 2);
    for (size_t alpha = 3; alpha < pixels.size(); alpha += 4) {
        if (pixels[alpha] != 0 && pixels[alpha] != 255) return true;
    }
    return false;
}

} // namespace

bool mayBlend(Bytes bytes) {
    if (isSoundPng(bytes)) return mayBlendPng(bytes);
    if (!isIcon(bytes) || !isSoundIcon(bytes)) return false;
    for (uint64_t entry = 6; entry < 6 + 16 * uint64_t{valueAt<uint16_t>(bytes, 4)}; entry += 16) {
        auto size = valueAt<uint32_t>(bytes, entry + 8), offset = valueAt<uint32_t>(bytes, entry + 12);
        if (mayBlendIconImage(bytes.subspan(offset, size))) return true;
    }
    return false;
}

uint64_t bitmapPixelOffset(Bytes header) {
    auto layout = bitmapLayout(header);
    return layout ? layout->pixelOffset : 0;
}

PictureState checkPicture(Bytes bytes) {
    auto state = [](bool sound) { return sound ? PictureState::sound : PictureState::broken; };
    if (startsWith(bytes, "BM", 2)) return state(isSoundBitmap(bytes));
    if (startsWith(bytes, "\x89P", 2)) return state(isSoundPng(bytes));
    if (startsWith(bytes, "GIF8", 4)) return state(isSoundGif(bytes));
    if (startsWith(bytes, "\xFF\xD8", 2)) return state(isSoundJpeg(bytes));
    if (isIcon(bytes)) return state(isSoundIcon(bytes));
    return PictureState::unknown;
}

} // namespace vorn::detail
