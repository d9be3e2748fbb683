// SPDX-License-Identifier: MIT
#pragma once

#include "vorn/bitmaps/image_codec.h"

#include <string>
#include <vector>

namespace support {

/// A picture of 40 x 20 pixels with red, green, blue and white quarters, in reading order.
constexpr int sampleWidth = 40, sampleHeight = 20;
constexpr COLORREF quarterColours[] = {RGB(255, 0, 0), RGB(0, 255, 0), RGB(0, 0, 255), RGB(255, 255, 255)};

constexpr int quarterAt(int x, int y) {
    return (y >= sampleHeight / 2 ? 2 : 0) + (x >= sampleWidth / 2 ? 1 : 0);
}

/// Bytes put together from values of their own width, little-endian.
class ByteWriter {
public:
    template <typename... Values>
    ByteWriter& put(Values... values) {
        (append(&values, sizeof values), ...);
        return *this;
    }
    ByteWriter& append(const void* data, size_t size) {
        bytes.insert(bytes.end(), static_cast<const BYTE*>(data), static_cast<const BYTE*>(data) + size);
        return *this;
    }
    std::vector<BYTE> bytes;
};

/// The sample's rows as in a DIB of 32 bits; alpha is 255.
inline std::vector<BYTE> sampleBits() {
    ByteWriter bits;
    for (int i = 0; i < sampleWidth * sampleHeight; i++) {
        const auto c = quarterColours[quarterAt(i % sampleWidth, sampleHeight - 1 - i / sampleWidth)];
        bits.put(GetBValue(c), GetGValue(c), GetRValue(c), BYTE{255});
    }
    return bits.bytes;
}

/// A GIF without compression: codes are as wide as bytes, and every row begins with a clear code.
inline std::vector<BYTE> sampleGif() {
    ByteWriter file;
    file.append("GIF89a", 6).put(WORD{sampleWidth}, WORD{sampleHeight}, BYTE{0x81}, WORD{0});
    for (const COLORREF colour : quarterColours)
        file.append(&colour, 3);
    file.put(BYTE{0x2C}, DWORD{0}, WORD{sampleWidth}, WORD{sampleHeight}, BYTE{0}, BYTE{7});
    for (int i = 0; i < sampleWidth * sampleHeight; i++) {
        if (i % sampleWidth == 0) file.put(BYTE{1 + sampleWidth}, BYTE{0x80});
        file.put(static_cast<BYTE>(quarterAt(i % sampleWidth, i / sampleWidth)));
    }
    return file.put(BYTE{1}, BYTE{0x81}, BYTE{0}, BYTE{0x3B}).bytes;
}

inline std::vector<BYTE> sampleTiff() {
    constexpr WORD count = 9;
    constexpr DWORD depths = 8 + 2 + count * 12 + 4, pixels = depths + 6;
    constexpr DWORD entries[count][4] = {{256, 3, 1, sampleWidth},
                                         {257, 3, 1, sampleHeight},
                                         {258, 3, 3, depths},
                                         {259, 3, 1, 1},
                                         {262, 3, 1, 2},
                                         {273, 4, 1, pixels},
                                         {277, 3, 1, 3},
                                         {278, 3, 1, sampleHeight},
                                         {279, 4, 1, sampleWidth * sampleHeight * 3}};
    ByteWriter file;
    file.append("II*\0", 4).put(DWORD{8}, count);
    for (const auto& [tag, type, values, value] : entries)
        file.put(static_cast<WORD>(tag), static_cast<WORD>(type), values, value);
    file.put(DWORD{0}, WORD{8}, WORD{8}, WORD{8});
    for (int i = 0; i < sampleWidth * sampleHeight; i++)
        file.append(&quarterColours[quarterAt(i % sampleWidth, i / sampleWidth)], 3);
    return file.bytes;
}

/// One picture of 32 bits at `iconPixels`, rows upwards, and behind it its mask, which hides nothing.
constexpr size_t iconPixels = 62, iconMask = iconPixels + sampleWidth * sampleHeight * 4;
inline std::vector<BYTE> iconOf(int width, int height, const std::vector<BYTE>& bits) {
    const std::vector<BYTE> mask((width + 31) / 32 * 4 * height);
    const BITMAPINFOHEADER header = {40, width, 2 * height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    ByteWriter file;
    file.put(WORD{0}, WORD{1}, WORD{1}, static_cast<BYTE>(width), static_cast<BYTE>(height), WORD{0}, WORD{1},
             WORD{32}, static_cast<DWORD>(40 + bits.size() + mask.size()), DWORD{22}, header);
    return file.append(bits.data(), bits.size()).append(mask.data(), mask.size()).bytes;
}
inline std::vector<BYTE> sampleIcon() {
    return iconOf(sampleWidth, sampleHeight, sampleBits());
}

/// The sample as the bytes of a file: "bmp", "gif", "ico", "jpeg", "png" or "tiff".
inline std::vector<BYTE> samplePicture(const std::string& format) {
    if (format == "gif") return sampleGif();
    if (format == "tiff") return sampleTiff();
    if (format == "ico") return sampleIcon();
    using Codec = CvornImageCodec;
    const int encoding = format == "bmp"    ? Codec::FORMAT_BMP
                         : format == "jpeg" ? Codec::FORMAT_JPEG
                                            : Codec::FORMAT_PNG;
    DWORD size = 0;
    BYTE* buffer = Codec::EncodeBits(encoding, size, sampleBits().data(), sampleWidth, sampleHeight, 32);
    const std::vector<BYTE> bytes(buffer, buffer + size);
    free(buffer);
    return bytes;
}

} // namespace support
