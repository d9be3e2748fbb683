// SPDX-License-Identifier: MIT
#pragma once

#include "examples/explorer/explorer_view.h"
#include "tests/examples/grids.h"
#include "tests/examples/shown_view.h"

#include <cmath>
#include <gtest/gtest.h>

namespace support {

constexpr COLORREF chartBackground = RGB(250, 250, 248);

/// Waves, and a step down behind the first row and column.
inline examples::Grid waves(int rows, int columns) {
    return gridFrom(rows, columns, [columns](int i) {
        const int row = i / columns, column = i % columns;
        return std::sin(row * 0.9) * std::cos(column * 0.7) + (column == 0 || row == 0 ? 3 : 0);
    });
}

inline Options withOverlays() {
    Options options;
    options.file = "C:\\charts\\waves.csv";
    options.ramp = "land";
    return options;
}

inline Options chartAlone() {
    Options options = withOverlays();
    options.legend.reset();
    options.toolbar = false;
    return options;
}

/// The explorer's chart, drawn off-screen or shown, turned and clicked by a test.
class ExplorerWindow : public Shown<CExplorerView> {
public:
    explicit ExplorerWindow(examples::Grid grid, const Options& options = chartAlone())
        : Shown(std::move(grid), options) {}

    /// Drawn off-screen.
    Picture picture(CSize size) {
        CvornDIBSurface surface;
        EXPECT_TRUE(surface.Create(size.cx, size.cy, static_cast<HPALETTE>(nullptr)));
        EXPECT_TRUE(drawPicture(surface));
        return Picture::of(surface);
    }
    /// Presses the left button and holds it along the path. The other flags are those of keys.
    void drag(const std::vector<CPoint>& path, UINT flags = 0) {
        mouse(WM_LBUTTONDOWN, MK_LBUTTON | flags, path.front());
        for (const CPoint pt : path)
            mouse(WM_MOUSEMOVE, MK_LBUTTON | flags, pt);
    }
    void click(CPoint pt, UINT flags = 0) {
        mouse(WM_LBUTTONDOWN, MK_LBUTTON | flags, pt);
        mouse(WM_LBUTTONUP, flags, pt);
    }
    void key(UINT key) {
        SendMessage(WM_KEYDOWN, key, 1);
        UpdateWindow();
    }
    void choose(int menuItem) {
        OnMenuItem(menuItem);
        UpdateWindow();
    }
    CvornMatrix& rotation() { return *m_userRot.GetMatrix(); }
    std::vector<float> angles() {
        const float* elements = rotation().m_afElement;
        return {elements, elements + 16};
    }
};

} // namespace support
