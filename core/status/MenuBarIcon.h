#pragma once

#include <optional>

#include "base/Date.h"

namespace wakeloft {

// The state the menu-bar glyph shows: the vessel filled or empty, a clock
// badge while a timer runs, and the two-vessel glyph while Deepwake holds
// the Mac awake with the lid closed.
struct MenuBarIcon {
  // What the status item is called for VoiceOver; the app puts each case
  // into words.
  enum class SpokenLabel { off, on, onWithTimerRunning, onWithLidClosed, onWithLidClosedAndTimerRunning };

  bool isOn = false;
  bool showsTimerBadge = false;
  bool keepsLidClosedAwake = false;

  // An icon that is off shows nothing else, whatever deadline or lid flag is
  // left over.
  static MenuBarIcon current(bool isOn, std::optional<Date> activeUntil, bool lidClosed) {
    if (!isOn) return {};
    return {true, activeUntil.has_value(), lidClosed};
  }

  SpokenLabel spokenLabel() const;

  friend bool operator==(const MenuBarIcon&, const MenuBarIcon&) = default;
};

}  // namespace wakeloft
