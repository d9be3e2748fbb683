// SPDX-License-Identifier: MIT
#pragma once

#include "buffer_functions.h"

#include "common/surface_mesh.h"

#include <vorn/vorn.h>

/// A surface in OpenGL's hands: in buffers where the driver has them (OpenGL 1.5), in a display list where
/// not. All calls need the current context that the surface is to be drawn in.
class Surface {
public:
    enum class Storage { best, list };

    /// Makes the surface, with buffers straight in their memory. What was built before in the same context is
    /// deleted; what was built in another one went with it.
    void build(const examples::SurfaceMesher& mesher, Storage storage = Storage::best);

    /// Draws the surface, opaque; leaves the GL state as it was.
    void draw() const;

    /// Deletes the buffers or the list.
    void release();

private:
    bool buildBuffers(const examples::SurfaceMesher& mesher);
    void buildList(const examples::SurfaceMesher& mesher);
    void drawBuffers() const;
    void deleteBuffers();

    BufferFunctions m_gl;
    HGLRC m_context = nullptr;
    GLenum m_primitive = GL_TRIANGLES;
    GLsizei m_indexCount = 0;
    GLuint m_vertexBuffer = 0;
    GLuint m_indexBuffer = 0;
    GLuint m_list = 0;
};
