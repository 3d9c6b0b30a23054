#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace wakeloft {

namespace RegularFile {

// The whole content of a regular file of at most `maxBytes`, or absent when
// the path names anything else (a directory, a device, a pipe), cannot be
// opened or read, or holds more. Never blocks on a pipe or device.
std::optional<std::string> read(const std::string& path, std::size_t maxBytes);

}  // namespace RegularFile
}  // namespace wakeloft
