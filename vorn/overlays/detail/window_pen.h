// SPDX-License-Identifier: MIT
#pragma once

#include "vorn/opengl.h"
#include "vorn/view/mapping.h"

#include <string_view>

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

/// The scene point of a window point, as a vertex.
inline void windowVertex(CvornOGLMapping& map, double x, double y, double depth) {
    map.gluUnProject(x, y, depth);
    map.glVertex3d();
}

/// The corners of a quad from the lower left by the upper left to the lower right.
inline void windowQuad(CvornOGLMapping& map, const WindowBox& box, double depth) {
    windowVertex(map, box.left, box.bottom, depth);
    windowVertex(map, box.left, box.top, depth);
    windowVertex(map, box.right, box.top, depth);
    windowVertex(map, box.right, box.bottom, depth);
}

/// Draws window points by turning them into scene points. GL turns them back in single precision: an
/// overlay's points would come out on one or the other side of the pixel border that they lie on, before or
/// behind others of their depth, and change sides as the scene turns. So lines and texts, which show it, are
/// moved off the border, and what others of its depth lie on is moved behind them, by what this mapping makes
/// of the rounding.
class WindowPen {
public:
    /// For points of about this place and depth.
    WindowPen(CvornOGLMapping& map, double x, double y, double depth);

    /// A quad that lines or other quads of its depth lie on; and a line loop in the same order of corners, on
    /// the quad's left and upper pixels and just outside at its right and bottom. The loop's first corner may
    /// have a depth of its own.
    void quadBehind(const WindowBox& box, double depth) const { windowQuad(m_map, box, depth + 2 * m_depth); }
    void loop(const WindowBox& box, double depth) const { loop(box, depth, depth); }
    void loop(const WindowBox& box, double firstDepth, double depth) const;
    /// Draws with one display list for each byte, by the list base in force.
    void text(double x, double y, double depth, std::string_view text) const;

private:
    CvornOGLMapping& m_map;
    double m_pixels = 0; // what the rounding can move a point in the window
    double m_depth = 0;  // and in depth
};

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
