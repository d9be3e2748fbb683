// SPDX-License-Identifier: MIT
#include "surface.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace {

using examples::MeshVertex;
using examples::SurfaceMesh;
using examples::SurfaceMesher;

/// Points the vertex arrays at vertices in memory or, for null, at the bound buffer.
void setArrays(const MeshVertex* vertices) {
    // Not pointer arithmetic: a null pointer has no members.
    auto at = [vertices](std::size_t offset) {
        return reinterpret_cast<const void*>(reinterpret_cast<std::uintptr_t>(vertices) + offset);
    };
    ::glEnableClientState(GL_VERTEX_ARRAY);
    ::glEnableClientState(GL_NORMAL_ARRAY);
    ::glEnableClientState(GL_COLOR_ARRAY);
    ::glVertexPointer(3, GL_FLOAT, sizeof(MeshVertex), at(offsetof(MeshVertex, position)));
    ::glNormalPointer(GL_BYTE, sizeof(MeshVertex), at(offsetof(MeshVertex, normal)));
    ::glColorPointer(4, GL_UNSIGNED_BYTE, sizeof(MeshVertex), at(offsetof(MeshVertex, colour)));
}

GLenum primitiveOf(SurfaceMesher::Kind kind) {
    switch (kind) {
    case SurfaceMesher::Kind::lines:
        return GL_LINES;
    case SurfaceMesher::Kind::points:
        return GL_POINTS;
    default:
        return GL_TRIANGLES;
    }
}

} // namespace

void Surface::build(const SurfaceMesher& mesher, Storage storage) {
    release();
    m_context = ::wglGetCurrentContext();
    if (m_context == nullptr) return;
    m_primitive = primitiveOf(mesher.kind());
    if (storage == Storage::list || !buildBuffers(mesher)) buildList(mesher);
}

bool Surface::buildBuffers(const SurfaceMesher& mesher) {
    if (!m_gl.load()) return false;
    auto fill = [this](GLenum target, GLuint& name, std::size_t bytes, auto write) {
        m_gl.genBuffers(1, &name);
        m_gl.bindBuffer(target, name);
        m_gl.bufferData(target, static_cast<std::ptrdiff_t>(bytes), nullptr, staticDraw);
        void* memory = m_gl.mapBuffer(target, writeOnly);
        if (memory != nullptr) write(memory);
        bool filled = memory != nullptr && m_gl.unmapBuffer(target);
        m_gl.bindBuffer(target, 0);
        return filled;
    };
    bool filled =
        fill(arrayBuffer, m_vertexBuffer, mesher.vertexCount() * sizeof(MeshVertex),
             [&](void* memory) { mesher.writeVertices(static_cast<MeshVertex*>(memory)); }) &&
        fill(elementArrayBuffer, m_indexBuffer, mesher.mostIndices() * sizeof(GLuint), [&](void* memory) {
            m_indexCount = static_cast<GLsizei>(mesher.writeIndices(static_cast<std::uint32_t*>(memory)));
        });
    if (!filled) deleteBuffers();
    return filled;
}

void Surface::buildList(const SurfaceMesher& mesher) {
    SurfaceMesh mesh(mesher);
    m_indexCount = static_cast<GLsizei>(mesh.indices.size());
    m_list = ::glGenLists(1);
    ::glPushClientAttrib(GL_CLIENT_VERTEX_ARRAY_BIT);
    setArrays(mesh.vertices.data());
    ::glNewList(m_list, GL_COMPILE);
    ::glDrawElements(m_primitive, m_indexCount, GL_UNSIGNED_INT, mesh.indices.data());
    ::glEndList();
    ::glPopClientAttrib();
}

void Surface::draw() const {
    if (m_indexCount == 0 || m_context == nullptr || ::wglGetCurrentContext() != m_context) return;
    ::glPushAttrib(GL_ENABLE_BIT | GL_CURRENT_BIT);
    // An opaque surface with normals of unit length: these would be work for nothing.
    for (GLenum capability : {GL_BLEND, GL_ALPHA_TEST, GL_NORMALIZE})
        ::glDisable(capability);
    // The view's is for planes. It would push triangles seen edge on far back, behind the grids.
    ::glDisable(GL_POLYGON_OFFSET_FILL);
    // NOTE: with it, and a polygon offset, Mesa's software renderer takes triangles one by one: half as long
    // again.
    if (m_primitive != GL_POINTS) ::glDisable(GL_POINT_SMOOTH);
    if (m_list != 0)
        ::glCallList(m_list);
    else
        drawBuffers();
    ::glPopAttrib();
}

void Surface::drawBuffers() const {
    // NOTE: Mesa's software renderer queues all that it is given, 150 MB for two million triangles. In pieces
    // that are finished one by one it needs a quarter, and hardly more time.
    constexpr GLsizei piece = 1'000'002; // indices; whole triangles, and whole lines
    ::glPushClientAttrib(GL_CLIENT_VERTEX_ARRAY_BIT);
    m_gl.bindBuffer(arrayBuffer, m_vertexBuffer);
    m_gl.bindBuffer(elementArrayBuffer, m_indexBuffer);
    setArrays(nullptr);
    for (GLsizei first = 0; first < m_indexCount; first += piece) {
        if (first > 0) ::glFinish();
        ::glDrawElements(m_primitive, std::min(piece, m_indexCount - first), GL_UNSIGNED_INT,
                         reinterpret_cast<const void*>(first * sizeof(GLuint)));
    }
    m_gl.bindBuffer(elementArrayBuffer, 0);
    m_gl.bindBuffer(arrayBuffer, 0);
    ::glPopClientAttrib();
}

void Surface::release() {
    if (m_context != nullptr && m_context == ::wglGetCurrentContext()) {
        if (m_vertexBuffer != 0) deleteBuffers();
        if (m_list != 0) ::glDeleteLists(m_list, 1);
    }
    m_vertexBuffer = m_indexBuffer = m_list = 0;
    m_indexCount = 0;
    m_context = nullptr;
}

void Surface::deleteBuffers() {
    m_gl.deleteBuffers(1, &m_vertexBuffer);
    m_gl.deleteBuffers(1, &m_indexBuffer);
    m_vertexBuffer = m_indexBuffer = 0;
}
