// SPDX-License-Identifier: MIT
// Storage of CString: construction, assignment, buffers, formatting, resources.

#include "afxstat_.h"

#include <algorithm>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <utility>

namespace {

/// The most characters a string may have: the block's size stays an int with room for the rest.
constexpr size_t maxLength = INT_MAX - 64;

size_t lengthOf(LPCTSTR psz) {
    return psz == nullptr ? 0 : std::strlen(psz);
}
size_t lengthOf(LPCWSTR psz) {
    return psz == nullptr ? 0 : std::wcslen(psz);
}
size_t atLeastZero(int value) {
    return static_cast<size_t>(std::max(value, 0));
}

} // namespace

char* CString::emptyData() noexcept {
    static constinit struct {
        Header header;
        char terminator[8];
    } block{};
    return block.terminator;
}

CString::CString() noexcept : m_pchData(emptyData()) {}

CString::CString(const CString& strSrc) : CString() {
    append(strSrc.m_pchData, atLeastZero(strSrc.GetLength()));
}

CString::CString(CString&& strSrc) noexcept : m_pchData(std::exchange(strSrc.m_pchData, emptyData())) {}

CString::CString(LPCTSTR pszSrc) : CString() {
    if (IS_INTRESOURCE(pszSrc)) {
        if (pszSrc != nullptr) LoadString(static_cast<UINT>(reinterpret_cast<UINT_PTR>(pszSrc)));
        return;
    }
    append(pszSrc, lengthOf(pszSrc));
}

CString::CString(LPCWSTR pszSrc) : CString() {
    assignWide(pszSrc, lengthOf(pszSrc));
}

CString::CString(const unsigned char* pszSrc) : CString(reinterpret_cast<LPCTSTR>(pszSrc)) {}

CString::CString(LPCTSTR pchSrc, int nLength) : CString() {
    append(pchSrc, atLeastZero(nLength));
}

CString::CString(LPCWSTR pchSrc, int nLength) : CString() {
    assignWide(pchSrc, atLeastZero(nLength));
}

CString::CString(TCHAR ch, int nRepeat) : CString() {
    if (nRepeat > 0) std::memset(GetBufferSetLength(nRepeat), ch, static_cast<size_t>(nRepeat));
}

CString::~CString() {
    if (m_pchData != emptyData()) std::free(header());
}

CString& CString::operator=(const CString& strSrc) {
    if (this != &strSrc) assign(strSrc.m_pchData, atLeastZero(strSrc.GetLength()));
    return *this;
}

CString& CString::operator=(CString&& strSrc) noexcept {
    std::swap(m_pchData, strSrc.m_pchData);
    return *this;
}

CString& CString::operator=(LPCTSTR pszSrc) {
    assign(pszSrc, lengthOf(pszSrc));
    return *this;
}

CString& CString::operator=(LPCWSTR pszSrc) {
    assignWide(pszSrc, lengthOf(pszSrc));
    return *this;
}

CString& CString::operator=(const unsigned char* pszSrc) {
    return *this = reinterpret_cast<LPCTSTR>(pszSrc);
}

CString& CString::operator=(TCHAR ch) {
    assign(&ch, 1);
    return *this;
}

CString& CString::operator+=(const CString& strSrc) {
    append(strSrc.m_pchData, atLeastZero(strSrc.GetLength()));
    return *this;
}

CString& CString::operator+=(LPCTSTR pszSrc) {
    append(pszSrc, lengthOf(pszSrc));
    return *this;
}

CString& CString::operator+=(TCHAR ch) {
    append(&ch, 1);
    return *this;
}

void CString::Append(LPCTSTR pszSrc) {
    append(pszSrc, lengthOf(pszSrc));
}
void CString::Append(LPCTSTR pchSrc, int nLength) {
    append(pchSrc, atLeastZero(nLength));
}
void CString::AppendChar(TCHAR ch) {
    append(&ch, 1);
}
void CString::SetString(LPCTSTR pszSrc) {
    assign(pszSrc, lengthOf(pszSrc));
}
void CString::SetString(LPCTSTR pchSrc, int nLength) {
    assign(pchSrc, atLeastZero(nLength));
}

void CString::Empty() noexcept {
    *this = CString();
}

void CString::SetAt(int iChar, TCHAR ch) {
    ASSERT(iChar >= 0 && iChar < GetLength());
    m_pchData[iChar] = ch;
}

void CString::assign(LPCTSTR pch, size_t nLength) {
    replaceRange(0, atLeastZero(GetLength()), pch, nLength);
}

void CString::append(LPCTSTR pch, size_t nLength) {
    replaceRange(atLeastZero(GetLength()), 0, pch, nLength);
}

/// Puts `nNew` characters in the place of `nOld` from `nFirst` on; the new ones may lie in this very string.
void CString::replaceRange(size_t nFirst, size_t nOld, LPCTSTR pch, size_t nNew) {
    if (nNew > maxLength) AfxThrowMemoryException();
    const auto length = atLeastZero(GetLength());
    const bool own = nNew > 0 && pch >= m_pchData && pch <= m_pchData + length;
    if (own) {
        const CString copy(pch, static_cast<int>(nNew));
        replaceRange(nFirst, nOld, copy.m_pchData, nNew);
        return;
    }
    const size_t newLength = length - nOld + nNew;
    reserve(newLength);
    char* const place = m_pchData + nFirst;
    if (nOld != nNew) std::memmove(place + nNew, place + nOld, length - nFirst - nOld);
    if (nNew > 0) std::memcpy(place, pch, nNew);
    setLength(newLength);
}

void CString::assignWide(LPCWSTR pch, size_t nLength) {
    if (nLength > maxLength) AfxThrowMemoryException();
    const int source = static_cast<int>(nLength);
    const int needed =
        source == 0 ? 0 : ::WideCharToMultiByte(CP_ACP, 0, pch, source, nullptr, 0, nullptr, nullptr);
    CString converted;
    if (needed > 0) {
        ::WideCharToMultiByte(CP_ACP, 0, pch, source, converted.GetBufferSetLength(needed), needed, nullptr,
                              nullptr);
    }
    *this = std::move(converted);
}

/// Makes room for a length, growing by half at least, so that appending in a loop stays linear.
void CString::reserve(size_t nLength) {
    const auto capacity = static_cast<size_t>(header()->nCapacity);
    if (nLength <= capacity) return;
    if (nLength > maxLength) AfxThrowMemoryException();
    const size_t wanted = std::min(std::max(nLength, capacity + capacity / 2), maxLength);
    const size_t rounded = (wanted + 8) & ~size_t{7};
    const bool shared = m_pchData == emptyData();
    void* block = std::realloc(shared ? nullptr : header(), sizeof(Header) + rounded);
    if (block == nullptr) AfxThrowMemoryException();
    auto* head = static_cast<Header*>(block);
    m_pchData = reinterpret_cast<char*>(head + 1);
    head->nCapacity = static_cast<int>(rounded - 1);
    if (shared) setLength(0);
}

void CString::setLength(size_t nLength) noexcept {
    if (m_pchData == emptyData()) return;
    header()->nLength = static_cast<int>(nLength);
    m_pchData[nLength] = '\0';
}

LPTSTR CString::GetBuffer() {
    return GetBuffer(GetLength());
}

LPTSTR CString::GetBuffer(int nMinBufferLength) {
    // Even an empty buffer is the caller's to write to, so the shared empty one will not do.
    reserve(std::max<size_t>(atLeastZero(nMinBufferLength), 1));
    return m_pchData;
}

LPTSTR CString::GetBufferSetLength(int nLength) {
    GetBuffer(nLength);
    setLength(atLeastZero(nLength));
    return m_pchData;
}

void CString::ReleaseBuffer(int nNewLength) {
    const auto capacity = static_cast<size_t>(header()->nCapacity);
    setLength(nNewLength < 0 ? strnlen(m_pchData, capacity) : std::min(atLeastZero(nNewLength), capacity));
}

void CString::Preallocate(int nLength) {
    reserve(atLeastZero(nLength));
}

void CString::Truncate(int nNewLength) {
    setLength(std::min(atLeastZero(nNewLength), static_cast<size_t>(GetLength())));
}

void CString::FreeExtra() {
    if (GetLength() < GetAllocLength()) *this = CString(*this);
}

void CString::formatArguments(LPCTSTR pszFormat, ...) {
    va_list args;
    va_start(args, pszFormat);
    try {
        FormatV(pszFormat, args);
    } catch (...) {
        va_end(args);
        throw;
    }
    va_end(args);
}

void CString::FormatV(LPCTSTR pszFormat, va_list args) {
    if (pszFormat == nullptr) AfxThrowInvalidArgException();
    va_list again;
    va_copy(again, args);
    const int length = std::vsnprintf(nullptr, 0, pszFormat, again);
    va_end(again);
    if (length < 0) AfxThrowInvalidArgException();
    CString result;
    std::vsnprintf(result.GetBufferSetLength(length), static_cast<size_t>(length) + 1, pszFormat, args);
    *this = std::move(result);
}

BOOL CString::LoadString(UINT nID) {
    return LoadString(AfxFindStringResourceHandle(nID), nID);
}

BOOL CString::LoadString(HINSTANCE hInstance, UINT nID) {
    LPCWSTR text = nullptr; // with a buffer size of 0 the system gives the resource itself, not terminated
    const int length = ::LoadStringW(hInstance, nID, reinterpret_cast<LPWSTR>(&text), 0);
    if (length <= 0) return FALSE;
    assignWide(text, static_cast<size_t>(length));
    return TRUE;
}

BSTR CString::AllocSysString() const {
    const int source = GetLength();
    const int needed = source == 0 ? 0 : ::MultiByteToWideChar(CP_ACP, 0, m_pchData, source, nullptr, 0);
    const BSTR result = ::SysAllocStringLen(nullptr, static_cast<UINT>(needed));
    if (result == nullptr) AfxThrowMemoryException();
    if (needed > 0) ::MultiByteToWideChar(CP_ACP, 0, m_pchData, source, result, needed);
    return result;
}

BSTR CString::SetSysString(BSTR* pbstr) const {
    const BSTR fresh = AllocSysString();
    ::SysFreeString(std::exchange(*pbstr, fresh));
    return fresh;
}

CString AFXAPI operator+(const CString& str1, const CString& str2) {
    return std::move(CString(str1) += str2);
}
CString AFXAPI operator+(const CString& str1, LPCTSTR psz2) {
    return std::move(CString(str1) += psz2);
}
CString AFXAPI operator+(LPCTSTR psz1, const CString& str2) {
    CString result;
    result += psz1;
    return result += str2;
}
CString AFXAPI operator+(const CString& str1, TCHAR ch2) {
    return std::move(CString(str1) += ch2);
}
CString AFXAPI operator+(TCHAR ch1, const CString& str2) {
    return std::move(CString(ch1) += str2);
}
