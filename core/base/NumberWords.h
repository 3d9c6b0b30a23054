#pragma once

#include <cstdint>
#include <string>

#include "base/PluralCategory.h"

namespace wakeloft {

// Numbers as a locale writes and counts them, from the platform's formatters
// (Foundation on macOS, ICU elsewhere): its digits, its percent sign and its
// plural rules. Locales are identifiers such as "en_US" or "ar".
namespace NumberWords {

// A whole number in the locale's digits, without grouping: "42", "٤٢".
std::string integer(std::int64_t value, const std::string& locale);

// A whole percentage with the locale's sign and spacing: "20%", "20 %"
// (a no-break space), "٢٠٪؜".
std::string percent(std::int64_t wholePercent, const std::string& locale);

// The plural category the locale puts a count in. On macOS Foundation keeps
// its plural rules to itself; the app's strings dictionaries ask it, so
// there the answer is the app's language's, and "other" outside the app.
PluralCategory pluralCategory(std::int64_t count, const std::string& locale);

}  // namespace NumberWords
}  // namespace wakeloft
