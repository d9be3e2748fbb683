// SPDX-License-Identifier: MIT
#include "explorer/explorer_view.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>

namespace {

using namespace examples;

Grid someGrid(int rows, int columns) {
    Grid grid;
    grid.rows = rows;
    grid.columns = columns;
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column)
            grid.values.push_back(std::sin(row * 0.9) * std::cos(column * 0.7) +
                                  (column == 0 || row == 0 ? 3 : 0));
    }
    return grid;
}

/// The view with its rotation open to the test.
class View : public CExplorerView {
public:
    explicit View(Grid grid) : CExplorerView(std::move(grid), *ColourRamp::named("land")) {}

    CvornMatrix& rotation() { return *m_userRot.GetMatrix(); }
    void press(UINT key) { OnKeyDown(key, 1, 0); }

    std::vector<BYTE> picture(int width, int height) {
        CvornDIBSurface surface;
        EXPECT_TRUE(surface.Create(width, height, static_cast<HPALETTE>(nullptr)));
        EXPECT_TRUE(drawPicture(surface));
        const BYTE* bits = surface.GetBitsAddress();
        return {bits, bits + static_cast<std::size_t>(surface.GetStorageWidth()) * height};
    }
};

/// How many pixels differ clearly from the lower left one, all and along the border.
struct Coverage {
    int all = 0;
    int border = 0;
};

Coverage coverageOf(const std::vector<BYTE>& picture, int width, int height) {
    Coverage coverage;
    std::size_t stride = picture.size() / height;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            bool drawn = std::abs(picture[y * stride + x * 3] - picture[0]) > 3;
            coverage.all += drawn;
            coverage.border += drawn && (x == 0 || y == 0 || x == width - 1 || y == height - 1);
        }
    }
    return coverage;
}

TEST(ExplorerView, NothingIsClippedAtAnyAngle) {
    struct Case {
        int rows, columns, width, height;
    };
    for (auto [rows, columns, width, height] : {Case{9, 9, 160, 120}, {4, 40, 160, 120}, {9, 9, 120, 200}}) {
        View view(someGrid(rows, columns));
        for (int step = 0; step < 24; ++step) {
            view.rotation().RotateXRad(0.37f * step, 0);
            view.rotation().RotateYRad(0.61f * step, 1);
            view.rotation().RotateZRad(0.83f * step, 1);
            Coverage coverage = coverageOf(view.picture(width, height), width, height);
            EXPECT_EQ(coverage.border, 0) << rows << " x " << columns << ", step " << step;
        }
        view.lookFrom(ViewPoint::top);
        EXPECT_GT(coverageOf(view.picture(width, height), width, height).all, rows * columns);
    }
}

TEST(ExplorerView, KeysLookFromWhereTheySay) {
    View view(someGrid(12, 15));
    std::vector<std::vector<BYTE>> pictures;
    for (auto [key, viewPoint] : {std::pair{'T', ViewPoint::top},
                                  {'F', ViewPoint::front},
                                  {'S', ViewPoint::side},
                                  {'D', ViewPoint::threeD}}) {
        view.lookFrom(viewPoint);
        pictures.push_back(view.picture(120, 90));
        view.rotation().RotateXRad(1, 1);
        view.press(key);
        EXPECT_EQ(view.picture(120, 90), pictures.back()) << key;
    }
    for (std::size_t i = 0; i < pictures.size(); ++i)
        EXPECT_EQ(std::count(pictures.begin(), pictures.end(), pictures[i]), 1) << i;
}

/// A list must show what the buffers show.
class ListView : public View {
public:
    using View::View;

protected:
    void OnBuild() override {
        m_list.build(buildSurfaceMesh(someGrid(12, 15), *ColourRamp::named("land"), m_extents),
                     Surface::Storage::list);
    }
    void OnOutputToDC(CDC* pDC, int x, int y) override {
        View::OnOutputToDC(pDC, x, y);
        m_list.draw();
    }

private:
    MeshExtents m_extents = MeshExtents::inBall(someGrid(12, 15), 0.65f);
    Surface m_list;
};

TEST(ExplorerView, AListShowsWhatBuffersShow) {
    EXPECT_EQ(ListView(someGrid(12, 15)).picture(200, 150), View(someGrid(12, 15)).picture(200, 150));
}

} // namespace
