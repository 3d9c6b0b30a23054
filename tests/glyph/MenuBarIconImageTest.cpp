#include <gtest/gtest.h>

#include "FixedSymbolMetrics.h"
#include "glyph/AwakeGlyph.h"
#include "glyph/GlyphImage.h"
#include "glyph/LayoutDirection.h"
#include "status/MenuBarIcon.h"

namespace wakeloft {
namespace {

using Blend = GlyphImage::Part::Blend;

FixedSymbolMetrics systemSymbols() {
  FixedSymbolMetrics symbols;
  symbols.sizes = {
      {"mug", {17.5, 14}}, {"mug.fill", {17.5, 14}}, {"clock.fill", {9, 9}}, {"circle.fill", {5, 5}}};
  return symbols;
}

// The badge, the last part; a failure, not a crash, when there is none.
GlyphImage::Part badgeOf(const GlyphImage& image) {
  EXPECT_GE(image.parts.size(), 3u) << "no badge after the glyph";
  return image.parts.size() < 3 ? GlyphImage::Part{GlyphImage::VesselOnLaptop{}, {}} : image.parts.back();
}

TEST(MenuBarIconImageTest, VesselWithoutTimerIs21By14FilledWhenOn) {
  for (const bool on : {false, true}) {
    const auto image = MenuBarIcon{on, false, false}.image(LayoutDirection::leftToRight, systemSymbols());
    EXPECT_EQ(image.size, (GlyphSize{21, 14}));
    ASSERT_EQ(image.parts.size(), 1u);
    EXPECT_EQ(std::get<GlyphImage::VesselOnLaptop>(image.parts[0].content).filled, on);
  }
}

TEST(MenuBarIconImageTest, TheMugPairStandsForDeepwake) {
  using Vessel = AwakeGlyph::Vessel;
  EXPECT_EQ(MenuBarIcon::current(false, std::nullopt, true).glyph(), AwakeGlyph(Vessel::mug, false));
  EXPECT_EQ((MenuBarIcon{true, true, false}).glyph(), AwakeGlyph(Vessel::mug, true));
  EXPECT_EQ((MenuBarIcon{true, false, true}).glyph(), AwakeGlyph(Vessel::doubleMug, true));
}

TEST(MenuBarIconImageTest, WithoutTheClockSymbolThereIsNoBadgeAndWithoutTheMugNoImage) {
  FixedSymbolMetrics noClock;
  noClock.sizes = {{"mug.fill", {17.5, 14}}};
  EXPECT_EQ((MenuBarIcon{true, true, true}).image(LayoutDirection::rightToLeft, noClock),
            (MenuBarIcon{true, false, true}).image(LayoutDirection::rightToLeft, noClock));
  FixedSymbolMetrics clockOnly;
  clockOnly.sizes = {{"clock.fill", {9, 9}}};
  EXPECT_TRUE((MenuBarIcon{true, true, true}).image(LayoutDirection::leftToRight, clockOnly).isEmpty());
}

TEST(MenuBarIconImageTest, TimerBadgeTrailsTheVessel) {
  const auto symbols = systemSymbols();
  const MenuBarIcon icon{true, true, false};

  // round(21 + 9 − 2) wide, 18 high; the 14-point glyph centred.
  const auto leftToRight = icon.image(LayoutDirection::leftToRight, symbols);
  EXPECT_EQ(leftToRight.size, (GlyphSize{28, 18}));
  ASSERT_EQ(leftToRight.parts.size(), 3u);
  EXPECT_EQ(leftToRight.parts[0].frame, (GlyphRect{0, 2, 21, 14}));
  EXPECT_EQ(badgeOf(leftToRight).frame, (GlyphRect{19, 2, 9, 9}));
}

TEST(MenuBarIconImageTest, UpdateDotSitsLevelWithTheGlyphsTop) {
  const auto symbols = systemSymbols();
  // Alone: round(21 + 5 − 2) wide; the 14-point glyph centred, so its top is at 16.
  const auto alone = MenuBarIcon{false, false, false, true}.image(LayoutDirection::leftToRight, symbols);
  EXPECT_EQ(alone.size, (GlyphSize{24, 18}));
  ASSERT_EQ(alone.parts.size(), 3u);
  EXPECT_EQ(std::get<SystemSymbol>(alone.parts[2].content), SystemSymbol::circleFill(5));
  EXPECT_EQ(alone.parts[1].blend, Blend::erase);
  EXPECT_EQ(alone.parts[2].frame, (GlyphRect{19, 11, 5, 5}));
}

}  // namespace
}  // namespace wakeloft
