// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

namespace vornafx {

/// A function of the library of common dialogs; null when there is none. The library is loaded when it is
/// first needed: the common controls come with it, and both together would take 20 ms of every program's
/// start under Wine.
template <typename Function>
Function* commonDialogFunction(const char* name) {
    static const HMODULE library = ::LoadLibraryExA("comdlg32.dll", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
    if (library == nullptr) return nullptr;
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(::GetProcAddress(library, name)));
}

} // namespace vornafx
