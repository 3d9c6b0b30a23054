#include "session/AwakeDuration.h"

#include <cmath>

#include "base/DurationWords.h"

namespace wakeloft {

const std::array<AwakeDuration, 3> AwakeDuration::presets = {{{1800}, {3600}, {7200}}};
const AwakeDuration AwakeDuration::lidClosedDefault = {7200};

std::string AwakeDuration::label(const std::string& locale) const {
  const double minutes = std::isfinite(seconds) ? std::floor(std::abs(seconds) / 60) : 0;
  const auto whole = static_cast<long long>(std::min(minutes, 9.0e15));
  return DurationWords::hoursAndMinutes(seconds < 0 ? -whole : whole, locale);
}

}  // namespace wakeloft
