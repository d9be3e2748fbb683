// SPDX-License-Identifier: MIT
#include "thread_state.h"

namespace vornafx {

namespace {

thread_local ThreadState* current = nullptr;

struct StateOwner {
    ~StateOwner() {
        ThreadState* state = std::exchange(current, nullptr);
        if (state != nullptr && state->creationHook != nullptr) ::UnhookWindowsHookEx(state->creationHook);
        delete state;
    }
    void touch() {}
};

thread_local StateOwner owner;

} // namespace

ThreadState& threadState() {
    // Static objects of the program may end after the main thread's state has; they get a last one.
    if (current == nullptr) {
        owner.touch();
        current = new ThreadState;
    }
    return *current;
}

} // namespace vornafx

void AFXAPI AfxLockTempMaps() {
    ++vornafx::threadState().temporaryLocks;
}

BOOL AFXAPI AfxUnlockTempMaps(BOOL bDeleteTemps) {
    vornafx::ThreadState& state = vornafx::threadState();
    if (state.temporaryLocks > 0 && --state.temporaryLocks > 0) return TRUE;
    if (!bDeleteTemps) return FALSE;
    // Windows first: a temporary window may be what a temporary DC or menu was asked from.
    state.windows.deleteTemporaries();
    state.deviceContexts.deleteTemporaries();
    state.gdiObjects.deleteTemporaries();
    state.menus.deleteTemporaries();
    return FALSE;
}
