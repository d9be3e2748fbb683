// SPDX-License-Identifier: MIT
#pragma once

#include "vorn/bitmaps/dib.h"

#include <cstring>
#include <random>
#include <vector>

namespace support {

using Bytes = std::vector<BYTE>;

/// The header block of a DIB, as it lies in memory and in a file.
struct HeaderBlock {
    BITMAPINFOHEADER header = {sizeof(BITMAPINFOHEADER), 0, 0, 1, 8, BI_RGB, 0, 0, 0, 0, 0};
    RGBQUAD colours[256] = {};
    BITMAPINFO* info() { return reinterpret_cast<BITMAPINFO*>(this); }
};

inline Bytes noise(std::size_t count, unsigned seed = 1) {
    std::minstd_rand random(seed);
    Bytes bytes(count);
    for (BYTE& byte : bytes)
        byte = static_cast<BYTE>(random() >> 8);
    return bytes;
}

/// A header with colours, none like another for up to 8 bits.
inline HeaderBlock headerOf(int width, int height, int bits) {
    HeaderBlock block;
    block.header.biWidth = width;
    block.header.biHeight = height;
    block.header.biBitCount = static_cast<WORD>(bits);
    for (int i = 0; i < 256; ++i)
        block.colours[i] = {static_cast<BYTE>(i * 7 + 30), static_cast<BYTE>(255 - i), static_cast<BYTE>(i),
                            0};
    return block;
}

/// An entry of the colour table as 0x00RRGGBB, with the reserved byte on top.
inline DWORD entryOf(const CvornDIB& dib, int index) {
    DWORD entry;
    std::memcpy(&entry, dib.GetClrTabAddress() + index, sizeof(entry));
    return entry;
}

inline int strideOf(int width, int bits) {
    return (width * bits + 31) / 32 * 4;
}

/// What GDI must show at a pixel, counted from the upper left corner, read the plain way.
inline COLORREF colourAt(const CvornDIB& dib, int x, int y) {
    const int bits = dib.GetBitsPerPixel();
    const BYTE* row = dib.GetBitsAddress() + (dib.GetHeight() - 1 - y) * strideOf(dib.GetWidth(), bits);
    if (bits <= 8) {
        const RGBQUAD& entry =
            dib.GetClrTabAddress()[row[x * bits / 8] >> (8 - bits - x * bits % 8) & ((1 << bits) - 1)];
        return RGB(entry.rgbRed, entry.rgbGreen, entry.rgbBlue);
    }
    if (bits == 16) {
        WORD pixel;
        std::memcpy(&pixel, row + x * 2, 2);
        const auto wide = [](int five) { return five << 3 | five >> 2; };
        return RGB(wide(pixel >> 10 & 31), wide(pixel >> 5 & 31), wide(pixel & 31));
    }
    const BYTE* pixel = row + x * bits / 8;
    return RGB(pixel[2], pixel[1], pixel[0]);
}

/// Memory that ends at a page which must not be touched, filled with noise.
class GuardedBytes {
public:
    explicit GuardedBytes(std::size_t size) : m_size(size) {
        const std::size_t room = (size + 0xFFF) & ~std::size_t{0xFFF};
        m_base = static_cast<BYTE*>(::VirtualAlloc(nullptr, room + 0x1000, MEM_RESERVE, PAGE_NOACCESS));
        ::VirtualAlloc(m_base, room, MEM_COMMIT, PAGE_READWRITE);
        m_bytes = m_base + room - size;
        const Bytes content = noise(size, static_cast<unsigned>(size));
        std::memcpy(m_bytes, content.data(), size);
    }
    ~GuardedBytes() { ::VirtualFree(m_base, 0, MEM_RELEASE); }
    GuardedBytes(const GuardedBytes&) = delete;
    GuardedBytes& operator=(const GuardedBytes&) = delete;

    BYTE* data() { return m_bytes; }
    Bytes copy() const { return Bytes(m_bytes, m_bytes + m_size); }

private:
    BYTE* m_base;
    BYTE* m_bytes;
    std::size_t m_size;
};

} // namespace support
