// SPDX-License-Identifier: MIT
#pragma once

#include "common/axis_labels.h"
#include "common/axis_range.h"
#include "common/surface_mesh.h"

#include <vorn/vorn.h>

#include <array>
#include <span>
#include <string>
#include <vector>

/// The axes round the surface: an axis set whose ranges fit the data, and the texts at its ticks and ends.
/// Along x run the columns, along y the rows, along z the values.
class ChartAxes {
public:
    using Titles = std::array<std::string, 3>;

    /// Ranges and titles for a grid; empty titles are taken from the grid's headers.
    ChartAxes(const examples::Grid& grid, Titles titles);

    /// Ranges and titles for another grid in its place; what is shown stays as it is.
    void fitTo(const examples::Grid& grid);

    CvornAxisSet& set() { return m_set; }
    /// The size of the surface inside the axes, in model units.
    const examples::MeshExtents& extents() const { return m_extents; }

    /// What is shown of the set: AXES_TIPS, AXES_GRIDS, and for this class labels, pictures on the planes,
    /// and anything at all. Without axes the surface has their room.
    enum : DWORD { SHOW_LABELS = 0x1000, SHOW_PLANES = 0x2000, SHOW_AXES = 0x4000 };
    bool shows(DWORD bits) const { return m_set.GetParam(bits) == bits; }
    void toggle(DWORD bits);

    /// How many times as high the surface is as it would be by itself, with the axis of its values. More than
    /// once makes the rest smaller, so that all stays in view.
    void setExaggeration(double exaggeration);
    double exaggeration() const { return m_exaggeration; }

    /// Compiles the set into its display list. Needs the view's context.
    void build(float lineWidth);
    /// Draws the list, unlit.
    void draw(float lineWidth) const;

    /// Makes the font for a picture of that height. `dc` is the one that GL draws to.
    CFont& makeFont(CDC& dc, int pictureHeight, int listBase) {
        m_labels.makeFont(dc, pictureHeight, listBase);
        return m_labels.font();
    }
    /// Draws the texts in front of everything, as far as they have room in the viewport beside what is kept
    /// clear (client coordinates). The mapping is the view's.
    void drawLabels(CvornOGLMapping& mapping, std::span<const CRect> keptClear);
    /// As the last `drawLabels` placed them; pixels of the viewport.
    const std::vector<examples::PlacedLabel>& labels() const { return m_labels.placed(); }

    /// Stores or loads ranges and parameters. Throws what the archive throws, with nothing changed.
    void serialize(CArchive& archive);

private:
    /// One axis of the three: its numbers, and what it measures.
    struct Scale {
        examples::AxisRange range;
        double first = 0, last = 0;     ///< the data at the surface's near, or left, and far end
        bool reversed = false;          ///< the numbers fall along the axis
        std::vector<std::string> names; ///< instead of the numbers 0, 1, 2 ...
        std::string title;

        void fit();
        double valueAt(int tick) const;
        std::string textAt(int tick) const;
        int ticks() const { return range.minorSteps() / 5 + 1; }
    };
    static Scale scaleOf(const std::vector<std::string>& labels, int count, const char* what);
    void place();
    void addLabels(CvornOGLMapping& mapping, std::size_t which, int priority);

    CvornAxisSet m_set;
    Titles m_titles;
    std::array<Scale, 3> m_scales;
    examples::MeshExtents m_whole; ///< the grid's proportions
    examples::MeshExtents m_extents;
    double m_exaggeration = 1;
    examples::AxisLabels m_labels;
};
