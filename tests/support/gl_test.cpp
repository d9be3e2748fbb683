// SPDX-License-Identifier: MIT
#include "tests/support/gl_test.h"

#include <cstdlib>

namespace support {

testing::AssertionResult isNear(COLORREF actual, COLORREF expected, int tolerance) {
    for (int shift = 0; shift < 24; shift += 8) {
        const int a = (actual >> shift) & 0xFF, b = (expected >> shift) & 0xFF;
        if (std::abs(a - b) > tolerance)
            return testing::AssertionFailure()
                   << (testing::Message() << std::hex << "0x" << actual << " instead of 0x" << expected);
    }
    return testing::AssertionSuccess();
}

} // namespace support
