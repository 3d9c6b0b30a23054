#include <gtest/gtest.h>

#include <cmath>

#include "FixedSymbolMetrics.h"
#include "glyph/AwakeGlyph.h"

namespace wakeloft {
namespace {

using Blend = GlyphImage::Part::Blend;
using Vessel = AwakeGlyph::Vessel;

FixedSymbolMetrics mugSymbols() {
  FixedSymbolMetrics symbols;
  symbols.sizes = {{"mug", {17.5, 14}}, {"mug.fill", {17.5, 14}}};
  return symbols;
}

TEST(AwakeGlyphTest, SingleVesselIsRoundedToWholePointsAtItsAspect) {
  // 16 × 0.96 = 15.36 → 15 high; 15 × 1.4722 = 22.08 → 22 wide.
  const auto image = AwakeGlyph(Vessel::mug, false).image(16, mugSymbols());
  EXPECT_EQ(image.size, (GlyphSize{22, 15}));
  EXPECT_TRUE(image.isTemplate);
  ASSERT_EQ(image.parts.size(), 1u);
  EXPECT_EQ(image.parts[0].content,
            (std::variant<GlyphImage::VesselOnLaptop, SystemSymbol>(GlyphImage::VesselOnLaptop{false})));
  EXPECT_EQ(image.parts[0].frame, (GlyphRect{0, 0, 22, 15}));
}

TEST(AwakeGlyphTest, NoSizeOrNoSymbolGivesAnEmptyImage) {
  for (const auto vessel : {Vessel::mug, Vessel::doubleMug}) {
    for (const double pointSize : {0.0, -5.0, std::nan(""), HUGE_VAL}) {
      EXPECT_TRUE(AwakeGlyph(vessel, true).image(pointSize, mugSymbols()).isEmpty()) << pointSize;
    }
  }
  // round(0.5 × 0.96) is 0 points high.
  EXPECT_TRUE(AwakeGlyph(Vessel::mug, true).image(0.5, mugSymbols()).isEmpty());
  EXPECT_TRUE(AwakeGlyph(Vessel::doubleMug, true).image(15, FixedSymbolMetrics{}).isEmpty());
}

TEST(AwakeGlyphTest, DoubleMugIsTwoSymbolsTheFrontCutOutOfTheBack) {
  const auto outlined = AwakeGlyph(Vessel::doubleMug, false).image(15, mugSymbols());
  // 17.5 × 1.48 = 25.9, rounded up.
  EXPECT_EQ(outlined.size, (GlyphSize{26, 14}));
  EXPECT_TRUE(outlined.isTemplate);
  ASSERT_EQ(outlined.parts.size(), 3u);
  const auto& back = outlined.parts[0];
  const auto& cut = outlined.parts[1];
  const auto& front = outlined.parts[2];
  EXPECT_EQ(std::get<SystemSymbol>(back.content), SystemSymbol::mug(15));
  EXPECT_EQ(std::get<SystemSymbol>(front.content), SystemSymbol::mug(15));
  EXPECT_EQ(std::get<SystemSymbol>(cut.content), SystemSymbol::mugFill(15));
  EXPECT_EQ(cut.blend, Blend::erase);
}

TEST(AwakeGlyphTest, AFilledDoubleMugIsTwoFilledMugs) {
  const auto filled = AwakeGlyph(Vessel::doubleMug, true).image(15, mugSymbols());
  ASSERT_EQ(filled.parts.size(), 3u);
  EXPECT_EQ(std::get<SystemSymbol>(filled.parts[0].content), SystemSymbol::mugFill(15));
  EXPECT_EQ(std::get<SystemSymbol>(filled.parts[2].content), SystemSymbol::mugFill(15));
}

}  // namespace
}  // namespace wakeloft
