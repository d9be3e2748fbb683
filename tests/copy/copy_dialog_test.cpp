// SPDX-License-Identifier: MIT
#include "tests/support/dialog_driver.h"
#include "tests/support/handle_counts.h"
#include "tests/support/temp_folder.h"
#include "vorn/copy/copy_info.h"
#include "vorn/copy/copy_setup_dialog.h"

#include <gtest/gtest.h>
#include <string>

using support::choose;
using support::DialogDriver;
using support::press;
using support::textOf;

namespace {

constexpr int inches = CdlgCopySetup::UNITS_INCHES;
constexpr int centimetres = CdlgCopySetup::UNITS_CM;
constexpr int pixels = CdlgCopySetup::UNITS_PIXELS;

VORN_COPY_INFO record(int format, int units, float width, float height, BOOL fixedSize, BOOL border) {
    return {format, units, width, height, fixedSize, border};
}

bool isChecked(HWND dialog, int id) {
    return ::SendMessageA(::GetDlgItem(dialog, id), BM_GETCHECK, 0, 0) == BST_CHECKED;
}

bool hasStyle(HWND dialog, int id, LONG style) {
    return (::GetWindowLongA(::GetDlgItem(dialog, id), GWL_STYLE) & style) == style;
}

void type(HWND dialog, int id, const char* text) {
    ::SetWindowTextA(::GetDlgItem(dialog, id), text);
}

} // namespace

TEST(CopyDialog, StandsAsItsTemplateSays) {
    struct Control {
        int id;
        const char* text;
        RECT place; // dialog units: left, top, width, height
    };
    const Control controls[] = {
        {4010, "Bitmap", {13, 18, 37, 10}},
        {4011, "Metafile", {58, 18, 41, 10}},
        {4013, "Size (approx)", {7, 35, 172, 60}},
        {4006, "15", {37, 46, 40, 14}},
        {4008, "15", {37, 63, 40, 14}},
        {4009, "Fixed Size", {13, 80, 48, 10}},
        {4012, "Border", {13, 111, 37, 10}},
        {IDOK, "OK", {75, 133, 50, 14}},
        {IDCANCEL, "Cancel", {129, 133, 50, 14}},
    };
    DialogDriver driver({[&](HWND dialog) {
        EXPECT_EQ(textOf(dialog, 0), "Copy Setup - Chart");
        for (const Control& control : controls) {
            SCOPED_TRACE(control.text);
            const HWND window = ::GetDlgItem(dialog, control.id);
            ASSERT_NE(window, nullptr);
            EXPECT_EQ(textOf(dialog, control.id), control.text);
            RECT place = control.place;
            ::MapDialogRect(dialog, &place);
            const CRect expected(CPoint(place.left, place.top), CSize(place.right, place.bottom));
            RECT actual;
            ::GetWindowRect(window, &actual);
            ::MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&actual), 2);
            EXPECT_TRUE(expected == actual) << actual.left << ", " << actual.top;
        }
        const HWND combo = ::GetDlgItem(dialog, 4007);
        const char* const items[] = {"Pixels", "Centimeters", "Inches"};
        ASSERT_EQ(::SendMessageA(combo, CB_GETCOUNT, 0, 0), 3);
        for (int i = 0; i < 3; ++i) {
            char item[32] = {};
            ::SendMessageA(combo, CB_GETLBTEXT, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(item));
            EXPECT_STREQ(item, items[i]);
        }
        press(dialog, IDCANCEL);
    }});
    CvornCopyInfo info;
    EXPECT_EQ(info.Setup(TRUE, "Chart"), 0);
    EXPECT_TRUE(driver.finished());
}

TEST(CopyDialog, OpensOnEveryRecordAndGivesItBack) {
    struct Case {
        const char* name;
        VORN_COPY_INFO before;
        int allowMetafile;
        VORN_COPY_INFO after;
    };
    const Case cases[] = {
        {"bitmap in pixels", record(2, pixels, 300, 200, TRUE, FALSE), 1,
         record(2, pixels, 300, 200, TRUE, FALSE)},
        {"metafile in inches", record(3, inches, 2.5F, 4, FALSE, TRUE), 1,
         record(3, inches, 2.5F, 4, FALSE, TRUE)},
        {"metafile not allowed", record(3, centimetres, 9, 9, TRUE, TRUE), 0,
         record(2, centimetres, 9, 9, TRUE, TRUE)},
        {"a DIB counts as bitmap", record(8, pixels, 10, 20, FALSE, FALSE), 1,
         record(2, pixels, 10, 20, FALSE, FALSE)},
        {"unknown format", record(77, inches, 1, 100000, FALSE, FALSE), 1,
         record(2, inches, 1, 100000, FALSE, FALSE)},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        DialogDriver driver({[&](HWND dialog) {
            const bool metafile = c.after.nFormat == CF_METAFILEPICT;
            EXPECT_EQ(isChecked(dialog, 4010), !metafile);
            EXPECT_EQ(isChecked(dialog, 4011), metafile);
            EXPECT_EQ(::IsWindowVisible(::GetDlgItem(dialog, 4011)) != 0, c.allowMetafile != 0);
            EXPECT_EQ(::SendMessageA(::GetDlgItem(dialog, 4007), CB_GETCURSEL, 0, 0), c.before.nUnits);
            EXPECT_EQ(isChecked(dialog, 4009), c.before.bFixedSize != 0);
            EXPECT_EQ(isChecked(dialog, 4012), c.before.bBorder != 0);
            for (const int edit : {4006, 4008}) {
                EXPECT_EQ(::IsWindowEnabled(::GetDlgItem(dialog, edit)) != 0, c.before.bFixedSize != 0);
                EXPECT_EQ(hasStyle(dialog, edit, ES_NUMBER), c.before.nUnits == pixels);
            }
            EXPECT_EQ(textOf(dialog, 4013), c.before.nUnits == pixels ? "Size" : "Size (approx)");
            EXPECT_EQ(textOf(dialog, 0), "Copy Setup");
            press(dialog, IDOK);
        }});
        VORN_COPY_INFO info = c.before;
        EXPECT_EQ(vornGetUserCopyInfo(nullptr, c.allowMetafile, info), 1);
        EXPECT_TRUE(driver.finished());
        EXPECT_EQ(memcmp(&info, &c.after, sizeof info), 0);
    }
}

TEST(CopyDialog, ConvertsBetweenUnitsThroughTheScreensResolution) {
    HDC screen = ::GetDC(nullptr);
    const int dpi = ::GetDeviceCaps(screen, LOGPIXELSX);
    ::ReleaseDC(nullptr, screen);
    if (dpi != 96) GTEST_SKIP() << "the figures are for 96 dots per inch, not " << dpi;
    struct Step {
        int units;
        const char* width;
        const char* height;
    };
    // 100 pixels there and back: the product falls short of 100 and is truncated. What goes on is the six
    // digits that the edit shows.
    const Step steps[] = {{centimetres, "2.64583", "10.5833"},
                          {pixels, "99", "399"},
                          {inches, "1.03125", "4.15625"},
                          {centimetres, "2.61937", "10.5569"},
                          {inches, "1.03125", "4.15626"}};
    DialogDriver driver({[&](HWND dialog) {
        for (const Step& step : steps) {
            choose(dialog, 4007, step.units);
            EXPECT_EQ(textOf(dialog, 4006), step.width);
            EXPECT_EQ(textOf(dialog, 4008), step.height);
            EXPECT_EQ(hasStyle(dialog, 4006, ES_NUMBER), step.units == pixels);
        }
        choose(dialog, 4007, pixels);
        type(dialog, 4006, "55.9");
        choose(dialog, 4007, pixels);
        EXPECT_EQ(textOf(dialog, 4006), "55");
        press(dialog, IDCANCEL);
    }});
    VORN_COPY_INFO info = record(2, pixels, 100, 400, TRUE, FALSE);
    EXPECT_EQ(vornGetUserCopyInfo(nullptr, 1, info), 0);
    EXPECT_TRUE(driver.finished());
    EXPECT_EQ(info.fWidth, 100);
}

namespace {

void refuseThreeSizesAndTakeTheFourth() {
    int boxes = 0;
    const auto closeBox = [&](HWND box) {
        EXPECT_EQ(::GetDlgItem(box, 4006), nullptr) << "a message box is on top";
        ++boxes;
        press(box, ::GetDlgItem(box, IDOK) != nullptr ? IDOK : IDCANCEL);
    };
    const auto tryWidth = [](const char* width) {
        return [width](HWND dialog) {
            type(dialog, 4006, width);
            // Posted: the message box must not stand inside this step.
            ::PostMessageA(dialog, WM_COMMAND, IDOK, 0);
        };
    };
    DialogDriver driver({tryWidth("0.5"), closeBox, tryWidth("many"), closeBox, tryWidth("100001"), closeBox,
                         [](HWND dialog) {
                             press(dialog, 4009);
                             EXPECT_EQ(::IsWindowEnabled(::GetDlgItem(dialog, 4006)), TRUE)
                                 << "the check box's own validation failed, so nothing changes";
                             type(dialog, 4006, "20");
                             press(dialog, 4009);
                             press(dialog, 4009);
                             EXPECT_EQ(::IsWindowEnabled(::GetDlgItem(dialog, 4006)), FALSE);
                             press(dialog, 4012);
                             press(dialog, IDOK);
                         },
                         closeBox});
    CvornCopyInfo info;
    info.bFixedSize = TRUE;
    EXPECT_EQ(info.Setup(FALSE, nullptr), 1);
    EXPECT_EQ(boxes, 4);
    EXPECT_EQ(info.fWidth, 20);
    EXPECT_TRUE(info.IsBorder());
    EXPECT_TRUE(driver.finished());
}

} // namespace

TEST(CopyDialog, StaysOpenUntilTheSizeIsInRange) {
    refuseThreeSizesAndTakeTheFourth();
    const auto before = support::HandleCounts::now();
    refuseThreeSizesAndTakeTheFourth();
    EXPECT_EQ(support::HandleCounts::now(), before);
}
