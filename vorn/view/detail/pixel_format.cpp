// SPDX-License-Identifier: MIT
#include "vorn/view/detail/pixel_format.h"

namespace vorn::detail {

namespace {

PIXELFORMATDESCRIPTOR describe(HDC dc, int format) {
    PIXELFORMATDESCRIPTOR description = {};
    ::DescribePixelFormat(dc, format, sizeof description, &description);
    return description;
}

bool hasBitmapOrder(HDC dc, int format) {
    return describe(dc, format).cRedShift == 16;
}

} // namespace

PIXELFORMATDESCRIPTOR wantedPixelFormat(DWORD kind) {
    PIXELFORMATDESCRIPTOR wanted = {};
    wanted.nSize = sizeof wanted;
    wanted.nVersion = 1;
    wanted.dwFlags = kind;
    wanted.iPixelType = PFD_TYPE_RGBA;
    wanted.cColorBits = 24;
    wanted.cDepthBits = 32;
    wanted.iLayerType = PFD_MAIN_PLANE;
    return wanted;
}

int choosePixelFormat(HDC dc, const PIXELFORMATDESCRIPTOR& wanted) {
    const int chosen = ::ChoosePixelFormat(dc, &wanted);
    BITMAP bitmap = {};
    if (chosen == 0 || (wanted.dwFlags & PFD_DRAW_TO_BITMAP) == 0 || hasBitmapOrder(dc, chosen) ||
        ::GetObjectA(::GetCurrentObject(dc, OBJ_BITMAP), sizeof bitmap, &bitmap) == 0)
        return chosen;
    const BYTE depth = describe(dc, chosen).cDepthBits;
    const int count = ::DescribePixelFormat(dc, 1, 0, nullptr);
    for (int format = 1; format <= count; ++format) {
        const PIXELFORMATDESCRIPTOR offered = describe(dc, format);
        // With pixels larger than the bitmap's GL would write beyond the rows.
        if ((offered.dwFlags & wanted.dwFlags) == wanted.dwFlags && offered.iPixelType == wanted.iPixelType &&
            offered.cColorBits == bitmap.bmBitsPixel && offered.cDepthBits >= depth &&
            hasBitmapOrder(dc, format))
            return format;
    }
    return chosen;
}

bool drawsInBitmapOrder(HDC dc) {
    const PIXELFORMATDESCRIPTOR wanted = wantedPixelFormat(bitmapFormat);
    return hasBitmapOrder(dc, ::ChoosePixelFormat(dc, &wanted));
}

bool servesWindow(HDC dc, int format) {
    constexpr DWORD needed = PFD_DRAW_TO_WINDOW | PFD_SUPPORT_OPENGL;
    const PIXELFORMATDESCRIPTOR description = describe(dc, format);
    return (description.dwFlags & needed) == needed && description.iPixelType == PFD_TYPE_RGBA &&
           description.cDepthBits != 0;
}

} // namespace vorn::detail
