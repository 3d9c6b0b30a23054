#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "ui/TextArgument.h"

namespace wakeloft {

// The small part of the platform's printf-style format strings that the
// app's texts use: "%@" for words, "%d" for a code or a count, "%%" for a
// percent sign, and positional forms such as "%2$@", which a translation
// needs when its word order differs from the English one.
namespace StringFormat {

enum class Conversion { words, number };

// The conversion of each argument, first argument first. Nothing for a
// malformed format: an unknown or unfinished conversion, positional and
// plain placeholders mixed, a position left out or used with two
// conversions.
std::optional<std::vector<Conversion>> conversions(std::string_view format);

// The format with its placeholders filled. Nothing when the format is
// malformed or the arguments do not match its conversions in number and
// kind; a count alone may have no placeholder.
std::optional<std::string> formatted(std::string_view format, std::span<const TextArgument> arguments);

}  // namespace StringFormat
}  // namespace wakeloft
