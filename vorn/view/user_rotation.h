// SPDX-License-Identifier: MIT
#pragma once

#include "vorn/api.h"
#include "vorn/geometry/matrix.h"

/// A point or direction in window pixels, y downwards.
struct _qx_double_pt_ {
    /// In pixels.
    double x = 0;
    double y = 0;
};

/// Turns left-button drags into rotations of the model about one of its own axes at a time.
///
/// The first 5 pixels of a drag choose the axis: the one whose image on the screen is most nearly
/// perpendicular to the motion. Every pixel after that turns the model one degree about it, following the
/// mouse, until the button goes up or the mouse leaves the area. The right button pressed during a drag goes
/// back to the three-quarter view. All mouse points are in the coordinates of the area, which begins at (0,
/// 0).
class VORN_API CvornUserRot {
public:
    /// The preset orientations: degrees about the model's x, y and z axes, applied in this order.
    float m_afPreset3D[3] = {-70, 0, 45};
    float m_afPresetFront[3] = {-90, 0, 0};
    float m_afPresetTop[3] = {0, 0, 0};
    float m_afPresetSide[3] = {0, 0, 0};

    /// Mouse enabled, in the three-quarter view.
    CvornUserRot();
    CvornUserRot(const CvornUserRot&) = default;
    CvornUserRot& operator=(const CvornUserRot&) = default;

    /// Sets the area in which drags count, in pixels.
    void OnSize(int cx, int cy);
    void OnLButtonDown(POINT pt);
    void OnLButtonUp(POINT pt);
    /// Returns nonzero when the button snapped the model back during a drag.
    int OnRButtonDown(POINT pt);
    void OnRButtonUp(POINT pt);
    /// ptX, ptY and ptZ are the window positions of the model points at 0.5 on each axis. Returns nonzero
    /// when the rotation changed.
    int OnMouseMove(CPoint pt, CPoint ptX, CPoint ptY, CPoint ptZ);

    /// Multiplies the rotation into the current GL matrix.
    void UpdateRotation() const { m_matrix.glMultMatrixf(); }

    /// Turn the model to a preset orientation at once.
    void SetFront();
    void SetTop();
    void SetSide();
    void Set3D();
    /// Turns the model about its own y axis.
    void RotateY(float fDegrees);

    /// The rotation itself; owned by this object.
    CvornMatrix* GetMatrix() { return &m_matrix; }
    int IsLDown() const { return m_bLDown; }
    int IsRDown() const { return m_bRDown; }
    /// Whether the last mouse step changed the rotation.
    int IsUserRotating() const { return m_bRotating; }
    /// Without it no button and no motion has an effect.
    void EnableMouse(int bEnable) { m_bEnabled = bEnable; }

protected:
    /// The unit vector along (x, y); (0, 0) when that is too short to have a direction.
    _qx_double_pt_ Normalize(double x, double y) const;
    double GetDistance(_qx_double_pt_ a, _qx_double_pt_ b) const;
    /// The angle at a between b and c in whole degrees, truncated; 0 when the points lie on one line.
    int GetAngle(_qx_double_pt_ a, _qx_double_pt_ b, _qx_double_pt_ c) const;
    /// Chooses the axis for a motion from last to pt. Returns nonzero when one is locked.
    int LockDirection(_qx_double_pt_ last, _qx_double_pt_ pt, _qx_double_pt_ ptX, _qx_double_pt_ ptY,
                      _qx_double_pt_ ptZ);
    /// Turns by a degree a pixel about the locked axis, in the sense of the unit direction dir. Returns 0,
    /// and turns nothing, when dir favours neither sense.
    int AddRotation(int nPixels, _qx_double_pt_ dir);
    /// The unit vectors at +90 and +270 degrees from v.
    void GetPosNegPts(_qx_double_pt_ v, _qx_double_pt_* pPos, _qx_double_pt_* pNeg) const;

    /// Back to idle: no button, no axis.
    void EndDrag(_qx_double_pt_ pt);

    /// The rotation.
    CvornMatrix m_matrix;
    /// The locked direction: 0 and 1 are +x and -x on the screen, 2 and 3 y, 4 and 5 z; -1 is none.
    int m_nLockDir = -1;
    /// The buttons held, the last mouse point and the area.
    int m_bLDown = 0;
    int m_bRDown = 0;
    _qx_double_pt_ m_ptLast;
    RECT m_rcArea = {};
    /// The centre of the area.
    _qx_double_pt_ m_ptCentre;
    /// The directions perpendicular to the locked one, then those of its opposite.
    _qx_double_pt_ m_ptPos;
    _qx_double_pt_ m_ptNeg;
    _qx_double_pt_ m_ptPartnerNeg;
    _qx_double_pt_ m_ptPartnerPos;
    /// The mouse counts, and its last step turned the model.
    int m_bEnabled = 1;
    int m_bRotating = 0;
};
