#include "ui/TextCount.h"

#include "base/NumberWords.h"

namespace wakeloft {

TextCount TextCount::of(std::int64_t value, const std::string& locale) {
  return {value, NumberWords::integer(value, locale), NumberWords::pluralCategory(value, locale)};
}

}  // namespace wakeloft
