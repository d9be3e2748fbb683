// SPDX-License-Identifier: MIT
#include "text_file.h"

#include "grid.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

namespace examples {

namespace {

constexpr long maxBytes = 256L << 20;

struct FileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

} // namespace

std::string readTextFile(const std::string& file) {
    const auto fail = [&file](const std::string& reason) -> GridError { return {file, 0, 0, reason}; };
    const std::unique_ptr<std::FILE, FileCloser> stream(std::fopen(file.c_str(), "rb"));
    if (!stream) throw fail(std::string("cannot be opened: ") + std::strerror(errno));
    std::fseek(stream.get(), 0, SEEK_END);
    const long size = std::ftell(stream.get());
    if (size < 0 || size > maxBytes) throw fail("cannot be read, or is larger than 256 MB");
    std::rewind(stream.get());
    std::string text(static_cast<std::size_t>(size), '\0');
    if (std::fread(text.data(), 1, text.size(), stream.get()) != text.size())
        throw fail(std::string("cannot be read: ") + std::strerror(errno));
    return text;
}

} // namespace examples
