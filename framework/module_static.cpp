// SPDX-License-Identifier: MIT
// Linked into each module by itself, so that the address of its object tells which module asks.

#include "afxstat_.h"

namespace {

class ThisModule {
public:
    ~ThisModule() { vornafx::moduleUnloaded(state()); }
    AFX_MODULE_STATE* state() const { return m_state; }

private:
    AFX_MODULE_STATE* m_state = vornafx::moduleStateOf(this);
};

} // namespace

AFX_MODULE_STATE* AFXAPI AfxGetStaticModuleState() {
    // Made on first use: other static objects of the module may want their state while it starts.
    static const ThisModule module;
    return module.state();
}
