// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <span>
#include <string_view>

namespace examples {

/// A colour as OpenGL and files take it: 0 to 255 each.
struct Rgb {
    unsigned char red, green, blue;
};

/// Turns a number from 0 to 1 into a colour, dark to light: the eye reads the order without a legend.
///
/// Each ramp is a few control points in the Oklab colour space, whose lightness axis is even to the eye:
/// lightness rises evenly from end to end, hue and chroma run straight between the points.
class ColourRamp {
public:
    /// The ramp of that name; nothing when there is none.
    static std::optional<ColourRamp> named(std::string_view name);
    /// All names; the first is the default.
    static std::span<const std::string_view> names();

    /// The colour at t; below 0 and above 1 (and for NaN) the nearer end's.
    Rgb at(double t) const {
        double index = t * (steps - 1) + 0.5;
        if (!(index > 0)) return m_table.front();
        return m_table[static_cast<std::size_t>(std::min<double>(index, steps - 1))];
    }

private:
    static constexpr int steps = 1024;

    /// A control point: the two colour axes of Oklab, green to red and blue to yellow.
    struct Hue {
        double a, b;
    };
    struct Definition {
        double darkest, lightest;
        std::array<Hue, 5> hues;
    };

    explicit ColourRamp(const Definition& definition);
    static Rgb fromOklab(double lightness, double a, double b);

    static constexpr std::array<std::string_view, 4> allNames = {"land", "dusk", "ember", "grey"};
    static constexpr std::array<Definition, 4> definitions = {{
        // Deep water green over meadow and ochre to chalk.
        {0.34, 0.95, {{{-0.050, -0.040}, {-0.075, 0.015}, {-0.050, 0.095}, {0.020, 0.095}, {0.005, 0.025}}}},
        // Night blue over violet and rose to pale yellow.
        {0.26, 0.94, {{{0.010, -0.110}, {0.080, -0.115}, {0.130, -0.010}, {0.085, 0.085}, {-0.010, 0.085}}}},
        // Charcoal over red and orange to straw.
        {0.22, 0.94, {{{0.015, -0.010}, {0.110, 0.035}, {0.150, 0.100}, {0.060, 0.130}, {-0.015, 0.085}}}},
        {0.25, 0.95, {}},
    }};

    std::array<Rgb, steps> m_table;
};

inline std::span<const std::string_view> ColourRamp::names() {
    return allNames;
}

inline std::optional<ColourRamp> ColourRamp::named(std::string_view name) {
    auto found = std::find(allNames.begin(), allNames.end(), name);
    if (found == allNames.end()) return std::nullopt;
    return ColourRamp(definitions[found - allNames.begin()]);
}

inline ColourRamp::ColourRamp(const Definition& definition) {
    for (int i = 0; i < steps; ++i) {
        double t = static_cast<double>(i) / (steps - 1);
        double place = t * (definition.hues.size() - 1);
        auto from = std::min<std::size_t>(static_cast<std::size_t>(place), definition.hues.size() - 2);
        const Hue& begin = definition.hues[from];
        const Hue& end = definition.hues[from + 1];
        double between = place - static_cast<double>(from);
        m_table[i] = fromOklab(std::lerp(definition.darkest, definition.lightest, t),
                               std::lerp(begin.a, end.a, between), std::lerp(begin.b, end.b, between));
    }
}

/// Oklab to sRGB, by the two matrices of the colour space's definition (B. Ottosson, 2020) and the sRGB
/// curve.
inline Rgb ColourRamp::fromOklab(double lightness, double a, double b) {
    double l = std::pow(lightness + 0.3963377774 * a + 0.2158037573 * b, 3);
    double m = std::pow(lightness - 0.1055613458 * a - 0.0638541728 * b, 3);
    double s = std::pow(lightness - 0.0894841775 * a - 1.2914855480 * b, 3);
    auto byte = [](double linear) {
        linear = std::clamp(linear, 0.0, 1.0);
        double curved = linear <= 0.0031308 ? 12.92 * linear : 1.055 * std::pow(linear, 1 / 2.4) - 0.055;
        return static_cast<unsigned char>(curved * 255 + 0.5);
    };
    return {byte(4.0767416621 * l - 3.3077115913 * m + 0.2309699292 * s),
            byte(-1.2684380046 * l + 2.6097574011 * m - 0.3413193965 * s),
            byte(-0.0041960863 * l - 0.7034186147 * m + 1.7076147010 * s)};
}

} // namespace examples
