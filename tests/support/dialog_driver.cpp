// SPDX-License-Identifier: MIT
#include "tests/support/dialog_driver.h"

#include <gtest/gtest.h>

namespace support {

namespace {

constexpr UINT interval = 30;       // milliseconds between steps
constexpr int patience = 3000 / 30; // ticks that a dialog may stand after the last step

BOOL CALLBACK findDialog(HWND window, LPARAM found) {
    char name[16] = {};
    ::GetClassNameA(window, name, sizeof name);
    if (std::string(name) != "#32770" || !::IsWindowVisible(window) || !::IsWindowEnabled(window))
        return TRUE;
    *reinterpret_cast<HWND*>(found) = window;
    return FALSE;
}

} // namespace

DialogDriver* DialogDriver::s_current = nullptr;

DialogDriver::DialogDriver(std::vector<Step> steps)
    : m_steps(std::move(steps)), m_timer(::SetTimer(nullptr, 0, interval, &DialogDriver::onTimer)),
      m_outer(s_current) {
    s_current = this;
}

DialogDriver::~DialogDriver() {
    ::KillTimer(nullptr, m_timer);
    s_current = m_outer;
}

void CALLBACK DialogDriver::onTimer(HWND, UINT, UINT_PTR, DWORD) {
    if (s_current != nullptr) s_current->tick();
}

void DialogDriver::tick() {
    HWND dialog = nullptr;
    ::EnumThreadWindows(::GetCurrentThreadId(), &findDialog, reinterpret_cast<LPARAM>(&dialog));
    if (dialog == nullptr) return;
    if (m_next < m_steps.size()) {
        // A step may open a further dialog, whose loop comes back here: it is the next step's.
        m_steps[m_next++](dialog);
        return;
    }
    if (++m_idleTicks < patience) return;
    m_cancelled = true;
    ADD_FAILURE() << "a dialog stayed open: " << textOf(dialog, 0);
    ::PostMessageA(dialog, WM_COMMAND, IDCANCEL, 0);
}

void press(HWND dialog, int id) {
    ::SendMessageA(::GetDlgItem(dialog, id), BM_CLICK, 0, 0);
}

std::string textOf(HWND dialog, int id) {
    char text[256] = {};
    ::GetWindowTextA(id == 0 ? dialog : ::GetDlgItem(dialog, id), text, sizeof text);
    return text;
}

void choose(HWND dialog, int id, int index) {
    const HWND combo = ::GetDlgItem(dialog, id);
    ::SendMessageA(combo, CB_SETCURSEL, static_cast<WPARAM>(index), 0);
    ::SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(id, CBN_SELCHANGE), reinterpret_cast<LPARAM>(combo));
}

} // namespace support
