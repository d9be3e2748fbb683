// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <afx.h>

#include <ostream>
#include <string>
#include <string_view>

/// The characters of a string, embedded nulls included, for comparing and printing.
inline std::string text(const CString& string) {
    return {string.GetString(), static_cast<size_t>(string.GetLength())};
}

inline void PrintTo(const CString& string, std::ostream* stream) {
    *stream << testing::PrintToString(text(string));
}

/// Runs an operation and returns the cause with which it threw an `Exception`, -1 when it did not throw.
template <typename Exception, typename Operation>
int causeOf(Operation operation) {
    try {
        operation();
    } catch (Exception* e) {
        const int cause = e->m_cause;
        e->Delete();
        return cause;
    }
    return -1;
}

template <typename Exception, typename Operation>
bool throws(Operation operation) {
    try {
        operation();
    } catch (Exception* e) {
        e->Delete();
        return true;
    }
    return false;
}
