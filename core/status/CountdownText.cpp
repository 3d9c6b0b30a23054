#include "status/CountdownText.h"

#include <algorithm>
#include <cmath>

#include "base/DurationWords.h"

namespace wakeloft::CountdownText {

std::string formatted(double remaining, const std::string& locale) {
  // NaN fails the comparison too. The cap keeps the conversion defined; no
  // deadline the controller accepts comes near it.
  const double floored = remaining > 0 ? std::min(std::floor(remaining), 9.0e15) : 0;
  const auto seconds = static_cast<long long>(floored);
  return seconds >= 3600 ? DurationWords::hoursMinutesSeconds(seconds, locale)
                         : DurationWords::minutesSeconds(seconds, locale);
}

}  // namespace wakeloft::CountdownText
