// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

// Part of afx.h, which includes it after the files.

/// Writes values and objects to a file, or reads them back, through a buffer. Numbers are little-endian in
/// their own width. A string is its length (a byte below 255; else 255 and a word below 0xFFFE; else 0xFFFF
/// and 32 bits) and its characters. Reading past the end throws `CArchiveException*` with `endOfFile`; what a
/// file claims to hold is never allocated before it has been read.
class VORNAFX_API CArchive {
public:
    enum Mode { store = 0, load = 1, bNoFlushOnDelete = 2, bNoByteSwap = 4 };

    /// The file stays the caller's and must outlive the archive. `lpBuf`, when given, has `nBufSize` bytes.
    CArchive(CFile* pFile, UINT nMode, int nBufSize = 4096, void* lpBuf = nullptr);
    /// Closes, unless `bNoFlushOnDelete` was given. A failure to write goes unnoticed here: call `Close` to
    /// learn of it.
    ~CArchive();
    CArchive(const CArchive&) = delete;
    CArchive& operator=(const CArchive&) = delete;

    BOOL IsLoading() const { return (m_nMode & load) != 0; }
    BOOL IsStoring() const { return (m_nMode & load) == 0; }
    BOOL IsByteSwapping() const { return FALSE; }
    BOOL IsBufferEmpty() const { return m_nBufCur == m_nBufEnd; }
    CFile* GetFile() const { return m_pFile; }
    /// The schema with which the object being read was stored; -1 when asked again or when none is being
    /// read.
    UINT GetObjectSchema();
    void SetObjectSchema(UINT nSchema) { m_nObjectSchema = nSchema; }

    /// Returns the bytes read, fewer only at the end of the file.
    UINT Read(void* lpBuf, UINT nMax);
    /// Reads all of it or throws.
    void EnsureRead(void* lpBuf, UINT nCount);
    void Write(const void* lpBuf, UINT nMax);
    /// Storing writes the buffer out; loading sets the file back to where reading has come to.
    void Flush();
    void Close();
    /// Lets go of the file without writing what is still buffered; no exception.
    void Abort();

    /// One line without its end, which is CR, LF or both. The first form stops after `nMax` characters, and
    /// the buffer has room for one more. Null or FALSE at the end of the file.
    LPTSTR ReadString(LPTSTR lpsz, UINT nMax);
    BOOL ReadString(CString& rString);
    void WriteString(LPCTSTR lpsz);

    /// An object and all it refers to; each is stored once. What ReadObject returns is the caller's. An
    /// object that cannot be read to its end is deleted. Objects nest up to 1000 deep.
    CObject* ReadObject(const CRuntimeClass* pClass);
    void WriteObject(const CObject* pOb);
    /// Makes an object known that other objects in the archive refer to although it is not stored itself.
    void MapObject(const CObject* pOb);
    CRuntimeClass* ReadClass(const CRuntimeClass* pClassRefRequested = nullptr, UINT* pSchema = nullptr,
                             DWORD* pObTag = nullptr);
    void WriteClass(const CRuntimeClass* pClassRef);
    void SerializeClass(const CRuntimeClass* pClassRef);
    /// Sizing hints of older sources; the tables grow by themselves.
    void SetStoreParams(UINT = 2053, UINT = 128) {}
    void SetLoadParams(UINT = 1024) {}
    /// A count in 16 bits, or in 32 or 64 after all-ones of the shorter form.
    DWORD_PTR ReadCount();
    void WriteCount(DWORD_PTR dwCount);

    CArchive& operator<<(bool b) { return put(static_cast<BYTE>(b)); }
    CArchive& operator<<(char ch) { return put(ch); }
    CArchive& operator<<(BYTE by) { return put(by); }
    CArchive& operator<<(wchar_t ch) { return put(ch); }
    CArchive& operator<<(WORD w) { return put(w); }
    CArchive& operator<<(short n) { return put(n); }
    CArchive& operator<<(int n) { return put(n); }
    CArchive& operator<<(unsigned n) { return put(n); }
    CArchive& operator<<(LONG l) { return put(l); }
    CArchive& operator<<(DWORD dw) { return put(dw); }
    CArchive& operator<<(LONGLONG n) { return put(n); }
    CArchive& operator<<(ULONGLONG n) { return put(n); }
    CArchive& operator<<(float f) { return put(f); }
    CArchive& operator<<(double d) { return put(d); }
    CArchive& operator<<(const CString& str);
    CArchive& operator<<(LPCTSTR lpsz);
    /// No pointer is stored as a truth value by mistake. Objects have operators of their own.
    CArchive& operator<<(const void*) = delete;

    CArchive& operator>>(bool& b);
    CArchive& operator>>(char& ch) { return get(ch); }
    CArchive& operator>>(BYTE& by) { return get(by); }
    CArchive& operator>>(wchar_t& ch) { return get(ch); }
    CArchive& operator>>(WORD& w) { return get(w); }
    CArchive& operator>>(short& n) { return get(n); }
    CArchive& operator>>(int& n) { return get(n); }
    CArchive& operator>>(unsigned& n) { return get(n); }
    CArchive& operator>>(LONG& l) { return get(l); }
    CArchive& operator>>(DWORD& dw) { return get(dw); }
    CArchive& operator>>(LONGLONG& n) { return get(n); }
    CArchive& operator>>(ULONGLONG& n) { return get(n); }
    CArchive& operator>>(float& f) { return get(f); }
    CArchive& operator>>(double& d) { return get(d); }
    /// Unchanged when the string is cut off. A stored Unicode string is converted.
    CArchive& operator>>(CString& str);

    void* m_pDocument = nullptr; ///< For the application's use.

private:
    struct ObjectTables;

    template <typename T>
    CArchive& put(T value) {
        Write(&value, sizeof value);
        return *this;
    }
    template <typename T>
    CArchive& get(T& value) {
        T read;
        EnsureRead(&read, sizeof read);
        value = read;
        return *this;
    }
    void writeStringLength(size_t nLength);
    ULONGLONG readStringLength(bool& bWide);
    bool readChar(char& ch);
    bool fill();
    void endLine(char ch);
    ObjectTables& tables();
    void requireLoading() const;
    void requireStoring() const;
    void writeTag(DWORD nTag, bool bClass);
    void remember(const void* pThing);
    [[noreturn]] void fail(int cause) const;

    CFile* m_pFile;
    UINT m_nMode;
    std::unique_ptr<BYTE[]> m_pOwnBuffer;
    BYTE* m_pBuffer;
    UINT m_nBufSize;
    UINT m_nBufCur = 0; // storing: bytes waiting; loading: next byte to hand out
    UINT m_nBufEnd = 0; // loading: end of the bytes read ahead
    UINT m_nObjectSchema = static_cast<UINT>(-1);
    UINT m_nDepth = 0;
    std::unique_ptr<ObjectTables> m_pTables;
};

/// Any serialisable object, by pointer; null is stored as such.
VORNAFX_API CArchive& AFXAPI operator<<(CArchive& ar, const CObject* pOb);
VORNAFX_API CArchive& AFXAPI operator>>(CArchive& ar, CObject*& pOb);
VORNAFX_API CArchive& AFXAPI operator>>(CArchive& ar, const CObject*& pOb);

/// The platform's points, sizes and rectangles, as their 32-bit coordinates.
VORNAFX_API CArchive& AFXAPI operator<<(CArchive& ar, SIZE size);
VORNAFX_API CArchive& AFXAPI operator<<(CArchive& ar, POINT point);
VORNAFX_API CArchive& AFXAPI operator<<(CArchive& ar, const RECT& rect);
VORNAFX_API CArchive& AFXAPI operator>>(CArchive& ar, SIZE& size);
VORNAFX_API CArchive& AFXAPI operator>>(CArchive& ar, POINT& point);
VORNAFX_API CArchive& AFXAPI operator>>(CArchive& ar, RECT& rect);
