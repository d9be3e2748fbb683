// SPDX-License-Identifier: MIT

#include "afxdisp.h"

#include <cstring>

IMPLEMENT_DYNAMIC(COleException, CException)

BOOL COleException::GetErrorMessage(LPTSTR lpszError, UINT nMaxError, PUINT pnHelpContext) const {
    if (pnHelpContext != nullptr) *pnHelpContext = 0;
    if (lpszError == nullptr || nMaxError == 0) return FALSE;
    *lpszError = '\0';
    const DWORD length = ::FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                                          static_cast<DWORD>(m_sc), 0, lpszError, nMaxError, nullptr);
    return length != 0;
}

void AFXAPI AfxThrowOleException(SCODE sc) {
    throw new COleException(sc);
}

void AFXAPI AfxVariantInit(LPVARIANT pVar) {
    ::VariantInit(pVar);
}

namespace {

void check(HRESULT result) {
    if (result == E_OUTOFMEMORY) AfxThrowMemoryException();
    if (FAILED(result)) AfxThrowOleException(result);
}

BSTR makeString(LPCTSTR text, int length, VARTYPE type) {
    if (type == VT_BSTR) return CString(text, length).AllocSysString();
    if (type != VT_BSTRT) AfxThrowInvalidArgException();
    const BSTR result = ::SysAllocStringByteLen(text, static_cast<UINT>(length));
    if (result == nullptr) AfxThrowMemoryException();
    return result;
}

int lengthOf(LPCTSTR text) {
    return text == nullptr ? 0 : ::lstrlenA(text);
}

bool sameBytes(const void* left, const void* right, size_t size) {
    return std::memcmp(left, right, size) == 0;
}

bool sameString(BSTR left, BSTR right) {
    const UINT size = ::SysStringByteLen(left);
    return size == ::SysStringByteLen(right) && (size == 0 || sameBytes(left, right, size));
}

} // namespace

COleVariant::COleVariant() noexcept {
    ::VariantInit(this);
}
COleVariant::COleVariant(const VARIANT& varSrc) : COleVariant() {
    check(::VariantCopy(this, const_cast<VARIANT*>(&varSrc)));
}
COleVariant::COleVariant(LPCVARIANT pSrc) : COleVariant() {
    if (pSrc == nullptr) AfxThrowInvalidArgException();
    check(::VariantCopy(this, const_cast<VARIANT*>(pSrc)));
}
COleVariant::COleVariant(const COleVariant& varSrc) : COleVariant(static_cast<const VARIANT&>(varSrc)) {}
COleVariant::COleVariant(LPCTSTR lpszSrc) : COleVariant() {
    SetString(lpszSrc, VT_BSTR);
}
COleVariant::COleVariant(LPCTSTR lpszSrc, VARTYPE vtSrc) : COleVariant() {
    SetString(lpszSrc, vtSrc);
}
COleVariant::COleVariant(const CString& strSrc) : COleVariant() {
    *this = strSrc;
}
COleVariant::COleVariant(BYTE nSrc) : COleVariant() {
    *this = nSrc;
}

COleVariant::COleVariant(short nSrc, VARTYPE vtSrc) : COleVariant() {
    if (vtSrc != VT_I2 && vtSrc != VT_BOOL) AfxThrowInvalidArgException();
    vt = vtSrc;
    *this = nSrc;
}

COleVariant::COleVariant(long lSrc, VARTYPE vtSrc) : COleVariant() {
    if (vtSrc != VT_I4 && vtSrc != VT_ERROR && vtSrc != VT_BOOL) AfxThrowInvalidArgException();
    vt = vtSrc;
    *this = lSrc;
}

COleVariant::COleVariant(float fltSrc) : COleVariant() {
    *this = fltSrc;
}
COleVariant::COleVariant(double dblSrc) : COleVariant() {
    *this = dblSrc;
}
COleVariant::~COleVariant() {
    ::VariantClear(this);
}

void COleVariant::Clear() {
    check(::VariantClear(this));
}

void COleVariant::ChangeType(VARTYPE vartype, LPVARIANT pSrc) {
    // By way of a value of its own, since a failure in place may leave this one cleared.
    COleVariant changed;
    check(::VariantChangeType(&changed, pSrc == nullptr ? this : pSrc, 0, vartype));
    Attach(changed);
}

void COleVariant::Attach(VARIANT& varSrc) {
    if (&varSrc == this) return;
    Clear();
    static_cast<VARIANT&>(*this) = varSrc;
    ::VariantInit(&varSrc);
}

VARIANT COleVariant::Detach() {
    const VARIANT value = *this;
    ::VariantInit(this);
    return value;
}

void COleVariant::SetString(LPCTSTR lpszSrc, VARTYPE vtSrc) {
    const BSTR text = makeString(lpszSrc, lengthOf(lpszSrc), vtSrc);
    Clear();
    vt = VT_BSTR;
    bstrVal = text;
}

const COleVariant& COleVariant::operator=(const VARIANT& varSrc) {
    if (&varSrc == this) return *this;
    COleVariant copy(varSrc);
    Attach(copy);
    return *this;
}

const COleVariant& COleVariant::operator=(LPCVARIANT pSrc) {
    if (pSrc == nullptr) AfxThrowInvalidArgException();
    return *this = *pSrc;
}

const COleVariant& COleVariant::operator=(const COleVariant& varSrc) {
    return *this = static_cast<const VARIANT&>(varSrc);
}

const COleVariant& COleVariant::operator=(LPCTSTR lpszSrc) {
    SetString(lpszSrc, VT_BSTR);
    return *this;
}

const COleVariant& COleVariant::operator=(const CString& strSrc) {
    const BSTR text = makeString(strSrc, strSrc.GetLength(), VT_BSTR);
    Clear();
    vt = VT_BSTR;
    bstrVal = text;
    return *this;
}

const COleVariant& COleVariant::operator=(BYTE nSrc) {
    Clear();
    vt = VT_UI1;
    bVal = nSrc;
    return *this;
}

const COleVariant& COleVariant::operator=(short nSrc) {
    if (vt == VT_BOOL) {
        boolVal = nSrc != 0 ? VARIANT_TRUE : VARIANT_FALSE;
        return *this;
    }
    Clear();
    vt = VT_I2;
    iVal = nSrc;
    return *this;
}

const COleVariant& COleVariant::operator=(long lSrc) {
    if (vt == VT_BOOL) {
        boolVal = lSrc != 0 ? VARIANT_TRUE : VARIANT_FALSE;
    } else if (vt == VT_ERROR) {
        scode = lSrc;
    } else {
        Clear();
        vt = VT_I4;
        lVal = lSrc;
    }
    return *this;
}

const COleVariant& COleVariant::operator=(float fltSrc) {
    Clear();
    vt = VT_R4;
    fltVal = fltSrc;
    return *this;
}

const COleVariant& COleVariant::operator=(double dblSrc) {
    if (vt == VT_DATE) {
        date = dblSrc;
        return *this;
    }
    Clear();
    vt = VT_R8;
    dblVal = dblSrc;
    return *this;
}

bool COleVariant::operator==(const VARIANT& varSrc) const {
    if (vt != varSrc.vt) return false;
    if ((vt & (VT_BYREF | VT_ARRAY)) != 0) return byref == varSrc.byref;
    switch (vt) {
    case VT_EMPTY:
    case VT_NULL:
        return true;
    case VT_BOOL:
    case VT_I2:
    case VT_UI2:
        return iVal == varSrc.iVal;
    case VT_I1:
    case VT_UI1:
        return bVal == varSrc.bVal;
    case VT_I4:
    case VT_UI4:
    case VT_INT:
    case VT_UINT:
    case VT_ERROR:
        return lVal == varSrc.lVal;
    case VT_I8:
    case VT_UI8:
        return llVal == varSrc.llVal;
    case VT_R4:
        return fltVal == varSrc.fltVal;
    case VT_R8:
    case VT_DATE:
        return dblVal == varSrc.dblVal;
    case VT_CY:
        return cyVal.int64 == varSrc.cyVal.int64;
    case VT_DECIMAL:
        return ::VarDecCmp(const_cast<DECIMAL*>(&decVal), const_cast<DECIMAL*>(&varSrc.decVal)) == VARCMP_EQ;
    case VT_BSTR:
        return sameString(bstrVal, varSrc.bstrVal);
    case VT_DISPATCH:
    case VT_UNKNOWN:
        return punkVal == varSrc.punkVal;
    default:
        return false;
    }
}

CString::CString(const VARIANT& varSrc) : CString() {
    COleVariant text;
    check(::VariantChangeType(&text, const_cast<VARIANT*>(&varSrc), 0, VT_BSTR));
    *this = CString(text.bstrVal, static_cast<int>(::SysStringLen(text.bstrVal)));
}

namespace {
thread_local int oleCount = 0;
}

BOOL AFXAPI AfxOleInit() {
    if (FAILED(::OleInitialize(nullptr))) return FALSE;
    ++oleCount;
    return TRUE;
}

void AFXAPI AfxOleTerm(BOOL bJustRevoke) {
    if (bJustRevoke || oleCount == 0) return;
    --oleCount;
    ::OleUninitialize();
}
