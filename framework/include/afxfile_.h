// SPDX-License-Identifier: MIT
#pragma once

// Part of afx.h, which includes it after the exceptions.

/// What `CFile::GetStatus` fills.
struct CFileStatus {
    ULONGLONG m_size;
    BYTE m_attribute; ///< The `CFile::Attribute` bits.
    TCHAR m_szFullName[MAX_PATH];
};

/// A file read and written in bytes, without buffering. Failures other than those of `Open` throw
/// `CFileException*`. The destructor closes what the object has opened itself.
class VORNAFX_API CFile : public CObject {
    DECLARE_DYNAMIC(CFile)
public:
    enum OpenFlags : UINT {
        modeRead = 0x00000,
        modeWrite = 0x00001,
        modeReadWrite = 0x00002,
        shareCompat = 0x00000,
        shareExclusive = 0x00010,
        shareDenyWrite = 0x00020,
        shareDenyRead = 0x00030,
        shareDenyNone = 0x00040,
        modeNoInherit = 0x00080,
        modeCreate = 0x01000,
        modeNoTruncate = 0x02000, ///< With `modeCreate`: an existing file keeps its contents.
        typeText = 0x04000,
        typeBinary = 0x08000,
        osNoBuffer = 0x10000,
        osWriteThrough = 0x20000,
        osRandomAccess = 0x40000,
        osSequentialScan = 0x80000
    };
    enum Attribute {
        normal = 0x00,
        readOnly = 0x01,
        hidden = 0x02,
        system = 0x04,
        volume = 0x08,
        directory = 0x10,
        archive = 0x20
    };
    enum SeekPosition { begin, current, end };

    static const HANDLE hFileNull;

    CFile();
    /// Uses an open file; the handle stays the caller's to close, unless `Close` is called.
    explicit CFile(HANDLE hFile);
    /// Opens, or throws.
    CFile(LPCTSTR lpszFileName, UINT nOpenFlags);
    ~CFile() override;

    operator HANDLE() const { return m_hFile; }

    virtual ULONGLONG GetPosition() const;
    virtual CString GetFileName() const;
    virtual CString GetFileTitle() const;
    virtual CString GetFilePath() const;
    virtual void SetFilePath(LPCTSTR lpszNewName);
    /// 0 on failure, with the cause in `pError` when given.
    virtual BOOL Open(LPCTSTR lpszFileName, UINT nOpenFlags, CFileException* pError = nullptr);
    /// A second object on the same open file, owned by the caller.
    virtual CFile* Duplicate() const;
    /// Returns the new position from the beginning; one before it throws.
    virtual ULONGLONG Seek(LONGLONG lOff, UINT nFrom);
    virtual void SetLength(ULONGLONG dwNewLen);
    virtual ULONGLONG GetLength() const;
    /// Returns the bytes read; fewer than asked for only at the end of the file.
    virtual UINT Read(void* lpBuf, UINT nCount);
    virtual void Write(const void* lpBuf, UINT nCount);
    virtual void LockRange(ULONGLONG dwPos, ULONGLONG dwCount);
    virtual void UnlockRange(ULONGLONG dwPos, ULONGLONG dwCount);
    /// Closes without an exception.
    virtual void Abort();
    virtual void Flush();
    virtual void Close();

    ULONGLONG SeekToEnd() { return Seek(0, end); }
    void SeekToBegin() { Seek(0, begin); }
    BOOL GetStatus(CFileStatus& rStatus) const;
    static BOOL PASCAL GetStatus(LPCTSTR lpszFileName, CFileStatus& rStatus);
    static void PASCAL Rename(LPCTSTR lpszOldName, LPCTSTR lpszNewName);
    static void PASCAL Remove(LPCTSTR lpszFileName);

    void AssertValid() const override;
    void Dump(CDumpContext& dc) const override;

    HANDLE m_hFile;

protected:
    BOOL m_bCloseOnDelete;
    CString m_strFileName;

private:
    [[noreturn]] void fail() const;
};

/// A file in memory. Memory that it allocates is its own and grows by `nGrowBytes` steps.
class VORNAFX_API CMemFile : public CFile {
    DECLARE_DYNAMIC(CMemFile)
public:
    /// 0 for a file that cannot grow.
    explicit CMemFile(UINT nGrowBytes = 1024);
    /// See `Attach`.
    CMemFile(BYTE* lpBuffer, UINT nBufferSize, UINT nGrowBytes = 0);
    ~CMemFile() override;

    /// Works on the caller's block, which stays the caller's to free. With `nGrowBytes` 0 the file has the
    /// block's size and contents and cannot grow. Otherwise it starts empty, and the block must come from the
    /// C heap: it is reallocated as needed, so take it back with `Detach`.
    void Attach(BYTE* lpBuffer, UINT nBufferSize, UINT nGrowBytes = 0);
    /// Closes the file and hands its block to the caller, to free with `free`.
    BYTE* Detach();

    ULONGLONG GetPosition() const override;
    ULONGLONG GetLength() const override;
    CFile* Duplicate() const override;
    ULONGLONG Seek(LONGLONG lOff, UINT nFrom) override;
    void SetLength(ULONGLONG dwNewLen) override;
    UINT Read(void* lpBuf, UINT nCount) override;
    void Write(const void* lpBuf, UINT nCount) override;
    void LockRange(ULONGLONG dwPos, ULONGLONG dwCount) override;
    void UnlockRange(ULONGLONG dwPos, ULONGLONG dwCount) override;
    void Abort() override;
    void Flush() override;
    void Close() override;

    void AssertValid() const override;
    void Dump(CDumpContext& dc) const override;

protected:
    virtual BYTE* Alloc(SIZE_T nBytes);
    virtual BYTE* Realloc(BYTE* lpMem, SIZE_T nBytes);
    virtual BYTE* Memcpy(BYTE* lpMemTarget, const BYTE* lpMemSource, SIZE_T nBytes);
    virtual void Free(BYTE* lpMem);
    virtual void GrowFile(SIZE_T dwNewLen);
    SIZE_T m_nGrowBytes;
    SIZE_T m_nPosition;
    SIZE_T m_nBufferSize;
    SIZE_T m_nFileSize;
    BYTE* m_lpBuffer;
    BOOL m_bAutoDelete;

private:
    void extend(ULONGLONG dwNewLen);
};

/// Where `Dump` writes: a file, or the debugger.
class VORNAFX_API CDumpContext {
public:
    explicit CDumpContext(CFile* pFile = nullptr);
    virtual ~CDumpContext();

    /// How deep objects dump what they hold; 0 names it only.
    int GetDepth() const { return m_nDepth; }
    void SetDepth(int nNewDepth) { m_nDepth = nNewDepth; }

    CDumpContext& operator<<(LPCTSTR lpsz);
    CDumpContext& operator<<(LPCWSTR lpsz);
    CDumpContext& operator<<(const void* lp);
    CDumpContext& operator<<(const CObject* pOb);
    CDumpContext& operator<<(const CObject& ob);
    CDumpContext& operator<<(BYTE by);
    CDumpContext& operator<<(WORD w);
    CDumpContext& operator<<(UINT u);
    CDumpContext& operator<<(DWORD dw);
    CDumpContext& operator<<(ULONGLONG qw);
    CDumpContext& operator<<(int n);
    CDumpContext& operator<<(LONG l);
    CDumpContext& operator<<(LONGLONG n);
    CDumpContext& operator<<(double d);
    CDumpContext& operator<<(float f);
    void Flush();

    CDumpContext(const CDumpContext&) = delete;
    CDumpContext& operator=(const CDumpContext&) = delete;

protected:
    virtual void OutputString(LPCTSTR lpsz);

private:
    CFile* m_pFile;
    int m_nDepth = 0;
};

VORNAFX_API CDumpContext& AfxDump();
#define afxDump AfxDump()
