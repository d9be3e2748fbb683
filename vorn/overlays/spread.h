// SPDX-License-Identifier: MIT
#pragma once

#include "vorn/api.h"
#include "vorn/geometry/colour.h"
#include "vorn/overlays/spread_cell.h"
#include "vorn/overlays/spread_header.h"

#include <afxwin.h>
#include <memory>

class CvornOGLMapping;

/// Spread bits.
enum : DWORD {
    SPP_VISIBLE = 0x1, ///< the spread takes part in hit tests and mouse handling
    SPP_FRAME = 0x2,   ///< a frame round the spread
    SPP_ROWSEL = 0x10, ///< rows can be selected
    SPP_COLSEL = 0x20, ///< columns can be selected
    SPP_LEFT = 0x40,   ///< the place in the view
    SPP_HCENTER = 0x80,
    SPP_RIGHT = 0x100,
    SPP_TOP = 0x200,
    SPP_VCENTER = 0x400,
    SPP_BOTTOM = 0x800,
    SPP_DESELECTLAST = 0x1000, ///< in row mode, Ctrl and a click may deselect the only selected row
};

/// A small sheet of text and colour cells over the scene.
///
/// ```
/// m_sheet.m_strTitle = "Layers";
/// m_sheet.m_colText = CvornColour(RGB(255, 255, 255), 1);
/// m_sheet.SetParam(SPP_VISIBLE | SPP_FRAME | SPP_ROWSEL | SPP_RIGHT | SPP_TOP);
/// m_sheet.SetMaxSize(3, 2);                          // or Paste with growth
/// m_sheet.SetText(0, 0, "Sand");
/// m_sheet.SetColour(0, 1, RGB(240, 200, 90));
/// m_sheet.SetColParam(0, SHP_RIGHT, SHP_RIGHT);
/// m_sheet.SetParent(this);                           // owns the colour dialog
/// m_sheet.SetMsgWnd(this, WM_APP_CELL);              // hears of a colour chosen there
///
/// m_sheet.UpdateMetrics(pDC, &m_font, fScale);       // after a change of cells, size, font or device
/// m_sheet.UpdatePosition(rcClient);                  // then, and after a change of the view's size
///
/// // In OnOutputToDC, with the context current and the mapping up to date:
/// m_sheet.oglOutput(&m_mapping, rcClient.Height(), 0.1f, 0.01f, 1, m_nSheetList, m_nFontLists);
///
/// // In a mouse handler, in client coordinates:
/// if (m_sheet.OnLeftMouseButton(point, nFlags, 1)) Invalidate(FALSE);
/// ```
///
/// Rows and columns count from 0. SPP_ROWSEL alone selects rows, SPP_COLSEL alone columns; with both or
/// neither a cell is selected when its row and its column are. The display lists are the caller's: one for
/// the sheet, compiled anew by every oglOutput (0 draws without), and one for each byte value from the font
/// base on, of the font given to UpdateMetrics. Copies share cells and headers until one of them is resized.
class VORN_API CvornSpread {
public:
    /// The background.
    CvornColour m_colBack;
    /// Not used.
    CvornColour m_colReserved1;
    /// Selected rows and the frame.
    CvornColour m_colMark;
    /// Not used.
    CvornColour m_colReserved2;
    /// Title and texts.
    CvornColour m_colText;
    CString m_strTitle;
    /// Spread bits.
    DWORD m_dwParam = SPP_LEFT | SPP_TOP;
    /// The application's; sent with notifications.
    int m_nID = 0;
    /// The row or column selected last, or -1.
    int m_nSelAnchor = -1;
    /// How many rows, columns or cells are selected.
    int m_nSelCount = 0;
    /// m_nRows x m_nCols cells, row by row; null when there are none.
    std::shared_ptr<CvornCell[]> m_pCells;
    /// One for each row and each column; null when there are none.
    std::shared_ptr<CvornSpreadHeader[]> m_pRowHeaders;
    std::shared_ptr<CvornSpreadHeader[]> m_pColHeaders;
    /// Size of the grid.
    int m_nRows = 0;
    int m_nCols = 0;
    int m_nCells = 0;
    /// As SetParent and SetMsgWnd were given them; not owned.
    CWnd* m_pParent = nullptr;
    CWnd* m_pMsgWnd = nullptr;
    UINT m_nMsgID = 0;

    /// Metrics of the font of the last UpdateMetrics.
    TEXTMETRICA m_tmFont = {};
    /// The whole spread, in pixels.
    int m_nWidthDP = 0;
    int m_nHeightDP = 0;
    /// The title with its padding, in pixels; 0 without a title.
    int m_nTitleWidth = 0;
    int m_nTitleHeight = 0;
    /// Margins round the spread and padding in each cell, on the four sides, in pixels.
    CRect m_rcMargin;
    CRect m_rcPad;
    /// The spread, in client coordinates.
    CRect m_rcPos;

    // Cells (spread_data.cpp)

    /// Changes the size; the cells and headers that both sizes have are kept, new ones are empty. Negative
    /// sizes count as 0. A grid that memory cannot hold, or of more than MaxCells, leaves none: 0 x 0. Needs
    /// an UpdateMetrics.
    void SetMaxSize(int rows, int cols);
    static constexpr int MaxCells = 1 << 25;

    /// Where the cell stands in m_pCells; the indices are not checked.
    int GetCellIndex(int row, int col) const { return row * m_nCols + col; }
    /// Make the cell a text or a colour cell; outside the grid they do nothing.
    void SetText(int row, int col, const char* text);
    void SetColour(int row, int col, unsigned long rgb);
    /// The accessors from here to GetColData are unchecked: the caller gives indices inside the grid.
    /// A colour cell's text is its number.
    CString GetText(int row, int col) const;
    /// Opaque; black for a text that is no number.
    CvornColour GetColour(int row, int col) const;
    long GetType(int row, int col) const { return m_pCells[GetCellIndex(row, col)].m_nType; }
    void SetRowData(int row, unsigned long data) { m_pRowHeaders[row].SetData(data); }
    unsigned long GetRowData(int row) const { return m_pRowHeaders[row].GetData(); }
    void SetColData(int col, unsigned long data) { m_pColHeaders[col].SetData(data); }
    unsigned long GetColData(int col) const { return m_pColHeaders[col].GetData(); }

    /// Sets the values from the upper left cell on: tabs separate columns, line breaks (CR LF, LF CR, CR or
    /// LF) rows. The cells' types stay. With grow the grid first becomes as large as the text, if it is
    /// smaller; else what does not fit is dropped.
    void Paste(const CString& text, int grow);

    // Selection (spread_selection.cpp)

    /// Selects one row or column, by the mode, and nothing else; nothing at all for an invalid index and in
    /// cell mode. Returns the number of selected items.
    int SetSel(int index);
    /// Selects all rows or columns; in cell mode it clears the selection. Returns the number of selected
    /// items.
    int SelectAll();
    int IsRowSelected(int row) const;
    int IsColSelected(int col) const;
    int IsCellSelected(int row, int col) const { return IsRowSelected(row) && IsColSelected(col); }
    /// Deselect all but one; -1 keeps none.
    void ClearRowSelection(int keep);
    void ClearColSelection(int keep);
    void ClearCellSelection(int row, int col);
    /// Counts the selected rows, columns or cells anew.
    void UpdateSelCount();
    /// The row selected last, else the first selected one, else -1; -1 also outside row mode.
    int GetFirstRowSel() const;
    /// Answered in row mode only, where no column counts as selected: always -1.
    int GetFirstColSel() const;
    int GetSelCount() const { return m_nSelCount; }

    // Editing (spread_edit.cpp)

    /// Edits a colour cell; does nothing for other cells and outside the grid.
    void EditCell(int row, int col);
    /// Runs the colour dialog. After OK the cell, if it is inside the grid, becomes a colour cell of the
    /// chosen colour, and the message window is sent the message with GetID as wParam and the address of two
    /// ints, row and column, as lParam.
    void EditCellColour(int row, int col);
    /// The window to notify, and the message; null for none. The window must outlive the spread, or be taken
    /// back.
    void SetMsgWnd(CWnd* pWnd, unsigned int msg) {
        m_pMsgWnd = pWnd;
        m_nMsgID = msg;
    }
    /// The owner of the colour dialog.
    void SetParent(CWnd* pWnd) { m_pParent = pWnd; }

    // Layout, drawing and the mouse (spread_layout.cpp, spread_draw.cpp, spread_mouse.cpp)

    /// Measures the cells in a font and lays them out; fScale, rounded up, is added in pixels to margins and
    /// padding.
    void UpdateMetrics(CDC* pDC, CFont* pFont, float fScale);
    /// Places the spread in a rectangle in client coordinates.
    void UpdatePosition(const CRect& rcClient);
    /// Size of the laid-out spread, in pixels.
    int GetWidthDP() const { return m_nWidthDP; }
    int GetHeightDP() const { return m_nHeightDP; }

    /// Draws the spread, with the context current, in a view of the given height: texts and swatches at
    /// window depth fZ, behind them the selected rows at fZ + 3 fDZ and the background at fZ + 4 fDZ. Changes
    /// the current colour, normal, line width, raster position and list base, and the mapping's current
    /// position.
    void oglOutput(CvornOGLMapping* pMap, int nViewHeight, float fZ, float fDZ, float fLineWidth, int nList,
                   int nFontBase);

    /// Whether a visible spread covers the point, in client coordinates.
    int HitTest(POINT pt) const { return GetParam(SPP_VISIBLE) && m_rcPos.PtInRect(pt); }
    /// Selects what lies under a click in client coordinates, by the mode; nFlags are those of the mouse
    /// message (MK_CONTROL counts). With bEdit a click on a colour cell of the only selected row then edits
    /// it. Returns 1 when the selection changed.
    int OnLeftMouseButton(POINT pt, DWORD nFlags, int bEdit);

    /// The application's number of this spread.
    void SetID(int id) { m_nID = id; }
    int GetID() const { return m_nID; }
    /// Reads the bits of the mask; replaces all bits; clears the bits of the mask, then raises those of the
    /// set.
    unsigned long GetParam(unsigned long mask) const { return m_dwParam & mask; }
    void SetParam(unsigned long bits) { m_dwParam = bits; }
    void SetParam(unsigned long set, unsigned long mask) { m_dwParam = (m_dwParam & ~mask) | set; }
    /// Changes the bits of a column header; does nothing outside the grid.
    void SetColParam(int col, unsigned long set, unsigned long mask);

private:
    bool Contains(int row, int col) const { return row >= 0 && row < m_nRows && col >= 0 && col < m_nCols; }
    bool IsRowMode() const { return GetParam(SPP_ROWSEL | SPP_COLSEL) == SPP_ROWSEL; }
    bool IsColMode() const { return GetParam(SPP_ROWSEL | SPP_COLSEL) == SPP_COLSEL; }
};
