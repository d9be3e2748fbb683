// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

/// One row of the file.
struct Point {
    std::string name;
    std::size_t category = 0;
    std::array<double, 3> position{};
    double value = 0; ///< what its size shows
};

/// Named points of several classes, with a value each.
struct Points {
    static constexpr std::size_t most = 5000;

    std::array<std::string, 6> titles; ///< of name, class, x, y, z and value
    std::vector<std::string> classes;  ///< in the order of their first points
    std::vector<Point> points;

    /// Reads comma, semicolon or tab separated rows of name, class, x, y, z and value, with titles in the
    /// first. `file` is the name that messages give. @throws examples::GridError for any other text
    static Points parse(std::string_view text, const std::string& file);
};
