// SPDX-License-Identifier: MIT
#include "grid.h"

#include "cells.h"
#include "headers.h"
#include "text_file.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace examples {

namespace {

constexpr double hole = std::numeric_limits<double>::quiet_NaN();
constexpr int maxCells = Grid::maxSide + 1; // a header row or column comes on top

std::string located(const std::string& file, int line, int column, const std::string& reason) {
    std::string place = file;
    if (line > 0) place += ", line " + std::to_string(line);
    if (column > 0) place += ", column " + std::to_string(column);
    return place + ": " + reason;
}

/// Reads the rows into a raw table, then parts the headers from the numbers.
class GridParser {
public:
    GridParser(std::string_view text, const std::string& file)
        : m_file(file), m_text(text), m_reader(text, findSeparator(text)) {}

    Grid parse();

private:
    void readFirstRow();
    void readOtherRows();
    void addCell(const Cell& cell, int column);
    void addFirstCell(const Cell& cell);
    void addBlankRows();
    bool nextCell();
    bool isBlankLine() const { return m_cell.lastInRow && m_cell.column == 1 && m_cell.text.empty(); }
    Grid withoutHeaders(const Headers& headers);
    [[noreturn]] void fail(const Cell& cell, const std::string& reason) const {
        throw GridError(m_file, cell.line, cell.column, reason);
    }
    [[noreturn]] void failAsText(const Cell& cell) const {
        fail(cell, excerpt(cell) + " stands where a number belongs");
    }

    const std::string& m_file;
    std::string_view m_text;
    CellReader m_reader;
    Cell m_cell;
    RawTable m_table;
    bool m_headersAllowed = false;
    int m_blankRows = 0;
    int m_lastLine = 0;
};

Grid GridParser::parse() {
    readFirstRow();
    readOtherRows();
    Headers headers = findHeaders(m_table);
    auto check = [&](const Cell& cell, bool inHeader) {
        if (cell.kind == Cell::Kind::text && !inHeader) failAsText(cell);
    };
    for (const Cell& cell : m_table.firstRow)
        check(cell, headers.row || (headers.column && cell.column == 1));
    for (const Cell& cell : m_table.firstColumn)
        check(cell, headers.column || (headers.row && cell.line == m_table.firstRow.front().line));
    return withoutHeaders(headers);
}

bool GridParser::nextCell() {
    try {
        return m_reader.next(m_cell);
    } catch (const std::runtime_error& error) {
        fail(m_cell, error.what());
    }
}

void GridParser::readFirstRow() {
    bool more = nextCell();
    while (more && isBlankLine())
        more = nextCell();
    if (!more) throw GridError(m_file, 0, 0, "holds no numbers");
    for (;; nextCell()) {
        if (m_cell.column > maxCells) fail(m_cell, "the row has more than 1000 columns");
        m_table.firstRow.push_back(m_cell);
        m_table.values.push_back(m_cell.value);
        if (m_cell.lastInRow) break;
    }
    m_headersAllowed = allowsHeaders(m_table.firstRow.front());
    for (const Cell& cell : m_table.firstRow) {
        if (cell.kind == Cell::Kind::text && !m_headersAllowed) failAsText(cell);
    }
    m_table.columns = static_cast<int>(m_table.firstRow.size());
    m_table.firstColumn.push_back(m_table.firstRow.front());
    m_table.rows = 1;
    m_lastLine = m_cell.line;
    // A cell takes at least two bytes: room for what can come, and no more.
    m_table.values.reserve(std::min<std::size_t>(m_text.size() / 2 + m_table.columns + 1,
                                                 static_cast<std::size_t>(m_table.columns) * maxCells));
}

void GridParser::readOtherRows() {
    while (nextCell()) {
        if (isBlankLine()) {
            ++m_blankRows;
            continue;
        }
        addBlankRows();
        if (m_table.rows == maxCells)
            throw GridError(m_file, m_cell.line, 0, "there are more than 1000 rows");
        addFirstCell(m_cell);
        int column = 1;
        for (; !m_cell.lastInRow; ++column) {
            nextCell();
            addCell(m_cell, column);
        }
        if (column != m_table.columns) {
            throw GridError(m_file, m_cell.line, column + 1,
                            "the row ends after " + std::to_string(column) + " cells, the first row has " +
                                std::to_string(m_table.columns));
        }
        m_lastLine = m_cell.line;
        ++m_table.rows;
    }
}

void GridParser::addCell(const Cell& cell, int column) {
    if (column >= m_table.columns)
        fail(cell, "the row goes on, the first row has only " + std::to_string(m_table.columns) + " cells");
    if (cell.kind == Cell::Kind::text) failAsText(cell);
    m_table.values.push_back(cell.value);
}

/// The first cell of a row may be a label; whether all in its column are is seen at the end.
void GridParser::addFirstCell(const Cell& cell) {
    if (cell.kind == Cell::Kind::text && !m_headersAllowed) failAsText(cell);
    m_table.firstColumn.push_back(cell);
    m_table.values.push_back(cell.value);
}

/// Empty lines are no rows, except between the numbers of a single column, where a blank cell looks like
/// that.
void GridParser::addBlankRows() {
    int rows = std::exchange(m_blankRows, 0);
    if (m_table.columns > 1) return;
    if (rows > maxCells - m_table.rows)
        throw GridError(m_file, m_cell.line, 0, "there are more than 1000 rows");
    m_table.values.insert(m_table.values.end(), rows, hole);
    m_table.firstColumn.insert(m_table.firstColumn.end(), rows,
                               Cell{.value = hole, .text = "", .lastInRow = true});
    m_table.rows += rows;
}

Grid GridParser::withoutHeaders(const Headers& headers) {
    Grid grid;
    grid.rows = m_table.rows - headers.row;
    grid.columns = m_table.columns - headers.column;
    if (grid.rows < 1 || grid.columns < 1)
        throw GridError(m_file, m_lastLine, 0, "holds labels and no numbers");
    if (grid.rows > Grid::maxSide) throw GridError(m_file, m_lastLine, 0, "there are more than 1000 rows");
    if (grid.columns > Grid::maxSide) fail(m_table.firstRow.back(), "the row has more than 1000 columns");
    if (headers.row) {
        for (int i = headers.column; i < m_table.columns; ++i)
            grid.columnLabels.push_back(labelOf(m_table.firstRow[i]));
    }
    if (headers.row && headers.column) grid.corner = labelOf(m_table.firstRow.front());
    if (headers.column) {
        for (int i = headers.row; i < m_table.rows; ++i)
            grid.rowLabels.push_back(labelOf(m_table.firstColumn[i]));
    }
    grid.values = std::move(m_table.values);
    if (headers.row || headers.column) {
        auto out = grid.values.begin();
        for (int i = headers.row; i < m_table.rows; ++i) {
            auto row = grid.values.begin() + static_cast<std::ptrdiff_t>(i) * m_table.columns;
            out = std::copy(row + headers.column, row + m_table.columns, out);
        }
        grid.values.erase(out, grid.values.end());
    }
    return grid;
}

} // namespace

GridError::GridError(const std::string& file, int line, int column, const std::string& reason)
    : std::runtime_error(located(file, line, column, reason)), m_line(line), m_column(column) {}

Grid parseGrid(std::string_view text, const std::string& file) {
    if (text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3);
    if (text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF"))
        throw GridError(file, 1, 1, "the text is UTF-16; save it as UTF-8 or plain text");
    return GridParser(text, file).parse();
}

Grid readGrid(const std::string& file) {
    return parseGrid(readTextFile(file), file);
}

} // namespace examples
