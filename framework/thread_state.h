// SPDX-License-Identifier: MIT
#pragma once

#include <afxwin.h>
#include <memory>
#include <unordered_map>
#include <utility>

/// What the framework keeps for each thread: which object stands for which handle, the message at hand, and
/// what is being created.
namespace vornafx {

// A temporary object gives its handle up before it ends, as it never owned it.
inline void forgetHandle(CWnd& window) {
    window.m_hWnd = nullptr;
}
inline void forgetHandle(CDC& dc) {
    dc.m_hDC = dc.m_hAttribDC = nullptr;
}
inline void forgetHandle(CGdiObject& object) {
    object.m_hObject = nullptr;
}
inline void forgetHandle(CMenu& menu) {
    menu.m_hMenu = nullptr;
}

/// The objects of one kind of handle: permanent ones, made by the program, and temporary ones, made here.
template <typename Object, typename Handle>
class HandleMap {
public:
    HandleMap() = default;
    HandleMap(const HandleMap&) = delete;
    HandleMap& operator=(const HandleMap&) = delete;
    ~HandleMap() { deleteTemporaries(); }

    Object* permanent(Handle handle) const {
        auto found = m_permanent.find(handle);
        return found == m_permanent.end() ? nullptr : found->second;
    }
    void setPermanent(Handle handle, Object* object) { m_permanent[handle] = object; }
    void removePermanent(Handle handle, const Object* object) {
        auto found = m_permanent.find(handle);
        if (found != m_permanent.end() && found->second == object) m_permanent.erase(found);
    }

    /// The permanent object, else the temporary one, which `make` gives when there is none yet.
    template <typename Make>
    Object* fromHandle(Handle handle, Make make) {
        if (handle == nullptr) return nullptr;
        if (Object* object = permanent(handle)) return object;
        auto found = m_temporary.find(handle);
        if (found == m_temporary.end()) found = m_temporary.emplace(handle, make()).first;
        return found->second.get();
    }
    Object* temporary(Handle handle) const {
        auto found = m_temporary.find(handle);
        return found == m_temporary.end() ? nullptr : found->second.get();
    }
    void deleteTemporaries() {
        auto old = std::exchange(m_temporary, {});
        for (auto& [handle, object] : old)
            forgetHandle(*object);
    }

private:
    std::unordered_map<Handle, Object*> m_permanent;
    std::unordered_map<Handle, std::unique_ptr<Object>> m_temporary;
};

struct ThreadState {
    HandleMap<CWnd, HWND> windows;
    HandleMap<CDC, HDC> deviceContexts;
    HandleMap<CGdiObject, HGDIOBJ> gdiObjects;
    HandleMap<CMenu, HMENU> menus;
    int temporaryLocks = 0;

    MSG currentMessage{};            ///< what the innermost window procedure is handling
    CWnd* windowBeingMade = nullptr; ///< takes the next window that is created
    HHOOK creationHook = nullptr;
    HWND exchangingDialog = nullptr; ///< its controls' notifications are ignored during UpdateData
};

/// This thread's state, made when first asked for and ended with the thread.
ThreadState& threadState();

/// What a message results in whose handler threw; the user is told, unless that would go on for ever.
LRESULT resultOfException(CException& exception, const MSG& message);

} // namespace vornafx
