// SPDX-License-Identifier: MIT

#include "afxstat_.h"

#include <map>
#include <memory>
#include <mutex>
#include <utility>

namespace {

/// The states of the process's modules. A state once made stays: threads and application objects point to it,
/// and a module loaded again at the same place finds it in its first condition.
struct StateList {
    std::mutex mutex;
    std::map<HMODULE, std::unique_ptr<AFX_MODULE_STATE>> states;
};

StateList& stateList() {
    // Never destroyed: other modules' static objects may ask for their state after this module's are gone.
    static StateList& list = *new StateList;
    return list;
}

HMODULE moduleAt(const void* address) {
    HMODULE module = nullptr;
    constexpr DWORD flags =
        GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
    if (!::GetModuleHandleExA(flags, static_cast<LPCSTR>(address), &module)) return nullptr;
    return module;
}

thread_local AFX_MODULE_STATE* currentState = nullptr;

/// The first of the modules that resources are looked for in that has what is looked for; the current one if
/// none has.
template <typename Has>
HINSTANCE firstModule(Has has) {
    const HINSTANCE current = AfxGetResourceHandle();
    const HINSTANCE candidates[] = {current, moduleAt(&CObject::classCObject),
                                    AfxGetAppModuleState()->m_hCurrentResourceHandle};
    for (const HINSTANCE candidate : candidates) {
        if (has(candidate)) return candidate;
    }
    return current;
}

} // namespace

AFX_MODULE_STATE::AFX_MODULE_STATE(HINSTANCE hInstance)
    : m_hCurrentInstanceHandle(hInstance), m_hCurrentResourceHandle(hInstance) {}

AFX_MODULE_STATE* vornafx::moduleStateOf(const void* address) {
    HMODULE module = moduleAt(address);
    if (module == nullptr) module = ::GetModuleHandleA(nullptr);
    StateList& list = stateList();
    const std::scoped_lock lock(list.mutex);
    auto& state = list.states[module];
    if (state == nullptr) state = std::make_unique<AFX_MODULE_STATE>(module);
    return state.get();
}

void vornafx::moduleUnloaded(AFX_MODULE_STATE* state) {
    state->m_hCurrentResourceHandle = state->m_hCurrentInstanceHandle;
    if (currentState == state) currentState = nullptr;
}

AFX_MODULE_STATE* AFXAPI AfxGetAppModuleState() {
    static AFX_MODULE_STATE* const state = vornafx::moduleStateOf(nullptr);
    return state;
}

AFX_MODULE_STATE* AFXAPI AfxGetModuleState() {
    return currentState != nullptr ? currentState : AfxGetAppModuleState();
}

AFX_MODULE_STATE* AFXAPI AfxSetModuleState(AFX_MODULE_STATE* pNewState) {
    return std::exchange(currentState, pNewState);
}

HINSTANCE AFXAPI AfxGetInstanceHandle() {
    return AfxGetModuleState()->m_hCurrentInstanceHandle;
}
HINSTANCE AFXAPI AfxGetResourceHandle() {
    return AfxGetModuleState()->m_hCurrentResourceHandle;
}
void AFXAPI AfxSetResourceHandle(HINSTANCE hInstResource) {
    AfxGetModuleState()->m_hCurrentResourceHandle = hInstResource;
}

HINSTANCE AFXAPI AfxFindResourceHandle(LPCTSTR lpszName, LPCTSTR lpszType) {
    return firstModule(
        [=](HINSTANCE module) { return ::FindResourceA(module, lpszName, lpszType) != nullptr; });
}

HINSTANCE AFXAPI AfxFindStringResourceHandle(UINT nID) {
    LPCWSTR text = nullptr; // with a buffer size of 0 the system only points to the string
    return firstModule(
        [&](HINSTANCE module) { return ::LoadStringW(module, nID, reinterpret_cast<LPWSTR>(&text), 0) > 0; });
}

int AFXAPI AfxLoadString(UINT nIDS, LPTSTR lpszBuf, UINT nMaxBuf) {
    if (nMaxBuf == 0) return 0;
    CString text;
    text.LoadString(nIDS);
    ::lstrcpynA(lpszBuf, text, static_cast<int>(nMaxBuf));
    return ::lstrlenA(lpszBuf);
}
