// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/gl_window.h"
#include "vorn/view/view_window.h"

#include <functional>
#include <string>
#include <vector>

namespace support {

/// Draws a rectangle of a plain colour in the model's x-y plane.
inline void drawPlate(COLORREF colour, float left, float bottom, float right, float top) {
    ::glDisable(GL_LIGHTING);
    ::glColor3ub(GetRValue(colour), GetGValue(colour), GetBValue(colour));
    ::glRectf(left, bottom, right, top);
}

/// A view that writes down its hooks, keeps its last picture, and shows what it protects. It draws display
/// list 5, which `build` fills, or without that the demonstration cube.
class ProbeView : public CvornOGLWnd {
public:
    /// A top-level window without a frame, or a child of the parent. False when it could not be made.
    bool open(int width = 200, int height = 150, CWnd* parent = nullptr) {
        const DWORD style = parent != nullptr ? WS_CHILD : WS_POPUP;
        if (!CreateEx(0, AfxRegisterWndClass(0), "", style, CRect(0, 0, width, height), parent, 0))
            return false;
        // Active windows are the window manager's, and without one each costs two seconds.
        ShowWindow(SW_SHOWNA);
        return true;
    }
    /// Paints at once and returns the hooks that ran.
    std::string paint() {
        hooks.clear();
        Invalidate();
        UpdateWindow();
        return hooks;
    }
    /// A pixel of the last picture, from its upper left corner.
    COLORREF at(int x, int y) const { return m_picture.at((m_size.cy - 1 - y) * m_size.cx + x); }
    void mouse(UINT message, UINT flags, int x, int y) { SendMessage(message, flags, MAKELPARAM(x, y)); }

    std::string hooks; ///< since it was cleared, separated by blanks
    std::function<void()> build;
    std::function<void(const std::string& hook)> onHook; ///< inside each hook, after the base's body
    int cycles = 0;
    std::vector<int> menuItems; ///< updated, and chosen as negative numbers

    using CvornOGLWnd::m_auTextures, CvornOGLWnd::m_bToolBar, CvornOGLWnd::m_clrBackground,
        CvornOGLWnd::m_dwState, CvornOGLWnd::m_dwUpdate, CvornOGLWnd::m_fDistance, CvornOGLWnd::m_fPanLimitX,
        CvornOGLWnd::m_fPanX, CvornOGLWnd::m_fPanY, CvornOGLWnd::m_fZoom, CvornOGLWnd::m_mapping,
        CvornOGLWnd::m_nBottomMargin, CvornOGLWnd::m_nFontListBase, CvornOGLWnd::m_nTextures,
        CvornOGLWnd::m_nTexturesWanted, CvornOGLWnd::m_oglDC, CvornOGLWnd::m_pPrintDC,
        CvornOGLWnd::m_ptLastMouse, CvornOGLWnd::m_rcView, CvornOGLWnd::m_userRot;

protected:
    void OnSetViewportSize(int) override { note("size"); }
    void OnToolBarRepos() override { note("bars"); }
    void OnUpdate(int bRedraw, int bOther) override {
        note("update" + std::to_string(bRedraw * 10 + bOther));
    }
    void OnShowMenu() override { note("menu"); }
    void OnPreOutput() override { note("pre"); }
    void OnOutputToDC(CDC* pDC, int x, int y) override {
        build ? ::glCallList(5) : CvornOGLWnd::OnOutputToDC(pDC, x, y);
        note("scene");
    }
    void OnExclude(CDC*) override {
        ++cycles;
        m_size = m_rcView.Size();
        if (m_size.cx * m_size.cy < 1'000'000) m_picture = pixelsIn(0, m_nBottomMargin, m_size.cx, m_size.cy);
        note("exclude");
    }
    void OnUpdateMetrics(CDC* pDC, int bPrint) override {
        CvornOGLWnd::OnUpdateMetrics(pDC, bPrint);
        note(bPrint ? "printmetrics" : "metrics");
    }
    void OnUpdateTextMetrics(CDC*, int) override { note("textmetrics"); }
    void OnSetEffects() override { CvornOGLWnd::OnSetEffects(), note("effects"); }
    void OnUpdateFonts() override { note("fonts"); }
    void OnUpdateTextureInfo() override { note("textures"); }
    void OnOutputUpdateView(int n) override { CvornOGLWnd::OnOutputUpdateView(n), note("camera"); }
    void OnBuild() override {
        ::glNewList(5, GL_COMPILE);
        if (build) build();
        ::glEndList();
        note("build");
    }
    void OnUpdateMenuItem(int nID, CCmdUI& cmdUI) override {
        menuItems.push_back(nID);
        cmdUI.Enable(nID % 2 != 0);
    }
    void OnMenuItem(int nID) override { menuItems.push_back(-nID); }

private:
    void note(const std::string& hook) {
        hooks += hooks.empty() ? hook : " " + hook;
        if (onHook) onHook(hook);
    }

    CSize m_size{0, 0};
    std::vector<COLORREF> m_picture;
};

} // namespace support
