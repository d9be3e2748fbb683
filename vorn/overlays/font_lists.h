// SPDX-License-Identifier: MIT
#pragma once

#include "vorn/api.h"

#include <windows.h>

/// Makes the 256 display lists, one for each byte value from listBase on, of the font that is selected into
/// the device context: what panels, toolbars and spreads draw their texts with. Needs a current GL context;
/// the caller owns the lists (glGenLists(256) before, glDeleteLists after). Returns 0 when the font cannot be
/// had as bitmaps.
///
/// It is wglUseFontBitmaps, with lists for the characters without pixels, the space among them, that some
/// drivers leave empty: "a b" would be drawn as "ab".
VORN_API int vornUseFontBitmaps(HDC hdc, int listBase);
