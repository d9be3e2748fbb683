// SPDX-License-Identifier: MIT

#include "afx.h"

CDumpContext::CDumpContext(CFile* pFile) : m_pFile(pFile) {}
CDumpContext::~CDumpContext() = default;

void CDumpContext::OutputString(LPCTSTR lpsz) {
    if (m_pFile == nullptr) {
        AfxOutputDebugString(lpsz);
        return;
    }
    m_pFile->Write(lpsz, static_cast<UINT>(::lstrlenA(lpsz)));
}

namespace {

template <typename T>
CString formatted(LPCTSTR format, T value) {
    CString text;
    text.Format(format, value);
    return text;
}

} // namespace

CDumpContext& CDumpContext::operator<<(LPCTSTR lpsz) {
    OutputString(lpsz == nullptr ? "(null)" : lpsz);
    return *this;
}

CDumpContext& CDumpContext::operator<<(LPCWSTR lpsz) {
    return *this << CString(lpsz).GetString();
}
CDumpContext& CDumpContext::operator<<(const void* lp) {
    return *this << formatted("$%p", lp).GetString();
}
CDumpContext& CDumpContext::operator<<(BYTE by) {
    return *this << formatted("%u", unsigned{by}).GetString();
}
CDumpContext& CDumpContext::operator<<(WORD w) {
    return *this << formatted("%u", unsigned{w}).GetString();
}
CDumpContext& CDumpContext::operator<<(UINT u) {
    return *this << formatted("0x%X", u).GetString();
}
CDumpContext& CDumpContext::operator<<(DWORD dw) {
    return *this << formatted("%lu", dw).GetString();
}
CDumpContext& CDumpContext::operator<<(ULONGLONG qw) {
    return *this << formatted("%llu", qw).GetString();
}
CDumpContext& CDumpContext::operator<<(int n) {
    return *this << formatted("%d", n).GetString();
}
CDumpContext& CDumpContext::operator<<(LONG l) {
    return *this << formatted("%ld", l).GetString();
}
CDumpContext& CDumpContext::operator<<(LONGLONG n) {
    return *this << formatted("%lld", n).GetString();
}
CDumpContext& CDumpContext::operator<<(double d) {
    return *this << formatted("%g", d).GetString();
}
CDumpContext& CDumpContext::operator<<(float f) {
    return *this << double{f};
}
CDumpContext& CDumpContext::operator<<(const CObject& ob) {
    return *this << &ob;
}

CDumpContext& CDumpContext::operator<<(const CObject* pOb) {
    if (pOb == nullptr) return *this << "NULL";
    pOb->Dump(*this);
    return *this;
}

void CDumpContext::Flush() {
    if (m_pFile != nullptr) m_pFile->Flush();
}

CDumpContext& AfxDump() {
    static CDumpContext context;
    return context;
}
