#include "glyph/AwakeGlyph.h"

#include <cmath>

#include "glyph/LaptopGlyph.h"

namespace wakeloft {

namespace {

// The mug in front stands at the bottom left; the one behind is smaller and
// shows on the upper right, handle and all. The front mug is cut out of the
// one behind with a clear ring a point wide, so the outlines do not merge.
constexpr double backMugScale = 0.8;
constexpr double pairWidth = 1.48;  // in mug widths
constexpr double ringWidth = 1;

GlyphImage mugPair(double pointSize, bool filled, const SymbolMetrics& symbols) {
  const auto symbol = filled ? SystemSymbol::mugFill(pointSize) : SystemSymbol::mug(pointSize);
  const auto mug = symbols.size(symbol);
  if (!mug || mug->isEmpty()) return GlyphImage::empty();

  GlyphImage image;
  image.size = {std::ceil(mug->width * pairWidth), std::ceil(mug->height)};
  const GlyphRect front{0, 0, mug->width, mug->height};
  const GlyphRect back{image.size.width - mug->width * backMugScale, image.size.height - mug->height * backMugScale,
                       mug->width * backMugScale, mug->height * backMugScale};
  const double ring = 1 + 2 * ringWidth / mug->height;
  image.parts = {
      {symbol, back, GlyphImage::Part::Blend::draw},
      {SystemSymbol::mugFill(pointSize), front.scaledAboutCentre(ring), GlyphImage::Part::Blend::erase},
      {symbol, front, GlyphImage::Part::Blend::draw},
  };
  return image;
}

}  // namespace

GlyphImage AwakeGlyph::vesselImage(GlyphSize size, bool filled) {
  if (size.isEmpty()) return GlyphImage::empty();
  GlyphImage image;
  image.size = size;
  image.parts = {{GlyphImage::VesselOnLaptop{filled}, {0, 0, size.width, size.height}}};
  return image;
}

GlyphImage AwakeGlyph::image(double pointSize, const SymbolMetrics& symbols) const {
  if (!(pointSize > 0) || !std::isfinite(pointSize)) return GlyphImage::empty();
  if (vessel == Vessel::doubleMug) return mugPair(pointSize, isFilled, symbols);

  const double height = std::round(pointSize * 0.96);
  if (!(height > 0)) return GlyphImage::empty();
  return vesselImage({std::round(height * LaptopGlyph::aspect), height}, isFilled);
}

}  // namespace wakeloft
