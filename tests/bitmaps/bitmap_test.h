// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/canvas.h"
#include "tests/support/gl_test.h"
#include "tests/support/handle_counts.h"
#include "tests/support/temp_folder.h"

#include <afxwin.h>

constexpr COLORREF backdrop = RGB(12, 34, 56), orange = RGB(250, 140, 10), white = RGB(255, 255, 255);

/// A canvas of 130 x 130 pixels with the backdrop's colour to draw on, and a folder for files.
class BitmapTest : public testing::Test {
protected:
    struct Pixel {
        int x, y;
        COLORREF colour;
    };
    void expectPixels(const char* what, std::initializer_list<Pixel> pixels, int tolerance = 0) {
        for (const auto& [x, y, colour] : pixels)
            EXPECT_TRUE(support::isNear(m_canvas.at(x, y), colour, tolerance))
                << what << " at " << x << ", " << y;
    }
    /// Runs it three times: whatever the first has left behind is the system's own, the others leave nothing.
    template <typename Use>
    static void expectHandlesKept(Use use) {
        use();
        const auto before = support::HandleCounts::now();
        use();
        use();
        EXPECT_EQ(support::HandleCounts::now(), before);
    }

    support::TempFolder m_folder;
    support::Canvas m_canvas{130, 130, backdrop};
    CDC& m_dc = *CDC::FromHandle(m_canvas.dc());
};
