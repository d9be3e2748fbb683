// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/feedback.h"
#include "tests/support/gl_test.h"
#include "vorn/geometry/colour.h"
#include "vorn/view/mapping.h"

#include <afxwin.h>
#include <string>

using Lines = std::vector<std::string>;

/// What was drawn, a line each: the box and the depth of the quads and of the line loops with the colour of
/// their first vertex, and for each character its raster position.
struct Picture {
    Lines quads, loops, characters;
};

/// What an overlay needs of a view: a window of 800 x 600 with a perspective camera, the mapping of it, a
/// real font and its display lists. GL must have no error at the end.
class OverlayTest : public testing::Test {
protected:
    static constexpr int viewHeight = 600;

    OverlayTest();
    ~OverlayTest() override;
    void TearDown() override { EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR)); }

    /// Measured by the platform alone.
    CSize extentOf(const std::string& text) const;
    int pixels(int himetric) const { return ::MulDiv(himetric, ::GetDeviceCaps(m_dc, LOGPIXELSX), 2540); }

    static Picture pictureOf(const std::function<void()>& draw);
    /// The line of a box between corners in client coordinates, and that of a character.
    static std::string box(double left, double top, double right, double bottom, double depth,
                           const CvornColour& colour);
    static std::string box(const CRect& rc, double depth, const CvornColour& colour);
    static std::string character(double x, double y, double depth);
    /// How many pixels of a client rectangle have a colour, white unless told.
    static long countIn(const CRect& rc, COLORREF colour = RGB(255, 255, 255));
    /// Draws on black, and from other eye points too: what lies in window pixels must not change with the
    /// scene.
    void drawSteadily(const std::function<void()>& draw);

    support::GlWindow m_window{800, viewHeight};
    CDC m_dc;
    CFont m_font;
    TEXTMETRICA m_metrics = {};
    CvornOGLMapping m_map;
    int m_nFontLists, m_nList;

private:
    void lookFrom(double x, double y, double z);
};
