// SPDX-License-Identifier: MIT
#pragma once

#include "vorn/detail/handles.h"

#include <cstddef>
#include <span>

namespace vorn::detail {

/// A LOGPALETTE of a given number of colours, black at first. Empty when there is no memory.
class LogicalPalette {
public:
    static constexpr WORD version = 0x300;
    static constexpr std::size_t bytesOf(std::size_t count) {
        return offsetof(LOGPALETTE, palPalEntry) + count * sizeof(PALETTEENTRY);
    }

    explicit LogicalPalette(WORD count) : m_block(static_cast<LOGPALETTE*>(std::calloc(1, bytesOf(count)))) {
        if (m_block == nullptr) return;
        m_block->palVersion = version;
        m_block->palNumEntries = count;
    }

    explicit operator bool() const { return m_block != nullptr; }
    std::span<PALETTEENTRY> entries() { return {m_block->palPalEntry, m_block->palNumEntries}; }
    std::span<std::byte> bytes() {
        return {reinterpret_cast<std::byte*>(m_block.get()), bytesOf(m_block->palNumEntries)};
    }
    UniquePalette create() const { return UniquePalette(::CreatePalette(m_block.get())); }

private:
    MallocPtr<LOGPALETTE> m_block;
};

} // namespace vorn::detail
