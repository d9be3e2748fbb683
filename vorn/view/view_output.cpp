// SPDX-License-Identifier: MIT
#include "vorn/view/view_window.h"

#include "vorn/detail/handles.h"
#include "vorn/view/detail/current_context.h"
#include "vorn/view/detail/picture_tile.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <memory>

namespace {

// Surface, colours and depth take some 15 bytes a pixel; an A4 page of 600 dpi is still drawn at once.
constexpr std::int64_t largestPicture = 40'000'000;
constexpr int tilePixels = 16'000'000;

constexpr char metafileName[] = "C:\\test.emf";
constexpr char metafileDescription[] = "KEST Modal\0Model View\0";

/// Of the current context.
CSize largestViewport() {
    GLint size[2] = {};
    ::glGetIntegerv(GL_MAX_VIEWPORT_DIMS, size);
    return CSize(size[0], size[1]);
}

} // namespace

/// Gives the view the size of an output for a scope; its own size and context come back at the end.
class CvornOGLWnd::Output {
public:
    Output(CvornOGLWnd& view, CRect rc)
        : m_view(view), m_state(view.m_dwState, STATE_OUTPUT), m_rcBefore(view.m_rcClient),
          m_sizeBefore(view.m_rcView.Size()), m_nMargin(view.m_nBottomMargin),
          m_nMode(view.m_oglDC.IsRenderToDIB() ? 1 : 0) {
        view.SetViewportSize(rc.Width(), rc.Height(), FALSE, 0, 0);
        // The margin is the window's: a picture ends where the view rectangle ends.
        view.m_nBottomMargin = 0;
    }
    ~Output() {
        m_view.m_nBottomMargin = m_nMargin;
        m_view.SetUpdate(UPD_ALL, FALSE, TRUE);
        m_view.CreateContext(m_nMode, m_sizeBefore);
        m_view.SetViewportSize(m_rcBefore.Width(), m_rcBefore.Height(), TRUE, m_rcBefore.left,
                               m_rcBefore.top);
    }
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;

private:
    CvornOGLWnd& m_view;
    vorn::detail::StateScope m_state;
    CRect m_rcBefore;
    CSize m_sizeBefore;
    int m_nMargin;
    int m_nMode;
};

int CvornOGLWnd::PrintScene(CDC* pDC, CRect rc, int) {
    const Output output(*this, rc);
    m_pPrintDC = pDC;
    OutputPicture(pDC, rc.TopLeft(), FALSE);
    m_pPrintDC = nullptr;
    return 1;
}

/// Draws the picture off screen and hands it to a device.
void CvornOGLWnd::OutputPicture(CDC* pDC, CPoint origin, int bMeta) {
    const std::int64_t pixels = std::int64_t{m_rcView.Width()} * m_rcView.Height();
    if (pixels <= largestPicture && CreateDCA(1) && FitsContext())
        OutputFrame(pDC, origin, bMeta);
    else if (!OutputTiles(pDC, origin, bMeta))
        OutputFrame(pDC, origin, bMeta);
}

void CvornOGLWnd::OutputFrame(CDC* pDC, CPoint origin, int bMeta) {
    SetUpdate(UPD_ALL, FALSE, TRUE);
    PrepareContext(pDC);
    OutputToDC(pDC, TRUE, origin.x, origin.y, bMeta);
}

bool CvornOGLWnd::FitsContext() {
    const vorn::detail::CurrentContext current(m_oglDC, nullptr);
    const CSize largest = largestViewport();
    return m_rcView.Width() <= largest.cx && m_rcView.Height() <= largest.cy;
}

/// Draws the picture tile by tile, where it is too large for GL or for the memory. False when that fails too.
bool CvornOGLWnd::OutputTiles(CDC* pDC, CPoint origin, int bMeta) {
    vorn::detail::PictureTile tile;
    tile.picture = m_rcView.Size();
    if (m_rcView.IsRectEmpty() || !CreateContext(1, CSize(1, 1))) return false;
    {
        const vorn::detail::CurrentContext current(m_oglDC, pDC);
        tile.largestViewport = largestViewport();
        tile.size = tile.SizeFor(tilePixels);
        if (!current || !m_oglDC.ResizeSurface(tile.size.cx, tile.size.cy, this)) return false;
    }
    SetUpdate(UPD_ALL, FALSE, TRUE);
    const vorn::detail::ScopedValue<const vorn::detail::PictureTile*> shown(m_pTile, &tile);
    for (int y = 0; y < tile.picture.cy; y += tile.size.cy) {
        for (int x = 0; x < tile.picture.cx; x += tile.size.cx) {
            // The last ones overlap those before, so that nothing is drawn beside the picture.
            const int left = std::min<int>(x, tile.picture.cx - tile.size.cx);
            const int top = std::min<int>(y, tile.picture.cy - tile.size.cy);
            tile.origin = CPoint(left, tile.picture.cy - tile.size.cy - top);
            PrepareContext(pDC);
            OutputToDC(pDC, TRUE, origin.x + left, origin.y + top, bMeta);
        }
    }
    return true;
}

void CvornOGLWnd::OutputToMetafile(CDC*, CRect rc, int) {
    vorn::detail::ClientDC client(this);
    if (client.get() == nullptr) return;
    const auto pMetaDC = std::make_unique<CMetaFileDC>();
    CSize size = rc.Size();
    client.get()->DPtoHIMETRIC(&size);
    const CRect frame(CPoint(0, 0), size);
    const HDC reference = client.get()->m_hDC;
    HDC recording = ::CreateEnhMetaFileA(reference, metafileName, &frame, metafileDescription);
    // Where the file cannot be written, the clipboard still gets the picture.
    if (recording == nullptr)
        recording = ::CreateEnhMetaFileA(reference, nullptr, &frame, metafileDescription);
    if (!pMetaDC->Attach(recording)) return;
    pMetaDC->SetAttribDC(client.get()->m_hAttribDC);

    const Output output(*this, rc);
    // NOTE: hardly a driver makes a context current on a metafile. There the picture is recorded as a bitmap.
    // A view off screen leaves its window without a pixel format.
    if (!m_oglDC.IsRenderToDIB() && CreateDCA(2) && vorn::detail::CurrentContext(m_oglDC, pMetaDC.get()))
        OutputFrame(pMetaDC.get(), rc.TopLeft(), TRUE);
    else
        OutputPicture(pMetaDC.get(), rc.TopLeft(), TRUE);
    pMetaDC->ReleaseAttribDC();
    CopyMetaFileToClipboard(::CloseEnhMetaFile(pMetaDC->Detach()));
}

void CvornOGLWnd::CopyMetaFileToClipboard(HENHMETAFILE hemf) {
    vorn::detail::UniqueEnhMetaFile metafile(hemf);
    // The clipboard is left alone when memory is short. The block is never used and never freed.
    void* volatile guard = std::malloc(24);
    if (guard == nullptr || !metafile || !::OpenClipboard(nullptr)) return;
    ::EmptyClipboard();
    if (::SetClipboardData(CF_ENHMETAFILE, metafile.get()) != nullptr) metafile.release();
    ::CloseClipboard();
}

void CvornOGLWnd::ShowMenu(CMenu* pMenu, int nSubMenu) {
    if (pMenu->GetSafeHmenu() == nullptr) return;
    CMenu* pShown = nSubMenu >= 0 ? pMenu->GetSubMenu(nSubMenu) : pMenu;
    if (pShown == nullptr) return;
    CPoint cursor;
    ::GetCursorPos(&cursor);
    const vorn::detail::StateScope state(m_dwState, STATE_MENU);
    ProcessMenuCmdUI(pShown);
    const int chosen = pShown->TrackPopupMenu(TPM_RETURNCMD, cursor.x, cursor.y, this);
    if (chosen > 0) OnMenuItem(chosen);
}

void CvornOGLWnd::ProcessMenuCmdUI(CMenu* pMenu) {
    if (pMenu->GetSafeHmenu() == nullptr) return;
    constexpr UINT popup = 0xFFFFFFFF;
    constexpr UINT separator = 0;
    CCmdUI cmdUI;
    cmdUI.m_pMenu = pMenu;
    cmdUI.m_pOther = this;
    cmdUI.m_nIndexMax = pMenu->GetMenuItemCount();
    for (int index = static_cast<int>(cmdUI.m_nIndexMax) - 1; index >= 0; --index) {
        const UINT id = pMenu->GetMenuItemID(index);
        if (id == popup) {
            if (CMenu* pSubMenu = pMenu->GetSubMenu(index)) ProcessMenuCmdUI(pSubMenu);
        } else if (id != separator) {
            cmdUI.m_nIndex = static_cast<UINT>(index);
            cmdUI.m_nID = id;
            OnUpdateMenuItem(static_cast<int>(id), cmdUI);
        }
    }
}
