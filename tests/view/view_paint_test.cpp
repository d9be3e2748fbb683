// SPDX-License-Identifier: MIT
#include "tests/support/canvas.h"
#include "tests/support/feedback.h"
#include "tests/support/gl_test.h"
#include "tests/support/probe_view.h"

#include <cmath>

namespace {

constexpr COLORREF red = RGB(200, 20, 10), blue = RGB(10, 20, 200);

class ViewPaintTest : public testing::Test {
protected:
    ViewPaintTest() { EXPECT_TRUE(m_view.open()); }

    support::ProbeView m_view;
};

TEST_F(ViewPaintTest, HooksRunInOrderForTheBitsRaised) {
    const struct {
        DWORD bits;
        std::string before, after;
    } cases[] = {{UPD_ALL, "effects textures fonts textmetrics ", "build "},
                 {0, "", ""},
                 {UPD_VIEW, "", ""},
                 {UPD_BUILD, "", "build "},
                 {UPD_SIZE, "", ""},
                 {UPD_BUILD | UPD_SIZE, "", "build "},
                 {UPD_EFFECTS, "effects ", ""},
                 {UPD_FONTS, "fonts textmetrics ", ""},
                 {UPD_TEXTURES, "", ""}};
    for (const auto& [bits, before, after] : cases) {
        m_view.m_dwUpdate = bits;
        EXPECT_EQ(m_view.paint(), "metrics " + before + "camera " + after + "pre scene exclude")
            << "bits " << bits;
    }
    m_view.onHook = [this](const std::string& hook) {
        if (hook == "exclude") m_view.SetUpdate(UPD_ALL, FALSE, FALSE);
    };
    m_view.paint();
    EXPECT_EQ(m_view.m_dwUpdate, 0U) << "bits that hooks raise are dropped";
    EXPECT_EQ(::wglGetCurrentContext(), nullptr);
}

TEST_F(ViewPaintTest, DemonstrationCubeHasSixFacesWithHalfNormals) {
    std::vector<support::FeedbackPrimitive> triangles;
    m_view.onHook = [&](const std::string& hook) {
        if (hook != "scene") return;
        // Lit from a side, a face is as bright as half the component of its axis.
        glDisable(GL_POLYGON_OFFSET_FILL);
        glDisable(GL_NORMALIZE);
        glLightf(GL_LIGHT0, GL_LINEAR_ATTENUATION, 0);
        const float dark[] = {0, 0, 0, 1}, side[] = {1, 2, 3, 0};
        glLightfv(GL_LIGHT0, GL_AMBIENT, dark);
        glLightModelfv(GL_LIGHT_MODEL_AMBIENT, dark);
        glMaterialfv(GL_FRONT_AND_BACK, GL_EMISSION, dark);
        triangles = support::captureModel([&] {
            glLightfv(GL_LIGHT0, GL_POSITION, side);
            glCallList(1);
        });
    };
    m_view.paint();
    ASSERT_EQ(support::countOf(triangles, GL_POLYGON_TOKEN), 12) << "two for each face";
    const int normals[6][3] = {{0, -1, 0}, {0, 1, 0}, {-1, 0, 0}, {1, 0, 0}, {0, 0, 1}, {0, 0, -1}};
    for (int i = 0; i < 12; ++i) {
        const auto [x, y, z] = normals[i / 2];
        for (const auto& v : triangles[i].vertices) {
            EXPECT_NEAR(v.x * x + v.y * y + v.z * z, 0.5, 1e-4) << "triangle " << i;
            EXPECT_NEAR(v.r, std::max(0.0, (x + 2 * y + 3 * z) / std::sqrt(56)), 1e-3) << "triangle " << i;
        }
    }
}

TEST_F(ViewPaintTest, PerspectiveFollowsSizeMarginAndDistance) {
    const double fovy = std::atan(1 / 7.0) / 0.75;
    const struct {
        int cx, cy, margin, viewHeight;
        float distance;
        double fovy;
    } cases[] = {{400, 330, 30, 300, 7, fovy},
                 {200, 300, 0, 300, 7, fovy * 1.5},
                 {200, 50, 50, 1, 7, fovy},
                 {300, 300, 0, 300, 3, std::atan(1 / 3.0) / 0.75}};
    for (const auto& c : cases) {
        m_view.m_nBottomMargin = c.margin;
        m_view.m_fDistance = c.distance;
        m_view.SetViewportSize(c.cx, c.cy, TRUE, 0, 0);
        EXPECT_EQ(m_view.m_rcView, CRect(0, 0, c.cx, c.viewHeight));
        m_view.paint();
        const double scale = 1 / std::tan(c.fovy / 2);
        EXPECT_NEAR(m_view.m_mapping.m_adProj[5], scale, 1e-4 * scale);
        EXPECT_NEAR(m_view.m_mapping.m_adProj[0], scale * c.viewHeight / c.cx, 1e-4 * scale);
        EXPECT_EQ(m_view.m_mapping.m_anViewport[1], c.margin);
    }
    EXPECT_EQ(m_view.SetViewportSize(0, 100, TRUE, 0, 0), CSize(300, 300));
    EXPECT_EQ(m_view.m_rcView, CRect(0, 0, 300, 300));
}

TEST_F(ViewPaintTest, TextureNamesFollowTheCountAndTheContext) {
    int made = -1;
    m_view.onHook = [&](const std::string& hook) {
        if (hook != "textures") return;
        made = 0;
        for (int i = 0; i < m_view.m_nTextures; ++i) {
            glBindTexture(GL_TEXTURE_2D, m_view.m_auTextures[i]);
            made += glIsTexture(m_view.m_auTextures[i]);
        }
    };
    const int counts[][2] = {{3, 3}, {1, 1}, {0, 0}, {1000, 100}, {-4, 0}, {2, 2}, {2, 2}};
    for (const auto& [wanted, expected] : counts) {
        if (m_view.m_nTextures == wanted) { // the new context has none of the old textures
            ASSERT_TRUE(m_view.CreateDCA(0));
        }
        made = -1;
        m_view.m_nTexturesWanted = wanted;
        m_view.SetUpdate(UPD_TEXTURES, TRUE, FALSE);
        m_view.paint();
        EXPECT_EQ(m_view.m_nTextures, expected);
        EXPECT_EQ(made, expected);
    }
}

TEST_F(ViewPaintTest, TextIsDrawnTwiceOneBehindTheOther) {
    std::vector<support::FeedbackPrimitive> text;
    m_view.m_nFontListBase = 1000;
    m_view.onHook = [&](const std::string& hook) {
        if (hook != "scene") return;
        const GLubyte dot = 0x80;
        glNewList(1000 + 256 * 2 + 'a', GL_COMPILE);
        glBitmap(1, 1, 0, 0, 10, 0, &dot);
        glEndList();
        POINT pt = {20, 30};
        text = support::captureWindow([&] { m_view.OutputHorizTextPt(2, &pt, "aa"); });
        m_view.OutputHorizTextPt(2, &pt, nullptr);
    };
    m_view.paint();
    ASSERT_EQ(support::countOf(text, GL_BITMAP_TOKEN), 4);
    for (int i = 0; i < 4; ++i) {
        EXPECT_NEAR(text[i].vertices[0].x, 20 + 10 * i, 0.01);
        EXPECT_NEAR(text[i].vertices[0].y, 30, 0.01);
        EXPECT_NEAR(text[i].vertices[0].z, 0.01, 1e-4);
    }
}

TEST_F(ViewPaintTest, WithoutAUsableContextTheCycleRunsAndThePictureComesBack) {
    m_view.build = [] { support::drawPlate(red, -0.4F, -0.4F, 0.4F, 0.4F); };
    support::Canvas canvas(20, 20);
    for (CDC* pDC : {CDC::FromHandle(canvas.dc()), static_cast<CDC*>(nullptr)}) {
        m_view.m_dwUpdate = UPD_ALL;
        m_view.hooks.clear();
        m_view.OutputToDC(pDC, TRUE, 0, 0, FALSE); // not the window's: nothing can draw there
        EXPECT_EQ(m_view.hooks, "printmetrics effects fonts textmetrics camera build pre scene exclude");
        EXPECT_EQ(m_view.m_dwUpdate, 0U);
        EXPECT_EQ(canvas.at(10, 10), RGB(255, 255, 255));
    }
    m_view.paint();
    EXPECT_TRUE(support::isNear(m_view.at(100, 75), red)) << "the list that could not be built is missing";
}

TEST_F(ViewPaintTest, OffScreenItFollowsTheViewsSize) {
    m_view.build = [] { support::drawPlate(red, -0.4F, -0.4F, 0.4F, 0.4F); };
    m_view.m_clrBackground = blue;
    ASSERT_TRUE(m_view.CreateDCA(1));
    for (const CSize size : {CSize(120, 90), CSize(150, 101)}) {
        support::Canvas canvas(200, 150);
        m_view.SetViewportSize(size.cx, size.cy, TRUE, 0, 0);
        m_view.OutputToDC(CDC::FromHandle(canvas.dc()), FALSE, 10, 20, FALSE);
        EXPECT_TRUE(support::isNear(canvas.at(10 + size.cx / 2, 20 + size.cy / 2), red));
        EXPECT_TRUE(support::isNear(canvas.at(9 + size.cx, 19 + size.cy), blue));
        EXPECT_EQ(m_view.paint().find("build"), std::string::npos) << "the lists are still there";
    }
}

} // namespace
