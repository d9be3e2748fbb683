// SPDX-License-Identifier: MIT
#include "vorn/bitmaps/image.h"

#include "vorn/bitmaps/detail/picture_check.h"
#include "vorn/bitmaps/detail/whole_file.h"
#include "vorn/bitmaps/image_codec.h"

#include <afxpriv.h>
#include <cstring>
#include <new>
#include <olectl.h>
#include <utility>

namespace {

using namespace vorn::detail;

/// The halftone stretch mode, which smooths, for the length of a scope.
class SmoothStretch {
public:
    explicit SmoothStretch(HDC dc) : m_dc(dc), m_oldMode(::SetStretchBltMode(dc, HALFTONE)) {
        ::SetBrushOrgEx(dc, 0, 0, &m_oldOrigin);
    }
    ~SmoothStretch() {
        ::SetStretchBltMode(m_dc, m_oldMode);
        ::SetBrushOrgEx(m_dc, m_oldOrigin.x, m_oldOrigin.y, nullptr);
    }
    SmoothStretch(const SmoothStretch&) = delete;
    SmoothStretch& operator=(const SmoothStretch&) = delete;

private:
    HDC m_dc;
    int m_oldMode;
    POINT m_oldOrigin = {0, 0};
};

/// A bitmap resource is a BMP file without its first header, which the picture loader wants to see.
HeapBytes withFileHeader(std::span<const BYTE> resource) {
    DWORD headerSize = 0;
    if (resource.size() > sizeof headerSize) std::memcpy(&headerSize, resource.data(), sizeof headerSize);
    bool isBare = headerSize == sizeof(BITMAPCOREHEADER) ||
                  (headerSize >= sizeof(BITMAPINFOHEADER) && headerSize <= sizeof(BITMAPV5HEADER));
    size_t added = isBare ? sizeof(BITMAPFILEHEADER) : 0;
    HeapBytes file{MallocPtr<BYTE>(static_cast<BYTE*>(std::malloc(resource.size() + added + 1))),
                   resource.size() + added};
    if (!file.data) return {};
    if (isBare) {
        BITMAPFILEHEADER header = {};
        header.bfType = 0x4D42;
        header.bfSize = static_cast<DWORD>(file.size);
        header.bfOffBits = static_cast<DWORD>(sizeof header + bitmapPixelOffset(resource));
        std::memcpy(file.data.get(), &header, sizeof header);
    }
    std::memcpy(file.data.get() + added, resource.data(), resource.size());
    return file;
}

void fillMargins(CDC* dc, const CRect& rc, const CRect& placed, COLORREF colour) {
    const CRect strips[] = {{rc.left, rc.top, placed.left, rc.bottom},
                            {rc.left, rc.top, rc.right, placed.top},
                            {placed.right, rc.top, rc.right, rc.bottom},
                            {rc.left, placed.bottom, rc.right, rc.bottom}};
    for (const CRect& strip : strips) {
        if (strip.right > strip.left && strip.bottom > strip.top) dc->FillSolidRect(&strip, colour);
    }
}

/// Shrinks one side so that width / height becomes the aspect ratio; false when nothing is left.
bool fitAspect(SIZE& size, float aspect) {
    if (size.cx <= 0 || size.cy <= 0 || !(aspect > 0)) return false;
    if (aspect >= static_cast<float>(size.cx) / static_cast<float>(size.cy)) {
        size.cy = static_cast<LONG>(static_cast<float>(size.cx) / aspect);
    } else {
        size.cx = static_cast<LONG>(static_cast<float>(size.cy) * aspect);
    }
    return true;
}

} // namespace

CvornImageX::CvornImageX(const CvornImageX& other) {
    *this = other;
}

CvornImageX& CvornImageX::operator=(const CvornImageX& other) {
    if (other.m_pPicture != nullptr) other.m_pPicture->AddRef();
    if (m_pPicture != nullptr) m_pPicture->Release();
    m_pPicture = other.m_pPicture;
    m_pImage = other.m_pImage;
    m_hrLastQuery = other.m_hrLastQuery;
    m_bOpen = other.m_bOpen;
    m_nAlignV = other.m_nAlignV;
    m_nAlignH = other.m_nAlignH;
    m_strPathName = other.m_strPathName;
    m_bMaintainAspect = other.m_bMaintainAspect;
    return *this;
}

CvornImageX::~CvornImageX() {
    Free();
}

void CvornImageX::Free() {
    AFX_MANAGE_STATE(AfxGetStaticModuleState());
    m_pImage.reset();
    if (m_pPicture != nullptr) std::exchange(m_pPicture, nullptr)->Release();
    m_bOpen = FALSE;
}

void CvornImageX::Close() {
    m_strPathName.Empty();
    Free();
}

BOOL CvornImageX::LoadOle(IStream* pStream, bool bLeaveBlended) {
    Free();
    HeapBytes bytes;
    if (pStream == nullptr || !readWholeStream(pStream, bytes)) return FALSE;
    // NOTE: loaders of some systems follow the offsets of a hostile file out of its bytes, so they get to see
    // only what has been checked. Metafiles, whose records nobody checks when they are played, are left out.
    if (checkPicture(bytes.view()) != PictureState::sound) return FALSE;
    // An OLE picture knows no half-transparent pixels; the codec blends them.
    if (bLeaveBlended && mayBlend(bytes.view())) return FALSE;
    ComScope com;
    ComPtr<MemoryStream> stream(new MemoryStream(std::move(bytes)));
    HRESULT result =
        ::OleLoadPicture(stream.get(), 0, FALSE, IID_IPicture, reinterpret_cast<void**>(&m_pPicture));
    if (FAILED(result)) m_pPicture = nullptr;
    m_bOpen = m_pPicture != nullptr;
    return m_bOpen;
}

BOOL CvornImageX::LoadOle(CFile& file, bool bLeaveBlended) {
    constexpr int bufferSize = 4096;
    try {
        CArchive ar(&file, CArchive::load | CArchive::bNoFlushOnDelete, bufferSize);
        CArchiveStream stream(&ar);
        return LoadOle(&stream, bLeaveBlended);
    } catch (CException* failure) {
        failure->Delete();
        return FALSE;
    } catch (const std::bad_alloc&) {
        return FALSE;
    }
}

BOOL CvornImageX::Load(const char* pszPath) {
    AFX_MANAGE_STATE(AfxGetStaticModuleState());
    // The name may be this object's own.
    CString path(pszPath);
    Close();
    if (path.IsEmpty()) return TRUE;
    CFile file;
    if (!file.Open(path, CFile::modeRead | CFile::shareDenyWrite)) return FALSE;
    if (!LoadOle(file, true) && !LoadCodec(path)) return FALSE;
    m_strPathName = path;
    return TRUE;
}

BOOL CvornImageX::LoadCodec(const char* pszPath) {
    auto image = std::make_shared<CvornImageCodec>();
    if (!image->Load(pszPath)) return FALSE;
    m_pImage = std::move(image);
    m_bOpen = TRUE;
    return TRUE;
}

BOOL CvornImageX::Load(CFile& file) {
    AFX_MANAGE_STATE(AfxGetStaticModuleState());
    return LoadOle(file, false);
}

BOOL CvornImageX::Load(CArchive& ar) {
    AFX_MANAGE_STATE(AfxGetStaticModuleState());
    CArchiveStream stream(&ar);
    return Load(&stream);
}

BOOL CvornImageX::Load(IStream* pStream) {
    AFX_MANAGE_STATE(AfxGetStaticModuleState());
    try {
        return LoadOle(pStream, false);
    } catch (const std::bad_alloc&) {
        return FALSE;
    }
}

BOOL CvornImageX::Load(UINT nID, HINSTANCE hInst) {
    AFX_MANAGE_STATE(AfxGetStaticModuleState());
    Free();
    if (hInst == nullptr) hInst = AfxGetResourceHandle();
    HRSRC resource = ::FindResourceA(hInst, MAKEINTRESOURCEA(nID), RT_BITMAP);
    HGLOBAL handle = resource != nullptr ? ::LoadResource(hInst, resource) : nullptr;
    const void* data = handle != nullptr ? ::LockResource(handle) : nullptr;
    if (data == nullptr) return FALSE;
    HeapBytes bytes = withFileHeader({static_cast<const BYTE*>(data), ::SizeofResource(hInst, resource)});
    // A resource is part of its module's image; freeing it as global memory would corrupt the heap.
    ::FreeResource(handle);
    if (!bytes.data) return FALSE;
    CMemFile file(bytes.data.get(), static_cast<UINT>(bytes.size));
    m_bOpen = Load(file);
    return m_bOpen;
}

float CvornImageX::GetWidth(int) const {
    OLE_XSIZE_HIMETRIC width = 0;
    if (m_bOpen && m_pPicture != nullptr) m_pPicture->get_Width(&width);
    return static_cast<float>(width);
}

float CvornImageX::GetHeight(int) const {
    OLE_YSIZE_HIMETRIC height = 0;
    if (m_bOpen && m_pPicture != nullptr) m_pPicture->get_Height(&height);
    return static_cast<float>(height);
}

void CvornImageX::GetHIMETRICSize(long& cx, long& cy) const {
    cx = 0;
    cy = 0;
    if (m_pPicture == nullptr) return;
    m_hrLastQuery = m_pPicture->get_Width(&cx);
    m_hrLastQuery = m_pPicture->get_Height(&cy);
}

CSize CvornImageX::GetImageSize(CDC* pDC) const {
    AFX_MANAGE_STATE(AfxGetStaticModuleState());
    if (!m_bOpen) return {0, 0};
    if (m_pImage) return {m_pImage->GetWidth(), m_pImage->GetHeight()};
    CSize size(0, 0);
    GetHIMETRICSize(size.cx, size.cy);
    if (pDC != nullptr) {
        pDC->HIMETRICtoDP(&size);
    } else {
        CWindowDC screen(nullptr);
        screen.HIMETRICtoDP(&size);
    }
    return size;
}

CString CvornImageX::GetFileFromPathName(const char* pszPath) {
    if (pszPath == nullptr) return {};
    CString path(pszPath);
    return path.Mid(path.ReverseFind('\\') + 1);
}

bool CvornImageX::Place(CDC* pDC, const CRect& rc, CRect& rcPlaced) const {
    const int W = rc.Width(), H = rc.Height();
    if (pDC == nullptr || W <= 0 || H <= 0) return false;
    const CSize image = GetImageSize(pDC);
    const int cx = image.cx, cy = image.cy;
    if (cx <= 0 || cy <= 0) return false;

    int left = rc.left, top = rc.top;
    int width = m_nAlignH != 0 ? cx : W, height = m_nAlignV != 0 ? cy : H;
    if (m_bMaintainAspect && m_nAlignH == 0 && m_nAlignV == 0) {
        double pictureRatio = static_cast<double>(cx) / cy, ratio = static_cast<double>(W) / H;
        if (pictureRatio > ratio) {
            height = static_cast<int>(static_cast<double>(W) / cx * cy);
            left = 0;
            top = (H - height) / 2;
        } else if (ratio > pictureRatio) {
            width = static_cast<int>(static_cast<double>(H) / cy * cx);
            left = (W - width) / 2;
            top = 0;
        }
    }
    if (m_nAlignH == 2 && W > cx) left = W / 2 - cx / 2;
    // The vertical centring asks for the width too; applications rely on it.
    if (m_nAlignV == 2 && W > cx) top = H / 2 - cy / 2;
    if (m_nAlignH == 3 && W > cx) left = rc.right - cx;
    if (m_nAlignV == 4 && H > cy) top = rc.bottom - cy;
    rcPlaced.SetRect(left, top, left + width, top + height);
    return true;
}

CRect CvornImageX::GetDrawRect(CDC* pDC, CRect rc) const {
    CRect placed;
    return Place(pDC, rc, placed) ? placed : CRect(0, 0, 1, 1);
}

void CvornImageX::RenderOle(CDC* pDC, const CRect& rc, const RECT* pBounds) const {
    long width = 0, height = 0;
    GetHIMETRICSize(width, height);
    SmoothStretch smooth(pDC->m_hDC);
    // The source lies bottom up in HIMETRIC units, so it begins at its height and goes down.
    m_pPicture->Render(pDC->m_hDC, rc.left, rc.top, rc.Width(), rc.Height(), 0, height, width, -height,
                       pBounds);
}

BOOL CvornImageX::Render(CDC* pDC, BOOL bFill, COLORREF clrBack, CRect rc, const RECT* pBounds) const {
    AFX_MANAGE_STATE(AfxGetStaticModuleState());
    if (pDC == nullptr || rc.IsRectEmpty()) return TRUE;
    if (!m_bOpen) {
        if (bFill) pDC->FillSolidRect(&rc, clrBack);
        return TRUE;
    }
    CRect placed;
    if (!Place(pDC, rc, placed)) return TRUE;
    if (m_pImage) {
        m_pImage->Draw(pDC->m_hDC, placed.left, placed.top, placed.Width(), placed.Height());
    } else {
        RenderOle(pDC, placed, pBounds);
    }
    fillMargins(pDC, rc, placed, clrBack);
    return TRUE;
}

BOOL CvornImageX::Render2(CDC* pDC, int nUnused, DWORD, CRect rc, const RECT*) const {
    AFX_MANAGE_STATE(AfxGetStaticModuleState());
    if (pDC == nullptr || rc.IsRectEmpty() || !m_bOpen) return TRUE;
    CSize size(rc.Width(), rc.Height());
    if (m_pImage) {
        pDC->HIMETRICtoDP(&size);
        float aspect = static_cast<float>(m_pImage->GetWidth()) / static_cast<float>(m_pImage->GetHeight());
        if (fitAspect(size, aspect)) m_pImage->Draw(pDC->m_hDC, rc.left, rc.top, size.cx, size.cy);
    } else if (fitAspect(size, GetWidth(nUnused) / GetHeight(nUnused))) {
        RenderOle(pDC, CRect(rc.TopLeft(), size), nullptr);
    }
    return TRUE;
}
