// MenuBarIcon::image lives with the glyphs it composes, so that the status
// wording does not depend on the drawing.
#include <cmath>

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
// The badge overlaps the glyph by this much; the mug pair has more air on
// its right than the laptop has.
constexpr double vesselOverlap = 2;
constexpr double mugPairOverlap = 3;
constexpr double badgeRingWidth = 1;

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
  if (!showsTimerBadge || !(glyph.size.width > 0)) return glyph;

  const auto badge = SystemSymbol::clockFill(badgePointSize);
  const auto badgeSize = symbols.size(badge);
  if (!badgeSize || badgeSize->isEmpty()) return glyph;

  const double overlap = keepsLidClosedAwake ? mugPairOverlap : vesselOverlap;
  GlyphImage composite;
  composite.size = {std::round(glyph.size.width + badgeSize->width - overlap), statusItemHeight};

  const bool rightToLeft = layoutDirection == LayoutDirection::rightToLeft;
  const double glyphX = rightToLeft ? composite.size.width - glyph.size.width : 0;
  const double glyphY = std::round((statusItemHeight - glyph.size.height) / 2);
  // The badge sits on the glyph's baseline at its trailing end.
  const GlyphRect badgeFrame{rightToLeft ? 0 : composite.size.width - badgeSize->width, glyphY, badgeSize->width,
                             badgeSize->height};

  composite.parts = glyph.partsOffsetBy(glyphX, glyphY);
  // A clear ring around the badge keeps it apart from the glyph it overlaps.
  const double ring = 1 + 2 * badgeRingWidth / badgeSize->height;
  composite.parts.push_back({badge, badgeFrame.scaledAboutCentre(ring), GlyphImage::Part::Blend::erase});
  composite.parts.push_back({badge, badgeFrame, GlyphImage::Part::Blend::draw});
  return composite;
}

}  // namespace wakeloft
