// SPDX-License-Identifier: MIT
#pragma once

#include "vorn/api.h"

#include <cstdint>
#include <memory>
#include <vector>
#include <windows.h>

/// Reads image files, draws them smoothly and writes BMP, JPEG and PNG, all with the system's own imaging
/// component, and stands for an image library in this toolkit. A thread's choice of a COM apartment is
/// respected; one that has made none is left without. Copies share the pixels, which never change.
///
///     CvornImageCodec image;
///     if (image.Load("chart.gif")) image.Save("chart.png", CvornImageCodec::FORMAT_PNG);
class VORN_API CvornImageCodec {
public:
    /// What images are written as.
    enum Format { FORMAT_BMP = 1, FORMAT_JPEG = 3, FORMAT_PNG = 4 };

    /// Loads a file of any format that the system can read and finds out which; of an icon it takes the
    /// largest picture, of other files the first. Returns 0, with nothing changed, for a file that is
    /// missing, broken or larger than 2^28 pixels.
    BOOL Load(const char* pszFile);
    /// The same for the bytes of a file in memory.
    BOOL Load(const BYTE* pBytes, size_t nSize);
    /// Takes a copy of a GDI bitmap, as an opaque picture. Returns 0, with nothing changed, on failure.
    BOOL CreateFromHBITMAP(HBITMAP hBitmap);

    /// Size in pixels; 0 of an empty image.
    int GetWidth() const { return m_cx; }
    int GetHeight() const { return m_cy; }

    /// Draws the image into a rectangle of logical units, smoothed when it is scaled. Transparent pixels show
    /// what the DC held before. Returns 0 for an empty image or rectangle, or when GDI fails.
    BOOL Draw(HDC hdc, int x, int y, int cx, int cy) const;

    /// Writes the image to a file with the format's default options. JPEG and BMP hold no transparency: there
    /// it becomes white. On failure returns 0 and leaves the file, or its absence, as it was.
    BOOL Save(const char* pszFile, int nFormat) const;
    /// The same into a buffer of `nSize` bytes, which the caller gives back with `free`. Null on failure.
    BYTE* Encode(int nFormat, DWORD& nSize) const;

    /// Writes pixels that lie as in a DIB: `nBitCount` 24 (blue, green, red) or 32 (a fourth byte is
    /// ignored), rows padded to four bytes, bottom row first, or top row first when `cy` is negative. No copy
    /// is made.
    static BOOL SaveBits(const char* pszFile, int nFormat, const void* pBits, int cx, int cy, int nBitCount);
    /// The same for a GDI bitmap, which no DC may hold; it counts as opaque.
    static BOOL SaveBitmap(const char* pszFile, int nFormat, HBITMAP hBitmap);
    /// Pixels as in a DIB into a buffer of the C heap, as `Encode`.
    static BYTE* EncodeBits(int nFormat, DWORD& nSize, const void* pBits, int cx, int cy, int nBitCount);

private:
    int m_cx = 0;
    int m_cy = 0;
    bool m_bAlpha = false;
    /// Blue, green, red, alpha (not premultiplied), top row first.
    std::shared_ptr<const std::vector<uint32_t>> m_pixels;
};
