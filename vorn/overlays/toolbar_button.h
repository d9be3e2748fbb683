// SPDX-License-Identifier: MIT
#pragma once

#include "vorn/api.h"
#include "vorn/geometry/colour.h"

#include <afxwin.h>

class CvornOGLMapping;

/// Button bits.
enum : DWORD {
    TBB_TRACK = 0x2,  ///< while the left button is held, mouse moves update the markers
    TBB_RAISED = 0x4, ///< a lighter background and a darker frame
    TBB_RCLICK = 0x8, ///< the button answers the right mouse button
    TBB_STATE = 0x10, ///< the button's state, for the application
};

/// A button of a toolbar, covering a rectangle of its cells. It reports its identifier when it is clicked,
/// and keeps where in it the mouse was as two markers from 0 to 1, so that it can serve as a slider in two
/// directions.
///
/// ```
/// class CPlayButton : public CvornToolBarButton {
///     using CvornToolBarButton::CvornToolBarButton;
///     void oglOutputShape(CvornOGLMapping* map, CRect& rc, float z) override;   // draws a triangle into rc
/// };
/// CPlayButton m_play{ID_PLAY, 0, 0, 1, 2};   // row 0, column 0, one row high, two columns wide
/// m_play.SetParam(TBB_RAISED);
/// ```
///
/// The application owns its buttons and keeps them as long as the toolbar that they are added to. The
/// destructor is not virtual: a button is destroyed as what it is.
class VORN_API CvornToolBarButton {
public:
    /// Colour of the caption.
    CvornColour m_colText{0xFFFFFF, 1.0F};
    /// Colour of the default shape.
    CvornColour m_colShape{0xFFFFFF, 0.8F};
    /// Colour of a raised button's background and frame.
    CvornColour m_colBack{0x282828, 0.8F};
    /// The caption, drawn only where it fits. A change needs an UpdateMetrics.
    CString m_strText;
    /// Button bits.
    DWORD m_dwParam = 0;
    /// What the button reports; not above 0 it never answers the mouse.
    int m_nID;
    /// The cells of the bar that it covers: the first row and column, and how many of them.
    int m_nRowI;
    int m_nColI;
    int m_nRowCount;
    int m_nColCount;
    /// Extent of the caption, in pixels.
    CSize m_szText;
    /// Offset added to the caption's position, in pixels.
    int m_nTextDX = 0;
    int m_nTextDY = 0;
    /// The button, in client coordinates.
    CRect m_rcButton;
    /// Where in the inner rectangle the mouse was: from the left and from the top edge, 0 to 1.
    float m_fHMarker = 0;
    float m_fVMarker = 0;
    /// Inset of the inner rectangle, in pixels.
    CSize m_szInset;

    /// A button with an identifier below 1 is drawn, but never answers the mouse.
    CvornToolBarButton(int id, int rowI, int colI, int rowCount, int colCount)
        : m_nID(id), m_nRowI(rowI), m_nColI(colI), m_nRowCount(rowCount), m_nColCount(colCount) {}

    /// Measures the caption in the font selected into the device context.
    void UpdateMetrics(CDC* pDC);
    /// Places the button, in client coordinates.
    void UpdatePosition(const CRect& rc, const CSize& inset);

    /// Whether the button covers the point, in client coordinates.
    int HitTest(POINT pt) const { return m_rcButton.PtInRect(pt); }
    /// The mouse handlers take client coordinates and return the identifier, or 0 when the button does not
    /// answer.
    int OnLeftMouseButtonDown(POINT pt, unsigned long flags);
    int OnMouseMove(POINT pt, unsigned long flags);
    int OnRightMouseButtonDown(POINT pt, unsigned long flags);

    /// Draws background, frame and shape, with the context current, in a view of height h, at window depth z;
    /// into a display list when list is above 0. dz, lineWidth and listBase are not used.
    void oglOutput(CvornOGLMapping* map, int h, float z, float dz, float lineWidth, int list, int listBase);
    /// Draws the caption by the list base in force.
    void oglOutputText(CvornOGLMapping* map, int h, float z) const;

    /// Identifier and cells as given.
    int GetID() const { return m_nID; }
    int GetRowI() const { return m_nRowI; }
    int GetColI() const { return m_nColI; }
    int GetRowCount() const { return m_nRowCount; }
    int GetColCount() const { return m_nColCount; }
    /// The markers, 0 to 1; setting them checks nothing.
    float GetHMarkerPos() const { return m_fHMarker; }
    float GetVMarkerPos() const { return m_fVMarker; }
    void SetHMarkerPos(float pos) { m_fHMarker = pos; }
    void SetVMarkerPos(float pos) { m_fVMarker = pos; }
    /// Reads the bits of the mask; replaces all bits; clears the bits of the mask, then raises those of the
    /// set.
    unsigned long GetParam(unsigned long mask) const { return m_dwParam & mask; }
    void SetParam(unsigned long bits) { m_dwParam = bits; }
    void SetParam(unsigned long set, unsigned long mask) { m_dwParam = (m_dwParam & ~mask) | set; }

protected:
    /// Draws the button's symbol; called by oglOutput, with the context current and perhaps a display list
    /// open, so outside glBegin. The rectangle is the button without its inset in GL window pixels, y upwards
    /// (top is above bottom). Unproject its points through the mapping at depth z. By default a button
    /// without a caption is filled; overriding it needs no call of the base.
    virtual void oglOutputShape(CvornOGLMapping* map, CRect& rc, float z);

private:
    void UpdateMarkers(POINT pt);
};
