// SPDX-License-Identifier: MIT
#pragma once

#include <afxwin.h>
#include <cfloat>
#include <concepts>
#include <initializer_list>

namespace vornafx {

/// What the user is told when a value is refused.
enum class Prompt { integer, positiveInteger, byte, number, integerRange, numberRange, length };

/// Shows the prompt with %1, %2 replaced, and ends the exchange.
[[noreturn]] void refuse(CDataExchange& exchange, Prompt prompt, std::initializer_list<CString> insertions);

CString numberText(long long value);
/// As many digits as the type holds for certain.
CString numberText(double value, int digits);

template <std::integral Integer>
CString numberText(Integer value) {
    return numberText(static_cast<long long>(value));
}
inline CString numberText(float value) {
    return numberText(value, FLT_DIG);
}
inline CString numberText(double value) {
    return numberText(value, DBL_DIG);
}

} // namespace vornafx
