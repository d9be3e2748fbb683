// SPDX-License-Identifier: MIT
#include "chart_button.h"

#include "chart_overlay.h"
#include "explorer_menu.h"

#include "common/colour_ramp.h"
#include "common/window_shapes.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <numbers>

using examples::ColourRamp;

namespace {

constexpr COLORREF ink = RGB(58, 62, 72), faintInk = RGB(142, 146, 156);
constexpr COLORREF accent = RGB(24, 122, 138), faintAccent = RGB(150, 190, 196);
constexpr COLORREF backOff = RGB(240, 241, 244), backOn = RGB(205, 227, 232),
                   backPressed = RGB(172, 206, 214);
constexpr COLORREF track = RGB(212, 214, 220);

struct Point {
    double x, y;
};

/// Draws a symbol in a square of 2 x 2, with (0, 0) in the middle and y upwards, into a button.
class SymbolPen {
public:
    SymbolPen(CvornOGLMapping& mapping, const CRect& rc, float z)
        : m_mapping(mapping), m_x((rc.left + rc.right) / 2.0), m_y((rc.top + rc.bottom) / 2.0),
          m_size(std::min(std::abs(rc.Width()), std::abs(rc.Height())) / 2.0),
          m_depth(z - ChartOverlay::depthStep / 2) {
        ::glPushAttrib(GL_LINE_BIT | GL_ENABLE_BIT);
        ::glEnable(GL_LINE_SMOOTH);
        ::glLineWidth(static_cast<GLfloat>(std::max(1.2, m_size / 7)));
    }
    ~SymbolPen() { ::glPopAttrib(); }
    SymbolPen(const SymbolPen&) = delete;
    SymbolPen& operator=(const SymbolPen&) = delete;

    void shape(GLenum kind, const CvornColour& colour, std::initializer_list<Point> points) const {
        colour.glColor();
        ::glBegin(kind);
        for (const Point& point : points)
            examples::windowVertex(m_mapping, m_x + point.x * m_size, m_y + point.y * m_size, m_depth);
        ::glEnd();
    }
    void disc(const CvornColour& colour, Point middle, double radius) const {
        colour.glColor();
        ::glBegin(GL_POLYGON);
        for (int i = 0; i < 24; ++i) {
            const double angle = i * std::numbers::pi / 12;
            examples::windowVertex(m_mapping, m_x + (middle.x + radius * std::cos(angle)) * m_size,
                                   m_y + (middle.y + radius * std::sin(angle)) * m_size, m_depth);
        }
        ::glEnd();
    }

private:
    CvornOGLMapping& m_mapping;
    double m_x, m_y, m_size, m_depth;
};

/// A cube from its corner; the faces that one looks at are filled.
void drawCube(const SymbolPen& pen, const CvornColour& line, CvornColour fill, int command) {
    const bool all = command == ID_VIEW_3D;
    if (all || command == ID_VIEW_TOP)
        pen.shape(GL_POLYGON, fill, {{0, .95}, {-.82, .475}, {0, 0}, {.82, .475}});
    fill.m_fAlpha = all ? .65F : 1;
    if (all || command == ID_VIEW_FRONT)
        pen.shape(GL_POLYGON, fill, {{-.82, .475}, {0, 0}, {0, -.95}, {-.82, -.475}});
    fill.m_fAlpha = all ? .35F : 1;
    if (all || command == ID_VIEW_SIDE)
        pen.shape(GL_POLYGON, fill, {{.82, .475}, {0, 0}, {0, -.95}, {.82, -.475}});
    pen.shape(GL_LINE_LOOP, line,
              {{0, .95}, {-.82, .475}, {-.82, -.475}, {0, -.95}, {.82, -.475}, {.82, .475}});
    pen.shape(GL_LINES, line, {{0, 0}, {-.82, .475}, {0, 0}, {.82, .475}, {0, 0}, {0, -.95}});
}

void drawGrid(const SymbolPen& pen, const CvornColour& line) {
    for (double at : {-.85, -.28, .28, .85})
        pen.shape(GL_LINES, line, {{at, -.85}, {at, .85}, {-.85, at}, {.85, at}});
}

void drawArrow(const SymbolPen& pen, const CvornColour& line, const CvornColour& fill) {
    pen.shape(GL_LINES, line, {{-.85, -.85}, {.3, .3}});
    pen.shape(GL_POLYGON, fill, {{.95, .95}, {-.05, .5}, {.5, -.05}});
}

void drawSun(const SymbolPen& pen, const CvornColour& line, const CvornColour& fill) {
    pen.disc(fill, {0, 0}, .42);
    for (int i = 0; i < 8; ++i) {
        const double x = std::cos(i * std::numbers::pi / 4), y = std::sin(i * std::numbers::pi / 4);
        pen.shape(GL_LINES, line, {{x * .62, y * .62}, {x * .98, y * .98}});
    }
}

void drawPicture(const SymbolPen& pen, const CvornColour& line, const CvornColour& fill) {
    pen.shape(GL_POLYGON, fill, {{-.95, -.7}, {-.3, .25}, {.3, -.7}});
    pen.shape(GL_POLYGON, fill, {{-.1, -.7}, {.4, -.05}, {.95, -.7}});
    pen.disc(fill, {.45, .35}, .18);
    pen.shape(GL_LINE_LOOP, line, {{-.95, -.72}, {-.95, .72}, {.95, .72}, {.95, -.72}});
}

} // namespace

ChartButton::ChartButton(int command, int column) : CvornToolBarButton(command, space, column, side, side) {
    SetParam(TBB_RAISED);
}

void ChartButton::dress(bool pressed) {
    m_colBack = CvornColour(pressed ? backPressed : GetParam(TBB_STATE) ? backOn : backOff, 1);
}

void ChartButton::oglOutputShape(CvornOGLMapping* map, CRect& rc, float z) {
    const SymbolPen pen(*map, rc, z);
    const bool on = GetParam(TBB_STATE) != 0;
    const CvornColour line(on ? ink : faintInk, 1), fill(on ? accent : faintAccent, 1);
    switch (GetID()) {
    case ID_SHOW_GRIDS:
        return drawGrid(pen, line);
    case ID_SHOW_TIPS:
        return drawArrow(pen, line, fill);
    case ID_SHOW_LIGHTING:
        return drawSun(pen, line, fill);
    case ID_SHOW_PLANES:
        return drawPicture(pen, line, fill);
    default:
        return drawCube(pen, line, fill, GetID());
    }
}

ExaggerationSlider::ExaggerationSlider(int id, int column)
    : CvornToolBarButton(id, ChartButton::space, column, ChartButton::side, width) {
    SetParam(TBB_TRACK | TBB_RCLICK);
}

void ExaggerationSlider::oglOutputShape(CvornOGLMapping* map, CRect& rc, float z) {
    const double left = rc.left, right = rc.right, bottom = rc.bottom, height = rc.top - rc.bottom;
    const double marker = left + (right - left) * GetHMarkerPos(), middle = (left + right) / 2;
    const double thumb = std::max(1.0, height / 12);
    const auto wedge = [&](const CvornColour& colour, double end, double depth) {
        colour.glColor();
        ::glBegin(GL_TRIANGLES);
        examples::windowVertex(*map, left, bottom, depth);
        examples::windowVertex(*map, end, bottom, depth);
        examples::windowVertex(*map, end, bottom + height * (end - left) / (right - left), depth);
        ::glEnd();
    };
    constexpr double step = ChartOverlay::depthStep / 4;
    wedge(CvornColour(track, 1), right, z);
    wedge(CvornColour(accent, 1), marker, z - step);
    examples::fillBox(*map, middle - thumb / 2, bottom, middle + thumb / 2, bottom + height / 2, z - 2 * step,
                      CvornColour(backOff, 1));
    examples::fillBox(*map, marker - thumb, bottom - thumb, marker + thumb, bottom + height + thumb,
                      z - 3 * step, CvornColour(ink, 1));
}

RampSlider::RampSlider(int id, int column)
    : CvornToolBarButton(id, ChartButton::space, column, ChartButton::side, width) {
    SetParam(TBB_TRACK | TBB_RCLICK);
}

std::size_t RampSlider::ramp() const {
    const std::size_t count = ColourRamp::names().size();
    return std::min(static_cast<std::size_t>(GetHMarkerPos() * static_cast<float>(count)), count - 1);
}

void RampSlider::setRamp(std::size_t ramp) {
    SetHMarkerPos((static_cast<float>(ramp) + 0.5F) / static_cast<float>(ColourRamp::names().size()));
}

void RampSlider::oglOutputShape(CvornOGLMapping* map, CRect& rc, float z) {
    const auto names = ColourRamp::names();
    const double step = static_cast<double>(rc.right - rc.left) / static_cast<double>(names.size());
    const double gap = std::max(1.0, std::round(step / 10)), height = rc.top - rc.bottom;
    for (std::size_t i = 0; i < names.size(); ++i) {
        const ColourRamp ramp = *ColourRamp::named(names[i]);
        const double left = std::round(rc.left + step * static_cast<double>(i)) + gap,
                     right = std::round(rc.left + step * static_cast<double>(i + 1)) - gap;
        if (i == this->ramp())
            examples::fillBox(*map, left - gap, rc.bottom - gap, right + gap, rc.top + gap, z,
                              CvornColour(ink, 1));
        constexpr int parts = 8;
        for (int part = 0; part < parts; ++part) {
            const examples::Rgb low = ramp.at(part / double{parts}),
                                high = ramp.at((part + 1) / double{parts});
            examples::fillBox(*map, left, rc.bottom + height * part / parts, right,
                              rc.bottom + height * (part + 1) / parts, z - ChartOverlay::depthStep / 2,
                              CvornColour(RGB(low.red, low.green, low.blue), 1),
                              CvornColour(RGB(high.red, high.green, high.blue), 1), true);
        }
    }
}
