// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <vector>
#include <wincodec.h>
#include <windows.h>

namespace bench {

/// The size of the picture that is written to files.
constexpr int pictureWidth = 2048, pictureHeight = 1536;

/// A picture with the shades, lines and bare ground of a chart, as the rows of a 24-bit DIB.
std::vector<BYTE> chartPicture();

/// The imaging component called with nothing in between; COM and the factory are there already.
class PlainEncoder {
public:
    PlainEncoder();
    ~PlainEncoder();
    PlainEncoder(const PlainEncoder&) = delete;
    PlainEncoder& operator=(const PlainEncoder&) = delete;

    /// Writes rows as those of `chartPicture`.
    void save(const wchar_t* file, REFGUID container, std::vector<BYTE>& bits) const;

private:
    IWICImagingFactory* m_factory = nullptr;
};

/// Two files in the temporary folder, deleted at the end.
struct PictureFiles {
    std::filesystem::path ours = std::filesystem::temp_directory_path() / "vorn-bench-ours.tmp";
    std::filesystem::path plain = std::filesystem::temp_directory_path() / "vorn-bench-plain.tmp";

    ~PictureFiles() {
        std::error_code ignored;
        std::filesystem::remove(ours, ignored);
        std::filesystem::remove(plain, ignored);
    }
};

} // namespace bench
