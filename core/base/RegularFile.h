#pragma once

#include <sys/types.h>

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

// Puts `content` at `path` whole or not at all: written to a new file in the
// same folder, flushed to disk and renamed over the path, so a reader sees
// either the old file or the new one. The new file gets `mode`. Returns the
// error number of the step that failed, or 0; on failure the path is as it
// was and the new file is gone.
int replace(const std::string& path, std::string_view content, mode_t mode);

}  // namespace RegularFile
}  // namespace wakeloft
