// SPDX-License-Identifier: MIT
#pragma once

#include <objbase.h>
#include <utility>

namespace vorn::detail {

/// COM for the length of a scope. A thread that has chosen an apartment keeps it, whichever it is; one that
/// has not is left as it was.
class ComScope {
public:
    ComScope() : m_entered(SUCCEEDED(::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) {}
    ~ComScope() {
        if (m_entered) ::CoUninitialize();
    }
    ComScope(const ComScope&) = delete;
    ComScope& operator=(const ComScope&) = delete;

private:
    bool m_entered;
};

/// One reference to a COM object.
template <typename T>
class ComPtr {
public:
    ComPtr() = default;
    /// Takes over a reference that the caller holds.
    explicit ComPtr(T* held) : m_object(held) {}
    ComPtr(ComPtr&& other) noexcept : m_object(std::exchange(other.m_object, nullptr)) {}
    ComPtr& operator=(ComPtr&& other) noexcept {
        std::swap(m_object, other.m_object);
        return *this;
    }
    ~ComPtr() {
        if (m_object != nullptr) m_object->Release();
    }

    T* get() const { return m_object; }
    T* operator->() const { return m_object; }
    explicit operator bool() const { return m_object != nullptr; }
    /// Where a call puts the reference that it returns; only for an empty pointer.
    T** out() { return &m_object; }

private:
    T* m_object = nullptr;
};

} // namespace vorn::detail
