// SPDX-License-Identifier: MIT
#include "dialog_detail.h"
#include <cstring>

namespace vornafx {

namespace {

// The head of an extended template, as the resource format has it.
#pragma pack(push, 2)
struct ExtendedTemplate {
    WORD version;
    WORD signature;
    DWORD helpId;
    DWORD extendedStyle;
    DWORD style;
    WORD itemCount;
    short x;
    short y;
};
#pragma pack(pop)

std::span<const std::byte> resourceBytes(HINSTANCE instance, LPCTSTR name, LPCTSTR type) {
    HRSRC found = ::FindResourceA(instance, name, type);
    HGLOBAL loaded = found == nullptr ? nullptr : ::LoadResource(instance, found);
    if (loaded == nullptr) return {};
    return {static_cast<const std::byte*>(::LockResource(loaded)), ::SizeofResource(instance, found)};
}

/// Takes values off the front of a block of bytes.
class Reader {
public:
    explicit Reader(std::span<const std::byte> bytes) : m_rest(bytes) {}

    template <typename T>
    bool read(T& value) {
        std::span<const std::byte> part;
        if (!take(sizeof(T), part)) return false;
        std::memcpy(&value, part.data(), sizeof(T));
        return true;
    }
    bool take(size_t count, std::span<const std::byte>& part) {
        if (count > m_rest.size()) return false;
        part = m_rest.first(count);
        m_rest = m_rest.subspan(count);
        return true;
    }

private:
    std::span<const std::byte> m_rest;
};

/// The resource compiler writes the numbers that these messages had in 16-bit Windows.
UINT currentMessage(WORD message) {
    constexpr WORD listAddString = 0x0401, comboAddString = 0x0403;
    if (message == listAddString) return LB_ADDSTRING;
    return message == comboAddString ? CB_ADDSTRING : message;
}

} // namespace

TemplatePlace placeOf(LPCDLGTEMPLATE dialogTemplate) {
    const auto* extended = reinterpret_cast<const ExtendedTemplate*>(dialogTemplate);
    if (extended->signature == 0xFFFF) return {extended->style, extended->x, extended->y};
    return {dialogTemplate->style, dialogTemplate->x, dialogTemplate->y};
}

LPCDLGTEMPLATE findTemplate(HINSTANCE instance, LPCTSTR name) {
    const auto bytes = resourceBytes(instance, name, RT_DIALOG);
    return bytes.size() < sizeof(DLGTEMPLATE) ? nullptr : reinterpret_cast<LPCDLGTEMPLATE>(bytes.data());
}

BOOL fillControls(HWND dialog, std::span<const std::byte> data) {
    Reader reader(data);
    WORD id = 0;
    while (reader.read(id) && id != 0) {
        WORD message = 0;
        DWORD length = 0;
        std::span<const std::byte> text;
        if (!reader.read(message) || !reader.read(length) || !reader.take(length, text)) return FALSE;
        const UINT sent = currentMessage(message);
        if (sent != LB_ADDSTRING && sent != CB_ADDSTRING) continue;
        if (text.empty() || text.back() != std::byte{0}) return FALSE;
        if (::SendDlgItemMessageA(dialog, id, sent, 0, reinterpret_cast<LPARAM>(text.data())) < 0)
            return FALSE;
    }
    return TRUE;
}

} // namespace vornafx

BOOL CWnd::ExecuteDlgInit(LPCTSTR lpszResourceName) {
    if (lpszResourceName == nullptr) return TRUE;
    // The data goes with the template: another module's resource of the same id is another dialog's.
    HINSTANCE instance = AfxFindResourceHandle(lpszResourceName, RT_DIALOG);
    return vornafx::fillControls(m_hWnd,
                                 vornafx::resourceBytes(instance, lpszResourceName, MAKEINTRESOURCEA(240)));
}
