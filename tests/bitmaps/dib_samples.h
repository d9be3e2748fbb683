// SPDX-License-Identifier: MIT
#pragma once

#include "vorn/bitmaps/dib.h"

#include <cstdlib>
#include <cstring>
#include <random>
#include <vector>

namespace support {

using Bytes = std::vector<BYTE>;

inline Bytes noise(std::size_t count, unsigned seed = 1) {
    std::minstd_rand random(seed);
    Bytes bytes(count);
    for (BYTE& byte : bytes)
        byte = static_cast<BYTE>(random() >> 8);
    return bytes;
}

/// The header block of a DIB, as it lies in memory and in a file, with colours of which none is like another.
struct HeaderBlock {
    HeaderBlock(int width, int height, int bits)
        : header{sizeof(header), width, height, 1, static_cast<WORD>(bits), BI_RGB, 0, 0, 0, 0, 0} {
        for (int i = 0; i < 256; ++i)
            colours[i] = {BYTE(i * 7 + 30), BYTE(255 - i), BYTE(i), 0};
    }
    BITMAPINFO* info() { return reinterpret_cast<BITMAPINFO*>(this); }
    int stride() const { return (header.biWidth * header.biBitCount + 31) / 32 * 4; }

    BITMAPINFOHEADER header;
    RGBQUAD colours[256];
};

/// An image of random pixels.
inline CvornDIB noiseDib(int width, int height, int bits) {
    HeaderBlock block(width, height, bits);
    const Bytes pixels = noise(static_cast<std::size_t>(block.stride() * height));
    auto* owned = static_cast<BYTE*>(std::malloc(pixels.size()));
    std::memcpy(owned, pixels.data(), pixels.size());
    CvornDIB dib;
    dib.Create(block.info(), owned, TRUE);
    return dib;
}

/// What GDI must show at a pixel, counted from the upper left corner, read the plain way.
inline COLORREF colourAt(const CvornDIB& dib, int x, int y) {
    const int bits = dib.GetBitsPerPixel();
    const BYTE* row = dib.GetBitsAddress() + (dib.GetHeight() - 1 - y) * dib.GetStorageWidth();
    if (bits <= 8) {
        const int index = row[x * bits / 8] >> (8 - bits - x * bits % 8) & ((1 << bits) - 1);
        const RGBQUAD& entry = dib.GetClrTabAddress()[index];
        return RGB(entry.rgbRed, entry.rgbGreen, entry.rgbBlue);
    }
    const BYTE* pixel = row + x * bits / 8;
    if (bits > 16) return RGB(pixel[2], pixel[1], pixel[0]);
    const auto wide = [&](int shift) { return ((pixel[0] | pixel[1] << 8) >> shift & 31) * 33 >> 2; };
    return RGB(wide(10), wide(5), wide(0));
}

/// The same for all pixels, in reading order.
inline std::vector<COLORREF> coloursOf(const CvornDIB& dib) {
    std::vector<COLORREF> colours;
    for (int i = 0; i < dib.GetWidth() * dib.GetHeight(); ++i)
        colours.push_back(colourAt(dib, i % dib.GetWidth(), i / dib.GetWidth()));
    return colours;
}

/// Noise in memory that ends at a page which must not be touched.
class GuardedBytes {
public:
    explicit GuardedBytes(std::size_t size)
        : m_size(size),
          m_base(static_cast<BYTE*>(::VirtualAlloc(nullptr, 0x20000, MEM_RESERVE, PAGE_NOACCESS))) {
        ::VirtualAlloc(m_base, 0x10000, MEM_COMMIT, PAGE_READWRITE);
        std::memcpy(data(), noise(size, static_cast<unsigned>(size)).data(), size);
    }
    ~GuardedBytes() { ::VirtualFree(m_base, 0, MEM_RELEASE); }
    GuardedBytes(const GuardedBytes&) = delete;
    GuardedBytes& operator=(const GuardedBytes&) = delete;

    BYTE* data() const { return m_base + 0x10000 - m_size; }
    Bytes copy() const { return Bytes(data(), data() + m_size); }

private:
    std::size_t m_size; // at most 64 KB
    BYTE* m_base;
};

} // namespace support
