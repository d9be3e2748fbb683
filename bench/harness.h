// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>

namespace bench {

/// The two sides of a comparison. Each does the same work once per call; what they need is kept alive by
/// their captures, and released before the next comparison starts.
struct Sides {
    std::function<void()> ours;
    std::function<void()> plain;
};

/// A comparison of the toolkit with the plain way of doing the same.
struct Comparison {
    std::string what;               ///< what is measured: "geometry: Multiply"
    std::string against;            ///< the plain way: "a loop over 16 elements"
    double aim;                     ///< the time of ours over the plain one's, at most
    std::function<Sides()> prepare; ///< called when its turn has come
    int rounds = 201;               ///< of interleaved timing, at most; fewer for what takes seconds
};

/// A figure that stands for itself, such as the memory that something takes.
struct Figure {
    std::string what;
    std::string unit;
    double limit;
    std::function<double()> measure;
};

/// Adds a comparison at program start:
///
///     bench::Sides copySides() { ... return {[=] { ... }, [=] { ... }}; }
///     const bench::Registration copy{{"dib: copy rows", "memcpy", 1.1, copySides}};
class Registration {
public:
    explicit Registration(Comparison comparison);
    explicit Registration(Figure figure);
};

/// Runs the comparisons and figures whose name contains the filter (all for an empty one), in order of their
/// names, and prints a line for each. Times are reported, never judged. Returns how many ran.
int run(const std::string& filter);

/// Makes the compiler believe that the object is read, so that computing it is not optimised away.
template <typename T>
void keep(const T& object) {
    asm volatile("" : : "g"(&object) : "memory");
}

} // namespace bench
