// SPDX-License-Identifier: MIT
#include "vorn/overlays/spread.h"

#include <afxwin.h>
#include <gtest/gtest.h>
#include <string>

namespace {

/// The cells as "a|b/c|d"; a colour cell with a # before it.
std::string gridOf(const CvornSpread& spread) {
    std::string grid;
    for (int row = 0; row < spread.m_nRows; ++row) {
        for (int col = 0; col < spread.m_nCols; ++col) {
            if (col > 0) grid += '|';
            if (spread.GetType(row, col) == CvornCell::ColourCell) grid += '#';
            const CString text = spread.GetText(row, col);
            grid.append(text, text.GetLength());
        }
        if (row + 1 < spread.m_nRows) grid += '/';
    }
    return grid;
}

CString stringOf(const std::string& text) {
    return CString(text.data(), static_cast<int>(text.size()));
}

TEST(SpreadData, PasteTable) {
    using namespace std::string_literals;
    const struct {
        std::string text;
        int grow, rows, cols;
        std::string grid;
    } cases[] = {
        {"a\tb\r\nc\td\r\n", 1, 0, 0, "a|b/c|d/|"},
        {"a\n\rb\rc\nd", 1, 0, 0, "a/b/c/d"},
        {"a\r\rb", 1, 0, 0, "a//b"},
        {"a\n\r\nb", 1, 0, 0, "a//b"},
        {"a\tb\nc", 0, 1, 1, "a"},
        {"\t\tz", 0, 2, 2, "|/#7|old"},
        {"\t\n\tn", 0, 2, 2, "|/#|n"},
        {"x", 1, 2, 2, "x|/#7|old"},
        {"", 1, 2, 2, "|/#7|old"},
        {"\t", 1, 0, 0, "|"},
        {"\n", 1, 0, 0, "/"},
        {"a\0b\t\0"s, 1, 0, 0, "a\0b|\0"s},
        {"\xE4\xF6\t\xDF", 1, 0, 0, "\xE4\xF6|\xDF"},
        {"a", 0, 0, 0, ""},
    };
    for (const auto& c : cases) {
        CvornSpread spread;
        spread.SetMaxSize(c.rows, c.cols);
        spread.SetColour(1, 0, 7);
        spread.SetText(1, 1, "old");
        spread.Paste(stringOf(c.text), c.grow);
        EXPECT_EQ(gridOf(spread), c.grid) << testing::PrintToString(c.text);
    }
}

TEST(SpreadData, PasteOfHugeTextIsLinear) {
    CvornSpread spread;
    const std::string cell(8'000'000, 'm');
    spread.Paste(stringOf(cell + "\t\t\nend"), 1);
    EXPECT_EQ(spread.GetText(0, 0).GetLength(), 8'000'000);
    EXPECT_EQ(spread.GetText(1, 0), "end");

    spread.Paste(stringOf(std::string(1'000'000, '\n') + "last"), 1);
    EXPECT_EQ(spread.m_nRows, 1'000'001);
    EXPECT_EQ(spread.GetText(1'000'000, 0), "last");

    spread.Paste(stringOf(std::string(20'000, '\n') + std::string(20'000, '\t')), 1);
    EXPECT_EQ(spread.m_nCells + spread.m_nRows + spread.m_nCols, 0); // 400 million cells
}

TEST(SpreadData, SizeKeepsTheCornerAndRefusesTheImpossible) {
    CvornSpread spread;
    spread.SetMaxSize(3, 3);
    for (int i = 0; i < 9; ++i)
        spread.SetText(i / 3, i % 3, std::string(1, static_cast<char>('a' + i)).c_str());
    spread.SetColour(1, 1, RGB(255, 0, 255));
    spread.SetRowData(1, 11);
    spread.SetColData(0, 22);
    spread.SetColParam(0, SHP_FIXED, SHP_FIXED);
    spread.SetMaxSize(2, 2);
    EXPECT_EQ(gridOf(spread), "a|b/d|#16711935");
    spread.SetMaxSize(2, 4);
    EXPECT_EQ(gridOf(spread), "a|b||/d|#16711935||");
    EXPECT_EQ(spread.GetRowData(1) + spread.GetColData(0), 33U);
    EXPECT_TRUE(spread.m_pColHeaders[0].GetParam(SHP_FIXED));
    EXPECT_TRUE(spread.GetColour(1, 1).GetRedi() > 250 && spread.GetColour(1, 1).GetGreeni() == 0);
    spread.SetText(2, 0, "outside");
    spread.SetText(0, -1, "outside");
    spread.SetColour(-1, 0, 0);
    EXPECT_EQ(gridOf(spread), "a|b||/d|#16711935||");

    const int most = 2147483647;
    const struct {
        int rows, cols;
    } impossible[] = {{most, most}, {65536, 65536}, {46341, 46341}, {most, 0}, {-1, -5}};
    for (const auto& size : impossible) {
        spread.SetMaxSize(1, 1);
        spread.SetMaxSize(size.rows, size.cols);
        EXPECT_EQ(spread.m_nRows, 0) << size.rows;
        EXPECT_EQ(spread.m_nCols, 0) << size.cols;
        EXPECT_EQ(spread.m_pCells, nullptr);
    }
}

TEST(SpreadData, CopiesShareCellsUntilResized) {
    CvornSpread copy;
    {
        CvornSpread source;
        source.Paste(CString("a\tb\nc\td"), 1);
        copy = source;
        source.SetText(0, 0, "shared");
        source.SetMaxSize(1, 1);
        source.SetText(0, 0, "own");
    }
    EXPECT_EQ(gridOf(copy), "shared|b/c|d");
}

TEST(SpreadSelection, FollowsTheMode) {
    CvornSpread spread;
    spread.SetMaxSize(4, 3);
    const struct {
        DWORD mode;
        int index, set, anchor, firstRow, all, allAnchor;
    } cases[] = {
        {SPP_ROWSEL, 2, 1, 2, 2, 4, 0},    {SPP_ROWSEL, 4, 0, -1, -1, 4, 0},
        {SPP_ROWSEL, -1, 0, -1, -1, 4, 0}, {SPP_COLSEL, 2, 1, 2, -1, 3, 0},
        {SPP_COLSEL, 3, 0, -1, -1, 3, 0},  {SPP_ROWSEL | SPP_COLSEL, 1, 0, -1, -1, 0, -1},
        {0, 1, 0, -1, -1, 0, -1},
    };
    for (const auto& c : cases) {
        spread.SetParam(c.mode, SPP_ROWSEL | SPP_COLSEL);
        EXPECT_EQ(spread.SetSel(c.index), c.set) << c.mode << ": " << c.index;
        EXPECT_EQ(spread.m_nSelAnchor, c.anchor);
        EXPECT_EQ(spread.GetFirstRowSel(), c.firstRow);
        EXPECT_EQ(spread.GetFirstColSel(), -1);
        EXPECT_EQ(spread.SelectAll(), c.all);
        EXPECT_EQ(spread.m_nSelAnchor, c.allAnchor);
        spread.UpdateSelCount();
        EXPECT_EQ(spread.GetSelCount(), c.all);
    }

    spread.SetParam(SPP_ROWSEL);
    spread.SelectAll();
    spread.m_nSelAnchor = 3;
    EXPECT_EQ(spread.GetFirstRowSel(), 3);
    spread.m_nSelAnchor = 9;
    EXPECT_EQ(spread.GetFirstRowSel(), 0);
    spread.SetParam(SPP_COLSEL);
    spread.SelectAll();
    EXPECT_FALSE(spread.IsRowSelected(0)); // its bit is set, but rows do not count now
    spread.SetParam(SPP_ROWSEL | SPP_COLSEL);
    spread.UpdateSelCount();
    EXPECT_EQ(spread.GetSelCount(), 12);
    EXPECT_TRUE(spread.IsCellSelected(3, 2));
    EXPECT_FALSE(spread.IsCellSelected(4, 2));
    spread.ClearColSelection(1);
    EXPECT_EQ(spread.GetSelCount(), 4);
    spread.ClearCellSelection(2, 1);
    EXPECT_EQ(spread.GetSelCount(), 1);
    EXPECT_TRUE(spread.IsCellSelected(2, 1));
    spread.ClearRowSelection(-1);
    EXPECT_EQ(spread.GetSelCount(), 0);
}

} // namespace
