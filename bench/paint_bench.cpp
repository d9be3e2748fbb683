// SPDX-License-Identifier: MIT
#include "bench/harness.h"
#include "vorn/view/view_window.h"

#include <cmath>
#include <memory>

namespace {

constexpr GLuint surfaceList = 5;

/// A surface of 200 x 200 quads, coloured by height and lit.
void compileSurface() {
    constexpr int size = 200;
    const auto vertex = [](int i, int j) {
        const float x = static_cast<float>(i) / size - 0.5F, y = static_cast<float>(j) / size - 0.5F;
        const float z = 0.2F * std::sin(12 * x) * std::cos(9 * y);
        glColor3f(0.5F + 2 * z, 0.5F, 0.5F - 2 * z);
        glNormal3f(-2.4F * std::cos(12 * x) * std::cos(9 * y), 1.8F * std::sin(12 * x) * std::sin(9 * y), 1);
        glVertex3f(x, y, z);
    };
    glNewList(surfaceList, GL_COMPILE);
    for (int i = 0; i < size; i++) {
        glBegin(GL_QUAD_STRIP);
        for (int j = 0; j <= size; j++) {
            vertex(i, j);
            vertex(i + 1, j);
        }
        glEnd();
    }
    glEndList();
}

class SurfaceView : public CvornOGLWnd {
public:
    SurfaceView() {
        CreateEx(0, AfxRegisterWndClass(0), "", WS_POPUP, CRect(0, 0, 800, 600), nullptr, 0);
        ShowWindow(SW_SHOWNA);
        UpdateWindow();
    }
    void paintByHand(HDC dc);

protected:
    void OnBuild() override { compileSurface(); }
    void OnOutputToDC(CDC*, int, int) override { glCallList(surfaceList); }
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
    glCallList(surfaceList);
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
