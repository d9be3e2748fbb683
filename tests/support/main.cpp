// SPDX-License-Identifier: MIT
#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <gtest/gtest.h>

int main(int argc, char** argv) {
    if (std::getenv("VORN_GUARD_HEAP") != nullptr && ::LoadLibraryA("guard_heap.dll") == nullptr) {
        std::fputs("guard_heap.dll does not load\n", stderr);
        return 1;
    }
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
