#pragma once

#include <array>
#include <optional>
#include <string_view>

namespace wakeloft {

// CLDR's plural categories, which pick a counted text's wording: English and
// German use one and other; Arabic all six.
enum class PluralCategory { zero, one, two, few, many, other };

inline constexpr std::array<PluralCategory, 6> allPluralCategories{
    PluralCategory::zero, PluralCategory::one,  PluralCategory::two,
    PluralCategory::few,  PluralCategory::many, PluralCategory::other};

// The category's name as CLDR, ICU and the strings dictionaries spell it.
constexpr std::string_view pluralCategoryName(PluralCategory category) {
  switch (category) {
    case PluralCategory::zero: return "zero";
    case PluralCategory::one: return "one";
    case PluralCategory::two: return "two";
    case PluralCategory::few: return "few";
    case PluralCategory::many: return "many";
    case PluralCategory::other: break;
  }
  return "other";
}

constexpr std::optional<PluralCategory> pluralCategoryNamed(std::string_view name) {
  for (const auto category : allPluralCategories) {
    if (pluralCategoryName(category) == name) return category;
  }
  return std::nullopt;
}

}  // namespace wakeloft
