// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/feedback.h"
#include "tests/support/gl_test.h"
#include "vorn/view/mapping.h"

#include <afxwin.h>
#include <gtest/gtest.h>
#include <string>

/// What an overlay needs of a view: a window of 800 x 600 with a perspective camera, the mapping of it, a
/// real font and its display lists. GL must have no error at the end.
class OverlayTest : public testing::Test {
protected:
    OverlayTest();
    ~OverlayTest() override;
    void TearDown() override { EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR)); }

    /// Measured by the platform alone.
    CSize extentOf(const std::string& text) const;
    int pixels(int himetric) const { return ::MulDiv(himetric, ::GetDeviceCaps(m_dc, LOGPIXELSX), 2540); }

    static constexpr int viewHeight = 600;
    support::GlWindow m_window{800, viewHeight};
    CDC m_dc;
    CFont m_font;
    TEXTMETRICA m_metrics = {};
    CvornOGLMapping m_map;
    int m_nFontLists;
    int m_nList;
};

/// The extent of something drawn, in GL window pixels, with the depth and the colour of its first vertex.
struct Drawn {
    double left, bottom, right, top, depth;
    double r, g, b, a;
};

/// The quads, the line loops, and for each character the raster position that it was drawn at.
struct Picture {
    std::vector<Drawn> quads;
    std::vector<Drawn> loops;
    std::vector<Drawn> characters;
};
Picture pictureOf(const std::function<void()>& draw);

/// Near, to a fiftieth of a pixel and a hundred thousandth of the depth.
testing::AssertionResult isAt(const Drawn& drawn, double left, double bottom, double right, double top,
                              double depth);
testing::AssertionResult hasColour(const Drawn& drawn, COLORREF colour, double alpha);
