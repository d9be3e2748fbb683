// SPDX-License-Identifier: MIT
#include "tests/framework/quiet_app.h"
#include "tests/support/handle_counts.h"

#include <functional>
#include <gtest/gtest.h>

using support::HandleCounts;

namespace {

/// The dialog 100 with every kind of exchange, driven by a script that runs in its message loop.
class ExchangeDialog : public CDialog {
public:
    explicit ExchangeDialog(CWnd* parent = nullptr, UINT id = 100) : CDialog(id, parent) {}

    std::function<void()> m_script, m_atInit;
    int m_int = 5, m_check = 2, m_radio = 1, m_combo = 2;
    double m_double = 0.1;
    CString m_text = "text", m_list = "B";
    int m_changes = 0;

    /// Sets the text of a control as if typed, and presses OK.
    void enter(int id, const char* text) {
        SetDlgItemText(id, text);
        press(IDOK);
    }
    void press(int id) { ::SendMessageA(::GetDlgItem(m_hWnd, id), BM_CLICK, 0, 0); }
    CString textOf(int id) const {
        CString text;
        GetDlgItemText(id, text);
        return text;
    }

protected:
    void DoDataExchange(CDataExchange* pDX) override {
        DDX_Text(pDX, 1001, m_int);
        DDV_MinMaxInt(pDX, m_int, -10, 10);
        DDX_Text(pDX, 1002, m_double);
        DDV_MinMaxDouble(pDX, m_double, 0, 100000);
        DDX_Text(pDX, 1003, m_text);
        DDV_MaxChars(pDX, m_text, 6);
        DDX_Check(pDX, 1004, m_check);
        DDX_Radio(pDX, 1005, m_radio);
        DDX_CBIndex(pDX, 1009, m_combo);
        DDX_LBString(pDX, 1010, m_list);
    }
    BOOL OnInitDialog() override {
        CDialog::OnInitDialog();
        PostMessage(WM_APP);
        if (m_atInit) m_atInit();
        return TRUE;
    }
    afx_msg LRESULT OnScript(WPARAM, LPARAM) {
        SetTimer(1, 5000); // a script that does not end the dialog must not hang the test
        if (m_script) m_script();
        return 0;
    }
    afx_msg void OnTimer(UINT_PTR) { EndDialog(-99); }
    afx_msg void OnChange() { ++m_changes; }

    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(ExchangeDialog, CDialog)
    ON_MESSAGE(WM_APP, &ExchangeDialog::OnScript)
    ON_WM_TIMER()
    ON_EN_CHANGE(1001, &ExchangeDialog::OnChange)
END_MESSAGE_MAP()

TEST(Dialog, FillsItsControlsAndTakesTheirValues) {
    QuietApp app;
    ExchangeDialog dialog;
    dialog.m_script = [&] {
        EXPECT_STREQ(dialog.textOf(1001), "5");
        EXPECT_STREQ(dialog.textOf(1002), "0.1") << "no more digits than the number has";
        EXPECT_STREQ(dialog.textOf(1003), "text");
        EXPECT_EQ(dialog.SendDlgItemMessage(1003, EM_GETLIMITTEXT), 6) << "set by the length check";
        EXPECT_EQ(dialog.IsDlgButtonChecked(1004), static_cast<UINT>(BST_INDETERMINATE));
        EXPECT_EQ(dialog.GetCheckedRadioButton(1005, 1008), 1006);
        EXPECT_STREQ(dialog.textOf(1009), "Inches") << "from the initialisation data, in its order";
        EXPECT_EQ(dialog.SendDlgItemMessage(1009, CB_GETCOUNT), 3);
        EXPECT_EQ(dialog.SendDlgItemMessage(1010, LB_GETCURSEL), 1);
        EXPECT_EQ(dialog.m_changes, 0) << "filling the controls is not the user's doing";
        dialog.SetDlgItemText(1001, " -7 ");
        EXPECT_EQ(dialog.m_changes, 1);
        dialog.SetDlgItemText(1002, "1.25e2");
        dialog.SetDlgItemText(1003, "");
        dialog.press(1004);
        dialog.press(1007);
        dialog.SendDlgItemMessage(1009, CB_SETCURSEL, 1);
        dialog.SendDlgItemMessage(1010, LB_SETCURSEL, static_cast<WPARAM>(-1));
        dialog.press(IDOK);
    };
    EXPECT_EQ(dialog.DoModal(), IDOK);
    EXPECT_EQ(dialog.m_int, -7);
    EXPECT_EQ(dialog.m_double, 125);
    EXPECT_STREQ(dialog.m_text, "");
    EXPECT_EQ(dialog.m_check, BST_UNCHECKED);
    EXPECT_EQ(dialog.m_radio, 2) << "counted over the group box between, up to the next group";
    EXPECT_EQ(dialog.m_combo, 1);
    EXPECT_STREQ(dialog.m_list, "");
    EXPECT_STREQ(app.m_shown, "");
}

TEST(Dialog, RefusesWrongInputAndStaysOpen) {
    const char* const integer = "Please enter an integer.";
    const char* const integerRange = "Please enter an integer between -10 and 10.";
    const char* const number = "Please enter a number.";
    const char* const numberRange = "Please enter a number between 0 and 100000.";
    const struct {
        int id;
        const char* text;
        const char* message;
    } cases[] = {{1001, "", integer},
                 {1001, "5x", integer},
                 {1001, "2147483648", integer},
                 {1001, "11", integerRange},
                 {1001, "-11", integerRange},
                 {1002, "1,5", number},
                 {1002, "nan", number},
                 {1002, "0x10", number},
                 {1002, "1e999", number},
                 {1002, "-0.001", numberRange},
                 {1002, "100000.01", numberRange},
                 {1003, "seven..", "Please enter no more than 6 characters."}};
    for (const auto& c : cases) {
        QuietApp app;
        ExchangeDialog dialog;
        dialog.m_script = [&] {
            dialog.enter(c.id, c.text);
            EXPECT_STREQ(app.m_shown, c.message) << c.text;
            EXPECT_TRUE(dialog.ContinueModal()) << c.text;
            EXPECT_EQ(::GetFocus(), ::GetDlgItem(dialog, c.id)) << c.text;
            EXPECT_EQ(dialog.SendDlgItemMessage(c.id, EM_GETSEL), MAKELONG(0, strlen(c.text)))
                << "to be typed over";
            dialog.press(IDCANCEL);
        };
        EXPECT_EQ(dialog.DoModal(), IDCANCEL);
    }
}

/// The dialog 100 with one exchange function on one control at a time.
class DataExchange : public testing::Test {
protected:
    class OneExchange : public CDialog {
    public:
        std::function<void(CDataExchange*)> m_exchange;
        void DoDataExchange(CDataExchange* pDX) override {
            if (m_exchange) m_exchange(pDX);
        }
    };

    DataExchange() { EXPECT_TRUE(m_dialog.Create(100)); }
    template <typename Exchange>
    BOOL exchange(BOOL save, Exchange call) {
        m_dialog.m_exchange = call;
        return m_dialog.UpdateData(save);
    }

    QuietApp m_app;
    OneExchange m_dialog;
};

TEST_F(DataExchange, NumbersOfEveryTypeGoThereAndBack) {
    const auto there = [&](auto value, const char* text) {
        const auto number = [&](CDataExchange* pDX) { DDX_Text(pDX, 1001, value); };
        EXPECT_TRUE(exchange(FALSE, number));
        CString shown;
        m_dialog.GetDlgItemText(1001, shown);
        EXPECT_STREQ(shown, text);
        const auto former = std::exchange(value, decltype(value){});
        EXPECT_TRUE(exchange(TRUE, number)) << text;
        EXPECT_EQ(value, former);
    };
    there(BYTE{255}, "255");
    there(UINT{4294967295u}, "4294967295");
    there(LONG_MIN, "-2147483648");
    there(2.6458f, "2.6458");
    there(1 / 4096.0, "0.000244140625");

    const auto refused = [&](auto value, const char* text, const char* message) {
        const auto former = value;
        m_app.m_shown.Empty();
        m_dialog.SetDlgItemText(1001, text);
        EXPECT_FALSE(exchange(TRUE, [&](CDataExchange* pDX) { DDX_Text(pDX, 1001, value); })) << text;
        EXPECT_STREQ(m_app.m_shown, message);
        EXPECT_EQ(value, former) << text;
    };
    refused(BYTE{1}, "256", "Please enter an integer between 0 and 255.");
    refused(UINT{1}, "-1", "Please enter a positive integer.");
    refused(1.0f, "1e39", "Please enter a number.");
}

TEST_F(DataExchange, FindsItemsAndControls) {
    CString inches("inches");
    EXPECT_TRUE(exchange(FALSE, [&](CDataExchange* pDX) { DDX_CBString(pDX, 1009, inches); }));
    EXPECT_TRUE(exchange(TRUE, [&](CDataExchange* pDX) { DDX_CBString(pDX, 1009, inches); }));
    EXPECT_STREQ(inches, "Inches") << "chosen without regard to case";
    CComboBox combo;
    EXPECT_TRUE(exchange(FALSE, [&](CDataExchange* pDX) { DDX_Control(pDX, 1009, combo); }));
    EXPECT_EQ(CWnd::FromHandle(::GetDlgItem(m_dialog, 1009)), &combo);
    EXPECT_STREQ(m_app.m_shown, "");
    int absent = 3;
    EXPECT_FALSE(exchange(TRUE, [&](CDataExchange* pDX) { DDX_Text(pDX, 4711, absent); }));
    EXPECT_EQ(absent, 3);
    EXPECT_STRNE(m_app.m_shown, "") << "the programmer's mistake is told";
}

TEST(Dialog, DisablesItsOwnerAndLeavesNothing) {
    QuietApp app;
    CWnd owner, child;
    ASSERT_TRUE(owner.CreateEx(0, nullptr, "", WS_POPUP, CRect(0, 0, 50, 50), nullptr, 0));
    ASSERT_TRUE(child.Create(nullptr, "", 0, CRect(0, 0, 5, 5), &owner, 1));
    const auto run = [&](CWnd* parent) {
        ExchangeDialog dialog(parent);
        dialog.m_script = [&] {
            EXPECT_FALSE(owner.IsWindowEnabled());
            EXPECT_EQ(::GetWindow(dialog, GW_OWNER), owner.m_hWnd);
            dialog.press(IDCANCEL);
        };
        EXPECT_EQ(dialog.DoModal(), IDCANCEL);
        EXPECT_TRUE(owner.IsWindowEnabled());
        EXPECT_EQ(dialog.m_hWnd, nullptr);
    };
    run(&child); // the system makes its fonts
    const HandleCounts before = HandleCounts::now();
    run(&child);
    app.m_pMainWnd = &owner;
    run(nullptr);
    // A DLL's dialog: its own application object has no main window, the program's has.
    AFX_MODULE_STATE dll(AfxGetInstanceHandle());
    {
        AFX_MANAGE_STATE(&dll);
        run(nullptr);
    }
    app.m_pMainWnd = nullptr;
    EXPECT_EQ(HandleCounts::now(), before);
}

/// Closes itself with 7 when it gets as far as OnInitDialog.
class ClosingDialog : public CDialog {
public:
    using CDialog::CDialog;
    BOOL OnInitDialog() override {
        EndDialog(7);
        return TRUE;
    }
};

void endInEveryWay() {
    EXPECT_EQ(CDialog(31999).DoModal(), -1) << "no such template";
    EXPECT_EQ(CDialog().DoModal(), -1) << "no template at all";
    EXPECT_EQ(ClosingDialog(102).DoModal(), 7);
    EXPECT_EQ(ClosingDialog(101).DoModal(), -1) << "its initialisation data ends too early";
    EXPECT_EQ(ClosingDialog(103).DoModal(), -1) << "its initialisation data has a text without end";

    ExchangeDialog early, destroyed, quitting;
    early.m_atInit = [&] { early.EndDialog(44); };
    EXPECT_EQ(early.DoModal(), 44);
    destroyed.m_script = [&] { ::DestroyWindow(destroyed); };
    EXPECT_EQ(destroyed.DoModal(), -1);
    quitting.m_script = [&] { ::PostQuitMessage(9); };
    EXPECT_EQ(quitting.DoModal(), -1);
    MSG message{};
    while (message.message != WM_QUIT && ::PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
    }
    EXPECT_EQ(message.message, static_cast<UINT>(WM_QUIT)) << "the outer loop is to end, too";
    EXPECT_EQ(message.wParam, 9u);
}

TEST(Dialog, EndsHoweverItIsEnded) {
    QuietApp app;
    endInEveryWay(); // the system makes its fonts
    const HandleCounts before = HandleCounts::now();
    endInEveryWay();
    EXPECT_EQ(HandleCounts::now(), before);
}

TEST(Dialog, RunsWithoutAnApplication) {
    ExchangeDialog dialog;
    dialog.m_script = [&] { dialog.press(IDOK); };
    EXPECT_EQ(dialog.DoModal(), IDOK);
}

TEST(Dialog, ModelessOneSendsCommandsToItsOwner) {
    class Owner : public CFrameWnd {
    public:
        UINT m_command = 0;
        BOOL OnCmdMsg(UINT id, int code, void* extra, AFX_CMDHANDLERINFO* info) override {
            if (code != CN_COMMAND) return CFrameWnd::OnCmdMsg(id, code, extra, info);
            m_command = id;
            return TRUE;
        }
    };
    QuietApp app;
    auto* owner = new Owner;
    ASSERT_TRUE(owner->Create(nullptr, ""));
    CDialog dialog;
    ASSERT_TRUE(dialog.Create(102, owner));
    EXPECT_FALSE(dialog.Create(102, owner)) << "it is open";
    EXPECT_TRUE(dialog.IsWindowVisible()) << "as its template says";
    dialog.SendMessage(WM_COMMAND, 0x8123, reinterpret_cast<LPARAM>(::GetDlgItem(dialog, 0x8123)));
    dialog.SendMessage(WM_COMMAND, 1000); // an id of the dialog's own
    EXPECT_EQ(owner->m_command, 0x8123u);
    MSG escape{::GetDlgItem(dialog, 0x8123), WM_KEYDOWN, VK_ESCAPE, 0, 0, {}};
    EXPECT_TRUE(dialog.PreTranslateMessage(&escape));
    EXPECT_FALSE(dialog.IsWindowVisible()) << "escape cancels";
    owner->DestroyWindow();
    EXPECT_EQ(dialog.m_hWnd, nullptr);
}

} // namespace
