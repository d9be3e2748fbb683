// SPDX-License-Identifier: MIT
#include "tests/overlays/overlay_test.h"

#include "vorn/overlays/font_lists.h"

#include <algorithm>
#include <cmath>

OverlayTest::OverlayTest() : m_nFontLists(::glGenLists(256)), m_nList(::glGenLists(1)) {
    ::glMatrixMode(GL_PROJECTION);
    ::gluPerspective(12, 800.0 / viewHeight, 0.1, 100); // as hard as in a view
    ::glEnable(GL_DEPTH_TEST);
    lookFrom(2, 3, 6);
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

Picture OverlayTest::pictureOf(const std::function<void()>& draw) {
    Picture picture;
    std::vector<support::FeedbackVertex> quad, loop; // a quad comes in two triangles, a loop in four lines
    for (const auto& [kind, vertices, marker] : support::captureWindow(draw)) {
        const auto& first = vertices[0];
        if (kind == GL_BITMAP_TOKEN)
            picture.characters.push_back(character(first.x, viewHeight - first.y, first.z));
        auto& whole = kind == GL_POLYGON_TOKEN ? quad : loop;
        if (kind != GL_BITMAP_TOKEN) whole.insert(whole.end(), vertices.begin(), vertices.end());
        if (quad.size() < 6 && loop.size() < 8) continue;
        const auto &from = whole[0],
                   &to = kind == GL_POLYGON_TOKEN ? whole[4] : whole[3]; // the opposite corner
        const auto channel = [](double value) { return static_cast<float>(value); };
        (kind == GL_POLYGON_TOKEN ? picture.quads : picture.loops)
            .push_back(box(from.x, viewHeight - to.y, to.x, viewHeight - from.y, from.z,
                           {channel(from.r), channel(from.g), channel(from.b), channel(from.a)}));
        whole.clear();
    }
    return picture;
}

std::string OverlayTest::box(double left, double top, double right, double bottom, double depth,
                             const CvornColour& colour) {
    char line[120];
    std::snprintf(line, sizeof line, "%.1f,%.1f to %.1f,%.1f at %.3f in %.2f %.2f %.2f %.2f", left, top,
                  right, bottom, depth, colour.m_fRed, colour.m_fGreen, colour.m_fBlue, colour.m_fAlpha);
    return line;
}

std::string OverlayTest::box(const CRect& rc, double depth, const CvornColour& colour) {
    return box(rc.left, rc.top, rc.right, rc.bottom, depth, colour);
}

std::string OverlayTest::character(double x, double y, double depth) {
    char line[60];
    std::snprintf(line, sizeof line, "%.1f,%.1f at %.3f", x, y, depth);
    return line;
}

long OverlayTest::countIn(const CRect& rc, COLORREF colour) {
    const auto seen = support::pixelsIn(rc.left, viewHeight - rc.bottom, rc.Width(), rc.Height());
    return static_cast<long>(std::ranges::count(seen, colour));
}

void OverlayTest::drawSteadily(const std::function<void()>& draw) {
    std::vector<COLORREF> first;
    for (const double turn : {5.0, 0.1, 1.7, 3.33}) {
        lookFrom(7 * std::sin(turn), 3 * std::cos(turn / 2), 7 * std::cos(turn));
        ::glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        draw();
        const auto seen = support::pixelsIn(0, 0, 800, viewHeight);
        if (first.empty()) first = seen;
        const auto moved = std::ranges::mismatch(seen, first, [](COLORREF a, COLORREF b) {
            return static_cast<bool>(support::isNear(a, b)); // shades may be rounded another way
        });
        const auto place = moved.in1 - seen.begin();
        EXPECT_EQ(moved.in1, seen.end()) << turn << ": at " << place % 800 << ", " << place / 800;
    }
}

void OverlayTest::lookFrom(double x, double y, double z) {
    ::glMatrixMode(GL_MODELVIEW);
    ::glLoadIdentity();
    ::gluLookAt(x, y, z, 0, 0, 0, 0, 1, 0);
    m_map.Update(1);
}
