// SPDX-License-Identifier: MIT
#pragma once

#include <vorn/vorn.h>

#include <cstddef>

constexpr GLenum arrayBuffer = 0x8892, elementArrayBuffer = 0x8893, staticDraw = 0x88E4, writeOnly = 0x88B9;

/// The entry points of OpenGL 1.5 that keep vertices in buffers. Windows' own OpenGL ends at 1.1: the driver
/// has them, or not, and they belong to the context that was current when they were loaded.
struct BufferFunctions {
    void(APIENTRY* genBuffers)(GLsizei, GLuint*) = nullptr;
    void(APIENTRY* deleteBuffers)(GLsizei, const GLuint*) = nullptr;
    void(APIENTRY* bindBuffer)(GLenum, GLuint) = nullptr;
    void(APIENTRY* bufferData)(GLenum, std::ptrdiff_t, const void*, GLenum) = nullptr;
    void*(APIENTRY* mapBuffer)(GLenum, GLenum) = nullptr;
    GLboolean(APIENTRY* unmapBuffer)(GLenum) = nullptr;

    /// Looks them up for the current context; false when one is missing.
    bool load() {
        return find(genBuffers, "glGenBuffers") && find(deleteBuffers, "glDeleteBuffers") &&
               find(bindBuffer, "glBindBuffer") && find(bufferData, "glBufferData") &&
               find(mapBuffer, "glMapBuffer") && find(unmapBuffer, "glUnmapBuffer");
    }

private:
    template <typename Function>
    static bool find(Function& function, const char* name) {
        function = reinterpret_cast<Function>(reinterpret_cast<void*>(::wglGetProcAddress(name)));
        return function != nullptr;
    }
};
