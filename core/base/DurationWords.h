#pragma once

#include <string>

namespace wakeloft {

// Durations in the words of a locale, from the platform's formatters
// (Foundation on macOS, ICU elsewhere). Locales are identifiers such as
// "en_US" or "de".
namespace DurationWords {

// How units are named. Abbreviations are for the eye ("1h 5m"); VoiceOver
// needs the full words ("1 hour, 5 minutes"), or it reads "m" as metres and
// Arabic "س" as a letter's name.
enum class UnitsStyle { abbreviated, full };

// Hours and minutes only, zero units left out.
std::string hoursAndMinutes(long long wholeMinutes, const std::string& locale, UnitsStyle style);

// The positional pattern of a countdown: "h:mm:ss" or "m:ss" as the locale
// writes them.
std::string hoursMinutesSeconds(long long wholeSeconds, const std::string& locale);
std::string minutesSeconds(long long wholeSeconds, const std::string& locale);

}  // namespace DurationWords
}  // namespace wakeloft
