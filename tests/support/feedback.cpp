// SPDX-License-Identifier: MIT
#include "tests/support/feedback.h"

#include <algorithm>
#include <stdexcept>

namespace support {

namespace {

constexpr int modelPixels = 2048;
constexpr int valuesPerVertex = 12; // x, y, z, w, four of the colour, four of the texture coordinate

FeedbackPrimitive takePrimitive(const float*& at) {
    FeedbackPrimitive primitive{static_cast<GLenum>(*at++), {}, 0};
    int count = 1;
    switch (primitive.kind) {
    case GL_PASS_THROUGH_TOKEN:
        primitive.marker = *at++;
        return primitive;
    case GL_LINE_RESET_TOKEN:
        primitive.kind = GL_LINE_TOKEN;
        [[fallthrough]];
    case GL_LINE_TOKEN:
        count = 2;
        break;
    case GL_POLYGON_TOKEN:
        count = static_cast<int>(*at++);
        break;
    default:
        break;
    }
    for (int i = 0; i < count; i++, at += valuesPerVertex)
        primitive.vertices.push_back({at[0], at[1], at[2], at[4], at[5], at[6], at[7], at[8], at[9]});
    return primitive;
}

} // namespace

std::vector<FeedbackPrimitive> captureWindow(const std::function<void()>& draw) {
    std::vector<float> buffer(1 << 20);
    ::glFeedbackBuffer(static_cast<GLsizei>(buffer.size()), GL_4D_COLOR_TEXTURE, buffer.data());
    ::glRenderMode(GL_FEEDBACK);
    draw();
    const int used = ::glRenderMode(GL_RENDER);
    if (used < 0) throw std::runtime_error("the drawing is too long for the feedback buffer");

    std::vector<FeedbackPrimitive> primitives;
    for (const float *at = buffer.data(), *end = at + used; at < end;)
        primitives.push_back(takePrimitive(at));
    return primitives;
}

std::vector<FeedbackPrimitive> captureModel(const std::function<void()>& draw, double extent) {
    ::glPushAttrib(GL_TRANSFORM_BIT | GL_VIEWPORT_BIT);
    ::glMatrixMode(GL_PROJECTION);
    ::glPushMatrix();
    ::glLoadIdentity();
    ::glOrtho(-extent, extent, -extent, extent, extent, -extent);
    ::glMatrixMode(GL_MODELVIEW);
    ::glPushMatrix();
    ::glLoadIdentity();
    // Large, because a driver may turn y over by the window's height, in float.
    ::glViewport(0, 0, modelPixels, modelPixels);
    ::glDepthRange(0, 1);

    auto primitives = captureWindow(draw);

    ::glMatrixMode(GL_PROJECTION);
    ::glPopMatrix();
    ::glMatrixMode(GL_MODELVIEW);
    ::glPopMatrix();
    ::glPopAttrib();
    for (auto& primitive : primitives) {
        for (auto& vertex : primitive.vertices) {
            vertex.x = (vertex.x * 2 / modelPixels - 1) * extent;
            vertex.y = (vertex.y * 2 / modelPixels - 1) * extent;
            vertex.z = (vertex.z * 2 - 1) * extent;
        }
    }
    return primitives;
}

std::vector<FeedbackVertex> verticesOf(const std::vector<FeedbackPrimitive>& primitives) {
    std::vector<FeedbackVertex> vertices;
    for (const auto& primitive : primitives)
        vertices.insert(vertices.end(), primitive.vertices.begin(), primitive.vertices.end());
    return vertices;
}

int countOf(const std::vector<FeedbackPrimitive>& primitives, GLenum kind) {
    return static_cast<int>(std::count_if(primitives.begin(), primitives.end(),
                                          [kind](const auto& primitive) { return primitive.kind == kind; }));
}

} // namespace support
