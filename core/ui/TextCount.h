#pragma once

#include <cstdint>
#include <string>

#include "base/PluralCategory.h"

namespace wakeloft {

// A count that fills a counted text's "%d": the number in the locale's
// digits and the plural category that picks the text's wording.
struct TextCount {
  std::int64_t value = 0;
  std::string digits;
  PluralCategory category = PluralCategory::other;

  // As `locale`, the app's resolved one, writes and counts it.
  static TextCount of(std::int64_t value, const std::string& locale);

  friend bool operator==(const TextCount&, const TextCount&) = default;
};

}  // namespace wakeloft
