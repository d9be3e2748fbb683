// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/gl_window.h"

#include <vector>
#include <vorn/vorn.h>

namespace support {

/// Pixels by their place, counted from the upper left corner.
class Picture {
public:
    Picture() = default;
    /// What the current context has drawn.
    static Picture ofContext(CSize size) { return Picture(size, pixelsIn(0, 0, size.cx, size.cy)); }
    /// Of 24 bits.
    static Picture of(CvornDIBSurface& surface) {
        const CSize size(surface.GetWidth(), surface.GetHeight());
        std::vector<COLORREF> pixels;
        for (int y = 0; y < size.cy; ++y) {
            const BYTE* pixel =
                surface.GetBitsAddress() + static_cast<std::size_t>(y) * surface.GetStorageWidth();
            for (const BYTE* const end = pixel + size.cx * 3; pixel != end; pixel += 3)
                pixels.push_back(RGB(pixel[2], pixel[1], pixel[0]));
        }
        return Picture(size, std::move(pixels));
    }

    CSize size() const { return m_size; }
    COLORREF at(CPoint pt) const { return m_pixels.at((m_size.cy - 1 - pt.y) * m_size.cx + pt.x); }
    bool operator==(const Picture& other) const {
        return m_size == other.m_size && m_pixels == other.m_pixels;
    }
    /// The places, row by row, for which and for whose colour the condition holds.
    template <typename Condition>
    std::vector<CPoint> where(Condition condition) const {
        std::vector<CPoint> places;
        for (int y = 0; y < m_size.cy; ++y) {
            for (int x = 0; x < m_size.cx; ++x) {
                const CPoint pt(x, y);
                if (condition(pt, at(pt))) places.push_back(pt);
            }
        }
        return places;
    }

private:
    /// Rows upwards.
    Picture(CSize size, std::vector<COLORREF> pixels) : m_size(size), m_pixels(std::move(pixels)) {}

    CSize m_size{0, 0};
    std::vector<COLORREF> m_pixels;
};

/// Where two pictures of one size are not alike.
inline std::vector<CPoint> differencesOf(const Picture& a, const Picture& b) {
    return a.where([&](CPoint pt, COLORREF colour) { return colour != b.at(pt); });
}

inline CRect boundsOf(const std::vector<CPoint>& places) {
    CRect bounds(0, 0, 0, 0);
    for (const CPoint pt : places)
        bounds |= CRect(pt, CSize(1, 1));
    return bounds;
}

/// Of at least one place.
inline CPoint middleOf(const std::vector<CPoint>& places) {
    CPoint sum(0, 0);
    for (const CPoint pt : places)
        sum += pt;
    const int count = static_cast<int>(places.size());
    return CPoint(sum.x / count, sum.y / count);
}

/// A view that keeps the picture of its last paint.
template <typename View>
class Shown : public View {
public:
    using View::View;
    ~Shown() override { View::DestroyWindow(); }

    bool open(CSize size) {
        if (!View::CreateEx(0, ::AfxRegisterWndClass(CS_OWNDC), "", WS_POPUP, CRect(CPoint(0, 0), size),
                            nullptr, 0))
            return false;
        // Active windows are the window manager's, and without one each costs two seconds.
        View::ShowWindow(SW_SHOWNA);
        paint();
        return true;
    }
    void paint() { View::RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW); }
    const Picture& shown() const { return m_shown; }
    void mouse(UINT message, UINT flags, CPoint pt) {
        View::SendMessage(message, flags, MAKELPARAM(pt.x, pt.y));
        View::UpdateWindow();
    }

protected:
    void OnExclude(CDC*) override { m_shown = Picture::ofContext(View::m_rcView.Size()); }

private:
    Picture m_shown;
};

} // namespace support
