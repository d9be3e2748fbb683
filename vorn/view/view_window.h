// SPDX-License-Identifier: MIT
#pragma once

#include "vorn/api.h"
#include "vorn/bitmaps/image.h"
#include "vorn/view/lighting.h"
#include "vorn/view/mapping.h"
#include "vorn/view/rendering_context.h"
#include "vorn/view/user_rotation.h"

#include <afxext.h>
#include <afxwin.h>

namespace vorn::detail {
struct PictureTile;
}

/// Bits of `CvornOGLWnd::SetUpdate`: what the next paint cycle has to bring up to date.
enum : DWORD {
    UPD_VIEW = 0x01,     ///< camera, rotation or size changed; the camera is loaded in every cycle anyway
    UPD_BUILD = 0x02,    ///< `OnBuild`
    UPD_SIZE = 0x04,     ///< the off-screen surface has another size; does nothing alone
    UPD_SPARE = 0x08,    ///< free for derived classes
    UPD_EFFECTS = 0x10,  ///< `OnSetEffects`
    UPD_FONTS = 0x20,    ///< `OnUpdateFonts`, then `OnUpdateTextMetrics`
    UPD_TEXTURES = 0x40, ///< new texture names, then `OnUpdateTextureInfo`
    UPD_ALL = 0x7F
};

/// Bits of the effect words.
enum : DWORD {
    EFX_LIGHTING = 0x100 ///< the scene is lit
};

/// Bits of the view's transient state.
enum : DWORD {
    STATE_LDOWN = 0x01,     ///< the left button is held
    STATE_NOCAPTURE = 0x04, ///< the left button does not capture the mouse; set by derived classes
    STATE_MENU = 0x08,      ///< a context menu is being tracked
    STATE_OUTPUT = 0x20     ///< a paint, print or metafile output is in progress
};

/// The window of an interactive 3-D chart. It owns the OpenGL context, the camera and the lights, turns
/// mouse, wheel and keys into turning, moving and zooming, and runs the paint cycle. A chart derives from it
/// and draws in its hooks; the smallest one that shows something of its own:
///
///     class CChart : public CvornOGLWnd {
///     protected:
///         void OnBuild() override { // once, and again whenever the context or its contents are new
///             glNewList(m_nList, GL_COMPILE);
///             glBegin(GL_TRIANGLES);
///             glColor3ub(255, 0, 0);
///             glVertex3f(-0.5F, -0.5F, 0.0F);
///             glColor3ub(0, 255, 0);
///             glVertex3f(0.5F, -0.5F, 0.0F);
///             glColor3ub(0, 0, 255);
///             glVertex3f(0.0F, 0.5F, 0.0F);
///             glEnd();
///             glEndList();
///         }
///         void OnOutputToDC(CDC*, int, int) override { glCallList(m_nList); }
///
///         const GLuint m_nList = 1;
///     };
///
///     CChart chart;
///     chart.CreateEx(0, AfxRegisterWndClass(CS_HREDRAW | CS_VREDRAW), "Chart",
///                    WS_OVERLAPPEDWINDOW | WS_VISIBLE, CRect(0, 0, 800, 600), nullptr, 0);
///
/// The model is meant to fill the cube from -0.5 to 0.5. Dragging with the left button turns it, with Ctrl
/// held moves it; wheel and up and down keys zoom; the right button opens the application's menu.
///
/// A paint cycle calls the hooks in this order, those in brackets only when their bits are raised:
///
///     OnUpdateMetrics, [OnSetEffects], [OnUpdateTextureInfo], [OnUpdateFonts, OnUpdateTextMetrics],
///     OnOutputUpdateView, [OnBuild], OnPreOutput, (the buffers are cleared), OnOutputToDC, OnExclude
///
/// A paint with the same scene as the last needs no bits; whoever changes the scene calls
/// `SetUpdate(UPD_BUILD, TRUE, FALSE)`. Printing and metafiles run the same cycle in a context of their own,
/// with all bits raised before and after, so that the hooks must make everything anew that lives in a
/// context: display lists, textures, fonts.
///
/// The window may be a child or a top-level one. Wine shows no OpenGL in child windows: there a view draws
/// off screen from the start, when its class answers WM_CREATE with `m_oglDC.SetRenderToDIB(1)` and
/// `CWnd::OnCreate` in place of the base's handler.
///
/// Without a usable context the cycle runs all the same and draws nothing. Everything happens on the window's
/// thread.
class VORN_API CvornOGLWnd : public CWnd {
    DECLARE_DYNCREATE(CvornOGLWnd)

public:
    CvornOGLWnd();
    /// Destroys the window, if there still is one, and the context.
    ~CvornOGLWnd() override;

    /// Raises update bits, calls `OnUpdate` with the other two arguments, and with bRedraw set invalidates
    /// the view rectangle.
    void SetUpdate(DWORD dwFlags, int bRedraw, int bOther);
    /// Replaces the rendering context and raises all update bits. nMode 0 draws into the window, 1 into an
    /// off-screen surface of the size of the view rectangle, 2 into the window with GDI support where the
    /// window's pixel format is not fixed yet. Returns 0, without a context, on failure.
    int CreateDCA(int nMode);
    /// Places the view in the client area: cx x cy pixels from (x, y), less the bottom margin. With bRedraw
    /// set also sets the projection and repaints. A width or height below 1 changes nothing. Returns the size
    /// of the view rectangle before the call.
    CSize SetViewportSize(int cx, int cy, int bRedraw, int x, int y);
    /// Loads viewport and perspective for the view rectangle into the current context. The field of view
    /// follows from the eye distance alone: zooming moves the eye.
    void SetProjection();
    /// One paint cycle to a DC: the window's own, or with the off-screen surface any, where the picture's
    /// upper left corner comes to (x, y). bPrint chooses print metrics. All update bits are cleared
    /// afterwards.
    void OutputToDC(CDC* pDC, int bPrint, int x, int y, int bMeta);
    /// Reads and drops GL's error; the label says where.
    void CheckError(const char* label);
    /// Draws a text with the given font of the font lists, beginning at GL window coordinates (pixels, y
    /// upwards) just behind the near plane, and once more where it ends. A null text draws nothing. Called in
    /// a cycle.
    void OutputHorizTextPt(int nFont, POINT* pt, const char* str);

    /// Draws the scene in the size of rc, in device pixels, with its upper left corner at that of rc. Large
    /// pictures are drawn in several tiles, each a paint cycle; GL drawing that sets its own viewport comes
    /// out wrong there. Returns 1.
    int PrintScene(CDC* pDC, CRect rc, int nUnused);
    /// Draws the scene in the size of rc into an enhanced metafile, which goes to the file C:\test.emf, if
    /// that can be written, and to the clipboard. pDC is not used.
    void OutputToMetafile(CDC* pDC, CRect rc, int nUnused);
    /// Puts a metafile on the clipboard and gives up its ownership, also when that fails.
    void CopyMetaFileToClipboard(HENHMETAFILE hemf);
    /// Lets the user choose from the menu, or from its submenu at position nSubMenu if that is not negative,
    /// at the cursor; calls `OnUpdateMenuItem` for each item before and `OnMenuItem` for the choice.
    void ShowMenu(CMenu* pMenu, int nSubMenu);
    /// Calls `OnUpdateMenuItem` for the items from last to first, for those of a popup at its place.
    void ProcessMenuCmdUI(CMenu* pMenu);

    /// Takes return and the arrow keys for the view before dialogs and accelerators see them.
    BOOL PreTranslateMessage(MSG* pMsg) override;

protected:
    // The hooks. Most are for the paint cycle, where the context is current: they may call GL freely, and
    // must neither make another context current nor release this one, nor call OutputToDC, CreateDCA or the
    // output functions. Bits that they raise with SetUpdate are dropped at the end of the cycle. The bodies
    // of this class are empty unless said otherwise.

    /// The view got a new size: lay out what depends on it. Called by SetViewportSize, with its bRedraw,
    /// before the projection changes. No context.
    virtual void OnSetViewportSize(int bRedraw);
    /// The control bars were moved. Called by SetViewportSize before the view rectangle changes, in windows
    /// with control bars only. No context.
    virtual void OnToolBarRepos();
    /// Update bits were raised: invalidate what the application derives from the view. Called by SetUpdate
    /// with its arguments, by CreateDCA with (0, 0), after size changes with (1, 1). Do not count on a
    /// context. Never call SetUpdate from here.
    virtual void OnUpdate(int bRedraw, int bOther);
    /// The right button was pressed and did not serve the rotation: call ShowMenu here. No context.
    virtual void OnShowMenu();
    /// Cycle: all is built, the buffers are about to be cleared.
    virtual void OnPreOutput();
    /// Cycle: draw the scene. pDC is the target device, x and y where the picture comes to there. The base
    /// draws a demonstration cube and uses display list 1 for it: do not call it.
    virtual void OnOutputToDC(CDC* pDC, int x, int y);
    /// Cycle: GL has drawn the scene, the picture is about to be handed to pDC. Exclude parts of pDC that it
    /// must not cover, or draw over the picture: with GL, or with GDI into m_oglDC.GetDC() when rendering to
    /// the surface.
    virtual void OnExclude(CDC* pDC);
    /// First in each cycle: set line widths for the device, which with bPrint set is a printer or metafile.
    /// The base sets GL's line width and point size to 1 pixel, or 0.2 mm in print: call it, or do the same.
    virtual void OnUpdateMetrics(CDC* pDC, int bPrint);
    /// Cycle, fonts pending, after OnUpdateFonts: measure texts for the device.
    virtual void OnUpdateTextMetrics(CDC* pDC, int bPrint);
    /// Cycle, effects pending: set the GL state that stays. The base sets blending, depth test, polygon
    /// offset, smooth shading, alpha test, colour material, lighting and the texture environment: call it
    /// first, then change.
    virtual void OnSetEffects();
    /// Cycle, fonts pending: make the font lists from m_nFontListBase on, m_nFontListStride lists a font.
    virtual void OnUpdateFonts();
    /// Cycle, after texture names were generated: load textures into m_auTextures[0] to [m_nTextures - 1].
    virtual void OnUpdateTextureInfo();
    /// Each cycle: load the modelview matrix. The base loads camera and rotation, captures the matrices in
    /// m_mapping and places the lights: call it first, or do all that. The argument is 0.
    virtual void OnOutputUpdateView(int nUnused);
    /// Cycle, build pending: make display lists and geometry.
    virtual void OnBuild();
    /// An item of a context menu is about to be shown: enable, check or rename it through cmdUI. No context.
    virtual void OnUpdateMenuItem(int nID, CCmdUI& cmdUI);
    /// A command was chosen from a context menu. No context.
    virtual void OnMenuItem(int nID);

    /// Whether all bits of the mask are raised, or all effects of the mask both available and enabled.
    bool UPDATE(DWORD mask) const { return (m_dwUpdate & mask) == mask; }
    bool EFFECT(DWORD mask) const { return (m_dwEffectsAvailable & m_dwEffectsEnabled & mask) == mask; }

    /// The message handlers. A class with an entry of its own for one of these messages calls the base:
    /// OnCreate makes the context, OnDestroy deletes it.
    afx_msg int OnCreate(LPCREATESTRUCT lpCreateStruct);
    afx_msg void OnSize(UINT nType, int cx, int cy);
    afx_msg void OnDestroy();
    afx_msg void OnPaint();
    afx_msg BOOL OnEraseBkgnd(CDC* pDC);
    afx_msg void OnPaletteChanged(CWnd* pFocusWnd);
    afx_msg BOOL OnQueryNewPalette();
    afx_msg void OnLButtonDown(UINT nFlags, CPoint pt);
    afx_msg void OnLButtonUp(UINT nFlags, CPoint pt);
    afx_msg void OnMouseMove(UINT nFlags, CPoint pt);
    afx_msg void OnRButtonDown(UINT nFlags, CPoint pt);
    afx_msg void OnRButtonUp(UINT nFlags, CPoint pt);
    afx_msg void OnKeyDown(UINT nChar, UINT nRepCnt, UINT nFlags);
    afx_msg BOOL OnMouseWheel(UINT nFlags, short zDelta, CPoint pt);

    DECLARE_MESSAGE_MAP()

    CvornImageX m_image;                         ///< for derived classes
    COLORREF m_clrBackground = RGB(255, 255, 0); ///< what the picture is cleared to
    int m_bToolBar = 0;                          ///< the window has control bars to be laid out with the view
    int m_nBottomMargin = 0;                     ///< pixels kept free at the bottom of the client area
    CRect m_rcView{0, 0, 0, 0};                  ///< where the view is in the client area
    CRect m_rcViewGL{0, 0, 0, 0};                ///< the same with top and bottom exchanged
    CRect m_rcClient{0, 0, 0, 0};                ///< the view with the bottom margin
    float m_fDistance = 7.0F;                    ///< of the eye from the model's origin, not zoomed
    float m_fMinDistance = 1.0F;                 ///< closest that the eye may come
    float m_fFovScale = 0.75F;                   ///< divisor of the field of view
    float m_fZoom = 0.0F;                        ///< how far the eye has moved towards the origin
    float m_fPanX = 0.0F;                        ///< translation of the model to the right, in model units
    float m_fPanY = 0.0F;                        ///< the same upwards
    float m_fPanLimitX = 0.0F;                   ///< largest pan for each unit of zoom when zooming out
    float m_fPanLimitY = 0.0F;                   ///< the same upwards
    float m_fLineWidth = 1.0F;                   ///< of lines and points, in pixels
    float m_fScaleA = 1.0F;                      ///< for derived classes
    float m_fScaleB = 1.0F;                      ///< for derived classes
    int m_nFontListBase = 0;                     ///< first display list of the fonts
    int m_nFontListStride = 256;                 ///< display lists a font
    int m_nTexturesWanted = 1;                   ///< 0 to 100
    int m_nTextures = 0;                         ///< names generated now
    GLuint m_auTextures[100] = {};               ///< the names
    DWORD m_dwEffectsAvailable = EFX_LIGHTING;   ///< effects that the view supports
    DWORD m_dwEffectsEnabled = 0xFFFFFFFF;       ///< effects that the user has on
    DWORD m_dwUpdate = UPD_ALL;                  ///< pending update bits
    CDC* m_pPrintDC = nullptr;                   ///< the printer while `PrintScene` runs
    CvornOGLDC m_oglDC;                          ///< the rendering context
    CvornOGLLighting m_lighting;                 ///< its light
    CvornOGLMapping m_mapping;                   ///< captured in each cycle by OnOutputUpdateView
    CvornUserRot m_userRot;                      ///< turns the model under the mouse
    CPoint m_ptLastMouse{0, 0};                  ///< at the last mouse move, in client coordinates
    int m_nReserved = 0;                         ///< not used
    int m_bTextures = 0;                         ///< the scene has textures
    int m_bTexDecal = 1;                         ///< they cover the colour; 0: they are lit like it
    DWORD m_dwState = 0;                         ///< transient state bits

private:
    class Output;

    int CreateContext(int nMode, CSize surface);
    void PrepareContext(CDC* pDC);
    void ResizeSurface();
    void UpdateTextureNames();
    void ClearBuffers();
    void RepositionControlBars();
    void Pan(CPoint pt);
    void Rotate(CPoint pt);
    void ClampPan();
    void RedrawView();
    void OutputPicture(CDC* pDC, CPoint origin, int bMeta);
    void OutputFrame(CDC* pDC, CPoint origin, int bMeta);
    bool OutputTiles(CDC* pDC, CPoint origin, int bMeta);
    bool FitsContext();

    // What of the picture is being drawn when it is drawn in tiles.
    const vorn::detail::PictureTile* m_pTile = nullptr;
    // A cycle ran without a context: what it should have brought up to date is still pending.
    bool m_bMissedContext = false;
};
