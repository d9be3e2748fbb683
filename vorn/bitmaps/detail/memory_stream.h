// SPDX-License-Identifier: MIT
#pragma once

#include "vorn/bitmaps/detail/com.h"
#include "vorn/detail/handles.h"

#include <atomic>
#include <cstddef>
#include <objidl.h>
#include <span>

namespace vorn::detail {

/// A block from the C heap with its size in bytes.
struct HeapBytes {
    MallocPtr<BYTE> data;
    size_t size = 0;

    std::span<const BYTE> view() const { return {data.get(), size}; }
};

/// A stream over a block of the C heap that grows by doubling. The system's own memory stream moves the whole
/// block with every write, which an image encoder does in small pieces.
class MemoryStream final : public IStream {
public:
    explicit MemoryStream(HeapBytes bytes = {});

    /// Hands out what was written; the stream is empty afterwards.
    HeapBytes detach();

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override;
    STDMETHODIMP_(ULONG) AddRef() override;
    STDMETHODIMP_(ULONG) Release() override;

    STDMETHODIMP Read(void* target, ULONG count, ULONG* done) override;
    STDMETHODIMP Write(const void* source, ULONG count, ULONG* done) override;

    STDMETHODIMP Seek(LARGE_INTEGER move, DWORD origin, ULARGE_INTEGER* position) override;
    STDMETHODIMP SetSize(ULARGE_INTEGER size) override;
    STDMETHODIMP CopyTo(IStream* target, ULARGE_INTEGER count, ULARGE_INTEGER* read,
                        ULARGE_INTEGER* written) override;
    STDMETHODIMP Commit(DWORD flags) override;
    STDMETHODIMP Revert() override;
    STDMETHODIMP LockRegion(ULARGE_INTEGER offset, ULARGE_INTEGER count, DWORD type) override;
    STDMETHODIMP UnlockRegion(ULARGE_INTEGER offset, ULARGE_INTEGER count, DWORD type) override;
    STDMETHODIMP Stat(STATSTG* status, DWORD flag) override;
    STDMETHODIMP Clone(IStream** clone) override;

private:
    ~MemoryStream() = default;
    bool reserve(size_t capacity);

    std::atomic<ULONG> m_references{1};
    HeapBytes m_bytes;
    size_t m_capacity = 0;
    size_t m_position = 0;
};

} // namespace vorn::detail
