// SPDX-License-Identifier: MIT
#include "vorn/copy/copy_render.h"

#include "vorn/bitmaps/image_codec.h"
#include "vorn/copy/copy_info.h"
#include "vorn/detail/handles.h"

using vorn::detail::SelectedObject;
using vorn::detail::UniqueBitmap;
using vorn::detail::UniqueMemoryDC;
using vorn::detail::WindowDC;

namespace {

/// A copy of a bitmap that no DC holds; empty on failure. CopyImage takes four times as long.
UniqueBitmap copyOf(HBITMAP bitmap) {
    BITMAP record = {};
    ::GetObjectA(bitmap, sizeof record, &record);
    const UniqueMemoryDC from(::CreateCompatibleDC(nullptr)), to(::CreateCompatibleDC(nullptr));
    const SelectedObject source(from.get(), bitmap);
    UniqueBitmap copy(::CreateCompatibleBitmap(from.get(), record.bmWidth, record.bmHeight));
    const SelectedObject target(to.get(), copy.get());
    if (!source || !target ||
        !::BitBlt(to.get(), 0, 0, record.bmWidth, record.bmHeight, from.get(), 0, 0, SRCCOPY))
        return {};
    return copy;
}

} // namespace

CvornCopyRender::~CvornCopyRender() {
    Destroy(FALSE);
}

BOOL CvornCopyRender::CreateMemoryDC(HDC hdcReference) {
    if (m_dc.m_hDC != nullptr) return FALSE;
    const HDC memory = ::CreateCompatibleDC(hdcReference);
    if (memory == nullptr || !m_dc.Attach(memory)) return FALSE;
    m_nSavedDC = m_dc.SaveDC();
    return TRUE;
}

void CvornCopyRender::SelectBitmap(CBitmap* pBitmap) {
    m_hOldBitmap = ::SelectObject(m_dc.m_hDC, pBitmap->GetSafeHandle());
    m_nSavedDCBitmap = m_dc.SaveDC();
}

// The bitmap's dimension in 0.1 mm, truncated from HIMETRIC, as GDI keeps it with the bitmap.
CSize CvornCopyRender::SetDimension(CBitmap* pBitmap, CSize size) {
    m_dc.DPtoHIMETRIC(&size);
    const CSize dimension(size.cx / 10, size.cy / 10);
    pBitmap->SetBitmapDimension(dimension.cx, dimension.cy);
    return dimension;
}

BOOL CvornCopyRender::Setup(CvornCopyInfo* pInfo, CWnd* pWnd, CBitmap* pBitmap) {
    const bool create = pBitmap == nullptr || pBitmap->GetSafeHandle() == nullptr;
    m_sizeDP = CSize(0, 0);
    if (pInfo == nullptr || pWnd == nullptr) return FALSE;
    const WindowDC window(pWnd->GetSafeHwnd());
    if (pWnd->GetSafeHwnd() == nullptr || !window) return FALSE;

    m_sizeDP = pInfo->GetDPSize(CDC::FromHandle(window.get()), pWnd);
    if (m_sizeDP.cx < 1 || m_sizeDP.cy < 1) return FALSE;
    if (pInfo->nFormat == CF_METAFILEPICT) return TRUE;

    if (!CreateMemoryDC(window.get())) return FALSE;
    CBitmap* target = pBitmap != nullptr ? pBitmap : this;
    if (create) {
        target->DeleteObject();
        if (!target->Attach(::CreateCompatibleBitmap(window.get(), m_sizeDP.cx, m_sizeDP.cy))) return FALSE;
        SetDimension(target, m_sizeDP);
    }
    m_bBorder = pInfo->IsBorder();
    SelectBitmap(target);
    return TRUE;
}

BOOL CvornCopyRender::Setup(CSize size, CWnd* pWnd) {
    if (pWnd != nullptr && pWnd->GetSafeHwnd() == nullptr) return FALSE;
    const WindowDC window(pWnd != nullptr ? pWnd->GetSafeHwnd() : nullptr);
    const HDC reference = pWnd != nullptr ? window.get() : nullptr;
    if (!CreateMemoryDC(reference)) return FALSE;
    // Without a window the memory DC is the reference, whose first bitmap is monochrome.
    DeleteObject();
    if (!Attach(::CreateCompatibleBitmap(reference != nullptr ? reference : m_dc.m_hDC, size.cx, size.cy)))
        return FALSE;
    m_sizeDimension = SetDimension(this, size);
    SelectBitmap(this);
    return TRUE;
}

void CvornCopyRender::DrawBorder() {
    if (!m_bBorder) return;
    if (m_nSavedDCBitmap != 0) {
        m_dc.RestoreDC(m_nSavedDCBitmap);
        m_nSavedDCBitmap = m_dc.SaveDC();
    }
    m_dc.SelectStockObject(BLACK_PEN);
    m_dc.SelectStockObject(NULL_BRUSH);
    CSize size = GetBitmapDimension();
    size.cx *= 10;
    size.cy *= 10;
    m_dc.HIMETRICtoLP(&size);
    m_dc.Rectangle(0, 0, size.cx, size.cy);
}

void CvornCopyRender::Copy() {
    DrawBorder();
    const auto own = static_cast<HBITMAP>(GetSafeHandle());
    vorn::detail::UniqueGlobal dib(dibFromBitmap(own, BI_RGB, 0, nullptr));
    bool placed = false;
    if (dib && ::OpenClipboard(nullptr)) {
        ::EmptyClipboard();
        placed = ::SetClipboardData(CF_DIB, dib.get()) != nullptr;
        if (placed) dib.release();
        ::CloseClipboard();
    }
    if (own == nullptr || !::OpenClipboard(nullptr)) return;
    if (!placed) ::EmptyClipboard();
    GiveToClipboard();
    ::CloseClipboard();
}

// A bitmap on the clipboard must not be selected into a DC and dies with the next change there, so the object
// keeps a copy of what it gives away.
void CvornCopyRender::GiveToClipboard() {
    const auto own = static_cast<HBITMAP>(GetSafeHandle());
    const bool selected = m_nSavedDC != 0;
    if (selected) {
        m_dc.RestoreDC(m_nSavedDC);
        m_nSavedDC = m_dc.SaveDC();
    }
    UniqueBitmap copy = copyOf(own);
    const CSize dimension = GetBitmapDimension();
    if (copy && ::SetClipboardData(CF_BITMAP, own) != nullptr) {
        Detach();
        Attach(copy.release());
        SetBitmapDimension(dimension.cx, dimension.cy);
    }
    if (selected) SelectBitmap(this);
}

// GDI reads a bitmap only while no DC holds it.
HGDIOBJ CvornCopyRender::ReplacedBitmap() const {
    return m_nSavedDCBitmap != 0 ? m_hOldBitmap : nullptr;
}

void CvornCopyRender::Export(const char* pszFile, int nFormat) {
    DrawBorder();
    const SelectedObject released(m_dc.m_hDC, ReplacedBitmap());
    CvornImageCodec::SaveBitmap(pszFile, nFormat, static_cast<HBITMAP>(GetSafeHandle()));
}

void CvornCopyRender::ExportBMP(const char* pszFile) {
    Export(pszFile, CvornImageCodec::FORMAT_BMP);
}

void CvornCopyRender::ExportJPEG(const char* pszFile) {
    Export(pszFile, CvornImageCodec::FORMAT_JPEG);
}

void CvornCopyRender::ExportPNG(const char* pszFile) {
    Export(pszFile, CvornImageCodec::FORMAT_PNG);
}

BYTE* CvornCopyRender::ExportJPEGBuffer(DWORD& nSize) {
    nSize = 0;
    CvornImageCodec image;
    const SelectedObject released(m_dc.m_hDC, ReplacedBitmap());
    if (!image.CreateFromHBITMAP(static_cast<HBITMAP>(GetSafeHandle()))) return nullptr;
    return image.Encode(CvornImageCodec::FORMAT_PNG, nSize);
}

void CvornCopyRender::Draw(CDC* pDC) {
    if (pDC == nullptr) return;
    ::SelectObject(pDC->m_hDC, GetSafeHandle());
    ::BitBlt(pDC->m_hDC, 0, 0, m_sizeDimension.cx, m_sizeDimension.cy, pDC->m_hDC, 0, 0, SRCCOPY);
}

void CvornCopyRender::Destroy(BOOL bDeleteBitmap) {
    if (m_nSavedDC != 0) m_dc.RestoreDC(m_nSavedDC);
    m_nSavedDC = 0;
    m_nSavedDCBitmap = 0;
    m_hOldBitmap = nullptr;
    if (m_dc.m_hDC != nullptr) m_dc.DeleteDC();
    if (bDeleteBitmap && GetSafeHandle() != nullptr) DeleteObject();
}
