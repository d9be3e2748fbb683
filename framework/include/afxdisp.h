// SPDX-License-Identifier: MIT
#pragma once

#include "afx.h"

#include <oleauto.h>

using LPCVARIANT = const VARIANT*;

/// An OLE call failed; `m_sc` says how.
class VORNAFX_API COleException : public CException {
    DECLARE_DYNAMIC(COleException)
public:
    explicit COleException(SCODE sc = S_OK) : m_sc(sc) {}
    BOOL GetErrorMessage(LPTSTR lpszError, UINT nMaxError, PUINT pnHelpContext = nullptr) const override;
    SCODE m_sc;
};

[[noreturn]] VORNAFX_API void AFXAPI AfxThrowOleException(SCODE sc);

/// In the constructors and SetString: store the ANSI characters in the BSTR's bytes. The type becomes
/// VT_BSTR.
#ifndef VT_BSTRT
#define VT_BSTRT (VT_BSTR | VT_RESERVED)
#endif

/// Gives a new or empty variant the type VT_EMPTY, without freeing anything.
VORNAFX_API void AFXAPI AfxVariantInit(LPVARIANT pVar);

/// A value of one of the OLE automation types, which it owns. What OLE refuses throws `COleException*`,
/// lack of memory `CMemoryException*`, a type outside the documented ones `CInvalidArgException*`; the value
/// is then unchanged.
class VORNAFX_API COleVariant : public tagVARIANT {
public:
    COleVariant() noexcept;
    COleVariant(const VARIANT& varSrc);
    COleVariant(LPCVARIANT pSrc);
    COleVariant(const COleVariant& varSrc);
    /// VT_BSTR: the characters as Unicode.
    COleVariant(LPCTSTR lpszSrc);
    explicit COleVariant(const CString& strSrc);
    /// VT_BSTR (Unicode) or VT_BSTRT (ANSI).
    COleVariant(LPCTSTR lpszSrc, VARTYPE vtSrc);
    explicit COleVariant(BYTE nSrc);
    /// VT_I2 or VT_BOOL.
    COleVariant(short nSrc, VARTYPE vtSrc = VT_I2);
    /// VT_I4, VT_ERROR or VT_BOOL.
    COleVariant(long lSrc, VARTYPE vtSrc = VT_I4);
    COleVariant(float fltSrc);
    COleVariant(double dblSrc);
    ~COleVariant();

    /// Frees the value; the type becomes VT_EMPTY.
    void Clear();
    /// Converts the value of `pSrc`, of this one when null.
    void ChangeType(VARTYPE vartype, LPVARIANT pSrc = nullptr);
    /// Takes the value over; the source becomes empty.
    void Attach(VARIANT& varSrc);
    /// Hands the value to the caller and becomes empty.
    VARIANT Detach();
    void SetString(LPCTSTR lpszSrc, VARTYPE vtSrc);

    operator LPVARIANT() { return this; }
    operator LPCVARIANT() const { return this; }

    /// Same type and same value.
    bool operator==(const VARIANT& varSrc) const;
    bool operator==(const COleVariant& varSrc) const { return *this == static_cast<const VARIANT&>(varSrc); }
    bool operator==(LPCVARIANT pSrc) const { return pSrc != nullptr && *this == *pSrc; }

    const COleVariant& operator=(const VARIANT& varSrc);
    const COleVariant& operator=(LPCVARIANT pSrc);
    const COleVariant& operator=(const COleVariant& varSrc);
    const COleVariant& operator=(LPCTSTR lpszSrc);
    const COleVariant& operator=(const CString& strSrc);
    const COleVariant& operator=(BYTE nSrc);
    /// A variant that holds a BOOL keeps that type.
    const COleVariant& operator=(short nSrc);
    const COleVariant& operator=(long lSrc);
    const COleVariant& operator=(float fltSrc);
    const COleVariant& operator=(double dblSrc);
};

/// Makes OLE ready on this thread; FALSE when it is used differently already.
VORNAFX_API BOOL AFXAPI AfxOleInit();
VORNAFX_API void AFXAPI AfxOleTerm(BOOL bJustRevoke = FALSE);
