// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

/// Header bits.
enum : DWORD {
    SHP_SELECTED = 0x2,    ///< the row or column is selected
    SHP_FIXED = 0x4,       ///< the application sets the size, and the layout keeps it
    SHP_HCENTER = 0x80,    ///< of a column: the texts of its cells are centred
    SHP_RIGHT = 0x100,     ///< of a column: the texts of its cells end at its right
    SHP_ALIGNMENT = 0x1C0, ///< the bits of the alignment; other values than these two count as left
};

/// What a spread keeps of one row or one column.
class CvornSpreadHeader {
public:
    /// Height of the row or width of the column, in pixels.
    int m_nSize = 0;
    /// Offset of the row or column from the spread's top or left edge, in pixels.
    int m_nLayout = 0;
    /// Header bits.
    DWORD m_dwParam = 0;
    /// The application's.
    DWORD m_dwData = 0;

    /// Reads the bits of the mask; replaces all bits; clears the bits of the mask, then raises those of the
    /// set.
    unsigned long GetParam(unsigned long mask) const { return m_dwParam & mask; }
    void SetParam(unsigned long bits) { m_dwParam = bits; }
    void SetParam(unsigned long set, unsigned long mask) { m_dwParam = (m_dwParam & ~mask) | set; }
    /// The application's number of the row or column.
    void SetData(unsigned long data) { m_dwData = data; }
    unsigned long GetData() const { return m_dwData; }
};
