// SPDX-License-Identifier: MIT

#include "afx.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <utility>

IMPLEMENT_DYNAMIC(CMemFile, CFile)

CMemFile::CMemFile(UINT nGrowBytes)
    : m_nGrowBytes(nGrowBytes), m_nPosition(0), m_nBufferSize(0), m_nFileSize(0), m_lpBuffer(nullptr),
      m_bAutoDelete(TRUE) {}

CMemFile::CMemFile(BYTE* lpBuffer, UINT nBufferSize, UINT nGrowBytes) : CMemFile(nGrowBytes) {
    CMemFile::Attach(lpBuffer, nBufferSize, nGrowBytes);
}

CMemFile::~CMemFile() {
    CMemFile::Close();
}

void CMemFile::Attach(BYTE* lpBuffer, UINT nBufferSize, UINT nGrowBytes) {
    Close();
    m_nGrowBytes = nGrowBytes;
    m_lpBuffer = lpBuffer;
    m_nBufferSize = lpBuffer == nullptr ? 0 : nBufferSize;
    m_nFileSize = nGrowBytes == 0 ? m_nBufferSize : 0;
    m_bAutoDelete = FALSE;
}

BYTE* CMemFile::Detach() {
    m_nFileSize = m_nBufferSize = m_nPosition = 0;
    return std::exchange(m_lpBuffer, nullptr);
}

BYTE* CMemFile::Alloc(SIZE_T nBytes) {
    return static_cast<BYTE*>(std::malloc(nBytes));
}
BYTE* CMemFile::Realloc(BYTE* lpMem, SIZE_T nBytes) {
    return static_cast<BYTE*>(std::realloc(lpMem, nBytes));
}
void CMemFile::Free(BYTE* lpMem) {
    std::free(lpMem);
}

BYTE* CMemFile::Memcpy(BYTE* lpMemTarget, const BYTE* lpMemSource, SIZE_T nBytes) {
    return static_cast<BYTE*>(std::memcpy(lpMemTarget, lpMemSource, nBytes));
}

/// Makes the buffer at least as large as asked for, in whole steps; throws and changes nothing when it
/// cannot.
void CMemFile::GrowFile(SIZE_T dwNewLen) {
    if (dwNewLen <= m_nBufferSize) return;
    constexpr SIZE_T largest = std::numeric_limits<SIZE_T>::max() / 2;
    if (m_nGrowBytes == 0 || dwNewLen > largest) AfxThrowMemoryException();
    // Half as much again at least, so that a large file written in small pieces is not copied for each step.
    const SIZE_T wanted = std::max(dwNewLen, m_nBufferSize + m_nBufferSize / 2);
    const SIZE_T steps = (wanted + m_nGrowBytes - 1) / m_nGrowBytes;
    const SIZE_T newSize = steps * m_nGrowBytes;
    BYTE* grown = m_lpBuffer == nullptr ? Alloc(newSize) : Realloc(m_lpBuffer, newSize);
    if (grown == nullptr) AfxThrowMemoryException();
    m_lpBuffer = grown;
    m_nBufferSize = newSize;
}

/// Lengthens the file; what nobody has written reads as zero.
void CMemFile::extend(ULONGLONG dwNewLen) {
    if (dwNewLen <= m_nFileSize) return;
    GrowFile(static_cast<SIZE_T>(dwNewLen));
    std::memset(m_lpBuffer + m_nFileSize, 0, static_cast<SIZE_T>(dwNewLen) - m_nFileSize);
    m_nFileSize = static_cast<SIZE_T>(dwNewLen);
}

ULONGLONG CMemFile::GetPosition() const {
    return m_nPosition;
}
ULONGLONG CMemFile::GetLength() const {
    return m_nFileSize;
}
CFile* CMemFile::Duplicate() const {
    AfxThrowNotSupportedException();
}

ULONGLONG CMemFile::Seek(LONGLONG lOff, UINT nFrom) {
    if (nFrom > end) AfxThrowInvalidArgException();
    const SIZE_T origins[] = {0, m_nPosition, m_nFileSize};
    LONGLONG position = 0;
    if (__builtin_add_overflow(static_cast<LONGLONG>(origins[nFrom]), lOff, &position) || position < 0) {
        AfxThrowFileException(CFileException::badSeek);
    }
    m_nPosition = static_cast<SIZE_T>(position);
    return m_nPosition;
}

void CMemFile::SetLength(ULONGLONG dwNewLen) {
    extend(dwNewLen);
    m_nFileSize = static_cast<SIZE_T>(dwNewLen);
    m_nPosition = std::min(m_nPosition, m_nFileSize);
}

UINT CMemFile::Read(void* lpBuf, UINT nCount) {
    if (nCount == 0 || m_nPosition >= m_nFileSize) return 0;
    const SIZE_T count = std::min<SIZE_T>(nCount, m_nFileSize - m_nPosition);
    Memcpy(static_cast<BYTE*>(lpBuf), m_lpBuffer + m_nPosition, count);
    m_nPosition += count;
    return static_cast<UINT>(count);
}

void CMemFile::Write(const void* lpBuf, UINT nCount) {
    if (nCount == 0) return;
    const ULONGLONG newEnd = ULONGLONG{m_nPosition} + nCount;
    if (newEnd > m_nFileSize) {
        // The bytes about to be written need no zeros first.
        GrowFile(static_cast<SIZE_T>(newEnd));
        extend(m_nPosition);
        m_nFileSize = static_cast<SIZE_T>(newEnd);
    }
    Memcpy(m_lpBuffer + m_nPosition, static_cast<const BYTE*>(lpBuf), nCount);
    m_nPosition = static_cast<SIZE_T>(newEnd);
}

void CMemFile::LockRange(ULONGLONG, ULONGLONG) {
    AfxThrowNotSupportedException();
}
void CMemFile::UnlockRange(ULONGLONG, ULONGLONG) {
    AfxThrowNotSupportedException();
}
void CMemFile::Flush() {}
void CMemFile::Abort() {
    Close();
}

void CMemFile::Close() {
    BYTE* buffer = Detach();
    if (buffer != nullptr && m_bAutoDelete) Free(buffer);
    m_bAutoDelete = TRUE;
}

void CMemFile::AssertValid() const {
    CFile::AssertValid();
    ASSERT(m_nFileSize <= m_nBufferSize);
}

void CMemFile::Dump(CDumpContext& dc) const {
    CObject::Dump(dc);
    dc << "memory file of " << ULONGLONG{m_nFileSize} << " bytes at " << ULONGLONG{m_nPosition} << "\n";
}
