#pragma once

#include <cstdint>
#include <string>
#include <variant>

#include "ui/TextCount.h"

namespace wakeloft {

// What fills a text's placeholder: words already in the user's language
// ("%@", numbers and percentages included, put into the locale's digits by
// `NumberWords`), a system's code written as the system writes it, in
// Western decimal ("%d"), or a count that picks a counted text's wording
// ("%d").
using TextArgument = std::variant<std::string, std::int32_t, TextCount>;

}  // namespace wakeloft
