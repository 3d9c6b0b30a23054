#include "session/AwakeDuration.h"

#include <algorithm>
#include <cmath>

#include "base/DurationWords.h"

namespace wakeloft {

const std::array<AwakeDuration, 3> AwakeDuration::presets = {{{1800}, {3600}, {7200}}};
const AwakeDuration AwakeDuration::lidClosedDefault = {7200};

namespace {

std::string words(double seconds, const std::string& locale, DurationWords::UnitsStyle style) {
  const double minutes = std::isfinite(seconds) ? std::floor(std::abs(seconds) / 60) : 0;
  const auto whole = static_cast<long long>(std::min(minutes, 9.0e15));
  return DurationWords::hoursAndMinutes(seconds < 0 ? -whole : whole, locale, style);
}

}  // namespace

std::string AwakeDuration::label(const std::string& locale) const {
  return words(seconds, locale, DurationWords::UnitsStyle::abbreviated);
}

std::string AwakeDuration::spokenLabel(const std::string& locale) const {
  return words(seconds, locale, DurationWords::UnitsStyle::full);
}

}  // namespace wakeloft
