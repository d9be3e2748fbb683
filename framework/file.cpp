// SPDX-License-Identifier: MIT

#include "afx.h"

#include "common_dialog_library.h"

#include <commdlg.h>

#include <limits>
#include <utility>

IMPLEMENT_DYNAMIC(CFile, CObject)

const HANDLE CFile::hFileNull = INVALID_HANDLE_VALUE;

namespace {

/// The absolute form of a path; the path itself when the system knows none.
CString fullPath(LPCTSTR path) {
    CString result;
    const DWORD needed = ::GetFullPathNameA(path, 0, nullptr, nullptr);
    if (needed == 0) return path;
    const DWORD length =
        ::GetFullPathNameA(path, needed, result.GetBuffer(static_cast<int>(needed)), nullptr);
    result.ReleaseBuffer(static_cast<int>(length < needed ? length : 0));
    return result;
}

LPCTSTR fileNameIn(const CString& path) {
    const CString separators("\\/:");
    int start = path.GetLength();
    while (start > 0 && separators.Find(path[start - 1]) < 0)
        --start;
    return path.GetString() + start;
}

LARGE_INTEGER large(LONGLONG value) {
    LARGE_INTEGER result;
    result.QuadPart = value;
    return result;
}

struct OpenArguments {
    DWORD access = 0, share = 0, disposition = 0, attributes = 0;
};

/// What CreateFile gets for open flags; false for a combination that means nothing.
bool translate(UINT flags, OpenArguments& result) {
    switch (flags & (CFile::modeWrite | CFile::modeReadWrite)) {
    case CFile::modeRead:
        result.access = GENERIC_READ;
        break;
    case CFile::modeWrite:
        result.access = GENERIC_WRITE;
        break;
    case CFile::modeReadWrite:
        result.access = GENERIC_READ | GENERIC_WRITE;
        break;
    default:
        return false;
    }
    switch (flags & 0x70) {
    case CFile::shareCompat:
    case CFile::shareExclusive:
        result.share = 0;
        break;
    case CFile::shareDenyWrite:
        result.share = FILE_SHARE_READ;
        break;
    case CFile::shareDenyRead:
        result.share = FILE_SHARE_WRITE;
        break;
    case CFile::shareDenyNone:
        result.share = FILE_SHARE_READ | FILE_SHARE_WRITE;
        break;
    default:
        return false;
    }
    if ((flags & CFile::modeCreate) == 0) {
        result.disposition = OPEN_EXISTING;
    } else {
        result.disposition = (flags & CFile::modeNoTruncate) != 0 ? OPEN_ALWAYS : CREATE_ALWAYS;
    }
    result.attributes = FILE_ATTRIBUTE_NORMAL;
    if ((flags & CFile::osNoBuffer) != 0) result.attributes |= FILE_FLAG_NO_BUFFERING;
    if ((flags & CFile::osWriteThrough) != 0) result.attributes |= FILE_FLAG_WRITE_THROUGH;
    if ((flags & CFile::osRandomAccess) != 0) result.attributes |= FILE_FLAG_RANDOM_ACCESS;
    if ((flags & CFile::osSequentialScan) != 0) result.attributes |= FILE_FLAG_SEQUENTIAL_SCAN;
    return true;
}

} // namespace

CFile::CFile() : m_hFile(hFileNull), m_bCloseOnDelete(FALSE) {}

CFile::CFile(HANDLE hFile) : m_hFile(hFile), m_bCloseOnDelete(FALSE) {}

CFile::CFile(LPCTSTR lpszFileName, UINT nOpenFlags) : CFile() {
    CFileException failure;
    if (!CFile::Open(lpszFileName, nOpenFlags, &failure)) {
        AfxThrowFileException(failure.m_cause, failure.m_lOsError, failure.m_strFileName);
    }
}

CFile::~CFile() {
    if (m_bCloseOnDelete) CFile::Abort();
}

BOOL CFile::Open(LPCTSTR lpszFileName, UINT nOpenFlags, CFileException* pError) {
    const auto failed = [&](int cause, LONG osError) {
        if (pError != nullptr) {
            pError->m_cause = cause;
            pError->m_lOsError = osError;
            pError->m_strFileName = lpszFileName;
        }
        return FALSE;
    };
    OpenArguments arguments;
    if (!translate(nOpenFlags, arguments))
        return failed(CFileException::genericException, ERROR_INVALID_PARAMETER);
    if (lpszFileName == nullptr || *lpszFileName == '\0')
        return failed(CFileException::badPath, ERROR_INVALID_NAME);
    if (m_bCloseOnDelete) CFile::Abort();

    SECURITY_ATTRIBUTES security{sizeof security, nullptr, (nOpenFlags & modeNoInherit) == 0};
    const HANDLE handle = ::CreateFileA(lpszFileName, arguments.access, arguments.share, &security,
                                        arguments.disposition, arguments.attributes, nullptr);
    if (handle == INVALID_HANDLE_VALUE) {
        const auto error = static_cast<LONG>(::GetLastError());
        return failed(CFileException::OsErrorToException(error), error);
    }
    m_hFile = handle;
    m_bCloseOnDelete = TRUE;
    m_strFileName = fullPath(lpszFileName);
    return TRUE;
}

CFile* CFile::Duplicate() const {
    auto copy = std::make_unique<CFile>();
    const HANDLE process = ::GetCurrentProcess();
    HANDLE handle = nullptr;
    if (!::DuplicateHandle(process, m_hFile, process, &handle, 0, FALSE, DUPLICATE_SAME_ACCESS)) fail();
    copy->m_hFile = handle;
    copy->m_bCloseOnDelete = TRUE;
    copy->m_strFileName = m_strFileName;
    return copy.release();
}

void CFile::fail() const {
    CFileException::ThrowOsError(static_cast<LONG>(::GetLastError()), m_strFileName);
}

UINT CFile::Read(void* lpBuf, UINT nCount) {
    if (nCount == 0) return 0;
    DWORD done = 0;
    if (!::ReadFile(m_hFile, lpBuf, nCount, &done, nullptr)) fail();
    return done;
}

void CFile::Write(const void* lpBuf, UINT nCount) {
    if (nCount == 0) return;
    DWORD done = 0;
    if (!::WriteFile(m_hFile, lpBuf, nCount, &done, nullptr)) fail();
    // A short write without an error is the system's way of saying that the disk is full.
    if (done != nCount) AfxThrowFileException(CFileException::diskFull, -1, m_strFileName);
}

ULONGLONG CFile::Seek(LONGLONG lOff, UINT nFrom) {
    constexpr DWORD origins[] = {FILE_BEGIN, FILE_CURRENT, FILE_END};
    if (nFrom > end) AfxThrowInvalidArgException();
    LARGE_INTEGER position;
    if (!::SetFilePointerEx(m_hFile, large(lOff), &position, origins[nFrom])) fail();
    return static_cast<ULONGLONG>(position.QuadPart);
}

ULONGLONG CFile::GetPosition() const {
    LARGE_INTEGER position;
    if (!::SetFilePointerEx(m_hFile, large(0), &position, FILE_CURRENT)) fail();
    return static_cast<ULONGLONG>(position.QuadPart);
}

ULONGLONG CFile::GetLength() const {
    LARGE_INTEGER length;
    if (!::GetFileSizeEx(m_hFile, &length)) fail();
    return static_cast<ULONGLONG>(length.QuadPart);
}

void CFile::SetLength(ULONGLONG dwNewLen) {
    if (dwNewLen > static_cast<ULONGLONG>(std::numeric_limits<LONGLONG>::max())) {
        AfxThrowFileException(CFileException::badSeek, ERROR_NEGATIVE_SEEK, m_strFileName);
    }
    Seek(static_cast<LONGLONG>(dwNewLen), begin);
    if (!::SetEndOfFile(m_hFile)) fail();
}

void CFile::LockRange(ULONGLONG dwPos, ULONGLONG dwCount) {
    const auto position = large(static_cast<LONGLONG>(dwPos)), count = large(static_cast<LONGLONG>(dwCount));
    if (!::LockFile(m_hFile, position.LowPart, static_cast<DWORD>(position.HighPart), count.LowPart,
                    static_cast<DWORD>(count.HighPart)))
        fail();
}

void CFile::UnlockRange(ULONGLONG dwPos, ULONGLONG dwCount) {
    const auto position = large(static_cast<LONGLONG>(dwPos)), count = large(static_cast<LONGLONG>(dwCount));
    if (!::UnlockFile(m_hFile, position.LowPart, static_cast<DWORD>(position.HighPart), count.LowPart,
                      static_cast<DWORD>(count.HighPart)))
        fail();
}

void CFile::Flush() {
    if (m_hFile != hFileNull && !::FlushFileBuffers(m_hFile)) fail();
}

void CFile::Close() {
    const HANDLE handle = std::exchange(m_hFile, hFileNull);
    m_bCloseOnDelete = FALSE;
    const BOOL closed = handle == hFileNull || ::CloseHandle(handle);
    if (!closed) fail();
    m_strFileName.Empty();
}

void CFile::Abort() {
    const HANDLE handle = std::exchange(m_hFile, hFileNull);
    m_bCloseOnDelete = FALSE;
    if (handle != hFileNull) ::CloseHandle(handle);
    m_strFileName.Empty();
}

CString CFile::GetFilePath() const {
    return m_strFileName;
}
void CFile::SetFilePath(LPCTSTR lpszNewName) {
    m_strFileName = lpszNewName;
}
CString CFile::GetFileName() const {
    return fileNameIn(m_strFileName);
}

CString CFile::GetFileTitle() const {
    char title[MAX_PATH];
    auto* getFileTitle = vornafx::commonDialogFunction<decltype(::GetFileTitleA)>("GetFileTitleA");
    if (!m_strFileName.IsEmpty() && getFileTitle != nullptr &&
        getFileTitle(m_strFileName, title, sizeof title) == 0)
        return title;
    return GetFileName();
}

BOOL CFile::GetStatus(CFileStatus& rStatus) const {
    return GetStatus(m_strFileName, rStatus);
}

BOOL PASCAL CFile::GetStatus(LPCTSTR lpszFileName, CFileStatus& rStatus) {
    WIN32_FILE_ATTRIBUTE_DATA data;
    if (lpszFileName == nullptr || !::GetFileAttributesExA(lpszFileName, GetFileExInfoStandard, &data))
        return FALSE;
    rStatus.m_size = ULONGLONG{data.nFileSizeHigh} << 32 | data.nFileSizeLow;
    rStatus.m_attribute = static_cast<BYTE>(data.dwFileAttributes & ~DWORD{FILE_ATTRIBUTE_NORMAL});
    ::lstrcpynA(rStatus.m_szFullName, fullPath(lpszFileName), MAX_PATH);
    return TRUE;
}

void PASCAL CFile::Rename(LPCTSTR lpszOldName, LPCTSTR lpszNewName) {
    if (!::MoveFileA(lpszOldName, lpszNewName)) {
        CFileException::ThrowOsError(static_cast<LONG>(::GetLastError()), lpszOldName);
    }
}

void PASCAL CFile::Remove(LPCTSTR lpszFileName) {
    if (!::DeleteFileA(lpszFileName)) {
        CFileException::ThrowOsError(static_cast<LONG>(::GetLastError()), lpszFileName);
    }
}

void CFile::AssertValid() const {
    CObject::AssertValid();
}

void CFile::Dump(CDumpContext& dc) const {
    CObject::Dump(dc);
    dc << "file " << m_strFileName << ", handle " << static_cast<const void*>(m_hFile) << "\n";
}
