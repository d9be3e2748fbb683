// SPDX-License-Identifier: MIT
// A frame of the explorer with axes, grids and labels against GL drawing the surface alone, and with all
// overlays against the frame without them.
#include "bench/harness.h"
#include "examples/explorer/explorer_view.h"

#include <cmath>
#include <memory>

namespace {

examples::Grid waves(int side) {
    examples::Grid grid;
    grid.rows = grid.columns = side;
    for (int row = 0; row < side; ++row) {
        for (int column = 0; column < side; ++column)
            grid.values.push_back(std::sin(12.0 * row / side) * std::cos(9.0 * column / side));
    }
    return grid;
}

enum class Overlays { none, small, all };

Options optionsFor(Overlays overlays) {
    Options options;
    options.ramp = examples::ColourRamp::names().front();
    options.toolbar = overlays != Overlays::none;
    options.sheet = overlays == Overlays::all;
    if (overlays == Overlays::none) options.legend.reset();
    return options;
}

/// The explorer's window, which can also draw its surface without anything of the toolkit's around it.
class ChartView : public CExplorerView {
public:
    explicit ChartView(const examples::Grid& grid, Overlays overlays = Overlays::none)
        : CExplorerView(grid, optionsFor(overlays)), m_grid(grid) {
        CreateEx(0, AfxRegisterWndClass(CS_OWNDC), "", WS_POPUP, CRect(0, 0, 800, 600), nullptr, 0);
        ShowWindow(SW_SHOWNA);
        UpdateWindow();
    }

    /// A frame, of a chart that has been turned.
    void drawFrame() {
        m_userRot.RotateY(1);
        CClientDC client(this);
        OutputToDC(&client, FALSE, 0, 0, FALSE);
    }

    void drawSurfaceAlone(HDC dc) {
        ::wglMakeCurrent(dc, m_oglDC.GetRC());
        ::glMatrixMode(GL_MODELVIEW);
        ::glLoadIdentity();
        ::glTranslated(0, 0, -7);
        m_userRot.UpdateRotation();
        m_lighting.Update(nullptr, 0, 0);
        ::glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        m_bare.draw();
        ::glFinish();
        ::SwapBuffers(dc);
        ::wglMakeCurrent(nullptr, nullptr);
    }

protected:
    void OnBuild() override {
        CExplorerView::OnBuild();
        m_bare.build({m_grid, m_ramp, axes().extents()});
    }

private:
    examples::Grid m_grid;
    examples::ColourRamp m_ramp = *examples::ColourRamp::named("land");
    Surface m_bare;
};

bench::Sides frames(int side) {
    const auto view = std::make_shared<ChartView>(waves(side));
    return {[=] {
                CClientDC client(view.get());
                view->OutputToDC(&client, FALSE, 0, 0, FALSE);
            },
            [=] {
                const HDC dc = ::GetDC(view->m_hWnd);
                view->drawSurfaceAlone(dc);
                ::ReleaseDC(view->m_hWnd, dc);
            }};
}

bench::Sides framesWith(Overlays overlays) {
    const auto with = std::make_shared<ChartView>(waves(200), overlays);
    const auto without = std::make_shared<ChartView>(waves(200));
    return {[=] { with->drawFrame(); }, [=] { without->drawFrame(); }};
}

const bench::Registration smallOverlays{{"explorer frame with legend and toolbar, 200 x 200",
                                         "the frame without them", 1.1,
                                         [] { return framesWith(Overlays::small); }}};
const bench::Registration allOverlays{{"explorer frame with a sheet of 32 rows too", "the frame without them",
                                       3, [] { return framesWith(Overlays::all); }}};
const bench::Registration small{{"explorer frame with axes, 200 x 200", "GL drawing the surface alone", 1.15,
                                 [] { return frames(200); }}};
const bench::Registration large{{"explorer frame with axes, 1000 x 1000", "GL drawing the surface alone",
                                 1.05, [] { return frames(1000); }}};

} // namespace
