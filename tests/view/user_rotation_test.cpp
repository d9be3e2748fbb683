// SPDX-License-Identifier: MIT
#include "vorn/view/user_rotation.h"

#include <gtest/gtest.h>

namespace {

/// A rotation under the mouse; the images of the model's axes are those of a front view, unless changed: x to
/// the right, z up, y away.
struct Rig {
    CvornUserRot rotation;
    CPoint centre{100, 50}; // of an odd size, rounded down
    CPoint x{150, 50}, y{100, 50}, z{100, 0};
    CPoint mouse{100, 50};

    Rig() {
        rotation.OnSize(201, 101);
        rotation.SetTop();
    }
    int drag(int dx, int dy) {
        mouse.Offset(dx, dy);
        return rotation.OnMouseMove(mouse, x, y, z);
    }
    /// Compares with a turn from the top view, whose matrix is the identity.
    void expectTurn(float degreesX, float degreesY, float degreesZ) {
        CvornMatrix expected;
        expected.RotateXDeg(degreesX, 0);
        expected.RotateYDeg(degreesY, 1);
        expected.RotateZDeg(degreesZ, 1);
        for (int i = 0; i < 16; i++)
            EXPECT_NEAR(rotation.GetMatrix()->m_afElement[i], expected.m_afElement[i], 1e-5F)
                << "element " << i;
    }
};

TEST(UserRotationTest, TurnsAboutTheAxisAcrossTheMotionFollowingTheMouse) {
    const CPoint right(150, 50), up(100, 0), hidden(100, 50);
    struct {
        CPoint x, y, z;
        int dx, dy;
        float turn[3];
    } const cases[] = {
        {right, hidden, up, 0, 5, {5, 0, 0}},      // the front of the model goes down
        {right, hidden, up, 0, -7, {-7, 0, 0}},    //
        {right, hidden, up, 6, 0, {0, 0, 6}},      // and to the right
        {right, hidden, up, -6, 0, {0, 0, -6}},    //
        {right, up, hidden, 9, 0, {0, 9, 0}},      // seen from the top
        {right, up, hidden, 5, 5, {7, 0, 0}},      // equally near: the first axis
        {right, up, hidden, 6, 5, {0, 7, 0}},      //
        {hidden, hidden, hidden, 0, 9, {0, 0, 0}}, // no axis has a direction
    };
    for (const auto& [x, y, z, dx, dy, turn] : cases) {
        SCOPED_TRACE(testing::Message() << dx << ", " << dy);
        Rig rig;
        rig.x = x, rig.y = y, rig.z = z;
        rig.rotation.OnLButtonDown(rig.mouse);
        EXPECT_EQ(rig.drag(dx, dy) != 0, turn[0] != 0 || turn[1] != 0 || turn[2] != 0);
        rig.expectTurn(turn[0], turn[1], turn[2]);
    }
}

TEST(UserRotationTest, KeepsItsAxisThroughTheDragAndComesBack) {
    Rig rig;
    EXPECT_EQ(rig.drag(0, 20), 0) << "no button is down";
    rig.rotation.OnLButtonDown(rig.mouse);
    EXPECT_EQ(rig.drag(0, -3), 0);
    EXPECT_EQ(rig.drag(0, -2), 1) << "five pixels from the press point";
    rig.expectTurn(-5, 0, 0);
    EXPECT_EQ(rig.drag(20, -1), 1) << "across the axis would be z";
    rig.expectTurn(-25, 0, 0);
    EXPECT_EQ(rig.drag(-20, 1), 1);
    EXPECT_EQ(rig.drag(0, 5), 1);
    rig.expectTurn(0, 0, 0);
    EXPECT_TRUE(rig.rotation.IsUserRotating());
    rig.rotation.OnLButtonUp(rig.mouse);
    EXPECT_FALSE(rig.rotation.IsUserRotating());
    EXPECT_EQ(rig.drag(0, 20), 0);
}

TEST(UserRotationTest, EndsTheDragWhereTheMouseLeavesTheArea) {
    Rig rig;
    rig.rotation.OnLButtonDown(rig.mouse);
    EXPECT_EQ(rig.drag(0, -50), 0) << "on the border is outside";
    EXPECT_FALSE(rig.rotation.IsLDown());
    EXPECT_EQ(rig.drag(0, 30), 0);
    rig.expectTurn(0, 0, 0);
}

TEST(UserRotationTest, SnapsToTheThreeQuarterViewByTheRightButtonDuringADrag) {
    Rig rig;
    EXPECT_EQ(rig.rotation.OnRButtonDown(rig.mouse), 0);
    EXPECT_TRUE(rig.rotation.IsRDown());
    rig.rotation.OnRButtonUp(rig.mouse);
    EXPECT_FALSE(rig.rotation.IsRDown());
    rig.rotation.OnLButtonDown(rig.mouse);
    EXPECT_EQ(rig.rotation.OnRButtonDown(rig.mouse), 1);
    rig.expectTurn(-70, 0, 45);
    rig.rotation.SetFront();
    rig.expectTurn(-90, 0, 0);
}

TEST(UserRotationTest, IsDeafWhileTheMouseIsDisabled) {
    Rig rig;
    rig.rotation.EnableMouse(0);
    rig.rotation.OnLButtonDown(rig.mouse);
    EXPECT_EQ(rig.rotation.OnRButtonDown(rig.mouse), 0);
    EXPECT_FALSE(rig.rotation.IsLDown() || rig.rotation.IsRDown());
    EXPECT_EQ(rig.drag(0, 20), 0);
    rig.expectTurn(0, 0, 0);
}

} // namespace
