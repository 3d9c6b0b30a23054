#pragma once

#include <array>

namespace wakeloft {

// Why Deepwake would not even try to turn on.
enum class LidAwakeRefusal {
  // The heat warning has not been acknowledged yet.
  unacknowledged,
};

inline constexpr std::array<LidAwakeRefusal, 1> allLidAwakeRefusals{LidAwakeRefusal::unacknowledged};

}  // namespace wakeloft
