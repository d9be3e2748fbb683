// SPDX-License-Identifier: MIT
#pragma once

#include "vorn/api.h"
#include "vorn/axes/axis.h"
#include "vorn/bitmaps/texture.h"

/// Parameter bits of an axis set: cone tips; tick grids on the three planes; and normals, with the set's own
/// vertices, sent through the matrix.
enum : DWORD { AXES_TIPS = 0x40, AXES_GRIDS = 0x80, AXES_TRANSFORM_NORMALS = 0x100 };

/// Plane codes: the types of the two axes that span the plane. Operations on any other code do nothing.
enum : DWORD { PLANE_XY = AXIS_X | AXIS_Y, PLANE_XZ = AXIS_X | AXIS_Z, PLANE_YZ = AXIS_Y | AXIS_Z };

/// The three axes of a chart with the matrix that they share, their origin and colours, and an image on each
/// of the planes between them. It emits all of it: lines, images, tips and grids.
///
///     axes.m_axisX.SetMax(250);                 // the data
///     axes.UpdateLength(1, 1);                  // the size, in model units
///     axes.UpdateOrigin(-0.5F, -0.5F, -0.5F);
///     axes.UpdateTicks();
///     axes.SetParam(AXES_TIPS | AXES_GRIDS);
///     axes.vornBuild(list, 1);                  // in the view's OnBuild; glCallList(list) when it draws
///
/// An image and the grid on it lie in one plane: draw with glPolygonOffset(1, 1) and GL_POLYGON_OFFSET_FILL
/// enabled to let the lines stand out.
class VORN_API CvornAxisSet {
public:
    /// The axes. All three use the matrix of the set.
    CvornAxis m_axisX;
    CvornAxis m_axisY;
    CvornAxis m_axisZ;
    /// The pictures on the planes; the application loads them and sets their texture names.
    CvornDIBTexture m_imageXY;
    CvornDIBTexture m_imageXZ;
    CvornDIBTexture m_imageYZ;
    /// Of the axis lines, of every fifth grid line, and of the other grid lines. The tips have their axes'
    /// colours.
    CvornColour m_clrAxis;
    CvornColour m_clrGrid;
    CvornColour m_clrMinorGrid;
    /// The cones at the axis ends, in model units.
    float m_fTipRadius = 0.01F;
    float m_fTipLength = 0.04F;

    /// Unit axes from (0, 0, 0), all black. Bits that the set does not know are kept for the application.
    explicit CvornAxisSet(unsigned long dwParams = 0x240);
    /// A copy's axes use the copy's own matrix. The images are shared as textures share them.
    CvornAxisSet(const CvornAxisSet& other);
    CvornAxisSet& operator=(const CvornAxisSet& other);
    ~CvornAxisSet() = default;

    /// Reads the parameter bits of the mask; replaces all bits.
    unsigned long GetParam(unsigned long dwMask) const { return m_dwParams & dwMask; }
    void SetParam(unsigned long dwParams) { m_dwParams = dwParams; }
    /// Clears the bits of the mask and sets all of dwSet, also those outside the mask.
    void SetParam(unsigned long dwSet, unsigned long dwMask) { m_dwParams = (m_dwParams & ~dwMask) | dwSet; }

    /// Copies 16 elements into the matrix that the axes share.
    void Update(const CvornMatrix& matrix) { m_matrix = matrix; }
    void Update(const float* pfElements) { m_matrix.Set(pfElements); }
    /// Places the axes and planes, in model units.
    void UpdateOrigin(float x, float y, float z);
    /// Sets the drawn lengths, in model units: each the given one times s, 0 for a disabled axis. The tips
    /// are scaled by s as well. Call it again after enabling or disabling an axis.
    void UpdateLength(float lx, float ly, float lz, float s);
    void UpdateLength(float l, float s) { UpdateLength(l, l, l, s); }
    /// Gives all three axes the largest of their round tick steps.
    void UpdateTicks();

    /// Emits the whole set into a new display list of that number, or straight to GL for a negative one.
    /// Needs a current context. Lines are `width` pixels wide, those of the axes twice that; it leaves GL's
    /// line width at `width` and its colour changed.
    void vornBuild(int list, float width);
    /// Emits a vertex on a plane from two of the coordinates (a along x, b along y, c along z), the third
    /// being the origin's. Neither matrix nor origin is applied to the others.
    void vornVertexGrid(unsigned long dwPlane, float a, float b, float c) const;
    /// Emits the plane's normal.
    void vornNormalGrid(unsigned long dwPlane) const;

    /// The pixel size for an image on a plane: the longer side gets `size` pixels, the other in proportion to
    /// the axes. Empty while one of the axes has no length.
    void GetGridImageRect(RECT* r, unsigned long dwPlane, float size) const;
    /// Renders the plane's image, or those of all planes, anew at such a size.
    void ResizeGridImage(CDC* pDC, unsigned long dwPlane, float size);
    void ResizeImages(CDC* pDC, float size);
    /// Marks the images as not of the wanted size any more; the pictures stay.
    void InvalidateImages() { m_bImagesValid = 0; }
    /// Whether ResizeImages was called since the images were last invalidated.
    int IsImageSizesValid() const { return m_bImagesValid; }

    /// Stores, or loads, parameters, axes and images. After loading call UpdateLength, UpdateOrigin,
    /// UpdateTicks and Update: what they set is not stored. Throws what the archive throws, with the set as
    /// it was.
    void Serialize(CArchive& ar);

protected:
    /// Emit a vertex with the origin added, and a normal: through the matrix with AXES_TRANSFORM_NORMALS,
    /// else as they are.
    void vornVertex3f(float x, float y, float z) const;
    void vornVertex3d(double x, double y, double z) const;
    void vornNormal3f(float x, float y, float z) const;
    void vornNormal3d(double x, double y, double z) const;

    /// The parts of vornBuild: the cone at the end of an axis; the grid lines of the plane that a and b span;
    /// the image of that plane, whose normal is given, when it has one. They emit GL drawing of their own.
    void vornBuildTip(const CvornAxis& a);
    void vornBuildGrid(CvornAxis a, CvornAxis b);
    void vornBuildImage(float nx, float ny, float nz, CvornAxis a, CvornAxis b, CvornDIBTexture& t);

    /// Parameter bits.
    unsigned long m_dwParams;
    /// The matrix that the axes share.
    CvornMatrix m_matrix;
    /// For the application: nothing here reads it.
    int m_nSpare = 0;
    /// Origin of the axes, as UpdateOrigin set it.
    CvornPtMap m_ptOrigin;
    /// See IsImageSizesValid.
    int m_bImagesValid = 0;

private:
    void ShareMatrix();
    void Transfer(CArchive& ar);
    void UploadImages();
};
