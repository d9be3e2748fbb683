// SPDX-License-Identifier: MIT
#include "tests/support/canvas.h"
#include "tests/support/feedback.h"
#include "tests/support/gl_test.h"
#include "tests/support/probe_view.h"

#include <cmath>

namespace {

constexpr COLORREF red = RGB(200, 20, 10), blue = RGB(10, 20, 200), white = RGB(255, 255, 255);

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
                 {UPD_TEXTURES, "", ""}}; // as many as before
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
        // Lit from two opposite sides a face is as bright as half the component of its axis.
        const float bright[] = {1, 1, 1, 1}, dark[] = {0, 0, 0, 1};
        const float sides[][4] = {{1, 2, 3, 0}, {-1, -2, -3, 0}};
        glDisable(GL_POLYGON_OFFSET_FILL);
        glDisable(GL_NORMALIZE);
        glDisable(GL_COLOR_MATERIAL);
        glLightModelfv(GL_LIGHT_MODEL_AMBIENT, dark);
        glMaterialfv(GL_FRONT_AND_BACK, GL_EMISSION, dark);
        glMaterialfv(GL_FRONT_AND_BACK, GL_DIFFUSE, bright);
        triangles = support::captureModel([&] {
            for (int i = 0; i < 2; ++i) {
                glEnable(GL_LIGHT0 + i);
                glLightfv(GL_LIGHT0 + i, GL_AMBIENT, dark);
                glLightfv(GL_LIGHT0 + i, GL_DIFFUSE, bright);
                glLightfv(GL_LIGHT0 + i, GL_POSITION, sides[i]);
            }
            glCallList(1);
        });
    };
    m_view.paint();
    ASSERT_EQ(support::countOf(triangles, GL_POLYGON_TOKEN), 12) << "two for each face";
    const struct {
        double support::FeedbackVertex::*axis;
        double position, component;
    } faces[] = {{&support::FeedbackVertex::y, -0.5, 2}, {&support::FeedbackVertex::y, 0.5, 2},
                 {&support::FeedbackVertex::x, -0.5, 1}, {&support::FeedbackVertex::x, 0.5, 1},
                 {&support::FeedbackVertex::z, 0.5, 3},  {&support::FeedbackVertex::z, -0.5, 3}};
    for (int i = 0; i < 12; ++i) {
        for (const auto& vertex : triangles[i].vertices) {
            EXPECT_NEAR(vertex.*faces[i / 2].axis, faces[i / 2].position, 1e-4) << "face " << i / 2;
            EXPECT_NEAR(std::abs(vertex.x) + std::abs(vertex.y) + std::abs(vertex.z), 1.5, 1e-4);
            EXPECT_NEAR(vertex.r, 0.5 * faces[i / 2].component / std::sqrt(14.0), 1e-3) << "face " << i / 2;
        }
    }
}

TEST_F(ViewPaintTest, PerspectiveFollowsSizeMarginAndDistance) {
    const double fovy = std::atan(1 / 7.0) / 0.75;
    const struct {
        int cx, cy, margin;
        float distance;
        int viewHeight;
        double fovy;
    } cases[] = {{400, 330, 30, 7, 300, fovy},
                 {200, 300, 0, 7, 300, fovy * 1.5},
                 {200, 20, 50, 7, 1, fovy},
                 {200, 50, 50, 7, 1, fovy},
                 {300, 300, 0, 3, 300, std::atan(1 / 3.0) / 0.75}};
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
    EXPECT_EQ(m_view.SetViewportSize(100, 0, TRUE, 0, 0), CSize(300, 300));
    EXPECT_EQ(m_view.m_rcView, CRect(0, 0, 300, 300));
}

TEST_F(ViewPaintTest, TextureNamesFollowTheCountAndTheContext) {
    int live = 0;
    m_view.onHook = [&](const std::string& hook) {
        if (hook != "textures") return;
        live = 0;
        for (int i = 0; i < m_view.m_nTextures; ++i) {
            glBindTexture(GL_TEXTURE_2D, m_view.m_auTextures[i]);
            live += glIsTexture(m_view.m_auTextures[i]);
        }
    };
    const std::pair<int, int> counts[] = {{3, 3}, {1, 1}, {0, 0}, {1000, 100}, {-4, 0}, {2, 2}};
    for (const auto& [wanted, expected] : counts) {
        m_view.m_nTexturesWanted = wanted;
        m_view.SetUpdate(UPD_TEXTURES, TRUE, FALSE);
        m_view.paint();
        EXPECT_EQ(m_view.m_nTextures, expected);
        EXPECT_EQ(live, expected);
    }
    ASSERT_TRUE(m_view.CreateDCA(0));
    EXPECT_NE(m_view.paint().find("textures"), std::string::npos)
        << "the new context has none of the old textures";
}

TEST_F(ViewPaintTest, TextIsDrawnTwiceOneBehindTheOther) {
    std::vector<support::FeedbackPrimitive> text;
    m_view.m_nFontListBase = 1000;
    m_view.onHook = [&](const std::string& hook) {
        if (hook != "scene") return;
        const GLubyte dot = 0x80;
        for (GLuint c = 'a'; c <= 'c'; ++c) {
            glNewList(1000 + 256 * 2 + c, GL_COMPILE);
            glBitmap(1, 1, 0, 0, 10, 0, &dot);
            glEndList();
        }
        POINT pt = {20, 30};
        text = support::captureWindow([&] {
            m_view.OutputHorizTextPt(2, &pt, "abc");
            m_view.OutputHorizTextPt(2, &pt, nullptr);
        });
    };
    m_view.paint();
    ASSERT_EQ(support::countOf(text, GL_BITMAP_TOKEN), 6);
    for (int i = 0; i < 6; ++i) {
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
        EXPECT_EQ(canvas.at(10, 10), white);
    }
    m_view.paint();
    EXPECT_TRUE(support::isNear(m_view.at(100, 75), red)) << "the list that could not be built is missing";
}

/// A view that has drawn off screen from the start, which shows in child windows everywhere.
class SurfaceView : public support::ProbeView {
protected:
    afx_msg int OnCreate(LPCREATESTRUCT lpCreateStruct) {
        m_oglDC.SetRenderToDIB(1);
        return CWnd::OnCreate(lpCreateStruct);
    }
    DECLARE_MESSAGE_MAP()
};
BEGIN_MESSAGE_MAP(SurfaceView, support::ProbeView)
    ON_WM_CREATE()
END_MESSAGE_MAP()

TEST_F(ViewPaintTest, AChildOnItsSurfaceShowsAndFollowsItsSize) {
    CWnd parent;
    parent.CreateEx(0, AfxRegisterWndClass(0), "", WS_POPUP, CRect(0, 0, 200, 150), nullptr, 0);
    parent.ShowWindow(SW_SHOWNA);
    SurfaceView child;
    child.build = [] { support::drawPlate(red, -0.4F, -0.4F, 0.4F, 0.4F); };
    child.m_clrBackground = blue;
    ASSERT_TRUE(child.open(120, 90, &parent));
    for (const CSize size : {CSize(120, 90), CSize(150, 101)}) {
        child.SetWindowPos(nullptr, 0, 0, size.cx, size.cy, SWP_NOZORDER | SWP_NOACTIVATE);
        child.paint();
        CClientDC screen(&child);
        EXPECT_TRUE(support::isNear(screen.GetPixel(size.cx / 2, size.cy / 2), red));
        EXPECT_TRUE(support::isNear(screen.GetPixel(0, 0), blue));
        EXPECT_TRUE(support::isNear(screen.GetPixel(size.cx - 1, size.cy - 1), blue));
        EXPECT_EQ(child.paint().find("build"), std::string::npos);
    }
    parent.DestroyWindow();
}

} // namespace
