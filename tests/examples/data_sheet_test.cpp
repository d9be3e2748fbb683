// SPDX-License-Identifier: MIT
#include "common/grid_rows.h"
#include "explorer/clipboard.h"
#include "explorer/explorer_view.h"
#include "tests/support/dialog_driver.h"

#include <cmath>
#include <colordlg.h>
#include <gtest/gtest.h>
#include <limits>
#include <set>

namespace {

using namespace examples;

Options sheetOptions() {
    Options options;
    options.ramp = "grey";
    options.sheet = true;
    return options;
}

/// Waves; every row has two holes in its middle.
Grid someGrid(int rows, int columns) {
    Grid grid;
    grid.rows = rows;
    grid.columns = columns;
    for (int i = 0; i < rows * columns; ++i)
        grid.values.push_back(std::abs(i % columns * 2 + 1 - columns) <= 1
                                  ? std::numeric_limits<double>::quiet_NaN()
                                  : std::sin(i * 0.7));
    return grid;
}

/// A chart window with its sheet, driven by messages.
class View : public CExplorerView {
public:
    explicit View(const Grid& grid) : CExplorerView(grid, sheetOptions()) {
        EXPECT_TRUE(createWindow("sheet"));
        lookFrom(ViewPoint::top);
        ShowWindow(SW_SHOWNA);
        UpdateWindow();
    }
    ~View() override { DestroyWindow(); }

    void mouse(UINT message, UINT flags, CPoint pt) { SendMessage(message, flags, MAKELPARAM(pt.x, pt.y)); }
    void click(CPoint pt, UINT flags = 0) {
        mouse(WM_LBUTTONDOWN, MK_LBUTTON | flags, pt);
        mouse(WM_LBUTTONUP, flags, pt);
        UpdateWindow();
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
    void ctrlKey(UINT key) {
        BYTE keys[256] = {};
        keys[VK_CONTROL] = 0x80;
        ::SetKeyboardState(keys);
        SendMessage(WM_KEYDOWN, key, 1);
        keys[VK_CONTROL] = 0;
        ::SetKeyboardState(keys);
        UpdateWindow();
    }
    std::vector<int> selected() {
        std::vector<int> rows;
        for (const RowLines::Line& line : sheet().selection())
            rows.push_back(line.row);
        return rows;
    }
    std::vector<BYTE> picture(CSize size = {800, 600}) {
        EXPECT_TRUE(m_picture.Create(size.cx, size.cy, static_cast<HPALETTE>(nullptr)));
        EXPECT_TRUE(drawPicture(m_picture));
        const BYTE* bits = m_picture.GetBitsAddress();
        return {bits, bits + static_cast<std::size_t>(m_picture.GetStorageWidth()) * size.cy};
    }
    /// Of the last picture.
    COLORREF at(CPoint pt) {
        const BYTE* row =
            m_picture.GetBitsAddress() +
            static_cast<std::size_t>(m_picture.GetHeight() - 1 - pt.y) * m_picture.GetStorageWidth();
        return RGB(row[pt.x * 3 + 2], row[pt.x * 3 + 1], row[pt.x * 3]);
    }
    /// The columns of pixels, beside the sheet, in which a picture has the colour.
    std::set<int> columnsWith(COLORREF colour) {
        picture();
        std::set<int> columns;
        for (int x = 0; x < sheet().bounds().left; ++x)
            for (int y = 0; y < m_picture.GetHeight(); ++y)
                if (at({x, y}) == colour) columns.insert(x);
        return columns;
    }

private:
    CvornDIBSurface m_picture;
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
    view.SendMessage(WM_KEYDOWN, VK_PRIOR, 1);
    EXPECT_EQ(view.sheet().firstShown(), 299 - last - last - 1);

    const CPoint onSheet = view.sheet().bounds().TopLeft() + CSize(9, 9), onChart(100, 300);
    for (const UINT flags : {MK_LBUTTON, MK_LBUTTON | MK_CONTROL}) {
        const auto before = view.picture();
        view.UpdateWindow();
        view.mouse(WM_LBUTTONDOWN, flags, onSheet);
        view.mouse(WM_MOUSEMOVE, flags, onChart);
        view.mouse(WM_LBUTTONUP, flags & ~MK_LBUTTON, onChart);
        EXPECT_EQ(view.picture(), before);
    }
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
    view.UpdateWindow();
    view.click(view.sheet().colourCell(7).CenterPoint());
    EXPECT_TRUE(driver.finished());
    EXPECT_EQ(::GetCapture(), nullptr);
    ASSERT_EQ(view.selected(), std::vector{7});
    const COLORREF chosen = view.sheet().selection().front().colour;
    EXPECT_EQ(chosen, static_cast<COLORREF>(RGB(10, 20, 30)));
    const std::set<int> columns = view.columnsWith(chosen);
    ASSERT_GT(columns.size(), 50U);
    EXPECT_EQ(view.at(view.sheet().colourCell(7).CenterPoint()), chosen);
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
    const auto flat = view.picture();
    view.ctrlKey('V');
    EXPECT_GE(view.axes().set().m_axisZ.GetMax(), 400);
    EXPECT_EQ(view.grid().rowLabels[11], "peak");
    EXPECT_NE(view.picture(), flat);

    const std::string rows = rowsAsText(view.grid(), std::vector{0, 5, 11, 12});
    for (const std::string& hostile : {std::string("1\t2\t3\t4\t5\nword"), std::string("1\0\t2\t3\t4\t5", 10),
                                       std::string(4 << 20, '7'), std::string(1 << 20, '\n')}) {
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
        view.picture(size);
        const CRect bounds = view.sheet().bounds();
        EXPECT_EQ(bounds.IsRectEmpty(), size.cx < 100);
        if (bounds.IsRectEmpty()) continue;
        EXPECT_EQ(CRect(CPoint(0, 0), CSize(size.cx, size.cy)) & bounds, bounds);
        EXPECT_NE(view.at(view.sheet().colourCell(view.sheet().rowsShown() - 1).CenterPoint()),
                  RGB(255, 255, 255));
        for (int y = bounds.bottom + 1; y < size.cy; ++y)
            EXPECT_EQ(view.at({bounds.right - 5, y}), RGB(250, 250, 248)) << "rows out of view";
    }
}

} // namespace
