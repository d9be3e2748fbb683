// SPDX-License-Identifier: MIT
#include "tests/support/temp_folder.h"

#include <fstream>
#include <iterator>
#include <windows.h>

namespace support {

TempFolder::TempFolder() {
    static int s_number = 0;
    const auto name =
        "vorn-test-" + std::to_string(::GetCurrentProcessId()) + "-" + std::to_string(s_number++);
    m_path = std::filesystem::temp_directory_path() / name;
    std::filesystem::remove_all(m_path);
    std::filesystem::create_directories(m_path);
}

TempFolder::~TempFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
}

std::string TempFolder::write(const std::string& name, std::span<const unsigned char> bytes) const {
    std::ofstream(m_path / name, std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    return pathOf(name);
}

std::vector<unsigned char> TempFolder::read(const std::string& name) const {
    std::ifstream file(m_path / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

} // namespace support
