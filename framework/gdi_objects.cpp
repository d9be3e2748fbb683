// SPDX-License-Identifier: MIT
#include "thread_state.h"

using vornafx::threadState;

IMPLEMENT_DYNCREATE(CGdiObject, CObject)
IMPLEMENT_DYNAMIC(CPen, CGdiObject)
IMPLEMENT_DYNAMIC(CBrush, CGdiObject)
IMPLEMENT_DYNAMIC(CFont, CGdiObject)
IMPLEMENT_DYNAMIC(CBitmap, CGdiObject)
IMPLEMENT_DYNAMIC(CPalette, CGdiObject)
IMPLEMENT_DYNAMIC(CRgn, CGdiObject)

namespace {

/// A temporary object of the class that fits the kind of the handle.
std::unique_ptr<CGdiObject> objectFor(HGDIOBJ handle) {
    switch (::GetObjectType(handle)) {
    case OBJ_PEN:
    case OBJ_EXTPEN:
        return std::make_unique<CPen>();
    case OBJ_BRUSH:
        return std::make_unique<CBrush>();
    case OBJ_FONT:
        return std::make_unique<CFont>();
    case OBJ_BITMAP:
        return std::make_unique<CBitmap>();
    case OBJ_PAL:
        return std::make_unique<CPalette>();
    case OBJ_REGION:
        return std::make_unique<CRgn>();
    default:
        return std::make_unique<CGdiObject>();
    }
}

HDC handleOf(const CDC* dc) {
    return dc == nullptr ? nullptr : dc->m_hDC;
}

} // namespace

CGdiObject::~CGdiObject() {
    DeleteObject();
}

CGdiObject* CGdiObject::FromHandle(HGDIOBJ hObject) {
    CGdiObject* object = threadState().gdiObjects.fromHandle(hObject, [&] { return objectFor(hObject); });
    if (object != nullptr) object->m_hObject = hObject;
    return object;
}

void CGdiObject::DeleteTempMap() {
    threadState().gdiObjects.deleteTemporaries();
}

BOOL CGdiObject::Attach(HGDIOBJ hObject) {
    if (hObject == nullptr || m_hObject != nullptr) return FALSE;
    threadState().gdiObjects.setPermanent(hObject, this);
    m_hObject = hObject;
    return TRUE;
}

BOOL CGdiObject::Take(HGDIOBJ hObject) {
    if (Attach(hObject)) return TRUE;
    if (hObject != nullptr) ::DeleteObject(hObject);
    return FALSE;
}

HGDIOBJ CGdiObject::Detach() {
    HGDIOBJ object = std::exchange(m_hObject, nullptr);
    if (object != nullptr) threadState().gdiObjects.removePermanent(object, this);
    return object;
}

BOOL CGdiObject::DeleteObject() {
    return m_hObject != nullptr && ::DeleteObject(Detach());
}

BOOL CGdiObject::CreateStockObject(int nIndex) {
    return Attach(::GetStockObject(nIndex));
}

CPen::CPen(int nPenStyle, int nWidth, COLORREF crColor) {
    if (!CreatePen(nPenStyle, nWidth, crColor)) AfxThrowResourceException();
}

CBrush::CBrush(COLORREF crColor) {
    if (!CreateSolidBrush(crColor)) AfxThrowResourceException();
}

CBrush::CBrush(int nIndex, COLORREF crColor) {
    if (!CreateHatchBrush(nIndex, crColor)) AfxThrowResourceException();
}

CBrush::CBrush(CBitmap* pBitmap) {
    if (!CreatePatternBrush(pBitmap)) AfxThrowResourceException();
}

BOOL CBrush::CreatePatternBrush(CBitmap* pBitmap) {
    return Take(::CreatePatternBrush(*pBitmap));
}

BOOL CFont::CreatePointFont(int nPointSize, LPCTSTR lpszFaceName, CDC* pDC) {
    LOGFONTA font{};
    font.lfCharSet = DEFAULT_CHARSET;
    font.lfHeight = nPointSize;
    ::lstrcpynA(font.lfFaceName, lpszFaceName, LF_FACESIZE);
    return CreatePointFontIndirect(&font, pDC);
}

BOOL CFont::CreatePointFontIndirect(const LOGFONT* lpLogFont, CDC* pDC) {
    HDC screen = pDC == nullptr ? ::GetDC(nullptr) : nullptr;
    HDC dc = pDC == nullptr ? screen : pDC->m_hAttribDC;
    // The height in device units, then in the logical units of the DC; only the scale counts, not the origin.
    POINT size{0, ::MulDiv(::GetDeviceCaps(dc, LOGPIXELSY), lpLogFont->lfHeight, 720)};
    POINT origin{0, 0};
    ::DPtoLP(dc, &size, 1);
    ::DPtoLP(dc, &origin, 1);
    LOGFONTA font = *lpLogFont;
    font.lfHeight = -std::abs(size.y - origin.y);
    if (screen != nullptr) ::ReleaseDC(nullptr, screen);
    return CreateFontIndirect(&font);
}

BOOL CBitmap::LoadBitmap(LPCTSTR lpszResourceName) {
    return Take(::LoadBitmapA(AfxFindResourceHandle(lpszResourceName, RT_BITMAP), lpszResourceName));
}

BOOL CBitmap::CreateCompatibleBitmap(CDC* pDC, int nWidth, int nHeight) {
    return Take(::CreateCompatibleBitmap(handleOf(pDC), nWidth, nHeight));
}

BOOL CBitmap::CreateDiscardableBitmap(CDC* pDC, int nWidth, int nHeight) {
    return Take(::CreateDiscardableBitmap(handleOf(pDC), nWidth, nHeight));
}

BOOL CPalette::CreateHalftonePalette(CDC* pDC) {
    return Take(::CreateHalftonePalette(handleOf(pDC)));
}

BOOL CRgn::CreateFromPath(CDC* pDC) {
    return Take(::PathToRegion(handleOf(pDC)));
}
