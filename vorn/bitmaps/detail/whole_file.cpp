// SPDX-License-Identifier: MIT
#include "vorn/bitmaps/detail/whole_file.h"

#include <algorithm>
#include <array>

namespace vorn::detail {

namespace {

constexpr LONGLONG maxFileBytes = LONGLONG{1} << 30;

struct CloseFile {
    using pointer = HANDLE;
    void operator()(HANDLE file) const { ::CloseHandle(file); }
};
using FileHandle = std::unique_ptr<void, CloseFile>;

/// A name in the code page of the narrow interface; empty when it is none.
std::wstring wideName(const char* name) {
    int length = ::MultiByteToWideChar(CP_ACP, 0, name, -1, nullptr, 0);
    std::wstring wide(static_cast<size_t>(std::max(length, 1)), L'\0');
    ::MultiByteToWideChar(CP_ACP, 0, name, -1, wide.data(), length);
    wide.pop_back();
    return wide;
}

/// A fresh empty file in the folder of `name`, or an empty string.
std::wstring temporaryBeside(const std::wstring& name) {
    std::array<wchar_t, MAX_PATH> full;
    wchar_t* fileName = nullptr;
    DWORD length = ::GetFullPathNameW(name.c_str(), static_cast<DWORD>(full.size()), full.data(), &fileName);
    if (length == 0 || length >= full.size() || fileName == nullptr) return {};
    std::wstring folder(full.data(), fileName);
    std::array<wchar_t, MAX_PATH> temporary;
    if (::GetTempFileNameW(folder.c_str(), L"vrn", 0, temporary.data()) == 0) return {};
    return temporary.data();
}

} // namespace

bool readWholeFile(const char* name, HeapBytes& bytes) {
    HANDLE opened = ::CreateFileA(name, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    FileHandle file(opened == INVALID_HANDLE_VALUE ? nullptr : opened);
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

ReplacedFile::ReplacedFile(const char* name) : m_name(wideName(name)) {
    DWORD attributes = ::GetFileAttributesW(m_name.c_str());
    constexpr DWORD forbidden = FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_DIRECTORY;
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & forbidden) != 0) return;
    m_temporary = temporaryBeside(m_name);
}

ReplacedFile::~ReplacedFile() {
    if (!m_temporary.empty()) ::DeleteFileW(m_temporary.c_str());
}

bool ReplacedFile::commit() {
    if (m_temporary.empty() ||
        !::MoveFileExW(m_temporary.c_str(), m_name.c_str(), MOVEFILE_REPLACE_EXISTING)) {
        return false;
    }
    m_temporary.clear();
    return true;
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
