// SPDX-License-Identifier: MIT
#include "tests/overlays/overlay_test.h"

#include "vorn/overlays/font_lists.h"

#include <algorithm>
#include <cmath>

OverlayTest::OverlayTest() : m_nFontLists(::glGenLists(256)), m_nList(::glGenLists(1)) {
    ::glViewport(0, 0, m_window.width(), m_window.height());
    ::glMatrixMode(GL_PROJECTION);
    ::gluPerspective(40, 800.0 / 600, 1, 20);
    ::glMatrixMode(GL_MODELVIEW);
    ::gluLookAt(2, 3, 6, 0, 0, 0, 0, 1, 0);
    ::glEnable(GL_DEPTH_TEST);
    m_map.Update(1);

    m_dc.Attach(m_window.dc());
    m_font.CreatePointFont(120, "Arial", &m_dc);
    CFont* const old = m_dc.SelectObject(&m_font);
    ::vornUseFontBitmaps(m_dc, m_nFontLists);
    ::GetTextMetricsA(m_dc, &m_metrics);
    m_dc.SelectObject(old);
}

OverlayTest::~OverlayTest() {
    ::glDeleteLists(m_nFontLists, 256);
    ::glDeleteLists(m_nList, 1);
    m_dc.Detach();
}

CSize OverlayTest::extentOf(const std::string& text) const {
    const HGDIOBJ old = ::SelectObject(m_dc, m_font.m_hObject);
    CSize extent;
    ::GetTextExtentPoint32A(m_dc, text.data(), static_cast<int>(text.size()), &extent);
    ::SelectObject(m_dc, old);
    return extent;
}

namespace {

void include(std::vector<Drawn>& list, const support::FeedbackPrimitive& primitive, bool begins) {
    const auto& first = primitive.vertices.front();
    if (begins)
        list.push_back({first.x, first.y, first.x, first.y, first.z, first.r, first.g, first.b, first.a});
    Drawn& drawn = list.back();
    for (const auto& vertex : primitive.vertices) {
        drawn.left = std::min(drawn.left, vertex.x);
        drawn.right = std::max(drawn.right, vertex.x);
        drawn.bottom = std::min(drawn.bottom, vertex.y);
        drawn.top = std::max(drawn.top, vertex.y);
    }
}

} // namespace

Picture pictureOf(const std::function<void()>& draw) {
    Picture picture;
    int triangles = 0;
    int lines = 0;
    for (const auto& primitive : support::captureWindow(draw)) {
        if (primitive.kind == GL_POLYGON_TOKEN)
            include(picture.quads, primitive, primitive.vertices.size() == 4 || triangles++ % 2 == 0);
        if (primitive.kind == GL_LINE_TOKEN) include(picture.loops, primitive, lines++ % 4 == 0);
        if (primitive.kind == GL_BITMAP_TOKEN) include(picture.characters, primitive, true);
    }
    return picture;
}

testing::AssertionResult isAt(const Drawn& drawn, double left, double bottom, double right, double top,
                              double depth) {
    const double off = std::max({std::abs(drawn.left - left), std::abs(drawn.bottom - bottom),
                                 std::abs(drawn.right - right), std::abs(drawn.top - top)});
    if (off < 0.02 && std::abs(drawn.depth - depth) < 1e-5) return testing::AssertionSuccess();
    return testing::AssertionFailure()
           << "from " << drawn.left << ", " << drawn.bottom << " to " << drawn.right << ", " << drawn.top
           << " at depth " << drawn.depth << " instead of from " << left << ", " << bottom << " to " << right
           << ", " << top << " at depth " << depth;
}

testing::AssertionResult hasColour(const Drawn& drawn, COLORREF colour, double alpha) {
    const double off = std::max({std::abs(drawn.r - GetRValue(colour) / 255.0),
                                 std::abs(drawn.g - GetGValue(colour) / 255.0),
                                 std::abs(drawn.b - GetBValue(colour) / 255.0), std::abs(drawn.a - alpha)});
    if (off < 0.005) return testing::AssertionSuccess();
    return testing::AssertionFailure()
           << "colour " << drawn.r << ", " << drawn.g << ", " << drawn.b << ", " << drawn.a;
}
