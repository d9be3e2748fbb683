// SPDX-License-Identifier: MIT
#pragma once

#include "chart_overlay.h"
#include "options.h"

#include "common/colour_ramp.h"
#include "common/grid.h"

#include <optional>
#include <string>
#include <vector>

/// The legend: a panel with the chart's name, the size of its table, its least and greatest number and their
/// mean, over a scale of the colours. Lit up under the mouse. Not shown where it
/// would cover a third of the picture.
class ChartLegend : public ChartOverlay {
public:
    /// The statistics of a grid; holes do not count. The ramp must live as long as the legend.
    ChartLegend(const std::string& title, const examples::Grid& grid, const examples::ColourRamp& ramp);

    /// Nothing: hidden.
    void setPlace(const std::optional<LegendPlace>& place);
    bool isShown() const { return m_place.has_value(); }
    void setShown(bool shown);
    /// Takes other numbers; they are shown once the metrics have been updated.
    void setNumbers(const examples::Grid& grid);

    void updateMetrics(CDC& dc, CFont& font, int fontLists) override;
    CRect place(const CRect& free) override;
    CRect bounds() const override { return m_bounds; }
    void draw(CvornOGLMapping& mapping, CSize view) override;
    void onHover(bool inside) override;

    const CvornTextPanel& panel() const { return m_panel; }

private:
    /// What stands in the two columns.
    struct Row {
        std::string name, number;
    };

    void drawColours(CvornOGLMapping& mapping, double left, double bottom, double right) const;

    std::string m_title;
    std::vector<Row> m_rows;
    const examples::ColourRamp& m_ramp;
    std::optional<LegendPlace> m_place;
    LegendPlace m_lastPlace;
    CvornTextPanel m_panel;
    int m_lineHeight = 0;
    CRect m_bounds{0, 0, 0, 0};
    bool m_hot = false;
};
