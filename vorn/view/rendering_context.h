// SPDX-License-Identifier: MIT
#pragma once

#include "vorn/api.h"
#include "vorn/opengl.h"

#include <afxwin.h>
#include <memory>

class CvornDIBSurface;

namespace vorn::detail {
class RenderBitmap;
}

/// One OpenGL rendering context and where it draws: into a window, or into an off-screen surface whose image
/// is then drawn onto any DC (to print, or where a window cannot show OpenGL).
///
/// Every operation that needs OpenGL makes the context current, works, and releases it:
///
///     CClientDC client(this);
///     if (m_oglDC.MakeCurrentContext(&client)) {
///         glDeleteLists(m_nList, 1);
///         wglMakeCurrent(nullptr, nullptr);
///     }
///
/// A context belongs to the object that made it and shares nothing with others: display lists and textures
/// live and die with it. Operations return 1 for success and 0 for failure, which leaves no context behind.
class VORN_API CvornOGLDC {
public:
    CvornOGLDC();
    /// Deletes the surface and the palette, but not the context: call Destroy first.
    ~CvornOGLDC();
    CvornOGLDC(const CvornOGLDC&) = delete;
    CvornOGLDC& operator=(const CvornOGLDC&) = delete;

    /// Makes the context: on the surface when rendering to it (the window may then be null), else on the
    /// window. A window's pixel format is set once and for all; a window that has one keeps it as long as
    /// OpenGL can draw with it, and then bMetafile, which asks for a format that GDI can draw with too, has
    /// no effect.
    int Create(CWnd* pWnd, int bMetafile);
    /// Makes the surface, in pixels, and a context. Call SetRenderToDIB(1) before.
    int CreateSurface(int cx, int cy, CWnd* pWnd);
    /// Gives the surface another size and makes the context current on it. The context stays where the
    /// platform allows it; where not, GetRC() changes, and everything in the old one is gone.
    int ResizeSurface(int cx, int cy, CWnd* pWnd);
    /// Releases and deletes the context.
    void Destroy();

    /// Makes the context current on the DC of the operation, or on the surface when rendering to it. After a
    /// failure no context is current at all, so that GL calls reach nobody.
    int MakeCurrentContext();
    /// The same for a new DC, which must live until the operation has ended or another is set.
    int MakeCurrentContext(CDC* pDC);

    /// Hands the image to the DC of the operation: the surface, with its upper left corner at (x, y), or the
    /// window's back buffer. The context must be current. bMeta is not used.
    void Render(int x, int y, int bMeta);
    /// Completes what GL has drawn so far and brings it into the surface, where GDI can draw over it; does
    /// nothing when rendering to a window. GL drawing that follows comes in again with Render, and then
    /// replaces what GDI has drawn. The context must be current. A nonzero bDefer lets the pixels come in no
    /// sooner than GetDC or GetHDC ask for them, which a picture that goes to a screen or bitmap never does.
    void UpdateSurface(int bDefer = FALSE);

    /// Realises the palette, if there is one, for the window and invalidates it when colours changed.
    /// Returns 1.
    int OnQueryNewPalette(CWnd* pWnd);

    /// The surface's memory DC when rendering to it, else the DC of the operation, which may be null. Ask for
    /// it anew in each hook: a deferred picture comes into the surface only then.
    CDC* GetDC() const;
    HDC GetHDC() const;
    /// The surface's size in pixels.
    CSize GetDIBSize() const;
    /// Owned by this object; null unless the device has 8 bits a pixel and a palette.
    CPalette* GetPal() const { return m_pPal; }
    /// Whether contexts are made on the surface.
    int IsRenderToDIB() const { return m_bRenderToDIB; }
    /// Chooses where the next Create or CreateSurface makes the context.
    void SetRenderToDIB(int bRenderToDIB) { m_bRenderToDIB = bRenderToDIB; }
    /// The DC of the operations that follow; not owned.
    void SetDC(CDC* pDC) { m_pDC = pDC; }
    /// Null when there is no context.
    HGLRC GetRC() const { return m_hRC; }

protected:
    /// Chooses and sets a pixel format for 24-bit colour with a 32-bit depth buffer.
    int SetupPixelFormat(CDC* pDC, int bMetafile);
    /// Makes the palette for the DC's pixel format and selects it into the DC; where none is needed, makes
    /// none and succeeds.
    int CreatePalette(CDC* pDC);
    /// Fills the 256 entries for an RGBA pixel format of up to 8 bits, with system colours in the 3-3-2
    /// format; other formats leave them as they are.
    void FillPaletteEntries(const PIXELFORMATDESCRIPTOR& format, PALETTEENTRY* entries) const;
    /// The colour component of nbits (1 to 3; others give 0) at the shift in palette index i, widened to 8
    /// bits.
    BYTE ComponentFromIndex(int i, UINT nbits, UINT shift) const;

    /// Components of 1, 2 and 3 bits widened to 8, and the palette entries that give way to the system's
    /// colours.
    static const BYTE m_oneto8[2];
    static const BYTE m_twoto8[4];
    static const BYTE m_threeto8[8];
    static const int m_defaultOverride[13];
    /// The twenty static system colours.
    static const PALETTEENTRY m_defaultPalEntry[20];

    /// Owned; null where no palette is needed.
    CPalette* m_pPal = nullptr;
    /// Owned; without a bitmap until CreateSurface.
    CvornDIBSurface* m_pSurface;
    /// The context; null without one. Destroy deletes it.
    HGLRC m_hRC = nullptr;
    /// As SetRenderToDIB set it.
    int m_bRenderToDIB = 0;
    /// The DC of the operation; not owned.
    CDC* m_pDC = nullptr;

private:
    int CreateForSurface();
    int CreateForWindow(CWnd* pWnd, int bMetafile);
    int CreateOn(CDC* pDC, int bMetafile);
    bool HasSurfaceBitmap() const;
    void BringPicture() const;

    // Where GL draws when it cannot write the surface's own pixel layout.
    std::unique_ptr<vorn::detail::RenderBitmap> m_pRenderBitmap;
    mutable bool m_bDeferred = false; ///< The picture there is still to come into the surface.
};
