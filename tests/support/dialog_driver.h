// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>
#include <vector>
#include <windows.h>

namespace support {

/// Answers modal dialogs and message boxes of this thread while it lives: each step is run once, in turn, on
/// the dialog that is on top at the time, from a timer inside the dialog's own message loop. A dialog that
/// stays after the last step is cancelled, and the test fails, so that nothing hangs.
///
///     support::DialogDriver driver({[](HWND dialog) { support::press(dialog, IDOK); }});
///     EXPECT_EQ(dialog.DoModal(), IDOK);
///     EXPECT_TRUE(driver.finished());
class DialogDriver {
public:
    using Step = std::function<void(HWND dialog)>;
    explicit DialogDriver(std::vector<Step> steps);
    ~DialogDriver();
    DialogDriver(const DialogDriver&) = delete;
    DialogDriver& operator=(const DialogDriver&) = delete;

    /// Whether every step has been run and no dialog had to be cancelled.
    bool finished() const { return m_next == m_steps.size() && !m_cancelled; }

private:
    static void CALLBACK onTimer(HWND, UINT, UINT_PTR, DWORD);
    void tick();

    std::vector<Step> m_steps;
    size_t m_next = 0;
    int m_idleTicks = 0;
    bool m_cancelled = false;
    UINT_PTR m_timer;
    DialogDriver* m_outer;
    static DialogDriver* s_current;
};

/// Presses a button as a click does.
void press(HWND dialog, int id);
/// The text of a control, or of the dialog itself for 0.
std::string textOf(HWND dialog, int id);
/// Chooses an item of a combo box and tells the dialog so.
void choose(HWND dialog, int id, int index);

} // namespace support
