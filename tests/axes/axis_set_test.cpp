// SPDX-License-Identifier: MIT
#include "tests/support/feedback.h"
#include "tests/support/gl_test.h"
#include "vorn/axes/axis_set.h"

#include <algorithm>
#include <cmath>
#include <set>

namespace {

using support::FeedbackPrimitive;
using support::FeedbackVertex;
using Primitives = std::vector<FeedbackPrimitive>;

class AxisSetTest : public support::GlTest {
protected:
    AxisSetTest() {
        m_set.m_clrAxis = RGB(255, 0, 0);
        m_set.m_clrGrid = RGB(0, 255, 0);
        m_set.m_clrMinorGrid = RGB(0, 0, 255);
        m_set.m_axisX.m_clrAxis.Set3f(0.4F, 0.4F, 0.4F);
    }
    Primitives build() {
        return support::captureModel([&] { m_set.vornBuild(-1, 1); });
    }

    CvornAxisSet m_set;
};

void expectAt(const FeedbackVertex& vertex, double x, double y, double z) {
    EXPECT_NEAR(vertex.x, x, 1e-5);
    EXPECT_NEAR(vertex.y, y, 1e-5);
    EXPECT_NEAR(vertex.z, z, 1e-5);
}

int countOfColour(const Primitives& primitives, GLenum kind, int channel) {
    return static_cast<int>(std::count_if(primitives.begin(), primitives.end(), [=](const auto& primitive) {
        const FeedbackVertex& v = primitive.vertices.at(0);
        const double channels[] = {v.r, v.g, v.b};
        return primitive.kind == kind && channels[channel] > 0.99 && v.r + v.g + v.b < 1.01;
    }));
}

TEST_F(AxisSetTest, DrawsLinesAndTipsAtTheEnds) {
    m_set.UpdateOrigin(-1, -1, -1);
    m_set.UpdateLength(1, 2, 3, 2);
    const Primitives primitives = build();
    ASSERT_EQ(support::countOf(primitives, GL_LINE_TOKEN), 3);
    EXPECT_EQ(countOfColour(primitives, GL_LINE_TOKEN, 0), 3);
    expectAt(primitives[0].vertices[1], 1, -1, -1);
    expectAt(primitives[1].vertices[1], -1, 3, -1);
    expectAt(primitives[2].vertices[1], -1, -1, 5);
    ASSERT_EQ(support::countOf(primitives, GL_POLYGON_TOKEN), 3 * 20) << "each fan runs over its beginning";
    for (int i = 3; i < 23; i++) {
        const auto& [apex, from, to] =
            reinterpret_cast<const FeedbackVertex(&)[3]>(primitives[i].vertices[0]);
        expectAt(apex, 1, -1, -1);
        EXPECT_NEAR(apex.r, 0.2, 1e-5);
        EXPECT_NEAR(from.r, 0.6, 1e-5);
        EXPECT_NEAR(from.a, 0.7, 1e-5);
        EXPECT_NEAR(from.x, 1 - 0.08, 1e-5);
        EXPECT_NEAR(std::hypot(from.y + 1, from.z + 1), 0.02, 1e-5);
        EXPECT_NEAR(std::hypot(from.y - to.y, from.z - to.z), 2 * 0.02 * std::sin(10 * 3.14159265 / 180),
                    1e-5);
    }
}

TEST_F(AxisSetTest, DrawsGridsWithEveryFifthLineMajor) {
    m_set.SetParam(AXES_GRIDS, AXES_TIPS);
    const Primitives primitives = build();
    EXPECT_EQ(support::countOf(primitives, GL_POLYGON_TOKEN), 0);
    EXPECT_EQ(support::countOf(primitives, GL_LINE_TOKEN), 3 + 3 * 2 * 51);
    EXPECT_EQ(countOfColour(primitives, GL_LINE_TOKEN, 1), 3 * 2 * 11);
    EXPECT_EQ(countOfColour(primitives, GL_LINE_TOKEN, 2), 3 * 2 * 40);
    // The second line of the first plane, and the last of its first half: parallel to y, up to y's last tick.
    expectAt(primitives[4].vertices[0], 0.96 / 50, 0, 0);
    expectAt(primitives[4].vertices[1], 0.96 / 50, 0.96, 0);
    expectAt(primitives[3 + 50].vertices[1], 0.96, 0.96, 0);
    expectAt(primitives.back().vertices[1], 0, 0.96, 0.96);
}

TEST_F(AxisSetTest, LeavesOutADisabledAxisWithItsPlanes) {
    m_set.SetParam(AXES_TIPS | AXES_GRIDS);
    m_set.m_axisY.m_bEnabled = 0;
    m_set.UpdateLength(1, 1);
    EXPECT_EQ(m_set.m_axisY.GetNormalLength(), 0);
    const Primitives primitives = build();
    EXPECT_EQ(support::countOf(primitives, GL_LINE_TOKEN), 2 + 2 * 51);
    EXPECT_EQ(support::countOf(primitives, GL_POLYGON_TOKEN), 2 * 20);
}

TEST_F(AxisSetTest, SendsVerticesAndOnRequestNormalsThroughItsOwnMatrix) {
    const float up[] = {0, 0, 1};
    CvornMatrix matrix;
    matrix.Translation(up, 0);
    CvornAxisSet copy(m_set), assigned;
    copy.Update(matrix);
    assigned = copy;
    assigned.SetParam(AXES_TIPS | AXES_TRANSFORM_NORMALS);
    copy.Update(CvornMatrix());
    struct {
        CvornAxisSet& set;
        float z, normalZ;
    } const cases[] = {{m_set, 0, 1}, {copy, 0, 1}, {assigned, 1, 2}};
    for (const auto& [set, z, normalZ] : cases) {
        const auto vertices = support::verticesOf(support::captureModel([&] { set.vornBuild(-1, 1); }));
        expectAt(vertices.at(0), 0, 0, z);
        float normal[4];
        glGetFloatv(GL_CURRENT_NORMAL, normal); // of the z tip, the last
        EXPECT_EQ(normal[2], normalZ);
    }
}

TEST_F(AxisSetTest, PutsImagesOnPlanesUploadedOnceBeforeTheList) {
    unsigned char pixels[4 * 4 * 4] = {};
    GLuint name;
    glGenTextures(1, &name);
    m_set.m_imageXZ.SpecialCreate(4, 4, pixels);
    m_set.m_imageXZ.SetTextureName(name);
    const GLuint list = glGenLists(1);
    m_set.vornBuild(list, 1);
    int width = 0;
    glBindTexture(GL_TEXTURE_2D, name);
    glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, GL_TEXTURE_WIDTH, &width);
    EXPECT_EQ(width, 4);

    const Primitives primitives = support::captureModel([&] { glCallList(list); });
    std::set<std::pair<double, double>> corners;
    for (std::size_t i = 3; primitives.at(i).vertices[0].r == 0.5; i++) {
        for (const FeedbackVertex& corner : primitives[i].vertices) {
            expectAt(corner, corner.s * 0.96, 0, corner.t * 0.96);
            EXPECT_EQ(corner.a, 0.5);
            corners.insert({corner.s, corner.t});
        }
    }
    EXPECT_EQ(corners, (std::set<std::pair<double, double>>{{0, 0}, {0, 1}, {1, 0}, {1, 1}}));
    EXPECT_FALSE(glIsEnabled(GL_TEXTURE_2D));
    glDeleteLists(list, 1);
    glDeleteTextures(1, &name);
}

TEST_F(AxisSetTest, SharesTheLargestTickAndSizesImagesByItsAxes) {
    m_set.m_axisY.SetMax(100);
    m_set.m_axisZ.SetMax(0.2F);
    m_set.UpdateTicks();
    EXPECT_EQ(m_set.m_axisX.m_fTick, 10);
    EXPECT_EQ(m_set.m_axisZ.m_fTick, 10);

    m_set.UpdateLength(2, 1, 4, 1);
    m_set.m_axisZ.m_bEnabled = 1;
    struct {
        DWORD plane;
        float size;
        long right, bottom;
    } const cases[] = {
        {PLANE_XY, 255.6F, 256, 128}, {PLANE_XZ, 100, 50, 100}, {PLANE_YZ, 102, 26, 102}, {4, 9, 0, 0}};
    for (const auto& [plane, size, right, bottom] : cases) {
        CRect rect(7, 7, 7, 7);
        m_set.GetGridImageRect(&rect, plane, size);
        EXPECT_EQ(rect, CRect(0, 0, right, bottom)) << plane;
    }
    m_set.UpdateLength(0, 1, 1, 1);
    CRect rect;
    m_set.GetGridImageRect(&rect, PLANE_XY, 100);
    EXPECT_TRUE(rect.IsRectNull());
}

std::vector<BYTE> stored(CvornAxisSet& set) {
    CMemFile file;
    CArchive archive(&file, CArchive::store);
    set.Serialize(archive);
    archive.Close();
    std::vector<BYTE> bytes(static_cast<std::size_t>(file.GetLength()));
    file.SeekToBegin();
    file.Read(bytes.data(), static_cast<UINT>(bytes.size()));
    return bytes;
}

/// Whether the bytes load to their end.
bool load(CvornAxisSet& set, std::vector<BYTE> bytes) {
    CMemFile file(bytes.data(), static_cast<UINT>(bytes.size()));
    CArchive archive(&file, CArchive::load);
    try {
        set.Serialize(archive);
        return true;
    } catch (CException* exception) {
        exception->Delete();
        archive.Abort();
        return false;
    }
}

TEST_F(AxisSetTest, ComesBackFromArchivesAndSurvivesBrokenOnes) {
    m_set.SetParam(AXES_GRIDS | 0x400);
    m_set.m_axisY.SetMin(-3);
    m_set.m_axisZ.SetMax(12);
    const std::vector<BYTE> bytes = stored(m_set);
    EXPECT_EQ(bytes.size(), 4U + 3 * 12 + 3 * 4);
    CvornAxisSet loaded;
    ASSERT_TRUE(load(loaded, bytes));
    EXPECT_EQ(loaded.GetParam(~0UL), DWORD{AXES_GRIDS | 0x400});
    EXPECT_EQ(loaded.m_axisY.GetMin(), -3);
    EXPECT_EQ(loaded.m_axisZ.GetMax(), 12);

    for (std::size_t length = 0; length < bytes.size(); length++) {
        CvornAxisSet set;
        EXPECT_FALSE(load(set, {bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(length)}))
            << length;
        EXPECT_EQ(stored(set), stored(*std::make_unique<CvornAxisSet>())) << "cut at " << length;
    }
    for (BYTE value : {0x00, 0x7F, 0xFF}) {
        std::vector<BYTE> damaged = bytes;
        std::fill(damaged.begin(), damaged.begin() + 40, value);
        ASSERT_TRUE(load(m_set, damaged));
        m_set.UpdateLength(1, 1);
        m_set.UpdateTicks();
        m_set.SetParam(AXES_TIPS | AXES_GRIDS);
        EXPECT_GE(build().size(), 3U);
    }
}

} // namespace
