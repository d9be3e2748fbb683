// SPDX-License-Identifier: MIT
#include "bench/harness.h"
#include "bench/surface_list.h"
#include "vorn/view/view_window.h"

#include <memory>

namespace {

class SurfaceView : public CvornOGLWnd {
public:
    SurfaceView() {
        CreateEx(0, AfxRegisterWndClass(0), "", WS_POPUP, CRect(0, 0, 800, 600), nullptr, 0);
        ShowWindow(SW_SHOWNA);
        UpdateWindow();
    }
    void paintByHand(HDC dc);

protected:
    void OnBuild() override { bench::compileSurface(); }
    void OnOutputToDC(CDC*, int, int) override { glCallList(bench::surfaceList); }
};

/// The GL calls of a paint cycle, one after the other.
void SurfaceView::paintByHand(HDC dc) {
    wglMakeCurrent(dc, m_oglDC.GetRC());
    glLineWidth(1);
    glPointSize(1);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glTranslated(0, 0, -7);
    m_userRot.GetMatrix()->glMultMatrixf();
    double model[16], projection[16];
    int viewport[4];
    glGetDoublev(GL_MODELVIEW_MATRIX, model);
    glGetDoublev(GL_PROJECTION_MATRIX, projection);
    glGetIntegerv(GL_VIEWPORT, viewport);
    m_lighting.Enable(TRUE);
    m_lighting.Update(nullptr, FALSE, 0);
    glClearColor(1, 1, 0, 0);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glCallList(bench::surfaceList);
    glFlush();
    glFinish();
    SwapBuffers(dc);
    wglMakeCurrent(nullptr, nullptr);
}

bench::Sides paintSides() {
    const auto view = std::make_shared<SurfaceView>();
    return {[=] {
                CClientDC client(view.get());
                view->OutputToDC(&client, FALSE, 0, 0, FALSE);
            },
            [=] {
                HDC dc = ::GetDC(view->m_hWnd);
                view->paintByHand(dc);
                ::ReleaseDC(view->m_hWnd, dc);
            }};
}

const bench::Registration paint{{"view: paint cycle, surface of 200 x 200 in a list, 800 x 600",
                                 "the same GL calls by hand", 1.05, paintSides}};

} // namespace
