// SPDX-License-Identifier: MIT
#include "tests/support/canvas.h"
#include "tests/support/gl_test.h"
#include "tests/support/handle_counts.h"
#include "vorn/bitmaps/dib_surface.h"
#include "vorn/view/rendering_context.h"

namespace {

constexpr COLORREF red = RGB(200, 20, 10), blue = RGB(10, 20, 200), white = RGB(255, 255, 255);

class ProbeContext : public CvornOGLDC {
public:
    ~ProbeContext() { Destroy(); }
    using CvornOGLDC::ComponentFromIndex, CvornOGLDC::FillPaletteEntries;
};

class ContextTest : public testing::Test {
protected:
    ContextTest() {
        m_window.CreateEx(0, AfxRegisterWndClass(0), "", WS_POPUP, CRect(0, 0, 64, 48), nullptr, 0);
        m_context.SetRenderToDIB(1);
    }
    ~ContextTest() override { m_window.DestroyWindow(); }

    /// Fills a rectangle of GL window pixels.
    static void fill(COLORREF colour, int x, int y, int width, int height) {
        glEnable(GL_SCISSOR_TEST);
        glScissor(x, y, width, height);
        glClearColor(GetRValue(colour) / 255.0F, GetGValue(colour) / 255.0F, GetBValue(colour) / 255.0F, 0);
        glClear(GL_COLOR_BUFFER_BIT);
    }

    CWnd m_window;
    ProbeContext m_context;
};

TEST_F(ContextTest, SurfacePicturesHaveTheirColoursAtAnySizeAndKeepTheirContext) {
    ASSERT_TRUE(m_context.CreateSurface(20, 10, nullptr) && m_context.MakeCurrentContext());
    const HGLRC first = m_context.GetRC();
    glNewList(1, GL_COMPILE);
    fill(blue, 0, 0, 100, 10); // the lowest rows
    glEndList();
    for (const int width : {1, 61, 62, 63, 64}) {
        support::Canvas canvas(70, 40);
        ASSERT_TRUE(m_context.ResizeSurface(width, 30, nullptr));
        ASSERT_TRUE(m_context.MakeCurrentContext(CDC::FromHandle(canvas.dc())));
        fill(red, 0, 0, width, 30);
        glCallList(1);
        m_context.Render(3, 5, FALSE);
        const int right = 2 + width;
        const struct {
            int x, y;
            COLORREF colour;
        } pixels[] = {{3, 5, red},      {3, 24, red},      {3, 25, blue},  {3, 34, blue},
                      {right, 24, red}, {right, 25, blue}, {2, 20, white}, {right + 1, 20, white},
                      {3, 4, white},    {3, 35, white}};
        for (const auto& [x, y, colour] : pixels)
            EXPECT_EQ(canvas.at(x, y), colour) << width << " wide: " << x << ", " << y;
    }
    EXPECT_EQ(m_context.GetRC(), first);
    EXPECT_FALSE(m_context.ResizeSurface(0, 10, nullptr));
    EXPECT_EQ(m_context.GetRC(), nullptr);
}

TEST_F(ContextTest, GdiDrawsOverAFinishedPictureAndLaterGlOverThat) {
    support::Canvas canvas(40, 40);
    ASSERT_TRUE(m_context.CreateSurface(40, 40, nullptr));
    for (int frame = 0; frame < 2; ++frame) {
        ASSERT_TRUE(m_context.MakeCurrentContext(CDC::FromHandle(canvas.dc())));
        fill(red, 0, 0, 40, 40);
        m_context.UpdateSurface();
        m_context.GetDC()->FillSolidRect(0, 0, 20, 20, white);
        m_context.Render(0, 0, FALSE);
        EXPECT_EQ(canvas.at(5, 5), white);
        EXPECT_EQ(canvas.at(30, 30), red);
        fill(blue, 30, 0, 10, 10);
        m_context.Render(0, 0, FALSE);
        EXPECT_EQ(canvas.at(5, 5), red);
        EXPECT_EQ(canvas.at(35, 35), blue);
    }
}

TEST_F(ContextTest, OneWindowServesAllKindsOfOutputAndLeaksNothing) {
    const auto outputs = [this] {
        for (const char kind : {'w', 'm', 's', 'm', 'w'}) {
            m_context.SetRenderToDIB(kind == 's');
            ASSERT_TRUE(kind == 's' ? m_context.CreateSurface(64, 48, nullptr) &&
                                          m_context.ResizeSurface(66, 50, nullptr)
                                    : m_context.Create(&m_window, kind == 'm'));
            CClientDC client(&m_window);
            ASSERT_TRUE(m_context.MakeCurrentContext(&client)) << kind;
            fill(red, 0, 0, 64, 48);
            EXPECT_TRUE(support::isNear(support::pixelAt(60, 40), red)) << kind;
            m_context.Destroy();
        }
    };
    outputs();
    const auto before = support::HandleCounts::now();
    for (int i = 0; i < 20; ++i)
        outputs();
    EXPECT_EQ(support::HandleCounts::now(), before);
}

TEST_F(ContextTest, FailuresLeaveNoContext) {
    const auto expectNone = [this](const char* what, int result) {
        EXPECT_FALSE(result) << what;
        EXPECT_EQ(m_context.GetRC(), nullptr) << what;
    };
    expectNone("surface without bitmap", m_context.Create(&m_window, FALSE));
    expectNone("empty surface", m_context.CreateSurface(0, 0, &m_window));
    expectNone("surface beyond memory", m_context.CreateSurface(100'000, 100'000, &m_window));
    m_context.Render(0, 0, FALSE);
    m_context.SetRenderToDIB(0);
    expectNone("no window", m_context.Create(nullptr, FALSE));
    expectNone("closed window", m_context.Create(std::make_unique<CWnd>().get(), FALSE));
    expectNone("nothing to make current", m_context.MakeCurrentContext());
    m_context.Render(0, 0, FALSE);

    ASSERT_TRUE(m_context.Create(&m_window, FALSE));
    CDC memory;
    memory.CreateCompatibleDC(nullptr);
    CClientDC client(&m_window);
    for (CDC* unusable : {&memory, static_cast<CDC*>(nullptr)}) {
        ASSERT_TRUE(m_context.MakeCurrentContext(&client));
        EXPECT_FALSE(m_context.MakeCurrentContext(unusable));
        EXPECT_EQ(::wglGetCurrentContext(), nullptr) << "the earlier DC is still drawn to";
    }
}

TEST_F(ContextTest, PaletteOfEightBitDevices) {
    PIXELFORMATDESCRIPTOR format = {};
    format.cColorBits = 8;
    format.cRedBits = format.cGreenBits = format.cGreenShift = 3;
    format.cBlueBits = 2;
    format.cBlueShift = 6;
    PALETTEENTRY entries[256];
    const auto entry = [&](int i) { return RGB(entries[i].peRed, entries[i].peGreen, entries[i].peBlue); };
    m_context.FillPaletteEntries(format, entries);
    EXPECT_EQ(entry(0x4A), RGB(73, 36, 85));
    EXPECT_EQ(entry(3), RGB(128, 0, 0)) << "system colour 1";
    EXPECT_EQ(entry(91), RGB(128, 128, 128)) << "system colour 12";
    format.cBlueShift = 5;
    m_context.FillPaletteEntries(format, entries);
    EXPECT_EQ(entry(3), RGB(109, 0, 0)) << "no system colours in other formats";
    EXPECT_EQ(m_context.ComponentFromIndex(2, 1, 1), 255);
    EXPECT_EQ(m_context.ComponentFromIndex(255, 4, 0), 0);
}

} // namespace
