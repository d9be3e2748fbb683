// SPDX-License-Identifier: MIT
#pragma once

#include <afxwin.h>

namespace vorn::detail {

enum class FileDialog { Open, Save };

/// The name itself; when it is null or empty what the user chooses in a file dialog, empty after a cancel.
/// The filter is in the framework's form, pairs of text and patterns separated by '|'.
CString givenOrChosenName(const char* name, FileDialog kind, const char* filter);

} // namespace vorn::detail
