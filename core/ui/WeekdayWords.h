#pragma once

#include <string>

#include "automatic/Schedule.h"

namespace wakeloft {

// Weekdays as a locale names and orders them, from the platform's calendar
// data (ICU on Linux, Core Foundation's CFCalendar and CFDateFormatter on
// macOS). Locales are identifiers such as "en_US" or "ar".
namespace WeekdayWords {

// The day its weeks begin on where the locale is used: Sunday in the United
// States, Monday in Germany, Saturday in Egypt. Monday when the platform
// cannot tell.
Schedule::Weekday firstWeekday(const std::string& locale);

// How a day is named. Short names fit a row of toggles ("Mon", "Mo");
// VoiceOver reads the full one.
enum class Style { abbreviated, full };

// The name standing alone, as a label rather than inside a sentence; empty
// when the platform has none.
std::string name(Schedule::Weekday day, const std::string& locale, Style style);

}  // namespace WeekdayWords
}  // namespace wakeloft
