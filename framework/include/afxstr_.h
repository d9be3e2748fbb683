// SPDX-License-Identifier: MIT
#pragma once

#include <cstdarg>
#include <type_traits>

#include "afxver_.h"

class CString;

namespace vornafx {

/// What a variadic function gets for an argument: a string object goes as its characters.
template <typename T>
auto variadicArgument(const T& value) {
    if constexpr (std::is_base_of_v<CString, T>) {
        return static_cast<LPCTSTR>(value);
    } else {
        static_assert(std::is_trivially_copyable_v<T>,
                      "a format argument is a number, a pointer or a CString");
        return value;
    }
}

} // namespace vornafx

/// A string of ANSI characters that owns them. One pointer in size, to the terminated characters.
///
/// Every character counts, embedded nulls included; functions that take a bare `LPCTSTR` stop at its
/// first null. A null `LPCTSTR` stands for the empty string. Indices out of range are clamped where a
/// part is taken and undefined where one character is. Lack of memory throws `CMemoryException*`.
class VORNAFX_API CString {
public:
    CString() noexcept;
    CString(const CString& strSrc);
    CString(CString&& strSrc) noexcept;
    /// Also takes `MAKEINTRESOURCE(id)`: the string resource of that id, empty when there is none.
    CString(LPCTSTR pszSrc);
    CString(LPCWSTR pszSrc);
    CString(const unsigned char* pszSrc);
    CString(LPCTSTR pchSrc, int nLength);
    CString(LPCWSTR pchSrc, int nLength);
    explicit CString(TCHAR ch, int nRepeat = 1);
    /// The value converted to a string by the system's rules; throws `COleException*` when there is no
    /// conversion.
    explicit CString(const VARIANT& varSrc);
    ~CString();

    CString& operator=(const CString& strSrc);
    CString& operator=(CString&& strSrc) noexcept;
    CString& operator=(LPCTSTR pszSrc);
    CString& operator=(LPCWSTR pszSrc);
    CString& operator=(const unsigned char* pszSrc);
    CString& operator=(TCHAR ch);

    CString& operator+=(const CString& strSrc);
    CString& operator+=(LPCTSTR pszSrc);
    CString& operator+=(TCHAR ch);
    void Append(LPCTSTR pszSrc);
    void Append(LPCTSTR pchSrc, int nLength);
    void AppendChar(TCHAR ch);
    void SetString(LPCTSTR pszSrc);
    void SetString(LPCTSTR pchSrc, int nLength);

    int GetLength() const noexcept { return header()->nLength; }
    int GetAllocLength() const noexcept { return header()->nCapacity; }
    BOOL IsEmpty() const noexcept { return GetLength() == 0; }
    void Empty() noexcept;
    TCHAR GetAt(int iChar) const { return m_pchData[iChar]; }
    TCHAR operator[](int iChar) const { return m_pchData[iChar]; }
    void SetAt(int iChar, TCHAR ch);
    LPCTSTR GetString() const noexcept { return m_pchData; }
    operator LPCTSTR() const noexcept { return m_pchData; }

    /// Less than, equal to or greater than 0 as this string sorts before, with or after the other.
    int Compare(LPCTSTR psz) const;
    int CompareNoCase(LPCTSTR psz) const;
    /// By the rules of the current locale.
    int Collate(LPCTSTR psz) const;
    int CollateNoCase(LPCTSTR psz) const;

    CString Mid(int iFirst) const;
    CString Mid(int iFirst, int nCount) const;
    CString Left(int nCount) const;
    CString Right(int nCount) const;
    /// The longest beginning made only of, or of none of, the characters of a set.
    CString SpanIncluding(LPCTSTR pszCharSet) const;
    CString SpanExcluding(LPCTSTR pszCharSet) const;
    /// The next piece between any of the separator characters from `iStart` on; `iStart` becomes the
    /// index after it, -1 with an empty result when there is none left.
    CString Tokenize(LPCTSTR pszTokens, int& iStart) const;

    /// Index of the first find from `iStart` on, or -1.
    int Find(TCHAR ch, int iStart = 0) const;
    int Find(LPCTSTR pszSub, int iStart = 0) const;
    int ReverseFind(TCHAR ch) const;
    int FindOneOf(LPCTSTR pszCharSet) const;

    CString& MakeUpper();
    CString& MakeLower();
    CString& MakeReverse();
    CString& TrimLeft();
    CString& TrimLeft(TCHAR chTarget);
    CString& TrimLeft(LPCTSTR pszTargets);
    CString& TrimRight();
    CString& TrimRight(TCHAR chTarget);
    CString& TrimRight(LPCTSTR pszTargets);
    CString& Trim();
    CString& Trim(TCHAR chTarget);
    CString& Trim(LPCTSTR pszTargets);

    /// Returns how many were replaced or removed.
    int Replace(TCHAR chOld, TCHAR chNew);
    int Replace(LPCTSTR pszOld, LPCTSTR pszNew);
    int Remove(TCHAR chRemove);
    /// Returns the new length. An index past the end appends.
    int Insert(int iIndex, TCHAR ch);
    int Insert(int iIndex, LPCTSTR psz);
    int Delete(int iIndex, int nCount = 1);

    /// As `printf`; a `CString` may stand for `%s`. The resource form takes the format from the string table.
    template <typename... Args>
    void Format(LPCTSTR pszFormat, Args... args) {
        formatArguments(pszFormat, vornafx::variadicArgument(args)...);
    }
    template <typename... Args>
    void Format(UINT nFormatID, Args... args) {
        CString strFormat;
        if (strFormat.LoadString(nFormatID)) formatArguments(strFormat, vornafx::variadicArgument(args)...);
    }
    template <typename... Args>
    void AppendFormat(LPCTSTR pszFormat, Args... args) {
        CString strMore;
        strMore.formatArguments(pszFormat, vornafx::variadicArgument(args)...);
        *this += strMore;
    }
    void FormatV(LPCTSTR pszFormat, va_list args);

    /// From the string table of the current module state, or of `hInstance`; 0 with nothing changed when it
    /// is not there.
    BOOL LoadString(UINT nID);
    BOOL LoadString(HINSTANCE hInstance, UINT nID);

    /// Room for `nMinBufferLength` characters and the null, to write to. Call `ReleaseBuffer` before using
    /// the string otherwise; -1 takes the length up to the first null.
    LPTSTR GetBuffer();
    LPTSTR GetBuffer(int nMinBufferLength);
    LPTSTR GetBufferSetLength(int nLength);
    void ReleaseBuffer(int nNewLength = -1);
    void ReleaseBufferSetLength(int nNewLength) { ReleaseBuffer(nNewLength); }
    void Preallocate(int nLength);
    void Truncate(int nNewLength);
    void FreeExtra();

    /// A new BSTR of the same characters, owned by the caller.
    BSTR AllocSysString() const;
    BSTR SetSysString(BSTR* pbstr) const;

private:
    struct Header {
        int nLength;
        int nCapacity;
    };

    Header* header() const noexcept { return reinterpret_cast<Header*>(m_pchData) - 1; }
    static char* emptyData() noexcept;
    void formatArguments(LPCTSTR pszFormat, ...);
    void assign(LPCTSTR pch, size_t nLength);
    void append(LPCTSTR pch, size_t nLength);
    void replaceRange(size_t nFirst, size_t nOld, LPCTSTR pch, size_t nNew);
    void assignWide(LPCWSTR pch, size_t nLength);
    void reserve(size_t nLength);
    void setLength(size_t nLength) noexcept;

    char* m_pchData;
};

using CStringA = CString;

VORNAFX_API CString AFXAPI operator+(const CString& str1, const CString& str2);
VORNAFX_API CString AFXAPI operator+(const CString& str1, LPCTSTR psz2);
VORNAFX_API CString AFXAPI operator+(LPCTSTR psz1, const CString& str2);
VORNAFX_API CString AFXAPI operator+(const CString& str1, TCHAR ch2);
VORNAFX_API CString AFXAPI operator+(TCHAR ch1, const CString& str2);

/// Whole strings, embedded nulls included; the order is that of the unsigned characters.
VORNAFX_API bool AFXAPI operator==(const CString& str1, const CString& str2) noexcept;
VORNAFX_API bool AFXAPI operator<(const CString& str1, const CString& str2) noexcept;
inline bool operator==(const CString& str1, LPCTSTR psz2) {
    return str1.Compare(psz2) == 0;
}
inline bool operator==(LPCTSTR psz1, const CString& str2) {
    return str2.Compare(psz1) == 0;
}
inline bool operator!=(const CString& str1, const CString& str2) {
    return !(str1 == str2);
}
inline bool operator!=(const CString& str1, LPCTSTR psz2) {
    return !(str1 == psz2);
}
inline bool operator!=(LPCTSTR psz1, const CString& str2) {
    return !(str2 == psz1);
}
inline bool operator<(const CString& str1, LPCTSTR psz2) {
    return str1.Compare(psz2) < 0;
}
inline bool operator<(LPCTSTR psz1, const CString& str2) {
    return str2.Compare(psz1) > 0;
}
inline bool operator>(const CString& str1, const CString& str2) {
    return str2 < str1;
}
inline bool operator>(const CString& str1, LPCTSTR psz2) {
    return str1.Compare(psz2) > 0;
}
inline bool operator>(LPCTSTR psz1, const CString& str2) {
    return str2.Compare(psz1) < 0;
}
inline bool operator<=(const CString& str1, const CString& str2) {
    return !(str2 < str1);
}
inline bool operator<=(const CString& str1, LPCTSTR psz2) {
    return str1.Compare(psz2) <= 0;
}
inline bool operator<=(LPCTSTR psz1, const CString& str2) {
    return str2.Compare(psz1) >= 0;
}
inline bool operator>=(const CString& str1, const CString& str2) {
    return !(str1 < str2);
}
inline bool operator>=(const CString& str1, LPCTSTR psz2) {
    return str1.Compare(psz2) >= 0;
}
inline bool operator>=(LPCTSTR psz1, const CString& str2) {
    return str2.Compare(psz1) <= 0;
}
