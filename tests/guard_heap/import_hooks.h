// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <span>

/// A function that modules import by this name, and what they get in its place.
struct Hook {
    const char* name;
    void* replacement;
};

/// Redirects the imports of one loaded module.
void redirectImports(HMODULE module, std::span<const Hook> hooks);
