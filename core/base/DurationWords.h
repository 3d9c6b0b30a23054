#pragma once

#include <string>

namespace wakeloft {

// Durations in the words of a locale, from the platform's formatters
// (Foundation on macOS, ICU elsewhere). Locales are identifiers such as
// "en_US" or "de".
namespace DurationWords {

// Hours and minutes only, abbreviated units, zero units left out.
std::string hoursAndMinutes(long long wholeMinutes, const std::string& locale);

// The positional pattern of a countdown: "h:mm:ss" or "m:ss" as the locale
// writes them.
std::string hoursMinutesSeconds(long long wholeSeconds, const std::string& locale);
std::string minutesSeconds(long long wholeSeconds, const std::string& locale);

}  // namespace DurationWords
}  // namespace wakeloft
