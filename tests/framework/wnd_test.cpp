// SPDX-License-Identifier: MIT
#include "tests/framework/quiet_app.h"
#include "tests/support/handle_counts.h"

#include <gtest/gtest.h>
#include <utility>

using support::HandleCounts;

namespace {

const UINT registeredMessage = ::RegisterWindowMessageA("vorn framework test");
const UINT otherRegistered = ::RegisterWindowMessageA("vorn framework test, unheard");

/// A window whose handlers write down what they were given.
class Recorder : public CWnd {
public:
    CString m_log;
    int m_ended = 0;
    int m_createResult = 0;
    bool m_refuseCreation = false;
    CException* m_toThrow = nullptr;

    BOOL make(DWORD style = WS_POPUP) {
        return CreateEx(0, nullptr, "recorder", style, 0, 0, 100, 80, nullptr, nullptr);
    }
    BOOL PreCreateWindow(CREATESTRUCT& cs) override { return !m_refuseCreation && CWnd::PreCreateWindow(cs); }

protected:
    template <typename... Args>
    void note(const char* format, Args... args) {
        m_log.AppendFormat(format, args...);
        if (CException* exception = std::exchange(m_toThrow, nullptr)) throw exception;
    }
    void PostNcDestroy() override { ++m_ended; }

    afx_msg int OnCreate(LPCREATESTRUCT cs) {
        note("create %d %d", cs->cx, cs->cy);
        return m_createResult;
    }
    afx_msg void OnSize(UINT type, int cx, int cy) { note("size %u %d %d", type, cx, cy); }
    afx_msg void OnMove(int x, int y) { note("move %d %d", x, y); }
    afx_msg void OnPaint() { note("paint"); }
    afx_msg void OnTimer(UINT_PTR id) { note("timer %llu", static_cast<unsigned long long>(id)); }
    afx_msg void OnLButtonDown(UINT flags, CPoint p) { note("ldown %u %d %d", flags, p.x, p.y); }
    afx_msg BOOL OnMouseWheel(UINT flags, short delta, CPoint p) {
        note("wheel %u %d %d %d", flags, delta, p.x, p.y);
        return 5;
    }
    afx_msg BOOL OnSetCursor(CWnd* window, UINT hit, UINT message) {
        note("cursor %d %u %u", window == this, hit, message);
        return TRUE;
    }
    afx_msg HBRUSH OnCtlColor(CDC*, CWnd* window, UINT kind) {
        note("colour %d %u", window == this, kind);
        return static_cast<HBRUSH>(::GetStockObject(GRAY_BRUSH));
    }
    afx_msg BOOL OnQueryNewPalette() {
        note("palette");
        return 3;
    }
    afx_msg LRESULT OnOwn(WPARAM wParam, LPARAM lParam) {
        note("own %d", static_cast<int>(wParam));
        return lParam * 2;
    }

    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(Recorder, CWnd)
    ON_WM_CREATE()
    ON_WM_SIZE()
    ON_WM_MOVE()
    ON_WM_PAINT()
    ON_WM_TIMER()
    ON_WM_LBUTTONDOWN()
    ON_WM_MOUSEWHEEL()
    ON_WM_SETCURSOR()
    ON_WM_CTLCOLOR()
    ON_WM_QUERYNEWPALETTE()
    ON_MESSAGE(WM_APP + 5, &Recorder::OnOwn)
    ON_REGISTERED_MESSAGE(registeredMessage, &Recorder::OnOwn)
END_MESSAGE_MAP()

/// Replaces one handler of its base and leaves the others.
class DerivedRecorder : public Recorder {
protected:
    afx_msg void OnSize(UINT type, int cx, int cy) {
        note("derived ");
        Recorder::OnSize(type, cx, cy);
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(DerivedRecorder, Recorder)
    ON_WM_SIZE()
END_MESSAGE_MAP()

TEST(Wnd, HandlersGetTheirMessagesCracked) {
    Recorder window;
    ASSERT_TRUE(window.make());
    EXPECT_GE(window.m_log.Find("create 100 80size 0 100 80"), 0) << window.m_log;
    CClientDC dc(&window);
    const auto self = reinterpret_cast<LPARAM>(window.m_hWnd);
    const auto grey = reinterpret_cast<LRESULT>(::GetStockObject(GRAY_BRUSH));
    const struct {
        UINT message;
        WPARAM wParam;
        LPARAM lParam;
        LRESULT result;
        const char* log;
    } cases[] = {
        {WM_SIZE, SIZE_MAXIMIZED, MAKELPARAM(40000, 50000), 0, "size 2 40000 50000"},
        {WM_MOVE, 0, MAKELPARAM(-3, -4), 0, "move -3 -4"},
        {WM_TIMER, 0x123456789, 0, 0, "timer 4886718345"},
        {WM_LBUTTONDOWN, MK_LBUTTON | MK_SHIFT, MAKELPARAM(-5, 300), 0, "ldown 5 -5 300"},
        {WM_MOUSEWHEEL, MAKEWPARAM(MK_CONTROL, -120), MAKELPARAM(-1, 9), 5, "wheel 8 -120 -1 9"},
        {WM_SETCURSOR, static_cast<WPARAM>(self), MAKELPARAM(HTCLIENT, WM_MOUSEMOVE), 1, "cursor 1 1 512"},
        {WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(dc.m_hDC), self, grey, "colour 1 6"},
        {WM_QUERYNEWPALETTE, 0, 0, 3, "palette"},
        {WM_APP + 5, 4, 21, 42, "own 4"},
        {registeredMessage, 6, 4, 8, "own 6"},
        {otherRegistered, 6, 4, 0, ""},
        {WM_GETTEXTLENGTH, 0, 0, 8, ""}, // not in the map: default processing answers
    };
    for (const auto& c : cases) {
        window.m_log.Empty();
        EXPECT_EQ(::SendMessageA(window, c.message, c.wParam, c.lParam), c.result) << c.log;
        EXPECT_STREQ(window.m_log, c.log);
    }
}

TEST(Wnd, TheMostDerivedHandlerComesFirstAndTheRestIsInherited) {
    DerivedRecorder window;
    ASSERT_TRUE(window.make());
    window.m_log.Empty();
    window.SendMessage(WM_SIZE, 0, MAKELPARAM(1, 2));
    window.SendMessage(WM_QUERYNEWPALETTE);
    EXPECT_STREQ(window.m_log, "derived size 0 1 2palette");
}

/// A window that was not made through an object.
HWND plainWindow(const char* className) {
    return ::CreateWindowExA(0, className, "", WS_POPUP, 0, 0, 90, 20, nullptr, nullptr, nullptr, nullptr);
}

TEST(Wnd, DefaultHandsOnTheMessageAtWorkAndNotTheLastOne) {
    class Nesting : public CWnd {
        LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
            if (message != WM_SETTEXT) return CWnd::WindowProc(message, wParam, lParam);
            SendMessage(WM_SETICON);
            return Default();
        }
    } window;
    ASSERT_TRUE(window.CreateEx(0, nullptr, "", WS_POPUP, CRect(0, 0, 9, 9), nullptr, 0));
    window.SetWindowText("text");
    CString text;
    window.GetWindowText(text);
    EXPECT_STREQ(text, "text");
}

TEST(Wnd, ObjectAndWindowEndTogether) {
    {
        Recorder first;
        first.make(); // the system makes what it keeps
    }
    const HandleCounts before = HandleCounts::now();
    HWND handle = nullptr;
    {
        Recorder window;
        ASSERT_TRUE(window.make());
        handle = window;
        EXPECT_EQ(CWnd::FromHandlePermanent(handle), &window);
        EXPECT_FALSE(window.make()) << "the object has a window";
    }
    EXPECT_FALSE(::IsWindow(handle));

    Recorder ended;
    ASSERT_TRUE(ended.make());
    handle = ended;
    ::DestroyWindow(handle);
    EXPECT_EQ(ended.m_hWnd, nullptr);
    EXPECT_EQ(ended.m_ended, 1);
    EXPECT_EQ(CWnd::FromHandlePermanent(handle), nullptr);
    EXPECT_TRUE(ended.make()) << "the object can have a new one";
    EXPECT_TRUE(ended.DestroyWindow());
    EXPECT_FALSE(ended.DestroyWindow());
    EXPECT_EQ(HandleCounts::now(), before);
}

TEST(Wnd, FailedCreationIsToldOnce) {
    const HandleCounts before = HandleCounts::now();
    Recorder refused, failed, noClass;
    refused.m_refuseCreation = true;
    EXPECT_FALSE(refused.make());
    failed.m_createResult = -1;
    EXPECT_FALSE(failed.make());
    EXPECT_FALSE(noClass.CreateEx(0, "no such class", "", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr));
    for (Recorder* window : {&refused, &failed, &noClass}) {
        EXPECT_EQ(window->m_ended, 1);
        EXPECT_EQ(window->m_hWnd, nullptr);
    }
    // The next window of the thread must not go to an object that got none.
    HWND plain = plainWindow("STATIC");
    EXPECT_EQ(CWnd::FromHandlePermanent(plain), nullptr);
    ::DestroyWindow(plain);
    EXPECT_EQ(HandleCounts::now(), before);
}

TEST(Wnd, TemporaryObjectsLastUntilIdle) {
    HWND plain = plainWindow("STATIC");
    CWnd* temporary = CWnd::FromHandle(plain);
    EXPECT_EQ(CWnd::FromHandle(plain), temporary);
    EXPECT_EQ(CWnd::FromHandlePermanent(plain), nullptr);
    EXPECT_EQ(temporary->m_hWnd, plain);
    QuietApp().OnIdle(0); // the temporary object is gone; its window must not be
    EXPECT_TRUE(::IsWindow(plain));

    CWnd permanent, second;
    EXPECT_TRUE(permanent.Attach(plain));
    EXPECT_EQ(CWnd::FromHandle(plain), &permanent);
    EXPECT_FALSE(second.Attach(plain)) << "a handle has one owner";
    EXPECT_EQ(permanent.Detach(), plain);
    EXPECT_NE(CWnd::FromHandle(plain), &permanent);
    ::DestroyWindow(plain);
}

TEST(Wnd, SubclassedControlKeepsItsOwnBehaviour) {
    class Shouting : public CEdit {
    protected:
        LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
            if (message == WM_CHAR) wParam = static_cast<WPARAM>(::toupper(static_cast<int>(wParam)));
            return CEdit::WindowProc(message, wParam, lParam);
        }
    } edit;
    HWND handle = plainWindow("EDIT");
    ASSERT_TRUE(edit.SubclassWindow(handle));
    ::SendMessageA(handle, WM_CHAR, 'a', 1);
    EXPECT_EQ(edit.UnsubclassWindow(), handle);
    ::SendMessageA(handle, WM_CHAR, 'b', 1);
    CString text;
    CWnd::FromHandle(handle)->GetWindowText(text);
    EXPECT_STREQ(text, "Ab");
    ::DestroyWindow(handle);
}

TEST(Wnd, ExceptionsStopAtTheWindowProcedure) {
    QuietApp app;
    Recorder failing;
    failing.m_toThrow = new CMemoryException;
    EXPECT_FALSE(failing.make()) << "a handler of WM_CREATE that throws fails the creation";

    Recorder window;
    ASSERT_TRUE(window.make());
    window.ShowWindow(SW_SHOWNOACTIVATE);
    window.m_toThrow = new CUserException;
    window.SendMessage(WM_TIMER);
    EXPECT_STREQ(app.m_shown, "") << "the user has been told already";
    window.m_toThrow = new CMemoryException;
    window.SendMessage(WM_TIMER);
    EXPECT_STRNE(app.m_shown, "");
    window.Invalidate();
    window.m_toThrow = new CMemoryException;
    window.UpdateWindow();
    EXPECT_FALSE(window.GetUpdateRect(nullptr)) << "a failing paint must not be repeated for ever";
}

TEST(Wnd, QueuedMessagesAreOfferedFromTheWindowUpwards) {
    class Listener : public CWnd {
    public:
        bool m_asked = false;
        BOOL m_take = FALSE;
        BOOL PreTranslateMessage(MSG*) override {
            m_asked = true;
            return m_take;
        }
    } top, middle, inner;
    const CRect place(0, 0, 50, 50);
    ASSERT_TRUE(top.CreateEx(0, nullptr, "", WS_POPUP, place, nullptr, 0));
    ASSERT_TRUE(middle.Create(nullptr, "", 0, place, &top, 1));
    ASSERT_TRUE(inner.Create(nullptr, "", 0, place, &middle, 2));
    MSG message{inner, WM_KEYDOWN, 0, 0, 0, {}};
    EXPECT_FALSE(CWnd::WalkPreTranslateTree(nullptr, &message));
    EXPECT_TRUE(inner.m_asked && middle.m_asked && top.m_asked);
    top.m_asked = false;
    middle.m_take = TRUE;
    EXPECT_TRUE(CWnd::WalkPreTranslateTree(nullptr, &message));
    EXPECT_FALSE(top.m_asked);
}

TEST(Wnd, RegisteredClassesAreSharedByTheirParts) {
    HCURSOR cross = ::LoadCursorA(nullptr, IDC_CROSS);
    LPCTSTR name = AfxRegisterWndClass(CS_OWNDC, cross);
    EXPECT_STREQ(AfxRegisterWndClass(CS_OWNDC, cross), name);
    EXPECT_STRNE(AfxRegisterWndClass(CS_OWNDC), name);
    EXPECT_STRNE(AfxRegisterWndClass(0, cross), name);
}

} // namespace
