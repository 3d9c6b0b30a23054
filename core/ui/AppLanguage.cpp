#include "ui/AppLanguage.h"

#include "ui/LocaleIdentifiers.h"

namespace wakeloft::AppLanguage {

LayoutDirection direction(const std::vector<std::string>& preferredLocalizations) {
  const std::string language = preferredLocalizations.empty() ? "en" : preferredLocalizations.front();
  return LocaleIdentifiers::isRightToLeft(language) ? LayoutDirection::rightToLeft : LayoutDirection::leftToRight;
}

std::string resolvedLocale(const std::vector<std::string>& preferredLocalizations, const std::string& base) {
  if (preferredLocalizations.empty()) return base;
  auto language = LocaleIdentifiers::languageOf(preferredLocalizations.front());
  if (language.language.empty()) return base;
  if (language.region.empty()) language.region = LocaleIdentifiers::languageOf(base).region;
  return LocaleIdentifiers::replacingLanguage(base, language);
}

}  // namespace wakeloft::AppLanguage
