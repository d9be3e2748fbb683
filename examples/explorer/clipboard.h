// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

#include <windows.h>

/// Puts a text on the clipboard in place of what is there. False when the system refuses.
bool copyText(HWND owner, const std::string& text);

/// The text on the clipboard, up to its first NUL; nothing when there is none.
std::optional<std::string> clipboardText(HWND owner);
