// SPDX-License-Identifier: MIT
#include "common/grid_rows.h"

#include "tests/examples/grids.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <numeric>

namespace {

using namespace examples;
using support::repeated;

/// Numbers of every size, and holes.
Grid someGrid(int rows, int columns, std::vector<std::string> labels = {}) {
    Grid grid = support::gridFrom(rows, columns, [](int i) {
        return i % 5 == 3 ? support::hole : std::sin(i) * std::pow(10.0, i % 7 * 40 - 120);
    });
    grid.rowLabels = std::move(labels);
    return grid;
}

bool same(const Grid& a, const Grid& b) {
    return a.rows == b.rows && a.columns == b.columns && a.rowLabels == b.rowLabels &&
           std::ranges::equal(a.values, b.values,
                              [](double x, double y) { return x == y || (std::isnan(x) && std::isnan(y)); });
}

TEST(GridRows, ComeBackAsTheyWere) {
    const std::vector<std::string> labels = {"plain",       "a\ttab", "\"quoted\" line\r\nbreak",
                                             "three words", "12",     ""};
    for (int columns : {1, 2, 6}) {
        for (const Grid& grid : {someGrid(6, columns, labels), someGrid(6, columns)}) {
            std::vector<int> rows(6);
            std::iota(rows.begin(), rows.end(), 0);
            Grid other = grid;
            other.values.assign(grid.values.size(), 1);
            EXPECT_TRUE(same(withRows(other, 0, rowsAsText(grid, rows)), grid)) << columns;
            // Two of them over the last and beyond it.
            const Grid longer = withRows(grid, 5, rowsAsText(grid, std::vector{4, 0}));
            EXPECT_EQ(longer.rows, 7);
            EXPECT_EQ(rowsAsText(longer, std::vector{1, 5, 6}), rowsAsText(grid, std::vector{1, 4, 0}));
        }
    }
}

TEST(GridRows, TakeWhatSpreadsheetsWriteAndNothingElse) {
    const Grid grid = someGrid(3, 2);
    struct Case {
        const char* text;
        int rows; ///< of the result; 0: refused
    };
    for (auto [text, rows] :
         {Case{"1\t2", 3}, Case{"1\t2\n", 3}, Case{"1\t2\r\r3\t4\n\r\n\n5\t6\r\n\r\n", 3},
          Case{"x\t1\t2\n3\t4", 3}, Case{"\t\n\t\n\t\n\tNA\t", 4}, Case{"\"1\"\t 2 ", 3}, Case{"", 0},
          Case{"\n\r\n\r", 0}, Case{"\t\t\t", 0}, Case{"1", 0}, Case{"1\t2\t3", 3}, Case{"1\t2\t3\t4", 0},
          Case{"1\t2\nx\ty", 0}, Case{"1\t1e999", 0}, Case{"1\t\"2", 0}, Case{"1\t\"2\"3", 0},
          Case{"1\t2,5", 0}}) {
        SCOPED_TRACE(text);
        if (rows > 0)
            EXPECT_EQ(withRows(grid, 0, text).rows, rows);
        else
            EXPECT_THROW(withRows(grid, 0, text), std::runtime_error);
    }
    EXPECT_EQ(withRows(grid, 1, "x\t1\t2\n3\t4").rowLabels, (std::vector<std::string>{"1", "x", "3"}));
}

TEST(GridRows, MegabytesAreRefusedInOnePass) {
    const Grid grid = someGrid(2, 2);
    const std::string megabytes(8 << 20, '9');
    for (const std::string& text :
         {megabytes, "1\t" + megabytes, "1\t" + megabytes + ".", megabytes + "\t1\t2", "\"" + megabytes,
          std::string(8 << 20, ' '), std::string(1 << 20, '\0'), repeated(1 << 20, "\n"),
          repeated(1 << 20, "\t"), repeated(1 << 20, "\r\n"), repeated(1 << 20, "\n\r"),
          repeated(1 << 20, "\"\""), repeated(1001, "1\t2\n"), repeated(1 << 20, "1\n")})
        EXPECT_THROW(withRows(grid, 0, text), std::runtime_error) << text.substr(0, 10);
    EXPECT_EQ(withRows(grid, 0, "0\t" + std::string("0.") + megabytes).values[1], 1);
    EXPECT_EQ(withRows(grid, 0, repeated(1000, "1\t2\n")).rows, 1000);
}

} // namespace
