// SPDX-License-Identifier: MIT
#include "vorn/overlays/detail/text.h"
#include "vorn/overlays/spread.h"

#include <algorithm>

namespace detail = vorn::detail;

namespace {

bool isSeparator(char c) {
    return c == '\t' || c == '\r' || c == '\n';
}

/// The length of the separator that the text begins with: a line break of two different characters counts as
/// one.
std::size_t separatorLength(std::string_view text) {
    const bool pair =
        text.size() > 1 && text[0] != '\t' && (text[1] == '\r' || text[1] == '\n') && text[0] != text[1];
    return pair ? 2 : 1;
}

/// Takes the cells off a table one by one.
class TableReader {
public:
    explicit TableReader(std::string_view text) : m_rest(text) {}

    int line() const { return m_line; }
    int column() const { return m_column; }
    /// The text from the cell that stands at (line, column) on.
    std::string_view cell() const { return m_rest.substr(0, m_length); }

    /// Finds the end of the cell; false when the text ends with it.
    bool findSeparator() {
        m_length = static_cast<std::size_t>(std::ranges::find_if(m_rest, isSeparator) - m_rest.begin());
        return m_length < m_rest.size();
    }

    /// Goes to the cell behind the separator that was found.
    void advance() {
        if (m_rest[m_length] == '\t') {
            ++m_column;
        } else {
            ++m_line;
            m_column = 0;
        }
        m_rest.remove_prefix(m_length + separatorLength(m_rest.substr(m_length)));
    }

private:
    std::string_view m_rest;
    std::size_t m_length = 0;
    int m_line = 0;
    int m_column = 0;
};

} // namespace

void CvornSpread::Paste(const CString& text, int grow) {
    if (grow) {
        int lines = 1;
        int cells = 1;
        TableReader reader(detail::viewOf(text));
        while (reader.findSeparator()) {
            reader.advance();
            lines = reader.line() + 1;
            cells = std::max(cells, reader.column() + 1);
        }
        SetMaxSize(std::max(lines, m_nRows), std::max(cells, m_nCols));
    }

    TableReader reader(detail::viewOf(text));
    while (reader.line() < m_nRows) {
        const bool more = reader.findSeparator();
        // An empty end of the text is no cell, while an empty cell before a separator is one.
        if ((more || !reader.cell().empty()) && reader.column() < m_nCols)
            detail::assignText(m_pCells[GetCellIndex(reader.line(), reader.column())].m_value, reader.cell());
        if (!more) break;
        reader.advance();
    }
}
