// SPDX-License-Identifier: MIT
#include "explorer/explorer_view.h"

#include "tests/support/temp_folder.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <span>

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

Options optionsOf(const char* ramp) {
    Options options;
    options.ramp = ramp;
    options.legend.reset(); // the chart alone
    options.toolbar = false;
    return options;
}

/// The view with its rotation open to the test.
class View : public CExplorerView {
public:
    explicit View(Grid grid) : CExplorerView(std::move(grid), optionsOf("land")) {}
    View(Grid grid, const Options& options) : CExplorerView(std::move(grid), options) {}

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

/// What is shown lies inside the picture, and no text touches another.
void expectLabelsApart(const std::vector<examples::PlacedLabel>& labels, int width, int height) {
    for (const auto& a : labels) {
        if (!a.shown) continue;
        EXPECT_TRUE(a.left >= 0 && a.bottom >= 0 && a.left + a.width <= width &&
                    a.bottom + a.height <= height);
        for (const auto& b : labels) {
            if (&a == &b || !b.shown) continue;
            EXPECT_TRUE(a.left >= b.left + b.width || b.left >= a.left + a.width ||
                        a.bottom >= b.bottom + b.height || b.bottom >= a.bottom + a.height);
        }
    }
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
            expectLabelsApart(view.axes().labels(), width, height);
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

TEST(ExplorerView, StrangeDataDrawsWithLabels) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    struct Case {
        const char* name;
        int rows, columns;
        std::vector<double> values;
        int fewest; ///< labels that a large picture shows
    };
    const Case cases[] = {
        {"narrow range", 2, 2, {0.001, 0.002, 0.0015, 0.001}, 8},
        {"far from 0", 2, 2, {1e6, 1e6 + 3, 1e6 + 1, 1e6}, 8},
        {"both signs", 2, 2, {-5, 5, 0, 1}, 8},
        {"constant", 2, 2, {7, 7, 7, 7}, 8},
        {"single row", 1, 4, {1, 2, 3, 4}, 6},
        {"single number", 1, 1, {1e300}, 4},
        {"only holes", 2, 2, {nan, nan, nan, nan}, 8},
        {"widest", 2, 2, {-1e308, 1e308, 0, 0}, 4},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        Grid grid;
        grid.rows = c.rows;
        grid.columns = c.columns;
        grid.values = c.values;
        View view(grid);
        view.picture(800, 600);
        const auto& labels = view.axes().labels();
        EXPECT_GE(std::count_if(labels.begin(), labels.end(), [](const auto& label) { return label.shown; }),
                  c.fewest);
        EXPECT_LT(labels.size(), 60U);
        expectLabelsApart(labels, 800, 600);
    }
}

TEST(ExplorerView, PicturesOnThePlanesFaceTheEye) {
    // A flat chart with nothing of the surface in the way: only holes. The picture's upper left quarter is
    // red.
    support::TempFolder folder;
    std::vector<BYTE> bits(std::size_t{64} * 64 * 3, 255);
    for (int y = 32; y < 64; ++y) {
        for (int x = 0; x < 32; ++x)
            bits[(y * 64 + x) * 3] = bits[(y * 64 + x) * 3 + 1] = 0;
    }
    const std::string file = folder.pathOf("plane.png");
    ASSERT_TRUE(
        CvornImageCodec::SaveBits(file.c_str(), CvornImageCodec::FORMAT_PNG, bits.data(), 64, 64, 24));
    Grid grid;
    grid.rows = grid.columns = 5;
    grid.values.assign(25, std::numeric_limits<double>::quiet_NaN());
    for (auto [viewPoint, plane] :
         {std::pair{ViewPoint::top, 0}, {ViewPoint::front, 1}, {ViewPoint::side, 2}}) {
        Options options = optionsOf("land");
        options.planeFiles[plane] = file;
        options.hidden = {AXES_GRIDS, ChartAxes::SHOW_LABELS};
        for (auto [width, height] : {std::pair{300, 300}, {700, 700}}) {
            View view(grid, options);
            view.lookFrom(viewPoint);
            const std::vector<BYTE> picture = view.picture(width, height);
            double redX = 0, redY = 0, redCount = 0;
            for (int y = 0; y < height; ++y) {
                for (int x = 0; x < width; ++x) {
                    const BYTE* pixel = &picture[(static_cast<std::size_t>(y) * width + x) * 3];
                    if (pixel[2] - pixel[0] < 60) continue;
                    redX += x;
                    redY += y;
                    ++redCount;
                }
            }
            ASSERT_GT(redCount, width * height / 200.0) << plane;
            EXPECT_LT(redX / redCount, width / 2.0) << plane << ", " << width;
            EXPECT_GT(redY / redCount, height / 2.0) << plane << ", " << width;
        }
    }
}

TEST(ExplorerView, ChartFilesBringRangesAndParametersBack) {
    const auto stored = [](View& view, UINT mode, CMemFile& file) {
        file.SeekToBegin();
        CArchive archive(&file, mode);
        view.axes().serialize(archive);
        archive.Close();
    };
    View source(someGrid(12, 15));
    source.axes().toggle(DWORD{AXES_TIPS} | ChartAxes::SHOW_LABELS);
    CMemFile file;
    stored(source, CArchive::store, file);
    View other(someGrid(3, 4));
    stored(other, CArchive::load, file);
    EXPECT_EQ(other.axes().set().GetParam(~0UL), source.axes().set().GetParam(~0UL));
    EXPECT_EQ(other.axes().set().m_axisZ.GetMax(), source.axes().set().m_axisZ.GetMax());
    EXPECT_EQ(other.axes().set().m_axisX.GetMax(), source.axes().set().m_axisX.GetMax());

    // Cut off anywhere, and with every byte set: an exception or a chart that draws.
    std::vector<BYTE> bytes(static_cast<std::size_t>(file.GetLength()));
    file.SeekToBegin();
    file.Read(bytes.data(), static_cast<UINT>(bytes.size()));
    for (std::size_t length = 0; length < bytes.size(); length += 7) {
        CMemFile cut;
        cut.Write(bytes.data(), static_cast<UINT>(length));
        EXPECT_ANY_THROW(
            try { stored(other, CArchive::load, cut); } catch (CException* exception) {
                exception->Delete();
                throw 0;
            });
        for (BYTE& byte : std::span(bytes).subspan(length, 1))
            byte = 0xFF;
        CMemFile corrupt;
        corrupt.Write(bytes.data(), static_cast<UINT>(bytes.size()));
        try {
            stored(other, CArchive::load, corrupt);
        } catch (CException* exception) {
            exception->Delete();
        }
        other.picture(60, 40);
    }
}

/// A list must show what the buffers show.
class ListView : public View {
public:
    using View::View;

protected:
    void OnBuild() override {
        axes().build(m_fLineWidth);
        m_list.build({m_grid, m_ramp, axes().extents()}, Surface::Storage::list);
    }
    void OnOutputToDC(CDC* pDC, int x, int y) override {
        View::OnOutputToDC(pDC, x, y);
        m_list.draw();
    }

private:
    Grid m_grid = someGrid(12, 15);
    ColourRamp m_ramp = *ColourRamp::named("land");
    Surface m_list;
};

TEST(ExplorerView, AListShowsWhatBuffersShow) {
    constexpr int width = 200, height = 150;
    ListView list(someGrid(12, 15));
    View buffers(someGrid(12, 15));
    // The list is drawn once more over the whole, texts included.
    list.axes().toggle(ChartAxes::SHOW_LABELS);
    buffers.axes().toggle(ChartAxes::SHOW_LABELS);
    std::vector<BYTE> fromList = list.picture(width, height), fromBuffers = buffers.picture(width, height);
    ASSERT_GT(coverageOf(fromList, width, height).all, 2000);
    // Bytes become normals by one formula in a list and by another from a buffer.
    for (std::size_t i = 0; i < fromList.size(); ++i)
        ASSERT_NEAR(fromList[i], fromBuffers[i], 2) << i;
}

} // namespace
