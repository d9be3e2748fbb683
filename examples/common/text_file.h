// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace examples {

/// Reads a whole file of at most 256 MB. @throws GridError, with a message for the user
std::string readTextFile(const std::string& file);

} // namespace examples
