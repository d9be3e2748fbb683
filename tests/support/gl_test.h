// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/gl_window.h"

#include <gtest/gtest.h>

namespace support {

/// A test with a current context in a hidden window of 200 x 150 pixels. GL must have no error at the end.
class GlTest : public testing::Test {
protected:
    void TearDown() override { EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR)); }

    GlWindow m_window;
};

/// Whether no channel differs by more than the tolerance; the message shows both colours in hex, as BBGGRR.
testing::AssertionResult isNear(COLORREF actual, COLORREF expected, int tolerance = 1);

} // namespace support
