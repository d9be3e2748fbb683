// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>
#include <new>

namespace vorn::detail {

/// An array of value-initialised elements for copies to share; null for a count of 0 and where memory fails.
template <typename T>
std::shared_ptr<T[]> makeSharedArray(std::int64_t count) {
    if (count <= 0) return nullptr;
    try {
        return std::make_shared<T[]>(static_cast<std::size_t>(count));
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

} // namespace vorn::detail
