// SPDX-License-Identifier: MIT
#include "explorer_view.h"

#include <utility>

namespace {

constexpr COLORREF background = RGB(250, 250, 248);

/// At the view's eye distance of 7 the picture is 1.33 units high at the origin; a ball of this radius stays
/// inside it however the model is turned.
constexpr float ballRadius = 0.65f;

/// Degrees about the x axis, after a turn about the upright one.
void setPreset(float (&preset)[3], float aboutX, float aboutZ) {
    preset[0] = aboutX;
    preset[1] = 0;
    preset[2] = aboutZ;
}

} // namespace

BEGIN_MESSAGE_MAP(CExplorerView, CvornOGLWnd)
    ON_WM_KEYDOWN()
END_MESSAGE_MAP()

CExplorerView::CExplorerView(examples::Grid grid, const examples::ColourRamp& ramp)
    : m_grid(std::move(grid)), m_ramp(ramp) {
    m_clrBackground = background;
    m_lighting.SetPosition(-0.7f, 0.45f, 0.95f); // from the upper left, where the eye expects it on relief
    // A little steeper than the base's, to see into valleys. The base's side view is its top view until the
    // application says which side it means: here the right one.
    setPreset(m_userRot.m_afPreset3D, -58, 45);
    setPreset(m_userRot.m_afPresetSide, -90, -90);
    m_userRot.Set3D();
}

bool CExplorerView::createWindow(const CString& title) {
    CString windowClass = ::AfxRegisterWndClass(CS_HREDRAW | CS_VREDRAW | CS_OWNDC,
                                                ::LoadCursorA(nullptr, IDC_ARROW), nullptr, nullptr);
    return CreateEx(0, windowClass, title, WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN | WS_CLIPSIBLINGS,
                    CW_USEDEFAULT, CW_USEDEFAULT, 1000, 780, nullptr, nullptr);
}

void CExplorerView::lookFrom(ViewPoint viewPoint) {
    switch (viewPoint) {
    case ViewPoint::threeD:
        m_userRot.Set3D();
        break;
    case ViewPoint::front:
        m_userRot.SetFront();
        break;
    case ViewPoint::top:
        m_userRot.SetTop();
        break;
    case ViewPoint::side:
        m_userRot.SetSide();
        break;
    }
    SetUpdate(UPD_VIEW, TRUE, TRUE);
}

bool CExplorerView::drawPicture(CvornDIBSurface& picture) {
    m_drawn = false;
    PrintScene(picture.GetDC(), CRect(0, 0, picture.GetWidth(), picture.GetHeight()), 0);
    ::GdiFlush();
    return m_drawn;
}

void CExplorerView::OnBuild() {
    m_surface.build(
        examples::buildSurfaceMesh(m_grid, m_ramp, examples::MeshExtents::inBall(m_grid, ballRadius)));
}

void CExplorerView::OnOutputToDC(CDC*, int, int) {
    m_surface.draw();
    // Without a context the cycle runs all the same, and draws nothing.
    m_drawn = ::wglGetCurrentContext() != nullptr;
}

void CExplorerView::OnKeyDown(UINT nChar, UINT nRepCnt, UINT nFlags) {
    switch (nChar) {
    case 'D':
        lookFrom(ViewPoint::threeD);
        break;
    case 'F':
        lookFrom(ViewPoint::front);
        break;
    case 'T':
        lookFrom(ViewPoint::top);
        break;
    case 'S':
        lookFrom(ViewPoint::side);
        break;
    default:
        break;
    }
    CvornOGLWnd::OnKeyDown(nChar, nRepCnt, nFlags);
}
