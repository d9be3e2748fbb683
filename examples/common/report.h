// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace examples {

/// Prints a text on standard output, where the program has one.
void printText(const std::string& text);

/// Prints "PROGRAM: MESSAGE" on standard error. A program started from the desktop has none: there the
/// message comes in a box, if the caller allows one.
void reportError(const std::string& program, const std::string& message, bool boxAllowed);

} // namespace examples
