// SPDX-License-Identifier: MIT
#pragma once

/// The umbrella header: all that an application includes.
#include "vorn/api.h"
#include "vorn/bitmaps/dib.h"
#include "vorn/bitmaps/dib_palette.h"
#include "vorn/bitmaps/dib_simple.h"
#include "vorn/bitmaps/dib_surface.h"
#include "vorn/bitmaps/flicker_free_window.h"
#include "vorn/bitmaps/image.h"
#include "vorn/bitmaps/image_codec.h"
#include "vorn/geometry/colour.h"
#include "vorn/geometry/matrix.h"
#include "vorn/geometry/point_map.h"
#include "vorn/geometry/triangle.h"
#include "vorn/overlays/font.h"
#include "vorn/overlays/spread.h"
#include "vorn/overlays/text_panel.h"
#include "vorn/overlays/toolbar.h"
#include "vorn/view/lighting.h"
#include "vorn/view/mapping.h"
#include "vorn/view/rendering_context.h"
#include "vorn/view/user_rotation.h"
