// SPDX-License-Identifier: MIT
#pragma once

#include <afxwin.h>
#include <oaidl.h>
#include <string>
#include <string_view>

/// Text as the overlays' cells hold it. Lengths are explicit throughout: a text may contain NUL characters.
namespace vorn::detail {

inline std::string_view viewOf(const CString& text) {
    return {text.GetString(), static_cast<std::size_t>(text.GetLength())};
}

/// Makes the value a string of the text; an empty value when memory fails.
void assignText(VARIANT& value, std::string_view text);

/// The value as text, by the variant's own conversion; empty where there is none. The result may lie in the
/// buffer, and is good until the next use of it.
std::string_view textOf(const VARIANT& value, std::string& buffer);

/// The value as a number, by the variant's own conversion; 0 where there is none.
COLORREF colourOf(const VARIANT& value);

} // namespace vorn::detail
