// SPDX-License-Identifier: MIT
#include "report.h"

#include <windows.h>

namespace examples {

namespace {

/// Writes to a standard handle, or to the console that the program was started from. False when there is
/// neither.
bool write(DWORD standardHandle, const std::string& text) {
    DWORD written = 0;
    HANDLE handle = ::GetStdHandle(standardHandle);
    if (handle != nullptr && handle != INVALID_HANDLE_VALUE)
        return ::WriteFile(handle, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
    // A program without a console of its own does not inherit its parent's by itself.
    if (!::AttachConsole(ATTACH_PARENT_PROCESS)) return false;
    handle = ::CreateFileA("CONOUT$", GENERIC_WRITE, FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr);
    if (handle == INVALID_HANDLE_VALUE) return false;
    bool done = ::WriteFile(handle, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
    ::CloseHandle(handle);
    ::FreeConsole();
    return done;
}

} // namespace

void printText(const std::string& text) {
    write(STD_OUTPUT_HANDLE, text);
}

void reportError(const std::string& program, const std::string& message, bool boxAllowed) {
    if (!write(STD_ERROR_HANDLE, program + ": " + message + "\n") && boxAllowed)
        ::MessageBoxA(nullptr, message.c_str(), program.c_str(), MB_OK | MB_ICONERROR);
}

} // namespace examples
