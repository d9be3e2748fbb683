// SPDX-License-Identifier: MIT
// The application's profile, in the registry or in an INI file.

#include "afxwin.h"

#include <algorithm>
#include <cstring>
#include <optional>
#include <string>
#include <vector>

namespace {

constexpr DWORD largestValue = 64u << 20; // more than any program's setting; a larger one is not read

/// Owns an open registry key.
class Key {
public:
    explicit Key(HKEY key = nullptr) : m_key(key) {}
    ~Key() {
        if (m_key != nullptr) ::RegCloseKey(m_key);
    }
    Key(const Key&) = delete;
    Key& operator=(const Key&) = delete;
    HKEY get() const { return m_key; }
    explicit operator bool() const { return m_key != nullptr; }

private:
    HKEY m_key;
};

HKEY createKey(HKEY parent, LPCTSTR name) {
    HKEY key = nullptr;
    const LSTATUS result =
        ::RegCreateKeyExA(parent, name, 0, nullptr, 0, KEY_READ | KEY_WRITE | DELETE, nullptr, &key, nullptr);
    return result == ERROR_SUCCESS ? key : nullptr;
}

/// A value's bytes, or nothing when it is missing, of another type or absurdly large. The size that the
/// registry first tells may be outdated by the time the value is read, hence the loop.
std::optional<std::vector<BYTE>> readValue(HKEY key, LPCTSTR entry, DWORD wantedType) {
    std::vector<BYTE> data;
    for (int attempt = 0; attempt < 5; ++attempt) {
        DWORD type = 0, size = static_cast<DWORD>(data.size());
        const LSTATUS result = ::RegQueryValueExA(key, entry, nullptr, &type, data.data(), &size);
        if (result != ERROR_SUCCESS && result != ERROR_MORE_DATA) return std::nullopt;
        if (type != wantedType || size > largestValue) return std::nullopt;
        if (result == ERROR_SUCCESS && size <= data.size()) {
            data.resize(size);
            return data;
        }
        data.resize(size);
    }
    return std::nullopt;
}

/// An INI entry's text, whatever its length, or nothing when it is missing.
std::optional<std::string> readIni(LPCTSTR file, LPCTSTR section, LPCTSTR entry) {
    // A default that no value can be: values come trimmed of blanks.
    constexpr char missing[] = "\x01\x01";
    std::string text;
    for (DWORD size = 512; size <= largestValue; size *= 2) {
        text.resize(size);
        const DWORD length = ::GetPrivateProfileStringA(section, entry, missing, text.data(), size, file);
        if (length + 1 >= size) continue;
        text.resize(length);
        if (text == missing) return std::nullopt;
        return text;
    }
    return std::nullopt;
}

bool validNames(LPCTSTR section, LPCTSTR entry) {
    return section != nullptr && entry != nullptr;
}

/// An INI file holds a byte as two letters, 'A' and on, the low half first.
std::string encode(const BYTE* data, UINT size) {
    std::string text;
    text.reserve(size_t{size} * 2);
    for (UINT i = 0; i < size; ++i) {
        text += static_cast<char>('A' + (data[i] & 0x0F));
        text += static_cast<char>('A' + (data[i] >> 4));
    }
    return text;
}

std::optional<std::vector<BYTE>> decode(const std::string& text) {
    if (text.size() % 2 != 0) return std::nullopt;
    std::vector<BYTE> data(text.size() / 2);
    for (size_t i = 0; i < data.size(); ++i) {
        const unsigned low = static_cast<BYTE>(text[2 * i]) - unsigned{'A'};
        const unsigned high = static_cast<BYTE>(text[2 * i + 1]) - unsigned{'A'};
        if (low > 15 || high > 15) return std::nullopt;
        data[i] = static_cast<BYTE>(high << 4 | low);
    }
    return data;
}

} // namespace

HKEY CWinApp::GetAppRegistryKey() {
    if (m_pszRegistryKey == nullptr || m_pszProfileName == nullptr) return nullptr;
    const Key company(createKey(HKEY_CURRENT_USER, CString("Software\\") + m_pszRegistryKey));
    return company ? createKey(company.get(), m_pszProfileName) : nullptr;
}

HKEY CWinApp::GetSectionKey(LPCTSTR lpszSection) {
    if (lpszSection == nullptr) return nullptr;
    const Key app(GetAppRegistryKey());
    return app ? createKey(app.get(), lpszSection) : nullptr;
}

UINT CWinApp::GetProfileInt(LPCTSTR lpszSection, LPCTSTR lpszEntry, int nDefault) {
    if (!validNames(lpszSection, lpszEntry)) return static_cast<UINT>(nDefault);
    if (m_pszRegistryKey == nullptr) {
        return ::GetPrivateProfileIntA(lpszSection, lpszEntry, nDefault, m_pszProfileName);
    }
    const Key section(GetSectionKey(lpszSection));
    const auto data = section ? readValue(section.get(), lpszEntry, REG_DWORD) : std::nullopt;
    if (!data || data->size() != sizeof(DWORD)) return static_cast<UINT>(nDefault);
    DWORD value = 0;
    std::memcpy(&value, data->data(), sizeof value);
    return static_cast<UINT>(value);
}

BOOL CWinApp::WriteProfileInt(LPCTSTR lpszSection, LPCTSTR lpszEntry, int nValue) {
    if (!validNames(lpszSection, lpszEntry)) return FALSE;
    if (m_pszRegistryKey == nullptr) {
        CString text;
        text.Format("%d", nValue);
        return ::WritePrivateProfileStringA(lpszSection, lpszEntry, text, m_pszProfileName);
    }
    const Key section(GetSectionKey(lpszSection));
    const auto* bytes = reinterpret_cast<const BYTE*>(&nValue);
    return section &&
           ::RegSetValueExA(section.get(), lpszEntry, 0, REG_DWORD, bytes, sizeof nValue) == ERROR_SUCCESS;
}

CString CWinApp::GetProfileString(LPCTSTR lpszSection, LPCTSTR lpszEntry, LPCTSTR lpszDefault) {
    if (!validNames(lpszSection, lpszEntry)) return lpszDefault;
    if (m_pszRegistryKey == nullptr) {
        const auto text = readIni(m_pszProfileName, lpszSection, lpszEntry);
        return text ? CString(text->data(), static_cast<int>(text->size())) : CString(lpszDefault);
    }
    const Key section(GetSectionKey(lpszSection));
    const auto data = section ? readValue(section.get(), lpszEntry, REG_SZ) : std::nullopt;
    if (!data) return lpszDefault;
    // A value need not be terminated, or may be so early.
    const auto* text = reinterpret_cast<const char*>(data->data());
    return CString(text, static_cast<int>(strnlen(text, data->size())));
}

BOOL CWinApp::WriteProfileString(LPCTSTR lpszSection, LPCTSTR lpszEntry, LPCTSTR lpszValue) {
    if (lpszSection == nullptr) return FALSE;
    if (m_pszRegistryKey == nullptr) {
        return ::WritePrivateProfileStringA(lpszSection, lpszEntry, lpszValue, m_pszProfileName);
    }
    if (lpszEntry == nullptr) {
        const Key app(GetAppRegistryKey());
        const LSTATUS result = app ? ::RegDeleteTreeA(app.get(), lpszSection) : ERROR_INVALID_HANDLE;
        return result == ERROR_SUCCESS || result == ERROR_FILE_NOT_FOUND;
    }
    const Key section(GetSectionKey(lpszSection));
    if (!section) return FALSE;
    if (lpszValue == nullptr) {
        const LSTATUS result = ::RegDeleteValueA(section.get(), lpszEntry);
        return result == ERROR_SUCCESS || result == ERROR_FILE_NOT_FOUND;
    }
    const auto* bytes = reinterpret_cast<const BYTE*>(lpszValue);
    const auto size = static_cast<DWORD>(::lstrlenA(lpszValue)) + 1;
    return ::RegSetValueExA(section.get(), lpszEntry, 0, REG_SZ, bytes, size) == ERROR_SUCCESS;
}

BOOL CWinApp::GetProfileBinary(LPCTSTR lpszSection, LPCTSTR lpszEntry, LPBYTE* ppData, UINT* pBytes) {
    if (ppData == nullptr || pBytes == nullptr) return FALSE;
    *ppData = nullptr;
    *pBytes = 0;
    if (!validNames(lpszSection, lpszEntry)) return FALSE;
    std::optional<std::vector<BYTE>> data;
    if (m_pszRegistryKey == nullptr) {
        const auto text = readIni(m_pszProfileName, lpszSection, lpszEntry);
        if (text) data = decode(*text);
    } else if (const Key section(GetSectionKey(lpszSection)); section) {
        data = readValue(section.get(), lpszEntry, REG_BINARY);
    }
    if (!data) return FALSE;
    *ppData = new BYTE[data->size()];
    std::copy(data->begin(), data->end(), *ppData);
    *pBytes = static_cast<UINT>(data->size());
    return TRUE;
}

BOOL CWinApp::WriteProfileBinary(LPCTSTR lpszSection, LPCTSTR lpszEntry, LPBYTE pData, UINT nBytes) {
    if (!validNames(lpszSection, lpszEntry) || (pData == nullptr && nBytes > 0)) return FALSE;
    if (m_pszRegistryKey == nullptr) {
        return ::WritePrivateProfileStringA(lpszSection, lpszEntry, encode(pData, nBytes).c_str(),
                                            m_pszProfileName);
    }
    const Key section(GetSectionKey(lpszSection));
    return section &&
           ::RegSetValueExA(section.get(), lpszEntry, 0, REG_BINARY, pData, nBytes) == ERROR_SUCCESS;
}
