#pragma once

#include <optional>

#include "base/Date.h"

namespace wakeloft {

struct AwakeGlyph;
struct GlyphImage;
class SymbolMetrics;
enum class LayoutDirection;

// The state the menu-bar glyph shows: the vessel filled or empty, a clock
// badge while a timer runs, the two-vessel glyph while Deepwake holds the
// Mac awake with the lid closed, and a dot while a software update waits.
struct MenuBarIcon {
  // What the status item is called for VoiceOver; the app puts each case
  // into words.
  enum class SpokenLabel { off, on, onWithTimerRunning, onWithLidClosed, onWithLidClosedAndTimerRunning };

  bool isOn = false;
  bool showsTimerBadge = false;
  bool keepsLidClosedAwake = false;
  bool showsUpdateDot = false;

  // An icon that is off shows nothing of a session, whatever deadline or lid
  // flag is left over; a waiting update shows either way.
  static MenuBarIcon current(bool isOn, std::optional<Date> activeUntil, bool lidClosed, bool updateWaiting = false) {
    MenuBarIcon icon = isOn ? MenuBarIcon{true, activeUntil.has_value(), lidClosed} : MenuBarIcon{};
    icon.showsUpdateDot = updateWaiting;
    return icon;
  }

  SpokenLabel spokenLabel() const;

  // The drawing side, defined by the glyph library (glyph/MenuBarIconImage.cpp),
  // which callers of these link. The glyph: two mugs in Deepwake, the single
  // vessel otherwise, filled while on. The image: the status item's glyph,
  // with the timer badge at the bottom of the side that the layout direction
  // puts after it and the update dot at the top of that side.
  AwakeGlyph glyph() const;
  GlyphImage image(LayoutDirection layoutDirection, const SymbolMetrics& symbols) const;

  friend bool operator==(const MenuBarIcon&, const MenuBarIcon&) = default;
};

}  // namespace wakeloft
