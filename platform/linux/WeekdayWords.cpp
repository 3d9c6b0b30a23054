#include "ui/WeekdayWords.h"

#include <unicode/calendar.h>
#include <unicode/dtfmtsym.h>
#include <unicode/locid.h>

#include <memory>

namespace wakeloft::WeekdayWords {

namespace {

// ICU counts Sunday as 1; the schedule counts Monday as 0.
int icuDay(Schedule::Weekday day) { return (static_cast<int>(day) + 1) % 7 + UCAL_SUNDAY; }

}  // namespace

Schedule::Weekday firstWeekday(const std::string& locale) {
  UErrorCode status = U_ZERO_ERROR;
  std::unique_ptr<icu::Calendar> calendar(icu::Calendar::createInstance(icu::Locale(locale.c_str()), status));
  if (U_FAILURE(status) || !calendar) return Schedule::Weekday::monday;
  const int first = calendar->getFirstDayOfWeek(status);
  if (U_FAILURE(status) || first < UCAL_SUNDAY || first > UCAL_SATURDAY) return Schedule::Weekday::monday;
  return static_cast<Schedule::Weekday>((first - UCAL_SUNDAY + 6) % 7);
}

std::string name(Schedule::Weekday day, const std::string& locale, Style style) {
  UErrorCode status = U_ZERO_ERROR;
  const icu::DateFormatSymbols symbols(icu::Locale(locale.c_str()), status);
  if (U_FAILURE(status)) return {};
  int32_t count = 0;
  const icu::UnicodeString* names =
      symbols.getWeekdays(count, icu::DateFormatSymbols::STANDALONE,
                          style == Style::full ? icu::DateFormatSymbols::WIDE : icu::DateFormatSymbols::ABBREVIATED);
  const int index = icuDay(day);
  if (!names || index >= count) return {};
  std::string bytes;
  names[index].toUTF8String(bytes);
  return bytes;
}

}  // namespace wakeloft::WeekdayWords
