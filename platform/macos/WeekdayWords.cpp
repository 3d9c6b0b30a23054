#include "ui/WeekdayWords.h"

#include <CoreFoundation/CoreFoundation.h>

#include "CFOwned.h"

namespace wakeloft::WeekdayWords {

namespace {

CFOwned<CFLocaleRef> localeNamed(const std::string& identifier) {
  const auto text = makeCFString(identifier);
  if (!text) return {};
  return CFOwned<CFLocaleRef>(CFLocaleCreate(kCFAllocatorDefault, text.get()));
}

}  // namespace

Schedule::Weekday firstWeekday(const std::string& locale) {
  const auto cfLocale = localeNamed(locale);
  CFOwned<CFCalendarRef> calendar(CFCalendarCreateWithIdentifier(kCFAllocatorDefault, kCFGregorianCalendar));
  if (!cfLocale || !calendar) return Schedule::Weekday::monday;
  CFCalendarSetLocale(calendar.get(), cfLocale.get());
  // 1 is Sunday.
  const CFIndex first = CFCalendarGetFirstWeekday(calendar.get());
  if (first < 1 || first > 7) return Schedule::Weekday::monday;
  return static_cast<Schedule::Weekday>((first + 5) % 7);
}

std::string name(Schedule::Weekday day, const std::string& locale, Style style) {
  const auto cfLocale = localeNamed(locale);
  if (!cfLocale) return {};
  CFOwned<CFDateFormatterRef> formatter(
      CFDateFormatterCreate(kCFAllocatorDefault, cfLocale.get(), kCFDateFormatterNoStyle, kCFDateFormatterNoStyle));
  if (!formatter) return {};
  CFOwned<CFTypeRef> names(CFDateFormatterCopyProperty(
      formatter.get(), style == Style::full ? kCFDateFormatterStandaloneWeekdaySymbols
                                            : kCFDateFormatterShortStandaloneWeekdaySymbols));
  if (!names || CFGetTypeID(names.get()) != CFArrayGetTypeID()) return {};
  const auto array = static_cast<CFArrayRef>(names.get());
  // Sunday first.
  const CFIndex index = (static_cast<CFIndex>(day) + 1) % 7;
  if (CFArrayGetCount(array) != 7) return {};
  const auto value = static_cast<CFTypeRef>(CFArrayGetValueAtIndex(array, index));
  if (!value || CFGetTypeID(value) != CFStringGetTypeID()) return {};
  return utf8(static_cast<CFStringRef>(value));
}

}  // namespace wakeloft::WeekdayWords
