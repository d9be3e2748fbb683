// SPDX-License-Identifier: MIT
#pragma once

#include "vorn/bitmaps/detail/memory_stream.h"

namespace vorn::detail {

/// Reads a whole file into the C heap; refuses one larger than 1 GB. False when it cannot be read.
bool readWholeFile(const char* name, HeapBytes& bytes);

/// Writes a file in one piece: into a temporary file beside it, which then takes its place. On failure the
/// old file, or its absence, is as it was.
bool writeWholeFile(const char* name, std::span<const BYTE> bytes);

/// Reads a stream from where it stands to its end; refuses more than 1 GB.
bool readWholeStream(IStream* stream, HeapBytes& bytes);

} // namespace vorn::detail
