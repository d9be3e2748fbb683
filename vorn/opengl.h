// SPDX-License-Identifier: MIT
#pragma once

/// OpenGL and GLU, whose headers need the platform's types first.
#include <windows.h>

#include <GL/gl.h>
#include <GL/glu.h>
