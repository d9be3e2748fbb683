// SPDX-License-Identifier: MIT
#include "cells.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <stdexcept>

namespace examples {

namespace {

constexpr double hole = std::numeric_limits<double>::quiet_NaN();

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

/// Whether a number begins here; keeps words that from_chars would take ("inf", "nan(1)") out.
bool beginsNumber(const char* p, const char* end) {
    if (p != end && (*p == '-' || *p == '+')) ++p;
    if (p != end && *p == '.') ++p;
    return p != end && isDigit(*p);
}

/// Reads a number at p. Returns the end of it, or null when there is none or it is too large for a double.
const char* readNumber(const char* p, const char* end, double& value) {
    if (!beginsNumber(p, end)) return nullptr;
    if (*p == '+') ++p;
    auto [stop, error] = std::from_chars(p, end, value);
    if (error == std::errc::result_out_of_range) {
        // from_chars does not tell too large from too small; what is too small counts as 0.
        value = std::strtod(std::string(p, stop).c_str(), nullptr);
        if (std::isinf(value)) return nullptr;
    } else if (error != std::errc()) {
        return nullptr;
    }
    return stop;
}

bool isHoleWord(std::string_view text) {
    auto equals = [text](std::string_view word) {
        return std::equal(text.begin(), text.end(), word.begin(), word.end(), [](char a, char b) {
            return a == b || (a >= 'A' && a <= 'Z' && a - 'A' + 'a' == b);
        });
    };
    return text.empty() || equals("nan") || equals("na");
}

void classify(Cell& cell) {
    const char* begin = cell.text.data();
    const char* end = begin + cell.text.size();
    if (isHoleWord(cell.text)) {
        cell.kind = Cell::Kind::hole;
    } else if (readNumber(begin, end, cell.value) == end) {
        cell.kind = Cell::Kind::number;
        return;
    } else {
        cell.kind = Cell::Kind::text;
    }
    cell.value = hole;
}

std::string_view trimmed(const char* begin, const char* end) {
    while (begin != end && (*begin == ' ' || *begin == '\t'))
        ++begin;
    while (begin != end && (end[-1] == ' ' || end[-1] == '\t'))
        --end;
    return {begin, static_cast<std::size_t>(end - begin)};
}

} // namespace

bool CellReader::next(Cell& cell) {
    if (m_next == m_end && !m_rowOpen) return false;
    cell.line = m_line;
    cell.column = m_column;
    const char* p = skipBlanks(m_next);
    // The usual cell, a bare number, is read without looking for its end first.
    if (const char* stop = readNumber(p, m_end, cell.value); stop != nullptr && atCellEnd(stop)) {
        cell.kind = Cell::Kind::number;
        cell.text = {p, static_cast<std::size_t>(stop - p)};
        p = stop;
    } else if (p != m_end && *p == '"') {
        p = readQuoted(p, cell);
    } else {
        p = readPlain(p, cell);
    }
    finish(p, cell);
    return true;
}

const char* CellReader::skipBlanks(const char* p) const {
    while (p != m_end && (*p == ' ' || *p == '\t') && *p != m_separator)
        ++p;
    return p;
}

const char* CellReader::readPlain(const char* p, Cell& cell) const {
    const char* begin = p;
    while (!atCellEnd(p))
        ++p;
    cell.text = trimmed(begin, p);
    classify(cell);
    return p;
}

const char* CellReader::readQuoted(const char* p, Cell& cell) {
    const char* begin = ++p;
    for (;; ++p) {
        if (p == m_end) throw std::runtime_error("a quote is opened and never closed");
        if (*p == '"') {
            if (p + 1 == m_end || p[1] != '"') break;
            ++p;
        } else if (*p == '\n' || (*p == '\r' && (p + 1 == m_end || p[1] != '\n'))) {
            ++m_line;
        }
    }
    cell.text = trimmed(begin, p);
    classify(cell);
    p = skipBlanks(p + 1);
    if (!atCellEnd(p)) throw std::runtime_error("text follows a closing quote");
    return p;
}

/// Steps over the separator or line end at p.
void CellReader::finish(const char* p, Cell& cell) {
    cell.lastInRow = atRowEnd(p);
    m_rowOpen = !cell.lastInRow; // a separator that ends the text still has a blank cell behind it
    if (m_rowOpen) {
        m_next = p + 1;
        ++m_column;
        return;
    }
    if (p != m_end && *p == '\r' && p + 1 != m_end && p[1] == '\n') ++p;
    m_next = p == m_end ? p : p + 1;
    ++m_line;
    m_column = 1;
}

char findSeparator(std::string_view text) {
    constexpr std::array<char, 3> candidates = {'\t', ';', ','};
    std::array<std::array<int, 3>, 2> counts = {};
    std::size_t row = 0;
    bool quoted = false, blank = true;
    for (char c : text) {
        if (c == '"') quoted = !quoted;
        if (quoted) continue;
        if (c == '\n' || c == '\r') {
            if (!blank && ++row == counts.size()) break;
            blank = true;
            continue;
        }
        blank = false;
        for (std::size_t i = 0; i < candidates.size(); ++i)
            counts[row][i] += c == candidates[i];
    }
    for (std::size_t i = 0; i < candidates.size(); ++i) {
        if (counts[0][i] > 0 && counts[0][i] == counts[1][i]) return candidates[i];
    }
    auto most = std::max_element(counts[0].begin(), counts[0].end());
    return *most > 0 ? candidates[most - counts[0].begin()] : ',';
}

std::string labelOf(const Cell& cell) {
    std::string label;
    for (std::size_t i = 0; i < cell.text.size(); ++i) {
        label += cell.text[i];
        if (cell.text[i] == '"' && i + 1 < cell.text.size() && cell.text[i + 1] == '"') ++i;
    }
    return label;
}

std::string excerpt(const Cell& cell) {
    constexpr std::size_t longest = 24;
    std::size_t length = std::min(cell.text.size(), longest);
    // Not inside a UTF-8 character.
    while (length < cell.text.size() && length > longest - 4 && (cell.text[length] & 0xC0) == 0x80)
        --length;
    std::string excerpt = "\"";
    for (char c : cell.text.substr(0, length))
        excerpt += static_cast<unsigned char>(c) < ' ' || c == 0x7f ? '?' : c;
    return excerpt + (length < cell.text.size() ? "...\"" : "\"");
}

} // namespace examples
