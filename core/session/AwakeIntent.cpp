#include "session/AwakeIntent.h"

#include <cmath>

namespace wakeloft {

bool AwakeIntent::isUsable(Date date) {
  return std::isfinite(date.secondsSince1970) && date <= Date::distantFuture();
}

std::optional<Date> AwakeIntent::deadline(double seconds, Date now) {
  if (!std::isfinite(seconds)) return std::nullopt;
  const Date sum = now.adding(seconds);
  if (!isUsable(sum)) return std::nullopt;
  return sum;
}

}  // namespace wakeloft
