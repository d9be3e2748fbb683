// SPDX-License-Identifier: MIT
#pragma once

#include "vorn/bitmaps/image_codec.h"

#include <string>
#include <vector>

namespace support {

/// A picture of 40 x 20 pixels with red, green, blue and white quarters, in reading order.
constexpr int sampleWidth = 40, sampleHeight = 20;

inline int quarterAt(int x, int y, int width = sampleWidth, int height = sampleHeight) {
    return (y >= height / 2 ? 2 : 0) + (x >= width / 2 ? 1 : 0);
}
constexpr COLORREF quarterColours[] = {RGB(255, 0, 0), RGB(0, 255, 0), RGB(0, 0, 255), RGB(255, 255, 255)};

/// Bytes put together from values of their own width, little-endian.
class ByteWriter {
public:
    template <typename... Values>
    ByteWriter& put(Values... values) {
        (append(&values, sizeof values), ...);
        return *this;
    }
    ByteWriter& append(const void* data, size_t size) {
        const auto* first = static_cast<const BYTE*>(data);
        bytes.insert(bytes.end(), first, first + size);
        return *this;
    }
    std::vector<BYTE> bytes;
};

inline std::vector<BYTE> sampleBits(int bitCount) {
    const int stride = (sampleWidth * bitCount / 8 + 3) / 4 * 4;
    std::vector<BYTE> bits(stride * sampleHeight);
    for (int y = 0; y < sampleHeight; y++) {
        for (int x = 0; x < sampleWidth; x++) {
            BYTE* pixel = &bits[(sampleHeight - 1 - y) * stride + x * bitCount / 8];
            const COLORREF colour = quarterColours[quarterAt(x, y)];
            pixel[0] = GetBValue(colour);
            pixel[1] = GetGValue(colour);
            pixel[2] = GetRValue(colour);
            if (bitCount == 32) pixel[3] = 255;
        }
    }
    return bits;
}

/// A GIF without compression: the code table is cleared after every second pixel.
inline std::vector<BYTE> sampleGif() {
    ByteWriter file;
    file.append("GIF89a", 6).put(WORD{sampleWidth}, WORD{sampleHeight}, BYTE{0x81}, WORD{0});
    for (COLORREF colour : quarterColours)
        file.append(&colour, 3);
    file.put(BYTE{0x2C}, DWORD{0}, WORD{sampleWidth}, WORD{sampleHeight}, BYTE{0}, BYTE{2});
    std::vector<BYTE> data;
    int bit = 0;
    const auto code = [&](int value) {
        for (int i = 0; i < 3; i++, bit++) {
            if (bit % 8 == 0) data.push_back(0);
            data.back() |= (value >> i & 1) << bit % 8;
        }
    };
    for (int i = 0; i < sampleWidth * sampleHeight; i++) {
        if (i % 2 == 0) code(4);
        code(quarterAt(i % sampleWidth, i / sampleWidth));
    }
    code(5);
    for (size_t at = 0; at < data.size(); at += 255) {
        const size_t count = std::min<size_t>(255, data.size() - at);
        file.put(static_cast<BYTE>(count)).append(&data[at], count);
    }
    return file.put(BYTE{0}, BYTE{0x3B}).bytes;
}

inline std::vector<BYTE> sampleTiff() {
    ByteWriter file;
    constexpr DWORD entries = 9, pixels = 8 + 2 + entries * 12 + 4 + 6,
                    bytes = sampleWidth * sampleHeight * 3;
    file.append("II*\0", 4).put(DWORD{8}, WORD{entries});
    const auto entry = [&](WORD tag, WORD type, DWORD count, DWORD value) {
        file.put(tag, type, count, value);
    };
    entry(256, 3, 1, sampleWidth);
    entry(257, 3, 1, sampleHeight);
    entry(258, 3, 3, pixels - 6);
    entry(259, 3, 1, 1);
    entry(262, 3, 1, 2);
    entry(273, 4, 1, pixels);
    entry(277, 3, 1, 3);
    entry(278, 3, 1, sampleHeight);
    entry(279, 4, 1, bytes);
    file.put(DWORD{0}, WORD{8}, WORD{8}, WORD{8});
    for (int i = 0; i < sampleWidth * sampleHeight; i++)
        file.append(&quarterColours[quarterAt(i % sampleWidth, i / sampleWidth)], 3);
    return file.bytes;
}

inline std::vector<BYTE> sampleIcon() {
    ByteWriter file;
    const std::vector<BYTE> bits = sampleBits(32), mask(8 * sampleHeight);
    const auto size = static_cast<DWORD>(40 + bits.size() + mask.size());
    file.put(WORD{0}, WORD{1}, WORD{1}, BYTE{sampleWidth}, BYTE{sampleHeight}, WORD{0}, WORD{1}, WORD{32},
             size);
    file.put(DWORD{22}, DWORD{40}, LONG{sampleWidth}, LONG{2 * sampleHeight}, WORD{1}, WORD{32});
    for (int i = 0; i < 6; i++)
        file.put(DWORD{0});
    return file.append(bits.data(), bits.size()).append(mask.data(), mask.size()).bytes;
}

/// The sample as the bytes of a file: "bmp", "gif", "ico", "jpeg", "png" or "tiff".
inline std::vector<BYTE> samplePicture(const std::string& format) {
    if (format == "gif") return sampleGif();
    if (format == "tiff") return sampleTiff();
    if (format == "ico") return sampleIcon();
    const auto id = format == "bmp"    ? CvornImageCodec::FORMAT_BMP
                    : format == "jpeg" ? CvornImageCodec::FORMAT_JPEG
                                       : CvornImageCodec::FORMAT_PNG;
    DWORD size = 0;
    BYTE* buffer =
        CvornImageCodec::EncodeBits(id, size, sampleBits(24).data(), sampleWidth, sampleHeight, 24);
    std::vector<BYTE> bytes(buffer, buffer + size);
    free(buffer);
    return bytes;
}

} // namespace support
