// SPDX-License-Identifier: MIT
#pragma once

/// OpenGL and GLU, whose headers need the platform's types first; and those come with the framework, which
/// must be the one to include them.
#include <afxwin.h>

#include <GL/gl.h>
#include <GL/glu.h>
