#include "status/SpokenStatus.h"

#include <cmath>

namespace wakeloft {

SpokenStatus SpokenStatus::describing(bool isOn, std::optional<double> remaining) {
  if (!isOn) return off();
  if (!remaining) return on();
  // NaN and infinity are no time to speak of: they land with the last minute.
  if (std::isfinite(*remaining) && *remaining >= 60) return timeLeft({std::floor(*remaining / 60) * 60});
  return lessThanAMinuteLeft();
}

}  // namespace wakeloft
