#include "BundleTexts.h"

#include <optional>
#include <string>

#import "NSStringText.h"

namespace wakeloft::BundleTexts {

const TextLookup& lookup() {
  static const TextLookup bundleLookup = [](TextKey key) -> std::optional<std::string> {
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
