// SPDX-License-Identifier: MIT
#pragma once

#include "vorn/api.h"

#include <afxwin.h>
#include <concepts>
#include <cstdint>
#include <memory>

/// A device-independent bitmap: a header block of 1064 bytes (a 40-byte BITMAPINFOHEADER and room for 256
/// colours) and pixel rows, bottom row first, each padded to a multiple of 4 bytes.
///
///     CvornDIB dib;
///     if (dib.Load("chart.bmp")) dib.Draw(&dc, 0, 0);
///
/// Copies share header and pixels, which are freed with the last copy; a creator or a load gives the object
/// that it is called on blocks of its own. Operations return 1 on success and 0 on failure. An object without
/// a header (after a failed creation) has the size 0 x 0 and draws nothing.
class VORN_API CvornDIB : public CObject {
    DECLARE_SERIAL(CvornDIB)

public:
    /// A blank image of 16 x 16 pixels, 8 bits each, with a grey ramp for colour table.
    CvornDIB();
    CvornDIB(const CvornDIB& other);
    CvornDIB& operator=(const CvornDIB& other);
    ~CvornDIB() override;

    /// Reads or writes the image, as a BMP file, straight in the archive's file.
    void Serialize(CArchive& ar) override;

    /// Loads the "DIB" resource of that number, a complete BMP file image, from the current module state's
    /// resources. Pixels are taken by the 8-bit rule, ((width + 3) & ~3) x height bytes, for every depth.
    virtual BOOL Load(WORD nResourceId);
    /// Loads a BMP file that begins at the file's current position. On failure the object is unchanged; the
    /// file's own exceptions pass through. `GetBitSize` keeps its value.
    virtual BOOL Load(CFile* pFile);
    /// Loads a BMP file by name; asks for it in a file dialog when the name is null or empty.
    virtual BOOL Load(const char* pszFileName);
    /// Writes a BMP file with all 256 colour entries, pixels at offset 1078 of it, at the current position.
    virtual BOOL Save(CFile* pFile);
    /// Writes a BMP file by name; asks for it when the name is null or empty. Tells failures in a message
    /// box.
    virtual BOOL Save(const char* pszFileName);

    /// Draws the whole image with its top-left corner at (x, y) of the DC, one pixel to one unit.
    virtual void Draw(HDC hdc, int x, int y);
    virtual void Draw(CDC* pDC, int x, int y);

    /// In pixels; 0 without a header.
    virtual int GetWidth() const;
    /// Bytes from one row to the next.
    virtual int GetStorageWidth() const;
    /// In pixels; 0 without a header.
    virtual int GetHeight() const;

    /// Replaces each pixel by the palette's nearest colour (4, 8 and 24 bits), then takes the palette's
    /// colours over as the colour table. Returns 0, with nothing changed, for other depths, compressed
    /// pixels, and palettes of more than 256 colours.
    virtual BOOL MapColorsToPalette(HPALETTE hPal);
    virtual BOOL MapColorsToPalette(CPalette* pPal);

    /// (0, 0, width, height).
    virtual void GetRect(RECT* pRect) const;

    /// Pixel transfers from this image to another, one byte a pixel (meant for 8-bit images), coordinates in
    /// pixels from the top-left corners. Bytes equal to the low byte of `clrTrans` are left out, none when it
    /// is 0xFFFFFFFF. Nothing is clipped: when a rectangle leaves an image's buffer, nothing at all is done.
    virtual void CopyBits(CvornDIB* pDest, int xDest, int yDest, int w, int h, int xSrc, int ySrc,
                          DWORD clrTrans = 0xFFFFFFFF);
    /// The same, scaled to the nearest source pixel towards the top left.
    virtual void StretchBits(CvornDIB* pDest, int xDest, int yDest, int wDest, int hDest, int xSrc, int ySrc,
                             int wSrc, int hSrc, DWORD clrTrans = 0xFFFFFFFF);
    /// The same, each of the w x h source pixels becoming four.
    virtual void DoubleBits(CvornDIB* pDest, int xDest, int yDest, int xSrc, int ySrc, int w, int h,
                            DWORD clrTrans = 0xFFFFFFFF);

    /// A blank 8-bit image, all zero, with a grey ramp overlaid by the palette's colours; the palette may be
    /// null and is not kept. Palettes of more than 256 colours fail.
    BOOL Create(int w, int h, HPALETTE hPal = nullptr);
    /// The same with a palette object. A template, so that a plain null means the handle.
    template <std::derived_from<CPalette> Palette>
    BOOL Create(int w, int h, Palette* pPal) {
        return Create(w, h, static_cast<HPALETTE>(pPal == nullptr ? nullptr : pPal->GetSafeHandle()));
    }
    /// Copies the header, a core header becoming a 40-byte one, and adopts the pixels, which must be as many
    /// as the header implies. With `bOwn` they come from the C heap and are freed with the image; otherwise
    /// they stay the caller's and must outlive it. `GetBitSize` keeps its value.
    BOOL Create(BITMAPINFO* pBMI, BYTE* pBits, int bOwn);
    /// The same for a packed DIB in memory, pixels right behind the colour table; they stay the caller's.
    BOOL Create(BITMAPINFO* pPackedDIB);
    /// Copies a GDI bitmap, which must not be selected into a DC.
    BOOL Create(CBitmap& bmp);

    /// Copies the palette's colours into the colour table; pixels are not touched.
    BOOL SetColorTable(CPalette* pPal);

    /// Header, first pixel row and colour table, shared with copies and gone with the next creation or load.
    /// Null without them.
    BITMAPINFO* GetBitmapInfoAddress() const { return m_pBMI; }
    BYTE* GetBitsAddress() const { return m_pBits; }
    RGBQUAD* GetClrTabAddress() const;
    /// Size of the pixel buffer in bytes as the last blank creation or bitmap copy has set it.
    DWORD GetBitSize() const { return m_nBitsSize; }
    /// What the header says: 0 without one. The last three are other names for the sizes.
    int GetBitsPerPixel() const;
    int GetNumClrEntries() const;
    CSize GetSize() const;
    int DibWidth() const { return GetWidth(); }
    int DibHeight() const { return GetHeight(); }
    int StorageWidth() const { return GetStorageWidth(); }

    /// The place of a pixel, y counted from the top; null beyond the right and bottom edges and for depths
    /// other than 1, 4, 8, 16 and 24. Negative coordinates are not checked. With 1 and 4 bits the byte is
    /// rounded up: for most x it is the one after the pixel's own.
    BYTE* GetPixelAddress(int x, int y) const;

    /// True unless the header is a 12-byte OS/2 core header.
    static BOOL IsWinDIB(BITMAPINFOHEADER* pBIH);
    /// Colour entries behind a header of either kind, at most 2, 16 and 256 for 1, 4 and 8 bits.
    static int NumDIBColorEntries(BITMAPINFO* pBMI);
    /// The same without the limits.
    WORD dibNumColors(void* pHeader) const;
    /// Bytes of the colour table behind a header: 4 an entry, 3 behind a core header.
    WORD paletteSize(void* pHeader) const;

protected:
    /// Derived classes read these; to change them they call a creator, which keeps count of the owners.
    BITMAPINFO* m_pBMI = nullptr;
    BYTE* m_pBits = nullptr;
    DWORD m_nBitsSize = 0;
    BOOL m_bMyBits = TRUE;

private:
    void SetHeader(std::shared_ptr<BITMAPINFO> pHeader);
    void SetBits(std::shared_ptr<BYTE> pBits, std::size_t nBytes);
    void FreeBlocks();
    bool HoldsHeaderBits() const;
    bool HoldsRows(const BYTE* pFirst, std::int64_t nRows, std::int64_t nStride,
                   std::int64_t nRowBytes) const;

    std::shared_ptr<BITMAPINFO> m_pHeaderOwner;
    std::shared_ptr<BYTE> m_pBitsOwner;
    std::size_t m_nBitsHeld = 0; // bytes that may be touched at m_pBits
};
