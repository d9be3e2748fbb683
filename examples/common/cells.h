// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace examples {

/// One cell of a separated-values file.
struct Cell {
    enum class Kind { number, hole, text };

    Kind kind = Kind::hole;
    double value = 0; ///< the finite number of a number cell, NaN for all others
    std::string_view
        text;       ///< without blanks around it, without its quotes (doubled quotes inside stay doubled)
    int line = 0;   ///< where it begins, from 1
    int column = 0; ///< its place in its row, from 1
    bool lastInRow = false;
};

/// Walks over the cells of a text, row by row. Rows end with LF, CR or CRLF; a quoted cell may hold any of
/// these. Nothing is copied: the text must live as long as the cells.
class CellReader {
public:
    explicit CellReader(std::string_view text, char separator)
        : m_next(text.data()), m_end(text.data() + text.size()), m_separator(separator) {}

    /// Reads the next cell; false at the end of the text. An empty line is one row with one blank cell.
    /// @throws std::runtime_error for a quote that never ends or is followed by text; `cell` then says where.
    bool next(Cell& cell);

private:
    bool atRowEnd(const char* p) const { return p == m_end || *p == '\n' || *p == '\r'; }
    bool atCellEnd(const char* p) const { return atRowEnd(p) || *p == m_separator; }
    const char* skipBlanks(const char* p) const;
    const char* readQuoted(const char* p, Cell& cell);
    const char* readPlain(const char* p, Cell& cell) const;
    void finish(const char* p, Cell& cell);

    const char* m_next;
    const char* m_end;
    char m_separator;
    int m_line = 1;
    int m_column = 1;
    bool m_rowOpen = false;
};

/// The separator (tab, semicolon or comma) that divides the first two rows alike; comma when there is none.
char findSeparator(std::string_view text);

/// A cell's text as a label: doubled quotes made single.
std::string labelOf(const Cell& cell);

/// A cell's text as it can stand in a one-line message: quoted, cut short, without control characters.
std::string excerpt(const Cell& cell);

} // namespace examples
