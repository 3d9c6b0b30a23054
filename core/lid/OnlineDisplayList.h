#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <functional>

namespace wakeloft {

// The online displays as CoreGraphics lists them, read for one question:
// is anything other than a built-in display attached?
struct OnlineDisplayList {
  using DisplayID = std::uint32_t;  // CGDirectDisplayID
  // Room asked for in the list call; displays beyond it are not looked at.
  static constexpr std::uint32_t capacity = 32;
  using IDs = std::array<DisplayID, capacity>;

  // `listed` is false when the list call failed: a display is then assumed,
  // so that no heat warning is shown on a guess. A count larger than the room
  // is cut to it. An empty list has no external display.
  static bool hasExternalDisplay(bool listed, const IDs& ids, std::uint32_t count,
                                 const std::function<bool(DisplayID)>& isBuiltin) {
    if (!listed) return true;
    const auto examined = ids.begin() + std::min(count, capacity);
    return std::any_of(ids.begin(), examined, [&](DisplayID id) { return !isBuiltin(id); });
  }
};

}  // namespace wakeloft
