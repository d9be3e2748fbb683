// SPDX-License-Identifier: MIT
#include "clipboard.h"

#include <algorithm>
#include <cstring>

namespace {

/// The clipboard, open for a scope.
class Clipboard {
public:
    explicit Clipboard(HWND owner) : m_open(::OpenClipboard(owner)) {}
    ~Clipboard() {
        if (m_open) ::CloseClipboard();
    }
    Clipboard(const Clipboard&) = delete;
    Clipboard& operator=(const Clipboard&) = delete;
    explicit operator bool() const { return m_open; }

private:
    bool m_open;
};

} // namespace

bool copyText(HWND owner, const std::string& text) {
    HGLOBAL block = ::GlobalAlloc(GMEM_MOVEABLE, text.size() + 1);
    void* memory = block == nullptr ? nullptr : ::GlobalLock(block);
    if (memory != nullptr) {
        std::memcpy(memory, text.c_str(), text.size() + 1);
        ::GlobalUnlock(block);
        const Clipboard clipboard(owner);
        // A block that is taken is the clipboard's.
        if (clipboard && ::EmptyClipboard() && ::SetClipboardData(CF_TEXT, block) != nullptr) return true;
    }
    ::GlobalFree(block);
    return false;
}

std::optional<std::string> clipboardText(HWND owner) {
    const Clipboard clipboard(owner);
    HANDLE block = clipboard ? ::GetClipboardData(CF_TEXT) : nullptr;
    const auto* text = block == nullptr ? nullptr : static_cast<const char*>(::GlobalLock(block));
    if (text == nullptr) return std::nullopt;
    // Whoever put it there may have left the NUL out.
    std::string result(text, std::find(text, text + ::GlobalSize(block), '\0'));
    ::GlobalUnlock(block);
    return result;
}
