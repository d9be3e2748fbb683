// SPDX-License-Identifier: MIT
#pragma once

#include "vorn/api.h"
#include "vorn/geometry/colour.h"
#include "vorn/overlays/toolbar_button.h"
#include "vorn/overlays/toolbar_button_list.h"

#include <afxwin.h>

/// Toolbar bits: whether the bar is there, and its place in the view.
enum : DWORD {
    TBP_VISIBLE = 0x10,
    TBP_LEFT = 0x40,
    TBP_HCENTER = 0x80,
    TBP_RIGHT = 0x100,
    TBP_TOP = 0x200,
    TBP_VCENTER = 0x400,
    TBP_BOTTOM = 0x800,
};

/// A shaded bar over the scene, divided into a grid of cells, with buttons that each cover some of them.
///
/// ```
/// m_bar.Init(1, 8);                       // once: a grid of one row and eight columns
/// m_bar.AddButton(&m_play);               // the application owns its buttons
///
/// m_bar.UpdateMetrics(pDC, &m_font, 0);   // when the font changes
/// m_bar.UpdatePosition(rcClient);         // when the font or the size of the view changes
///
/// // In OnOutputToDC, with the context current and the mapping up to date:
/// m_bar.oglOutput(&m_mapping, rcClient.Height(), 0.1f, 0.01f, 1, m_nBarList, m_nFontLists);
///
/// // In the mouse handlers, in client coordinates; 0 means that the bar did not take the event:
/// switch (m_bar.OnLeftMouseButtonDown(point, nFlags)) {
/// case ID_PLAY: ...
/// }
/// ```
///
/// The display lists are the caller's: one for the bar and its buttons, compiled anew by every oglOutput (0
/// draws without), and one for each byte value from the list base on, of the font given to UpdateMetrics. A
/// copy shares the nodes of the list, and thus the buttons.
class VORN_API CvornToolBar {
public:
    /// Colour of the bar.
    CvornColour m_colBar{0x282828, 0.8F};
    /// Toolbar bits.
    DWORD m_dwParam = TBP_VISIBLE | TBP_HCENTER | TBP_BOTTOM;
    /// Size of the grid.
    int m_nCols = 0;
    int m_nRows = 0;
    /// The part of the bar's height, from below, that is drawn in the flat colour.
    float m_fShade = 0.75F;
    /// The bar, in client coordinates.
    CRect m_rcBar;
    /// Size of the bar and inset of its buttons, in pixels.
    CSize m_szBar;
    CSize m_szInset;
    /// The buttons, drawn in the order in which they were added.
    CvornToolBarButtonList m_listButtons;
    /// Size of a cell, in pixels.
    float m_fUnitW = 0;
    float m_fUnitH = 0;
    /// The button that took the press of the left mouse button, until it is released.
    CvornToolBarButton* m_pActive = nullptr;

    /// Sets the grid; needed before UpdatePosition.
    void Init(int rows, int cols) {
        m_nRows = rows;
        m_nCols = cols;
    }
    /// Adds a button, which stays the caller's and must live as long as the bar uses it.
    void AddButton(CvornToolBarButton* pButton) { m_listButtons.Add(pButton); }

    /// Makes the bar 110 mm by 15 mm and measures the captions in a font. The last argument is not used.
    void UpdateMetrics(CDC* pDC, CFont* pFont, float);
    /// Places the bar and its buttons in the view's client rectangle.
    void UpdatePosition(const CRect& rc);

    /// Draws a visible bar with its buttons, with the context current, in a view of height h: captions at
    /// window depth z, buttons at z + dz, the bar at z + 2 dz. Changes the current colour, normal, line
    /// width, raster position and list base, and the mapping's current position.
    void oglOutput(CvornOGLMapping* map, int h, float z, float dz, float lineWidth, int list, int listBase);

    /// Whether a visible bar covers the point, in client coordinates.
    int HitTest(POINT pt) const { return GetParam(TBP_VISIBLE) && m_rcBar.PtInRect(pt); }
    /// The mouse handlers take client coordinates and return the identifier of the button that took the
    /// event, or 0.
    int OnLeftMouseButtonDown(POINT pt, unsigned long flags);
    int OnLeftMouseButtonUp(POINT pt, unsigned long flags);
    int OnMouseMove(POINT pt, unsigned long flags);
    int OnRightMouseButtonDown(POINT pt, unsigned long flags);

    /// The setters by identifier do nothing when no button has it. SetButtonState clears TBB_STATE and sets
    /// all the bits given; after SetButtonText the caption's extent is the old one until UpdateMetrics.
    void SetButtonState(int id, unsigned long state);
    void SetButtonHMarkerPos(int id, float pos);
    void SetButtonVMarkerPos(int id, float pos);
    void SetButtonText(int id, const char* text);

    /// Of the button under the held left mouse button; 0 without one.
    unsigned long GetActiveButtonState() const;
    float GetActiveButtonHMarkerPos() const;
    float GetActiveButtonVMarkerPos() const;
    /// Whether a button holds the left mouse button.
    int IsButtonActive() const { return m_pActive != nullptr; }

    /// Reads the bits of the mask; replaces all bits; clears the bits of the mask, then raises those of the
    /// set.
    unsigned long GetParam(unsigned long mask) const { return m_dwParam & mask; }
    void SetParam(unsigned long bits) { m_dwParam = bits; }
    void SetParam(unsigned long set, unsigned long mask) { m_dwParam = (m_dwParam & ~mask) | set; }

private:
    void oglOutputBar(CvornOGLMapping& map, int h, float depth) const;
};
