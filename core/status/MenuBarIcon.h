#pragma once

#include <optional>

#include "base/Date.h"

namespace wakeloft {

struct AwakeGlyph;
struct GlyphImage;
class SymbolMetrics;
enum class LayoutDirection;

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

  // The drawing side, defined by the glyph library (glyph/MenuBarIconImage.cpp),
  // which callers of these link. The glyph: two mugs in Deepwake, the single
  // vessel otherwise, filled while on. The image: the status item's glyph,
  // with the timer badge on the side that the layout direction puts after it.
  AwakeGlyph glyph() const;
  GlyphImage image(LayoutDirection layoutDirection, const SymbolMetrics& symbols) const;

  friend bool operator==(const MenuBarIcon&, const MenuBarIcon&) = default;
};

}  // namespace wakeloft
