// SPDX-License-Identifier: MIT
// CArchive's buffer, numbers and strings. Objects are in archive_objects.cpp.

#include "archive_tables.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <utility>

namespace {

constexpr UINT smallestBuffer = 128;
constexpr UINT stringPiece = 0x10000; // the most that is allocated on a file's word alone

constexpr WORD wideMark = 0xFFFE;
constexpr WORD longMark = 0xFFFF;
constexpr DWORD longestMark = 0xFFFFFFFF;

} // namespace

CArchive::CArchive(CFile* pFile, UINT nMode, int nBufSize, void* lpBuf)
    : m_pFile(pFile), m_nMode(nMode), m_pBuffer(static_cast<BYTE*>(lpBuf)),
      m_nBufSize(static_cast<UINT>(std::max(nBufSize, 0))) {
    if (m_pBuffer == nullptr || m_nBufSize == 0) {
        m_nBufSize = std::max(m_nBufSize, smallestBuffer);
        m_pOwnBuffer = std::make_unique<BYTE[]>(m_nBufSize);
        m_pBuffer = m_pOwnBuffer.get();
    }
}

CArchive::~CArchive() {
    if (m_pFile == nullptr || (m_nMode & bNoFlushOnDelete) != 0) return;
    try {
        Close();
    } catch (CException* e) {
        e->Delete();
    }
}

void CArchive::fail(int cause) const {
    AfxThrowArchiveException(cause, m_pFile == nullptr ? CString() : m_pFile->GetFilePath());
}

void CArchive::requireLoading() const {
    if (m_pFile == nullptr) fail(CArchiveException::genericException);
    if (!IsLoading()) fail(CArchiveException::writeOnly);
}

void CArchive::requireStoring() const {
    if (m_pFile == nullptr) fail(CArchiveException::genericException);
    if (!IsStoring()) fail(CArchiveException::readOnly);
}

/// Reads ahead into the empty buffer; false at the end of the file.
bool CArchive::fill() {
    m_nBufCur = m_nBufEnd = 0;
    m_nBufEnd = m_pFile->Read(m_pBuffer, m_nBufSize);
    return m_nBufEnd > 0;
}

UINT CArchive::Read(void* lpBuf, UINT nMax) {
    requireLoading();
    auto* target = static_cast<BYTE*>(lpBuf);
    UINT left = nMax;
    while (left > 0) {
        if (m_nBufCur == m_nBufEnd) {
            if (left >= m_nBufSize) { // as much as would fill the buffer goes straight to its place
                const UINT direct = m_pFile->Read(target, left - left % m_nBufSize);
                if (direct == 0) break;
                target += direct;
                left -= direct;
                continue;
            }
            if (!fill()) break;
        }
        const UINT piece = std::min(left, m_nBufEnd - m_nBufCur);
        std::memcpy(target, m_pBuffer + m_nBufCur, piece);
        m_nBufCur += piece;
        target += piece;
        left -= piece;
    }
    return nMax - left;
}

void CArchive::EnsureRead(void* lpBuf, UINT nCount) {
    if (Read(lpBuf, nCount) != nCount) fail(CArchiveException::endOfFile);
}

void CArchive::Write(const void* lpBuf, UINT nMax) {
    requireStoring();
    if (nMax == 0) return;
    if (nMax > m_nBufSize - m_nBufCur) Flush();
    if (nMax > m_nBufSize) {
        m_pFile->Write(lpBuf, nMax);
        return;
    }
    std::memcpy(m_pBuffer + m_nBufCur, lpBuf, nMax);
    m_nBufCur += nMax;
}

void CArchive::Flush() {
    if (m_pFile == nullptr) fail(CArchiveException::genericException);
    if (IsLoading()) {
        if (m_nBufCur != m_nBufEnd) {
            m_pFile->Seek(static_cast<LONGLONG>(m_nBufCur) - static_cast<LONGLONG>(m_nBufEnd),
                          CFile::current);
        }
        m_nBufCur = m_nBufEnd = 0;
        return;
    }
    if (m_nBufCur > 0) m_pFile->Write(m_pBuffer, m_nBufCur);
    m_nBufCur = 0;
}

void CArchive::Close() {
    if (m_pFile == nullptr) return;
    Flush();
    m_pFile = nullptr;
}

void CArchive::Abort() {
    m_pFile = nullptr;
    m_nBufCur = m_nBufEnd = 0;
}

DWORD_PTR CArchive::ReadCount() {
    WORD small = 0;
    *this >> small;
    if (small != longMark) return small;
    DWORD medium = 0;
    *this >> medium;
    if (medium != longestMark) return medium;
    ULONGLONG large = 0;
    *this >> large;
    return static_cast<DWORD_PTR>(large);
}

void CArchive::WriteCount(DWORD_PTR dwCount) {
    if (dwCount < longMark) {
        *this << static_cast<WORD>(dwCount);
        return;
    }
    *this << longMark;
    if (dwCount < longestMark) {
        *this << static_cast<DWORD>(dwCount);
        return;
    }
    *this << longestMark << ULONGLONG{dwCount};
}

CArchive& CArchive::operator>>(bool& b) {
    BYTE value = 0;
    *this >> value;
    b = value != 0;
    return *this;
}

void CArchive::writeStringLength(size_t nLength) {
    if (nLength < 0xFF) {
        *this << static_cast<BYTE>(nLength);
        return;
    }
    *this << BYTE{0xFF};
    if (nLength < wideMark) {
        *this << static_cast<WORD>(nLength);
        return;
    }
    *this << longMark << static_cast<DWORD>(nLength);
}

ULONGLONG CArchive::readStringLength(bool& bWide) {
    bWide = false;
    for (;;) {
        BYTE tiny = 0;
        *this >> tiny;
        if (tiny < 0xFF) return tiny;
        WORD small = 0;
        *this >> small;
        if (small == wideMark && !bWide) {
            bWide = true; // the mark of a Unicode string, followed by its length
            continue;
        }
        if (small < wideMark) return small;
        if (small == wideMark) fail(CArchiveException::badIndex);
        DWORD medium = 0;
        *this >> medium;
        if (medium != longestMark) return medium;
        ULONGLONG large = 0;
        *this >> large;
        return large;
    }
}

CArchive& CArchive::operator<<(const CString& str) {
    const auto length = static_cast<UINT>(str.GetLength());
    writeStringLength(length);
    Write(str.GetString(), length);
    return *this;
}

CArchive& CArchive::operator<<(LPCTSTR lpsz) {
    return *this << CString(lpsz, lpsz == nullptr ? 0 : ::lstrlenA(lpsz));
}

CArchive& CArchive::operator>>(CString& str) {
    bool wide = false;
    const ULONGLONG length = readStringLength(wide);
    if (length > longestMark) fail(CArchiveException::endOfFile); // more than any string's file holds
    CString read;
    for (ULONGLONG left = wide ? length * sizeof(WCHAR) : length; left > 0;) {
        const auto piece = static_cast<UINT>(std::min<ULONGLONG>(left, stringPiece));
        const int before = read.GetLength();
        if (before > INT_MAX - static_cast<int>(piece)) AfxThrowMemoryException();
        EnsureRead(read.GetBufferSetLength(before + static_cast<int>(piece)) + before, piece);
        left -= piece;
    }
    if (wide) read = CString(reinterpret_cast<LPCWSTR>(read.GetString()), static_cast<int>(length));
    str = std::move(read);
    return *this;
}

bool CArchive::readChar(char& ch) {
    if (m_nBufCur == m_nBufEnd && !fill()) return false;
    ch = static_cast<char>(m_pBuffer[m_nBufCur++]);
    return true;
}

/// Takes one line's end off, of which the first character has been read.
void CArchive::endLine(char ch) {
    char next = '\0';
    if (ch == '\r' && readChar(next) && next != '\n') --m_nBufCur;
}

LPTSTR CArchive::ReadString(LPTSTR lpsz, UINT nMax) {
    requireLoading();
    UINT count = 0;
    char ch = '\0';
    bool ended = false;
    while (count < nMax && !ended && readChar(ch)) {
        ended = ch == '\n' || ch == '\r';
        if (ended) {
            endLine(ch);
        } else {
            lpsz[count++] = ch;
        }
    }
    lpsz[count] = '\0';
    return count > 0 || ended || nMax == 0 ? lpsz : nullptr;
}

BOOL CArchive::ReadString(CString& rString) {
    requireLoading();
    CString line;
    char ch = '\0';
    bool any = false;
    while (readChar(ch)) {
        any = true;
        if (ch == '\n' || ch == '\r') {
            endLine(ch);
            break;
        }
        line += ch;
    }
    rString = std::move(line);
    return any;
}

void CArchive::WriteString(LPCTSTR lpsz) {
    if (lpsz != nullptr) Write(lpsz, static_cast<UINT>(::lstrlenA(lpsz)));
}

CArchive& AFXAPI operator<<(CArchive& ar, SIZE size) {
    return ar << size.cx << size.cy;
}
CArchive& AFXAPI operator<<(CArchive& ar, POINT point) {
    return ar << point.x << point.y;
}
CArchive& AFXAPI operator>>(CArchive& ar, SIZE& size) {
    return ar >> size.cx >> size.cy;
}
CArchive& AFXAPI operator>>(CArchive& ar, POINT& point) {
    return ar >> point.x >> point.y;
}
CArchive& AFXAPI operator<<(CArchive& ar, const RECT& rect) {
    return ar << rect.left << rect.top << rect.right << rect.bottom;
}
CArchive& AFXAPI operator>>(CArchive& ar, RECT& rect) {
    return ar >> rect.left >> rect.top >> rect.right >> rect.bottom;
}
