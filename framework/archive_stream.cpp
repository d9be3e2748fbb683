// SPDX-License-Identifier: MIT

#include "afxpriv.h"

#include <algorithm>

namespace {

/// Runs an operation on the archive and turns what it throws into a result of OLE.
template <typename Operation>
HRESULT guarded(HRESULT failure, Operation operation) {
    try {
        return operation();
    } catch (CMemoryException* e) {
        e->Delete();
        return STG_E_INSUFFICIENTMEMORY;
    } catch (CException* e) {
        e->Delete();
        return failure;
    }
}

} // namespace

STDMETHODIMP_(ULONG) CArchiveStream::AddRef() {
    return 1;
}
STDMETHODIMP_(ULONG) CArchiveStream::Release() {
    return 1;
}

STDMETHODIMP CArchiveStream::QueryInterface(REFIID iid, void** ppv) {
    if (ppv == nullptr) return E_POINTER;
    const bool known = iid == IID_IUnknown || iid == IID_ISequentialStream || iid == IID_IStream;
    *ppv = known ? static_cast<IStream*>(this) : nullptr;
    return known ? S_OK : E_NOINTERFACE;
}

STDMETHODIMP CArchiveStream::Read(void* pv, ULONG cb, ULONG* pcbRead) {
    if (pcbRead != nullptr) *pcbRead = 0;
    if (pv == nullptr) return STG_E_INVALIDPOINTER;
    return guarded(STG_E_READFAULT, [&]() -> HRESULT {
        const UINT done = m_pArchive->Read(pv, cb);
        if (pcbRead != nullptr) *pcbRead = done;
        return done == cb ? S_OK : S_FALSE;
    });
}

STDMETHODIMP CArchiveStream::Write(const void* pv, ULONG cb, ULONG* pcbWritten) {
    if (pcbWritten != nullptr) *pcbWritten = 0;
    if (pv == nullptr) return STG_E_INVALIDPOINTER;
    return guarded(STG_E_WRITEFAULT, [&]() -> HRESULT {
        m_pArchive->Write(pv, cb);
        if (pcbWritten != nullptr) *pcbWritten = cb;
        return S_OK;
    });
}

STDMETHODIMP CArchiveStream::Seek(LARGE_INTEGER move, DWORD dwOrigin, ULARGE_INTEGER* pNewPosition) {
    if (dwOrigin > STREAM_SEEK_END) return STG_E_INVALIDFUNCTION;
    return guarded(STG_E_SEEKERROR, [&]() -> HRESULT {
        m_pArchive->Flush();
        static_assert(STREAM_SEEK_CUR == static_cast<int>(CFile::current));
        const ULONGLONG position = m_pArchive->GetFile()->Seek(move.QuadPart, dwOrigin);
        if (pNewPosition != nullptr) pNewPosition->QuadPart = position;
        return S_OK;
    });
}

STDMETHODIMP CArchiveStream::SetSize(ULARGE_INTEGER newSize) {
    return guarded(STG_E_MEDIUMFULL, [&]() -> HRESULT {
        m_pArchive->Flush();
        CFile* file = m_pArchive->GetFile();
        const ULONGLONG position = file->GetPosition();
        file->SetLength(newSize.QuadPart);
        file->Seek(static_cast<LONGLONG>(position), CFile::begin);
        return S_OK;
    });
}

STDMETHODIMP CArchiveStream::CopyTo(IStream* pStream, ULARGE_INTEGER cb, ULARGE_INTEGER* pRead,
                                    ULARGE_INTEGER* pWritten) {
    if (pStream == nullptr) return STG_E_INVALIDPOINTER;
    ULONGLONG read = 0, written = 0;
    HRESULT result = S_OK;
    while (read < cb.QuadPart && result == S_OK) {
        BYTE piece[4096];
        ULONG got = 0, put = 0;
        result = Read(piece, static_cast<ULONG>(std::min<ULONGLONG>(sizeof piece, cb.QuadPart - read)), &got);
        if (FAILED(result) || got == 0) break;
        read += got;
        const HRESULT wrote = pStream->Write(piece, got, &put);
        written += put;
        if (FAILED(wrote)) result = wrote;
    }
    if (pRead != nullptr) pRead->QuadPart = read;
    if (pWritten != nullptr) pWritten->QuadPart = written;
    return FAILED(result) ? result : S_OK;
}

STDMETHODIMP CArchiveStream::Commit(DWORD) {
    if (m_pArchive->IsLoading()) return S_OK;
    return guarded(STG_E_WRITEFAULT, [&]() -> HRESULT {
        m_pArchive->Flush();
        return S_OK;
    });
}

STDMETHODIMP CArchiveStream::Revert() {
    return E_NOTIMPL;
}
STDMETHODIMP CArchiveStream::LockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) {
    return STG_E_INVALIDFUNCTION;
}
STDMETHODIMP CArchiveStream::UnlockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) {
    return STG_E_INVALIDFUNCTION;
}
STDMETHODIMP CArchiveStream::Clone(IStream**) {
    return E_NOTIMPL;
}

STDMETHODIMP CArchiveStream::Stat(STATSTG* pStatstg, DWORD) {
    if (pStatstg == nullptr) return STG_E_INVALIDPOINTER;
    *pStatstg = {};
    return guarded(STG_E_ACCESSDENIED, [&]() -> HRESULT {
        if (m_pArchive->IsStoring()) m_pArchive->Flush();
        pStatstg->type = STGTY_STREAM;
        pStatstg->cbSize.QuadPart = m_pArchive->GetFile()->GetLength();
        return S_OK;
    });
}
