#include "automation/AutomationDuration.h"

#include <cmath>
#include <cstdint>

#include "prefs/PresetDurations.h"

namespace wakeloft::AutomationDuration {

namespace {

constexpr std::string_view example = "such as 90m, 1h30m, 45s or 5400";
// More digits than this is past any limit, and keeps the sums exact.
constexpr std::size_t mostDigits = 9;

AutomationError notADuration(std::string_view text) {
  return {"\"" + std::string(text) + "\" is not a duration " + std::string(example)};
}

bool isDigit(char c) { return c >= '0' && c <= '9'; }

}  // namespace

double longest() { return PresetDurations::candidates.back().seconds; }

std::variant<AwakeDuration, AutomationError> parse(std::string_view text) {
  if (text.empty()) return AutomationError{"a duration is empty; give one " + std::string(example)};
  if (text.front() == '-') return AutomationError{"a duration cannot be negative: \"" + std::string(text) + "\""};

  std::uint64_t total = 0;
  // Each unit after the one before: h, then m, then s.
  constexpr std::string_view units = "hms";
  constexpr std::uint64_t unitSeconds[] = {3600, 60, 1};
  std::size_t nextUnit = 0;
  for (std::size_t i = 0; i < text.size();) {
    std::size_t digits = 0;
    std::uint64_t number = 0;
    for (; i < text.size() && isDigit(text[i]); ++i, ++digits) {
      if (digits == mostDigits) return AutomationError{"the duration \"" + std::string(text) + "\" is far too long"};
      number = number * 10 + static_cast<std::uint64_t>(text[i] - '0');
    }
    if (digits == 0) return notADuration(text);
    if (i == text.size()) {
      // Bare seconds stand alone; a number after a unit needs its own.
      if (nextUnit != 0) return notADuration(text);
      total = number;
      break;
    }
    const auto unit = units.find(text[i], nextUnit);
    if (unit == std::string_view::npos) return notADuration(text);
    total += number * unitSeconds[unit];
    nextUnit = unit + 1;
    ++i;
  }
  const auto seconds = static_cast<double>(total);
  if (seconds < shortest) return AutomationError{"a duration must be longer than zero: \"" + std::string(text) + "\""};
  if (seconds > longest()) {
    return AutomationError{"the duration \"" + std::string(text) + "\" is longer than 8h, the longest Wakeloft offers"};
  }
  return AwakeDuration{seconds};
}

std::string write(AwakeDuration duration) {
  const auto whole = static_cast<long long>(std::isfinite(duration.seconds) ? std::floor(duration.seconds) : 0);
  const long long hours = whole / 3600, minutes = whole % 3600 / 60, seconds = whole % 60;
  std::string text;
  if (hours) text += std::to_string(hours) + "h";
  if (minutes) text += std::to_string(minutes) + "m";
  if (seconds || text.empty()) text += std::to_string(seconds) + "s";
  return text;
}

}  // namespace wakeloft::AutomationDuration
