// SPDX-License-Identifier: MIT
#pragma once

#include "afxstr_.h"
#include "afxver_.h"

class CArchive;
class CDumpContext;
class CObject;
struct CRuntimeClass;

/// A place in a collection, null past its end.
struct __POSITION {};
using POSITION = __POSITION*;

// ---- diagnostics

/// Reports a failed assertion and ends the program, or stops in the debugger when one is attached.
VORNAFX_API void AFXAPI AfxAssertFailedLine(LPCSTR lpszFileName, int nLine);
/// True when the block can be read, and written where `bReadWrite` asks for it.
VORNAFX_API BOOL AFXAPI AfxIsValidAddress(const void* lp, UINT_PTR nBytes, BOOL bReadWrite = TRUE);
/// Calls `AssertValid` of the object; a null pointer is a failure.
VORNAFX_API void AFXAPI AfxAssertValidObject(const CObject* pOb, LPCSTR lpszFileName, int nLine);
/// Writes text to the debugger.
VORNAFX_API void AFXAPI AfxOutputDebugString(LPCTSTR lpsz);

template <typename... Args>
void AfxTrace(LPCTSTR lpszFormat, Args... args) {
    CString strText;
    strText.Format(lpszFormat, args...);
    AfxOutputDebugString(strText);
}

#ifdef _DEBUG
#define ASSERT(f) ((f) ? static_cast<void>(0) : AfxAssertFailedLine(__FILE__, __LINE__))
#define VERIFY(f) ASSERT(f)
#define ASSERT_VALID(pOb) AfxAssertValidObject(pOb, __FILE__, __LINE__)
#define TRACE(...) AfxTrace(__VA_ARGS__)
#define DEBUG_ONLY(f) (f)
#define AFX_ASSUME(f) ASSERT(f)
#else
#define ASSERT(f) static_cast<void>(0)
#define VERIFY(f) static_cast<void>(f)
#define ASSERT_VALID(pOb) static_cast<void>(0)
#define TRACE(...) static_cast<void>(0)
#define DEBUG_ONLY(f) static_cast<void>(0)
#define AFX_ASSUME(f) static_cast<void>(0)
#endif
#define TRACE0(sz) TRACE("%s", sz)
#define TRACE1(sz, p1) TRACE(sz, p1)
#define TRACE2(sz, p1, p2) TRACE(sz, p1, p2)
#define TRACE3(sz, p1, p2, p3) TRACE(sz, p1, p2, p3)
#define ASSERT_POINTER(p, type) ASSERT((p) != nullptr)
#define ASSERT_NULL_OR_POINTER(p, type) static_cast<void>(0)
#define ASSERT_KINDOF(class_name, object) ASSERT((object)->IsKindOf(RUNTIME_CLASS(class_name)))
#define ENSURE(f)                                                                                            \
    do {                                                                                                     \
        if (!(f)) AfxThrowInvalidArgException();                                                             \
    } while (false)
#define DEBUG_NEW new

// ---- run-time classes

/// Puts a class on the list in which archives look for names, for as long as its module is loaded.
class VORNAFX_API AFX_CLASSINIT {
public:
    explicit AFX_CLASSINIT(CRuntimeClass* pNewClass);
    ~AFX_CLASSINIT();
    AFX_CLASSINIT(const AFX_CLASSINIT&) = delete;
    AFX_CLASSINIT& operator=(const AFX_CLASSINIT&) = delete;

private:
    CRuntimeClass* m_pClass;
};

/// What a class tells about itself at run time.
struct VORNAFX_API CRuntimeClass {
    LPCSTR m_lpszClassName;
    int m_nObjectSize;
    UINT m_wSchema;                        ///< 0xFFFF for a class without serialisation.
    CObject*(PASCAL* m_pfnCreateObject)(); ///< Null for a class without dynamic creation.
    CRuntimeClass*(PASCAL* m_pfnGetBaseClass)();
    CRuntimeClass* m_pNextClass;

    /// A new object owned by the caller, or null when the class cannot be created by name or memory is short.
    CObject* CreateObject();
    static CObject* PASCAL CreateObject(LPCSTR lpszClassName);
    /// The class of that name, of those declared for serialisation; null when there is none.
    static CRuntimeClass* PASCAL FromName(LPCSTR lpszClassName);
    BOOL IsDerivedFrom(const CRuntimeClass* pBaseClass) const;

    void Store(CArchive& ar) const;
    /// Null when the archive names a class that is not known here.
    static CRuntimeClass* PASCAL Load(CArchive& ar, UINT* pwSchemaNum);
};

#define RUNTIME_CLASS(class_name) (class_name::GetThisClass())

#define DECLARE_DYNAMIC(class_name)                                                                          \
protected:                                                                                                   \
    static CRuntimeClass* PASCAL _GetBaseClass();                                                            \
                                                                                                             \
public:                                                                                                      \
    static CRuntimeClass class##class_name;                                                                  \
    static CRuntimeClass* PASCAL GetThisClass();                                                             \
    CRuntimeClass* GetRuntimeClass() const override;

#define DECLARE_DYNCREATE(class_name)                                                                        \
    DECLARE_DYNAMIC(class_name)                                                                              \
    static CObject* PASCAL CreateObject();

#define DECLARE_SERIAL(class_name)                                                                           \
    DECLARE_DYNCREATE(class_name)                                                                            \
    friend CArchive& operator>>(CArchive& ar, class_name*& pOb) {                                            \
        pOb = static_cast<class_name*>(vornafx::readObject(ar, RUNTIME_CLASS(class_name)));                  \
        return ar;                                                                                           \
    }

#define IMPLEMENT_RUNTIMECLASS(class_name, base_class_name, wSchema, pfnNew)                                 \
    CRuntimeClass* PASCAL class_name::_GetBaseClass() {                                                      \
        return RUNTIME_CLASS(base_class_name);                                                               \
    }                                                                                                        \
    CRuntimeClass class_name::class##class_name = {#class_name, sizeof(class class_name),   wSchema,         \
                                                   pfnNew,      &class_name::_GetBaseClass, nullptr};        \
    CRuntimeClass* PASCAL class_name::GetThisClass() {                                                       \
        return &class_name::class##class_name;                                                               \
    }                                                                                                        \
    CRuntimeClass* class_name::GetRuntimeClass() const {                                                     \
        return class_name::GetThisClass();                                                                   \
    }

#define IMPLEMENT_DYNAMIC(class_name, base_class_name)                                                       \
    IMPLEMENT_RUNTIMECLASS(class_name, base_class_name, 0xFFFF, nullptr)

#define IMPLEMENT_DYNCREATE(class_name, base_class_name)                                                     \
    CObject* PASCAL class_name::CreateObject() {                                                             \
        return new class_name;                                                                               \
    }                                                                                                        \
    IMPLEMENT_RUNTIMECLASS(class_name, base_class_name, 0xFFFF, &class_name::CreateObject)

#define IMPLEMENT_SERIAL(class_name, base_class_name, wSchema)                                               \
    CObject* PASCAL class_name::CreateObject() {                                                             \
        return new class_name;                                                                               \
    }                                                                                                        \
    IMPLEMENT_RUNTIMECLASS(class_name, base_class_name, wSchema, &class_name::CreateObject)                  \
    static const AFX_CLASSINIT _init_##class_name(RUNTIME_CLASS(class_name));

/// In a schema number: the class reads older versions of itself (see `CArchive::GetObjectSchema`).
#define VERSIONABLE_SCHEMA 0x80000000U

#define DYNAMIC_DOWNCAST(class_name, object)                                                                 \
    (static_cast<class_name*>(AfxDynamicDownCast(RUNTIME_CLASS(class_name), object)))
#define STATIC_DOWNCAST(class_name, object) (static_cast<class_name*>(object))

/// The root of the framework's classes. Its objects are not copied unless a class says how.
class VORNAFX_API CObject {
public:
    virtual CRuntimeClass* GetRuntimeClass() const;
    virtual ~CObject();
    virtual void Serialize(CArchive& ar);
    // Always there, so that a class looks the same to debug and release builds.
    virtual void AssertValid() const;
    virtual void Dump(CDumpContext& dc) const;

    CObject(const CObject&) = delete;
    CObject& operator=(const CObject&) = delete;

    BOOL IsSerializable() const;
    BOOL IsKindOf(const CRuntimeClass* pClass) const;

    static CRuntimeClass classCObject;
    static CRuntimeClass* PASCAL _GetBaseClass();
    static CRuntimeClass* PASCAL GetThisClass();

protected:
    CObject() = default;
};

/// The object itself when it is of that class or of one derived from it, else null.
VORNAFX_API CObject* AFXAPI AfxDynamicDownCast(CRuntimeClass* pClass, CObject* pObject);

namespace vornafx {
/// `ar.ReadObject(pClass)`, for the operators that DECLARE_SERIAL makes.
VORNAFX_API CObject* readObject(CArchive& ar, CRuntimeClass* pClass);
} // namespace vornafx

#include "afxexc_.h"

#include "afxfile_.h"

#include "afxarc_.h"
