#include "BundleTexts.h"

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

#import "NSStringText.h"
#include "CFPropertyListParser.h"
#include "ui/StringsDictFile.h"

namespace wakeloft::BundleTexts {

namespace {

// A table's counted texts in the user's language, from its .stringsdict;
// none when the bundle has no such file or it does not read as one.
StringsDictFile countedTexts(TextTable table) {
  const auto none = *StringsDictFile::from(PropertyList::Dictionary{});
  NSURL* url = [NSBundle.mainBundle URLForResource:string(tableName(table)) withExtension:@"stringsdict"];
  NSData* data = url ? [NSData dataWithContentsOfURL:url] : nil;
  if (!data) return none;
  try {
    const std::span<const std::uint8_t> bytes(static_cast<const std::uint8_t*>(data.bytes), data.length);
    const auto list = CFPropertyListParser().parse(bytes);
    return StringsDictFile::from(list).value_or(none);
  } catch (const PropertyListError&) {
    return none;
  }
}

const StringsDictFile& counted(TextTable table) {
  static const std::array<StringsDictFile, 2> files{countedTexts(TextTable::standard),
                                                     countedTexts(TextTable::deepwake)};
  return files[table == TextTable::deepwake ? 1 : 0];
}

}  // namespace

const TextLookup& lookup() {
  static const TextLookup bundleLookup = [](TextKey key) -> std::optional<std::string> {
    if (const auto form = key.pluralForm()) {
      if (const auto* words = counted(key.table()).find(key.key(), *form)) return *words;
      return std::nullopt;
    }
    NSString* table = string(tableName(key.table()));
    NSString* found = [NSBundle.mainBundle localizedStringForKey:string(key.key()) value:nil table:table];
    // Without a translation the bundle answers with the key, which is the
    // English text; LocalizedText does the same for a translation it cannot use.
    const char* bytes = found.UTF8String;
    if (!bytes) return std::nullopt;
    return std::string(bytes);
  };
  return bundleLookup;
}

NSString* string(const LocalizedText& text) { return string(text.resolved(lookup())); }

NSString* string(const LocalizedSentences& sentences) { return string(sentences.resolved(lookup())); }

NSString* string(std::string_view utf8) { return nsString(utf8); }

}  // namespace wakeloft::BundleTexts
