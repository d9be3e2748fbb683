// SPDX-License-Identifier: MIT
// The explorer as its user has it: a process with arguments, an exit status, messages, windows and picture
// files.
#include "tests/support/canvas.h"
#include "tests/support/temp_folder.h"
#include "vorn/vorn.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <memory>

namespace {

/// A running explorer whose standard output and error come through a pipe.
class ExplorerProcess {
public:
    explicit ExplorerProcess(const std::string& arguments) {
        SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
        HANDLE write = nullptr;
        ::CreatePipe(&m_read, &write, &inherited, 0);
        ::SetHandleInformation(m_read, HANDLE_FLAG_INHERIT, 0);
        STARTUPINFOA start = {};
        start.cb = sizeof start;
        start.dwFlags = STARTF_USESTDHANDLES;
        start.hStdOutput = start.hStdError = write;
        std::string line = "explorer.exe " + arguments; // it stands beside this program
        EXPECT_TRUE(::CreateProcessA(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                                     &start, &m_process))
            << line;
        ::CloseHandle(write);
    }
    ~ExplorerProcess() {
        ::TerminateProcess(m_process.hProcess, 99);
        ::CloseHandle(m_process.hProcess);
        ::CloseHandle(m_process.hThread);
        ::CloseHandle(m_read);
    }
    ExplorerProcess(const ExplorerProcess&) = delete;
    ExplorerProcess& operator=(const ExplorerProcess&) = delete;

    /// The exit status; 98 when it does not end in time.
    int wait() {
        DWORD status = 98;
        if (::WaitForSingleObject(m_process.hProcess, 60'000) == WAIT_OBJECT_0)
            ::GetExitCodeProcess(m_process.hProcess, &status);
        return static_cast<int>(status);
    }
    /// All that was printed; only after the end.
    std::string output() {
        std::string text;
        char part[512];
        DWORD count = 0;
        while (::ReadFile(m_read, part, sizeof part, &count, nullptr) && count > 0)
            text.append(part, count);
        return text;
    }

private:
    HANDLE m_read = nullptr;
    PROCESS_INFORMATION m_process = {};
};

/// A picture file, read back; null when that fails.
std::unique_ptr<support::Canvas> pictureIn(const std::string& file) {
    CvornImageCodec image;
    if (!image.Load(file.c_str())) return nullptr;
    auto canvas = std::make_unique<support::Canvas>(image.GetWidth(), image.GetHeight());
    image.Draw(canvas->dc(), 0, 0, canvas->width(), canvas->height());
    return canvas;
}

int brightness(COLORREF colour) {
    return GetRValue(colour) * 3 + GetGValue(colour) * 6 + GetBValue(colour);
}

class ExplorerTest : public testing::Test {
protected:
    std::string quoted(const std::string& name) const { return "\"" + m_folder.pathOf(name) + "\""; }

    support::TempFolder m_folder;
};

/// Four level fields with a hole in the middle.
std::string fourFields() {
    std::string text;
    for (int row = 0; row < 21; ++row) {
        for (int column = 0; column < 21; ++column) {
            bool middle = std::abs(row - 10) < 3 && std::abs(column - 10) < 3;
            text += middle ? "NaN" : std::to_string((row > 10 ? 2 : 0) + (column > 10 ? 1 : 0));
            text += column < 20 ? ";" : "\r\n";
        }
    }
    return text;
}

TEST_F(ExplorerTest, ExportsThePictureOfTheFile) {
    m_folder.write("four fields.csv", fourFields());
    struct Case {
        const char* name;
        const char* options;
        int width, height;
    };
    for (auto [name, options, width, height] : {Case{"a picture.png", "", 1200, 900},
                                                {"b.jpg", "--size 640x480", 640, 480},
                                                {"c.bmp", "--size 301x500 --ramp grey", 301, 500},
                                                {"d.PNG", "--size 1x1", 1, 1}}) {
        SCOPED_TRACE(name);
        ExplorerProcess explorer(
            quoted("four fields.csv") +
            " --view top --hide grids --hide labels --hide legend --hide toolbar --export " + quoted(name) +
            " " + options);
        EXPECT_EQ(explorer.wait(), 0) << explorer.output();
        const auto picture = pictureIn(m_folder.pathOf(name));
        ASSERT_TRUE(picture && picture->width() == width && picture->height() == height);
        if (width < 100) continue;
        // The surface is square, a little under the shorter side; rows and columns lie as in the file.
        const auto brightnessAt = [&](int x, int y) { return brightness(picture->at(x, y)); };
        const int reach = std::min(width, height) / 5;
        const int left = width / 2 - reach, right = width - left;
        const int top = height / 2 - reach, bottom = height - top;
        const int fields[] = {brightnessAt(left, top), brightnessAt(right, top), brightnessAt(left, bottom),
                              brightnessAt(right, bottom)};
        EXPECT_TRUE(std::is_sorted(fields, fields + 4)) << testing::PrintToString(fields);
        EXPECT_LT(fields[0] + 300, fields[3]);
        for (int open :
             {brightnessAt(width / 2, height / 2), brightnessAt(3, 3), brightnessAt(width - 4, height - 4)})
            EXPECT_NEAR(open, brightness(RGB(250, 250, 248)), 30);
    }
}

TEST_F(ExplorerTest, SaysWhatIsWrongAndLeavesNothingBehind) {
    m_folder.write("good.csv", "1,2\n3,4\n");
    m_folder.write("text.csv", "1,2,3\n4,five,6\n");
    struct Case {
        std::string arguments;
        int status;
        const char* message;
    };
    const std::string picture = " --export " + quoted("picture.png");
    const Case cases[] = {
        {quoted("missing.csv") + picture, 1, "missing.csv: cannot be opened"},
        {quoted("text.csv") + picture, 1, "text.csv, line 2, column 2: \"five\""},
        {quoted("text.csv"), 1, "text.csv, line 2, column 2: \"five\""},
        {quoted("good.csv") + " --export " + quoted("no folder\\picture.png"), 1,
         "picture.png: cannot be written"},
        {quoted("good.csv") + " --export " + quoted("picture.gif"), 2, ".png, .jpg or .bmp"},
        {quoted("good.csv") + picture + " --size 99999x99999", 2, "--size"},
        {quoted("good.csv") + picture + " --ramp rainbow", 2, "land, dusk"},
        {quoted("good.csv") + picture + " --plane xy=" + quoted("good.csv"), 1, "good.csv: cannot be loaded"},
        {quoted("good.csv") + picture + " --load " + quoted("good.csv"), 1, "good.csv: is not a chart"},
        {quoted("good.csv") + " --export", 2, "needs a value"},
        {quoted("good.csv") + " --print \"No such printer\"", 1, "there is no printer No such printer"},
        {"", 2, "which file"},
        {"--help", 0, "--export PICTURE"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.arguments);
        ExplorerProcess explorer(c.arguments);
        EXPECT_EQ(explorer.wait(), c.status);
        EXPECT_NE(explorer.output().find(c.message), std::string::npos);
        EXPECT_TRUE(m_folder.read("picture.png").empty());
    }
}

TEST_F(ExplorerTest, ShowsAWindowUntilItIsClosed) {
    m_folder.write("some heights.tsv", "1\t2\n3\t4\n");
    ExplorerProcess explorer(quoted("some heights.tsv"));
    HWND window = nullptr;
    for (int i = 0; i < 600 && !::IsWindowVisible(window); ++i) {
        ::Sleep(50);
        window = ::FindWindowA(nullptr, "some heights.tsv - explorer");
    }
    ASSERT_TRUE(::IsWindowVisible(window));
    for (int key : {VK_UP, int{'T'}, int{'F'}, int{'S'}, int{'D'}})
        ::SendMessageA(window, WM_KEYDOWN, key, 1);
    ::PostMessageA(window, WM_CLOSE, 0, 0);
    EXPECT_EQ(explorer.wait(), 0);
    EXPECT_EQ(explorer.output(), "");
}

/// Draws the picture on the clipboard, whatever its kind, over the whole canvas.
void paste(const support::Canvas& canvas) {
    const bool isMetafile = ::IsClipboardFormatAvailable(CF_ENHMETAFILE);
    ASSERT_TRUE(::OpenClipboard(nullptr));
    const HANDLE data = ::GetClipboardData(isMetafile ? CF_ENHMETAFILE : CF_BITMAP);
    const RECT whole = {0, 0, canvas.width(), canvas.height()};
    if (isMetafile)
        ::PlayEnhMetaFile(canvas.dc(), static_cast<HENHMETAFILE>(data), &whole);
    else
        ::DrawStateA(canvas.dc(), nullptr, nullptr, reinterpret_cast<LPARAM>(data), 0, 0, 0, 0, 0,
                     DST_BITMAP);
    ::CloseClipboard();
}

TEST_F(ExplorerTest, CopiesWhatItExports) {
    m_folder.write("four fields.csv", fourFields());
    const std::string chart = quoted("four fields.csv") + " --view top ";
    constexpr int width = 301, height = 200;
    ExplorerProcess exporting(chart + "--size 301x200 --export " + quoted("picture.png"));
    ASSERT_EQ(exporting.wait(), 0) << exporting.output();
    const auto exported = pictureIn(m_folder.pathOf("picture.png"));
    ASSERT_NE(exported, nullptr);

    for (const char* option : {"--copy", "--metafile"}) {
        SCOPED_TRACE(option);
        ExplorerProcess explorer(chart + option + " --size 301x200");
        EXPECT_EQ(explorer.wait(), 0) << explorer.output();
        const support::Canvas pasted(width, height);
        paste(pasted);
        int different = 0;
        for (int x = 0; x < width; ++x)
            for (int y = 0; y < height; ++y)
                different += pasted.at(x, y) != exported->at(x, y);
        EXPECT_EQ(different, 0);
    }
    EXPECT_TRUE(::IsClipboardFormatAvailable(CF_ENHMETAFILE));
    CWnd holder;
    ASSERT_TRUE(holder.CreateEx(0, ::AfxRegisterWndClass(0), "", WS_POPUP, CRect(0, 0, 1, 1), nullptr, 0));
    ASSERT_TRUE(::OpenClipboard(holder));
    for (const char* options : {"--copy", "--metafile"}) {
        ExplorerProcess refused(chart + options);
        EXPECT_EQ(refused.wait(), 1);
        EXPECT_NE(refused.output().find("the clipboard does not take"), std::string::npos);
    }
    ::CloseClipboard();
}

} // namespace
