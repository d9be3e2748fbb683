// SPDX-License-Identifier: MIT
#pragma once

#include "vorn/api.h"

#include <afxwin.h>
#include <memory>
#include <type_traits>

/// A GDI font described by its size in points, realised for one device context, with a text colour of its
/// own.
///
/// ```
/// CvornFont font;                        // Arial, 8 points, black
/// font.m_lf.lfHeight = 12;               // points, whatever the map mode
/// font.m_rgb = RGB(0, 0, 128);
///
/// font.Select(dc);                       // realises the font on its first use
/// int nLine = CvornFont::GetRealHeight();
/// ::TextOutA(dc, 10, 10, "Total", 5);
/// font.Unselect(dc);                     // the DC's own font and colour are back
///
/// font.Update(printerDC);                // another device or map mode: realise it anew
/// ```
///
/// What Select saves is class-wide: a Select must be followed by its Unselect before another font or another
/// device context is selected. Copies share the realised font, which is deleted after its last owner.
class VORN_API CvornFont {
public:
    /// The description; lfHeight is in points.
    LOGFONTA m_lf = {};
    /// The realised font, or null. Set by New, Update and Select; shared with the copies of this object.
    std::shared_ptr<std::remove_pointer_t<HFONT>> m_hFont;
    /// The text colour while the font is selected.
    COLORREF m_rgb = 0;

    /// The font and the text colour that the device context had before the last Select.
    static HFONT s_hFontOld;
    static COLORREF s_rgbOld;
    /// The metrics of the font that was selected last, in the device context's logical units.
    static TEXTMETRICA s_tmSelFont;

    CvornFont();

    /// The realised font, which stays this object's (and its copies').
    operator HFONT() const { return m_hFont.get(); }
    /// The text colour.
    operator unsigned long() const { return m_rgb; }

    /// Realises the font for a device context: in MM_TEXT and MM_ANISOTROPIC the points become logical units,
    /// in other map modes lfHeight is taken as it is. Returns 0 on failure, and the font is null then. A font
    /// realised before is not deleted while this one lives; Update does that.
    int New(HDC hdc);
    /// Lets go of the realised font and makes a new one.
    int Update(HDC hdc);
    /// Lets go of the realised font.
    void Delete();

    /// Selects the font, realised if need be, and its text colour. Returns the font selected before.
    void* Select(HDC hdc);
    /// Puts back the font and the text colour that the last Select found. Returns what SelectObject returned.
    void* Unselect(HDC hdc);

    /// Height and average character width of the font that was selected last, in logical units.
    static int GetRealHeight() { return s_tmSelFont.tmHeight; }
    static int GetRealWidth() { return s_tmSelFont.tmAveCharWidth; }
};
