#pragma once

#include <string>
#include <string_view>
#include <variant>

#include "automation/AutomationError.h"
#include "session/AwakeDuration.h"

namespace wakeloft {

// A session length as addresses and the command write it: whole hours,
// minutes and seconds in that order, each at most once ("90m", "1h30m",
// "45s"), or bare seconds ("5400"). ASCII digits only, no sign, no spaces.
// From one second up to the longest preset, 8 hours.
namespace AutomationDuration {

inline constexpr double shortest = 1;
double longest();

std::variant<AwakeDuration, AutomationError> parse(std::string_view text);
// The inverse for whole seconds, zero units left out: 5400 is "1h30m".
std::string write(AwakeDuration duration);

}  // namespace AutomationDuration
}  // namespace wakeloft
