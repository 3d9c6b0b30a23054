#pragma once

#include <array>

namespace wakeloft {

// Why Deepwake would not even try to turn on.
enum class LidAwakeRefusal {
  // A configuration profile does not allow Deepwake on this Mac.
  forbiddenByOrganization,
  // The app runs from the read-only copy macOS makes of a quarantined
  // download: a helper registered from there would point at a path that
  // disappears. Only moving the app and opening it again clears this.
  translocated,
  // The heat warning has not been acknowledged yet.
  unacknowledged,
};

inline constexpr std::array<LidAwakeRefusal, 3> allLidAwakeRefusals{
    LidAwakeRefusal::forbiddenByOrganization, LidAwakeRefusal::translocated, LidAwakeRefusal::unacknowledged};

}  // namespace wakeloft
