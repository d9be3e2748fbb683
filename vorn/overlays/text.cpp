// SPDX-License-Identifier: MIT
#include "vorn/overlays/detail/text.h"

#include <algorithm>

namespace {

/// Characters that every code page maps onto themselves need no call of the system.
bool isAscii(std::string_view text) {
    unsigned char bits = 0;
    for (const char c : text)
        bits |= static_cast<unsigned char>(c);
    return bits < 0x80;
}

BSTR wideString(std::string_view text) {
    const int length = static_cast<int>(text.size());
    if (isAscii(text)) {
        const BSTR wide = ::SysAllocStringLen(nullptr, static_cast<UINT>(length));
        if (wide != nullptr) std::ranges::copy(text, wide);
        return wide;
    }
    const int wideLength = ::MultiByteToWideChar(CP_ACP, 0, text.data(), length, nullptr, 0);
    const BSTR wide = ::SysAllocStringLen(nullptr, static_cast<UINT>(wideLength));
    if (wide != nullptr) ::MultiByteToWideChar(CP_ACP, 0, text.data(), length, wide, wideLength);
    return wide;
}

std::string_view narrowed(std::wstring_view wide, std::string& buffer) {
    wchar_t bits = 0;
    buffer.resize(wide.size());
    std::ranges::transform(wide, buffer.begin(), [&bits](wchar_t c) {
        bits |= c;
        return static_cast<char>(c);
    });
    if (bits < 0x80) return buffer;

    const int length = static_cast<int>(wide.size());
    buffer.resize(::WideCharToMultiByte(CP_ACP, 0, wide.data(), length, nullptr, 0, nullptr, nullptr));
    ::WideCharToMultiByte(CP_ACP, 0, wide.data(), length, buffer.data(), static_cast<int>(buffer.size()),
                          nullptr, nullptr);
    return buffer;
}

/// A value converted to another type, for the length of the scope; VT_EMPTY where there is no conversion.
class Converted {
public:
    Converted(const VARIANT& value, VARTYPE type) {
        ::VariantInit(&m_value);
        ::VariantChangeType(&m_value, const_cast<VARIANT*>(&value), 0, type);
    }
    ~Converted() { ::VariantClear(&m_value); }
    Converted(const Converted&) = delete;
    Converted& operator=(const Converted&) = delete;

    const VARIANT& get() const { return m_value; }

private:
    VARIANT m_value;
};

std::string_view textOfString(const VARIANT& value, std::string& buffer) {
    if (value.vt != VT_BSTR) return {};
    return narrowed({value.bstrVal, ::SysStringLen(value.bstrVal)}, buffer);
}

} // namespace

namespace vorn::detail {

void assignText(VARIANT& value, std::string_view text) {
    ::VariantClear(&value);
    value.bstrVal = wideString(text);
    value.vt = value.bstrVal == nullptr ? VT_EMPTY : VT_BSTR;
}

std::string_view textOf(const VARIANT& value, std::string& buffer) {
    if (value.vt == VT_EMPTY || value.vt == VT_BSTR) return textOfString(value, buffer);
    return textOfString(Converted(value, VT_BSTR).get(), buffer);
}

COLORREF colourOf(const VARIANT& value) {
    if (value.vt == VT_I4) return static_cast<COLORREF>(value.lVal);
    const Converted number(value, VT_I4);
    return number.get().vt == VT_I4 ? static_cast<COLORREF>(number.get().lVal) : 0;
}

} // namespace vorn::detail
