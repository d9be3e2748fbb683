// SPDX-License-Identifier: MIT
#include <afxwin.h>
#include <cstdio>
#include <mutex>
#include <set>
#include <string>

namespace {

/// Keeps the names that AfxRegisterWndClass gives, so that they stay valid.
LPCTSTR keptName(const char* name) {
    static std::mutex guard;
    static std::set<std::string>* names =
        new std::set<std::string>; // static objects may still ask at the end
    std::lock_guard lock(guard);
    return names->emplace(name).first->c_str();
}

} // namespace

BOOL AFXAPI AfxRegisterClass(WNDCLASS* lpWndClass) {
    WNDCLASSA existing{};
    return ::GetClassInfoA(lpWndClass->hInstance, lpWndClass->lpszClassName, &existing) ||
           ::RegisterClassA(lpWndClass) != 0;
}

LPCTSTR AFXAPI AfxRegisterWndClass(UINT nClassStyle, HCURSOR hCursor, HBRUSH hbrBackground, HICON hIcon) {
    HINSTANCE instance = AfxGetInstanceHandle();
    char name[128];
    std::snprintf(name, sizeof(name), "Afx:%p:%x:%p:%p:%p", static_cast<void*>(instance), nClassStyle,
                  static_cast<void*>(hCursor), static_cast<void*>(hbrBackground), static_cast<void*>(hIcon));
    WNDCLASSA windowClass{};
    windowClass.style = nClassStyle;
    windowClass.lpfnWndProc = ::DefWindowProcA;
    windowClass.hInstance = instance;
    windowClass.hIcon = hIcon;
    windowClass.hCursor = hCursor;
    windowClass.hbrBackground = hbrBackground;
    windowClass.lpszClassName = name;
    if (!AfxRegisterClass(&windowClass)) AfxThrowResourceException();
    return keptName(name);
}
