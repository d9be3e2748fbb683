// SPDX-License-Identifier: MIT
// Copying, stretching and doubling rectangles of one-byte pixels between DIBs.
#include "vorn/bitmaps/dib.h"

#include <array>
#include <cstring>
#include <limits>
#include <new>
#include <vector>

#if defined(__SSE2__) || defined(_M_X64)
#define VORN_SSE2
#include <tmmintrin.h>
#endif

namespace {

constexpr DWORD nothingTransparent = 0xFFFFFFFF;

/// Copies the bytes that are not the key.
void copyOpaque(BYTE* to, const BYTE* from, std::size_t count, BYTE key) {
    std::size_t i = 0;
#ifdef VORN_SSE2
    const __m128i keys = _mm_set1_epi8(static_cast<char>(key));
    for (; i + 16 <= count; i += 16) {
        const __m128i source = _mm_loadu_si128(reinterpret_cast<const __m128i*>(from + i));
        auto* place = reinterpret_cast<__m128i*>(to + i);
        const __m128i kept = _mm_cmpeq_epi8(source, keys);
        _mm_storeu_si128(
            place, _mm_or_si128(_mm_and_si128(kept, _mm_loadu_si128(place)), _mm_andnot_si128(kept, source)));
    }
#endif
    for (; i < count; ++i)
        if (from[i] != key) to[i] = from[i];
}

/// Writes each byte twice.
void doubleRow(BYTE* to, const BYTE* from, std::size_t count) {
    std::size_t i = 0;
#ifdef VORN_SSE2
    for (; i + 16 <= count; i += 16) {
        const __m128i source = _mm_loadu_si128(reinterpret_cast<const __m128i*>(from + i));
        auto* place = reinterpret_cast<__m128i*>(to + 2 * i);
        _mm_storeu_si128(place, _mm_unpacklo_epi8(source, source));
        _mm_storeu_si128(place + 1, _mm_unpackhi_epi8(source, source));
    }
#endif
    for (; i < count; ++i)
        to[2 * i] = to[2 * i + 1] = from[i];
}

#if defined(__GNUC__) && defined(VORN_SSE2)
#define VORN_SHUFFLE

/// Which of 16 bytes each of 16 bytes shows.
using Shuffle = std::array<BYTE, 16>;

bool canShuffle() {
    __builtin_cpu_init();
    return __builtin_cpu_supports("ssse3");
}

/// Writes 16 bytes for each shuffle, of those that begin at its column.
[[gnu::target("ssse3")]] void shuffleRow(BYTE* to, const BYTE* from, const std::vector<Shuffle>& shuffles,
                                         const int* column) {
    for (const Shuffle& shuffle : shuffles) {
        const __m128i source = _mm_loadu_si128(reinterpret_cast<const __m128i*>(from + *column));
        const __m128i order = _mm_loadu_si128(reinterpret_cast<const __m128i*>(shuffle.data()));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(to), _mm_shuffle_epi8(source, order));
        to += shuffle.size();
        column += shuffle.size();
    }
}
#endif

/// Which of `from` source columns each of `to` destination columns shows: (j * from) / to.
class ColumnMap {
public:
    ColumnMap(int from, int to) : m_columns(static_cast<std::size_t>(to)) {
        for (std::int64_t j = 0; j < to; ++j)
            m_columns[static_cast<std::size_t>(j)] = static_cast<int>(j * from / to);
#ifdef VORN_SHUFFLE
        // Enlarged, 16 columns come from 16 at most; a block must not read beyond the last one.
        if (to < from || !canShuffle()) return;
        for (std::size_t j = 0; j + 16 <= m_columns.size() && m_columns[j] + 16 <= from; j += 16) {
            Shuffle& shuffle = m_shuffles.emplace_back();
            for (std::size_t i = 0; i < shuffle.size(); ++i)
                shuffle[i] = static_cast<BYTE>(m_columns[j + i] - m_columns[j]);
        }
#endif
    }

    std::size_t count() const {
        return m_columns.size();
    }

    /// Writes what the destination columns show one after the other.
    void gather(BYTE* to, const BYTE* from) const {
        const int* column = m_columns.data();
        const int* const end = column + m_columns.size();
#ifdef VORN_SHUFFLE
        shuffleRow(to, from, m_shuffles, column);
        column += 16 * m_shuffles.size();
        to += 16 * m_shuffles.size();
#endif
        // Bytes may alias anything: four loads ahead of their stores save a quarter of the time.
        for (; end - column >= 4; column += 4, to += 4) {
            const BYTE pixels[4] = {from[column[0]], from[column[1]], from[column[2]], from[column[3]]};
            std::memcpy(to, pixels, sizeof(pixels));
        }
        for (; column != end; ++column)
            *to++ = from[*column];
    }

private:
    std::vector<int> m_columns;
#ifdef VORN_SHUFFLE
    std::vector<Shuffle> m_shuffles;
#endif
};

/// Address of a pixel whose place may lie beyond the interface's 32 bits.
BYTE* addressOf(const CvornDIB& dib, int x, std::int64_t y) {
    if (y > std::numeric_limits<int>::max()) return nullptr;
    return dib.GetPixelAddress(x, static_cast<int>(y));
}

} // namespace

/// Whether rows of pixels, from an address on and upwards in memory, lie inside the buffer.
bool CvornDIB::HoldsRows(const BYTE* pFirst, std::int64_t nRows, std::int64_t nStride,
                         std::int64_t nRowBytes) const {
    if (pFirst == nullptr || nStride < 0) return false;
    const std::int64_t begin =
        reinterpret_cast<std::intptr_t>(pFirst) - reinterpret_cast<std::intptr_t>(m_pBits);
    return begin >= 0 && begin + (nRows - 1) * nStride + nRowBytes <= static_cast<std::int64_t>(m_nBitsHeld);
}

void CvornDIB::CopyBits(CvornDIB* pDest, int xDest, int yDest, int w, int h, int xSrc, int ySrc,
                        DWORD clrTrans) {
    if (pDest == nullptr || w <= 0 || h <= 0) return;
    const BYTE* from = addressOf(*this, xSrc, std::int64_t{ySrc} + h - 1);
    BYTE* to = addressOf(*pDest, xDest, std::int64_t{yDest} + h - 1);
    const std::ptrdiff_t fromStride = GetStorageWidth(), toStride = pDest->GetStorageWidth();
    if (!HoldsRows(from, h, fromStride, w) || !pDest->HoldsRows(to, h, toStride, w)) return;

    const auto count = static_cast<std::size_t>(w);
    for (int row = 0; row < h; ++row, from += fromStride, to += toStride) {
        if (clrTrans == nothingTransparent)
            std::memmove(to, from, count); // source and destination may be one image
        else
            copyOpaque(to, from, count, static_cast<BYTE>(clrTrans));
    }
}

void CvornDIB::StretchBits(CvornDIB* pDest, int xDest, int yDest, int wDest, int hDest, int xSrc, int ySrc,
                           int wSrc, int hSrc, DWORD clrTrans) {
    if (pDest == nullptr || wDest <= 0 || hDest <= 0 || wSrc <= 0 || hSrc <= 0) return;
    if (wDest == std::int64_t{2} * wSrc && hDest == std::int64_t{2} * hSrc)
        return DoubleBits(pDest, xDest, yDest, xSrc, ySrc, wSrc, hSrc, clrTrans);

    const auto sourceRow = [=](int row) { return std::int64_t{row} * hSrc / hDest; };
    const std::int64_t lowest = sourceRow(hDest - 1);
    const std::int64_t lastColumn = (std::int64_t{wDest} - 1) * wSrc / wDest;
    const BYTE* from = addressOf(*this, xSrc, ySrc + lowest);
    BYTE* to = addressOf(*pDest, xDest, std::int64_t{yDest} + hDest - 1);
    const std::ptrdiff_t fromStride = GetStorageWidth(), toStride = pDest->GetStorageWidth();
    if (!HoldsRows(from, lowest + 1, fromStride, lastColumn + 1) ||
        !pDest->HoldsRows(to, hDest, toStride, wDest))
        return;

    try {
        const ColumnMap columns(wSrc, wDest);
        std::vector<BYTE> stretched(columns.count());
        std::int64_t shown = -1;
        for (int row = hDest - 1; row >= 0; --row, to += toStride) {
            if (sourceRow(row) != shown) {
                shown = sourceRow(row);
                columns.gather(stretched.data(), from + (lowest - shown) * fromStride);
            }
            if (clrTrans == nothingTransparent)
                std::memcpy(to, stretched.data(), stretched.size());
            else
                copyOpaque(to, stretched.data(), stretched.size(), static_cast<BYTE>(clrTrans));
        }
    } catch (const std::bad_alloc&) {
        // Without memory nothing is drawn.
    }
}

void CvornDIB::DoubleBits(CvornDIB* pDest, int xDest, int yDest, int xSrc, int ySrc, int w, int h,
                          DWORD clrTrans) {
    if (pDest == nullptr || w <= 0 || h <= 0) return;
    const BYTE* from = addressOf(*this, xSrc, std::int64_t{ySrc} + h - 1);
    BYTE* to = addressOf(*pDest, xDest, yDest + std::int64_t{2} * h - 1);
    const std::ptrdiff_t fromStride = GetStorageWidth(), toStride = pDest->GetStorageWidth();
    if (!HoldsRows(from, h, fromStride, w) ||
        !pDest->HoldsRows(to, std::int64_t{2} * h, toStride, std::int64_t{2} * w))
        return;

    try {
        std::vector<BYTE> doubled(2 * static_cast<std::size_t>(w));
        for (int row = 0; row < h; ++row, from += fromStride) {
            doubleRow(doubled.data(), from, static_cast<std::size_t>(w));
            for (int twice = 0; twice < 2; ++twice, to += toStride) {
                if (clrTrans == nothingTransparent)
                    std::memcpy(to, doubled.data(), doubled.size());
                else
                    copyOpaque(to, doubled.data(), doubled.size(), static_cast<BYTE>(clrTrans));
            }
        }
    } catch (const std::bad_alloc&) {
        // Without memory nothing is drawn.
    }
}
