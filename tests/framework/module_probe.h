// SPDX-License-Identifier: MIT
#pragma once

class CWinApp;

/// What the tests find in module_probe.dll: a module with resources, an application object and a serialisable
/// class of its own. All but `appOutside` work under the module's own state.
struct ModuleProbe {
    CWinApp* (*appOutside)();
    CWinApp* (*appInside)();
    int (*loadString)(unsigned id, char* buffer, unsigned size);
    int (*messageBox)(const char* text);
    void (*throwInside)();
};

constexpr unsigned probeStringId = 100;
constexpr unsigned probeOnlyStringId = 101;
