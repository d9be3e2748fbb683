// SPDX-License-Identifier: MIT
#pragma once

#include <unordered_map>
#include <vector>

#include "afx.h"

/// What an archive remembers of the objects and classes it has come across, so that each is stored once and
/// named by its number from then on. Number 0 stands for null.
struct CArchive::ObjectTables {
    /// A thing already read. Kept apart by kind: a file may call an object's number a class.
    struct Loaded {
        CObject* object = nullptr;
        CRuntimeClass* runtimeClass = nullptr;
        UINT schema = 0;
    };

    std::unordered_map<const void*, DWORD> stored{{nullptr, 0}};
    std::vector<Loaded> loaded{Loaded{}};
};
