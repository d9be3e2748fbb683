// SPDX-License-Identifier: MIT
// Palettes in RIFF files: a form "PAL " whose "data" chunk is a LOGPALETTE.
#include "vorn/bitmaps/dib_palette.h"

#include "vorn/bitmaps/detail/file_name.h"
#include "vorn/bitmaps/detail/logical_palette.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <optional>

using namespace vorn::detail;

namespace {

constexpr const char* paletteFilter = "Palette files (*.PAL)|*.PAL|All files (*.*)|*.*||";
constexpr FOURCC palForm = mmioFOURCC('P', 'A', 'L', ' ');
constexpr FOURCC dataChunk = mmioFOURCC('d', 'a', 't', 'a');

bool readAll(HMMIO file, void* to, std::size_t bytes) {
    return ::mmioRead(file, static_cast<HPSTR>(to), static_cast<LONG>(bytes)) == static_cast<LONG>(bytes);
}

/// A chunk that has just been entered: the file is behind its header, and behind a RIFF chunk's form type.
struct Chunk {
    std::int64_t begin = 0; // of the contents
    DWORD size = 0;
    std::int64_t end() const { return begin + size; }
};

/// Enters the next chunk of an id before `limit`; a RIFF chunk must have the form type. The chunks are walked
/// here and not with mmioDescend, which a hostile size can send back to where it was, for ever.
std::optional<Chunk> enterChunk(HMMIO file, std::int64_t limit, FOURCC id, FOURCC form = 0) {
    std::int64_t position = ::mmioSeek(file, 0, SEEK_CUR);
    while (position >= 0 && position + 8 <= limit) {
        DWORD header[2]; // id and size
        FOURCC type = form;
        if (::mmioSeek(file, static_cast<LONG>(position), SEEK_SET) != position || !readAll(file, header, 8))
            return {};
        const Chunk chunk = {position + 8, header[1]};
        if (header[0] == id && (form == 0 || (readAll(file, &type, sizeof(type)) && type == form)))
            return chunk;
        position = chunk.end() + chunk.size % 2; // chunks begin at even places
    }
    return {};
}

/// An operating-system handle as a multimedia file; the handle stays open when this ends.
class WrappedFile {
public:
    WrappedFile(UINT hFile, DWORD flags) {
        MMIOINFO info = {};
        info.adwInfo[0] = hFile;
        m_file = ::mmioOpen(nullptr, &info, flags);
    }
    ~WrappedFile() { close(); }
    WrappedFile(const WrappedFile&) = delete;
    WrappedFile& operator=(const WrappedFile&) = delete;

    HMMIO get() const { return m_file; }
    explicit operator bool() const { return m_file != nullptr; }
    /// False when what is still in the buffer could not be written.
    bool close() {
        return m_file == nullptr || ::mmioClose(std::exchange(m_file, nullptr), MMIO_FHOPEN) == 0;
    }

private:
    HMMIO m_file;
};

UINT handleOf(CFile& file) {
    return static_cast<UINT>(reinterpret_cast<UINT_PTR>(file.m_hFile));
}

/// Opens the file that is named or chosen and hands it to the operation.
template <typename Operation>
BOOL withNamedFile(const char* name, FileDialog kind, UINT flags, const char* failure, Operation operation) {
    const CString path = givenOrChosenName(name, kind, paletteFilter);
    if (path.IsEmpty()) return FALSE;
    CFile file;
    if (!file.Open(path, flags)) {
        AfxMessageBox("Failed to open file", MB_OK);
        return FALSE;
    }
    if (operation(handleOf(file))) return TRUE;
    AfxMessageBox(failure, MB_OK);
    return FALSE;
}

} // namespace

BOOL CvornDIBPal::Load(HMMIO hmmio) {
    const LONG start = ::mmioSeek(hmmio, 0, SEEK_CUR);
    const LONG length = ::mmioSeek(hmmio, 0, SEEK_END);
    if (start < 0 || length < 0 || ::mmioSeek(hmmio, start, SEEK_SET) != start) return FALSE;
    const auto riff = enterChunk(hmmio, length, FOURCC_RIFF, palForm);
    if (!riff) return FALSE;
    const auto data = enterChunk(hmmio, std::min<std::int64_t>(riff->end(), length), dataChunk);
    if (!data || data->end() > length) return FALSE;

    struct {
        WORD version, count;
    } head;
    if (data->size < sizeof(head) || !readAll(hmmio, &head, sizeof(head))) return FALSE;
    if (head.version != LogicalPalette::version || head.count == 0) return FALSE;
    LogicalPalette palette(head.count);
    if (!palette || data->size < palette.bytes().size()) return FALSE;
    if (!readAll(hmmio, palette.entries().data(), palette.entries().size_bytes())) return FALSE;
    UniquePalette made = palette.create();
    if (!made) return FALSE;
    Detach();
    return Attach(made.release());
}

BOOL CvornDIBPal::Load(UINT hFile) {
    const WrappedFile file(hFile, MMIO_ALLOCBUF);
    return file && Load(file.get());
}

BOOL CvornDIBPal::Load(CFile* pFile) {
    return pFile != nullptr && Load(handleOf(*pFile));
}

BOOL CvornDIBPal::Load(const char* pszFileName) {
    return withNamedFile(pszFileName, FileDialog::Open, CFile::modeRead | CFile::shareDenyWrite,
                         "Failed to load file", [this](UINT hFile) { return Load(hFile); });
}

BOOL CvornDIBPal::Save(HMMIO hmmio) {
    LogicalPalette palette(static_cast<WORD>(GetNumColors()));
    if (!palette) return FALSE;
    GetPaletteEntries(0, static_cast<UINT>(palette.entries().size()), palette.entries().data());

    MMCKINFO riff = {}, data = {};
    riff.fccType = palForm;
    if (::mmioCreateChunk(hmmio, &riff, MMIO_CREATERIFF) != 0) return FALSE;
    const auto bytes = palette.bytes();
    const LONG size = static_cast<LONG>(bytes.size());
    data.ckid = dataChunk;
    data.cksize = static_cast<DWORD>(size);
    if (::mmioCreateChunk(hmmio, &data, 0) != 0) return FALSE;
    if (::mmioWrite(hmmio, reinterpret_cast<const char*>(bytes.data()), size) != size) return FALSE;
    return ::mmioAscend(hmmio, &data, 0) == 0 && ::mmioAscend(hmmio, &riff, 0) == 0;
}

BOOL CvornDIBPal::Save(UINT hFile) {
    WrappedFile file(hFile, MMIO_ALLOCBUF | MMIO_CREATE | MMIO_WRITE);
    return file && Save(file.get()) && file.close();
}

BOOL CvornDIBPal::Save(CFile* pFile) {
    return pFile != nullptr && Save(handleOf(*pFile));
}

BOOL CvornDIBPal::Save(const char* pszFileName) {
    return withNamedFile(pszFileName, FileDialog::Save,
                         CFile::modeCreate | CFile::modeWrite | CFile::shareExclusive, "Failed to save file",
                         [this](UINT hFile) { return Save(hFile); });
}
