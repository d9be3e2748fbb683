// SPDX-License-Identifier: MIT
#include "vorn/view/detail/picture_tile.h"

#include "vorn/view/mapping.h"

#include <algorithm>
#include <cmath>

namespace vorn::detail {

namespace {

/// The stretch of the picture that the viewport covers in one direction: as much of it as GL allows with the
/// tile in the middle, since texts that begin outside the viewport are not drawn at all.
struct Stretch {
    int start;
    int length;

    Stretch(int picture, int tileStart, int tileLength, int largest) : length(std::min(picture, largest)) {
        start = std::clamp(tileStart + tileLength / 2 - length / 2, 0, picture - length);
    }
};

} // namespace

CSize PictureTile::SizeFor(int pixels) const {
    // Half a viewport leaves a quarter on each side for what begins beside the tile.
    const auto extent = [](int whole, int largest) {
        return whole <= largest ? whole : std::max(1, largest / 2);
    };
    const int cx = extent(picture.cx, largestViewport.cx);
    const int cy = extent(picture.cy, largestViewport.cy);
    return CSize(cx, std::clamp(pixels / cx, 1, cy));
}

void PictureTile::Apply() const {
    const Stretch x(picture.cx, origin.x, size.cx, largestViewport.cx);
    const Stretch y(picture.cy, origin.y, size.cy, largestViewport.cy);
    ::glViewport(x.start - origin.x, y.start - origin.y, x.length, y.length);
    if (x.length == picture.cx && y.length == picture.cy) return;
    double projection[16];
    ::glGetDoublev(GL_PROJECTION_MATRIX, projection);
    ::glMatrixMode(GL_PROJECTION);
    ::glLoadIdentity();
    ::glTranslated((picture.cx - 2.0 * x.start - x.length) / x.length,
                   (picture.cy - 2.0 * y.start - y.length) / y.length, 0.0);
    ::glScaled(static_cast<double>(picture.cx) / x.length, static_cast<double>(picture.cy) / y.length, 1.0);
    ::glMultMatrixd(projection);
    ::glMatrixMode(GL_MODELVIEW);
}

void PictureTile::WidenMapping(CvornOGLMapping& mapping) const {
    if (picture.cx <= largestViewport.cx && picture.cy <= largestViewport.cy) return;
    mapping.m_anViewport[2] = picture.cx;
    mapping.m_anViewport[3] = picture.cy;
    double from[3] = {0.0, -0.5, 0.0};
    double to[3] = {0.0, -0.5, 0.5};
    CvornOGLMapping measure = mapping;
    measure.gluProject(from, from);
    measure.gluProject(to, to);
    mapping.m_fScreenRadius =
        static_cast<float>(std::hypot(to[0] - from[0], to[1] - from[1], to[2] - from[2]));
}

} // namespace vorn::detail
