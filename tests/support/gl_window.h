// SPDX-License-Identifier: MIT
#pragma once

#include "vorn/opengl.h"

#include <vector>

namespace support {

/// A top-level window with a double-buffered WGL context of its own, made current for the object's life.
/// Throws std::runtime_error where the platform has no GL driver: a test without one would check nothing.
class GlWindow {
public:
    /// The size is that of the client area, in pixels.
    explicit GlWindow(int width = 200, int height = 150, bool isVisible = false);
    ~GlWindow();
    GlWindow(const GlWindow&) = delete;
    GlWindow& operator=(const GlWindow&) = delete;

    HWND window() const { return m_window; }
    HDC dc() const { return m_dc; }
    int width() const { return m_width; }
    int height() const { return m_height; }
    void makeCurrent() const;

private:
    HWND m_window = nullptr;
    HDC m_dc = nullptr;
    HGLRC m_context = nullptr;
    int m_width;
    int m_height;
};

/// The colour at a pixel of the current context's read buffer, counted from the lower left corner.
COLORREF pixelAt(int x, int y);

/// A rectangle of such pixels, row by row upwards.
std::vector<COLORREF> pixelsIn(int x, int y, int width, int height);

} // namespace support
