// SPDX-License-Identifier: MIT
#include "vorn/overlays/spread.h"

#include <array>
#include <gtest/gtest.h>
#include <string>
#include <tuple>

namespace {

/// The cells as "a|b/c|d"; a colour cell with a # before it.
std::string gridOf(const CvornSpread& spread) {
    std::string grid;
    for (int i = 0; i < spread.m_nCells; ++i) {
        const int row = i / spread.m_nCols, col = i % spread.m_nCols;
        if (i > 0) grid += col > 0 ? '|' : '/';
        if (spread.GetType(row, col) == CvornCell::ColourCell) grid += '#';
        const CString text = spread.GetText(row, col);
        grid.append(text, text.GetLength());
    }
    return grid;
}

CString stringOf(const std::string& text) {
    return CString(text.data(), static_cast<int>(text.size()));
}

TEST(SpreadData, PasteTable) {
    using namespace std::string_literals;
    using Case = std::tuple<std::string, int, int, std::string>; // text, grow, rows and columns before; grid
    const Case cases[] = {{"a\tb\r\nc\td\r\n", 1, 0, "a|b/c|d/|"},
                          {"a\n\rb\rc\nd", 1, 0, "a/b/c/d"},
                          {"a\r\rb\n\r\nc", 1, 0, "a//b//c"},
                          {"a\tb\nc", 0, 1, "a"},
                          {"\t\tz", 0, 2, "|/#7|old"},
                          {"\t\n\tn", 0, 2, "|/#|n"},
                          {"x", 1, 2, "x|/#7|old"},
                          {"", 1, 2, "|/#7|old"},
                          {"\t", 1, 0, "|"},
                          {"\n", 1, 0, "/"},
                          {"a\0b\t\0"s, 1, 0, "a\0b|\0"s},
                          {"\xE4\xF6\t\xDF", 1, 0, "\xE4\xF6|\xDF"},
                          {"a", 0, 0, ""}};
    for (const auto& [text, grow, size, grid] : cases) {
        CvornSpread spread;
        spread.SetMaxSize(size, size);
        spread.SetColour(1, 0, 7);
        spread.SetText(1, 1, "old");
        spread.Paste(stringOf(text), grow);
        EXPECT_EQ(gridOf(spread), grid) << testing::PrintToString(text);
    }
}

TEST(SpreadData, HugeTextsArePasted) {
    CvornSpread spread;
    spread.Paste(stringOf(std::string(8'000'000, 'm') + "\t\t\nend"), 1);
    EXPECT_EQ(spread.GetText(0, 0).GetLength(), 8'000'000);
    EXPECT_EQ(spread.GetText(1, 0), "end");
    spread.Paste(stringOf(std::string(1'000'000, '\n') + "last"), 1);
    EXPECT_EQ(spread.GetText(1'000'000, 0), "last");
    spread.Paste(stringOf(std::string(20'000, '\n') + std::string(20'000, '\t')), 1);
    EXPECT_EQ(spread.m_nCells + spread.m_nRows + spread.m_nCols, 0); // 400 million cells
}

TEST(SpreadData, SizeKeepsTheCornerAndRefusesTheImpossible) {
    CvornSpread spread, copy;
    spread.Paste(CString("a\tb\tc\nd\te\tf\ng\th\ti"), 1);
    spread.SetColour(1, 1, 7);
    spread.SetRowData(1, 11);
    spread.SetColParam(0, SHP_FIXED, SHP_FIXED);
    copy = spread;
    spread.SetText(0, 0, "A");
    spread.SetMaxSize(2, 2);
    spread.SetMaxSize(2, 4);
    spread.SetText(0, 1, "own");
    spread.SetText(2, 0, "outside");
    spread.SetColour(0, -1, 0);
    EXPECT_EQ(gridOf(spread), "A|own||/d|#7||");
    EXPECT_EQ(spread.GetRowData(1), 11U);
    EXPECT_TRUE(spread.m_pColHeaders[0].GetParam(SHP_FIXED));
    EXPECT_EQ(gridOf(copy), "A|b|c/d|#7|f/g|h|i"); // shared until the resize

    constexpr int most = 2147483647;
    for (const auto& [rows, cols] :
         {std::pair(most, most), {65536, 65536}, {46341, 46341}, {most, 0}, {-1, -5}}) {
        spread.SetMaxSize(1, 1);
        spread.SetMaxSize(rows, cols);
        EXPECT_EQ(spread.m_nRows, 0) << rows;
        EXPECT_EQ(spread.m_nCols, 0) << cols;
        EXPECT_EQ(spread.m_pCells, nullptr);
    }
}

TEST(SpreadSelection, FollowsTheMode) {
    CvornSpread spread;
    spread.SetMaxSize(4, 3);
    constexpr DWORD rows = SPP_ROWSEL, cols = SPP_COLSEL;
    using Outcome = std::array<int, 6>; // SetSel: count, anchor, first row; SelectAll: count, anchor, recount
    const std::tuple<DWORD, int, Outcome> cases[] = {
        {rows, 2, {1, 2, 2, 4, 0, 4}},           {rows, 4, {0, -1, -1, 4, 0, 4}},
        {cols, 2, {1, 2, -1, 3, 0, 3}},          {cols, -1, {0, -1, -1, 3, 0, 3}},
        {rows | cols, 1, {0, -1, -1, 0, -1, 0}}, {0, 1, {0, -1, -1, 0, -1, 0}}};
    for (const auto& [mode, index, outcome] : cases) {
        spread.SetParam(mode, rows | cols);
        Outcome seen = {spread.SetSel(index), spread.m_nSelAnchor, spread.GetFirstRowSel(),
                        spread.SelectAll(), spread.m_nSelAnchor};
        EXPECT_EQ(spread.GetFirstColSel(), -1);
        spread.UpdateSelCount();
        seen[5] = spread.GetSelCount();
        EXPECT_EQ(seen, outcome) << mode << ": " << index;
    }
    spread.SetParam(SPP_ROWSEL);
    spread.SelectAll();
    for (const auto& [anchor, first] : {std::pair(3, 3), {9, 0}}) {
        spread.m_nSelAnchor = anchor;
        EXPECT_EQ(spread.GetFirstRowSel(), first);
    }
    spread.SetParam(SPP_COLSEL);
    spread.SelectAll();
    EXPECT_FALSE(spread.IsRowSelected(0)); // its bit is set, but rows do not count now
    spread.SetParam(SPP_ROWSEL | SPP_COLSEL);
    spread.ClearColSelection(-7);
    spread.m_pColHeaders[1].SetParam(SHP_SELECTED);
    spread.UpdateSelCount();
    EXPECT_EQ(spread.GetSelCount(), 4);
    spread.ClearCellSelection(2, 1);
    EXPECT_EQ(spread.GetSelCount(), 1);
    EXPECT_TRUE(spread.IsCellSelected(2, 1));
    EXPECT_FALSE(spread.IsCellSelected(4, 1));
}

} // namespace
