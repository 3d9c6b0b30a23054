#include "base/NumberWords.h"

#include <unicode/locid.h>
#include <unicode/numfmt.h>
#include <unicode/plurrule.h>

#include <memory>

namespace wakeloft::NumberWords {

namespace {

std::string utf8(const icu::UnicodeString& text) {
  std::string bytes;
  text.toUTF8String(bytes);
  return bytes;
}

// An ICU formatter that failed to open (an unknown locale falls back to the
// root one, so only a broken ICU) writes the number in Western digits.
std::string formatted(icu::NumberFormat* formatter, UErrorCode status, double value, const std::string& fallback) {
  std::unique_ptr<icu::NumberFormat> owned(formatter);
  if (U_FAILURE(status) || !owned) return fallback;
  owned->setGroupingUsed(false);
  icu::UnicodeString text;
  owned->format(value, text);
  return utf8(text);
}

}  // namespace

std::string integer(std::int64_t value, const std::string& locale) {
  UErrorCode status = U_ZERO_ERROR;
  auto* formatter = icu::NumberFormat::createInstance(icu::Locale(locale.c_str()), status);
  return formatted(formatter, status, static_cast<double>(value), std::to_string(value));
}

std::string percent(std::int64_t wholePercent, const std::string& locale) {
  UErrorCode status = U_ZERO_ERROR;
  auto* formatter = icu::NumberFormat::createPercentInstance(icu::Locale(locale.c_str()), status);
  return formatted(formatter, status, static_cast<double>(wholePercent) / 100, std::to_string(wholePercent) + "%");
}

PluralCategory pluralCategory(std::int64_t count, const std::string& locale) {
  UErrorCode status = U_ZERO_ERROR;
  std::unique_ptr<icu::PluralRules> rules(icu::PluralRules::forLocale(icu::Locale(locale.c_str()), status));
  if (U_FAILURE(status) || !rules) return PluralCategory::other;
  return pluralCategoryNamed(utf8(rules->select(static_cast<double>(count)))).value_or(PluralCategory::other);
}

}  // namespace wakeloft::NumberWords
