// SPDX-License-Identifier: MIT
// What CString finds, compares, takes out and changes.

#include "afx.h"

#include <algorithm>
#include <cstring>
#include <string_view>

namespace {

constexpr LPCTSTR whitespace = " \t\n\v\f\r";

std::string_view view(const CString& text) {
    return {text.GetString(), static_cast<size_t>(text.GetLength())};
}
std::string_view view(LPCTSTR text) {
    return text == nullptr ? std::string_view() : std::string_view(text);
}
CString toString(std::string_view text) {
    return {text.data(), static_cast<int>(text.size())};
}
int toIndex(size_t position) {
    return position == std::string_view::npos ? -1 : static_cast<int>(position);
}

/// char_traits compares as unsigned characters, which is the order promised.
int compare(std::string_view left, std::string_view right) {
    return left.compare(right);
}

/// By the rules of the user's locale; plainly where the system has none for the text.
int collate(const CString& left, LPCTSTR right, DWORD flags) {
    const std::string_view other = view(right);
    const int result = ::CompareStringA(LOCALE_USER_DEFAULT, flags, left, left.GetLength(), other.data(),
                                        static_cast<int>(other.size()));
    return result == 0 ? compare(view(left), other) : result - CSTR_EQUAL;
}

CString& trim(CString& text, std::string_view targets, bool left, bool right) {
    std::string_view rest = view(text);
    if (left) rest.remove_prefix(std::min(rest.find_first_not_of(targets), rest.size()));
    if (right) rest.remove_suffix(rest.size() - (rest.find_last_not_of(targets) + 1));
    if (rest.size() != static_cast<size_t>(text.GetLength())) text = toString(rest);
    return text;
}

} // namespace

bool AFXAPI operator==(const CString& str1, const CString& str2) noexcept {
    return view(str1) == view(str2);
}
bool AFXAPI operator<(const CString& str1, const CString& str2) noexcept {
    return view(str1) < view(str2);
}

int CString::Compare(LPCTSTR psz) const {
    return compare(view(*this), view(psz));
}

int CString::CompareNoCase(LPCTSTR psz) const {
    CString left(*this), right(view(psz).data(), static_cast<int>(view(psz).size()));
    return compare(view(left.MakeLower()), view(right.MakeLower()));
}

int CString::Collate(LPCTSTR psz) const {
    return collate(*this, psz, 0);
}
int CString::CollateNoCase(LPCTSTR psz) const {
    return collate(*this, psz, NORM_IGNORECASE);
}

CString CString::Mid(int iFirst) const {
    return Mid(iFirst, GetLength());
}

CString CString::Mid(int iFirst, int nCount) const {
    const int first = std::clamp(iFirst, 0, GetLength());
    return {m_pchData + first, std::clamp(nCount, 0, GetLength() - first)};
}

CString CString::Left(int nCount) const {
    return Mid(0, nCount);
}

CString CString::Right(int nCount) const {
    const int count = std::clamp(nCount, 0, GetLength());
    return {m_pchData + GetLength() - count, count};
}

CString CString::SpanIncluding(LPCTSTR pszCharSet) const {
    return toString(view(*this).substr(0, view(*this).find_first_not_of(view(pszCharSet))));
}

CString CString::SpanExcluding(LPCTSTR pszCharSet) const {
    return toString(view(*this).substr(0, view(*this).find_first_of(view(pszCharSet))));
}

CString CString::Tokenize(LPCTSTR pszTokens, int& iStart) const {
    if (iStart >= 0 && iStart <= GetLength()) {
        const std::string_view text = view(*this);
        const size_t first = text.find_first_not_of(view(pszTokens), static_cast<size_t>(iStart));
        if (first != std::string_view::npos) {
            const size_t last = std::min(text.find_first_of(view(pszTokens), first), text.size());
            iStart = static_cast<int>(last) + 1;
            return toString(text.substr(first, last - first));
        }
    }
    iStart = -1;
    return {};
}

int CString::Find(TCHAR ch, int iStart) const {
    return iStart < 0 ? -1 : toIndex(view(*this).find(ch, static_cast<size_t>(iStart)));
}

int CString::Find(LPCTSTR pszSub, int iStart) const {
    return iStart < 0 || pszSub == nullptr ? -1
                                           : toIndex(view(*this).find(pszSub, static_cast<size_t>(iStart)));
}

int CString::ReverseFind(TCHAR ch) const {
    return toIndex(view(*this).rfind(ch));
}
int CString::FindOneOf(LPCTSTR pszCharSet) const {
    return toIndex(view(*this).find_first_of(view(pszCharSet)));
}

CString& CString::MakeUpper() {
    if (!IsEmpty()) ::CharUpperBuffA(m_pchData, static_cast<DWORD>(GetLength()));
    return *this;
}

CString& CString::MakeLower() {
    if (!IsEmpty()) ::CharLowerBuffA(m_pchData, static_cast<DWORD>(GetLength()));
    return *this;
}

CString& CString::MakeReverse() {
    std::reverse(m_pchData, m_pchData + GetLength());
    return *this;
}

CString& CString::TrimLeft() {
    return trim(*this, whitespace, true, false);
}
CString& CString::TrimLeft(TCHAR chTarget) {
    return trim(*this, {&chTarget, 1}, true, false);
}
CString& CString::TrimLeft(LPCTSTR pszTargets) {
    return trim(*this, view(pszTargets), true, false);
}
CString& CString::TrimRight() {
    return trim(*this, whitespace, false, true);
}
CString& CString::TrimRight(TCHAR chTarget) {
    return trim(*this, {&chTarget, 1}, false, true);
}
CString& CString::TrimRight(LPCTSTR pszTargets) {
    return trim(*this, view(pszTargets), false, true);
}
CString& CString::Trim() {
    return trim(*this, whitespace, true, true);
}
CString& CString::Trim(TCHAR chTarget) {
    return trim(*this, {&chTarget, 1}, true, true);
}
CString& CString::Trim(LPCTSTR pszTargets) {
    return trim(*this, view(pszTargets), true, true);
}

int CString::Replace(TCHAR chOld, TCHAR chNew) {
    int count = 0;
    for (char* p = m_pchData; p != m_pchData + GetLength(); ++p) {
        if (*p != chOld) continue;
        *p = chNew;
        ++count;
    }
    return count;
}

int CString::Replace(LPCTSTR pszOld, LPCTSTR pszNew) {
    const std::string_view text = view(*this), from = view(pszOld);
    if (from.empty()) return 0;
    CString result;
    size_t done = 0;
    int count = 0;
    for (size_t at = text.find(from); at != std::string_view::npos; at = text.find(from, done)) {
        result.append(text.data() + done, at - done);
        result += pszNew;
        done = at + from.size();
        ++count;
    }
    if (count == 0) return 0;
    result.append(text.data() + done, text.size() - done);
    *this = std::move(result);
    return count;
}

int CString::Remove(TCHAR chRemove) {
    const int before = GetLength();
    char* const end = std::remove(m_pchData, m_pchData + before, chRemove);
    setLength(static_cast<size_t>(end - m_pchData));
    return before - GetLength();
}

int CString::Insert(int iIndex, TCHAR ch) {
    replaceRange(static_cast<size_t>(std::clamp(iIndex, 0, GetLength())), 0, &ch, 1);
    return GetLength();
}

int CString::Insert(int iIndex, LPCTSTR psz) {
    replaceRange(static_cast<size_t>(std::clamp(iIndex, 0, GetLength())), 0, psz, view(psz).size());
    return GetLength();
}

int CString::Delete(int iIndex, int nCount) {
    const int first = std::clamp(iIndex, 0, GetLength());
    replaceRange(static_cast<size_t>(first), static_cast<size_t>(std::clamp(nCount, 0, GetLength() - first)),
                 "", 0);
    return GetLength();
}
