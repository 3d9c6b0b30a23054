#pragma once

#include <variant>
#include <vector>

#include "glyph/GlyphGeometry.h"

namespace wakeloft {

// A picture as a list of path operations, for Core Graphics on macOS and
// Cairo on Linux to replay one for one. Coordinates are in the drawing's own
// units; `unitSize` and `origin` place them in the image's points
// (point = origin + unit coordinate × unitSize), and stroke widths scale
// with them.
//
// Paths are filled by the non-zero winding rule; strokes have round joins
// and round caps. Fill, stroke and erase each consume the current path.
class GlyphDrawing {
 public:
  struct MoveTo {
    GlyphPoint to;
    friend bool operator==(const MoveTo&, const MoveTo&) = default;
  };
  struct LineTo {
    GlyphPoint to;
    friend bool operator==(const LineTo&, const LineTo&) = default;
  };
  // A cubic Bézier curve from the current point.
  struct CurveTo {
    GlyphPoint control1;
    GlyphPoint control2;
    GlyphPoint to;
    friend bool operator==(const CurveTo&, const CurveTo&) = default;
  };
  // A closed ellipse inscribed in a rectangle, as a subpath of its own.
  struct Ellipse {
    GlyphRect in;
    friend bool operator==(const Ellipse&, const Ellipse&) = default;
  };
  struct ClosePath {
    friend bool operator==(const ClosePath&, const ClosePath&) = default;
  };
  struct Stroke {
    double width = 0;
    friend bool operator==(const Stroke&, const Stroke&) = default;
  };
  struct Fill {
    friend bool operator==(const Fill&, const Fill&) = default;
  };
  // Clears what lies inside the path back to transparent.
  struct Erase {
    friend bool operator==(const Erase&, const Erase&) = default;
  };

  using Operation = std::variant<MoveTo, LineTo, CurveTo, Ellipse, ClosePath, Stroke, Fill, Erase>;

  GlyphDrawing() = default;
  GlyphDrawing(double unitSize, GlyphPoint origin) : unitSize_(unitSize), origin_(origin) {}

  double unitSize() const { return unitSize_; }
  GlyphPoint origin() const { return origin_; }
  const std::vector<Operation>& operations() const { return operations_; }

  GlyphPoint toPoints(GlyphPoint unitPoint) const {
    return {origin_.x + unitPoint.x * unitSize_, origin_.y + unitPoint.y * unitSize_};
  }
  double toUnitsY(double pointY) const { return (pointY - origin_.y) / unitSize_; }

  void moveTo(GlyphPoint to) { operations_.emplace_back(MoveTo{to}); }
  void lineTo(GlyphPoint to) { operations_.emplace_back(LineTo{to}); }
  void curveTo(GlyphPoint control1, GlyphPoint control2, GlyphPoint to) {
    operations_.emplace_back(CurveTo{control1, control2, to});
  }
  void ellipse(GlyphRect in) { operations_.emplace_back(Ellipse{in}); }
  void closePath() { operations_.emplace_back(ClosePath{}); }
  void stroke(double width) { operations_.emplace_back(Stroke{width}); }
  void fill() { operations_.emplace_back(Fill{}); }
  void erase() { operations_.emplace_back(Erase{}); }

  // A closed rectangle whose bottom and top corners are rounded with
  // quarter circles (as Bézier curves), each radius clamped to what fits.
  // `topInset` pulls the two top corners in, for sides that lean.
  void roundedRect(GlyphRect rect, double bottomRadius, double topRadius, double topInset = 0);

 private:
  double unitSize_ = 1;
  GlyphPoint origin_;
  std::vector<Operation> operations_;
};

}  // namespace wakeloft
