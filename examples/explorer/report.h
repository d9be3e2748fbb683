// SPDX-License-Identifier: MIT
#pragma once

#include <string>

/// Prints a text on standard output, where the program has one.
void printText(const std::string& text);

/// Prints "explorer: MESSAGE" on standard error. A program started from the desktop has none: there the
/// message comes in a box, if the caller allows one.
void reportError(const std::string& message, bool boxAllowed);
