// SPDX-License-Identifier: MIT
#pragma once

#include "vorn/api.h"

class CvornMatrix;

/// The fixed-function lighting of a view: one positional light (GL_LIGHT0), the light model and the material.
/// A GL context must be current for Enable and Update.
class CvornOGLLighting {
public:
    /// Where the light stands; a change takes effect with the next Update.
    float m_fLightX = 1;
    float m_fLightY = 1;
    float m_fLightZ = 1;

    /// Moves the light; takes effect with the next Update.
    void SetPosition(float x, float y, float z) {
        m_fLightX = x;
        m_fLightY = y;
        m_fLightZ = z;
    }

    /// Switches lighting and the normalising of normals on or off; GL_LIGHT0 once enabled stays so.
    VORN_API void Enable(int bEnable);
    /// Loads light model, light and material. The light is placed in the coordinates of the current modelview
    /// matrix; the matrix argument (may be null) and the number are accepted and not used. The preset chooses
    /// the material's diffuse colour: (1, 1, 1, 1) for 0, else (0.8, 0.8, 0.8, 0.8).
    VORN_API void Update(CvornMatrix* pMatrix, int bPreset, float fUnused);
};
