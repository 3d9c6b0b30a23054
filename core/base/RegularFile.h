#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace wakeloft {

namespace RegularFile {

// The whole content of a regular file of at most `maxBytes`, or absent when
// the path names anything else (a directory, a device, a pipe), cannot be
// opened or read, or holds more. Never blocks on a pipe or device.
std::optional<std::string> read(const std::string& path, std::size_t maxBytes);

// Hands a regular file's content to `take` piece by piece, however long it
// is, so that a reader keeps only what it needs. False when the path names
// anything else, cannot be opened or read, or `take` answers false.
bool readInPieces(const std::string& path, const std::function<bool(std::string_view piece)>& take);

}  // namespace RegularFile
}  // namespace wakeloft
