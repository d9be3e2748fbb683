// SPDX-License-Identifier: MIT
#pragma once

#include "label_layout.h"

#include <vorn/vorn.h>

#include <array>
#include <span>
#include <string>
#include <vector>

namespace examples {

/// The texts of an axis set in the view's own font: at the ticks of each axis and, outside these, its title.
/// They stand on those edges of the axes' box that lie outermost in the picture, as far as they have room.
///
///     labels.makeFont(*m_oglDC.GetDC(), m_rcView.Height(), m_nFontListBase); // in OnUpdateTextMetrics
///
///     labels.clear();                                                        // in OnOutputToDC
///     labels.add(m_mapping, axes, 2, heightTicks, "height", 0);
///     labels.draw(m_mapping);
class AxisLabels {
public:
    static constexpr COLORREF ink = RGB(60, 62, 70);

    struct Tick {
        float position; ///< a fraction of the axis's drawn length
        std::string text;
    };

    /// Makes the font for a picture of that height, and its 256 display lists. `dc` is the one that GL draws
    /// to.
    void makeFont(CDC& dc, int pictureHeight, int listBase);
    CFont& font() { return m_font; }
    int lineHeight() const { return m_metrics.tmHeight; }

    void clear();
    /// Adds the texts of axis 0 to 2 (x, y, z). Those of the lowest priority get their places first.
    void add(CvornOGLMapping& mapping, const CvornAxisSet& set, std::size_t which,
             std::span<const Tick> ticks, const std::string& title, int priority);
    /// Draws the texts in front of everything, beside what is kept clear (client coordinates). The mapping is
    /// the view's.
    void draw(CvornOGLMapping& mapping, std::span<const CRect> keptClear = {});
    /// As the last `draw` placed them; pixels of the viewport.
    const std::vector<PlacedLabel>& placed() const { return m_placed; }

private:
    /// An edge of the box, parallel to an axis.
    struct Edge {
        float offset[3] = {};      ///< from the axis to the edge, in model units
        double outX = 0, outY = 0; ///< away from the chart, in the picture
        bool visible = false;      ///< long enough in the picture to be worth labels
    };
    Edge edgeOf(CvornOGLMapping& mapping, const CvornAxisSet& set, std::size_t which) const;
    void addText(CvornOGLMapping& mapping, const CvornAxis& axis, const Edge& edge, const Tick& tick,
                 int priority, double distance);
    SIZE measure(const std::string& text) const;

    CFont m_font;
    int m_listBase = 0;
    TEXTMETRICA m_metrics{};
    std::array<int, 256> m_advance{};
    std::vector<PlacedLabel> m_placed;
    std::vector<std::string> m_texts;
};

} // namespace examples
