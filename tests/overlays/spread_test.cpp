// SPDX-License-Identifier: MIT
#include "tests/overlays/overlay_test.h"
#include "vorn/overlays/spread.h"

#include <algorithm>
#include <optional>

namespace {

class SpreadTest : public OverlayTest {
protected:
    SpreadTest() {
        m_sheet.m_colBack = CvornColour(RGB(0, 0, 102), 0.5F);
        m_sheet.m_colMark = CvornColour(RGB(255, 102, 0), 1);
        m_sheet.m_colText = CvornColour(RGB(255, 255, 255), 1);
        m_sheet.SetParam(SPP_VISIBLE | SPP_LEFT | SPP_TOP);
        m_sheet.SetMaxSize(3, 2);
        m_sheet.SetText(0, 0, "wide text");
        m_sheet.SetText(1, 0, "i");
        m_sheet.SetColour(1, 1, RGB(0, 255, 0));
        m_sheet.SetText(2, 1, "w");
    }
    void layOut(float scale = 1) {
        m_sheet.UpdateMetrics(&m_dc, &m_font, scale);
        m_sheet.UpdatePosition(m_client);
    }
    Picture draw() {
        return pictureOf(
            [&] { m_sheet.oglOutput(&m_map, viewHeight, 0.2F, 0.1F, 3, m_nList, m_nFontLists); });
    }
    /// A client rectangle at a depth.
    testing::AssertionResult isOver(const Drawn& drawn, const CRect& rc, double depth) const {
        return isAt(drawn, rc.left, viewHeight - rc.bottom, rc.right, viewHeight - rc.top, depth);
    }
    CRect cellRect(int row, int col) const {
        return {m_sheet.m_rcPos.TopLeft() +
                    CSize(m_sheet.m_pColHeaders[col].m_nLayout, m_sheet.m_pRowHeaders[row].m_nLayout),
                CSize(m_sheet.m_pColHeaders[col].m_nSize, m_sheet.m_pRowHeaders[row].m_nSize)};
    }
    int click(int row, int col, DWORD flags = 0, int edit = 0) {
        return m_sheet.OnLeftMouseButton(cellRect(row, col).CenterPoint(), flags, edit);
    }

    CvornSpread m_sheet;
    const CRect m_client{10, 10, 790, 590}; // inside, so that nothing is clipped
};

TEST_F(SpreadTest, LayoutMeasuresTextsTitleAndScale) {
    const struct {
        float scale;
        int added;
        const char* title;
    } cases[] = {{0, 0, ""}, {1, 1, "T"}, {1.2F, 2, "A title that is wider than the sheet"}};
    for (const auto& c : cases) {
        m_sheet.m_strTitle = c.title;
        layOut(c.scale);
        const int margin = pixels(50) + c.added;
        const int padX = 2 * (m_metrics.tmAveCharWidth + c.added),
                  padY = m_metrics.tmInternalLeading + 2 * c.added;
        const int titleHeight = *c.title ? m_metrics.tmHeight + padY : 0;
        const int titleWidth = *c.title ? extentOf(c.title).cx + padX : 0;
        const int row = m_metrics.tmHeight + padY;
        const int col0 = extentOf("wide text").cx + padX,
                  col1 = extentOf("W").cx + padX; // the swatch's width
        EXPECT_EQ(m_sheet.m_pColHeaders[0].m_nSize, col0);
        EXPECT_EQ(m_sheet.m_pColHeaders[1].m_nSize, col1);
        EXPECT_EQ(cellRect(2, 1).TopLeft() - m_sheet.m_rcPos.TopLeft(),
                  CSize(margin + col0, margin + titleHeight + 2 * row));
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
    m_sheet.SetParam(SPP_HCENTER | SPP_BOTTOM);
    m_sheet.UpdatePosition(CRect(10, 20, 111, 90));
    EXPECT_EQ(m_sheet.m_rcPos, CRect(58, 84, 64, 90));
}

TEST_F(SpreadTest, DrawsBackgroundBarsSwatchesAndTexts) {
    m_sheet.m_strTitle = "T";
    m_sheet.SetParam(SPP_FRAME | SPP_ROWSEL, SPP_FRAME | SPP_ROWSEL);
    layOut();
    m_sheet.SetSel(2);
    const Picture picture = draw();
    const CRect& pos = m_sheet.m_rcPos;
    const CRect& pad = m_sheet.m_rcPad;

    ASSERT_EQ(picture.quads.size(), 3U);
    EXPECT_TRUE(isOver(picture.quads[0], pos, 0.6));
    EXPECT_TRUE(hasColour(picture.quads[0], RGB(0, 0, 102), 0.5));
    const CRect selected = cellRect(2, 0);
    EXPECT_TRUE(isOver(picture.quads[1],
                       CRect(pos.left + pad.left, selected.top, pos.right - pad.right, selected.bottom),
                       0.5));
    EXPECT_TRUE(hasColour(picture.quads[1], RGB(255, 102, 0), 1));
    CRect swatch = cellRect(1, 1);
    swatch.DeflateRect(pad.left, pad.bottom, pad.right, pad.bottom);
    EXPECT_TRUE(isOver(picture.quads[2], swatch, 0.2));
    EXPECT_TRUE(hasColour(picture.quads[2], RGB(0, 255, 0), 1));
    ASSERT_EQ(picture.loops.size(), 2U);
    EXPECT_TRUE(isOver(picture.loops[0], pos, 0.2));
    EXPECT_TRUE(hasColour(picture.loops[0], RGB(255, 102, 0), 1));
    EXPECT_TRUE(isOver(picture.loops[1], swatch, 0.2));
    CvornColour outline(RGB(0, 255, 0), 1);
    outline.Change(0.2F);
    EXPECT_TRUE(hasColour(picture.loops[1], outline, 1));

    ASSERT_EQ(picture.characters.size(), 1 + 9 + 1 + 1U); // nothing in the swatch
    const double titleX = pos.left + pad.left + (pos.left + pos.right - m_sheet.m_nTitleWidth) * 0.5;
    const double titleY = viewHeight - (cellRect(0, 0).top - pad.bottom);
    EXPECT_TRUE(isAt(picture.characters[0], titleX, titleY, titleX, titleY, 0.2));
    const double textX = cellRect(0, 0).left + pad.left,
                 textY = viewHeight - (cellRect(0, 0).bottom - pad.bottom);
    EXPECT_TRUE(isAt(picture.characters[1], textX, textY, textX, textY, 0.2));
    EXPECT_TRUE(hasColour(picture.characters[1], RGB(255, 255, 255), 1));

    const Picture list = pictureOf([&] { ::glCallList(m_nList); });
    EXPECT_TRUE(isOver(list.quads.at(0), pos, 0.6));
    EXPECT_TRUE(list.characters.empty());
}

TEST_F(SpreadTest, ColumnsAlignTheirTexts) {
    const struct {
        DWORD bits;
        double part; // of the spare width, to the left of the text
    } cases[] = {{0, 0}, {SHP_HCENTER, 0.5}, {SHP_RIGHT, 1}, {SHP_HCENTER | SHP_RIGHT, 0}};
    for (const auto& c : cases) {
        m_sheet.SetColParam(0, c.bits, SHP_ALIGNMENT);
        layOut();
        const Drawn narrow = draw().characters[9];
        const CRect cell = cellRect(1, 0);
        const double spare = cell.Width() - m_sheet.m_rcPad.left - m_sheet.m_rcPad.right - extentOf("i").cx;
        EXPECT_NEAR(narrow.left, cell.left + m_sheet.m_rcPad.left + spare * c.part, 0.02) << c.bits;
    }
}

TEST_F(SpreadTest, TextsStayInTheirCellsInPixels) {
    m_sheet.m_strTitle = "MMMM";
    m_sheet.SetColParam(0, SHP_RIGHT, SHP_RIGHT);
    layOut();
    ::glClearColor(0, 0, 0, 1);
    ::glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    m_sheet.oglOutput(&m_map, viewHeight, 0.2F, 0.1F, 1, m_nList, m_nFontLists);
    ::glFinish();
    const auto textIn = [](const CRect& rc) {
        const auto seen = support::pixelsIn(rc.left, viewHeight - rc.bottom, rc.Width(), rc.Height());
        return std::ranges::count(seen, RGB(255, 255, 255));
    };
    CRect title = m_sheet.m_rcPos;
    title.bottom = cellRect(0, 0).top - 1;
    EXPECT_GT(textIn(title), 20);
    CRect narrow = cellRect(1, 0); // "i", right-aligned
    narrow.right -= m_sheet.m_rcPad.right;
    EXPECT_GT(textIn(narrow), 5);
    narrow.right -= extentOf("i").cx;
    EXPECT_EQ(textIn(narrow), 0);
    EXPECT_EQ(textIn(cellRect(2, 0)), 0);
    EXPECT_TRUE(support::isNear(
        support::pixelAt(cellRect(1, 1).CenterPoint().x, viewHeight - cellRect(1, 1).CenterPoint().y),
        RGB(0, 255, 0)));
}

TEST_F(SpreadTest, ClicksSelectByTheMode) {
    layOut();
    const struct {
        const char* what;
        DWORD mode;
        int row, col;
        DWORD flags;
        int changed, count, anchor;
    } script[] = {
        {"select a row", SPP_ROWSEL, 1, 0, 0, 1, 1, 1},
        {"click it again", SPP_ROWSEL, 1, 0, 0, 0, 1, 1},
        {"the only one stays", SPP_ROWSEL, 1, 0, MK_CONTROL, 0, 1, 1},
        {"add another", SPP_ROWSEL, 2, 0, MK_CONTROL, 1, 2, 2},
        {"take one off", SPP_ROWSEL, 2, 0, MK_CONTROL, 1, 1, -1},
        {"add it again", SPP_ROWSEL, 2, 1, MK_CONTROL, 1, 2, 2},
        {"keep one only", SPP_ROWSEL, 1, 1, 0, 1, 1, 1},
        {"another one alone", SPP_ROWSEL, 0, 1, 0, 1, 1, 0},
        {"the last one may go", SPP_ROWSEL | SPP_DESELECTLAST, 0, 1, MK_CONTROL, 1, 0, -1},
        {"select a column", SPP_COLSEL, 0, 1, 0, 1, 1, 1},
        {"click it again", SPP_COLSEL, 2, 1, 0, 0, 1, 1},
        {"the last column always goes", SPP_COLSEL, 0, 1, MK_CONTROL, 1, 0, -1},
        {"select it", SPP_COLSEL, 0, 1, MK_CONTROL, 1, 1, 1},
        {"and the other", SPP_COLSEL, 0, 0, MK_CONTROL, 1, 2, 0},
        {"keep one only", SPP_COLSEL, 0, 1, 0, 1, 1, 1},
        {"cell mode clears", SPP_ROWSEL | SPP_COLSEL, 0, 1, 0, 0, 0, 1},
    };
    for (const auto& step : script) {
        m_sheet.SetParam(step.mode, SPP_ROWSEL | SPP_COLSEL | SPP_DESELECTLAST);
        EXPECT_EQ(click(step.row, step.col, step.flags), step.changed) << step.what;
        EXPECT_EQ(m_sheet.GetSelCount(), step.count) << step.what;
        EXPECT_EQ(m_sheet.m_nSelAnchor, step.anchor) << step.what;
    }

    const CPoint cross = cellRect(1, 1).TopLeft(); // the corner that four cells share
    m_sheet.SetParam(SPP_ROWSEL, SPP_ROWSEL | SPP_COLSEL);
    m_sheet.OnLeftMouseButton(cross, 0, 0);
    EXPECT_EQ(m_sheet.GetFirstRowSel(), 0);
    m_sheet.SetParam(SPP_COLSEL, SPP_ROWSEL | SPP_COLSEL);
    m_sheet.OnLeftMouseButton(cross, 0, 0);
    EXPECT_TRUE(m_sheet.IsColSelected(1));
    EXPECT_EQ(m_sheet.OnLeftMouseButton(m_sheet.m_rcPos.BottomRight(), 0, 0), 0);
    m_sheet.SetParam(0, SPP_VISIBLE);
    EXPECT_EQ(click(0, 0), 0);
    EXPECT_FALSE(m_sheet.HitTest(cross));
}

TEST_F(SpreadTest, ResizingBehindTheLayoutIsSafe) {
    m_sheet.SetParam(SPP_ROWSEL, SPP_ROWSEL);
    layOut();
    m_sheet.SelectAll();
    const CRect last = cellRect(2, 1);
    for (const CSize& size : {CSize(1, 1), CSize(0, 5), CSize(0, 0), CSize(40, 30)}) {
        m_sheet.SetMaxSize(size.cx, size.cy);
        draw();
        m_sheet.OnLeftMouseButton(last.CenterPoint(), MK_CONTROL, 1);
        m_sheet.EditCell(2, 1); // text, or gone
        EXPECT_LE(m_sheet.GetFirstRowSel(), size.cx);
    }
}

/// Answers the dialog that opens next on this thread, and notes the colour that it begins with.
class DialogAnswer {
public:
    explicit DialogAnswer(int command) : m_timer(::SetTimer(nullptr, 0, 50, &DialogAnswer::onTimer)) {
        s_command = command;
        s_seen = false;
    }
    ~DialogAnswer() { ::KillTimer(nullptr, m_timer); }
    static bool seen() { return s_seen; }

private:
    static BOOL CALLBACK answer(HWND window, LPARAM) {
        char name[16] = {};
        ::GetClassNameA(window, name, sizeof(name));
        if (std::string(name) != "#32770") return TRUE;
        s_seen = true;
        ::PostMessageA(window, WM_COMMAND, static_cast<WPARAM>(s_command), 0);
        return FALSE;
    }
    static void CALLBACK onTimer(HWND, UINT, UINT_PTR, DWORD) {
        ::EnumThreadWindows(::GetCurrentThreadId(), &DialogAnswer::answer, 0);
    }

    UINT_PTR m_timer;
    static inline int s_command = 0;
    static inline bool s_seen = false;
};

/// Keeps what it is told.
class Listener : public CWnd {
public:
    struct Notice {
        WPARAM id;
        int row, col;
    };
    std::optional<Notice> m_notice;

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message != WM_APP + 7) return CWnd::WindowProc(message, wParam, lParam);
        const int* place = reinterpret_cast<const int*>(lParam);
        m_notice = Notice{wParam, place[0], place[1]};
        return 0;
    }
};

TEST_F(SpreadTest, ColourDialogEditsAndNotifies) {
    Listener listener;
    ASSERT_TRUE(listener.CreateEx(0, AfxRegisterWndClass(0), "listener", WS_OVERLAPPED, 0, 0, 10, 10, nullptr,
                                  nullptr));
    m_sheet.SetParent(&listener);
    m_sheet.SetMsgWnd(&listener, WM_APP + 7);
    m_sheet.SetID(31);
    m_sheet.SetParam(SPP_ROWSEL, SPP_ROWSEL);
    layOut();

    m_sheet.EditCell(0, 0); // a text cell: no dialog, which nobody would answer
    {
        const DialogAnswer cancel(IDCANCEL);
        m_sheet.EditCellColour(0, 0);
        EXPECT_TRUE(cancel.seen());
        EXPECT_EQ(m_sheet.GetType(0, 0), CvornCell::TextCell);
        EXPECT_FALSE(listener.m_notice);
    }
    const DialogAnswer ok(IDOK);
    EXPECT_EQ(click(1, 1, 0, 1), 1); // selects the row, then edits its swatch
    ASSERT_TRUE(listener.m_notice);
    EXPECT_EQ(listener.m_notice->id, 31U);
    EXPECT_EQ(listener.m_notice->row, 1);
    EXPECT_EQ(listener.m_notice->col, 1);
    EXPECT_NEAR(m_sheet.GetColour(1, 1).GetGreeni(), 255, 2); // what the dialog began with

    m_sheet.EditCellColour(0, 0);
    EXPECT_EQ(m_sheet.GetType(0, 0), CvornCell::ColourCell);
    m_sheet.EditCellColour(9, 9); // outside the grid
    EXPECT_EQ(listener.m_notice->row, 9);
    listener.DestroyWindow();
}

} // namespace
