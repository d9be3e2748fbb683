// SPDX-License-Identifier: MIT
#include "tests/support/gl_window.h"

#include <stdexcept>

namespace support {

GlWindow::GlWindow(int width, int height, bool isVisible) : m_width(width), m_height(height) {
    m_window = ::CreateWindowExA(0, "STATIC", "GL test", WS_POPUP, 0, 0, width, height, nullptr, nullptr,
                                 nullptr, nullptr);
    if (isVisible) ::ShowWindow(m_window, SW_SHOWNA);
    m_dc = ::GetDC(m_window);

    PIXELFORMATDESCRIPTOR format = {};
    format.nSize = sizeof format;
    format.nVersion = 1;
    format.dwFlags = PFD_DRAW_TO_WINDOW | PFD_SUPPORT_OPENGL | PFD_DOUBLEBUFFER;
    format.cColorBits = 24;
    format.cDepthBits = 24;
    format.cStencilBits = 8;
    ::SetPixelFormat(m_dc, ::ChoosePixelFormat(m_dc, &format), &format);
    m_context = ::wglCreateContext(m_dc);
    makeCurrent();

    const auto* renderer = reinterpret_cast<const char*>(::glGetString(GL_RENDERER));
    if (renderer == nullptr || *renderer == '\0') throw std::runtime_error("there is no OpenGL renderer");
}

GlWindow::~GlWindow() {
    if (::wglGetCurrentContext() == m_context) ::wglMakeCurrent(nullptr, nullptr);
    ::wglDeleteContext(m_context);
    ::ReleaseDC(m_window, m_dc);
    ::DestroyWindow(m_window);
}

void GlWindow::makeCurrent() const {
    ::wglMakeCurrent(m_dc, m_context);
}

COLORREF pixelAt(int x, int y) {
    return pixelsIn(x, y, 1, 1).front();
}

std::vector<COLORREF> pixelsIn(int x, int y, int width, int height) {
    std::vector<COLORREF> pixels(static_cast<std::size_t>(width) * height);
    ::glReadPixels(x, y, width, height, GL_RGBA, GL_UNSIGNED_BYTE, pixels.data());
    for (COLORREF& pixel : pixels)
        pixel &= 0xFFFFFF;
    return pixels;
}

} // namespace support
