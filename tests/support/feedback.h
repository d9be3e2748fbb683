// SPDX-License-Identifier: MIT
#pragma once

#include "vorn/opengl.h"

#include <functional>
#include <vector>

namespace support {

/// A vertex as it left GL's transformations, after clipping.
struct FeedbackVertex {
    double x, y, z;    ///< position: window pixels and depth, or model units, by the capture
    double r, g, b, a; ///< colour, lit where lighting is on
    double s, t;       ///< texture coordinates
};

/// A point, line segment, polygon, raster position, or pass-through marker.
struct FeedbackPrimitive {
    GLenum kind; ///< GL_POINT_TOKEN, GL_LINE_TOKEN, GL_POLYGON_TOKEN, GL_BITMAP_TOKEN, ...
    std::vector<FeedbackVertex> vertices; ///< empty for a marker
    float marker;                         ///< of glPassThrough
};

/// What the drawing emits under the current matrices, positions in window pixels and depth. The segments that
/// GL marks as beginning a line strip count as lines like the others. Throws when the feedback is too long.
std::vector<FeedbackPrimitive> captureWindow(const std::function<void()>& draw);

/// What the drawing emits in model units, exact to a few millionths of the extent: the matrices are identity
/// over a cube from -extent to extent for the time, and put back. What lies outside is clipped.
std::vector<FeedbackPrimitive> captureModel(const std::function<void()>& draw, double extent = 8);

/// The vertices of all primitives, one after the other.
std::vector<FeedbackVertex> verticesOf(const std::vector<FeedbackPrimitive>& primitives);

/// How many primitives are of a kind.
int countOf(const std::vector<FeedbackPrimitive>& primitives, GLenum kind);

} // namespace support
