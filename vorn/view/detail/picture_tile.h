// SPDX-License-Identifier: MIT
#pragma once

#include <afxwin.h>

class CvornOGLMapping;

namespace vorn::detail {

/// A rectangle of a picture that is larger than GL draws at once. Coordinates are pixels from the picture's
/// lower left corner.
struct PictureTile {
    CSize picture;
    CPoint origin;
    CSize size;
    CSize largestViewport;

    /// A tile's size for this picture and viewport, of about so many pixels.
    CSize SizeFor(int pixels) const;
    /// Lets the current context draw this tile of what it would draw of the whole picture. The projection
    /// must be the whole picture's.
    void Apply() const;
    /// Undoes in the mapping what GL does to a viewport that is too large for it.
    void WidenMapping(CvornOGLMapping& mapping) const;
};

} // namespace vorn::detail
