// SPDX-License-Identifier: MIT
#pragma once

#include <cstdlib>
#include <memory>
#include <type_traits>
#include <utility>
#include <windows.h>

/// Owners for the platform's handles, for use inside sources: one template, one line a kind.
namespace vorn::detail {

/// Owns one handle and gives it back with `Release` when it ends. Movable, not copyable.
template <typename Handle, auto Release>
class UniqueHandle {
public:
    UniqueHandle() = default;
    explicit UniqueHandle(Handle handle) : m_handle(handle) {}
    UniqueHandle(UniqueHandle&& other) noexcept : m_handle(other.release()) {}
    UniqueHandle& operator=(UniqueHandle&& other) noexcept {
        reset(other.release());
        return *this;
    }
    ~UniqueHandle() { reset(); }

    Handle get() const { return m_handle; }
    explicit operator bool() const { return m_handle != nullptr; }
    Handle release() { return std::exchange(m_handle, nullptr); }
    void reset(Handle handle = nullptr) {
        Handle old = std::exchange(m_handle, handle);
        if (old != nullptr) Release(old);
    }

private:
    Handle m_handle = nullptr;
};

// Functions, not lambdas: a lambda would give the owner another type in every source.
inline void deleteObject(HGDIOBJ object) {
    ::DeleteObject(object);
}
inline void deleteDC(HDC dc) {
    ::DeleteDC(dc);
}
inline void freeGlobal(HGLOBAL block) {
    ::GlobalFree(block);
}
inline void deleteEnhMetaFile(HENHMETAFILE metafile) {
    ::DeleteEnhMetaFile(metafile);
}

using UniqueBitmap = UniqueHandle<HBITMAP, deleteObject>;
using UniqueBrush = UniqueHandle<HBRUSH, deleteObject>;
using UniqueFont = UniqueHandle<HFONT, deleteObject>;
using UniquePalette = UniqueHandle<HPALETTE, deleteObject>;
using UniqueMemoryDC = UniqueHandle<HDC, deleteDC>;
using UniqueGlobal = UniqueHandle<HGLOBAL, freeGlobal>;
using UniqueEnhMetaFile = UniqueHandle<HENHMETAFILE, deleteEnhMetaFile>;

/// The DC of a window (of the whole screen for null), released with the window that it came from.
class WindowDC {
public:
    explicit WindowDC(HWND window = nullptr) : m_window(window), m_dc(::GetDC(window)) {}
    ~WindowDC() {
        if (m_dc != nullptr) ::ReleaseDC(m_window, m_dc);
    }
    WindowDC(const WindowDC&) = delete;
    WindowDC& operator=(const WindowDC&) = delete;

    HDC get() const { return m_dc; }
    explicit operator bool() const { return m_dc != nullptr; }

private:
    HWND m_window;
    HDC m_dc;
};

/// Selects an object into a DC and puts the old one back at the end of the scope.
class SelectedObject {
public:
    SelectedObject(HDC dc, HGDIOBJ object) : m_dc(dc), m_old(::SelectObject(dc, object)) {}
    ~SelectedObject() {
        if (m_old != nullptr) ::SelectObject(m_dc, m_old);
    }
    SelectedObject(const SelectedObject&) = delete;
    SelectedObject& operator=(const SelectedObject&) = delete;

    explicit operator bool() const { return m_old != nullptr; }

private:
    HDC m_dc;
    HGDIOBJ m_old;
};

/// Selects and realises a palette into a DC for the length of the scope; a null palette changes nothing.
class SelectedPalette {
public:
    SelectedPalette(HDC dc, HPALETTE palette, BOOL forceBackground = FALSE) : m_dc(dc) {
        if (palette == nullptr) return;
        m_old = ::SelectPalette(dc, palette, forceBackground);
        const UINT realised = ::RealizePalette(dc);
        if (realised != GDI_ERROR) m_realised = realised;
    }
    ~SelectedPalette() {
        if (m_old != nullptr) ::SelectPalette(m_dc, m_old, FALSE);
    }
    SelectedPalette(const SelectedPalette&) = delete;
    SelectedPalette& operator=(const SelectedPalette&) = delete;

    /// How many entries realising the palette changed.
    UINT realised() const { return m_realised; }

private:
    HDC m_dc;
    HPALETTE m_old = nullptr;
    UINT m_realised = 0;
};

/// Memory from the C heap, for buffers whose interface says that they are freed there.
struct FreeDeleter {
    void operator()(void* block) const { std::free(block); }
};
template <typename T>
using MallocPtr = std::unique_ptr<T, FreeDeleter>;

} // namespace vorn::detail
