#pragma once

#include <cstddef>
#include <functional>

#include "glyph/GlyphImage.h"
#include "glyph/SymbolMetrics.h"

namespace wakeloft {

// The status glyph of the menu bar, the panel header and the About box:
// filled while awake mode is on, outlined while off; two mugs while the
// lid-closed mode is on.
struct AwakeGlyph {
  enum class Vessel {
    mug,        // one vessel standing on a laptop: awake mode
    doubleMug,  // two mugs: the lid-closed mode
  };

  Vessel vessel = Vessel::mug;
  bool isFilled = false;

  AwakeGlyph() = default;
  AwakeGlyph(Vessel ofVessel, bool filled) : vessel(ofVessel), isFilled(filled) {}

  // A template image about `pointSize` high. The single vessel is drawn
  // round(pointSize × 0.96) points high and as wide as its aspect asks; the
  // two mugs are the system's "mug" or "mug.fill" symbol at that point size,
  // one behind the other. Empty when the size or the symbol is missing.
  GlyphImage image(double pointSize, const SymbolMetrics& symbols) const;

  // The single vessel drawn to fill exactly this size.
  static GlyphImage vesselImage(GlyphSize size, bool filled);

  friend bool operator==(const AwakeGlyph&, const AwakeGlyph&) = default;
};

}  // namespace wakeloft

template <>
struct std::hash<wakeloft::AwakeGlyph> {
  std::size_t operator()(const wakeloft::AwakeGlyph& glyph) const noexcept {
    return static_cast<std::size_t>(glyph.vessel) * 2 + (glyph.isFilled ? 1 : 0);
  }
};
