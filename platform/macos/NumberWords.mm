#include "base/NumberWords.h"

#import <Foundation/Foundation.h>

namespace wakeloft::NumberWords {

namespace {

NSLocale* localeNamed(const std::string& locale) {
  NSString* identifier = [[NSString alloc] initWithBytes:locale.data()
                                                  length:locale.size()
                                                encoding:NSUTF8StringEncoding];
  return [NSLocale localeWithLocaleIdentifier:identifier != nil ? identifier : @""];
}

std::string text(NSString* string, const std::string& fallback) {
  const char* utf8 = string.UTF8String;
  return utf8 ? std::string(utf8) : fallback;
}

std::string formatted(NSNumberFormatterStyle style, NSNumber* number, const std::string& locale,
                      const std::string& fallback) {
  @autoreleasepool {
    NSNumberFormatter* formatter = [[NSNumberFormatter alloc] init];
    formatter.locale = localeNamed(locale);
    formatter.numberStyle = style;
    formatter.usesGroupingSeparator = NO;
    return text([formatter stringFromNumber:number], fallback);
  }
}

}  // namespace

std::string integer(std::int64_t value, const std::string& locale) {
  return formatted(NSNumberFormatterDecimalStyle, @(static_cast<long long>(value)), locale, std::to_string(value));
}

std::string percent(std::int64_t wholePercent, const std::string& locale) {
  return formatted(NSNumberFormatterPercentStyle, @(static_cast<double>(wholePercent) / 100), locale,
                   std::to_string(wholePercent) + "%");
}

// The app's PluralCategory.stringsdict answers each count with its
// category's name, chosen by Foundation's rules for the bundle's language.
PluralCategory pluralCategory(std::int64_t count, const std::string& locale) {
  @autoreleasepool {
    NSString* format = [NSBundle.mainBundle localizedStringForKey:@"%lld" value:@"other" table:@"PluralCategory"];
    NSString* name = [[NSString alloc] initWithFormat:format locale:localeNamed(locale), static_cast<long long>(count)];
    return pluralCategoryNamed(text(name, "other")).value_or(PluralCategory::other);
  }
}

}  // namespace wakeloft::NumberWords
