// SPDX-License-Identifier: MIT
#pragma once

#include "vorn/view/rendering_context.h"

#include <afxwin.h>
#include <utility>

namespace vorn::detail {

/// The client area's DC of a window for the length of a scope. Unlike the framework's own class it never
/// throws: without a window, or when the system has no DC left, it is null.
class ClientDC {
public:
    explicit ClientDC(const CWnd* window) : m_window(window->GetSafeHwnd()) {
        if (m_window != nullptr) m_dc.Attach(::GetDC(m_window));
    }
    ~ClientDC() {
        if (m_dc.m_hDC != nullptr) ::ReleaseDC(m_window, m_dc.Detach());
    }
    ClientDC(const ClientDC&) = delete;
    ClientDC& operator=(const ClientDC&) = delete;

    CDC* get() { return m_dc.m_hDC != nullptr ? &m_dc : nullptr; }

private:
    HWND m_window;
    CDC m_dc;
};

/// Makes a context current on a DC for the length of a scope. Afterwards nothing is current, and the context
/// has forgotten the DC.
class CurrentContext {
public:
    CurrentContext(CvornOGLDC& context, CDC* dc)
        : m_context(context), m_current(context.MakeCurrentContext(dc)) {}
    ~CurrentContext() {
        ::wglMakeCurrent(nullptr, nullptr);
        m_context.SetDC(nullptr);
    }
    CurrentContext(const CurrentContext&) = delete;
    CurrentContext& operator=(const CurrentContext&) = delete;

    explicit operator bool() const { return m_current != 0; }

private:
    CvornOGLDC& m_context;
    int m_current;
};

/// Gives a variable another value for the length of a scope.
template <typename T>
class ScopedValue {
public:
    ScopedValue(T& variable, T value) : m_variable(variable), m_before(std::exchange(variable, value)) {}
    ~ScopedValue() { m_variable = m_before; }
    ScopedValue(const ScopedValue&) = delete;
    ScopedValue& operator=(const ScopedValue&) = delete;

private:
    T& m_variable;
    T m_before;
};

/// Sets a bit of a state word for the length of a scope, and clears it.
class StateScope {
public:
    StateScope(DWORD& word, DWORD bit) : m_word(word), m_bit(bit) { m_word |= bit; }
    ~StateScope() { m_word &= ~m_bit; }
    StateScope(const StateScope&) = delete;
    StateScope& operator=(const StateScope&) = delete;

private:
    DWORD& m_word;
    DWORD m_bit;
};

} // namespace vorn::detail
