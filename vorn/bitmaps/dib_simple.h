// SPDX-License-Identifier: MIT
#pragma once

#include "vorn/api.h"

#include <afxwin.h>
#include <memory>

/// A bare DIB section with a memory DC. Copies share the section and its DC, which are released when the last
/// copy is destroyed, destroys its own or creates another.
class VORN_API CvornDIBSimple {
public:
    CvornDIBSimple() = default;
    /// A copy shares section and DC.
    CvornDIBSimple(const CvornDIBSimple&) = default;
    CvornDIBSimple& operator=(const CvornDIBSimple&) = default;
    virtual ~CvornDIBSimple();

    /// Makes the section, `cx` x `cy` pixels (a negative height is a top-down one) with `nBitCount` bits
    /// each. Returns 0 on failure; the object is then empty but for its size.
    BOOL Create(int cx, int cy, int nBitCount);
    /// Gives up the section and its DC; all fields become null or zero.
    void destroy();

    /// Copies the section to (x, y) of the DC. As a side effect the DC's colour adjustment loses its
    /// colourfulness: the next halftone stretch on that DC comes out grey.
    void Draw(CDC* pDC, int x, int y);
    /// Sends the section's pixels to (x, y) of the DC, read as the caller's header says; a header that
    /// describes more bytes than the section has draws nothing. The DC is left in halftone stretch mode.
    void Draw(CDC* pDC, int x, int y, BITMAPINFO* pBMI);
    /// Makes the palette's entries the section's colour table.
    void SetPalette(CPalette* pPal);

    /// The section, its DC and its size in pixels as given to Create; null while there is none. They stay
    /// owned by the copies of this object.
    HBITMAP GetHandle() const { return m_hBitmap; }
    CDC* GetDC() const { return m_pDC; }
    CSize GetDIBSize() const { return m_size; }

    /// The shared section as this copy sees it. Read-only for callers, the pixels themselves excepted.
    HBITMAP m_hBitmap = nullptr;
    HBITMAP m_hOldBitmap = nullptr;
    void* m_pBits = nullptr;
    SIZE m_size = {0, 0};
    CDC* m_pDC = nullptr;

private:
    std::shared_ptr<void> m_section;
};
