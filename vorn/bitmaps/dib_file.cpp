// SPDX-License-Identifier: MIT
// The DIB as a BMP file, as a resource that holds one, and in archives.
#include "vorn/bitmaps/dib.h"

#include "vorn/bitmaps/detail/dib_blocks.h"
#include "vorn/bitmaps/detail/file_name.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <span>

using namespace vorn::detail;

namespace {

constexpr const char* imageFilter = "Image files (*.DIB, *.BMP)|*.DIB;*.BMP|All files (*.*)|*.*||";
constexpr WORD bmpMark = 0x4D42; // "BM"
constexpr DWORD savedBitsOffset = sizeof(BITMAPFILEHEADER) + dibHeaderBlockBytes;

bool readAll(CFile& file, void* to, std::size_t bytes) {
    return file.Read(to, static_cast<UINT>(bytes)) == bytes;
}

bool readWinColours(CFile& file, BITMAPINFO& info) {
    const DWORD count = dibEntriesBehind(info.bmiHeader, dibColours(info));
    return count <= maxDibColours && readAll(file, dibColourTable(&info), count * sizeof(RGBQUAD));
}

bool readCoreColours(CFile& file, BITMAPINFO& info) {
    std::array<RGBTRIPLE, maxDibColours> colours;
    const DWORD count = dibColours(info);
    if (!readAll(file, colours.data(), count * sizeof(RGBTRIPLE))) return false;
    widenCoreColours(colours.data(), dibColourTable(&info), count);
    return true;
}

/// The header and colour table at `start`, where the file is; null when they are broken or of another kind.
std::shared_ptr<BITMAPINFO> readHeader(CFile& file, ULONGLONG start) {
    auto info = newDibHeader();
    if (!info || !readAll(file, &info->bmiHeader, sizeof(BITMAPINFOHEADER))) return nullptr;
    if (info->bmiHeader.biSize == sizeof(BITMAPINFOHEADER))
        return readWinColours(file, *info) ? info : nullptr;
    if (info->bmiHeader.biSize != sizeof(BITMAPCOREHEADER)) return nullptr;
    BITMAPCOREHEADER core;
    file.Seek(static_cast<LONGLONG>(start), CFile::begin);
    if (!readAll(file, &core, sizeof(core))) return nullptr;
    info->bmiHeader = widenCoreHeader(core);
    return readCoreColours(file, *info) ? info : nullptr;
}

/// The bytes of a "DIB" resource; none when there is no such resource.
std::span<const BYTE> findDibResource(WORD id) {
    const HINSTANCE module = AfxGetResourceHandle();
    const HRSRC place = ::FindResource(module, MAKEINTRESOURCE(id), "DIB");
    if (place == nullptr) return {};
    const HGLOBAL resource = ::LoadResource(module, place);
    const void* bytes = resource == nullptr ? nullptr : ::LockResource(resource);
    if (bytes == nullptr) return {};
    return {static_cast<const BYTE*>(bytes), ::SizeofResource(module, place)};
}

} // namespace

BOOL CvornDIB::Load(CFile* pFile) {
    if (pFile == nullptr) return FALSE;
    const ULONGLONG start = pFile->GetPosition();
    BITMAPFILEHEADER file;
    if (!readAll(*pFile, &file, sizeof(file)) || file.bfType != bmpMark) return FALSE;
    auto header = readHeader(*pFile, start + sizeof(file));
    if (!header) return FALSE;

    // Nothing is allocated on the word of a header that the file does not bear out.
    const auto needed = dibBytesNeeded(header->bmiHeader);
    if (!needed || file.bfSize < file.bfOffBits) return FALSE;
    const std::size_t stored = file.bfSize - file.bfOffBits;
    if (start + file.bfOffBits + stored > pFile->GetLength()) return FALSE;
    const std::size_t room = std::max(stored, *needed);
    auto bits = newDibBits(room, stored);
    if (!bits) return FALSE;
    pFile->Seek(static_cast<LONGLONG>(start + file.bfOffBits), CFile::begin);
    if (!readAll(*pFile, bits.get(), stored)) return FALSE;

    SetHeader(std::move(header));
    SetBits(std::move(bits), room);
    return TRUE;
}

BOOL CvornDIB::Load(const char* pszFileName) {
    const CString name = givenOrChosenName(pszFileName, FileDialog::Open, imageFilter);
    CFile file;
    if (name.IsEmpty() || !file.Open(name, CFile::modeRead | CFile::shareDenyWrite)) return FALSE;
    try {
        return Load(&file);
    } catch (CException* exception) {
        exception->Delete();
        return FALSE;
    }
}

BOOL CvornDIB::Load(WORD nResourceId) {
    const auto resource = findDibResource(nResourceId);
    BITMAPFILEHEADER file;
    auto header = newDibHeader();
    constexpr std::size_t tableOffset = sizeof(file) + sizeof(BITMAPINFOHEADER);
    if (!header || resource.size() < tableOffset) return FALSE;
    std::memcpy(&file, resource.data(), sizeof(file));
    std::memcpy(header.get(), resource.data() + sizeof(file), sizeof(BITMAPINFOHEADER));
    if (!IsWinDIB(&header->bmiHeader)) return FALSE;
    header->bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
    const std::size_t entries = dibEntriesBehind(header->bmiHeader, dibColours(*header));
    if (entries > maxDibColours || entries * sizeof(RGBQUAD) > resource.size() - tableOffset) return FALSE;
    std::memcpy(dibColourTable(header.get()), resource.data() + tableOffset, entries * sizeof(RGBQUAD));

    // The 8-bit rule asks for more bytes than 1 and 4-bit images have, and for fewer than deeper ones have:
    // the resource's own end limits it, and what is not taken is zero.
    const auto needed = dibBytesNeeded(header->bmiHeader);
    if (!needed || file.bfOffBits > resource.size()) return FALSE;
    const auto pixels = resource.subspan(file.bfOffBits);
    const std::int64_t rule =
        ((std::int64_t{header->bmiHeader.biWidth} + 3) & ~std::int64_t{3}) * dibRows(header->bmiHeader);
    if (pixels.size() < std::min(static_cast<std::size_t>(rule), *needed)) return FALSE;
    const std::size_t taken = std::min(static_cast<std::size_t>(rule), pixels.size());
    const std::size_t room = std::max(taken, *needed);

    FreeBlocks();
    auto bits = newDibBits(room);
    if (!bits) return FALSE;
    std::memcpy(bits.get(), pixels.data(), taken);
    SetHeader(std::move(header));
    SetBits(std::move(bits), room);
    return TRUE;
}

BOOL CvornDIB::Save(CFile* pFile) {
    if (pFile == nullptr || !HoldsHeaderBits()) return FALSE;
    const auto size = static_cast<DWORD>(dibRowBytes(m_pBMI->bmiHeader) * dibRows(m_pBMI->bmiHeader));
    const BITMAPFILEHEADER file = {bmpMark, savedBitsOffset + size, 0, 0, savedBitsOffset};
    try {
        pFile->Write(&file, sizeof(file));
        pFile->Write(m_pBMI, dibHeaderBlockBytes);
        pFile->Write(m_pBits, size);
        return TRUE;
    } catch (CException* exception) {
        exception->Delete();
        return FALSE;
    }
}

BOOL CvornDIB::Save(const char* pszFileName) {
    const CString name = givenOrChosenName(pszFileName, FileDialog::Save, imageFilter);
    if (name.IsEmpty()) return FALSE;
    CFile file;
    if (!file.Open(name, CFile::modeCreate | CFile::modeWrite | CFile::shareExclusive)) {
        AfxMessageBox("Failed to open file", MB_OK);
        return FALSE;
    }
    if (Save(&file)) return TRUE;
    AfxMessageBox("Failed to save file", MB_OK);
    return FALSE;
}

void CvornDIB::Serialize(CArchive& ar) {
    ar.Flush();
    if (ar.IsLoading())
        Load(ar.GetFile());
    else
        Save(ar.GetFile());
}
