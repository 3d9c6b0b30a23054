#include "ui/LocaleIdentifiers.h"

#include <unicode/locid.h>

#include <algorithm>
#include <cctype>

namespace wakeloft::LocaleIdentifiers {

namespace {

bool isLanguageCode(const std::string& code) {
  return code.size() >= 2 && code.size() <= 8 &&
         std::all_of(code.begin(), code.end(), [](unsigned char c) { return std::isalpha(c); });
}

// BCP 47 first, which also reads extensions such as "-u-ca-japanese"; ICU's
// own form otherwise.
icu::Locale parsed(const std::string& identifier) {
  UErrorCode status = U_ZERO_ERROR;
  icu::Locale tagged = icu::Locale::forLanguageTag(identifier, status);
  if (U_SUCCESS(status) && !tagged.isBogus() && isLanguageCode(tagged.getLanguage())) return tagged;
  return icu::Locale(identifier.c_str());
}

}  // namespace

Language languageOf(const std::string& identifier) {
  const icu::Locale locale = parsed(identifier);
  if (locale.isBogus() || !isLanguageCode(locale.getLanguage())) return {};
  return {locale.getLanguage(), locale.getScript(), locale.getCountry()};
}

std::string replacingLanguage(const std::string& base, const Language& language) {
  const icu::Locale locale = parsed(base);
  std::string name = language.language;
  if (!language.script.empty()) name += "_" + language.script;
  if (!language.region.empty()) name += "_" + language.region;
  if (const std::string variant = locale.getVariant(); !variant.empty()) {
    name += (language.region.empty() ? "__" : "_") + variant;
  }
  const std::string full = locale.getName();
  if (const auto at = full.find('@'); at != std::string::npos) name += full.substr(at);
  return icu::Locale(name.c_str()).getName();
}

bool isRightToLeft(const std::string& languageIdentifier) {
  const icu::Locale locale = parsed(languageIdentifier);
  return !locale.isBogus() && locale.isRightToLeft();
}

}  // namespace wakeloft::LocaleIdentifiers
