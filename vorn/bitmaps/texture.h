// SPDX-License-Identifier: MIT
#pragma once

#include "vorn/api.h"
#include "vorn/bitmaps/image.h"
#include "vorn/geometry/colour.h"
#include "vorn/opengl.h"

#include <afxwin.h>
#include <memory>

class CvornDIB;
class CvornDIBPal;

/// An OpenGL texture made from a bitmap: from a DIB file or resource, or from an image file drawn at a size
/// in pixels over a background colour. The pixels are scaled to sides that are powers of two when the texture
/// is first bound. The texture's name is the application's: it generates and deletes it. Everything that
/// uploads or draws needs a current GL context. Copies share the pixels until one of them changes its own.
///
///     texture.SetTextureName(name);
///     if (texture.LoadX(&dc, "map.jpg", CRect(0, 0, 512, 256), CvornColour(),
///     CvornDIBTexture::TRANSLATE_BY_BOTH))
///         texture.Bind();
class VORN_API CvornDIBTexture {
public:
    /// How a DIB becomes pixels: expanded by the library (as GL_RGB), drawn by GDI (as GL_RGBA), or drawn by
    /// GDI and put in order by the library (as GL_RGBA). Any other value counts as the first.
    enum TRANSLATEMETHOD { TRANSLATE_BY_YOURSELF = 0, TRANSLATE_BY_GDI = 1, TRANSLATE_BY_BOTH = 2 };

    CvornDIBTexture();
    /// A copy has the same texture name and shares pixels and picture.
    CvornDIBTexture(const CvornDIBTexture& other);
    CvornDIBTexture& operator=(const CvornDIBTexture& other);
    ~CvornDIBTexture();

    /// Each gives up the current pixels first and returns 0, without pixels, on failure. The first asks for a
    /// BMP file when the name is null or empty; the second takes a "DIB" resource.
    int Load(char const* file, TRANSLATEMETHOD m);
    int Load(unsigned short id, TRANSLATEMETHOD m);
    /// Draws the source image anew at the size of the stored rectangle over the background colour.
    int Load(CDC* pDC);
    /// Opens an image file and draws it at the size of `r`, in pixels of bitmaps like those of `pDC`, over
    /// the colour. The method is not used. Returns 0, with the pixels as they were, for a file that does not
    /// load.
    int LoadX(CDC* pDC, char const* file, const CRect& r, const CvornColour& c, TRANSLATEMETHOD m);
    /// Draws the source image anew at another size. Returns 0, with nothing changed, when there is none, when
    /// the proportions stay the same (with `keepAspect`), or when the rectangle does (without).
    int Resize(CDC* pDC, const CRect& r, int keepAspect);
    /// Takes `w` x `h` pixels of four bytes from `src`, as GL_RGB. A texture that was bound before must be
    /// sent with `ScaleAndBind`. Returns 0, with nothing changed, on failure.
    int SpecialCreate(int w, int h, void* src);
    /// Closes the image and gives up the pixels.
    void Close();

    /// Scales the pixels to the next powers of two, sides above 1028 to 2048 where GL allows textures of that
    /// size. Returns 0, with the pixels as they were, on failure.
    int TexMapScalePow2();
    /// Uploads the pixels to the bound texture: repeated, unfiltered, without alpha or mipmaps. Leaves
    /// GL_UNPACK_ALIGNMENT at 1.
    void TexImage2D();
    /// Binds the texture, scaled and uploaded the first time.
    void Bind();
    /// Scales, binds and uploads every time.
    void ScaleAndBind();
    void Unbind();
    /// Draws the pixels at the raster position.
    void DrawPixels();

    /// Stores no content, only a mark. Loading may open the image file that an archive names; draw it then
    /// with `Resize` or `Load`.
    void Serialize(CArchive& ar);

    /// A number for the application; -1 at first.
    int GetID() const { return m_nID; }
    void SetID(int nID) { m_nID = nID; }
    /// The GL texture name, which the application generates and deletes; 0 at first.
    unsigned int GetTextureName() const { return m_nTexture; }
    void SetTextureName(unsigned int nTexture) { m_nTexture = nTexture; }
    /// Size of the pixels: after scaling the sides are powers of two.
    int GetHeight() const { return m_nHeight; }
    int GetWidth() const { return m_nWidth; }
    /// Four bytes a pixel, bottom row first; shared with copies and gone with the next load or scaling.
    unsigned char* GetBitsPtr() const { return m_pBits.get(); }
    /// Whether there are pixels.
    int IsValid() const { return m_pBits != nullptr; }
    /// Whether the pixels are scaled to powers of two.
    int IsScaled() const { return m_bScaled; }
    /// The image file that was loaded by name: without its folder, and the whole path as given.
    CString GetSourceName() const { return m_image.GetName(); }
    CString GetSourcePathName() const { return m_image.GetPathName(); }

protected:
    /// Gives up the pixels; the width stays.
    void CleanUp();
    int Translate(CvornDIB& d, TRANSLATEMETHOD m);
    int TranslateByYourself(CvornDIB& d);
    int TranslateByGDI(CvornDIB& d, CvornDIBPal& palette);
    int TranslateByBoth(CvornDIB& d, CvornDIBPal& palette);
    /// Fills the header for reading a bitmap as 32-bit pixels, top row first; the compression stays as it is.
    /// Returns the bitmap's height, 0 on failure.
    int PrepareBitmapInfo32(BITMAPINFO& bi, HBITMAP hbm);

    /// What the functions of these names tell.
    int m_nID = -1;
    unsigned int m_nTexture = 0;
    int m_nHeight = 0;
    int m_nWidth = 0;
    /// The pixels, four bytes each, and what GL is told that they are: GL_RGB or GL_RGBA.
    std::shared_ptr<unsigned char> m_pBits;
    int m_nFormat = GL_RGB;
    /// How a DIB becomes pixels, a TRANSLATEMETHOD.
    int m_nMethod = TRANSLATE_BY_YOURSELF;
    /// The bitmap that images are drawn into, the image, the colour behind it and the size asked for, in
    /// pixels.
    CBitmap m_bitmap;
    CvornImageX m_image;
    CvornColour m_clrBack;
    CRect m_rect = CRect(0, 0, 0, 0);
    /// The pixels are scaled already.
    int m_bScaled = 0;

private:
    bool NewBits(int width, int height);
};
