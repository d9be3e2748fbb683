// SPDX-License-Identifier: MIT
#pragma once

#include <afxwin.h>

namespace vornafx {

/// Turns what a message map stores back into the handler that it was made of.
template <typename Handler>
Handler handlerAs(AFX_PMSG stored) {
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wcast-function-type"
    return reinterpret_cast<Handler>(stored);
#pragma GCC diagnostic pop
}

} // namespace vornafx
