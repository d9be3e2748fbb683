// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

/// Choosing pixel formats for 24-bit colour with a 32-bit depth buffer.
namespace vorn::detail {

/// What kind of drawing a format is for.
constexpr DWORD bitmapFormat = PFD_DRAW_TO_BITMAP | PFD_SUPPORT_GDI | PFD_SUPPORT_OPENGL;
constexpr DWORD metafileFormat = PFD_DRAW_TO_WINDOW | PFD_SUPPORT_GDI | PFD_SUPPORT_OPENGL;
constexpr DWORD windowFormat = PFD_DOUBLEBUFFER | PFD_DRAW_TO_WINDOW | PFD_SUPPORT_OPENGL;

/// What is asked of the system for one of the kinds.
PIXELFORMATDESCRIPTOR wantedPixelFormat(DWORD kind);

/// The system's choice; for a bitmap whose colours that choice would exchange, a format that satisfies the
/// same and has them in the bitmap's order, if there is one. 0 when nothing serves.
int choosePixelFormat(HDC dc, const PIXELFORMATDESCRIPTOR& wanted);

/// Whether the system's own choice for the bitmap of a memory DC draws the colours in the bitmap's order:
/// blue in the lowest byte.
bool drawsInBitmapOrder(HDC dc);

/// Whether OpenGL can draw into a window that has this format.
bool servesWindow(HDC dc, int format);

} // namespace vorn::detail
