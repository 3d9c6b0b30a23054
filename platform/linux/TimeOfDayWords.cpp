#include "base/TimeOfDayWords.h"

#include <unicode/datefmt.h>
#include <unicode/locid.h>
#include <unicode/timezone.h>

#include <cstdio>
#include <memory>

namespace wakeloft::TimeOfDayWords {

std::string shortTime(int minutesAfterMidnight, const std::string& locale) {
  constexpr int day = 24 * 60;
  const int minutes = ((minutesAfterMidnight % day) + day) % day;
  char fallback[8];
  std::snprintf(fallback, sizeof fallback, "%02d:%02d", minutes / 60, minutes % 60);

  std::unique_ptr<icu::DateFormat> formatter(
      icu::DateFormat::createTimeInstance(icu::DateFormat::kShort, icu::Locale(locale.c_str())));
  if (!formatter) return fallback;
  // The minutes after midnight of 1 January 1970 in GMT: no zone may shift them.
  formatter->adoptTimeZone(icu::TimeZone::createTimeZone("GMT"));
  icu::UnicodeString text;
  formatter->format(static_cast<UDate>(minutes) * 60 * 1000, text);
  std::string bytes;
  text.toUTF8String(bytes);
  return bytes;
}

}  // namespace wakeloft::TimeOfDayWords
