// SPDX-License-Identifier: MIT
#include "vorn/bitmaps/detail/memory_stream.h"

#include <algorithm>
#include <cstring>

namespace vorn::detail {

namespace {

// No picture that this library makes or reads is larger.
constexpr uint64_t maxStreamBytes = uint64_t{1} << 31;

} // namespace

MemoryStream::MemoryStream(HeapBytes bytes) : m_bytes(std::move(bytes)), m_capacity(m_bytes.size) {}

HeapBytes MemoryStream::detach() {
    m_capacity = 0;
    m_position = 0;
    return std::exchange(m_bytes, {});
}

bool MemoryStream::reserve(size_t capacity) {
    if (capacity <= m_capacity) return true;
    if (capacity > maxStreamBytes) return false;
    size_t grown = std::max({capacity, 2 * m_capacity, size_t{64 * 1024}});
    void* moved = std::realloc(m_bytes.data.get(), grown);
    if (moved == nullptr) return false;
    (void)m_bytes.data.release();
    m_bytes.data.reset(static_cast<BYTE*>(moved));
    m_capacity = grown;
    return true;
}

STDMETHODIMP MemoryStream::QueryInterface(REFIID iid, void** object) {
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    if (iid != IID_IUnknown && iid != IID_ISequentialStream && iid != IID_IStream) return E_NOINTERFACE;
    *object = static_cast<IStream*>(this);
    AddRef();
    return S_OK;
}

STDMETHODIMP_(ULONG) MemoryStream::AddRef() {
    return ++m_references;
}

STDMETHODIMP_(ULONG) MemoryStream::Release() {
    ULONG left = --m_references;
    if (left == 0) delete this;
    return left;
}

STDMETHODIMP MemoryStream::Read(void* target, ULONG count, ULONG* done) {
    size_t left = m_bytes.size - std::min(m_position, m_bytes.size);
    ULONG copied = static_cast<ULONG>(std::min<size_t>(count, left));
    if (copied > 0) std::memcpy(target, m_bytes.data.get() + m_position, copied);
    m_position += copied;
    if (done != nullptr) *done = copied;
    return copied == count ? S_OK : S_FALSE;
}

STDMETHODIMP MemoryStream::Write(const void* source, ULONG count, ULONG* done) {
    if (done != nullptr) *done = 0;
    if (!reserve(m_position + count)) return STG_E_MEDIUMFULL;
    if (m_position > m_bytes.size) {
        std::memset(m_bytes.data.get() + m_bytes.size, 0, m_position - m_bytes.size);
    }
    if (count > 0) std::memcpy(m_bytes.data.get() + m_position, source, count);
    m_position += count;
    m_bytes.size = std::max(m_bytes.size, m_position);
    if (done != nullptr) *done = count;
    return S_OK;
}

STDMETHODIMP MemoryStream::Seek(LARGE_INTEGER move, DWORD origin, ULARGE_INTEGER* position) {
    LONGLONG base = 0;
    switch (origin) {
    case STREAM_SEEK_SET:
        break;
    case STREAM_SEEK_CUR:
        base = static_cast<LONGLONG>(m_position);
        break;
    case STREAM_SEEK_END:
        base = static_cast<LONGLONG>(m_bytes.size);
        break;
    default:
        return STG_E_INVALIDFUNCTION;
    }
    constexpr auto limit = static_cast<LONGLONG>(maxStreamBytes);
    if (move.QuadPart < -base || move.QuadPart > limit - base) return STG_E_INVALIDFUNCTION;
    m_position = static_cast<size_t>(base + move.QuadPart);
    if (position != nullptr) position->QuadPart = m_position;
    return S_OK;
}

STDMETHODIMP MemoryStream::SetSize(ULARGE_INTEGER size) {
    if (size.QuadPart > maxStreamBytes || !reserve(static_cast<size_t>(size.QuadPart)))
        return STG_E_MEDIUMFULL;
    auto wanted = static_cast<size_t>(size.QuadPart);
    if (wanted > m_bytes.size) std::memset(m_bytes.data.get() + m_bytes.size, 0, wanted - m_bytes.size);
    m_bytes.size = wanted;
    return S_OK;
}

STDMETHODIMP MemoryStream::CopyTo(IStream*, ULARGE_INTEGER, ULARGE_INTEGER*, ULARGE_INTEGER*) {
    return E_NOTIMPL;
}
STDMETHODIMP MemoryStream::Commit(DWORD) {
    return S_OK;
}
STDMETHODIMP MemoryStream::Revert() {
    return S_OK;
}
STDMETHODIMP MemoryStream::LockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) {
    return STG_E_INVALIDFUNCTION;
}
STDMETHODIMP MemoryStream::UnlockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) {
    return STG_E_INVALIDFUNCTION;
}
STDMETHODIMP MemoryStream::Clone(IStream**) {
    return E_NOTIMPL;
}

STDMETHODIMP MemoryStream::Stat(STATSTG* status, DWORD) {
    if (status == nullptr) return STG_E_INVALIDPOINTER;
    *status = {};
    status->type = STGTY_STREAM;
    status->cbSize.QuadPart = m_bytes.size;
    status->grfMode = STGM_READWRITE;
    return S_OK;
}

} // namespace vorn::detail
