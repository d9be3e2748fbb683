// SPDX-License-Identifier: MIT
#include "common/grid.h"

#include "tests/examples/grids.h"
#include "tests/support/temp_folder.h"

#include <cmath>
#include <gtest/gtest.h>
#include <random>

namespace {

using namespace examples;
using namespace std::string_literals;
using support::repeated;

/// A grid in one line: rows divided by "/", holes as "-".
std::string shown(const Grid& grid) {
    std::string text;
    for (int row = 0; row < grid.rows; ++row) {
        for (int column = 0; column < grid.columns; ++column) {
            char number[32] = "-";
            double value = grid.at(row, column);
            if (!std::isnan(value)) std::snprintf(number, sizeof number, "%.12g", value);
            text += (column > 0 ? " " : row > 0 ? " / " : "") + std::string(number);
        }
    }
    return text;
}

std::string joined(const std::vector<std::string>& labels) {
    std::string text;
    for (const std::string& label : labels)
        text += label + "|";
    return text;
}

TEST(Grid, ReadsTablesAsOtherProgramsWriteThem) {
    struct Case {
        const char* text;
        const char* grid;
        const char* columnLabels = "";
        const char* rowLabels = "";
    };
    const Case cases[] = {
        // Separators, line ends, blanks.
        {"1,2,3\n4,5,6\n", "1 2 3 / 4 5 6"},
        {"1;2\r\n3;4", "1 2 / 3 4"},
        {"1\t2\r3\t4\r", "1 2 / 3 4"},
        {"\xEF\xBB\xBF"
         "1, 2\n3 ,4\n",
         "1 2 / 3 4"},
        {"\n1,2\n\n  \n3,4\n\n", "1 2 / 3 4"},
        {"7", "7"},
        // Numbers and holes.
        {"-1.5e3,+.25,5.,1e-400,\"8\"", "-1500 0.25 5 0 8"},
        {",NA\nnan,2", "- - / - 2"},
        {"1\t\n\t4\n3\t", "1 - / - 4 / 3 -"},
        {"1\n\n3\n\n", "1 / - / 3"},
        // Labels.
        {"a\n1\n2", "1 / 2", "a|"},
        {"t;s,x\n1,2", "1 2", "t;s|x|"},
        {"\"a,\"\"x\"\"\";\"b\r\nc\"\n1;2\n", "1 2", "a,\"x\"|b\r\nc|"},
        {"north,1,2\nsouth,3,4", "1 2 / 3 4", "", "north|south|"},
        {"name,a,b\nnorth,1,2", "1 2", "a|b|", "north|"},
        {"\"\",\"V1\"\r\n\"1\",5\r\n\"2\",NA\r\n", "5 / -", "V1|", "1|2|"},
        {"Heights of somewhere,\n1,2\n3,4", "1 2 / 3 4", "Heights of somewhere||"},
        // Numbers as labels.
        {"lat\\lon,10,30\n36,5,6\n35,7,8", "5 6 / 7 8", "10|30|", "36|35|"},
        {"depth,10,bottom\n1,2,3", "1 2 3", "depth|10|bottom|"},
        {"t,0,1\nnorth,50,60\nsouth,52,61", "50 60 / 52 61", "0|1|", "north|south|"},
        {",0,1\n0,55,66\n1,57,68\n", "55 66 / 57 68", "0|1|", "0|1|"},
        {",2,3\n4,5,6\n7,8,9\n", "- 2 3 / 4 5 6 / 7 8 9"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.text);
        Grid grid;
        ASSERT_NO_THROW(grid = parseGrid(c.text, "test"));
        EXPECT_EQ(shown(grid), c.grid);
        EXPECT_EQ(joined(grid.columnLabels), c.columnLabels);
        EXPECT_EQ(joined(grid.rowLabels), c.rowLabels);
    }
}

TEST(Grid, NamesThePlaceOfAFault) {
    struct Case {
        std::string text;
        int line, column;
        const char* reason;
    };
    const Case cases[] = {
        {"", 0, 0, "no numbers"},
        {"a,b\n", 1, 0, "no numbers"},
        {"1,2\n3\n", 2, 2, "ends after 1 cells, the first row has 2"},
        {"1,2\n\n3,4,5\n", 3, 3, "first row has only 2"},
        {"1,2\r\n3,x\r\n5\r\n", 2, 2, "\"x\" stands where a number belongs"},
        {"1,2\nz,4\nv,w\n", 2, 1, "\"z\""},
        {"a,\"b\nc\"\n1,2\n\"p\nq\",3\nr,4\n", 4, 1, "\"p?q\""},
        {"1;2\n3;4,5\n", 2, 2, "\"4,5\""},
        {"1,1e999\n", 1, 2, "\"1e999\""},
        {"1,-inf\n", 1, 2, "\"-inf\""},
        {"1,0x10\n", 1, 2, "\"0x10\""},
        {"1,2\n3,4\0\n"s, 2, 2, "\"4?\""},
        {"1," + std::string(100, 'w'), 1, 2, "\"wwwwwwwwwwwwwwwwwwwwwwww...\""},
        {"1,2\n3,\"4\n5,6\n", 2, 2, "never closed"},
        {"1,\"2\"3\n", 1, 2, "follows a closing quote"},
        {"\xFF\xFE"
         "1\0,\0"s,
         1, 1, "UTF-16"},
        {repeated(1000, "1,") + "1\n", 1, 1001, "more than 1000 columns"},
        {std::string(3'000'000, ','), 1, 1002, "more than 1000 columns"},
        {repeated(1001, "1,2\n"), 1001, 0, "more than 1000 rows"},
        {"1\n" + std::string(2000, '\n') + "1\n", 2002, 0, "more than 1000 rows"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.text.substr(0, 40));
        try {
            parseGrid(c.text, "test");
            ADD_FAILURE() << "was read";
        } catch (const GridError& error) {
            EXPECT_EQ(error.line(), c.line);
            EXPECT_EQ(error.column(), c.column);
            EXPECT_NE(std::string(error.what()).find(c.reason), std::string::npos) << error.what();
        }
    }
}

TEST(Grid, ReadsTheLargestFileWithItsLabels) {
    std::string text = "y\\x";
    for (int cell = 0; cell < 1001 * 1001 - 1; ++cell) {
        int row = (cell + 1) / 1001, column = (cell + 1) % 1001;
        text += (column > 0 ? "," : "\n") + std::to_string(row * 1000 + column) + ".5";
    }
    support::TempFolder folder;
    Grid grid = readGrid(folder.write("large grid.csv", text));
    ASSERT_EQ(grid.values.size(), 1000u * 1000);
    EXPECT_EQ(grid.at(998, 997), 999998.5);
    EXPECT_EQ(grid.columnLabels.back() + " " + grid.rowLabels.back(), "1000.5 1000000.5");
}

TEST(Grid, TakesOrRefusesWhateverBytesItGets) {
    std::mt19937 random(11);
    const std::string pieces[] = {"\"",  ",",     ";",    "\t", "\n",   "\r",
                                  "\0"s, "1e999", "nan(", "-",  "\xFF", "\xEF\xBB\xBF"};
    int read = 0;
    for (int round = 0; round < 20000; ++round) {
        std::string text = "x,\"a \"\"b\",c\nr1,1.5,NA\n\"r2\",-2e3,\nr3,4,5\r\n";
        for (unsigned edits = random() % 6; edits > 0; --edits)
            text.insert(random() % (text.size() + 1), pieces[random() % std::size(pieces)]);
        if (random() % 3 == 0) text.resize(random() % text.size());
        try {
            Grid grid = parseGrid(text, "test");
            ++read;
            ASSERT_EQ(grid.values.size(), static_cast<std::size_t>(grid.rows) * grid.columns);
            for (double value : grid.values)
                ASSERT_FALSE(std::isinf(value));
        } catch (const GridError&) {
        }
    }
    EXPECT_GT(read, 1000);
}

} // namespace
