// SPDX-License-Identifier: MIT
#include "surface.h"

#include <cstddef>

namespace {

using examples::MeshVertex;
using examples::SurfaceMesh;

constexpr GLenum arrayBuffer = 0x8892, elementArrayBuffer = 0x8893, staticDraw = 0x88E4;

/// The entry points of OpenGL 1.5 that the surface needs. They belong to the current context.
struct BufferFunctions {
    void(APIENTRY* genBuffers)(GLsizei, GLuint*);
    void(APIENTRY* deleteBuffers)(GLsizei, const GLuint*);
    void(APIENTRY* bindBuffer)(GLenum, GLuint);
    void(APIENTRY* bufferData)(GLenum, std::ptrdiff_t, const void*, GLenum);

    BufferFunctions() {
        load(genBuffers, "glGenBuffers");
        load(deleteBuffers, "glDeleteBuffers");
        load(bindBuffer, "glBindBuffer");
        load(bufferData, "glBufferData");
    }
    explicit operator bool() const {
        return genBuffers != nullptr && deleteBuffers != nullptr && bindBuffer != nullptr &&
               bufferData != nullptr;
    }

private:
    template <typename Function>
    static void load(Function& function, const char* name) {
        function = reinterpret_cast<Function>(reinterpret_cast<void*>(::wglGetProcAddress(name)));
    }
};

/// Points the vertex arrays at vertices in memory or, for null, at the bound buffer.
void setArrays(const MeshVertex* vertices) {
    auto base = reinterpret_cast<const std::byte*>(vertices);
    ::glEnableClientState(GL_VERTEX_ARRAY);
    ::glEnableClientState(GL_NORMAL_ARRAY);
    ::glEnableClientState(GL_COLOR_ARRAY);
    ::glVertexPointer(3, GL_FLOAT, sizeof(MeshVertex), base + offsetof(MeshVertex, position));
    ::glNormalPointer(GL_FLOAT, sizeof(MeshVertex), base + offsetof(MeshVertex, normal));
    ::glColorPointer(4, GL_UNSIGNED_BYTE, sizeof(MeshVertex), base + offsetof(MeshVertex, colour));
}

GLenum primitiveOf(SurfaceMesh::Kind kind) {
    switch (kind) {
    case SurfaceMesh::Kind::lines:
        return GL_LINES;
    case SurfaceMesh::Kind::points:
        return GL_POINTS;
    default:
        return GL_TRIANGLES;
    }
}

} // namespace

void Surface::build(const SurfaceMesh& mesh, Storage storage) {
    release();
    m_primitive = primitiveOf(mesh.kind);
    m_indexCount = static_cast<GLsizei>(mesh.indices.size());
    m_context = ::wglGetCurrentContext();
    if (m_indexCount == 0 || m_context == nullptr) return;
    if (storage == Storage::list || !buildBuffers(mesh)) buildList(mesh);
}

bool Surface::buildBuffers(const SurfaceMesh& mesh) {
    BufferFunctions gl;
    if (!gl) return false;
    while (::glGetError() != GL_NO_ERROR) {
    }
    auto fill = [&gl](GLenum target, const auto& items) {
        GLuint name = 0;
        gl.genBuffers(1, &name);
        gl.bindBuffer(target, name);
        gl.bufferData(target, static_cast<std::ptrdiff_t>(items.size() * sizeof items[0]), items.data(),
                      staticDraw);
        gl.bindBuffer(target, 0);
        return name;
    };
    m_vertexBuffer = fill(arrayBuffer, mesh.vertices);
    m_indexBuffer = fill(elementArrayBuffer, mesh.indices);
    if (::glGetError() == GL_NO_ERROR) return true;
    // No memory, most likely.
    gl.deleteBuffers(1, &m_vertexBuffer);
    gl.deleteBuffers(1, &m_indexBuffer);
    m_vertexBuffer = m_indexBuffer = 0;
    return false;
}

void Surface::buildList(const SurfaceMesh& mesh) {
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
    // NOTE: with it, and a polygon offset, Mesa's software renderer takes triangles one by one: half as long
    // again.
    if (m_primitive != GL_POINTS) ::glDisable(GL_POINT_SMOOTH);
    if (m_list != 0) {
        ::glCallList(m_list);
    } else {
        BufferFunctions gl;
        ::glPushClientAttrib(GL_CLIENT_VERTEX_ARRAY_BIT);
        gl.bindBuffer(arrayBuffer, m_vertexBuffer);
        gl.bindBuffer(elementArrayBuffer, m_indexBuffer);
        setArrays(nullptr);
        ::glDrawElements(m_primitive, m_indexCount, GL_UNSIGNED_INT, nullptr);
        gl.bindBuffer(elementArrayBuffer, 0);
        gl.bindBuffer(arrayBuffer, 0);
        ::glPopClientAttrib();
    }
    ::glPopAttrib();
}

void Surface::release() {
    if (m_context != nullptr && m_context == ::wglGetCurrentContext()) {
        if (m_vertexBuffer != 0) {
            BufferFunctions gl;
            gl.deleteBuffers(1, &m_vertexBuffer);
            gl.deleteBuffers(1, &m_indexBuffer);
        }
        if (m_list != 0) ::glDeleteLists(m_list, 1);
    }
    m_vertexBuffer = m_indexBuffer = m_list = 0;
    m_context = nullptr;
}
