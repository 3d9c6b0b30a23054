// MenuBarIcon::image lives with the glyphs it composes, so that the status
// wording does not depend on the drawing.
#include <algorithm>
#include <cmath>
#include <optional>

#include "glyph/AwakeGlyph.h"
#include "glyph/GlyphImage.h"
#include "glyph/LaptopGlyph.h"
#include "glyph/LayoutDirection.h"
#include "glyph/SymbolMetrics.h"
#include "status/MenuBarIcon.h"

namespace wakeloft {

namespace {

constexpr double statusItemHeight = 18;
constexpr double vesselHeight = 14;
constexpr double mugPairPointSize = 15;
constexpr double badgePointSize = 8;
// Small beside the badge: it only has to be noticed.
constexpr double dotPointSize = 5;
// The marks overlap the glyph by this much; the mug pair has more air on
// its right than the laptop has.
constexpr double vesselOverlap = 2;
constexpr double mugPairOverlap = 3;
constexpr double markRingWidth = 1;

// A mark's size as the platform draws it; nothing when it has no such symbol.
std::optional<GlyphSize> markSize(bool shown, const SystemSymbol& symbol, const SymbolMetrics& symbols) {
  if (!shown) return std::nullopt;
  const auto size = symbols.size(symbol);
  if (!size || size->isEmpty()) return std::nullopt;
  return size;
}

}  // namespace

AwakeGlyph MenuBarIcon::glyph() const {
  return {keepsLidClosedAwake ? AwakeGlyph::Vessel::doubleMug : AwakeGlyph::Vessel::mug, isOn};
}

GlyphImage MenuBarIcon::image(LayoutDirection layoutDirection, const SymbolMetrics& symbols) const {
  const AwakeGlyph shown = this->glyph();
  const GlyphImage glyph =
      shown.vessel == AwakeGlyph::Vessel::doubleMug
          ? shown.image(mugPairPointSize, symbols)
          : AwakeGlyph::vesselImage({std::round(LaptopGlyph::aspect * vesselHeight), vesselHeight}, shown.isFilled);
  if (!(glyph.size.width > 0)) return glyph;

  const auto badge = SystemSymbol::clockFill(badgePointSize);
  const auto dot = SystemSymbol::circleFill(dotPointSize);
  const auto badgeSize = markSize(showsTimerBadge, badge, symbols);
  const auto dotSize = markSize(showsUpdateDot, dot, symbols);
  if (!badgeSize && !dotSize) return glyph;

  const double overlap = keepsLidClosedAwake ? mugPairOverlap : vesselOverlap;
  const double marksWidth = std::max(badgeSize ? badgeSize->width : 0, dotSize ? dotSize->width : 0);
  GlyphImage composite;
  composite.size = {std::round(glyph.size.width + marksWidth - overlap), statusItemHeight};

  const bool rightToLeft = layoutDirection == LayoutDirection::rightToLeft;
  const double glyphX = rightToLeft ? composite.size.width - glyph.size.width : 0;
  const double glyphY = std::round((statusItemHeight - glyph.size.height) / 2);
  composite.parts = glyph.partsOffsetBy(glyphX, glyphY);

  // Each mark sits at the glyph's trailing end, a clear ring around it
  // keeping it apart from the glyph it overlaps.
  const auto addMark = [&](const SystemSymbol& symbol, GlyphSize size, double y) {
    const GlyphRect frame{rightToLeft ? 0 : composite.size.width - size.width, y, size.width, size.height};
    const double ring = 1 + 2 * markRingWidth / size.height;
    composite.parts.push_back({symbol, frame.scaledAboutCentre(ring), GlyphImage::Part::Blend::erase});
    composite.parts.push_back({symbol, frame, GlyphImage::Part::Blend::draw});
  };
  // The badge on the glyph's baseline, the dot level with its top.
  if (badgeSize) addMark(badge, *badgeSize, glyphY);
  if (dotSize) addMark(dot, *dotSize, glyphY + glyph.size.height - dotSize->height);
  return composite;
}

}  // namespace wakeloft
