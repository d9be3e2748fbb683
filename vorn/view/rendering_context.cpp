// SPDX-License-Identifier: MIT
#include "vorn/view/rendering_context.h"

#include "vorn/bitmaps/dib_surface.h"
#include "vorn/detail/handles.h"
#include "vorn/view/detail/current_context.h"
#include "vorn/view/detail/pixel_format.h"
#include "vorn/view/detail/render_bitmap.h"

namespace {

/// Whether a picture ends as pixels there; printers and metafiles keep it as it comes.
bool showsPixels(HDC dc) {
    const DWORD type = ::GetObjectType(dc);
    return (type == OBJ_DC || type == OBJ_MEMDC) && ::GetDeviceCaps(dc, TECHNOLOGY) == DT_RASDISPLAY;
}

} // namespace

CvornOGLDC::CvornOGLDC() : m_pSurface(new CvornDIBSurface) {}

CvornOGLDC::~CvornOGLDC() {
    delete m_pSurface;
    delete m_pPal;
}

int CvornOGLDC::Create(CWnd* pWnd, int bMetafile) {
    Destroy();
    return m_bRenderToDIB ? CreateForSurface() : CreateForWindow(pWnd, bMetafile);
}

int CvornOGLDC::CreateSurface(int cx, int cy, CWnd* pWnd) {
    // A bitmap must not go away under a context that is current on it.
    Destroy();
    m_bDeferred = false;
    if (!m_pSurface->Create(cx, cy, static_cast<HPALETTE>(nullptr))) return 0;
    return Create(pWnd, FALSE);
}

int CvornOGLDC::ResizeSurface(int cx, int cy, CWnd* pWnd) {
    ::wglMakeCurrent(nullptr, nullptr);
    m_bDeferred = false;
    if (m_pSurface->Create(cx, cy, static_cast<HPALETTE>(nullptr)) &&
        (m_pRenderBitmap == nullptr || m_pRenderBitmap->Create(cx, cy))) {
        m_pSurface->SetPalette(m_pPal);
        if (MakeCurrentContext()) return 1;
        return Create(pWnd, FALSE) && MakeCurrentContext();
    }
    Destroy();
    return 0;
}

int CvornOGLDC::CreateForSurface() {
    m_pRenderBitmap.reset();
    m_bDeferred = false;
    if (!HasSurfaceBitmap()) return 0;
    CDC* pDC = m_pSurface->GetDC();
    if (!vorn::detail::drawsInBitmapOrder(pDC->m_hDC)) {
        m_pRenderBitmap = std::make_unique<vorn::detail::RenderBitmap>();
        if (!m_pRenderBitmap->Create(m_pSurface->GetWidth(), m_pSurface->GetHeight())) return 0;
        pDC = m_pRenderBitmap->GetDC();
    }
    if (!CreateOn(pDC, FALSE)) return 0;
    // Some sizes are refused only now.
    const int usable = MakeCurrentContext();
    ::wglMakeCurrent(nullptr, nullptr);
    if (!usable) {
        Destroy();
        return 0;
    }
    m_pSurface->SetPalette(m_pPal);
    return 1;
}

int CvornOGLDC::CreateForWindow(CWnd* pWnd, int bMetafile) {
    m_pRenderBitmap.reset();
    m_bDeferred = false;
    // A printed page would stay in memory until the next one.
    if (HasSurfaceBitmap()) {
        delete m_pSurface;
        m_pSurface = new CvornDIBSurface;
    }
    vorn::detail::ClientDC client(pWnd);
    return client.get() != nullptr && CreateOn(client.get(), bMetafile);
}

int CvornOGLDC::CreateOn(CDC* pDC, int bMetafile) {
    if (!SetupPixelFormat(pDC, bMetafile) || !CreatePalette(pDC)) return 0;
    m_hRC = ::wglCreateContext(pDC->m_hDC);
    return m_hRC != nullptr;
}

/// Whether the surface holds pixels that GL may write: a fresh memory DC has a bitmap too, of one pixel.
bool CvornOGLDC::HasSurfaceBitmap() const {
    const HGDIOBJ bitmap = ::GetCurrentObject(m_pSurface->GetHDC(), OBJ_BITMAP);
    BITMAP record = {};
    return bitmap != nullptr && ::GetObjectA(bitmap, sizeof record, &record) != 0 &&
           record.bmBits != nullptr && record.bmBitsPixel == 24;
}

void CvornOGLDC::Destroy() {
    ::wglMakeCurrent(nullptr, nullptr);
    if (m_hRC == nullptr) return;
    ::wglDeleteContext(m_hRC);
    m_hRC = nullptr;
}

int CvornOGLDC::MakeCurrentContext() {
    HDC hdc = m_bRenderToDIB && m_pRenderBitmap ? m_pRenderBitmap->GetDC()->m_hDC : GetHDC();
    if (m_pRenderBitmap) m_pRenderBitmap->ExpectPicture();
    // Without a context the call would succeed, and leave none current.
    if (::wglMakeCurrent(hdc, m_hRC) && m_hRC != nullptr) return 1;
    ::wglMakeCurrent(nullptr, nullptr);
    return 0;
}

int CvornOGLDC::MakeCurrentContext(CDC* pDC) {
    m_pDC = pDC;
    return MakeCurrentContext();
}

void CvornOGLDC::Render(int x, int y, int) {
    if (!m_bRenderToDIB) {
        ::glFinish();
        ::SwapBuffers(GetHDC());
        return;
    }
    if (m_hRC == nullptr) return;
    if (m_bDeferred && m_pDC != nullptr && showsPixels(m_pDC->m_hDC)) {
        ::glFinish();
        m_pRenderBitmap->Draw(m_pDC, x, y);
        return;
    }
    UpdateSurface();
    if (m_pDC != nullptr) m_pSurface->Draw2(m_pDC, x, y);
}

void CvornOGLDC::UpdateSurface(int bDefer) {
    if (!m_bRenderToDIB || m_hRC == nullptr) return;
    ::glFinish();
    if (m_pRenderBitmap && m_pRenderBitmap->HasNewPicture()) m_bDeferred = true;
    if (!bDefer) BringPicture();
}

void CvornOGLDC::BringPicture() const {
    if (!m_bDeferred) return;
    m_bDeferred = false;
    ::GdiFlush();
    m_pRenderBitmap->CopyTo(m_pSurface->GetBitsAddress());
}

int CvornOGLDC::OnQueryNewPalette(CWnd* pWnd) {
    vorn::detail::ClientDC client(pWnd);
    if (m_pPal == nullptr || client.get() == nullptr) return 1;
    const vorn::detail::SelectedPalette selected(client.get()->m_hDC, *m_pPal);
    if (selected.realised() != 0) pWnd->Invalidate();
    return 1;
}

CDC* CvornOGLDC::GetDC() const {
    if (!m_bRenderToDIB) return m_pDC;
    BringPicture();
    return m_pSurface->GetDC();
}

HDC CvornOGLDC::GetHDC() const {
    CDC* pDC = GetDC();
    return pDC != nullptr ? pDC->m_hDC : nullptr;
}

CSize CvornOGLDC::GetDIBSize() const {
    return CSize(m_pSurface->GetWidth(), m_pSurface->GetHeight());
}
