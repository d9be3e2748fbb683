// SPDX-License-Identifier: MIT
#include "common/grid_rows.h"
#include "explorer/clipboard.h"
#include "tests/examples/explorer_window.h"
#include "tests/support/dialog_driver.h"

#include <colordlg.h>
#include <set>

namespace {

using namespace examples;
using support::hole, support::Picture;

Options sheetOptions() {
    Options options = support::withOverlays();
    options.ramp = "grey";
    options.sheet = true;
    return options;
}

/// Waves; every row has two holes in its middle.
Grid someGrid(int rows, int columns) {
    return support::gridFrom(rows, columns, [columns](int i) {
        return std::abs(i % columns * 2 + 1 - columns) <= 1 ? hole : std::sin(i * 0.7);
    });
}

/// A chart from above, with its sheet.
class View : public support::ExplorerWindow {
public:
    explicit View(const Grid& grid) : ExplorerWindow(grid, sheetOptions()) {
        lookFrom(ViewPoint::top);
        EXPECT_TRUE(open({1000, 780}));
    }

    /// Beside the colour.
    CPoint name(int row) {
        return sheet().colourCell(row).CenterPoint() + CSize(sheet().colourCell(row).Width(), 0);
    }
    void wheel(int notches) {
        CPoint pt = sheet().bounds().CenterPoint();
        ClientToScreen(&pt);
        SendMessage(WM_MOUSEWHEEL, MAKEWPARAM(0, notches * WHEEL_DELTA), MAKELPARAM(pt.x, pt.y));
        UpdateWindow();
    }
    void ctrlKey(UINT character) {
        BYTE keys[256] = {};
        keys[VK_CONTROL] = 0x80;
        ::SetKeyboardState(keys);
        key(character);
        keys[VK_CONTROL] = 0;
        ::SetKeyboardState(keys);
    }
    std::vector<int> selected() {
        std::vector<int> rows;
        for (const RowLines::Line& line : sheet().selection())
            rows.push_back(line.row);
        return rows;
    }
    /// The columns of pixels, beside the sheet, in which the colour is shown.
    std::set<int> columnsWith(COLORREF colour) {
        const int end = sheet().bounds().left;
        std::set<int> columns;
        for (const CPoint pt :
             shown().where([&](CPoint pt, COLORREF other) { return pt.x < end && other == colour; }))
            columns.insert(pt.x);
        return columns;
    }
};

TEST(DataSheet, TakesItsMouseEventsBeforeTheChart) {
    View view(someGrid(300, 8));
    const int last = view.sheet().rowsShown() - 1;
    ASSERT_GT(last, 8);
    view.click(view.name(2));
    view.click(view.name(last), MK_CONTROL);
    view.click(view.sheet().bounds().TopLeft() + CSize(9, 9)); // the heading
    EXPECT_EQ(view.selected(), (std::vector{2, last}));
    view.wheel(-100);
    EXPECT_EQ(view.sheet().firstShown(), 299 - last);
    EXPECT_EQ(view.sheet().colourCell(2), CRect(0, 0, 0, 0));
    view.click(view.name(299), MK_CONTROL);
    EXPECT_EQ(view.selected(), (std::vector{2, last, 299}));
    view.click(view.name(298));
    EXPECT_EQ(view.selected(), std::vector{298}) << "those out of view too";
    view.click(view.name(298), MK_CONTROL);
    EXPECT_TRUE(view.selected().empty());
    view.key(VK_PRIOR);
    EXPECT_EQ(view.sheet().firstShown(), 299 - last - last - 1);

    const auto turned = view.angles();
    view.drag({view.sheet().bounds().TopLeft() + CSize(9, 9), CPoint(100, 300)});
    view.mouse(WM_LBUTTONUP, 0, CPoint(100, 300));
    EXPECT_EQ(view.angles(), turned);
}

TEST(DataSheet, ColoursOfSelectedRowsAreTheirLines) {
    View view(someGrid(12, 8));
    view.click(view.name(3));
    EXPECT_GT(view.columnsWith(view.sheet().selection().front().colour).size(), 50U);
    view.click(view.name(3), MK_CONTROL);
    support::DialogDriver driver({[](HWND dialog) {
        for (int i = 0; i < 3; ++i)
            ::SetDlgItemInt(dialog, COLOR_RED + i, 10 * (i + 1), FALSE);
        support::press(dialog, IDOK);
    }});
    view.click(view.sheet().colourCell(7).CenterPoint());
    EXPECT_TRUE(driver.finished());
    EXPECT_EQ(::GetCapture(), nullptr);
    ASSERT_EQ(view.selected(), std::vector{7});
    const COLORREF chosen = view.sheet().selection().front().colour;
    EXPECT_EQ(chosen, static_cast<COLORREF>(RGB(10, 20, 30)));
    const std::set<int> columns = view.columnsWith(chosen);
    ASSERT_GT(columns.size(), 50U);
    EXPECT_EQ(view.shown().at(view.sheet().colourCell(7).CenterPoint()), chosen);
    // The two holes interrupt the line, over three of its seven steps.
    const int whole = *columns.rbegin() - *columns.begin();
    EXPECT_NEAR(static_cast<double>(columns.size()) / whole, 4 / 7.0, 0.05);
    EXPECT_FALSE(columns.contains(*columns.begin() + whole / 2));
}

TEST(DataSheet, RowsGoByTheClipboardAndTheChartFollows) {
    View view(someGrid(12, 5));
    const Grid before = view.grid();
    view.click(view.name(3));
    view.click(view.name(7), MK_CONTROL);
    view.ctrlKey('C');
    EXPECT_EQ(clipboardText(nullptr), rowsAsText(before, std::vector{3, 7}));
    view.click(view.name(11));
    view.ctrlKey('V');
    EXPECT_EQ(view.grid().rows, 13);
    EXPECT_EQ(rowsAsText(view.grid(), std::vector{11, 12}), rowsAsText(before, std::vector{3, 7}));
    EXPECT_EQ(view.selected(), std::vector{11});

    ASSERT_TRUE(copyText(nullptr, "peak\t1\t2\t3\t\t400\r\n"));
    const Picture flat = view.shown();
    view.ctrlKey('V');
    EXPECT_GE(view.axes().set().m_axisZ.GetMax(), 400);
    EXPECT_EQ(view.grid().rowLabels[11], "peak");
    EXPECT_NE(view.shown(), flat);

    const std::string rows = rowsAsText(view.grid(), std::vector{0, 5, 11, 12});
    for (const std::string& hostile : {std::string("1\t2\t3\t4\t5\nword"), std::string(4 << 20, '7')}) {
        ASSERT_TRUE(copyText(nullptr, hostile));
        view.ctrlKey('V');
        EXPECT_EQ(rowsAsText(view.grid(), std::vector{0, 5, 11, 12}), rows);
    }
}

TEST(DataSheet, ShowsWhatHasRoomAtAnySize) {
    View view(someGrid(300, 20));
    for (const CSize size :
         {CSize(600, 450), CSize(1200, 900), CSize(301, 200), CSize(80, 60), CSize(1, 1)}) {
        SCOPED_TRACE(size.cx);
        const Picture picture = view.picture(size);
        const CRect bounds = view.sheet().bounds();
        EXPECT_EQ(bounds.IsRectEmpty(), size.cx < 100);
        if (bounds.IsRectEmpty()) continue;
        EXPECT_EQ(CRect(CPoint(0, 0), size) & bounds, bounds);
        const int last = view.sheet().rowsShown() - 1;
        EXPECT_NE(picture.at(view.sheet().colourCell(last).CenterPoint()), RGB(255, 255, 255));
        for (int y = bounds.bottom + 1; y < size.cy; ++y)
            EXPECT_EQ(picture.at({bounds.right - 5, y}), support::chartBackground) << "rows out of view";
    }
}

} // namespace
