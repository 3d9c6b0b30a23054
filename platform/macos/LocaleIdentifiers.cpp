#include "ui/LocaleIdentifiers.h"

#include <CoreFoundation/CoreFoundation.h>

#include "CFOwned.h"

namespace wakeloft::LocaleIdentifiers {

namespace {

// The parts of an identifier in any of the forms CFLocale reads, after
// making it canonical ("fr-CA" becomes "fr_CA").
CFOwned<CFDictionaryRef> componentsOf(const std::string& identifier) {
  const auto text = makeCFString(identifier);
  if (!text) return {};
  CFOwned<CFStringRef> canonical(CFLocaleCreateCanonicalLocaleIdentifierFromString(kCFAllocatorDefault, text.get()));
  if (!canonical) return {};
  return CFOwned<CFDictionaryRef>(CFLocaleCreateComponentsFromLocaleIdentifier(kCFAllocatorDefault, canonical.get()));
}

std::string stringValue(CFDictionaryRef components, CFStringRef key) {
  const auto value = static_cast<CFTypeRef>(CFDictionaryGetValue(components, key));
  if (!value || CFGetTypeID(value) != CFStringGetTypeID()) return {};
  return utf8(static_cast<CFStringRef>(value));
}

void setOrRemove(CFMutableDictionaryRef components, CFStringRef key, const std::string& value) {
  if (value.empty()) {
    CFDictionaryRemoveValue(components, key);
    return;
  }
  if (const auto text = makeCFString(value)) CFDictionarySetValue(components, key, text.get());
}

}  // namespace

Language languageOf(const std::string& identifier) {
  const auto components = componentsOf(identifier);
  if (!components) return {};
  Language language{stringValue(components.get(), kCFLocaleLanguageCode),
                    stringValue(components.get(), kCFLocaleScriptCode),
                    stringValue(components.get(), kCFLocaleCountryCode)};
  if (language.language.empty()) return {};
  return language;
}

std::string replacingLanguage(const std::string& base, const Language& language) {
  const auto components = componentsOf(base);
  CFOwned<CFMutableDictionaryRef> changed(
      components ? CFDictionaryCreateMutableCopy(kCFAllocatorDefault, 0, components.get())
                 : CFDictionaryCreateMutable(kCFAllocatorDefault, 0, &kCFTypeDictionaryKeyCallBacks,
                                             &kCFTypeDictionaryValueCallBacks));
  if (!changed) return base;
  setOrRemove(changed.get(), kCFLocaleLanguageCode, language.language);
  setOrRemove(changed.get(), kCFLocaleScriptCode, language.script);
  setOrRemove(changed.get(), kCFLocaleCountryCode, language.region);
  CFOwned<CFStringRef> identifier(CFLocaleCreateLocaleIdentifierFromComponents(kCFAllocatorDefault, changed.get()));
  return identifier ? utf8(identifier.get()) : base;
}

bool isRightToLeft(const std::string& languageIdentifier) {
  const auto language = languageOf(languageIdentifier).language;
  const auto code = makeCFString(language);
  if (language.empty() || !code) return false;
  return CFLocaleGetLanguageCharacterDirection(code.get()) == kCFLocaleLanguageDirectionRightToLeft;
}

}  // namespace wakeloft::LocaleIdentifiers
