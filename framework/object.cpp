// SPDX-License-Identifier: MIT
// CObject, run-time classes and the list of those that archives find by name.

#include "afx.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <new>

namespace {

/// The classes of all loaded modules. Modules come and go on any thread.
struct ClassList {
    std::mutex mutex;
    CRuntimeClass* first = nullptr;
};

ClassList& classList() {
    static ClassList list;
    return list;
}

constexpr WORD maxClassName = 63;

} // namespace

CRuntimeClass CObject::classCObject = {"CObject", sizeof(CObject),         0xFFFF,
                                       nullptr,   &CObject::_GetBaseClass, nullptr};

CRuntimeClass* PASCAL CObject::_GetBaseClass() {
    return nullptr;
}
CRuntimeClass* PASCAL CObject::GetThisClass() {
    return &classCObject;
}
CRuntimeClass* CObject::GetRuntimeClass() const {
    return &classCObject;
}

CObject::~CObject() = default;
void CObject::Serialize(CArchive&) {}
void CObject::AssertValid() const {}

void CObject::Dump(CDumpContext& dc) const {
    dc << "a " << GetRuntimeClass()->m_lpszClassName << " at " << static_cast<const void*>(this) << "\n";
}

BOOL CObject::IsSerializable() const {
    return GetRuntimeClass()->m_wSchema != 0xFFFF;
}
BOOL CObject::IsKindOf(const CRuntimeClass* pClass) const {
    return GetRuntimeClass()->IsDerivedFrom(pClass);
}

AFX_CLASSINIT::AFX_CLASSINIT(CRuntimeClass* pNewClass) : m_pClass(pNewClass) {
    ClassList& list = classList();
    const std::scoped_lock lock(list.mutex);
    pNewClass->m_pNextClass = list.first;
    list.first = pNewClass;
}

AFX_CLASSINIT::~AFX_CLASSINIT() {
    ClassList& list = classList();
    const std::scoped_lock lock(list.mutex);
    CRuntimeClass** link = &list.first;
    while (*link != nullptr && *link != m_pClass)
        link = &(*link)->m_pNextClass;
    if (*link != nullptr) *link = m_pClass->m_pNextClass;
}

CObject* CRuntimeClass::CreateObject() {
    if (m_pfnCreateObject == nullptr) return nullptr;
    try {
        return m_pfnCreateObject();
    } catch (const std::bad_alloc&) {
        return nullptr;
    } catch (CMemoryException* e) {
        e->Delete();
        return nullptr;
    }
}

CObject* PASCAL CRuntimeClass::CreateObject(LPCSTR lpszClassName) {
    CRuntimeClass* found = FromName(lpszClassName);
    return found == nullptr ? nullptr : found->CreateObject();
}

CRuntimeClass* PASCAL CRuntimeClass::FromName(LPCSTR lpszClassName) {
    ClassList& list = classList();
    const std::scoped_lock lock(list.mutex);
    for (CRuntimeClass* item = list.first; item != nullptr; item = item->m_pNextClass) {
        if (std::strcmp(item->m_lpszClassName, lpszClassName) == 0) return item;
    }
    return nullptr;
}

BOOL CRuntimeClass::IsDerivedFrom(const CRuntimeClass* pBaseClass) const {
    const CRuntimeClass* item = this;
    while (item != nullptr && item != pBaseClass)
        item = item->m_pfnGetBaseClass == nullptr ? nullptr : item->m_pfnGetBaseClass();
    return item != nullptr;
}

void CRuntimeClass::Store(CArchive& ar) const {
    const auto length = static_cast<WORD>(std::min<size_t>(std::strlen(m_lpszClassName), maxClassName));
    ar << static_cast<WORD>(m_wSchema) << length;
    ar.Write(m_lpszClassName, length);
}

CRuntimeClass* PASCAL CRuntimeClass::Load(CArchive& ar, UINT* pwSchemaNum) {
    WORD schema = 0, length = 0;
    ar >> schema >> length;
    *pwSchemaNum = schema;
    if (length > maxClassName) return nullptr;
    char name[maxClassName + 1] = {};
    ar.EnsureRead(name, length);
    return FromName(name);
}

CObject* AFXAPI AfxDynamicDownCast(CRuntimeClass* pClass, CObject* pObject) {
    return pObject != nullptr && pObject->IsKindOf(pClass) ? pObject : nullptr;
}

void AFXAPI AfxOutputDebugString(LPCTSTR lpsz) {
    ::OutputDebugStringA(lpsz);
}

void AFXAPI AfxAssertFailedLine(LPCSTR lpszFileName, int nLine) {
    char text[512];
    std::snprintf(text, sizeof text, "%s(%d): assertion failed\n", lpszFileName, nLine);
    AfxOutputDebugString(text);
    std::fputs(text, stderr);
    if (::IsDebuggerPresent()) {
        ::DebugBreak();
        return;
    }
    std::abort();
}

BOOL AFXAPI AfxIsValidAddress(const void* lp, UINT_PTR nBytes, BOOL bReadWrite) {
    constexpr DWORD writable =
        PAGE_READWRITE | PAGE_WRITECOPY | PAGE_EXECUTE_READWRITE | PAGE_EXECUTE_WRITECOPY;
    constexpr DWORD readable = writable | PAGE_READONLY | PAGE_EXECUTE_READ;
    const auto* at = static_cast<const char*>(lp);
    UINT_PTR left = std::max<UINT_PTR>(nBytes, 1);
    while (left > 0) {
        MEMORY_BASIC_INFORMATION info{};
        if (::VirtualQuery(at, &info, sizeof info) == 0 || info.State != MEM_COMMIT) return FALSE;
        if ((info.Protect & PAGE_GUARD) != 0 || (info.Protect & (bReadWrite ? writable : readable)) == 0)
            return FALSE;
        const char* const end = static_cast<const char*>(info.BaseAddress) + info.RegionSize;
        const auto here = static_cast<UINT_PTR>(end - at);
        left -= std::min(left, here);
        at = end;
    }
    return TRUE;
}

void AFXAPI AfxAssertValidObject(const CObject* pOb, LPCSTR lpszFileName, int nLine) {
    if (!AfxIsValidAddress(pOb, sizeof(CObject), FALSE)) {
        AfxAssertFailedLine(lpszFileName, nLine);
        return;
    }
    pOb->AssertValid();
}
