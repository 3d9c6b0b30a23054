#include "glyph/GlyphDrawing.h"

#include <algorithm>

namespace wakeloft {

namespace {

// Control-point distance for a quarter circle drawn as one cubic curve.
constexpr double kappa = 0.5522847498;

}  // namespace

void GlyphDrawing::roundedRect(GlyphRect rect, double bottomRadius, double topRadius, double topInset) {
  const double most = std::max(0.0, std::min(rect.width / 2 - std::max(topInset, 0.0), rect.height / 2));
  const double rb = std::clamp(bottomRadius, 0.0, most);
  const double rt = std::clamp(topRadius, 0.0, most);
  const double left = rect.x;
  const double right = rect.maxX();
  const double topLeft = rect.x + topInset;
  const double topRight = rect.maxX() - topInset;
  const double bottom = rect.y;
  const double top = rect.maxY();

  // Counter-clockwise from the bottom edge, so every piece winds the same way.
  moveTo({left + rb, bottom});
  lineTo({right - rb, bottom});
  if (rb > 0) curveTo({right - rb + rb * kappa, bottom}, {right, bottom + rb - rb * kappa}, {right, bottom + rb});
  lineTo({topRight, top - rt});
  if (rt > 0) curveTo({topRight, top - rt + rt * kappa}, {topRight - rt + rt * kappa, top}, {topRight - rt, top});
  lineTo({topLeft + rt, top});
  if (rt > 0) curveTo({topLeft + rt - rt * kappa, top}, {topLeft, top - rt + rt * kappa}, {topLeft, top - rt});
  lineTo({left, bottom + rb});
  if (rb > 0) curveTo({left, bottom + rb - rb * kappa}, {left + rb - rb * kappa, bottom}, {left + rb, bottom});
  closePath();
}

}  // namespace wakeloft
