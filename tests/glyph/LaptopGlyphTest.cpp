#include <gtest/gtest.h>

#include <cmath>
#include <variant>

#include "glyph/LaptopGlyph.h"

namespace wakeloft {
namespace {

using Detail = LaptopGlyph::Detail;

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

TEST(LaptopGlyphLayoutTest, TheLaptopIsHollowOnlyWithTwoAndAHalfPixelsInside) {
  // 0.11 units at 2.5 px: a unit of 22.73 px, a glyph of 38.07 px.
  EXPECT_FALSE(LaptopGlyph::layout(glyphRect(38), 1).innerStrokeFits);
  EXPECT_TRUE(LaptopGlyph::layout(glyphRect(38.1), 1).innerStrokeFits);
  EXPECT_TRUE(LaptopGlyph::layout(glyphRect(19.1), 2).innerStrokeFits);

  // Hollow: the laptop is a stroked outline; otherwise a solid slab.
  EXPECT_EQ(paints(LaptopGlyph::draw(false, glyphRect(64), Detail::full, 1)).substr(0, 1), "S");
  EXPECT_EQ(paints(LaptopGlyph::draw(false, glyphRect(32), Detail::full, 1)).substr(0, 1), "F");
}

TEST(LaptopGlyphDrawTest, TheFilledVesselIsPaintedOtherwiseThanTheOutlinedAtEveryDetail) {
  for (const auto detail : {Detail::blunt, Detail::plain, Detail::full}) {
    const auto filled = paints(LaptopGlyph::draw(true, glyphRect(64), detail, 1));
    EXPECT_FALSE(filled.empty()) << static_cast<int>(detail);
    EXPECT_NE(filled, paints(LaptopGlyph::draw(false, glyphRect(64), detail, 1))) << static_cast<int>(detail);
  }
}

TEST(LaptopGlyphDrawTest, NoRoomDrawsNothing) {
  EXPECT_TRUE(LaptopGlyph::draw(true, {0, 0, 0, 14}, Detail::full, 2).operations().empty());
  EXPECT_TRUE(LaptopGlyph::draw(true, {0, 0, 21, -1}, Detail::full, 2).operations().empty());
  EXPECT_TRUE(LaptopGlyph::draw(true, {0, 0, std::nan(""), 14}, Detail::full, 2).operations().empty());
}

}  // namespace
}  // namespace wakeloft
