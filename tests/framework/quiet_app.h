// SPDX-License-Identifier: MIT
#pragma once

#include <afxwin.h>

/// An application that writes message boxes down, one behind the other, instead of showing them.
class QuietApp : public CWinApp {
public:
    CString m_shown;
    int DoMessageBox(LPCTSTR text, UINT, UINT) override {
        m_shown += text;
        return IDOK;
    }
};
