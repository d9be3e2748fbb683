// SPDX-License-Identifier: MIT
// window_check PROGRAM TITLE: starts the program, waits until its window of that title shows a picture of
// more than one colour, closes the window, and returns 0 when the program then ends with 0.
#include <windows.h>

#include <cstdio>
#include <set>
#include <string>

namespace {

constexpr int minColours = 4; // a drawn scene: its background and at least three more
constexpr DWORD patience = 30000;

struct Search {
    DWORD process;
    const char* title;
    HWND window = nullptr;
};

BOOL CALLBACK findWindow(HWND window, LPARAM parameter) {
    Search& search = *reinterpret_cast<Search*>(parameter);
    DWORD process = 0;
    char title[256] = "";
    ::GetWindowThreadProcessId(window, &process);
    ::GetWindowTextA(window, title, sizeof title);
    if (process != search.process || std::string(title) != search.title || !::IsWindowVisible(window))
        return TRUE;
    search.window = window;
    return FALSE;
}

/// How many colours the client area shows on the screen.
std::size_t countColours(HWND window) {
    RECT client;
    if (!::GetClientRect(window, &client) || client.right < 1 || client.bottom < 1) return 0;
    HDC screen = ::GetDC(window), memory = ::CreateCompatibleDC(screen);
    BITMAPINFO info = {{sizeof(BITMAPINFOHEADER), client.right, client.bottom, 1, 32, BI_RGB, 0, 0, 0, 0, 0},
                       {}};
    void* bits = nullptr;
    HBITMAP bitmap = ::CreateDIBSection(screen, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    HGDIOBJ old = ::SelectObject(memory, bitmap);
    std::set<DWORD> colours;
    if (bits != nullptr && ::BitBlt(memory, 0, 0, client.right, client.bottom, screen, 0, 0, SRCCOPY)) {
        ::GdiFlush();
        const DWORD* pixels = static_cast<const DWORD*>(bits);
        for (LONG i = 0; i < client.right * client.bottom; i++)
            colours.insert(pixels[i] & 0xFFFFFF);
    }
    ::SelectObject(memory, old);
    ::DeleteObject(bitmap);
    ::DeleteDC(memory);
    ::ReleaseDC(window, screen);
    return colours.size();
}

/// Whether the program drew, was closed, and ended well.
bool watch(const PROCESS_INFORMATION& program, const char* title) {
    Search search{program.dwProcessId, title};
    std::size_t colours = 0;
    DWORD begin = ::GetTickCount();
    while (colours < minColours && ::GetTickCount() - begin < patience &&
           ::WaitForSingleObject(program.hProcess, 100) == WAIT_TIMEOUT) {
        ::EnumWindows(&findWindow, reinterpret_cast<LPARAM>(&search));
        if (search.window != nullptr) colours = countColours(search.window);
    }
    std::printf("window %s, %u colours\n", search.window != nullptr ? "found" : "not found",
                static_cast<unsigned>(colours));
    if (search.window != nullptr) ::PostMessageA(search.window, WM_CLOSE, 0, 0);
    bool ended = ::WaitForSingleObject(program.hProcess, patience) == WAIT_OBJECT_0;
    if (!ended) ::TerminateProcess(program.hProcess, 1);
    DWORD status = 1;
    ::GetExitCodeProcess(program.hProcess, &status);
    std::printf("%s with status %lu\n", ended ? "ended" : "did not end", status);
    return colours >= minColours && ended && status == 0;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3) return 2;
    STARTUPINFOA startup = {};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION program = {};
    std::string command = '"' + std::string(argv[1]) + '"';
    if (!::CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                          &program)) {
        std::printf("%s does not start: error %lu\n", argv[1], ::GetLastError());
        return 1;
    }
    bool drew = watch(program, argv[2]);
    ::CloseHandle(program.hThread);
    ::CloseHandle(program.hProcess);
    return drew ? 0 : 1;
}
