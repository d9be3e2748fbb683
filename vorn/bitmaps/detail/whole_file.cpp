// SPDX-License-Identifier: MIT
#include "vorn/bitmaps/detail/whole_file.h"

#include <array>
#include <string>

namespace vorn::detail {

namespace {

constexpr LONGLONG maxFileBytes = LONGLONG{1} << 30;

struct CloseFile {
    using pointer = HANDLE;
    void operator()(HANDLE file) const { ::CloseHandle(file); }
};
using FileHandle = std::unique_ptr<void, CloseFile>;

FileHandle openFile(const char* name, DWORD access, DWORD disposition) {
    HANDLE file = ::CreateFileA(name, access, access == GENERIC_READ ? FILE_SHARE_READ : 0, nullptr,
                                disposition, FILE_ATTRIBUTE_NORMAL, nullptr);
    return FileHandle(file == INVALID_HANDLE_VALUE ? nullptr : file);
}

/// A fresh empty file in the folder of `name`, or an empty string.
std::string temporaryBeside(const char* name) {
    std::array<char, MAX_PATH> full;
    char* fileName = nullptr;
    DWORD length = ::GetFullPathNameA(name, static_cast<DWORD>(full.size()), full.data(), &fileName);
    if (length == 0 || length >= full.size() || fileName == nullptr) return {};
    std::string folder(full.data(), fileName);
    std::array<char, MAX_PATH> temporary;
    if (::GetTempFileNameA(folder.c_str(), "vrn", 0, temporary.data()) == 0) return {};
    return temporary.data();
}

} // namespace

bool readWholeFile(const char* name, HeapBytes& bytes) {
    FileHandle file = openFile(name, GENERIC_READ, OPEN_EXISTING);
    LARGE_INTEGER size = {};
    if (!file || !::GetFileSizeEx(file.get(), &size) || size.QuadPart > maxFileBytes) return false;
    HeapBytes read{MallocPtr<BYTE>(static_cast<BYTE*>(std::malloc(static_cast<size_t>(size.QuadPart) + 1))),
                   static_cast<size_t>(size.QuadPart)};
    DWORD done = 0;
    if (!read.data ||
        !::ReadFile(file.get(), read.data.get(), static_cast<DWORD>(read.size), &done, nullptr) ||
        done != read.size) {
        return false;
    }
    bytes = std::move(read);
    return true;
}

bool writeWholeFile(const char* name, std::span<const BYTE> bytes) {
    DWORD attributes = ::GetFileAttributesA(name);
    constexpr DWORD forbidden = FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_DIRECTORY;
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & forbidden) != 0) return false;
    std::string temporary = temporaryBeside(name);
    if (temporary.empty()) return false;
    bool written = false;
    if (FileHandle file = openFile(temporary.c_str(), GENERIC_WRITE, CREATE_ALWAYS)) {
        DWORD done = 0;
        written = ::WriteFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &done, nullptr) &&
                  done == bytes.size();
    }
    if (written &&
        ::MoveFileExA(temporary.c_str(), name, MOVEFILE_REPLACE_EXISTING | MOVEFILE_COPY_ALLOWED)) {
        return true;
    }
    ::DeleteFileA(temporary.c_str());
    return false;
}

bool readWholeStream(IStream* stream, HeapBytes& bytes) {
    ComPtr<MemoryStream> copy(new MemoryStream);
    std::array<BYTE, 16 * 1024> piece;
    LONGLONG total = 0;
    for (;;) {
        ULONG read = 0;
        HRESULT result = stream->Read(piece.data(), static_cast<ULONG>(piece.size()), &read);
        if (FAILED(result) || read > piece.size()) return false;
        if (read == 0) break;
        total += read;
        if (total > maxFileBytes || FAILED(copy->Write(piece.data(), read, nullptr))) return false;
    }
    bytes = copy->detach();
    return true;
}

} // namespace vorn::detail
