#include "glyph/GlyphImage.h"

#include "glyph/LaptopGlyph.h"

namespace wakeloft {

std::optional<GlyphDrawing> GlyphImage::Part::drawing(double deviceScale) const {
  const auto* vessel = std::get_if<VesselOnLaptop>(&content);
  if (!vessel) return std::nullopt;
  const auto detail = LaptopGlyph::detail(frame.height * deviceScale);
  return LaptopGlyph::draw(vessel->filled, frame, detail, deviceScale);
}

std::vector<GlyphImage::Part> GlyphImage::partsOffsetBy(double dx, double dy) const {
  auto moved = parts;
  for (auto& part : moved) part.frame = part.frame.offsetBy(dx, dy);
  return moved;
}

}  // namespace wakeloft
