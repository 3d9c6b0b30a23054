#include "status/QuitConfirmation.h"

#include <cmath>

namespace wakeloft {

QuitConfirmation QuitConfirmation::asked(bool isAwakeOn, bool keepsLidClosedAwake, std::optional<double> remaining,
                                         bool comesBack) {
  std::optional<double> told;
  if (remaining && std::isfinite(*remaining)) {
    const double minutes = std::floor(*remaining / 60) * 60;
    if (minutes >= 60) told = minutes;
  }
  if (keepsLidClosedAwake) return deepwake(told, comesBack);
  if (!isAwakeOn) return quitNow();
  return awakeMode(told, comesBack);
}

}  // namespace wakeloft
