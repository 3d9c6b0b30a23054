#pragma once

namespace wakeloft {

// Points, sizes and rectangles of the glyph drawings. The y axis points up
// and the origin is the bottom-left corner, as in Core Graphics; the Cairo
// renderer flips once for the whole image.
struct GlyphPoint {
  double x = 0;
  double y = 0;

  friend bool operator==(const GlyphPoint&, const GlyphPoint&) = default;
};

struct GlyphSize {
  double width = 0;
  double height = 0;

  // A size with no area (also one holding NaN) draws nothing.
  bool isEmpty() const { return !(width > 0 && height > 0); }

  friend bool operator==(const GlyphSize&, const GlyphSize&) = default;
};

struct GlyphRect {
  double x = 0;
  double y = 0;
  double width = 0;
  double height = 0;

  double maxX() const { return x + width; }
  double maxY() const { return y + height; }
  GlyphSize size() const { return {width, height}; }

  GlyphRect offsetBy(double dx, double dy) const { return {x + dx, y + dy, width, height}; }

  // Grown by `factor` about its centre, keeping its aspect.
  GlyphRect scaledAboutCentre(double factor) const {
    const double w = width * factor;
    const double h = height * factor;
    return {x - (w - width) / 2, y - (h - height) / 2, w, h};
  }

  friend bool operator==(const GlyphRect&, const GlyphRect&) = default;
};

}  // namespace wakeloft
