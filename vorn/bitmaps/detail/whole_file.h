// SPDX-License-Identifier: MIT
#pragma once

#include "vorn/bitmaps/detail/memory_stream.h"

#include <string>

namespace vorn::detail {

/// Reads a whole file into the C heap; refuses one larger than 1 GB. False when it cannot be read.
bool readWholeFile(const char* name, HeapBytes& bytes);

/// A file written whole or not at all: into a temporary file beside it, which then takes its place. Until
/// then, and after a failure, the old file, or its absence, is as it was.
class ReplacedFile {
public:
    explicit ReplacedFile(const char* name);
    ~ReplacedFile();
    ReplacedFile(const ReplacedFile&) = delete;
    ReplacedFile& operator=(const ReplacedFile&) = delete;

    /// The empty file to write into; no name when there is no place for one or the file must not be written.
    const std::wstring& temporary() const { return m_temporary; }
    /// Puts the temporary file, which must be closed, in place. False when that fails.
    bool commit();

private:
    std::wstring m_name;
    std::wstring m_temporary;
};

/// Reads a stream from where it stands to its end; refuses more than 1 GB.
bool readWholeStream(IStream* stream, HeapBytes& bytes);

} // namespace vorn::detail
