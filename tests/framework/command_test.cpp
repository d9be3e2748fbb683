// SPDX-License-Identifier: MIT
#include "tests/support/handle_counts.h"

#include <afxwin.h>
#include <gtest/gtest.h>

namespace {

constexpr UINT plainCommand = 0x8001, rangeFirst = 0x8010, rangeLast = 0x8012, offCommand = 0x8030,
               unknownCommand = 0x8040, appCommand = 0x8050;
constexpr UINT notifyCode = static_cast<UINT>(-530);

/// A frame that writes down which of its command handlers ran.
class CommandFrame : public CFrameWnd {
public:
    CString m_log;

protected:
    afx_msg void OnPlain() { m_log += "plain;"; }
    afx_msg void OnRange(UINT id) { m_log.AppendFormat("range %u;", id); }
    afx_msg void OnControl() { m_log += "control;"; }
    afx_msg void OnNotice(NMHDR* header, LRESULT* result) {
        m_log.AppendFormat("notice %d;", static_cast<int>(header->code));
        *result = 77;
    }
    afx_msg void OnOff() { m_log += "must not run;"; }
    afx_msg void OnUpdateOff(CCmdUI* ui) {
        ui->Enable(FALSE);
        ui->SetText("Off now");
    }
    afx_msg void OnUpdatePlain(CCmdUI* ui) { ui->SetCheck(1); }

    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(CommandFrame, CFrameWnd)
    ON_COMMAND(plainCommand, &CommandFrame::OnPlain)
    ON_COMMAND_RANGE(rangeFirst, rangeLast, &CommandFrame::OnRange)
    ON_COMMAND(offCommand, &CommandFrame::OnOff)
    ON_UPDATE_COMMAND_UI(offCommand, &CommandFrame::OnUpdateOff)
    ON_UPDATE_COMMAND_UI(plainCommand, &CommandFrame::OnUpdatePlain)
    ON_CBN_SELCHANGE(9, &CommandFrame::OnControl)
    ON_NOTIFY(notifyCode, 4, &CommandFrame::OnNotice)
END_MESSAGE_MAP()

class CommandApp : public CWinApp {
public:
    int m_commands = 0;

protected:
    afx_msg void OnCommand() { ++m_commands; }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(CommandApp, CWinApp)
    ON_COMMAND(appCommand, &CommandApp::OnCommand)
END_MESSAGE_MAP()

class CommandTest : public testing::Test {
protected:
    CommandTest() : m_frame(new CommandFrame) { m_frame->Create(nullptr, "commands", WS_OVERLAPPEDWINDOW); }
    ~CommandTest() override { m_frame->DestroyWindow(); }

    CommandApp m_app;
    CommandFrame* m_frame; // deletes itself
};

TEST_F(CommandTest, CommandsAndNotificationsFindTheirHandlers) {
    NMHDR header{*m_frame, 4, notifyCode}, unheard{*m_frame, 8, notifyCode};
    const auto child = reinterpret_cast<LPARAM>(m_frame->m_hWnd);
    const struct {
        UINT message;
        WPARAM wParam;
        LPARAM lParam;
        LRESULT result;
        const char* log;
        int appCommands;
    } cases[] = {
        {WM_COMMAND, plainCommand, 0, 1, "plain;", 0},
        {WM_COMMAND, MAKEWPARAM(plainCommand, 1), 0, 1, "plain;", 0}, // from an accelerator
        {WM_COMMAND, rangeFirst - 1, 0, 0, "", 0},
        {WM_COMMAND, rangeLast, 0, 1, "range 32786;", 0},
        {WM_COMMAND, offCommand, 0, 1, "", 0}, // disabled, so swallowed
        {WM_COMMAND, appCommand, 0, 1, "", 1},
        {WM_COMMAND, unknownCommand, 0, 0, "", 0},
        {WM_COMMAND, MAKEWPARAM(9, CBN_SELCHANGE), child, 1, "control;", 0},
        {WM_COMMAND, MAKEWPARAM(9, CBN_DROPDOWN), child, 0, "", 0},
        {WM_NOTIFY, 4, reinterpret_cast<LPARAM>(&header), 77, "notice -530;", 0},
        {WM_NOTIFY, 8, reinterpret_cast<LPARAM>(&unheard), 0, "", 0},
    };
    for (const auto& c : cases) {
        m_frame->m_log.Empty();
        m_app.m_commands = 0;
        EXPECT_EQ(m_frame->SendMessage(c.message, c.wParam, c.lParam), c.result) << c.wParam;
        EXPECT_STREQ(m_frame->m_log, c.log);
        EXPECT_EQ(m_app.m_commands, c.appCommands) << c.wParam;
    }
}

TEST_F(CommandTest, MenuItemsShowTheirCommandsState) {
    CMenu menu, deeper;
    ASSERT_TRUE(menu.CreatePopupMenu());
    ASSERT_TRUE(deeper.CreatePopupMenu());
    const UINT ids[] = {plainCommand, rangeLast, offCommand, unknownCommand, appCommand};
    for (UINT id : ids)
        menu.AppendMenu(MF_STRING, id, "item");
    menu.AppendMenu(MF_SEPARATOR);
    deeper.AppendMenu(MF_STRING, offCommand, "below");
    menu.AppendMenu(MF_POPUP, reinterpret_cast<UINT_PTR>(deeper.Detach()), "popup");
    m_frame->SendMessage(WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(menu.m_hMenu), 0);

    // The unknown command has no handler, and the last one's is the application's.
    constexpr UINT grey = MF_GRAYED | MF_DISABLED;
    const UINT states[] = {MF_CHECKED, 0, grey, grey, 0};
    for (UINT i = 0; i < std::size(states); ++i)
        EXPECT_EQ(menu.GetMenuState(i, MF_BYPOSITION), states[i]) << i;
    CString text;
    menu.GetMenuString(2, text, MF_BYPOSITION);
    EXPECT_STREQ(text, "Off now");
    CMenu* below = menu.GetSubMenu(6);
    ASSERT_NE(below, nullptr);
    below->GetMenuString(offCommand, text, MF_BYCOMMAND);
    EXPECT_STREQ(text, "below") << "a popup's item is updated when the popup opens";
}

TEST(Menu, HandlesComeBack) {
    const auto before = support::HandleCounts::now();
    {
        CMenu menu, popup;
        ASSERT_TRUE(menu.CreateMenu());
        EXPECT_FALSE(menu.CreateMenu()) << "it has one";
        ASSERT_TRUE(popup.CreatePopupMenu());
        menu.AppendMenu(MF_POPUP, reinterpret_cast<UINT_PTR>(popup.m_hMenu), "owned by the menu now");
        EXPECT_EQ(menu.GetSubMenu(0), &popup);
        popup.Detach();
        EXPECT_FALSE(popup.LoadMenu(31999)) << "no such resource";
    }
    EXPECT_EQ(support::HandleCounts::now(), before);
}

/// A bar that takes a strip at the top of its parent.
class TopBar : public CWnd {
public:
    bool m_mayMove = false;

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message != WM_SIZEPARENT) return CWnd::WindowProc(message, wParam, lParam);
        auto* layout = reinterpret_cast<AFX_SIZEPARENTPARAMS*>(lParam);
        const CRect strip(layout->rect.left, layout->rect.top, layout->rect.right, layout->rect.top + 30);
        m_mayMove = layout->hDWP != nullptr;
        if (m_mayMove)
            layout->hDWP = ::DeferWindowPos(layout->hDWP, m_hWnd, nullptr, strip.left, strip.top,
                                            strip.Width(), strip.Height(), SWP_NOZORDER | SWP_NOACTIVATE);
        layout->rect.top = strip.bottom;
        return 0;
    }
};

CRect placeIn(const CWnd& parent, const CWnd& child) {
    CRect place;
    child.GetWindowRect(&place);
    parent.ScreenToClient(&place);
    return place;
}

TEST(Layout, TheBarTakesItsStripAndThePaneTheRest) {
    CWnd parent, pane;
    TopBar bar;
    const CRect start(0, 0, 9, 9), area(0, 0, 200, 150);
    ASSERT_TRUE(parent.CreateEx(0, nullptr, "", WS_POPUP, area, nullptr, 0));
    ASSERT_TRUE(bar.Create(nullptr, "", 0, start, &parent, AFX_IDW_TOOLBAR));
    ASSERT_TRUE(pane.Create(nullptr, "", WS_BORDER, start, &parent, AFX_IDW_PANE_FIRST));

    CRect rest;
    parent.RepositionBars(AFX_IDW_TOOLBAR, AFX_IDW_TOOLBAR, AFX_IDW_PANE_FIRST, CWnd::reposQuery, &rest,
                          &area);
    EXPECT_EQ(rest, CRect(0, 30, 200, 150));
    EXPECT_FALSE(bar.m_mayMove) << "a query moves nothing";
    parent.RepositionBars(0, 0xFFFF, AFX_IDW_PANE_FIRST, CWnd::reposDefault);
    EXPECT_EQ(placeIn(parent, bar), CRect(0, 0, 200, 30));
    EXPECT_EQ(placeIn(parent, pane), CRect(-1, 29, 201, 151)) << "the pane's border lies outside of the rest";
}

TEST(Layout, DialogsAreCentredOverTheirOwnerOnTheScreen) {
    CWnd owner, popup;
    ASSERT_TRUE(owner.CreateEx(0, nullptr, "", WS_POPUP, CRect(100, 100, 400, 300), nullptr, 0));
    ASSERT_TRUE(popup.CreateEx(0, nullptr, "", WS_POPUP, CRect(0, 0, 80, 60), &owner, 0));
    const auto centre = [&] {
        CRect place;
        popup.CenterWindow();
        popup.GetWindowRect(&place);
        return place.CenterPoint();
    };
    CRect screen;
    ::SystemParametersInfoA(SPI_GETWORKAREA, 0, &screen, 0);
    EXPECT_EQ(centre(), screen.CenterPoint()) << "a hidden owner does not count";
    owner.ShowWindow(SW_SHOWNOACTIVATE);
    EXPECT_EQ(centre(), CPoint(250, 200));
    owner.MoveWindow(-290, 100, 300, 200);
    EXPECT_EQ(centre(), CPoint(40, 200)) << "never off the screen";
}

} // namespace
