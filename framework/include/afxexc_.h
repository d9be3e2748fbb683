// SPDX-License-Identifier: MIT
#pragma once

// Part of afx.h, which includes it after CObject and CString.

/// Base of what the framework throws, always by pointer. Who catches one calls `Delete`.
class VORNAFX_API CException : public CObject {
    DECLARE_DYNAMIC(CException)
public:
    CException() = default;
    /// An object that `Delete` must leave alone (a static one) passes FALSE.
    explicit CException(BOOL bAutoDelete) : m_bAutoDelete(bAutoDelete) {}

    void Delete();
    /// Fills a text for the user; 0 with an empty one when there is none. `pnHelpContext` gets 0.
    virtual BOOL GetErrorMessage(LPTSTR lpszError, UINT nMaxError, PUINT pnHelpContext = nullptr) const;
    /// Shows the text in a message box; the string resource `nMessageID` where there is no text.
    virtual int ReportError(UINT nType = MB_OK, UINT nMessageID = 0);

    BOOL m_bAutoDelete = TRUE;
};

/// Base of the exceptions that carry nothing but their kind.
class VORNAFX_API CSimpleException : public CException {
    DECLARE_DYNAMIC(CSimpleException)
public:
    CSimpleException() = default;
    explicit CSimpleException(BOOL bAutoDelete, LPCTSTR lpszText = nullptr)
        : CException(bAutoDelete), m_lpszText(lpszText) {}
    BOOL GetErrorMessage(LPTSTR lpszError, UINT nMaxError, PUINT pnHelpContext = nullptr) const override;

private:
    LPCTSTR m_lpszText = nullptr;
};

class VORNAFX_API CMemoryException : public CSimpleException {
    DECLARE_DYNAMIC(CMemoryException)
public:
    using CSimpleException::CSimpleException;
};

class VORNAFX_API CNotSupportedException : public CSimpleException {
    DECLARE_DYNAMIC(CNotSupportedException)
public:
    using CSimpleException::CSimpleException;
};

class VORNAFX_API CResourceException : public CSimpleException {
    DECLARE_DYNAMIC(CResourceException)
public:
    using CSimpleException::CSimpleException;
};

/// Thrown to end an operation after the user has already been told.
class VORNAFX_API CUserException : public CSimpleException {
    DECLARE_DYNAMIC(CUserException)
public:
    using CSimpleException::CSimpleException;
};

class VORNAFX_API CInvalidArgException : public CSimpleException {
    DECLARE_DYNAMIC(CInvalidArgException)
public:
    using CSimpleException::CSimpleException;
};

class VORNAFX_API CFileException : public CException {
    DECLARE_DYNAMIC(CFileException)
public:
    enum {
        none,
        genericException,
        fileNotFound,
        badPath,
        tooManyOpenFiles,
        accessDenied,
        invalidFile,
        removeCurrentDir,
        directoryFull,
        badSeek,
        hardIO,
        sharingViolation,
        lockViolation,
        diskFull,
        endOfFile
    };

    explicit CFileException(int cause = none, LONG lOsError = -1, LPCTSTR lpszArchiveName = nullptr);

    /// The cause that stands for a system error code.
    static int PASCAL OsErrorToException(LONG lOsError);
    [[noreturn]] static void PASCAL ThrowOsError(LONG lOsError, LPCTSTR lpszFileName = nullptr);
    BOOL GetErrorMessage(LPTSTR lpszError, UINT nMaxError, PUINT pnHelpContext = nullptr) const override;

    int m_cause;
    LONG m_lOsError;
    CString m_strFileName;
};

class VORNAFX_API CArchiveException : public CException {
    DECLARE_DYNAMIC(CArchiveException)
public:
    enum {
        none,
        genericException,
        readOnly,
        endOfFile,
        writeOnly,
        badIndex,
        badClass,
        badSchema,
        bufferFull
    };

    explicit CArchiveException(int cause = none, LPCTSTR lpszArchiveName = nullptr);
    BOOL GetErrorMessage(LPTSTR lpszError, UINT nMaxError, PUINT pnHelpContext = nullptr) const override;

    int m_cause;
    CString m_strFileName;
};

[[noreturn]] VORNAFX_API void AFXAPI AfxThrowMemoryException();
[[noreturn]] VORNAFX_API void AFXAPI AfxThrowNotSupportedException();
[[noreturn]] VORNAFX_API void AFXAPI AfxThrowResourceException();
[[noreturn]] VORNAFX_API void AFXAPI AfxThrowUserException();
[[noreturn]] VORNAFX_API void AFXAPI AfxThrowInvalidArgException();
[[noreturn]] VORNAFX_API void AFXAPI AfxThrowFileException(int cause, LONG lOsError = -1,
                                                           LPCTSTR lpszFileName = nullptr);
[[noreturn]] VORNAFX_API void AFXAPI AfxThrowArchiveException(int cause, LPCTSTR lpszArchiveName = nullptr);

namespace vornafx {

/// Deletes the exception that a CATCH block has caught when the block is left, unless it throws it on.
class CaughtException {
public:
    explicit CaughtException(CException* pException) : m_pException(pException) {}
    ~CaughtException() {
        if (m_pException != nullptr) m_pException->Delete();
    }
    CaughtException(const CaughtException&) = delete;
    CaughtException& operator=(const CaughtException&) = delete;
    void keep() { m_pException = nullptr; }
    /// Throwing the caught exception by name hands it on as well.
    template <typename T>
    T* pass(T* pException) {
        if (pException == m_pException) keep();
        return pException;
    }

private:
    CException* m_pException;
};

/// Stands where no exception has been caught: what is thrown is simply thrown.
struct NothingCaught {
    template <typename T>
    constexpr T* pass(T* pException) const {
        return pException;
    }
};

} // namespace vornafx

/// The name that THROW finds outside any CATCH block; inside, the block's own hides it.
inline constexpr vornafx::NothingCaught vornafxCaught{};

// The exception macros: a CATCH block deletes what it caught by itself.
#define TRY                                                                                                  \
    {                                                                                                        \
        try {
#define CATCH(class_name, exception)                                                                         \
    }                                                                                                        \
    catch (class_name * exception) {                                                                         \
        [[maybe_unused]] vornafx::CaughtException vornafxCaught(exception);
#define AND_CATCH(class_name, exception) CATCH(class_name, exception)
#define CATCH_ALL(exception) CATCH(CException, exception)
#define AND_CATCH_ALL(exception) CATCH(CException, exception)
#define END_TRY                                                                                              \
    }                                                                                                        \
    catch (CException * exception) {                                                                         \
        exception->Delete();                                                                                 \
    }                                                                                                        \
    }
#define END_CATCH                                                                                            \
    }                                                                                                        \
    }
#define END_CATCH_ALL END_CATCH
#define THROW(exception) throw vornafxCaught.pass(exception)
#define THROW_LAST()                                                                                         \
    do {                                                                                                     \
        vornafxCaught.keep();                                                                                \
        throw;                                                                                               \
    } while (false)
