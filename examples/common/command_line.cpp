// SPDX-License-Identifier: MIT
#include "command_line.h"

#include <algorithm>
#include <cctype>
#include <charconv>

namespace examples {

CvornImageCodec::Format pictureFormatOf(std::string file) {
    std::transform(file.begin(), file.end(), file.begin(), [](unsigned char c) { return std::tolower(c); });
    if (file.ends_with(".png")) return CvornImageCodec::FORMAT_PNG;
    if (file.ends_with(".jpg") || file.ends_with(".jpeg")) return CvornImageCodec::FORMAT_JPEG;
    if (file.ends_with(".bmp")) return CvornImageCodec::FORMAT_BMP;
    throw OptionsError("a picture's name ends with .png, .jpg or .bmp");
}

CSize parsePictureSize(std::string_view text) {
    constexpr long long mostPixels = 1LL << 28; // what the picture's writer takes
    int width = 0, height = 0;
    const char* end = text.data() + text.size();
    auto parsed = std::from_chars(text.data(), end, width);
    if (parsed.ec == std::errc() && parsed.ptr != end && *parsed.ptr == 'x')
        parsed = std::from_chars(parsed.ptr + 1, end, height);
    if (parsed.ec != std::errc() || parsed.ptr != end || width < 1 || height < 1)
        throw OptionsError("--size takes a width and a height in pixels, such as 1200x900");
    if (static_cast<long long>(width) * height > mostPixels)
        throw OptionsError("--size: more than 268 million pixels");
    return {width, height};
}

CommandLine CommandLine::parse(std::span<const char* const> arguments, std::span<const std::string> added) {
    CommandLine line;
    for (auto argument = arguments.begin(); argument != arguments.end(); ++argument) {
        const std::string name = *argument;
        const auto value = [&]() -> std::string {
            if (++argument == arguments.end()) throw OptionsError(name + " needs a value");
            return *argument;
        };
        if (name == "--help" || name == "-h") {
            line.help = true;
        } else if (name == "--export") {
            line.exportFile = value();
            pictureFormatOf(line.exportFile);
        } else if (name == "--size") {
            line.size = parsePictureSize(value());
        } else if (std::find(added.begin(), added.end(), name) != added.end()) {
            line.values[name] = value();
        } else if (name.starts_with("--")) {
            throw OptionsError("there is no option " + name);
        } else if (line.file.empty()) {
            line.file = name;
        } else {
            throw OptionsError("only one file can be shown, found " + name + " too");
        }
    }
    return line;
}

} // namespace examples
