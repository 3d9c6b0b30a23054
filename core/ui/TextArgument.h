#pragma once

#include <cstdint>
#include <string>
#include <variant>

namespace wakeloft {

// What fills a text's placeholder: words already in the user's language
// ("%@") or a signed 32-bit number written in decimal ("%d").
using TextArgument = std::variant<std::string, std::int32_t>;

}  // namespace wakeloft
