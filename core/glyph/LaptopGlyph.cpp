#include "glyph/LaptopGlyph.h"

#include <cmath>

namespace wakeloft {

namespace {

// Heights above the ink's bottom, in units.
constexpr double laptopHeight = 0.4;
constexpr double topLine = LaptopGlyph::inkHeight;

// The laptop's slabs, as fractions of the laptop's own height scale: the
// filled laptop at full detail is a base and a lid with a thin seam between.
struct Slab {
  double from;
  double to;
  double taper;  // how far each side leans in from bottom to top
  double inset;  // how far both sides start in from the laptop's edges
  bool roundBottom;
  bool roundTop;
};
constexpr Slab wholeLaptop{0, laptopHeight, 0, 0, true, true};
constexpr Slab laptopBase{0, 0.204, 0, 0, true, false};
constexpr Slab laptopLid{0.24, laptopHeight, 0.045, 0.045, false, true};

// Fine strokes are 0.09 of the laptop high, small details 0.4 of it.
constexpr double fineStroke = laptopHeight * 0.09;
constexpr double smallDetail = laptopHeight * 0.4;
// The hollow inside an outlined laptop.
constexpr double innerSpacing = laptopHeight - 2 * LaptopGlyph::strokeWidth;

constexpr double laptopRadius = 0.07;
constexpr double vesselLeft = 0.64;
constexpr double vesselBottomRadius = 0.22;
constexpr double vesselTopRadius = 0.05;

// Pixel counts, so that comparisons on the grid are exact.
double pixels(double points, double scale) { return std::round(points * scale); }

}  // namespace

LaptopGlyph::Detail LaptopGlyph::detail(double heightInPixels) {
  const double h = heightInPixels;
  if (!(h >= 8)) return Detail::blunt;  // also NaN
  if (h * fineStroke / boxHeight < 0.6) return Detail::plain;
  if (h * smallDetail / boxHeight < 2.0) return Detail::plain;
  return Detail::full;
}

double LaptopGlyph::Placement::footY(double unit, double bottom, double gap, std::optional<double> deviceScale) {
  const double foot = bottom + (gap + halfStroke) * unit;
  if (!deviceScale || !(*deviceScale > 0) || !std::isfinite(*deviceScale)) return foot;
  const double scale = *deviceScale;

  const double rounded = pixels(foot, scale);
  const double lineA = pixels(bottom + (laptopHeight + halfStroke) * unit, scale);
  const double lineB = pixels(bottom + halfStroke * unit, scale);
  const double lineC = pixels(bottom + (topLine + halfStroke) * unit, scale);
  const double lowest = std::max(lineA, lineB + 1) + 1;
  if (rounded < lowest && lowest <= lineC - 1) return lowest / scale;
  return rounded / scale;
}

LaptopGlyph::Layout LaptopGlyph::layout(GlyphRect in, double deviceScale) {
  Layout layout;
  if (in.size().isEmpty() || !std::isfinite(in.width) || !std::isfinite(in.height)) return layout;
  // Rounding the width may leave the box a little narrower than its aspect
  // asks; the margins beside the ink take that up, so only the ink has to fit.
  const double unit = std::min(in.height / boxHeight, in.width / (boxWidth - 2 * strokeWidth));
  if (!(unit > 0) || !std::isfinite(unit)) return layout;
  layout.unit = unit;
  layout.origin = {in.x + (in.width - boxWidth * unit) / 2, in.y + (in.height - boxHeight * unit) / 2};

  const double bottom = layout.origin.y;
  const bool snaps = deviceScale > 0 && std::isfinite(deviceScale);
  const auto line = [&](double units) {
    const double y = bottom + (units + halfStroke) * unit;
    return snaps ? pixels(y, deviceScale) / deviceScale : y;
  };
  layout.laptopBottom = line(0);
  layout.laptopTop = line(laptopHeight);
  layout.topY = line(topLine);
  layout.footY = Placement::footY(unit, bottom, vesselGap, snaps ? std::optional(deviceScale) : std::nullopt);
  layout.innerStrokeFits = snaps ? innerSpacing * unit * deviceScale >= 2.5 : true;
  return layout;
}

GlyphDrawing LaptopGlyph::draw(bool filled, GlyphRect in, Detail detail, double deviceScale) {
  const Layout lines = layout(in, deviceScale);
  if (lines.unit <= 0) return {};
  GlyphDrawing drawing(lines.unit, lines.origin);

  // Without the handle the ink is narrower; it stays centred in the box.
  const double offset = (boxWidth - inkWidth(detail)) / 2;
  const double left = offset + strokeWidth;
  const double right = offset + inkWidth(detail) - strokeWidth;
  const double laptopBottom = drawing.toUnitsY(lines.laptopBottom);
  const double laptopTop = drawing.toUnitsY(lines.laptopTop);
  // Snapping may stretch or squeeze the laptop a little; slabs follow it.
  const double slabScale = (laptopTop - laptopBottom) / laptopHeight;

  const auto fillSlab = [&](const Slab& slab) {
    const double from = laptopBottom + slab.from * slabScale;
    const double to = laptopBottom + slab.to * slabScale;
    if (!(to > from)) return;
    drawing.roundedRect({left + slab.inset, from, right - left - 2 * slab.inset, to - from},
                        slab.roundBottom ? laptopRadius : 0, slab.roundTop ? laptopRadius : 0, slab.taper);
    drawing.fill();
  };

  if (detail == Detail::blunt) {
    fillSlab(wholeLaptop);
  } else if (filled && detail == Detail::full) {
    fillSlab(laptopBase);
    fillSlab(laptopLid);
  } else if (filled || !lines.innerStrokeFits) {
    fillSlab(wholeLaptop);
  } else {
    drawing.roundedRect({left + halfStroke, laptopBottom + halfStroke, right - left - strokeWidth,
                         laptopTop - laptopBottom - strokeWidth},
                        laptopRadius - halfStroke, laptopRadius - halfStroke);
    drawing.stroke(strokeWidth);
  }

  const double vesselBottom = drawing.toUnitsY(lines.footY);
  const double vesselTop = drawing.toUnitsY(lines.topY);
  if (!(vesselTop > vesselBottom)) return drawing;
  const GlyphRect vesselInk{offset + vesselLeft, vesselBottom, offset + narrowInkRightEdge - (offset + vesselLeft),
                            vesselTop - vesselBottom};

  if (detail != Detail::blunt) {
    drawing.ellipse(handleBox);
    drawing.stroke(strokeWidth);
  }
  if (filled) {
    // The body covers the part of the handle's ring that lies inside it.
    drawing.roundedRect(vesselInk, vesselBottomRadius, vesselTopRadius);
    drawing.fill();
  } else {
    const GlyphRect path{vesselInk.x + halfStroke, vesselInk.y + halfStroke, vesselInk.width - strokeWidth,
                         vesselInk.height - strokeWidth};
    // Clear the handle's ring out of the empty body before its wall is drawn.
    drawing.roundedRect(path, vesselBottomRadius - halfStroke, 0);
    drawing.erase();
    drawing.roundedRect(path, vesselBottomRadius - halfStroke, 0);
    drawing.stroke(strokeWidth);
  }
  return drawing;
}

}  // namespace wakeloft
