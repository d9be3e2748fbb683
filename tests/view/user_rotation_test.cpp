// SPDX-License-Identifier: MIT
#include "vorn/view/user_rotation.h"

#include <gtest/gtest.h>

namespace {

const CPoint right(150, 50), up(100, 0), hidden(100, 50);

/// A rotation under the mouse, from the top view, whose matrix is the identity; the model's axes point on the
/// screen as in a front view, unless changed.
struct Rig {
    CvornUserRot rotation;
    CPoint x = right, y = hidden, z = up;
    CPoint mouse = hidden;

    Rig() {
        rotation.OnSize(201, 101); // the centre is rounded down
        rotation.SetTop();
    }
    int drag(int dx, int dy) {
        mouse.Offset(dx, dy);
        return rotation.OnMouseMove(mouse, x, y, z);
    }
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
    struct {
        CPoint x, y, z;
        int dx, dy;
        float turn[3];
    } const cases[] = {
        {right, hidden, up, 0, 5, {5, 0, 0}}, // the front of the model goes down with the mouse
        {right, hidden, up, 0, -7, {-7, 0, 0}},
        {right, hidden, up, -6, 0, {0, 0, -6}},
        {right, up, hidden, 9, 0, {0, 9, 0}},
        {right, up, hidden, 5, 5, {7, 0, 0}}, // both equally near: the first
        {right, up, hidden, 6, 5, {0, 7, 0}},
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

TEST(UserRotationTest, KeepsItsAxisThroughADragThatEndsWithTheButtonOrTheArea) {
    Rig rig;
    EXPECT_EQ(rig.drag(0, 20), 0) << "no button is down";
    rig.rotation.OnLButtonDown(rig.mouse);
    EXPECT_EQ(rig.drag(0, -3), 0);
    EXPECT_EQ(rig.drag(0, -2), 1) << "five pixels from the press point";
    EXPECT_EQ(rig.drag(20, -1), 1) << "a new drag would turn about z";
    rig.expectTurn(-25, 0, 0);
    EXPECT_EQ(rig.drag(-20, 1) + rig.drag(0, 5), 2);
    rig.expectTurn(0, 0, 0);
    rig.rotation.OnLButtonUp(rig.mouse);
    EXPECT_EQ(rig.drag(0, 20), 0);

    rig.rotation.OnLButtonDown(rig.mouse);
    EXPECT_EQ(rig.drag(0, 100 - rig.mouse.y + 1), 0) << "the border is outside";
    EXPECT_EQ(rig.drag(0, -30), 0);
    rig.expectTurn(0, 0, 0);
}

TEST(UserRotationTest, SnapsToTheThreeQuarterViewByTheRightButtonDuringADrag) {
    Rig rig;
    EXPECT_EQ(rig.rotation.OnRButtonDown(rig.mouse), 0);
    rig.rotation.OnLButtonDown(rig.mouse);
    rig.rotation.EnableMouse(0);
    EXPECT_EQ(rig.rotation.OnRButtonDown(rig.mouse) + rig.drag(0, 9), 0) << "disabled";
    rig.expectTurn(0, 0, 0);
    rig.rotation.EnableMouse(1);
    EXPECT_EQ(rig.rotation.OnRButtonDown(rig.mouse), 1);
    rig.expectTurn(-70, 0, 45);
}

} // namespace
