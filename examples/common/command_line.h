// SPDX-License-Identifier: MIT
#pragma once

#include <vorn/vorn.h>

#include <map>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>

namespace examples {

/// A command line that cannot be followed; `what()` says why.
class OptionsError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The format that the end of a picture's name tells: .png, .jpg or .bmp. @throws OptionsError
CvornImageCodec::Format pictureFormatOf(std::string file);

/// Reads "WxH", in pixels. @throws OptionsError
CSize parsePictureSize(std::string_view text);

/// What the smaller examples take: `PROGRAM [FILE] [--export PICTURE] [--size WxH]`, and what the example
/// adds.
struct CommandLine {
    std::string file;       ///< empty: the example's own data
    std::string exportFile; ///< the picture to write
    CSize size{800, 600};   ///< of window or picture, in pixels
    bool help = false;
    std::map<std::string, std::string> values; ///< of the options that the example adds

    /// Reads the arguments after the program's name; `added` are further options that take a value.
    /// @throws OptionsError
    static CommandLine parse(std::span<const char* const> arguments, std::span<const std::string> added);
};

} // namespace examples
