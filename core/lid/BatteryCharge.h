#pragma once

#include <algorithm>
#include <optional>

namespace wakeloft {

// The internal battery's charge as IOKit's power-source description gives
// it: a current and a maximum capacity, in units the source chooses.
struct BatteryCharge {
  // Percent of the maximum, rounded and kept within 0 to 100; absent when
  // either figure is missing or the maximum is not positive.
  static constexpr std::optional<int> percent(std::optional<long long> current, std::optional<long long> maximum) {
    if (!current || !maximum || *maximum <= 0 || *current < 0) return std::nullopt;
    const long long capped = std::min(*current, *maximum);
    return static_cast<int>((capped * 200 + *maximum) / (*maximum * 2));
  }
};

}  // namespace wakeloft
