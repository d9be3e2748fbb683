// SPDX-License-Identifier: MIT
#include "tests/support/feedback.h"
#include "tests/support/gl_test.h"
#include "vorn/axes/axis_set.h"

#include <algorithm>
#include <cmath>

namespace {

using support::FeedbackVertex;

using AxisSetTest = support::GlTest;

std::vector<support::FeedbackPrimitive> build(CvornAxisSet& set) {
    return support::captureModel([&] { set.vornBuild(-1, 1); });
}

void expectAt(const FeedbackVertex& vertex, double x, double y, double z) {
    EXPECT_NEAR(vertex.x, x, 1e-5);
    EXPECT_NEAR(vertex.y, y, 1e-5);
    EXPECT_NEAR(vertex.z, z, 1e-5);
}

TEST_F(AxisSetTest, DrawsLinesWithTipsAtTheirEnds) {
    CvornAxisSet set;
    set.m_axisX.m_clrAxis.Set3f(0.4F, 0.4F, 0.4F);
    set.UpdateOrigin(-1, -1, -1);
    set.UpdateLength(1, 2, 3, 2);
    const auto primitives = build(set);
    ASSERT_EQ(support::countOf(primitives, GL_LINE_TOKEN), 3);
    expectAt(primitives[0].vertices[1], 1, -1, -1);
    expectAt(primitives[1].vertices[1], -1, 3, -1);
    expectAt(primitives[2].vertices[1], -1, -1, 5);
    ASSERT_EQ(support::countOf(primitives, GL_POLYGON_TOKEN), 3 * 20)
        << "each fan runs on over its beginning";
    for (int i = 3; i < 23; i++) {
        const FeedbackVertex &apex = primitives[i].vertices[0], &rim = primitives[i].vertices[1];
        expectAt(apex, 1, -1, -1);
        expectAt(rim, 1 - 0.08, -1 + 0.02 * std::cos((i - 3) * 0.34906585),
                 -1 + 0.02 * std::sin((i - 3) * 0.34906585));
        EXPECT_TRUE(std::fabs(apex.r - 0.2) < 1e-5 && std::fabs(rim.r - 0.6) < 1e-5 &&
                    std::fabs(rim.a - 0.7) < 1e-5);
    }
}

TEST_F(AxisSetTest, DrawsGridsWithEveryFifthLineMajorAndNothingOfADisabledAxis) {
    CvornAxisSet set(AXES_GRIDS);
    set.m_clrGrid = RGB(255, 0, 0);
    auto primitives = build(set);
    EXPECT_EQ(primitives.size(), 3U + 3 * 2 * 51);
    const auto isMajor = [](const auto& line) { return line.vertices[0].r > 0.9; };
    EXPECT_EQ(std::count_if(primitives.begin(), primitives.end(), isMajor), 3 * 2 * 11);
    EXPECT_TRUE(isMajor(primitives[3 + 5]) && isMajor(primitives[3 + 51]));
    // The second line of the first plane and the last of its first half are parallel to y, up to y's last
    // tick.
    expectAt(primitives[4].vertices[0], 0.96 / 50, 0, 0);
    expectAt(primitives[4].vertices[1], 0.96 / 50, 0.96, 0);
    expectAt(primitives[3 + 50].vertices[1], 0.96, 0.96, 0);

    set.m_axisY.m_bEnabled = 0;
    set.SetParam(AXES_TIPS | AXES_GRIDS);
    set.UpdateLength(1, 1);
    primitives = build(set);
    EXPECT_EQ(support::countOf(primitives, GL_LINE_TOKEN), 2 + 2 * 51);
    EXPECT_EQ(support::countOf(primitives, GL_POLYGON_TOKEN), 2 * 20);
}

TEST_F(AxisSetTest, CopiesUseTheirOwnMatrixForVerticesAndOnRequestForNormals) {
    const float up[] = {0, 0, 1};
    CvornMatrix raised;
    raised.Translation(up, 0);
    CvornAxisSet set, copy(set), assigned;
    copy.Update(raised);
    assigned = copy;
    assigned.SetParam(AXES_TRANSFORM_NORMALS, 0);
    copy.Update(CvornMatrix());
    for (CvornAxisSet* each : {&set, &copy, &assigned}) {
        const float z = each == &assigned ? 1 : 0;
        expectAt(build(*each).at(0).vertices[0], 0, 0, z);
        float normal[4];
        glGetFloatv(GL_CURRENT_NORMAL, normal); // of the z tip, the last
        EXPECT_EQ(normal[2], 1 + z);
    }
}

TEST_F(AxisSetTest, PutsImagesOnPlanesUploadedBeforeTheListThatShowsThem) {
    unsigned char pixels[4 * 4 * 4] = {};
    GLuint name;
    glGenTextures(1, &name);
    CvornAxisSet set;
    set.m_imageXZ.SpecialCreate(4, 4, pixels);
    set.m_imageXZ.SetTextureName(name);
    set.vornBuild(1, 1);
    int width = 0;
    glBindTexture(GL_TEXTURE_2D, name);
    glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, GL_TEXTURE_WIDTH, &width);
    EXPECT_EQ(width, 4);

    const auto vertices = support::verticesOf(support::captureModel([] { glCallList(1); }));
    const auto isImage = [](const FeedbackVertex& vertex) { return vertex.r == 0.5 && vertex.a == 0.5; };
    EXPECT_GE(std::count_if(vertices.begin(), vertices.end(), isImage), 4);
    for (const FeedbackVertex& corner : vertices)
        if (isImage(corner)) expectAt(corner, corner.s * 0.96, 0, corner.t * 0.96);
    EXPECT_FALSE(glIsEnabled(GL_TEXTURE_2D));
}

TEST_F(AxisSetTest, SharesTheLargestTickAndSizesImagesByItsAxes) {
    CvornAxisSet set;
    set.m_axisY.SetMax(100);
    set.m_axisZ.SetMax(0.2F);
    set.UpdateTicks();
    EXPECT_TRUE(set.m_axisX.m_fTick == 10 && set.m_axisZ.m_fTick == 10);
    set.UpdateLength(2, 1, 4, 1);
    struct {
        DWORD plane;
        float size;
        CRect rect;
    } const cases[] = {
        {PLANE_XY, 255.6F, {0, 0, 256, 128}}, {PLANE_YZ, 102, {0, 0, 26, 102}}, {4, 9, {0, 0, 0, 0}}};
    for (const auto& [plane, size, expected] : cases) {
        CRect rect(7, 7, 7, 7);
        set.GetGridImageRect(&rect, plane, size);
        EXPECT_EQ(rect, expected) << plane;
    }
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
        return false;
    }
}

TEST_F(AxisSetTest, ComesBackFromArchivesAndSurvivesBrokenOnes) {
    CvornAxisSet set(AXES_GRIDS | 0x400), untouched, loaded;
    set.m_axisY.SetMin(-3);
    set.m_axisZ.SetMax(12);
    const std::vector<BYTE> bytes = stored(set);
    EXPECT_EQ(bytes.size(), 4U + 3 * 12 + 3 * 4);
    for (std::size_t length = 0; length < bytes.size(); length++)
        EXPECT_FALSE(load(loaded, {bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(length)}))
            << length;
    EXPECT_EQ(stored(loaded), stored(untouched));
    ASSERT_TRUE(load(loaded, bytes));
    EXPECT_EQ(stored(loaded), bytes);
    EXPECT_TRUE(loaded.m_axisY.GetMin() == -3 && loaded.m_axisZ.GetMax() == 12);

    for (BYTE value : {0x00, 0x7F, 0xFF}) {
        std::vector<BYTE> damaged = bytes;
        std::fill(damaged.begin(), damaged.begin() + 40, value);
        ASSERT_TRUE(load(set, damaged));
        set.UpdateTicks();
        set.SetParam(AXES_TIPS | AXES_GRIDS);
        EXPECT_GE(build(set).size(), 3U) << "damaged with " << int{value};
    }
}

} // namespace
