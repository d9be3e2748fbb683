// SPDX-License-Identifier: MIT
#pragma once

#include "vorn/api.h"
#include "vorn/geometry/colour.h"

#include <afxwin.h>
#include <memory>

class CvornOGLMapping;

/// Horizontal alignment of a text panel in its rectangle.
enum { TPA_LEFT = 1, TPA_HCENTER = 3, TPA_RIGHT = 4 };
/// Vertical alignment of a text panel in its rectangle.
enum { TPA_TOP = 2, TPA_VCENTER = 3, TPA_BOTTOM = 5 };

/// A box of text over the scene, laid out as a small table: tabs separate columns, line feeds rows.
///
/// ```
/// // In OnUpdateMetrics of the view, with the view's DC and before any drawing:
/// m_panel.UpdateText("Range\t0 - 80\nStep\t10");
/// m_panel.SetAlignment(TPA_RIGHT, TPA_TOP);
/// m_panel.UpdateMetrics(m_nFontLists, m_nPanelList, clrText, clrBack, pDC, &m_font);
///
/// // In OnOutputToDC, with the context current and the mapping up to date. The rectangle is in GL window
/// // pixels, y upwards, so its top is above its bottom:
/// CRect rc(0, nHeight, nWidth, 0);
/// m_panel.glOutput(rc, &m_mapping, 0, m_bHot);
///
/// // In a mouse handler, in client coordinates:
/// if (m_panel.HitTest(rcClient, point)) ...
/// ```
///
/// The caller owns the display lists: one for each byte value from the list base on, of the font that
/// UpdateMetrics is given (wglUseFontBitmaps makes them), and one for the box, compiled anew in every
/// glOutput; a box list of 0 draws without one. A change of the text, of the font or of the device's
/// resolution needs a new UpdateMetrics. Copies share the arrays of the layout.
class VORN_API CvornTextPanel {
public:
    /// The text; change it with UpdateText.
    CString m_strText;
    /// The largest number of cells in a line, and the number of lines.
    int m_nCols = 0;
    int m_nRows = 0;
    /// Display lists, of the box and of the first character, and colours as UpdateMetrics was given them.
    int m_nListBox = 0;
    int m_nListBase = 0;
    CvornColour m_colText;
    CvornColour m_colBack;
    /// Where in its rectangle the panel is drawn.
    int m_nAlignH = TPA_LEFT;
    int m_nAlignV = TPA_TOP;
    /// The layout is that of the text; while it is 0 nothing is drawn.
    int m_bValid = 0;
    /// Window depth, from 0 (near) to 1 (far).
    float m_fZ = 0.9F;
    /// Inner margin, and the gap between columns and rows, in pixels.
    CSize m_szMargin;
    CSize m_szGap;
    /// Width of each of the m_nCols columns and height of each of the m_nRows rows, in pixels with the gap.
    std::shared_ptr<float[]> m_pfColWidth;
    std::shared_ptr<float[]> m_pfRowHeight;
    /// The size of the whole panel, in pixels.
    float m_fHeight = 0;
    float m_fWidth = 0;
    /// Metrics of the font of the last UpdateMetrics.
    TEXTMETRICA m_tm = {};
    /// Where the panel was drawn last, in GL window pixels, normalised.
    CRect m_rcHit;
    /// 0: the panel is never hit.
    int m_bEnabled = 1;

    /// Takes a new text; the same text again changes nothing, another one needs an UpdateMetrics.
    void UpdateText(const char* text);
    /// Lays the text out in a font, and takes the display lists and the colours to draw with.
    void UpdateMetrics(int listBase, int listBox, CvornColour text, CvornColour back, CDC* pDC, CFont* pFont);

    /// Values that are none of the alignments count as left and top.
    void SetAlignment(int h, int v) {
        m_nAlignH = h;
        m_nAlignV = v;
    }
    int GetAlignHoriz() const { return m_nAlignH; }
    int GetAlignVert() const { return m_nAlignV; }

    /// Draws the panel, with the context current. The rectangle is in GL window pixels, y upwards; z is added
    /// to the panel's depth for the box; highlight gives another background and a frame. Changes the current
    /// colour, normal, raster position and list base, and the mapping's current position.
    void glOutput(const CRect& rc, CvornOGLMapping* map, float z, int highlight);

    /// Nonzero for a point in the panel as it was drawn last. With a rectangle whose top is less than its
    /// bottom (the client rectangle) the point is in client coordinates, else in GL window pixels.
    int HitTest(const CRect& rc, POINT pt) const;

    /// The panel's height in pixels, for stacking panels.
    float GetHeight() const { return m_fHeight; }
    void SetZ(float z) { m_fZ = z; }
    /// A panel that is not enabled is drawn, but never hit.
    void SetEnabled(int enabled) { m_bEnabled = enabled; }
    int IsEnabled() const { return m_bEnabled; }

protected:
    /// Draws one cell of a table whose last row and first column begin at the origin (x, y and depth in GL
    /// window pixels).
    void glOutputCell(CvornOGLMapping* map, const float origin[3], int row, int col, const char* text,
                      int length) const;
};
