// SPDX-License-Identifier: MIT
#include "bench/harness.h"
#include "tests/support/gl_window.h"
#include "vorn/axes/axis_set.h"

#include <array>
#include <cmath>
#include <memory>
#include <vector>

namespace {

using Point = std::array<float, 3>;

/// What an axis set emits, written by hand: every vertex is worked out beforehand, and playing it only calls
/// GL.
class PlainSet {
public:
    explicit PlainSet(const CvornAxisSet& set) : m_set(set) {
        const CvornAxis &x = set.m_axisX, &y = set.m_axisY, &z = set.m_axisZ;
        addTip(x, {1, 0, 0});
        addTip(y, {0, 1, 0});
        addTip(z, {0, 0, 1});
        addPlane(x, z, set.m_imageXZ, {0, 1, 0});
        addPlane(x, y, set.m_imageXY, {0, 0, 1});
        addPlane(y, z, set.m_imageYZ, {1, 0, 0});
    }

    void emit() const {
        glLineWidth(2);
        m_set.m_clrAxis.glColor();
        glBegin(GL_LINES);
        for (const Tip& tip : m_tips) {
            glVertex3fv(tip.start.data());
            glVertex3fv(tip.apex.data());
        }
        glEnd();
        glLineWidth(1);
        for (const Plane& plane : m_planes)
            emitImage(plane);
        for (const Tip& tip : m_tips)
            emitTip(tip);
        for (const Plane& plane : m_planes)
            emitGrid(plane);
    }

private:
    struct Tip {
        Point normal, start, apex;
        CvornColour apexColour, rimColour;
        std::vector<Point> rim;
    };
    struct Plane {
        Point normal;
        GLuint texture;
        Point corners[4];
        std::vector<Point> lines[2];
    };

    static Point at(const CvornAxis& a, float p, const CvornAxis& b, float q) {
        Point point;
        a.vornVectorPos(point.data(), p, b, q);
        return point;
    }

    void addTip(const CvornAxis& axis, Point along) {
        Tip tip{along, at(axis, 0, axis, 0), at(axis, 1, axis, 0), axis.m_clrAxis, axis.m_clrAxis, {}};
        tip.apexColour.Darker(0.2F);
        tip.rimColour.Lighter(0.2F);
        tip.rimColour.m_fAlpha = 0.7F;
        for (int i = 0; i <= 20; i++) {
            const Point centre = at(axis, 1 - m_set.m_fTipLength, axis, 0);
            const float u = m_set.m_fTipRadius * std::cos(i * 0.349F),
                        v = m_set.m_fTipRadius * std::sin(i * 0.349F);
            if (along[0] != 0)
                tip.rim.push_back({centre[0], centre[1] + u, centre[2] + v});
            else if (along[1] != 0)
                tip.rim.push_back({centre[0] + u, centre[1], centre[2] + v});
            else
                tip.rim.push_back({centre[0] + u, centre[1] + v, centre[2]});
        }
        m_tips.push_back(tip);
    }

    void addPlane(const CvornAxis& a, const CvornAxis& b, const CvornDIBTexture& image, Point normal) {
        const float end = 1 - m_set.m_fTipLength;
        Plane plane{normal,
                    image.GetTextureName(),
                    {at(a, 0, b, 0), at(a, 0, b, end), at(a, end, b, end), at(a, end, b, 0)},
                    {}};
        for (int side = 0; side < 2; side++) {
            const CvornAxis &across = side == 0 ? a : b, &along = side == 0 ? b : a;
            for (int i = 0; i < across.GetTickCount(); i++) {
                const float p = across.GetTickPos(i), q = along.GetTickPos(along.GetTickCount() - 1);
                plane.lines[side].push_back(at(across, p, along, 0));
                plane.lines[side].push_back(at(across, p, along, q));
            }
        }
        m_planes.push_back(plane);
    }

    static void emitImage(const Plane& plane) {
        static constexpr float s_texturePoints[4][2] = {{0, 0}, {0, 1}, {1, 1}, {1, 0}};
        glColor4f(0.5F, 0.5F, 0.5F, 0.5F);
        glEnable(GL_TEXTURE_2D);
        glBindTexture(GL_TEXTURE_2D, plane.texture);
        glBegin(GL_QUADS);
        glNormal3fv(plane.normal.data());
        for (int i = 0; i < 4; i++) {
            glTexCoord2fv(s_texturePoints[i]);
            glVertex3fv(plane.corners[i].data());
        }
        glEnd();
        glDisable(GL_TEXTURE_2D);
    }

    static void emitTip(const Tip& tip) {
        glNormal3fv(tip.normal.data());
        glBegin(GL_TRIANGLE_FAN);
        tip.apexColour.glColor();
        glVertex3fv(tip.apex.data());
        tip.rimColour.glColor();
        for (const Point& point : tip.rim)
            glVertex3fv(point.data());
        glEnd();
    }

    void emitGrid(const Plane& plane) const {
        glNormal3fv(plane.normal.data());
        glBegin(GL_LINES);
        for (const auto& lines : plane.lines) {
            for (std::size_t i = 0; i < lines.size(); i += 2) {
                if (i % 10 == 0) m_set.m_clrGrid.glColor();
                if (i % 10 == 2) m_set.m_clrMinorGrid.glColor();
                glVertex3fv(lines[i].data());
                glVertex3fv(lines[i + 1].data());
            }
        }
        glEnd();
    }

    const CvornAxisSet& m_set;
    std::vector<Tip> m_tips;
    std::vector<Plane> m_planes;
};

/// A full axis set in a window: 51 ticks an axis, grids, tips and images, seen at an angle.
struct Chart {
    support::GlWindow window{640, 480, true};
    CvornAxisSet axes{AXES_TIPS | AXES_GRIDS};
    GLuint ourList = glGenLists(2);
    GLuint plainList = ourList + 1;
    std::unique_ptr<PlainSet> plain;

    Chart() {
        glMatrixMode(GL_PROJECTION);
        gluPerspective(30, 4.0 / 3, 0.5, 20);
        glMatrixMode(GL_MODELVIEW);
        glTranslatef(0, 0, -3);
        glRotatef(-70, 1, 0, 0);
        glRotatef(45, 0, 0, 1);
        glEnable(GL_DEPTH_TEST);
        axes.UpdateOrigin(-0.5F, -0.5F, -0.5F);
        axes.m_clrGrid = RGB(200, 200, 200);
        axes.m_clrMinorGrid = RGB(100, 100, 100);
        std::vector<unsigned char> pixels(64 * 64 * 4, 128);
        for (CvornDIBTexture* image : {&axes.m_imageXY, &axes.m_imageXZ, &axes.m_imageYZ}) {
            GLuint name;
            glGenTextures(1, &name);
            image->SpecialCreate(64, 64, pixels.data());
            image->SetTextureName(name);
        }
        plain = std::make_unique<PlainSet>(axes);
    }
    void buildOurs() { axes.vornBuild(static_cast<int>(ourList), 1); }
    void buildPlain() const {
        glNewList(plainList, GL_COMPILE);
        plain->emit();
        glEndList();
    }
};

void draw(GLuint list) {
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glCallList(list);
    glFinish();
}

bench::Sides drawSides() {
    const auto chart = std::make_shared<Chart>();
    chart->buildOurs();
    chart->buildPlain();
    return {[=] { draw(chart->ourList); }, [=] { draw(chart->plainList); }};
}

bench::Sides buildSides() {
    const auto chart = std::make_shared<Chart>();
    return {[=] { chart->buildOurs(); }, [=] { chart->buildPlain(); }};
}

const bench::Registration drawing{
    {"axes: draw a full set", "a list of the same primitives", 1.05, drawSides}};
const bench::Registration building{
    {"axes: vornBuild into a list", "GL calls with known vertices", 1.3, buildSides}};

} // namespace
