// SPDX-License-Identifier: MIT
#pragma once

#include "vorn/api.h"

#include <afxwin.h>
#include <mmsystem.h>

class CvornDIB;

/// A logical palette that is made from a DIB's colour table, from a fixed wash of colours or from the
/// system's static colours, and that is kept in RIFF palette files (".PAL"). Operations return 1 on success
/// and 0 on failure; the creators delete the palette held before as soon as their arguments are found good.
class VORN_API CvornDIBPal : public CPalette {
public:
    CvornDIBPal() = default;

    /// Palette of the n colours; 0, with the held palette untouched, for none or more than 65535.
    BOOL Create(RGBQUAD* pColors, int n);
    /// Palette of a colour table; 0, with the held palette untouched, when it has no entries.
    BOOL Create(CvornDIB* pDIB);
    BOOL Create(BITMAPINFO* pBMI);
    /// 256 colours: a 6 x 6 x 6 cube and twenty greys between the system's twenty static colours. Cube and
    /// greys begin at black and stop short of white.
    BOOL CreateWash();
    /// 256 colours, all black but for the system's twenty static colours at both ends.
    BOOL CreateSystemColorPalette();

    /// Entries of the held palette; 0 without one.
    int GetNumColors() const;

    /// Realises the palette on a palette device and takes the hardware's colours over as its own (an identity
    /// palette). Returns 0, with nothing changed, on any other device.
    BOOL SetSysPalColors();

    /// Draws the colours as a grid of 16 x 16 swatches, framed with the DC's pen; the palette is realised
    /// meanwhile, as a background palette if asked. Without entries nothing is drawn.
    void Draw(HDC hdc, RECT* pRect, BOOL bBackground);
    void Draw(CDC* pDC, CRect* pRect, BOOL bBackground);

    /// Reads the next "PAL " form of a RIFF file. The handle held before is let go but not deleted: it may
    /// be selected elsewhere. On failure it stays.
    BOOL Load(HMMIO hmmio);
    /// The same from an open file handle, from its current position; it stays open.
    BOOL Load(UINT hFile);
    BOOL Load(CFile* pFile);
    /// The same from a file by name; asks for it in a file dialog when the name is null or empty. Tells
    /// failures in a message box.
    BOOL Load(const char* pszFileName);

    /// Writes the palette as a RIFF file, "PAL " form with one "data" chunk.
    BOOL Save(HMMIO hmmio);
    BOOL Save(UINT hFile);
    BOOL Save(CFile* pFile);
    BOOL Save(const char* pszFileName);
};
