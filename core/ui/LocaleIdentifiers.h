#pragma once

#include <string>

namespace wakeloft {

// The few facts about locale identifiers that need the platform's locale
// data. Defined by the platform layer: ICU on Linux, Core Foundation's
// CFLocale functions on macOS (the C side of Foundation's Locale,
// Locale.Components and Locale.Language).
namespace LocaleIdentifiers {

// A language as an identifier names it; empty parts are not given.
struct Language {
  std::string language;
  std::string script;
  std::string region;

  friend bool operator==(const Language&, const Language&) = default;
};

// Of a BCP 47 tag ("fr-CA", "zh-Hans") or the platform's own form ("de_CH",
// "en_US@calendar=japanese"). All parts empty for something that is neither.
Language languageOf(const std::string& identifier);

// `base` with its language, script and region replaced by `language`'s;
// everything else it carries (a variant, keywords such as the calendar) is
// kept. In the platform's own form.
std::string replacingLanguage(const std::string& base, const Language& language);

// Whether the language writes its characters from right to left (Foundation:
// Locale.Language(identifier:).characterDirection; Core Foundation:
// CFLocaleGetLanguageCharacterDirection).
bool isRightToLeft(const std::string& languageIdentifier);

}  // namespace LocaleIdentifiers
}  // namespace wakeloft
