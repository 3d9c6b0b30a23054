#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "base/Date.h"

namespace wakeloft {

// A rig that stands in for the real sleep setting records the end of the
// lease it honours in a small text file: one date, as seconds since 1970.
namespace RigLeaseFile {

inline constexpr std::string_view defaultPath = "/tmp/wakeloft-lid-rig.lease";

// The blanks around the date may be of any length; a number text longer
// than this is not a date and reads as absent, so it is never held whole.
inline constexpr std::size_t maxNumberBytes = 65'536;

// The shortest decimal that reads back to the same double, always with a
// point and a digit after it ("1731700000.25", "1731700000.0"), no line
// break. Throws std::domain_error for a date that is not finite.
std::string encode(Date date);

// Blanks and line breaks around the number are allowed; anything else that is
// not one finite C-locale number gives absent.
std::optional<Date> decode(std::string_view text);

// Absent when the file is missing, not a regular file, not UTF-8, or does
// not decode.
std::optional<Date> read(const std::string& path = std::string(defaultPath));

// Replaces the file in one step (a temporary file beside it, swapped into
// place), so a reader sees the old date or the new one, never part of either
// and never no file.
// Throws std::system_error naming the path.
void write(Date date, const std::string& path = std::string(defaultPath));

// True when a file was removed, false when there was none. Throws
// std::system_error for any other failure.
bool remove(const std::string& path = std::string(defaultPath));

}  // namespace RigLeaseFile
}  // namespace wakeloft
