#pragma once

#include <array>

namespace wakeloft {

// Why Deepwake would not even try to turn on.
enum class LidAwakeRefusal {
  // The app runs from the read-only copy macOS makes of a quarantined
  // download: a helper registered from there would point at a path that
  // disappears. Only moving the app and opening it again clears this.
  translocated,
  // The heat warning has not been acknowledged yet.
  unacknowledged,
};

inline constexpr std::array<LidAwakeRefusal, 2> allLidAwakeRefusals{LidAwakeRefusal::translocated,
                                                                    LidAwakeRefusal::unacknowledged};

}  // namespace wakeloft
