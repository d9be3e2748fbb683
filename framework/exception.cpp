// SPDX-License-Identifier: MIT

#include "afxapp_.h"

#include <iterator>

IMPLEMENT_DYNAMIC(CException, CObject)
IMPLEMENT_DYNAMIC(CSimpleException, CException)
IMPLEMENT_DYNAMIC(CMemoryException, CSimpleException)
IMPLEMENT_DYNAMIC(CNotSupportedException, CSimpleException)
IMPLEMENT_DYNAMIC(CResourceException, CSimpleException)
IMPLEMENT_DYNAMIC(CUserException, CSimpleException)
IMPLEMENT_DYNAMIC(CInvalidArgException, CSimpleException)
IMPLEMENT_DYNAMIC(CFileException, CException)
IMPLEMENT_DYNAMIC(CArchiveException, CException)

namespace {

BOOL giveText(LPCTSTR text, LPTSTR buffer, UINT size, PUINT helpContext) {
    if (helpContext != nullptr) *helpContext = 0;
    if (buffer == nullptr || size == 0) return FALSE;
    ::lstrcpynA(buffer, text == nullptr ? "" : text, static_cast<int>(size));
    return text != nullptr;
}

struct FileCause {
    DWORD osError;
    int cause;
};

constexpr FileCause fileCauses[] = {
    {ERROR_FILE_NOT_FOUND, CFileException::fileNotFound},
    {ERROR_PATH_NOT_FOUND, CFileException::badPath},
    {ERROR_INVALID_DRIVE, CFileException::badPath},
    {ERROR_INVALID_NAME, CFileException::badPath},
    {ERROR_BAD_PATHNAME, CFileException::badPath},
    {ERROR_BAD_NETPATH, CFileException::badPath},
    {ERROR_BAD_NET_NAME, CFileException::badPath},
    {ERROR_FILENAME_EXCED_RANGE, CFileException::badPath},
    {ERROR_DIRECTORY, CFileException::badPath},
    {ERROR_TOO_MANY_OPEN_FILES, CFileException::tooManyOpenFiles},
    {ERROR_ACCESS_DENIED, CFileException::accessDenied},
    {ERROR_NETWORK_ACCESS_DENIED, CFileException::accessDenied},
    {ERROR_WRITE_PROTECT, CFileException::accessDenied},
    {ERROR_FILE_EXISTS, CFileException::accessDenied},
    {ERROR_ALREADY_EXISTS, CFileException::accessDenied},
    {ERROR_CANNOT_MAKE, CFileException::accessDenied},
    {ERROR_INVALID_HANDLE, CFileException::invalidFile},
    {ERROR_INVALID_TARGET_HANDLE, CFileException::invalidFile},
    {ERROR_CURRENT_DIRECTORY, CFileException::removeCurrentDir},
    {ERROR_DIR_NOT_EMPTY, CFileException::removeCurrentDir},
    {ERROR_SEEK, CFileException::badSeek},
    {ERROR_NEGATIVE_SEEK, CFileException::badSeek},
    {ERROR_SEEK_ON_DEVICE, CFileException::badSeek},
    {ERROR_SHARING_VIOLATION, CFileException::sharingViolation},
    {ERROR_SHARING_BUFFER_EXCEEDED, CFileException::sharingViolation},
    {ERROR_LOCK_VIOLATION, CFileException::lockViolation},
    {ERROR_NOT_LOCKED, CFileException::lockViolation},
    {ERROR_LOCK_FAILED, CFileException::lockViolation},
    {ERROR_DISK_FULL, CFileException::diskFull},
    {ERROR_HANDLE_DISK_FULL, CFileException::diskFull},
    {ERROR_HANDLE_EOF, CFileException::endOfFile},
    {ERROR_CRC, CFileException::hardIO},
    {ERROR_READ_FAULT, CFileException::hardIO},
    {ERROR_WRITE_FAULT, CFileException::hardIO},
    {ERROR_GEN_FAILURE, CFileException::hardIO},
    {ERROR_NOT_READY, CFileException::hardIO},
    {ERROR_SECTOR_NOT_FOUND, CFileException::hardIO},
    {ERROR_IO_DEVICE, CFileException::hardIO},
};

constexpr LPCTSTR fileTexts[] = {
    "No error occurred",
    "An unknown error occurred while accessing",
    "The file could not be found:",
    "The path is not valid:",
    "Too many files are open:",
    "Access was denied:",
    "An invalid file handle was used with",
    "The current folder cannot be removed:",
    "The folder is full:",
    "Seeking failed in",
    "A hardware error occurred while accessing",
    "A sharing violation occurred while accessing",
    "A locking violation occurred while accessing",
    "The disk is full while accessing",
    "The end was passed of",
};

constexpr LPCTSTR archiveTexts[] = {
    "No error occurred",
    "An unknown error occurred while accessing",
    "Writing was tried on an archive for reading:",
    "The end was passed of",
    "Reading was tried on an archive for writing:",
    "The format is not valid in",
    "An object of an unexpected class is in",
    "An object of another version is in",
    "The buffer is full for",
};

template <size_t N>
BOOL giveFileText(const LPCTSTR (&texts)[N], int cause, const CString& fileName, LPTSTR buffer, UINT size,
                  PUINT helpContext) {
    const size_t index = cause >= 0 && cause < static_cast<int>(N) ? static_cast<size_t>(cause) : 1;
    CString text(texts[index]);
    text += ' ';
    text += fileName.IsEmpty() ? "an unnamed file" : fileName.GetString();
    text += '.';
    return giveText(text, buffer, size, helpContext);
}

} // namespace

void CException::Delete() {
    if (m_bAutoDelete) delete this;
}

BOOL CException::GetErrorMessage(LPTSTR lpszError, UINT nMaxError, PUINT pnHelpContext) const {
    return giveText(nullptr, lpszError, nMaxError, pnHelpContext);
}

int CException::ReportError(UINT nType, UINT nMessageID) {
    char text[512];
    if (GetErrorMessage(text, std::size(text))) return AfxMessageBox(text, nType);
    CString fallback("No error message is available.");
    if (nMessageID != 0) fallback.LoadString(nMessageID);
    return AfxMessageBox(fallback, nType);
}

BOOL CSimpleException::GetErrorMessage(LPTSTR lpszError, UINT nMaxError, PUINT pnHelpContext) const {
    return giveText(m_lpszText, lpszError, nMaxError, pnHelpContext);
}

CFileException::CFileException(int cause, LONG lOsError, LPCTSTR lpszArchiveName)
    : m_cause(cause), m_lOsError(lOsError), m_strFileName(lpszArchiveName) {}

int PASCAL CFileException::OsErrorToException(LONG lOsError) {
    if (lOsError == NO_ERROR) return none;
    for (const FileCause& known : fileCauses) {
        if (known.osError == static_cast<DWORD>(lOsError)) return known.cause;
    }
    return genericException;
}

void PASCAL CFileException::ThrowOsError(LONG lOsError, LPCTSTR lpszFileName) {
    AfxThrowFileException(OsErrorToException(lOsError), lOsError, lpszFileName);
}

BOOL CFileException::GetErrorMessage(LPTSTR lpszError, UINT nMaxError, PUINT pnHelpContext) const {
    return giveFileText(fileTexts, m_cause, m_strFileName, lpszError, nMaxError, pnHelpContext);
}

CArchiveException::CArchiveException(int cause, LPCTSTR lpszArchiveName)
    : m_cause(cause), m_strFileName(lpszArchiveName) {}

BOOL CArchiveException::GetErrorMessage(LPTSTR lpszError, UINT nMaxError, PUINT pnHelpContext) const {
    return giveFileText(archiveTexts, m_cause, m_strFileName, lpszError, nMaxError, pnHelpContext);
}

void AFXAPI AfxThrowMemoryException() {
    // Made before it is needed: there may be no memory for one then.
    static CMemoryException exception(FALSE, "Out of memory.");
    throw &exception;
}

void AFXAPI AfxThrowNotSupportedException() {
    static CNotSupportedException exception(FALSE, "An unsupported operation was attempted.");
    throw &exception;
}

void AFXAPI AfxThrowResourceException() {
    static CResourceException exception(FALSE, "A required resource was not available.");
    throw &exception;
}

void AFXAPI AfxThrowUserException() {
    static CUserException exception(FALSE);
    throw &exception;
}

void AFXAPI AfxThrowInvalidArgException() {
    static CInvalidArgException exception(FALSE, "An invalid argument was encountered.");
    throw &exception;
}

void AFXAPI AfxThrowFileException(int cause, LONG lOsError, LPCTSTR lpszFileName) {
    throw new CFileException(cause, lOsError, lpszFileName);
}

void AFXAPI AfxThrowArchiveException(int cause, LPCTSTR lpszArchiveName) {
    throw new CArchiveException(cause, lpszArchiveName);
}
