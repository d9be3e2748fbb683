// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace support {

/// An empty folder of its own under the system's temporary one, removed with all that is in it.
class TempFolder {
public:
    TempFolder();
    ~TempFolder();
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    /// The whole path of a file in the folder, for the narrow interface.
    std::string pathOf(const std::string& name) const { return (m_path / name).string(); }
    /// Writes a file in the folder and returns its path.
    std::string write(const std::string& name, std::span<const unsigned char> bytes) const;
    std::string write(const std::string& name, std::string_view text) const {
        return write(name, {reinterpret_cast<const unsigned char*>(text.data()), text.size()});
    }
    /// The bytes of a file in the folder; none when it is not there.
    std::vector<unsigned char> read(const std::string& name) const;

private:
    std::filesystem::path m_path;
};

} // namespace support
