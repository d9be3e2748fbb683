// SPDX-License-Identifier: MIT
#pragma once

#include <ostream>

namespace support {

/// How many handles are alive: take the counts before and after, and compare.
///
///     const auto before = HandleCounts::now();
///     ...
///     EXPECT_EQ(HandleCounts::now(), before);
///
/// The first use of a window, font or cursor lets the system make objects of its own, which stay: run the
/// code once before counting.
struct HandleCounts {
    int gdi = 0;   ///< GDI objects of the process
    int user = 0;  ///< windows of the thread, menus and icons of the process
    int lists = 0; ///< display lists of the current GL context with numbers up to 4096; 0 without a context
    int textures = 0; ///< its texture objects, likewise

    static HandleCounts now();
    bool operator==(const HandleCounts&) const = default;
};

std::ostream& operator<<(std::ostream& stream, const HandleCounts& counts);

} // namespace support
