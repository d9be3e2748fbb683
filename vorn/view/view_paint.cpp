// SPDX-License-Identifier: MIT
#include "vorn/view/view_window.h"

#include "vorn/view/detail/current_context.h"
#include "vorn/view/detail/picture_tile.h"

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <cstring>
#include <iterator>
#include <utility>

void CvornOGLWnd::OnPaint() {
    CPaintDC dc(this);
    // A hook that lets messages through: the output in progress paints the window, or has it painted when it
    // ends.
    if (m_dwState & STATE_OUTPUT) return;
    const vorn::detail::StateScope state(m_dwState, STATE_OUTPUT);
    OutputToDC(&dc, FALSE, 0, 0, FALSE);
}

void CvornOGLWnd::OutputToDC(CDC* pDC, int bPrint, int x, int y, int bMeta) {
    const vorn::detail::CurrentContext current(m_oglDC, pDC);
    if (!current) {
        CheckError("Set DC Current");
        m_bMissedContext = true;
    } else if (std::exchange(m_bMissedContext, false)) {
        m_dwUpdate |= UPD_ALL;
    }
    ResizeSurface();
    OnUpdateMetrics(pDC, bPrint);
    if (UPDATE(UPD_EFFECTS)) OnSetEffects();
    if (UPDATE(UPD_TEXTURES)) UpdateTextureNames();
    if (UPDATE(UPD_FONTS)) {
        OnUpdateFonts();
        OnUpdateTextMetrics(pDC, bPrint);
    }
    OnOutputUpdateView(0);
    if (m_pTile != nullptr) m_pTile->WidenMapping(m_mapping);
    if (UPDATE(UPD_BUILD) || UPDATE(UPD_BUILD | UPD_SIZE)) OnBuild();
    OnPreOutput();
    if (m_pTile != nullptr) m_pTile->Apply();
    ClearBuffers();
    OnOutputToDC(pDC, x, y);
    ::glFlush();
    m_oglDC.UpdateSurface(TRUE);
    OnExclude(pDC);
    m_oglDC.Render(x, y, bMeta);
    m_dwUpdate = 0;
}

/// An off-screen surface follows the view's size. The context usually survives that; if not, all is to be
/// made anew.
void CvornOGLWnd::ResizeSurface() {
    if (!m_oglDC.IsRenderToDIB() || m_pTile != nullptr || m_rcView.IsRectEmpty()) return;
    if (m_oglDC.GetDIBSize() == m_rcView.Size()) return;
    const HGLRC before = m_oglDC.GetRC();
    const int resized = m_oglDC.ResizeSurface(m_rcView.Width(), m_rcView.Height(), this);
    m_dwUpdate |= UPD_BUILD | UPD_SIZE;
    if (m_oglDC.GetRC() != before) {
        m_nTextures = 0;
        m_dwUpdate |= UPD_ALL;
        m_bMissedContext = !resized;
        SetProjection();
    }
    OnUpdate(TRUE, TRUE);
    // A size that cannot be had would make the window paint for ever.
    if (resized && m_hWnd != nullptr) InvalidateRect(m_rcView, TRUE);
}

void CvornOGLWnd::UpdateTextureNames() {
    const int wanted = std::clamp(m_nTexturesWanted, 0, static_cast<int>(std::size(m_auTextures)));
    if (wanted == m_nTextures || ::wglGetCurrentContext() == nullptr) return;
    if (m_nTextures > 0) ::glDeleteTextures(m_nTextures, m_auTextures);
    ::glGenTextures(wanted, m_auTextures);
    m_nTextures = wanted;
    OnUpdateTextureInfo();
}

void CvornOGLWnd::ClearBuffers() {
    ::glClearColor(GetRValue(m_clrBackground) / 255.0F, GetGValue(m_clrBackground) / 255.0F,
                   GetBValue(m_clrBackground) / 255.0F, 0.0F);
    ::glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
}

void CvornOGLWnd::OnUpdateMetrics(CDC* pDC, int bPrint) {
    m_fLineWidth = 1.0F;
    if (bPrint && pDC != nullptr) {
        CSize size(20, 20);
        pDC->HIMETRICtoDP(&size);
        m_fLineWidth = std::max(1.0F, static_cast<float>(size.cy));
    }
    ::glLineWidth(m_fLineWidth);
    ::glPointSize(m_fLineWidth);
}

void CvornOGLWnd::OnSetEffects() {
    ::glEnable(GL_BLEND);
    ::glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    ::glEnable(GL_DITHER);
    ::glEnable(GL_DEPTH_TEST);
    ::glDepthRange(0.0, 1.0);
    ::glEnable(GL_POLYGON_OFFSET_FILL);
    ::glPolygonOffset(1.0F, 1.0F);
    ::glEnable(GL_POINT_SMOOTH);
    ::glDisable(GL_LINE_SMOOTH);
    ::glDisable(GL_POLYGON_SMOOTH);
    ::glShadeModel(GL_SMOOTH);
    ::glEnable(GL_ALPHA_TEST);
    ::glEnable(GL_COLOR_MATERIAL);
    m_lighting.Enable(EFFECT(EFX_LIGHTING));
    if (m_bTextures) {
        ::glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
        ::glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, m_bTexDecal ? GL_DECAL : GL_MODULATE);
    }
}

void CvornOGLWnd::OnOutputUpdateView(int) {
    ::glMatrixMode(GL_MODELVIEW);
    ::glLoadIdentity();
    ::glTranslated(m_fPanX, m_fPanY, -(m_fDistance - m_fZoom));
    m_userRot.UpdateRotation();
    m_mapping.Update(TRUE);
    if (EFFECT(EFX_LIGHTING)) {
        m_lighting.Enable(TRUE);
        m_lighting.Update(m_userRot.GetMatrix(), FALSE, 0.0F);
    }
}

void CvornOGLWnd::OnOutputToDC(CDC*, int, int) {
    struct Face {
        float normal[3];
        float corners[4][3];
    };
    // The normals have half the unit length; lighting normalises them.
    static constexpr float h = 0.5F;
    static constexpr Face cube[] = {
        {{0, -h, 0}, {{-h, -h, -h}, {h, -h, -h}, {h, -h, h}, {-h, -h, h}}},
        {{0, h, 0}, {{-h, h, -h}, {-h, h, h}, {h, h, h}, {h, h, -h}}},
        {{-h, 0, 0}, {{-h, -h, -h}, {-h, -h, h}, {-h, h, h}, {-h, h, -h}}},
        {{h, 0, 0}, {{h, -h, -h}, {h, h, -h}, {h, h, h}, {h, -h, h}}},
        {{0, 0, h}, {{-h, -h, h}, {h, -h, h}, {h, h, h}, {-h, h, h}}},
        {{0, 0, -h}, {{-h, -h, -h}, {-h, h, -h}, {h, h, -h}, {h, -h, -h}}},
    };
    ::glNewList(1, GL_COMPILE);
    ::glColor3f(1.0F, 150.0F / 255.0F, 150.0F / 255.0F);
    ::glBegin(GL_QUADS);
    for (const Face& face : cube) {
        ::glNormal3fv(face.normal);
        for (const auto& corner : face.corners)
            ::glVertex3fv(corner);
    }
    ::glEnd();
    ::glEndList();
    ::glCallList(1);
}

void CvornOGLWnd::SetProjection() {
    const int width = m_rcView.Width();
    const int height = m_rcView.Height();
    const double w = width;
    const double h = height;
    const double aspect = h < FLT_MIN ? 1.0 : w / h;
    const double distance = m_fDistance;
    double fovy = std::atan(1.0 / std::sqrt(distance * distance)) * 57.29577951308232 * (1.0 / m_fFovScale);
    // A tall window keeps the model's width in view.
    if (width < height && width != 0) fovy *= h / w;
    ::glViewport(0, m_nBottomMargin, width, height);
    CheckError("Viewport");
    ::glMatrixMode(GL_PROJECTION);
    CheckError("Projection");
    ::glLoadIdentity();
    ::gluPerspective(fovy, aspect, 0.1, 100.0);
    ::glMatrixMode(GL_MODELVIEW);
}

void CvornOGLWnd::CheckError(const char*) {
    ::glGetError();
}

void CvornOGLWnd::OutputHorizTextPt(int nFont, POINT* pt, const char* str) {
    if (str == nullptr || pt == nullptr) return;
    ::glListBase(static_cast<GLuint>(nFont * m_nFontListStride + m_nFontListBase));
    m_mapping.gluUnProject(pt->x, pt->y, 0.01);
    m_mapping.glRasterPos3d();
    const auto length = static_cast<GLsizei>(std::strlen(str));
    ::glCallLists(length, GL_UNSIGNED_BYTE, str);
    // Again, where the first one has moved the raster position to.
    ::glCallLists(length, GL_UNSIGNED_BYTE, str);
}
