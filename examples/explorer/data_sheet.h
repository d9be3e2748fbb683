// SPDX-License-Identifier: MIT
#pragma once

#include "chart_overlay.h"
#include "row_lines.h"

#include <string>
#include <vector>

/// What the sheet tells its window: a colour was chosen.
constexpr UINT WM_ROW_COLOUR = WM_APP + 1;

/// A sheet of a grid's rows at the right of the chart: for each row a colour, its name, and minimum, mean and
/// maximum of its numbers. It shows as many rows as have room, under a heading that says which ones, and can
/// be scrolled. Clicks select rows, with Ctrl several, and edit their colours.
///
/// One spread holds the heading, in its first row, and all rows. What is seen are two parts of it, the
/// heading and the rows that have room. They share its row headers, and so the selection.
class DataSheet : public ChartOverlay {
public:
    /// The grid must live as long as the sheet; `update` tells of other numbers in it.
    explicit DataSheet(const examples::Grid& grid);

    /// The window owns the colour dialog, and is sent WM_ROW_COLOUR when a colour was chosen there: with
    /// `takeColour` the sheet takes it from the message's lParam.
    void setWindow(CWnd* window);
    void takeColour(LPARAM cell);

    bool isShown() const { return m_shown; }
    /// It is shown once the metrics have been updated.
    void setShown(bool shown);
    /// Reads names and numbers anew; they are shown once the metrics have been updated. Selection and colours
    /// stay with their rows.
    void update();

    void updateMetrics(CDC& dc, CFont& font, int fontLists) override;
    /// At the right edge, with colours and names alone where all columns would take more than half of the
    /// width. Not shown where these have no room either.
    CRect place(const CRect& free) override;
    CRect bounds() const override;
    /// How much it would take at the right of a free part, for the metrics that it has.
    int widthIn(const CRect& free) const;
    void draw(CvornOGLMapping& mapping, CSize view) override;
    /// Selects, and edits the colour of the only selected row.
    void onPress(UINT flags, CPoint point) override;

    /// Scrolls by rows, or by as many as are shown. True when that was possible.
    bool scroll(int rows);
    bool scrollPages(int pages) { return scroll(pages * m_rowsShown); }
    bool turnWheel(short delta);

    /// The selected rows, in their order, each with its colour.
    std::vector<RowLines::Line> selection() const;
    /// The row's colour cell in client coordinates; empty when it is not shown.
    CRect colourCell(int row) const;
    int firstShown() const { return m_firstShown; }
    int rowsShown() const { return m_rowsShown; }

private:
    enum Column { colColour, colName, colLeast, colMean, colGreatest, columnsOfAll };
    static constexpr int columnsAtLeast = colName + 1;

    CString heading(int first, int count) const;
    int widthOf(int columns) const;
    CRect areaIn(const CRect& free) const;
    int columnsIn(const CRect& free) const;
    void arrange();
    CvornSpread part(int firstRow, int rows, CPoint corner) const;
    void deselectOutOfView();

    const examples::Grid& m_grid;
    CvornSpread m_all;
    CvornSpread m_head, m_body;
    int m_fontLists = 0;
    float m_lineWidth = 1;
    CRect m_free{0, 0, 0, 0};
    int m_columns = columnsOfAll; ///< that have room
    bool m_shown = false;
    int m_wheel = 0; ///< what it was turned and is not yet a row
    int m_firstShown = 0;
    int m_rowsShown = 0;
};
