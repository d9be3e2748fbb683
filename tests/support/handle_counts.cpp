// SPDX-License-Identifier: MIT
#include "tests/support/handle_counts.h"

#include "vorn/opengl.h"

namespace support {

namespace {

/// An entry of the table of GDI handles that the system maps into every 64-bit process.
struct GdiHandleEntry {
    ULONG64 object;
    USHORT process, count, unique;
    UCHAR type, flags;
    ULONG64 user;
};

// NOTE: Wine's GetGuiResources always answers 0; there the counts come from the handles themselves.
int countGdi() {
    if (const DWORD count = ::GetGuiResources(::GetCurrentProcess(), GR_GDIOBJECTS))
        return static_cast<int>(count);
    static const auto getProcessBlock = reinterpret_cast<const char* (*)()>(
        reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandleA("ntdll.dll"), "RtlGetCurrentPeb")));
    const char* processBlock = getProcessBlock();
    const auto* table = *reinterpret_cast<const GdiHandleEntry* const*>(processBlock + 0xF8);
    const auto process = static_cast<USHORT>(::GetCurrentProcessId());
    int count = 0;
    for (int i = 0; i < 0x10000; i++)
        count += table[i].type != 0 && (table[i].process == 0 || table[i].process == process);
    return count;
}

bool isIcon(HANDLE handle) {
    ICONINFO info;
    if (!::GetIconInfo(static_cast<HICON>(handle), &info)) return false;
    ::DeleteObject(info.hbmMask);
    if (info.hbmColor != nullptr) ::DeleteObject(info.hbmColor);
    return true;
}

BOOL CALLBACK countWindow(HWND window, LPARAM count) {
    ++*reinterpret_cast<int*>(count);
    // Of the top-level windows only: the system itself descends to the children's children.
    if (::GetAncestor(window, GA_PARENT) == ::GetDesktopWindow())
        ::EnumChildWindows(window, countWindow, count);
    return TRUE;
}

int countUser() {
    if (const DWORD count = ::GetGuiResources(::GetCurrentProcess(), GR_USEROBJECTS))
        return static_cast<int>(count);
    int count = 0;
    ::EnumThreadWindows(::GetCurrentThreadId(), countWindow, reinterpret_cast<LPARAM>(&count));
    for (ULONG_PTR value = 0x20; value < 0x10000; value += 2) {
        const auto handle = reinterpret_cast<HANDLE>(value);
        count += ::IsMenu(static_cast<HMENU>(handle)) || isIcon(handle);
    }
    return count;
}

} // namespace

HandleCounts HandleCounts::now() {
    HandleCounts counts{countGdi(), countUser()};
    if (::wglGetCurrentContext() == nullptr) return counts;
    for (GLuint name = 1; name <= 4096; name++) {
        counts.lists += ::glIsList(name) == GL_TRUE;
        counts.textures += ::glIsTexture(name) == GL_TRUE;
    }
    return counts;
}

std::ostream& operator<<(std::ostream& stream, const HandleCounts& counts) {
    return stream << counts.gdi << " GDI, " << counts.user << " USER, " << counts.lists << " lists, "
                  << counts.textures << " textures";
}

} // namespace support
