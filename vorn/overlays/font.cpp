// SPDX-License-Identifier: MIT
#include "vorn/overlays/font.h"

#include <cstring>
#include <new>
#include <utility>

HFONT CvornFont::s_hFontOld = nullptr;
COLORREF CvornFont::s_rgbOld = 0;
TEXTMETRICA CvornFont::s_tmSelFont = {};

namespace {

using SharedFont = std::shared_ptr<std::remove_pointer_t<HFONT>>;

/// Deletes a font after its last owner, and only then lets go of the font that it replaced.
struct FontRelease {
    SharedFont replaced;

    void operator()(HFONT font) {
        ::DeleteObject(font);
        // One by one: a long row of replaced fonts must not become a deep recursion.
        while (replaced != nullptr && replaced.use_count() == 1)
            replaced = std::move(std::get_deleter<FontRelease>(replaced)->replaced);
    }
};

LONG logicalHeight(HDC hdc, LONG points) {
    const int pixels = -::MulDiv(points, ::GetDeviceCaps(hdc, LOGPIXELSY), 72);
    switch (::GetMapMode(hdc)) {
    case MM_TEXT:
        return pixels;
    case MM_ANISOTROPIC: {
        POINT size = {points, pixels};
        ::DPtoLP(hdc, &size, 1);
        return size.y;
    }
    default:
        return points;
    }
}

} // namespace

CvornFont::CvornFont() {
    m_lf.lfHeight = 8;
    m_lf.lfWeight = FW_NORMAL;
    std::strcpy(m_lf.lfFaceName, "Arial");
}

int CvornFont::New(HDC hdc) {
    LOGFONTA realised = m_lf;
    realised.lfHeight = logicalHeight(hdc, m_lf.lfHeight);
    const HFONT font = ::CreateFontIndirectA(&realised);
    if (font == nullptr) {
        m_hFont.reset();
        return 0;
    }
    try {
        m_hFont = SharedFont(font, FontRelease{m_hFont});
    } catch (const std::bad_alloc&) { // the font is deleted by then
        m_hFont.reset();
    }
    return m_hFont != nullptr;
}

int CvornFont::Update(HDC hdc) {
    Delete();
    return New(hdc);
}

void CvornFont::Delete() {
    m_hFont.reset();
}

void* CvornFont::Select(HDC hdc) {
    if (m_hFont == nullptr) New(hdc);
    s_rgbOld = ::SetTextColor(hdc, m_rgb);
    s_hFontOld = static_cast<HFONT>(::SelectObject(hdc, m_hFont.get()));
    ::GetTextMetricsA(hdc, &s_tmSelFont);
    return s_hFontOld;
}

void* CvornFont::Unselect(HDC hdc) {
    ::SetTextColor(hdc, s_rgbOld);
    return ::SelectObject(hdc, s_hFontOld);
}
