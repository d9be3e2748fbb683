// SPDX-License-Identifier: MIT
#pragma once

#include "vorn/opengl.h"
#include "vorn/view/mapping.h"

#include <afxwin.h>
#include <string_view>

/// What the overlays draw with: window points turned into scene points, and the lists that keep them.
namespace vorn::detail {

/// A rectangle in GL window pixels, y upwards.
struct WindowBox {
    double left, bottom, right, top;
};

/// A client rectangle, y downwards, in a view of the given height.
inline WindowBox windowBox(const RECT& client, int viewHeight) {
    return {static_cast<double>(client.left), static_cast<double>(viewHeight) - client.bottom,
            static_cast<double>(client.right), static_cast<double>(viewHeight) - client.top};
}

inline void vertexAt(CvornOGLMapping& map, double x, double y, double depth) {
    map.gluUnProject(x, y, depth);
    map.glVertex3d();
}

/// The four corners, from the lower left by the upper left to the lower right.
inline void cornersOf(CvornOGLMapping& map, const WindowBox& box, double depth) {
    vertexAt(map, box.left, box.bottom, depth);
    vertexAt(map, box.left, box.top, depth);
    vertexAt(map, box.right, box.top, depth);
    vertexAt(map, box.right, box.bottom, depth);
}

/// Draws with one display list for each byte, by the list base in force.
inline void textAt(CvornOGLMapping& map, double x, double y, double depth, std::string_view text) {
    map.gluUnProject(x, y, depth);
    map.glRasterPos3d();
    ::glCallLists(static_cast<GLsizei>(text.size()), GL_UNSIGNED_BYTE, text.data());
}

/// The overlays' quads and loops face along the negative z axis.
inline void normalOfOverlay() {
    ::glNormal3f(0, 0, -1);
}

/// Compiles into a display list, while executing, to the end of the scope; without a list it only executes.
class CompiledList {
public:
    explicit CompiledList(int list) : m_open(list > 0) {
        if (m_open) ::glNewList(static_cast<GLuint>(list), GL_COMPILE_AND_EXECUTE);
    }
    ~CompiledList() { end(); }
    CompiledList(const CompiledList&) = delete;
    CompiledList& operator=(const CompiledList&) = delete;

    void end() {
        if (m_open) ::glEndList();
        m_open = false;
    }

private:
    bool m_open;
};

} // namespace vorn::detail
