// SPDX-License-Identifier: MIT
#include "vorn/bitmaps/dib_surface.h"

#include "vorn/bitmaps/detail/dib_blocks.h"
#include "vorn/bitmaps/dib_palette.h"
#include "vorn/detail/handles.h"

#include <algorithm>
#include <array>

namespace {

using namespace vorn::detail;

/// Writes the palette's entries as colours and returns how many; none of a null palette.
UINT putColours(HPALETTE palette, RGBQUAD* table) {
    auto colours = palette != nullptr ? paletteColours(palette) : std::nullopt;
    if (!colours) return 0;
    std::transform(colours->entries.begin(), colours->entries.begin() + colours->count, table, dibColour);
    return colours->count;
}

HDC handleOf(CDC* dc) {
    return dc == nullptr ? nullptr : dc->m_hDC;
}

template <typename Function>
void resolve(HMODULE library, const char* name, Function& function) {
    function = reinterpret_cast<Function>(reinterpret_cast<void*>(::GetProcAddress(library, name)));
}

/// For trying the old way on a system that has the new one.
constexpr bool forceWinG = false;

} // namespace

IMPLEMENT_SERIAL(CvornDIBSurface, CvornDIB, 1)

BOOL CvornDIBSurface::m_bUseWinG = FALSE;
HDC(WINAPI* CvornDIBSurface::m_pWinGCDCProc)() = nullptr;
HBITMAP(WINAPI* CvornDIBSurface::m_pWinGCBProc)(HDC, const BITMAPINFO*, void**) = nullptr;
UINT(WINAPI* CvornDIBSurface::m_pWinGSDCTProc)(HDC, UINT, UINT, const RGBQUAD*) = nullptr;
BOOL(WINAPI* CvornDIBSurface::m_pWinGBBProc)(HDC, int, int, int, int, HDC, int, int) = nullptr;
BOOL(WINAPI* CvornDIBSurface::m_pWinGSBProc)(HDC, int, int, int, int, HDC, int, int, int, int) = nullptr;
BOOL CvornDIBSurface::m_bUseCreateDIBSection = CvornDIBSurface::TestPlatform();

BOOL CvornDIBSurface::TestPlatform() {
    m_bUseCreateDIBSection = FALSE;
    m_bUseWinG = FALSE;
    m_pWinGCDCProc = nullptr;
    m_pWinGCBProc = nullptr;
    m_pWinGSDCTProc = nullptr;
    m_pWinGBBProc = nullptr;
    m_pWinGSBProc = nullptr;
    // Only the 32-bit layer on top of version 3 systems lacks DIB sections.
    constexpr DWORD layerOnVersion3 = 0x80000003;
    if (!forceWinG && (::GetVersion() & 0x800000FF) != layerOnVersion3) {
        m_bUseCreateDIBSection = TRUE;
        return TRUE;
    }
    if (HMODULE library = ::LoadLibraryA("WING32")) {
        resolve(library, "WinGCreateDC", m_pWinGCDCProc);
        resolve(library, "WinGCreateBitmap", m_pWinGCBProc);
        resolve(library, "WinGSetDIBColorTable", m_pWinGSDCTProc);
        resolve(library, "WinGBitBlt", m_pWinGBBProc);
        resolve(library, "WinGStretchBlt", m_pWinGSBProc);
        m_bUseWinG = m_pWinGCDCProc != nullptr && m_pWinGCBProc != nullptr && m_pWinGSDCTProc != nullptr &&
                     m_pWinGBBProc != nullptr && m_pWinGSBProc != nullptr;
    }
    if (!m_bUseWinG) {
        AfxMessageBox(
            "This application runs on Windows NT Version 3.5 or later, Windows 95 or Windows 3.1 systems "
            "which have the  Win32s and WinG libraries installed.",
            MB_OK);
        AfxAbort();
    }
    return m_bUseCreateDIBSection;
}

CvornDIBSurface::CvornDIBSurface() {
    if (m_bUseCreateDIBSection) m_dcBuffer.Attach(::CreateCompatibleDC(nullptr));
    if (m_bUseWinG) m_dcBuffer.Attach(m_pWinGCDCProc());
}

CvornDIBSurface::~CvornDIBSurface() {
    ReleaseBitmap();
}

void CvornDIBSurface::ReleaseBitmap() {
    if (m_hOldBitmap != nullptr) ::SelectObject(m_dcBuffer.m_hDC, m_hOldBitmap);
    if (m_hBitmap != nullptr) ::DeleteObject(m_hBitmap);
    m_hOldBitmap = nullptr;
    m_hBitmap = nullptr;
}

BOOL CvornDIBSurface::Create(int cx, int cy, HPALETTE hPal) {
    if ((!m_bUseCreateDIBSection && !m_bUseWinG) || cx <= 0 || cy <= 0) return FALSE;
    std::shared_ptr<BITMAPINFO> block = newDibHeader();
    if (!block) return FALSE;
    BITMAPINFOHEADER& header = block->bmiHeader;
    header.biSize = sizeof header;
    header.biWidth = cx;
    header.biHeight = cy;
    header.biPlanes = 1;
    header.biBitCount = 24;
    header.biCompression = BI_RGB;
    header.biClrUsed = putColours(hPal, dibColourTable(block.get()));
    return m_bUseCreateDIBSection ? CreateSection(block.get(), hPal) : CreateWinG(block.get(), hPal);
}

BOOL CvornDIBSurface::CreateSection(BITMAPINFO* pBMI, HPALETTE hPal) {
    void* pixels = nullptr;
    UniqueBitmap section;
    {
        UniqueMemoryDC memory(::CreateCompatibleDC(nullptr));
        SelectedPalette palette(memory.get(), hPal);
        section.reset(::CreateDIBSection(memory.get(), pBMI, DIB_RGB_COLORS, &pixels, nullptr, 0));
    }
    // Only now that the new bitmap exists is the old one given up.
    return section && Adopt(section.release(), pBMI, pixels, hPal);
}

BOOL CvornDIBSurface::CreateWinG(BITMAPINFO* pBMI, HPALETTE hPal) {
    void* pixels = nullptr;
    HBITMAP bitmap = m_pWinGCBProc(m_dcBuffer.m_hDC, pBMI, &pixels);
    const BITMAPINFOHEADER& header = pBMI->bmiHeader;
    if (bitmap == nullptr) {
        CString text;
        text.Format(
            "WinG failed to create a %d x %d %d bpp %d color bitmap.\nThe application will terminate.",
            static_cast<int>(header.biWidth), static_cast<int>(header.biHeight),
            static_cast<int>(header.biBitCount), static_cast<int>(header.biClrUsed));
        AfxMessageBox(text, MB_OK);
        AfxAbort();
    }
    if (!Adopt(bitmap, pBMI, pixels, hPal)) return FALSE;
    if (hPal != nullptr) MapColorsToPalette(hPal);
    m_pWinGSDCTProc(m_dcBuffer.m_hDC, 0, header.biClrUsed, pBMI->bmiColors);
    return TRUE;
}

BOOL CvornDIBSurface::Adopt(HBITMAP bitmap, BITMAPINFO* pBMI, void* pPixels, HPALETTE hPal) {
    ReleaseBitmap();
    m_hPal = hPal;
    m_hBitmap = bitmap;
    m_hOldBitmap = static_cast<HBITMAP>(::SelectObject(m_dcBuffer.m_hDC, m_hBitmap));
    return CvornDIB::Create(pBMI, static_cast<BYTE*>(pPixels), FALSE);
}

BOOL CvornDIBSurface::Load(const char* pszFileName) {
    CvornDIB file;
    CvornDIBPal palette;
    if (!file.Load(pszFileName)) return FALSE;
    // A file of true colours has no table: the surface then goes without a palette.
    palette.Create(&file);
    if (!Create(file.GetWidth(), file.GetHeight(), &palette)) return FALSE;
    // The palette goes with this call; the colour table has its colours.
    m_hPal = nullptr;
    file.CopyBits(this, 0, 0, file.GetWidth(), file.GetHeight(), 0, 0, 0xFFFFFFFF);
    return TRUE;
}

BOOL CvornDIBSurface::BitBlt(HDC hdc, int xDest, int yDest, int w, int h, int xSrc, int ySrc) {
    HDC source = m_dcBuffer.m_hDC;
    return m_bUseWinG ? m_pWinGBBProc(hdc, xDest, yDest, w, h, source, xSrc, ySrc)
                      : ::BitBlt(hdc, xDest, yDest, w, h, source, xSrc, ySrc, SRCCOPY);
}

BOOL CvornDIBSurface::BitBlt(CDC* pDC, int xDest, int yDest, int w, int h, int xSrc, int ySrc) {
    return BitBlt(handleOf(pDC), xDest, yDest, w, h, xSrc, ySrc);
}

BOOL CvornDIBSurface::StretchBlt(CDC* pDC, int xDest, int yDest, int wDest, int hDest, int xSrc, int ySrc,
                                 int wSrc, int hSrc) {
    HDC target = handleOf(pDC), source = m_dcBuffer.m_hDC;
    return m_bUseWinG
               ? m_pWinGSBProc(target, xDest, yDest, wDest, hDest, source, xSrc, ySrc, wSrc, hSrc)
               : ::StretchBlt(target, xDest, yDest, wDest, hDest, source, xSrc, ySrc, wSrc, hSrc, SRCCOPY);
}

void CvornDIBSurface::Draw(CDC* pDC) {
    BitBlt(pDC, 0, 0, GetWidth(), GetHeight(), 0, 0);
}

void CvornDIBSurface::Draw(HDC hdc, int x, int y) {
    BitBlt(hdc, x, y, GetWidth(), GetHeight(), 0, 0);
}

void CvornDIBSurface::Draw2(CDC* pDC, int x, int y) {
    if (pDC == nullptr) return;
    int width = GetWidth(), height = GetHeight();
    pDC->SetStretchBltMode(HALFTONE);
    ::StretchDIBits(pDC->m_hDC, x, y, width, height, 0, 0, width, height, GetBitsAddress(),
                    GetBitmapInfoAddress(), DIB_RGB_COLORS, SRCCOPY);
}

void CvornDIBSurface::SetPalette(HPALETTE hPal) {
    m_hPal = hPal;
    std::array<RGBQUAD, maxDibColours> colours;
    UINT count = putColours(hPal, colours.data());
    if (count == 0) return;
    if (m_bUseWinG) {
        m_pWinGSDCTProc(m_dcBuffer.m_hDC, 0, count, colours.data());
    } else {
        ::SetDIBColorTable(m_dcBuffer.m_hDC, 0, count, colours.data());
    }
}

void CvornDIBSurface::SetPalette(CPalette* pPal) {
    if (pPal != nullptr) SetPalette(static_cast<HPALETTE>(*pPal));
}

BOOL CvornDIBSurface::MapColorsToPalette(HPALETTE hPal) {
    BOOL mapped = CvornDIB::MapColorsToPalette(hPal);
    if (mapped) SetPalette(hPal);
    return mapped;
}

BOOL CvornDIBSurface::MapColorsToPalette(CPalette* pPal) {
    BOOL mapped = CvornDIB::MapColorsToPalette(pPal);
    if (mapped) SetPalette(pPal);
    return mapped;
}
