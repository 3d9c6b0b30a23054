#include "status/SpokenStatus.h"

#include <cmath>

namespace wakeloft {

SpokenStatus SpokenStatus::describing(bool isOn, std::optional<double> remaining) {
  if (!isOn) return off();
  if (!remaining) return on();
  // NaN fails the comparison and lands with the last minute.
  if (*remaining >= 60) return timeLeft({std::floor(*remaining / 60) * 60});
  return lessThanAMinuteLeft();
}

}  // namespace wakeloft
