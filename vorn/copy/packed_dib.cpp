// SPDX-License-Identifier: MIT
#include "vorn/copy/copy_render.h"
#include "vorn/detail/handles.h"

#include <cstdint>

namespace {

using vorn::detail::UniqueGlobal;

/// A global block held at an address for the length of a scope.
class LockedGlobal {
public:
    explicit LockedGlobal(HGLOBAL block) : m_block(block), m_address(::GlobalLock(block)) {}
    ~LockedGlobal() {
        if (m_address != nullptr) ::GlobalUnlock(m_block);
    }
    LockedGlobal(const LockedGlobal&) = delete;
    LockedGlobal& operator=(const LockedGlobal&) = delete;

    BITMAPINFO* info() const { return static_cast<BITMAPINFO*>(m_address); }

private:
    HGLOBAL m_block;
    void* m_address;
};

constexpr unsigned tableEntries(unsigned bitCount) {
    return bitCount == 1 || bitCount == 4 || bitCount == 8 ? 1U << bitCount : 0;
}

// The colour table in bytes; GDI answers with a Windows header, so an entry has four.
constexpr uint64_t tableSize(const BITMAPINFOHEADER& header) {
    const uint64_t entries = header.biClrUsed != 0 ? header.biClrUsed : tableEntries(header.biBitCount);
    return entries * sizeof(RGBQUAD);
}

BITMAPINFOHEADER headerOf(const BITMAP& bitmap, DWORD compression, WORD bitCount) {
    BITMAPINFOHEADER header{};
    header.biSize = sizeof header;
    header.biWidth = bitmap.bmWidth;
    header.biHeight = bitmap.bmHeight;
    header.biPlanes = 1;
    header.biBitCount = bitCount;
    header.biCompression = compression;
    return header;
}

} // namespace

HGLOBAL CvornCopyRender::dibFromBitmap(HBITMAP hBitmap, DWORD dwCompression, WORD wBitCount, HPALETTE hPal) {
    BITMAP bitmap{};
    if (hBitmap == nullptr || ::GetObjectA(hBitmap, sizeof bitmap, &bitmap) == 0) return nullptr;
    if (hPal == nullptr) hPal = static_cast<HPALETTE>(::GetStockObject(DEFAULT_PALETTE));
    if (wBitCount == 0) wBitCount = static_cast<WORD>(bitmap.bmPlanes * bitmap.bmBitsPixel);
    BITMAPINFOHEADER header = headerOf(bitmap, dwCompression, wBitCount);

    // GDI reads a bitmap only while no DC holds it.
    const bool selected = m_hOldBitmap != nullptr && m_dc.m_hDC != nullptr;
    const vorn::detail::SelectedObject released(selected ? m_dc.m_hDC : nullptr, m_hOldBitmap);
    const vorn::detail::WindowDC screen;
    const vorn::detail::SelectedPalette palette(screen.get(), hPal);
    UniqueGlobal dib(::GlobalAlloc(GHND, sizeof header + tableEntries(wBitCount) * sizeof(RGBQUAD)));
    if (!dib || !screen) return nullptr;
    {
        const LockedGlobal locked(dib.get());
        if (locked.info() == nullptr) return nullptr;
        locked.info()->bmiHeader = header;
        ::GetDIBits(screen.get(), hBitmap, 0, bitmap.bmHeight, nullptr, locked.info(), DIB_RGB_COLORS);
        header = locked.info()->bmiHeader;
    }
    if (header.biSizeImage == 0) {
        const uint64_t stride = (uint64_t{wBitCount} * bitmap.bmWidth + 31) / 32 * 4;
        uint64_t image = stride * bitmap.bmHeight;
        if (dwCompression != BI_RGB) image = image * 3 / 2;
        header.biSizeImage = static_cast<DWORD>(image);
    }
    const uint64_t size = header.biSize + tableSize(header) + header.biSizeImage;
    const HGLOBAL grown = ::GlobalReAlloc(dib.get(), size, GMEM_MOVEABLE);
    if (grown == nullptr) return nullptr;
    dib.release();
    dib.reset(grown);

    const LockedGlobal locked(dib.get());
    if (locked.info() == nullptr) return nullptr;
    BYTE* bits = reinterpret_cast<BYTE*>(locked.info()) + header.biSize + tableSize(header);
    if (::GetDIBits(screen.get(), hBitmap, 0, bitmap.bmHeight, bits, locked.info(), DIB_RGB_COLORS) == 0)
        return nullptr;
    return dib.release();
}
