// SPDX-License-Identifier: MIT
#include "vorn/bitmaps/dib.h"

#include "vorn/bitmaps/detail/dib_blocks.h"
#include "vorn/detail/handles.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <new>

using namespace vorn::detail;

IMPLEMENT_SERIAL(CvornDIB, CObject, 0)

CvornDIB::CvornDIB() {
    Create(16, 16);
}

// The framework's objects cannot be copied, so the base begins anew.
CvornDIB::CvornDIB(const CvornDIB& other) : CObject() {
    *this = other;
}

CvornDIB& CvornDIB::operator=(const CvornDIB& other) {
    m_pBMI = other.m_pBMI;
    m_pBits = other.m_pBits;
    m_nBitsSize = other.m_nBitsSize;
    m_bMyBits = other.m_bMyBits;
    m_pHeaderOwner = other.m_pHeaderOwner;
    m_pBitsOwner = other.m_pBitsOwner;
    m_nBitsHeld = other.m_nBitsHeld;
    return *this;
}

CvornDIB::~CvornDIB() = default;

// ---- blocks

void CvornDIB::SetHeader(std::shared_ptr<BITMAPINFO> pHeader) {
    m_pBMI = pHeader.get();
    m_pHeaderOwner = std::move(pHeader);
}

void CvornDIB::SetBits(std::shared_ptr<BYTE> pBits, std::size_t nBytes) {
    m_pBits = pBits.get();
    m_nBitsHeld = nBytes;
    m_bMyBits = TRUE;
    m_pBitsOwner = std::move(pBits);
}

void CvornDIB::FreeBlocks() {
    SetHeader(nullptr);
    SetBits(nullptr, 0);
}

bool CvornDIB::HoldsHeaderBits() const {
    if (m_pBMI == nullptr || m_pBits == nullptr) return false;
    const auto needed = dibBytesNeeded(m_pBMI->bmiHeader);
    return needed && *needed <= m_nBitsHeld;
}

// ---- creators

BOOL CvornDIB::Create(int w, int h, HPALETTE hPal) {
    FreeBlocks();
    m_nBitsSize = 0;
    const std::int64_t bytes = ((std::int64_t{w} + 3) & ~std::int64_t{3}) * h;
    if (w < 0 || h < 0 || bytes > std::numeric_limits<std::int32_t>::max()) return FALSE;
    auto header = newDibHeader();
    auto bits = newDibBits(static_cast<std::size_t>(bytes));
    if (!header || !bits) return FALSE;

    header->bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
    header->bmiHeader.biWidth = w;
    header->bmiHeader.biHeight = h;
    header->bmiHeader.biPlanes = 1;
    header->bmiHeader.biBitCount = 8;
    for (UINT i = 0; i < maxDibColours; ++i) {
        const BYTE grey = static_cast<BYTE>(i);
        dibColourTable(header.get())[i] = {grey, grey, grey, 0};
    }
    SetHeader(std::move(header));
    SetBits(std::move(bits), static_cast<std::size_t>(bytes));
    m_nBitsSize = static_cast<DWORD>(bytes);

    if (hPal == nullptr) return TRUE;
    const auto colours = paletteColours(hPal);
    if (!colours) return FALSE;
    std::transform(colours->entries.begin(), colours->entries.begin() + colours->count, GetClrTabAddress(),
                   dibColour);
    m_pBMI->bmiHeader.biClrUsed = colours->count;
    return TRUE;
}

BOOL CvornDIB::Create(BITMAPINFO* pBMI, BYTE* pBits, int bOwn) {
    if (pBMI == nullptr) return FALSE;
    auto header = newDibHeader();
    if (!header) return FALSE;
    const DWORD count = std::min<DWORD>(dibColours(*pBMI), maxDibColours);
    if (IsWinDIB(&pBMI->bmiHeader)) {
        const DWORD entries = dibEntriesBehind(pBMI->bmiHeader, count);
        std::memcpy(header.get(), pBMI, sizeof(BITMAPINFOHEADER) + entries * sizeof(RGBQUAD));
        // GDI reads the block as the header says: a longer header's tail is colours here, and further entries
        // than these do not exist.
        header->bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
        if (dibColours(*header) > count) header->bmiHeader.biClrUsed = count;
    } else {
        header->bmiHeader = widenCoreHeader(coreHeaderOf(*pBMI));
        const auto* colours =
            reinterpret_cast<const RGBTRIPLE*>(reinterpret_cast<BYTE*>(pBMI) + sizeof(BITMAPCOREHEADER));
        widenCoreColours(colours, dibColourTable(header.get()), count);
    }

    const std::size_t held = dibBytesNeeded(header->bmiHeader).value_or(0);
    // Bits that are this image's own already stay with whoever shares them.
    if (pBits == nullptr || pBits != m_pBitsOwner.get()) {
        std::shared_ptr<BYTE> owner;
        if (bOwn) {
            MallocPtr<BYTE> adopted(pBits);
            try {
                owner = std::move(adopted);
            } catch (const std::bad_alloc&) {
                adopted.release(); // still the caller's
                return FALSE;
            }
        }
        m_pBitsOwner = std::move(owner);
    }
    SetHeader(std::move(header));
    m_pBits = pBits;
    m_nBitsHeld = held;
    m_bMyBits = bOwn;
    return TRUE;
}

BOOL CvornDIB::Create(BITMAPINFO* pPackedDIB) {
    if (pPackedDIB == nullptr) return FALSE;
    const bool isWin = IsWinDIB(&pPackedDIB->bmiHeader);
    const std::size_t header = isWin ? sizeof(BITMAPINFOHEADER) : sizeof(BITMAPCOREHEADER);
    const std::size_t entry = isWin ? sizeof(RGBQUAD) : sizeof(RGBTRIPLE);
    BYTE* bits = reinterpret_cast<BYTE*>(pPackedDIB) + header + entry * dibColours(*pPackedDIB);
    return Create(pPackedDIB, bits, FALSE);
}

BOOL CvornDIB::Create(CBitmap& bmp) {
    const HBITMAP bitmap = static_cast<HBITMAP>(bmp.GetSafeHandle());
    if (bitmap == nullptr) return FALSE;
    FreeBlocks();
    m_nBitsSize = 0;
    m_bMyBits = FALSE;
    BITMAP record = {};
    if (::GetObject(bitmap, sizeof(record), &record) == 0) return FALSE;
    auto header = newDibHeader();
    if (!header) return FALSE;
    BITMAPINFOHEADER& fields = header->bmiHeader;
    fields.biSize = sizeof(fields);
    fields.biWidth = record.bmWidth;
    fields.biHeight = record.bmHeight;
    fields.biPlanes = 1;
    fields.biBitCount = static_cast<WORD>(record.bmPlanes * record.bmBitsPixel);

    const WindowDC screen;
    const SelectedPalette palette(screen.get(), static_cast<HPALETTE>(::GetStockObject(DEFAULT_PALETTE)));
    const UINT rows = static_cast<UINT>(record.bmHeight);
    ::GetDIBits(screen.get(), bitmap, 0, rows, nullptr, header.get(), DIB_RGB_COLORS);
    fields.biCompression = BI_RGB; // there is no room for masks in front of the pixels

    const auto needed = dibBytesNeeded(fields);
    if (!needed) return FALSE;
    const DWORD size = fields.biSizeImage != 0 ? fields.biSizeImage : static_cast<DWORD>(*needed);
    const std::size_t room = std::max<std::size_t>(size, *needed);
    auto bits = newDibBits(room);
    if (!bits || ::GetDIBits(screen.get(), bitmap, 0, rows, bits.get(), header.get(), DIB_RGB_COLORS) == 0)
        return FALSE;
    SetHeader(std::move(header));
    SetBits(std::move(bits), room);
    m_nBitsSize = size;
    return TRUE;
}

BOOL CvornDIB::SetColorTable(CPalette* pPal) {
    if (pPal == nullptr || m_pBMI == nullptr) return FALSE;
    const auto colours = paletteColours(*pPal);
    if (!colours) return FALSE;
    for (UINT i = 0; i < colours->count; ++i) {
        RGBQUAD& entry = GetClrTabAddress()[i];
        const BYTE reserved = entry.rgbReserved;
        entry = dibColour(colours->entries[i]);
        entry.rgbReserved = reserved;
    }
    m_pBMI->bmiHeader.biClrUsed = colours->count;
    return TRUE;
}

// ---- access

int CvornDIB::GetWidth() const {
    return m_pBMI == nullptr ? 0 : m_pBMI->bmiHeader.biWidth;
}

int CvornDIB::GetStorageWidth() const {
    if (m_pBMI == nullptr) return 0;
    // Signed 32-bit arithmetic that wraps around.
    const auto bits = static_cast<int>(
        m_pBMI->bmiHeader.biBitCount * static_cast<unsigned>(m_pBMI->bmiHeader.biWidth) + 31u);
    return (bits >> 5) * 4;
}

int CvornDIB::GetHeight() const {
    return m_pBMI == nullptr ? 0 : m_pBMI->bmiHeader.biHeight;
}

int CvornDIB::GetBitsPerPixel() const {
    return m_pBMI == nullptr ? 0 : m_pBMI->bmiHeader.biBitCount;
}

CSize CvornDIB::GetSize() const {
    return m_pBMI == nullptr ? CSize(0, 0) : CSize(m_pBMI->bmiHeader.biWidth, m_pBMI->bmiHeader.biHeight);
}

void CvornDIB::GetRect(RECT* pRect) const {
    if (pRect != nullptr && m_pBMI != nullptr)
        *pRect = {0, 0, m_pBMI->bmiHeader.biWidth, m_pBMI->bmiHeader.biHeight};
    else if (pRect != nullptr)
        *pRect = {};
}

RGBQUAD* CvornDIB::GetClrTabAddress() const {
    return m_pBMI == nullptr ? nullptr : dibColourTable(m_pBMI);
}

int CvornDIB::GetNumClrEntries() const {
    return NumDIBColorEntries(m_pBMI);
}

BYTE* CvornDIB::GetPixelAddress(int x, int y) const {
    if (m_pBMI == nullptr || m_pBits == nullptr) return nullptr;
    const BITMAPINFOHEADER& header = m_pBMI->bmiHeader;
    if (x >= header.biWidth || y >= header.biHeight) return nullptr;
    std::int64_t offset = (std::int64_t{header.biHeight} - y - 1) * GetStorageWidth();
    switch (header.biBitCount) {
    case 1:
        offset += (std::int64_t{x} + 7) / 8;
        break;
    case 4:
        offset += (std::int64_t{x} + 3) / 4;
        break;
    case 8:
        offset += x;
        break;
    case 16:
        offset += std::int64_t{x} * 2;
        break;
    case 24:
        offset += std::int64_t{x} * 3;
        break;
    default:
        return nullptr;
    }
    return reinterpret_cast<BYTE*>(reinterpret_cast<std::intptr_t>(m_pBits) + offset);
}

void CvornDIB::Draw(HDC hdc, int x, int y) {
    if (!HoldsHeaderBits()) return;
    const int w = GetWidth(), h = GetHeight();
    ::StretchDIBits(hdc, x, y, w, h, 0, 0, w, h, m_pBits, m_pBMI, DIB_RGB_COLORS, SRCCOPY);
}

void CvornDIB::Draw(CDC* pDC, int x, int y) {
    Draw(pDC == nullptr ? nullptr : pDC->m_hDC, x, y);
}

// ---- header blocks

BOOL CvornDIB::IsWinDIB(BITMAPINFOHEADER* pBIH) {
    return pBIH == nullptr || pBIH->biSize != sizeof(BITMAPCOREHEADER);
}

int CvornDIB::NumDIBColorEntries(BITMAPINFO* pBMI) {
    return pBMI == nullptr ? 0 : static_cast<int>(std::min<DWORD>(dibColours(*pBMI), INT_MAX));
}

WORD CvornDIB::dibNumColors(void* pHeader) const {
    return pHeader == nullptr ? 0 : static_cast<WORD>(dibColoursUsed(*static_cast<BITMAPINFO*>(pHeader)));
}

WORD CvornDIB::paletteSize(void* pHeader) const {
    if (pHeader == nullptr) return 0;
    auto* info = static_cast<BITMAPINFO*>(pHeader);
    const std::size_t entry = IsWinDIB(&info->bmiHeader) ? sizeof(RGBQUAD) : sizeof(RGBTRIPLE);
    return static_cast<WORD>(dibColoursUsed(*info) * entry);
}
