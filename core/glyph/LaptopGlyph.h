#pragma once

#include <algorithm>
#include <optional>

#include "glyph/GlyphDrawing.h"
#include "glyph/GlyphGeometry.h"

namespace wakeloft {

// The single vessel standing on a closed laptop, measured in abstract units:
// the box is 1.675 units high, and every outline is stroked 0.145 units wide,
// so the ink stops half a stroke inside the box at the top and bottom.
class LaptopGlyph {
 public:
  // Levels of detail, finest first; smaller glyphs drop details that would
  // only blur.
  enum class Detail { full, plain, blunt };

  static constexpr double boxHeight = 1.675;
  static constexpr double inkHeight = 1.53;
  static constexpr double strokeWidth = 0.145;
  static constexpr double halfStroke = strokeWidth / 2;

  // The vessel's handle: an ellipse inscribed in this box.
  static constexpr GlyphRect handleBox{1.674, 0.7625, 0.5744, 0.6769};
  // The handle's outer ink, the right-most ink of the glyph.
  static constexpr double inkRightEdge = handleBox.x + handleBox.width + halfStroke;
  // Where the ink ends on the right when the handle is left out.
  static constexpr double narrowInkRightEdge = 1.892;
  static constexpr double narrowBoxWidth = 2.037;

  static constexpr bool hasWideInk = inkRightEdge >= narrowInkRightEdge;
  static constexpr double boxWidth = hasWideInk ? inkRightEdge + strokeWidth : narrowBoxWidth;
  static constexpr double aspect = hasWideInk ? (inkRightEdge + strokeWidth) / boxHeight : 1.2161194029850746;

  static constexpr double inkWidth(Detail detail) {
    return detail == Detail::blunt ? narrowBoxWidth : std::max(inkRightEdge, narrowInkRightEdge) + strokeWidth;
  }

  // The level of detail for a glyph this many device pixels high: fine
  // strokes go first, when thinner than 0.6 pixels; then the small details,
  // when smaller than 2 pixels; below 8 pixels only the blunt shapes are left.
  static Detail detail(double heightInPixels);

  struct Placement {
    // Where the vessel's foot stands, in points: `gap` units above the ink's
    // bottom, with `unit` points to a unit and `bottom` the box's bottom edge.
    // With a device scale the foot is snapped to the pixel grid and kept at
    // least one pixel clear of the laptop, if the vessel still fits below
    // its top line.
    static double footY(double unit, double bottom, double gap, std::optional<double> deviceScale = std::nullopt);
  };

  // The horizontal lines of a glyph drawn in `in`, in points, snapped to the
  // pixel grid when `deviceScale` is positive.
  struct Layout {
    double unit = 0;       // points to a unit
    GlyphPoint origin;     // where the box's bottom-left corner lands
    double laptopBottom = 0;
    double laptopTop = 0;
    double footY = 0;      // the vessel's ink bottom
    double topY = 0;       // the vessel's ink top
    bool innerStrokeFits = false;  // an outlined laptop can show its hollow
  };
  static Layout layout(GlyphRect in, double deviceScale);

  // The vessel's foot above the ink's bottom, in units: the laptop is 0.4
  // high and the vessel stands a tenth of a unit above it.
  static constexpr double vesselGap = 0.5;

  // The glyph as path operations in units, placed in `in` (in points) and
  // centred there; filled when awake mode is on, outlined when off.
  static GlyphDrawing draw(bool filled, GlyphRect in, Detail detail, double deviceScale);
};

}  // namespace wakeloft
