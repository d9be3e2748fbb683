// SPDX-License-Identifier: MIT
// A heap that faults where another would be silent. Every block ends at the end of its pages, and the page
// behind it cannot be touched; a freed block's pages cannot be touched any more, and their addresses are not
// used again.
//
// A block whose size is no multiple of 4 ends exactly there. Others are aligned to 16 bytes, as the compiler
// expects of them, which leaves 4 to 12 bytes behind some: these, and what precedes the block in its page,
// are filled with a pattern and looked at when the block is freed.
//
// On loading, the imports of all modules in this DLL's folder are redirected, the C++ runtime's too: so all
// of them agree on where a block comes from. Blocks from before or from other modules are known by their
// addresses and go to the C runtime's heap.
#include "import_hooks.h"

#include <psapi.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <malloc.h>

namespace {

constexpr std::size_t pageSize = 4096;
constexpr std::size_t alignment = 16;
constexpr std::size_t reach = std::size_t{256} << 30; // addresses, not memory
constexpr std::size_t largestBlock = std::size_t{4} << 30;
/// Every block costs two of the 65530 mappings that a Linux process may have.
constexpr LONG mostBlocks = 28000;
constexpr BYTE marginPattern = 0xFD, freshPattern = 0xCD;
constexpr std::size_t filledAtMost = 1 << 20;

/// At the beginning of the first page of each block, at least 16 bytes before the block.
struct Header {
    std::size_t size;
    std::size_t pages;
};
static_assert(sizeof(Header) == alignment);

BYTE* s_begin = nullptr;
volatile LONG64 s_used = 0;
volatile LONG s_alive = 0;
volatile LONG64 s_guarded = 0, s_unguarded = 0;

bool isGuarded(const void* block) {
    return block >= s_begin && block < s_begin + reach;
}

Header& headerOf(void* block) {
    std::size_t address = reinterpret_cast<std::size_t>(block) - sizeof(Header);
    return *reinterpret_cast<Header*>(address & ~(pageSize - 1));
}

/// Null when it is too large, or too many are alive.
void* allocate(std::size_t size, bool exact) {
    if (size > largestBlock || s_begin == nullptr || s_alive >= mostBlocks) return nullptr;
    std::size_t room = exact && size % 4 != 0 ? size : (size + alignment - 1) / alignment * alignment;
    std::size_t pages = (sizeof(Header) + room + pageSize - 1) / pageSize;
    std::size_t bytes = (pages + 1) * pageSize;
    std::size_t offset =
        static_cast<std::size_t>(::InterlockedExchangeAdd64(&s_used, static_cast<LONG64>(bytes)));
    if (offset + bytes > reach) return nullptr;
    BYTE* base = s_begin + offset;
    if (::VirtualAlloc(base, pages * pageSize, MEM_COMMIT, PAGE_READWRITE) == nullptr) return nullptr;
    ::InterlockedIncrement(&s_alive);
    ::InterlockedIncrement64(&s_guarded);
    BYTE* block = base + pages * pageSize - room;
    std::memset(base, marginPattern, static_cast<std::size_t>(block - base));
    std::memset(block, freshPattern, std::min(size, filledAtMost));
    std::memset(block + size, marginPattern, room - size);
    *reinterpret_cast<Header*>(base) = {size, pages};
    return block;
}

bool isPattern(const BYTE* begin, const BYTE* end) {
    return std::all_of(begin, end, [](BYTE byte) { return byte == marginPattern; });
}

void release(void* block) {
    Header& header = headerOf(block); // faults when the block was freed before
    BYTE* base = reinterpret_cast<BYTE*>(&header);
    BYTE* bytes = static_cast<BYTE*>(block);
    std::size_t pages = header.pages;
    if (!isPattern(base + sizeof(Header), bytes) ||
        !isPattern(bytes + header.size, base + pages * pageSize)) {
        std::fprintf(stderr, "guard heap: written outside a block of %u bytes\n",
                     static_cast<unsigned>(header.size));
        ::RaiseException(STATUS_HEAP_CORRUPTION, 0, 0, nullptr);
    }
    ::VirtualFree(base, pages * pageSize, MEM_DECOMMIT);
    ::InterlockedDecrement(&s_alive);
}

void* allocateOr(std::size_t size, bool exact, void* (*other)(std::size_t)) {
    if (void* block = allocate(size, exact)) return block;
    ::InterlockedIncrement64(&s_unguarded);
    return other(size);
}

// What the modules get. The C++ runtime's own blocks are always aligned: it lays out exceptions in them.

void* guardedMalloc(std::size_t size) {
    return allocateOr(size, true, &std::malloc);
}

void* alignedMalloc(std::size_t size) {
    return allocateOr(size, false, &std::malloc);
}

void* (*s_new)(std::size_t) = nullptr; // the C++ runtime's, which knows how to fail

void* guardedNew(std::size_t size) {
    return allocateOr(size, true, s_new);
}

void guardedFree(void* block) {
    if (isGuarded(block))
        release(block);
    else
        std::free(block);
}

void* guardedCalloc(std::size_t count, std::size_t size) {
    if (size != 0 && count > largestBlock / size) return std::calloc(count, size);
    void* block = alignedMalloc(count * size);
    return block == nullptr ? nullptr : std::memset(block, 0, count * size);
}

std::size_t guardedSize(void* block) {
    return isGuarded(block) ? headerOf(block).size : ::_msize(block);
}

void* guardedRealloc(void* block, std::size_t size) {
    if (block == nullptr) return guardedMalloc(size);
    if (!isGuarded(block)) return std::realloc(block, size);
    if (size == 0) {
        release(block);
        return nullptr;
    }
    void* moved = guardedMalloc(size);
    if (moved == nullptr) return nullptr;
    std::memcpy(moved, block, std::min(size, headerOf(block).size));
    release(block);
    return moved;
}

template <typename Function>
Hook hook(const char* name, Function function) {
    return {name, reinterpret_cast<void*>(function)};
}

void redirectModules(HMODULE self) {
    const Hook hooks[] = {
        hook("malloc", &guardedMalloc),   hook("free", &guardedFree),    hook("calloc", &guardedCalloc),
        hook("realloc", &guardedRealloc), hook("_msize", &guardedSize),  hook("_Znwy", &guardedNew),
        hook("_Znay", &guardedNew),       hook("_ZdlPv", &guardedFree),  hook("_ZdlPvy", &guardedFree),
        hook("_ZdaPv", &guardedFree),     hook("_ZdaPvy", &guardedFree),
    };
    const Hook runtimeHooks[] = {hook("malloc", &alignedMalloc), hook("free", &guardedFree),
                                 hook("calloc", &guardedCalloc), hook("realloc", &guardedRealloc)};
    char folder[MAX_PATH] = "";
    ::GetModuleFileNameA(self, folder, sizeof folder);
    *(std::strrchr(folder, '\\') + 1) = 0;
    HMODULE modules[256];
    DWORD bytes = 0;
    ::EnumProcessModules(::GetCurrentProcess(), modules, sizeof modules, &bytes);
    for (std::size_t i = 0; i < std::min<std::size_t>(bytes / sizeof(HMODULE), 256); i++) {
        char path[MAX_PATH] = "";
        ::GetModuleFileNameA(modules[i], path, sizeof path);
        if (modules[i] == self || _strnicmp(path, folder, std::strlen(folder)) != 0) continue;
        if (_strnicmp(path + std::strlen(folder), "lib", 3) == 0)
            redirectImports(modules[i], runtimeHooks);
        else
            redirectImports(modules[i], hooks);
    }
}

} // namespace

extern "C" __declspec(dllexport) BOOL WINAPI DllMain(HINSTANCE self, DWORD reason, LPVOID) {
    if (reason == DLL_PROCESS_ATTACH) {
        HMODULE runtime = ::GetModuleHandleA("libstdc++-6.dll");
        if (runtime == nullptr) return FALSE;
        s_new = reinterpret_cast<void* (*)(std::size_t)>(
            reinterpret_cast<void*>(::GetProcAddress(runtime, "_Znwy")));
        s_begin = static_cast<BYTE*>(::VirtualAlloc(nullptr, reach, MEM_RESERVE, PAGE_NOACCESS));
        if (s_new == nullptr || s_begin == nullptr) return FALSE;
        redirectModules(self);
    } else if (reason == DLL_PROCESS_DETACH) {
        std::fprintf(stderr, "guard heap: %lld blocks guarded, %lld not\n", s_guarded, s_unguarded);
        std::fflush(stderr);
    }
    return TRUE;
}
