#pragma once

#include <string>

namespace wakeloft {

// A time of day as the locale writes it in short form ("18:00", "6:00 PM",
// "١٨:٠٠"), from the platform's date formatter (Foundation on macOS, ICU
// elsewhere). The time is a wall-clock one, in no zone.
namespace TimeOfDayWords {

// `minutesAfterMidnight` below a day; anything else is taken modulo a day.
std::string shortTime(int minutesAfterMidnight, const std::string& locale);

}  // namespace TimeOfDayWords
}  // namespace wakeloft
