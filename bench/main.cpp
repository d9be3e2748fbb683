// SPDX-License-Identifier: MIT
#include "bench/harness.h"

#include "tests/support/gl_window.h"

#include <cstdio>

/// vorn_bench [FILTER]: compares the toolkit with the plain ways, all of them or those whose name contains
/// FILTER.
int main(int argc, char** argv) {
    {
        const support::GlWindow window; // a run without a driver would time empty frames: this throws
        std::printf("OpenGL: %s\n", reinterpret_cast<const char*>(glGetString(GL_RENDERER)));
    }
    const char* filter = argc > 1 ? argv[1] : "";
    if (bench::run(filter) > 0) return 0;
    std::fprintf(stderr, "no benchmark's name contains '%s'\n", filter);
    return 1;
}
