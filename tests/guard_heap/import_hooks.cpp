// SPDX-License-Identifier: MIT
#include "import_hooks.h"

#include <cstring>

namespace {

void redirect(IMAGE_THUNK_DATA& slot, void* replacement) {
    DWORD old = 0;
    if (!::VirtualProtect(&slot, sizeof slot, PAGE_READWRITE, &old)) return;
    slot.u1.Function = reinterpret_cast<ULONGLONG>(replacement);
    ::VirtualProtect(&slot, sizeof slot, old, &old);
}

} // namespace

void redirectImports(HMODULE module, std::span<const Hook> hooks) {
    BYTE* base = reinterpret_cast<BYTE*>(module);
    const auto* dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
    const auto* headers = reinterpret_cast<const IMAGE_NT_HEADERS*>(base + dos->e_lfanew);
    const IMAGE_DATA_DIRECTORY& directory =
        headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    if (directory.VirtualAddress == 0) return;
    const auto* import = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(base + directory.VirtualAddress);
    for (; import->Name != 0; import++) {
        auto* name = reinterpret_cast<const IMAGE_THUNK_DATA*>(base + import->OriginalFirstThunk);
        auto* slot = reinterpret_cast<IMAGE_THUNK_DATA*>(base + import->FirstThunk);
        for (; name->u1.AddressOfData != 0; name++, slot++) {
            if (IMAGE_SNAP_BY_ORDINAL(name->u1.Ordinal)) continue;
            const auto* symbol = reinterpret_cast<const IMAGE_IMPORT_BY_NAME*>(base + name->u1.AddressOfData);
            for (const Hook& hook : hooks)
                if (std::strcmp(reinterpret_cast<const char*>(symbol->Name), hook.name) == 0)
                    redirect(*slot, hook.replacement);
        }
    }
}
