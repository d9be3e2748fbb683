// SPDX-License-Identifier: MIT
#include <afxext.h>

IMPLEMENT_DYNAMIC(CMetaFileDC, CDC)

CMetaFileDC::~CMetaFileDC() {
    if (m_hDC == nullptr) return;
    if (::GetObjectType(m_hDC) == OBJ_ENHMETADC)
        ::DeleteEnhMetaFile(CloseEnhanced());
    else
        ::DeleteMetaFile(Close());
}

BOOL CMetaFileDC::Create(LPCTSTR lpszFilename) {
    if (m_hDC != nullptr) return FALSE;
    SetOutputDC(::CreateMetaFileA(lpszFilename));
    return m_hDC != nullptr;
}

BOOL CMetaFileDC::CreateEnhanced(CDC* pDCRef, LPCTSTR lpszFileName, LPCRECT lpBounds,
                                 LPCTSTR lpszDescription) {
    if (m_hDC != nullptr) return FALSE;
    HDC reference = pDCRef == nullptr ? nullptr : pDCRef->m_hAttribDC;
    SetOutputDC(::CreateEnhMetaFileA(reference, lpszFileName, lpBounds, lpszDescription));
    return m_hDC != nullptr;
}

HMETAFILE CMetaFileDC::Close() {
    return ::CloseMetaFile(Detach());
}

HENHMETAFILE CMetaFileDC::CloseEnhanced() {
    return ::CloseEnhMetaFile(Detach());
}
