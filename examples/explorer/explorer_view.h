// SPDX-License-Identifier: MIT
#pragma once

#include "chart_axes.h"
#include "chart_toolbar.h"
#include "data_sheet.h"
#include "legend.h"
#include "options.h"
#include "overlay_stack.h"
#include "surface.h"

#include <vorn/vorn.h>

/// The chart window: a grid of numbers as a lit surface between axes, with overlays before it. Turning,
/// moving and zooming come from the base, for what of the mouse is not the overlays'; keys choose where to
/// look from, and what is shown.
class CExplorerView : public CvornOGLWnd {
public:
    CExplorerView(examples::Grid grid, const Options& options);

    /// Makes the top-level window, hidden at first. False when the system or OpenGL refuses.
    bool createWindow(const CString& title);

    /// Takes effect with the next paint, or picture.
    void lookFrom(ViewPoint viewPoint);

    /// Draws the chart into a part of a bitmap or page; needs no window. False when OpenGL cannot.
    bool drawTo(CDC& dc, const CRect& rc);
    /// Puts the chart on the clipboard as a metafile of a size in pixels. False when OpenGL cannot draw.
    bool drawMetafile(CSize size);
    /// Draws the chart off-screen, in any size; needs no window. False when OpenGL cannot.
    bool drawPicture(CvornDIBSurface& picture);

    ChartAxes& axes() { return m_axes; }
    ChartLegend& legend() { return m_legend; }
    ChartToolbar& toolbar() { return m_toolbar; }
    /// What is shown, and how.
    ChartState state() const;
    /// These take effect at once.
    void setExaggeration(double exaggeration);
    void setRamp(std::size_t ramp);
    DataSheet& sheet() { return m_sheet; }
    const examples::Grid& grid() const { return m_grid; }

    /// Puts the selected rows, or without a selection all, on the clipboard as tab-separated text.
    /// @throws std::runtime_error when the clipboard refuses.
    void copyRows();
    /// Takes rows from such a text on the clipboard, from the first selected row on, or from the first of
    /// all: chart, sheet and legend follow. @throws std::runtime_error, with nothing changed, for any other
    /// text.
    void pasteRows();

    /// In what format and size the chart is copied. The application's profile keeps them.
    const CvornCopyInfo& copySettings() const { return m_copyInfo; }
    void loadCopySettings();

protected:
    void OnSetViewportSize(int bRedraw) override;
    void OnUpdateTextureInfo() override;
    void OnUpdateMetrics(CDC* pDC, int bPrint) override;
    void OnUpdateTextMetrics(CDC* pDC, int bPrint) override;
    void OnSetEffects() override;
    void OnBuild() override;
    void OnOutputUpdateView(int nUnused) override;
    void OnOutputToDC(CDC* pDC, int x, int y) override;
    void OnShowMenu() override;
    void OnUpdateMenuItem(int nID, CCmdUI& cmdUI) override;
    void OnMenuItem(int nID) override;

    afx_msg void OnKeyDown(UINT nChar, UINT nRepCnt, UINT nFlags);
    afx_msg void OnLButtonDown(UINT nFlags, CPoint pt);
    afx_msg void OnLButtonUp(UINT nFlags, CPoint pt);
    afx_msg void OnMouseMove(UINT nFlags, CPoint pt);
    afx_msg void OnRButtonDown(UINT nFlags, CPoint pt);
    afx_msg LRESULT OnCaptureChanged(WPARAM, LPARAM lParam);
    afx_msg LRESULT OnMouseLeave(WPARAM, LPARAM);
    afx_msg BOOL OnMouseWheel(UINT nFlags, short zDelta, CPoint pt);
    afx_msg LRESULT OnRowColour(WPARAM, LPARAM lParam);
    DECLARE_MESSAGE_MAP()

private:
    void onCommand(int command);
    void layOutNow();
    void setGrid(examples::Grid grid);
    void drawRowLines();
    void showChanges();
    void setUpCopies();
    bool loadPlanes(const std::array<std::string, 3>& files);
    int fontSide() const;

    examples::Grid m_grid;
    examples::ColourRamp m_ramp;
    Surface m_surface;
    ChartAxes m_axes;
    std::size_t m_rampIndex;
    ChartToolbar m_toolbar;
    ChartLegend m_legend;
    DataSheet m_sheet;
    RowLines m_rowLines;
    OverlayStack m_overlays;
    int m_fontSide = 0;        ///< of the picture that the font was made for
    bool m_laidOut = false;    ///< the overlays, for the view as it is now
    float m_planePixels = 512; ///< the longer side of a plane's picture
    bool m_hasPlanes;          ///< pictures on them
    CvornCopyInfo m_copyInfo;
    bool m_drawn = false; ///< by the last paint cycle
};
