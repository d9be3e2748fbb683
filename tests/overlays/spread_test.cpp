// SPDX-License-Identifier: MIT
#include "tests/overlays/overlay_test.h"
#include "tests/support/dialog_driver.h"
#include "vorn/overlays/spread.h"

#include <algorithm>
#include <tuple>

namespace {

class SpreadTest : public OverlayTest {
protected:
    SpreadTest() {
        m_sheet.m_colBack = CvornColour(0, 0, 0.4F, 0.5F);
        m_sheet.m_colMark = CvornColour(1, 0.4F, 0, 1);
        m_sheet.m_colText = CvornColour(1, 1, 1, 1);
        m_sheet.SetParam(SPP_VISIBLE | SPP_LEFT | SPP_TOP | SPP_ROWSEL);
        m_sheet.Paste(CString("wide text\t\ni\t\n\tw"), 1);
        m_sheet.SetColour(1, 1, RGB(0, 255, 0));
        m_sheet.m_strTitle = "MMM";
        layOut();
    }
    void layOut(float scale = 1) {
        m_sheet.UpdateMetrics(&m_dc, &m_font, scale);
        m_sheet.UpdatePosition({10, 10, 790, 590}); // inside, so that nothing is clipped
    }
    void output() { m_sheet.oglOutput(&m_map, viewHeight, 0.2F, 0.1F, 1, m_nList, m_nFontLists); }
    CRect cellRect(int row, int col) const {
        const CvornSpreadHeader &r = m_sheet.m_pRowHeaders[row], &c = m_sheet.m_pColHeaders[col];
        return {m_sheet.m_rcPos.TopLeft() + CSize(c.m_nLayout, r.m_nLayout), CSize(c.m_nSize, r.m_nSize)};
    }
    int click(int row, int col, DWORD flags = 0, int edit = 0) {
        return m_sheet.OnLeftMouseButton(cellRect(row, col).CenterPoint(), flags, edit);
    }

    CvornSpread m_sheet;
};

TEST_F(SpreadTest, LayoutMeasuresTextsTitleAndScale) {
    const std::tuple<float, int, const char*> cases[] = {
        {0, 0, ""}, {1, 1, "T"}, {1.2F, 2, "wider than the sheet"}};
    for (const auto& [scale, added, title] : cases) {
        m_sheet.m_strTitle = title;
        layOut(scale);
        const int margin = pixels(50) + added;
        const int padX = 2 * (m_metrics.tmAveCharWidth + added),
                  padY = m_metrics.tmInternalLeading + 2 * added;
        const int titleHeight = *title ? m_metrics.tmHeight + padY : 0;
        const int titleWidth = *title ? extentOf(title).cx + padX : 0;
        const int row = m_metrics.tmHeight + padY;
        const int col0 = extentOf("wide text").cx + padX,
                  col1 = extentOf("W").cx + padX; // the swatch's width
        EXPECT_EQ(cellRect(2, 1),
                  CRect(CPoint(10 + margin + col0, 10 + margin + titleHeight + 2 * row), CSize(col1, row)));
        EXPECT_EQ(m_sheet.GetWidthDP(), std::max(col0 + col1, titleWidth) + 2 * margin);
        EXPECT_EQ(m_sheet.GetHeightDP(), 3 * row + titleHeight + 2 * margin);
    }
    m_sheet.SetColParam(1, SHP_FIXED, SHP_FIXED);
    m_sheet.m_pColHeaders[1].m_nSize = 5;
    layOut();
    EXPECT_EQ(m_sheet.m_pColHeaders[1].m_nSize, 5);
    m_sheet.SetMaxSize(0, 0);
    m_sheet.m_strTitle.Empty();
    layOut();
    EXPECT_EQ(m_sheet.GetWidthDP(), 2 * (pixels(50) + 1));
}

TEST_F(SpreadTest, DrawsBackgroundBarsSwatchesAndTexts) {
    m_sheet.SetParam(SPP_FRAME, SPP_FRAME);
    m_sheet.SetSel(2);
    const Picture picture = pictureOf([this] { output(); });
    const CRect &pos = m_sheet.m_rcPos, &pad = m_sheet.m_rcPad;
    CRect bar = cellRect(2, 0), swatch = cellRect(1, 1);
    bar.left = pos.left + pad.left;
    bar.right = pos.right - pad.right;
    swatch.DeflateRect(pad.left, pad.bottom, pad.right, pad.bottom);
    CvornColour green(RGB(0, 255, 0), 1), outline = green;
    outline.Change(0.2F);
    EXPECT_EQ(picture.quads, (Lines{box(pos, 0.6, m_sheet.m_colBack), box(bar, 0.5, m_sheet.m_colMark),
                                    box(swatch, 0.2, green)}));
    EXPECT_EQ(picture.loops, (Lines{box(pos, 0.2, m_sheet.m_colMark), box(swatch, 0.2, outline)}));

    ASSERT_EQ(picture.characters.size(), 3 + 9 + 1 + 1U); // nothing in the swatch
    const double titleX = pos.left + pad.left + (pos.left + pos.right - m_sheet.m_nTitleWidth) * 0.5;
    EXPECT_EQ(picture.characters[0], character(titleX, cellRect(0, 0).top - pad.bottom, 0.2));
    EXPECT_EQ(picture.characters[3],
              character(cellRect(0, 0).left + pad.left, cellRect(0, 0).bottom - pad.bottom, 0.2));
    const Picture list = pictureOf([this] { ::glCallList(m_nList); });
    EXPECT_EQ(list.quads.at(0), picture.quads[0]);
    EXPECT_TRUE(list.characters.empty());

    const double spare = cellRect(1, 0).Width() - pad.left - pad.right - extentOf("i").cx;
    for (const auto& [bits, part] :
         {std::pair(0, 0.0), {SHP_HCENTER, 0.5}, {SHP_RIGHT, 1.0}, {SHP_HCENTER | SHP_RIGHT, 0.0}}) {
        m_sheet.SetColParam(0, bits, SHP_ALIGNMENT);
        const double x = cellRect(1, 0).left + pad.left + spare * part,
                     y = cellRect(1, 0).bottom - pad.bottom;
        EXPECT_EQ(pictureOf([this] { output(); }).characters[12], character(x, y, 0.2)) << bits;
    }
}

TEST_F(SpreadTest, TextsStayInTheirCellsInPixels) {
    m_sheet.SetColParam(0, SHP_RIGHT, SHP_RIGHT);
    m_sheet.SetParam(SPP_FRAME, SPP_FRAME);
    drawSteadily([this] { output(); });
    EXPECT_GT(countIn({0, 10, 200, cellRect(0, 0).top - 1}), 20); // the title
    CRect narrow = cellRect(1, 0);                                // "i"
    narrow.right -= m_sheet.m_rcPad.right;
    EXPECT_GT(countIn(narrow), 5);
    narrow.right -= extentOf("i").cx;
    EXPECT_EQ(countIn(narrow), 0);
    EXPECT_EQ(countIn(cellRect(2, 0)), 0);
    CRect swatch = cellRect(1, 1);
    swatch.DeflateRect(m_sheet.m_rcPad.left, m_sheet.m_rcPad.bottom, m_sheet.m_rcPad.right,
                       m_sheet.m_rcPad.bottom);
    CvornColour outline(RGB(0, 255, 0), 1);
    outline.Change(0.2F);
    EXPECT_EQ(countIn(swatch, RGB(0, 255, 0)), (swatch.Width() - 1) * (swatch.Height() - 1));
    const int all = 2 * (swatch.Width() + swatch.Height()); // of which GL draws no last corner
    EXPECT_GE(countIn(cellRect(1, 1), outline), all - 1);
}

TEST_F(SpreadTest, ClicksSelectByTheMode) {
    constexpr DWORD rows = SPP_ROWSEL, cols = SPP_COLSEL, last = SPP_DESELECTLAST;
    constexpr DWORD ctrl = MK_CONTROL, plain = 0;
    using Outcome = std::tuple<int, int, int>; // changed, count, anchor
    const std::tuple<DWORD, int, int, DWORD, Outcome> script[] = {
        {rows, 1, 0, plain, {1, 1, 1}},        {rows, 1, 0, plain, {0, 1, 1}},
        {rows, 1, 0, ctrl, {0, 1, 1}},         {rows, 2, 0, ctrl, {1, 2, 2}},
        {rows, 2, 0, ctrl, {1, 1, -1}},        {rows, 2, 1, ctrl, {1, 2, 2}},
        {rows, 1, 1, plain, {1, 1, 1}},        {rows, 0, 1, plain, {1, 1, 0}},
        {rows | last, 0, 1, ctrl, {1, 0, -1}}, {cols, 0, 1, plain, {1, 1, 1}},
        {cols, 2, 1, plain, {0, 1, 1}},        {cols, 0, 1, ctrl, {1, 0, -1}},
        {cols, 0, 1, ctrl, {1, 1, 1}},         {cols, 0, 0, ctrl, {1, 2, 0}},
        {cols, 0, 1, plain, {1, 1, 1}},        {rows | cols, 0, 1, plain, {0, 0, 1}}};
    for (const auto& [mode, row, col, keys, outcome] : script) {
        m_sheet.SetParam(mode, rows | cols | last);
        const int changed = click(row, col, keys);
        EXPECT_EQ(Outcome(changed, m_sheet.GetSelCount(), m_sheet.m_nSelAnchor), outcome)
            << mode << ": " << row << col;
    }
    const CPoint cross = cellRect(1, 1).TopLeft(); // the corner that four cells share
    for (const auto& [mode, index] : {std::pair(rows, 0), {cols, 1}}) {
        m_sheet.SetParam(SPP_VISIBLE | mode);
        m_sheet.OnLeftMouseButton(cross, 0, 0);
        EXPECT_EQ(m_sheet.m_nSelAnchor, index);
    }
    EXPECT_EQ(m_sheet.OnLeftMouseButton(m_sheet.m_rcPos.BottomRight(), 0, 0), 0);
    m_sheet.SetParam(0, SPP_VISIBLE);
    EXPECT_EQ(click(0, 0), 0);
    EXPECT_FALSE(m_sheet.HitTest(cross));
}

TEST_F(SpreadTest, ResizingBehindTheLayoutIsSafe) {
    m_sheet.SelectAll();
    const CPoint last = cellRect(2, 1).CenterPoint();
    for (const CSize& size : {CSize(1, 1), CSize(0, 5), CSize(0, 0), CSize(40, 30)}) {
        m_sheet.SetMaxSize(size.cx, size.cy);
        output();
        m_sheet.OnLeftMouseButton(last, MK_CONTROL, 1);
        m_sheet.EditCell(2, 1); // text, or gone
        EXPECT_LT(m_sheet.GetFirstRowSel(), size.cx);
    }
}

/// Keeps the cells that it is told of.
class Listener : public CWnd {
public:
    std::vector<CPoint> m_cells;

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message != WM_APP + 7) return CWnd::WindowProc(message, wParam, lParam);
        const int* place = reinterpret_cast<const int*>(lParam);
        if (wParam == 31) m_cells.emplace_back(place[0], place[1]);
        return 0;
    }
};

TEST_F(SpreadTest, ColourDialogEditsAndNotifies) {
    Listener listener;
    ASSERT_TRUE(
        listener.CreateEx(0, AfxRegisterWndClass(0), "", WS_OVERLAPPED, 0, 0, 10, 10, nullptr, nullptr));
    m_sheet.SetParent(&listener);
    m_sheet.SetMsgWnd(&listener, WM_APP + 7);
    m_sheet.SetID(31);
    const auto cancel = [](HWND dialog) { support::press(dialog, IDCANCEL); };
    const auto ok = [](HWND dialog) { support::press(dialog, IDOK); };
    support::DialogDriver driver({cancel, ok, ok, ok});

    m_sheet.EditCell(0, 0); // a text cell: no dialog
    m_sheet.EditCellColour(0, 0);
    EXPECT_EQ(m_sheet.GetType(0, 0), CvornCell::TextCell);
    EXPECT_TRUE(listener.m_cells.empty());
    EXPECT_EQ(click(1, 1, 0, 1), 1);                          // selects the row, then edits its swatch
    EXPECT_NEAR(m_sheet.GetColour(1, 1).GetGreeni(), 255, 2); // what the dialog began with
    m_sheet.EditCellColour(0, 0);
    EXPECT_EQ(m_sheet.GetType(0, 0), CvornCell::ColourCell);
    m_sheet.EditCellColour(9, 8); // outside the grid
    EXPECT_EQ(listener.m_cells, (std::vector{CPoint(1, 1), CPoint(0, 0), CPoint(9, 8)}));
    EXPECT_TRUE(driver.finished());
    listener.DestroyWindow();
}

} // namespace
