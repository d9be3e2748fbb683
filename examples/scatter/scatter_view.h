// SPDX-License-Identifier: MIT
#pragma once

#include "points.h"

#include "common/axis_labels.h"
#include "common/axis_range.h"

#include <vorn/vorn.h>

#include <array>
#include <string>

/// Points in space: their class is their colour, their value their size. A panel tells all about the point
/// under the mouse, and stays with it while the chart is turned.
class CScatterView : public CvornOGLWnd {
public:
    /// The view's display lists.
    enum { ListPoints = 1, ListSphere, ListAxes, ListLegend, ListTip, ListFont = 256 };

    explicit CScatterView(Points data);

    /// Shows the panel of a point; false when none has that name.
    bool pointAt(const std::string& name);
    /// The panel of the point that the mouse is at; null when it is at none.
    const CvornTextPanel* tip() const { return m_hot >= 0 ? &m_tip : nullptr; }

protected:
    void OnUpdateTextMetrics(CDC* pDC, int bPrint) override;
    void OnBuild() override;
    void OnOutputToDC(CDC* pDC, int x, int y) override;

    afx_msg void OnLButtonDown(UINT nFlags, CPoint pt);
    afx_msg void OnMouseMove(UINT nFlags, CPoint pt);
    afx_msg LRESULT OnMouseLeave(WPARAM, LPARAM);
    DECLARE_MESSAGE_MAP()

private:
    /// Where a point is in the picture: pixels from the lower left corner, and how large.
    struct Spot {
        double x, y, depth, radius;
    };

    // The chart (scatter_view.cpp)
    void placeAxes();
    CvornAxis& axis(std::size_t which);
    std::array<float, 3> modelPoint(const Point& point);
    float radiusOf(const Point& point) const;
    void drawSphere(std::size_t index, float scale);
    void drawLabels();

    // The point under the mouse, and its panel (pointing.cpp)
    Spot spotOf(std::size_t index);
    int nearestTo(CPoint pt);
    void setHot(int index);
    void drawTip();

    Points m_data;
    std::array<examples::AxisRange, 3> m_ranges;
    double m_least = 0, m_greatest = 0; ///< of the values
    bool m_logarithmic = false;         ///< the values' logarithms give the sizes
    CvornAxisSet m_axes{AXES_TIPS | AXES_GRIDS};
    examples::AxisLabels m_labels;
    CvornSpread m_legend;
    CvornTextPanel m_tip;
    int m_hot = -1; ///< the point that the panel is about
};
