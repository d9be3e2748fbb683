// SPDX-License-Identifier: MIT
#pragma once

#include <afxdisp.h>

/// One cell of a spread: a string in a text cell, a COLORREF as 32-bit integer in a colour cell.
class CvornCell {
public:
    enum : long { TextCell = 0, ColourCell = 1 };

    /// The content.
    COleVariant m_value;
    /// TextCell or ColourCell.
    long m_nType = TextCell;
    /// Copied with the cell. The layout keeps the extent of the cell's text here: width and height, in
    /// pixels.
    DWORD m_dwReserved1 = 0;
    DWORD m_dwReserved2 = 0;
};
