// SPDX-License-Identifier: MIT
#include "explorer/explorer_view.h"

#include "tests/bitmaps/sample_pictures.h"
#include "tests/examples/explorer_window.h"
#include "tests/support/gl_test.h"
#include "tests/support/temp_folder.h"

#include <algorithm>

namespace {

using support::ExplorerWindow, support::gridOf, support::hole, support::Picture, support::waves;

std::vector<CPoint> drawnIn(const Picture& picture) {
    return picture.where([](CPoint, COLORREF colour) { return colour != support::chartBackground; });
}

/// What is shown lies inside the picture, and no text touches another.
void expectLabelsApart(const std::vector<examples::PlacedLabel>& labels, CSize size) {
    for (const auto& a : labels) {
        if (!a.shown) continue;
        EXPECT_TRUE(a.left >= 0 && a.bottom >= 0 && a.left + a.width <= size.cx &&
                    a.bottom + a.height <= size.cy);
        for (const auto& b : labels) {
            if (&a == &b || !b.shown) continue;
            EXPECT_TRUE(a.left >= b.left + b.width || b.left >= a.left + a.width ||
                        a.bottom >= b.bottom + b.height || b.bottom >= a.bottom + a.height);
        }
    }
}

TEST(ExplorerView, NothingIsClippedAtAnyAngle) {
    struct Case {
        int rows, columns;
        CSize size;
    };
    for (const auto& [rows, columns, size] :
         {Case{9, 9, {160, 120}}, {4, 40, {160, 120}}, {9, 9, {120, 200}}}) {
        ExplorerWindow view(waves(rows, columns));
        const CRect inside(1, 1, size.cx - 1, size.cy - 1);
        for (int step = 0; step < 24; ++step) {
            view.rotation().RotateXRad(0.37f * step, 0);
            view.rotation().RotateYRad(0.61f * step, 1);
            view.rotation().RotateZRad(0.83f * step, 1);
            const CRect drawn = support::boundsOf(drawnIn(view.picture(size)));
            EXPECT_EQ(drawn & inside, drawn) << rows << " x " << columns << ", step " << step;
            expectLabelsApart(view.axes().labels(), size);
        }
        view.lookFrom(ViewPoint::top);
        EXPECT_GT(drawnIn(view.picture(size)).size(), static_cast<std::size_t>(rows * columns));
    }
}

TEST(ExplorerView, StrangeDataDrawsWithLabels) {
    struct Case {
        const char* name;
        examples::Grid grid;
        int fewest; ///< labels that a large picture shows
    };
    const Case cases[] = {
        {"narrow range", gridOf(2, 2, {0.001, 0.002, 0.0015, 0.001}), 8},
        {"far from 0", gridOf(2, 2, {1e6, 1e6 + 3, 1e6 + 1, 1e6}), 8},
        {"both signs", gridOf(2, 2, {-5, 5, 0, 1}), 8},
        {"constant", gridOf(2, 2, {7, 7, 7, 7}), 8},
        {"single row", gridOf(1, 4, {1, 2, 3, 4}), 6},
        {"single number", gridOf(1, 1, {1e300}), 4},
        {"only holes", gridOf(2, 2, {hole, hole, hole, hole}), 8},
        {"widest", gridOf(2, 2, {-1e308, 1e308, 0, 0}), 4},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        ExplorerWindow view(c.grid);
        view.picture({800, 600});
        const auto& labels = view.axes().labels();
        EXPECT_GE(std::ranges::count(labels, true, &examples::PlacedLabel::shown), c.fewest);
        EXPECT_LT(labels.size(), 60U);
        expectLabelsApart(labels, {800, 600});
    }
}

TEST(ExplorerView, PicturesOnThePlanesFaceTheEye) {
    const support::TempFolder folder;
    const std::string file = folder.write("plane.png", support::samplePicture("png"));
    for (auto [viewPoint, plane] :
         {std::pair{ViewPoint::top, 0}, {ViewPoint::front, 1}, {ViewPoint::side, 2}}) {
        Options options = support::chartAlone();
        options.planeFiles[plane] = file;
        options.hidden = {AXES_GRIDS, ChartAxes::SHOW_LABELS};
        for (const int side : {300, 700}) {
            SCOPED_TRACE(testing::Message() << "plane " << plane << ", " << side);
            // Nothing of the surface is in the way.
            ExplorerWindow view(gridOf(5, 5, std::vector(25, hole)), options);
            view.lookFrom(viewPoint);
            // The picture's upper left quarter.
            const std::vector<CPoint> red = view.picture({side, side}).where([](CPoint, COLORREF colour) {
                return GetRValue(colour) - GetBValue(colour) >= 60;
            });
            ASSERT_GT(red.size(), side * side / 200.0);
            EXPECT_LT(support::middleOf(red).x, side / 2);
            EXPECT_LT(support::middleOf(red).y, side / 2);
        }
    }
}

/// Whether the bytes of a chart file are taken.
bool isLoaded(ExplorerWindow& view, std::vector<BYTE> bytes) {
    CMemFile file(bytes.data(), static_cast<UINT>(bytes.size()));
    CArchive archive(&file, CArchive::load);
    try {
        view.axes().serialize(archive);
        return true;
    } catch (CException* exception) {
        exception->Delete();
        return false;
    }
}

TEST(ExplorerView, ChartFilesBringRangesAndParametersBack) {
    ExplorerWindow source(waves(12, 15)), other(waves(3, 4));
    source.axes().toggle(DWORD{AXES_TIPS} | ChartAxes::SHOW_LABELS);
    CMemFile file;
    CArchive archive(&file, CArchive::store);
    source.axes().serialize(archive);
    archive.Close();
    std::vector<BYTE> bytes(static_cast<std::size_t>(file.GetLength()));
    file.SeekToBegin();
    file.Read(bytes.data(), static_cast<UINT>(bytes.size()));
    ASSERT_TRUE(isLoaded(other, bytes));
    EXPECT_EQ(other.axes().set().GetParam(~0UL), source.axes().set().GetParam(~0UL));
    EXPECT_EQ(other.axes().set().m_axisZ.GetMax(), source.axes().set().m_axisZ.GetMax());
    EXPECT_EQ(other.axes().set().m_axisX.GetMax(), source.axes().set().m_axisX.GetMax());

    // Cut off anywhere they are refused, and with wrong bytes the chart draws, whether it takes them or not.
    for (std::size_t length = 0; length < bytes.size(); length += 7) {
        EXPECT_FALSE(isLoaded(other, {bytes.data(), bytes.data() + length})) << length;
        bytes[length] = 0xFF;
        isLoaded(other, bytes);
        other.picture({60, 40});
    }
}

class SurfaceTest : public support::GlTest {};

TEST_F(SurfaceTest, AListShowsWhatBuffersShow) {
    for (const GLenum capability : {GL_DEPTH_TEST, GL_LIGHTING, GL_LIGHT0, GL_COLOR_MATERIAL})
        ::glEnable(capability);
    ::glRotatef(30, 1, 1, 0);
    const examples::Grid grid = waves(12, 15);
    std::vector<Picture> pictures;
    for (const auto storage : {Surface::Storage::best, Surface::Storage::list}) {
        ::glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        Surface surface;
        surface.build({grid, *examples::ColourRamp::named("land"), {1, 1, 1}}, storage);
        surface.draw();
        surface.release();
        pictures.push_back(Picture::ofContext({m_window.width(), m_window.height()}));
        EXPECT_GT(pictures.back().where([](CPoint, COLORREF colour) { return colour != 0; }).size(), 2000U);
    }
    // Bytes become normals by one formula in a list and by another from a buffer.
    for (const CPoint pt : support::differencesOf(pictures[0], pictures[1]))
        ASSERT_TRUE(support::isNear(pictures[0].at(pt), pictures[1].at(pt), 2)) << pt.x << ", " << pt.y;
}

} // namespace
