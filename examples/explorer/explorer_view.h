// SPDX-License-Identifier: MIT
#pragma once

#include "options.h"
#include "surface.h"

#include <vorn/vorn.h>

/// The chart window: a grid of numbers as a lit surface. Turning, moving and zooming come from the base; keys
/// choose where to look from.
class CExplorerView : public CvornOGLWnd {
public:
    CExplorerView(examples::Grid grid, const examples::ColourRamp& ramp);

    /// Makes the top-level window, hidden at first. False when the system or OpenGL refuses.
    bool createWindow(const CString& title);

    /// Takes effect with the next paint, or picture.
    void lookFrom(ViewPoint viewPoint);

    /// Draws the chart off-screen, in any size; needs no window. False when OpenGL cannot.
    bool drawPicture(CvornDIBSurface& picture);

protected:
    void OnBuild() override;
    void OnOutputToDC(CDC* pDC, int x, int y) override;

    afx_msg void OnKeyDown(UINT nChar, UINT nRepCnt, UINT nFlags);
    DECLARE_MESSAGE_MAP()

private:
    examples::Grid m_grid;
    examples::ColourRamp m_ramp;
    Surface m_surface;
    bool m_drawn = false; ///< by the last paint cycle
};
