// SPDX-License-Identifier: MIT
#pragma once

#include "afx.h"

#include <objidl.h>

/// An OLE stream over an archive, for functions that take one. Lives on the stack of whoever makes it:
/// counting references does not delete it. The archive stays the caller's.
class VORNAFX_API CArchiveStream : public IStream {
public:
    explicit CArchiveStream(CArchive* pArchive) : m_pArchive(pArchive) {}
    CArchiveStream(const CArchiveStream&) = delete;
    CArchiveStream& operator=(const CArchiveStream&) = delete;

    STDMETHOD_(ULONG, AddRef)() override;
    STDMETHOD_(ULONG, Release)() override;
    STDMETHOD(QueryInterface)(REFIID iid, void** ppv) override;

    STDMETHOD(Read)(void* pv, ULONG cb, ULONG* pcbRead) override;
    STDMETHOD(Write)(const void* pv, ULONG cb, ULONG* pcbWritten) override;
    /// In bytes of the archive's file. What is buffered goes to the file first.
    STDMETHOD(Seek)(LARGE_INTEGER move, DWORD dwOrigin, ULARGE_INTEGER* pNewPosition) override;
    STDMETHOD(SetSize)(ULARGE_INTEGER newSize) override;
    STDMETHOD(CopyTo)
    (IStream* pStream, ULARGE_INTEGER cb, ULARGE_INTEGER* pRead, ULARGE_INTEGER* pWritten) override;
    STDMETHOD(Commit)(DWORD grfCommitFlags) override;
    STDMETHOD(Revert)() override;
    STDMETHOD(LockRegion)(ULARGE_INTEGER offset, ULARGE_INTEGER cb, DWORD dwLockType) override;
    STDMETHOD(UnlockRegion)(ULARGE_INTEGER offset, ULARGE_INTEGER cb, DWORD dwLockType) override;
    /// The size of the file, with no name.
    STDMETHOD(Stat)(STATSTG* pStatstg, DWORD grfStatFlag) override;
    STDMETHOD(Clone)(IStream** ppStream) override;

private:
    CArchive* m_pArchive;
};
