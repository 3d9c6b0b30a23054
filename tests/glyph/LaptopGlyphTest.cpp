#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>
#include <type_traits>
#include <variant>

#include "glyph/LaptopGlyph.h"

namespace wakeloft {
namespace {

using Detail = LaptopGlyph::Detail;
using Placement = LaptopGlyph::Placement;

// The extent of everything a drawing paints, in points: path points (and
// control points, which the curves here keep inside their corners), grown
// by half the stroke for stroked paths.
struct InkBounds {
  double minX = HUGE_VAL, minY = HUGE_VAL, maxX = -HUGE_VAL, maxY = -HUGE_VAL;
  void add(GlyphPoint p, double grow = 0) {
    minX = std::min(minX, p.x - grow);
    minY = std::min(minY, p.y - grow);
    maxX = std::max(maxX, p.x + grow);
    maxY = std::max(maxY, p.y + grow);
  }
};

InkBounds inkBounds(const GlyphDrawing& drawing) {
  InkBounds ink;
  std::vector<GlyphPoint> path;
  for (const auto& operation : drawing.operations()) {
    std::visit(
        [&](const auto& op) {
          using Op = std::decay_t<decltype(op)>;
          if constexpr (std::is_same_v<Op, GlyphDrawing::MoveTo> || std::is_same_v<Op, GlyphDrawing::LineTo>) {
            path.push_back(op.to);
          } else if constexpr (std::is_same_v<Op, GlyphDrawing::CurveTo>) {
            path.insert(path.end(), {op.control1, op.control2, op.to});
          } else if constexpr (std::is_same_v<Op, GlyphDrawing::Ellipse>) {
            path.insert(path.end(), {{op.in.x, op.in.y}, {op.in.maxX(), op.in.maxY()}});
          } else if constexpr (std::is_same_v<Op, GlyphDrawing::Stroke> || std::is_same_v<Op, GlyphDrawing::Fill>) {
            double grow = 0;
            if constexpr (std::is_same_v<Op, GlyphDrawing::Stroke>) grow = op.width / 2;
            for (const auto point : path) ink.add(point, grow);
            path.clear();
          } else if constexpr (std::is_same_v<Op, GlyphDrawing::Erase>) {
            path.clear();
          }
        },
        operation);
  }
  const auto low = drawing.toPoints({ink.minX, ink.minY});
  const auto high = drawing.toPoints({ink.maxX, ink.maxY});
  return {low.x, low.y, high.x, high.y};
}

// The paint operations in order: 'S' stroke, 'F' fill, 'E' erase.
std::string paints(const GlyphDrawing& drawing) {
  std::string result;
  for (const auto& op : drawing.operations()) {
    if (std::holds_alternative<GlyphDrawing::Stroke>(op)) result += 'S';
    if (std::holds_alternative<GlyphDrawing::Fill>(op)) result += 'F';
    if (std::holds_alternative<GlyphDrawing::Erase>(op)) result += 'E';
  }
  return result;
}

GlyphRect glyphRect(double height) { return {0, 0, std::round(height * LaptopGlyph::aspect), height}; }

TEST(LaptopGlyphDetailTest, SmallGlyphsLoseDetailsAtTheThresholds) {
  EXPECT_EQ(LaptopGlyph::detail(7.99), Detail::blunt);
  EXPECT_EQ(LaptopGlyph::detail(8), Detail::plain);
  // Fine strokes reach 0.6 pixels at 0.6 × 1.675 ÷ (0.4 × 0.09) pixels high.
  const double fineStrokesFit = 0.6 * 1.675 / (0.4 * 0.09);
  EXPECT_EQ(LaptopGlyph::detail(fineStrokesFit - 0.01), Detail::plain);
  EXPECT_EQ(LaptopGlyph::detail(fineStrokesFit + 0.01), Detail::full);

  EXPECT_EQ(LaptopGlyph::detail(std::nan("")), Detail::blunt);
}

TEST(LaptopGlyphDetailTest, TheFootIsSnappedAPixelClearOfTheLaptopWhileTheVesselFits) {
  // Unsnapped, the foot is the gap above the ink.
  EXPECT_DOUBLE_EQ(Placement::footY(10, 3, 0.5, 0.0), 3 + 5.725);
  // 8.725 rounds to 9, well above the laptop's top at 5.
  EXPECT_DOUBLE_EQ(Placement::footY(10, 0, 0.8, 1.0), 9);
  // 4.925 rounds to 5, the laptop's top line; the foot goes to 6.
  EXPECT_DOUBLE_EQ(Placement::footY(10, 0, 0.42, 1.0), 6);
  // At 2x from a bottom of 0.25 pt: foot 5.425 px rounds to 5, line A is at
  // 5 px, so the foot is raised to 6 px, 3 pt.
  EXPECT_DOUBLE_EQ(Placement::footY(5, 0.25, 0.42, 2.0), 3);

  // One pixel to a unit: the lowest clear foot, 2 px above line B, would not
  // stay a pixel below the top line at 2 px, so the rounded foot stays.
  EXPECT_DOUBLE_EQ(Placement::footY(1, 0, 0.42, 1.0), 0);
}

TEST(LaptopGlyphLayoutTest, VesselStandsAPixelClearOfTheLaptopOnThePixelGrid) {
  for (const double scale : {1.0, 2.0, 3.0}) {
    for (int pixelsHigh = 8; pixelsHigh <= 64; ++pixelsHigh) {
      SCOPED_TRACE(testing::Message() << pixelsHigh << " px at " << scale << "x");
      const auto layout = LaptopGlyph::layout(glyphRect(pixelsHigh / scale), scale);
      for (const double line : {layout.laptopBottom, layout.laptopTop, layout.footY, layout.topY}) {
        EXPECT_NEAR(line * scale, std::round(line * scale), 1e-9);
      }
      EXPECT_GE((layout.footY - layout.laptopTop) * scale, 1 - 1e-9);
      EXPECT_GE((layout.topY - layout.footY) * scale, 1 - 1e-9);
    }
  }
}

TEST(LaptopGlyphLayoutTest, TheLaptopIsHollowOnlyWithTwoAndAHalfPixelsInside) {
  // 0.11 units at 2.5 px: a unit of 22.73 px, a glyph of 38.07 px.
  EXPECT_FALSE(LaptopGlyph::layout(glyphRect(38), 1).innerStrokeFits);
  EXPECT_TRUE(LaptopGlyph::layout(glyphRect(38.1), 1).innerStrokeFits);
  EXPECT_TRUE(LaptopGlyph::layout(glyphRect(19.1), 2).innerStrokeFits);

  // Hollow: the laptop is a stroked outline; otherwise a solid slab.
  EXPECT_EQ(paints(LaptopGlyph::draw(false, glyphRect(64), Detail::full, 1)).substr(0, 1), "S");
  EXPECT_EQ(paints(LaptopGlyph::draw(false, glyphRect(32), Detail::full, 1)).substr(0, 1), "F");
}

TEST(LaptopGlyphDrawTest, InkStaysInsideTheImageAtEverySize) {
  for (const double scale : {1.0, 2.0, 3.0}) {
    for (int pixelsHigh = 1; pixelsHigh <= 128; ++pixelsHigh) {
      const GlyphRect in = glyphRect(pixelsHigh / scale);
      for (const bool filled : {false, true}) {
        SCOPED_TRACE(testing::Message() << pixelsHigh << " px at " << scale << "x, filled " << filled);
        const auto ink = inkBounds(LaptopGlyph::draw(filled, in, LaptopGlyph::detail(pixelsHigh), scale));
        EXPECT_GE(ink.minX, in.x - 1e-9);
        EXPECT_GE(ink.minY, in.y - 1e-9);
        EXPECT_LE(ink.maxX, in.maxX() + 1e-9);
        EXPECT_LE(ink.maxY, in.maxY() + 1e-9);
      }
    }
  }
}

TEST(LaptopGlyphDrawTest, InkReachesTheHandleUnlessBluntWhenItStaysCentred) {
  const GlyphRect in = glyphRect(64);
  const auto layout = LaptopGlyph::layout(in, 1);
  const double unit = layout.unit;

  const auto full = inkBounds(LaptopGlyph::draw(true, in, Detail::full, 1));
  EXPECT_NEAR(full.maxX, layout.origin.x + LaptopGlyph::inkRightEdge * unit, 1e-9);
  EXPECT_NEAR(full.minY, layout.laptopBottom, 1e-9);
  EXPECT_NEAR(full.maxY, layout.topY, 1e-9);

  // The blunt glyph leaves the handle out; its narrower ink stays centred.
  const auto blunt = LaptopGlyph::draw(true, in, Detail::blunt, 1);
  EXPECT_TRUE(std::none_of(blunt.operations().begin(), blunt.operations().end(),
                           [](const auto& op) { return std::holds_alternative<GlyphDrawing::Ellipse>(op); }));
  const auto bluntInk = inkBounds(blunt);
  const double narrowInk = (LaptopGlyph::inkWidth(Detail::blunt) - 2 * LaptopGlyph::strokeWidth) * unit;
  EXPECT_NEAR(bluntInk.maxX - bluntInk.minX, narrowInk, 1e-9);
  EXPECT_NEAR(bluntInk.minX - in.x, in.maxX() - bluntInk.maxX, 1e-9);
}

TEST(LaptopGlyphDrawTest, TheFilledLaptopSplitsOnlyAtFullDetailAndTheOutlinedBodyClearsItsHandle) {
  const GlyphRect in = glyphRect(64);
  // Laptop slabs, handle ring, body.
  EXPECT_EQ(paints(LaptopGlyph::draw(true, in, Detail::full, 1)), "FFSF");
  EXPECT_EQ(paints(LaptopGlyph::draw(true, in, Detail::plain, 1)), "FSF");
  // Outlined: the body clears the handle's ring out of itself, then its wall.
  EXPECT_EQ(paints(LaptopGlyph::draw(false, in, Detail::plain, 1)), "SSES");
}

TEST(LaptopGlyphDrawTest, NoRoomDrawsNothing) {
  EXPECT_TRUE(LaptopGlyph::draw(true, {0, 0, 0, 14}, Detail::full, 2).operations().empty());
  EXPECT_TRUE(LaptopGlyph::draw(true, {0, 0, 21, -1}, Detail::full, 2).operations().empty());
  EXPECT_TRUE(LaptopGlyph::draw(true, {0, 0, std::nan(""), 14}, Detail::full, 2).operations().empty());
}

}  // namespace
}  // namespace wakeloft
