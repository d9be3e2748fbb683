// SPDX-License-Identifier: MIT
#include "vorn/overlays/font_lists.h"

#include "vorn/opengl.h"

namespace {

constexpr int characterCount = 256;

/// Whether a character has no pixels; its metrics then hold the advance.
bool isBlank(HDC hdc, UINT character, GLYPHMETRICS& metrics) {
    const MAT2 identity = {{0, 1}, {0, 0}, {0, 0}, {0, 1}};
    return ::GetGlyphOutlineA(hdc, character, GGO_BITMAP, &metrics, 0, nullptr, &identity) == 0;
}

} // namespace

int vornUseFontBitmaps(HDC hdc, int listBase) {
    if (!::wglUseFontBitmapsA(hdc, 0, characterCount, static_cast<DWORD>(listBase))) return 0;

    for (int character = 0; character < characterCount; ++character) {
        GLYPHMETRICS metrics;
        if (!isBlank(hdc, static_cast<UINT>(character), metrics)) continue;
        // NOTE: compiled without any pixels, Mesa refuses the bitmap and the character would not advance.
        const GLubyte noPixels[4] = {};
        ::glNewList(static_cast<GLuint>(listBase + character), GL_COMPILE);
        ::glBitmap(1, 1, 0, 0, metrics.gmCellIncX, metrics.gmCellIncY, noPixels);
        ::glEndList();
    }
    while (::glGetError() != GL_NO_ERROR) // of the lists that were refused
        continue;
    return 1;
}
