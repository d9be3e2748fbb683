// SPDX-License-Identifier: MIT
#include "thread_state.h"
#include <cstring>

// Device contexts: their handles, what is selected into them, and where they come from.

using vornafx::threadState;

IMPLEMENT_DYNCREATE(CDC, CObject)
IMPLEMENT_DYNAMIC(CClientDC, CDC)
IMPLEMENT_DYNAMIC(CWindowDC, CDC)
IMPLEMENT_DYNAMIC(CPaintDC, CDC)

CDC::~CDC() {
    if (m_hDC != nullptr) ::DeleteDC(CDC::Detach());
}

// ---- handles

CDC* CDC::FromHandle(HDC hDC) {
    auto& map = threadState().deviceContexts;
    CDC* dc = map.fromHandle(hDC, [] { return std::make_unique<CDC>(); });
    if (dc != nullptr && map.permanent(hDC) == nullptr) dc->m_hDC = dc->m_hAttribDC = hDC;
    return dc;
}

void CDC::DeleteTempMap() {
    threadState().deviceContexts.deleteTemporaries();
}

BOOL CDC::Attach(HDC hDC) {
    if (hDC == nullptr || m_hDC != nullptr) return FALSE;
    threadState().deviceContexts.setPermanent(hDC, this);
    m_hDC = hDC;
    SetAttribDC(hDC);
    return TRUE;
}

HDC CDC::Detach() {
    HDC dc = m_hDC;
    if (dc != nullptr) threadState().deviceContexts.removePermanent(dc, this);
    ReleaseAttribDC();
    m_hDC = nullptr;
    return dc;
}

void CDC::SetOutputDC(HDC hDC) {
    ReleaseOutputDC();
    if (hDC == nullptr) return;
    threadState().deviceContexts.setPermanent(hDC, this);
    m_hDC = hDC;
}

void CDC::ReleaseOutputDC() {
    if (m_hDC != nullptr) threadState().deviceContexts.removePermanent(m_hDC, this);
    m_hDC = nullptr;
}

CWnd* CDC::GetWindow() const {
    return CWnd::FromHandle(::WindowFromDC(m_hDC));
}

BOOL CDC::CreateDC(LPCTSTR driver, LPCTSTR device, LPCTSTR output, const void* initData) {
    if (m_hDC != nullptr) return FALSE;
    return Attach(::CreateDCA(driver, device, output, static_cast<const DEVMODEA*>(initData)));
}

BOOL CDC::CreateIC(LPCTSTR driver, LPCTSTR device, LPCTSTR output, const void* initData) {
    if (m_hDC != nullptr) return FALSE;
    return Attach(::CreateICA(driver, device, output, static_cast<const DEVMODEA*>(initData)));
}

BOOL CDC::CreateCompatibleDC(CDC* pDC) {
    if (m_hDC != nullptr) return FALSE;
    return Attach(::CreateCompatibleDC(pDC == nullptr ? nullptr : pDC->m_hDC));
}

BOOL CDC::DeleteDC() {
    return m_hDC != nullptr && ::DeleteDC(Detach());
}

// The state of two distinct DCs cannot be told by one number: only the last save can be restored then.

int CDC::SaveDC() {
    int saved = m_hAttribDC == nullptr ? 0 : ::SaveDC(m_hAttribDC);
    if (m_hDC != m_hAttribDC && ::SaveDC(m_hDC) != 0) saved = -1;
    return saved;
}

BOOL CDC::RestoreDC(int nSavedDC) {
    BOOL restored = TRUE;
    if (m_hDC != m_hAttribDC) restored = ::RestoreDC(m_hDC, nSavedDC);
    if (m_hAttribDC != nullptr) restored = ::RestoreDC(m_hAttribDC, nSavedDC) && restored;
    return restored;
}

// ---- objects

HGDIOBJ CDC::SelectHandle(HGDIOBJ object) {
    HGDIOBJ former = nullptr;
    if (m_hDC != m_hAttribDC) former = ::SelectObject(m_hDC, object);
    if (m_hAttribDC != nullptr) former = ::SelectObject(m_hAttribDC, object);
    return former;
}

CGdiObject* CDC::SelectGdiObject(CGdiObject* object) {
    return object == nullptr ? nullptr : CGdiObject::FromHandle(SelectHandle(object->m_hObject));
}

CGdiObject* CDC::SelectStockObject(int nIndex) {
    return CGdiObject::FromHandle(SelectHandle(::GetStockObject(nIndex)));
}

CFont* CDC::SelectObject(CFont* pFont) {
    return static_cast<CFont*>(SelectGdiObject(pFont));
}

CBitmap* CDC::SelectObject(CBitmap* pBitmap) {
    if (pBitmap == nullptr) return nullptr;
    return CBitmap::FromHandle(static_cast<HBITMAP>(::SelectObject(m_hDC, *pBitmap)));
}

int CDC::SelectObject(CRgn* pRgn) {
    return SelectClipRgn(pRgn);
}

CPalette* CDC::SelectPalette(CPalette* pPalette, BOOL bForceBackground) {
    if (pPalette == nullptr) return nullptr;
    HPALETTE former = ::SelectPalette(m_hDC, *pPalette, bForceBackground);
    if (m_hAttribDC != nullptr && m_hAttribDC != m_hDC)
        former = ::SelectPalette(m_hAttribDC, *pPalette, bForceBackground);
    return CPalette::FromHandle(former);
}

// ---- documents

int CDC::StartDoc(LPCTSTR lpszDocName) {
    DOCINFOA info{};
    info.cbSize = sizeof(info);
    info.lpszDocName = lpszDocName;
    return StartDoc(&info);
}

// ---- the DCs of a window

CClientDC::CClientDC(CWnd* pWnd) : m_hWnd(pWnd->GetSafeHwnd()) {
    if (!Attach(::GetDC(m_hWnd))) AfxThrowResourceException();
}

CClientDC::~CClientDC() {
    if (m_hDC != nullptr) ::ReleaseDC(m_hWnd, Detach());
}

CWindowDC::CWindowDC(CWnd* pWnd) : m_hWnd(pWnd->GetSafeHwnd()) {
    if (!Attach(::GetWindowDC(m_hWnd))) AfxThrowResourceException();
}

CWindowDC::~CWindowDC() {
    if (m_hDC != nullptr) ::ReleaseDC(m_hWnd, Detach());
}

CPaintDC::CPaintDC(CWnd* pWnd) : m_ps{}, m_hWnd(pWnd->GetSafeHwnd()) {
    if (!Attach(::BeginPaint(m_hWnd, &m_ps))) AfxThrowResourceException();
}

CPaintDC::~CPaintDC() {
    if (m_hDC == nullptr) return;
    ::EndPaint(m_hWnd, &m_ps);
    Detach();
}
