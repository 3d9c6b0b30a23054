#include <gtest/gtest.h>

#include "FixedSymbolMetrics.h"
#include "glyph/AwakeGlyph.h"
#include "glyph/GlyphImage.h"
#include "glyph/LayoutDirection.h"
#include "status/MenuBarIcon.h"

namespace wakeloft {
namespace {

using Blend = GlyphImage::Part::Blend;

FixedSymbolMetrics systemSymbols(double badgeWidth = 9) {
  FixedSymbolMetrics symbols;
  symbols.sizes = {
      {"mug", {17.5, 14}}, {"mug.fill", {17.5, 14}}, {"clock.fill", {badgeWidth, 9}}, {"circle.fill", {5, 5}}};
  return symbols;
}

// The badge, the last part; a failure, not a crash, when there is none.
GlyphImage::Part badgeOf(const GlyphImage& image) {
  EXPECT_GE(image.parts.size(), 3u) << "no badge after the glyph";
  return image.parts.size() < 3 ? GlyphImage::Part{GlyphImage::VesselOnLaptop{}, {}} : image.parts.back();
}

TEST(MenuBarIconImageTest, TheTimerBadgeIsAClockInAClearRingAPointWide) {
  const auto image = MenuBarIcon{true, true, false}.image(LayoutDirection::leftToRight, systemSymbols());
  ASSERT_EQ(image.parts.size(), 3u);
  const auto& ring = image.parts[1];
  const auto& badge = image.parts[2];
  EXPECT_EQ(std::get<SystemSymbol>(badge.content), SystemSymbol::clockFill(8));
  EXPECT_EQ(ring.content, badge.content);
  EXPECT_EQ(ring.blend, Blend::erase);
  EXPECT_EQ(ring.frame,
            (GlyphRect{badge.frame.x - 1, badge.frame.y - 1, badge.frame.width + 2, badge.frame.height + 2}));
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

TEST(MenuBarIconImageTest, TimerBadgeTrailsTheVesselInEitherDirectionInARoundedWidth) {
  const auto symbols = systemSymbols();
  const MenuBarIcon icon{true, true, false};

  // round(21 + 9 − 2) wide, 18 high; the 14-point glyph centred.
  const auto leftToRight = icon.image(LayoutDirection::leftToRight, symbols);
  EXPECT_EQ(leftToRight.size, (GlyphSize{28, 18}));
  ASSERT_EQ(leftToRight.parts.size(), 3u);
  EXPECT_EQ(leftToRight.parts[0].frame, (GlyphRect{0, 2, 21, 14}));
  EXPECT_EQ(badgeOf(leftToRight).frame, (GlyphRect{19, 2, 9, 9}));

  const auto rightToLeft = icon.image(LayoutDirection::rightToLeft, symbols);
  ASSERT_EQ(rightToLeft.parts.size(), 3u);
  EXPECT_EQ(rightToLeft.parts[0].frame, (GlyphRect{7, 2, 21, 14}));
  EXPECT_EQ(badgeOf(rightToLeft).frame, (GlyphRect{0, 2, 9, 9}));

  const auto image = MenuBarIcon{true, true, false}.image(LayoutDirection::leftToRight, systemSymbols(8.6));
  // 21 + 8.6 − 2 = 27.6 → 28; the badge ends at the right edge.
  EXPECT_EQ(image.size.width, 28);
  EXPECT_DOUBLE_EQ(badgeOf(image).frame.maxX(), 28);
}

TEST(MenuBarIconImageTest, TimerBadgeOverlapsTheDeepwakeMugPairOneMorePoint) {
  const auto symbols = systemSymbols();
  const auto plain = MenuBarIcon{true, false, true}.image(LayoutDirection::leftToRight, symbols);
  EXPECT_EQ(plain.size, (GlyphSize{26, 14}));

  // round(26 + 9 − 3) = 32.
  const auto deepwakeLeftToRight = MenuBarIcon{true, true, true}.image(LayoutDirection::leftToRight, symbols);
  EXPECT_EQ(deepwakeLeftToRight.size, (GlyphSize{32, 18}));
  ASSERT_EQ(deepwakeLeftToRight.parts.size(), plain.parts.size() + 2);
  EXPECT_EQ(badgeOf(deepwakeLeftToRight).frame, (GlyphRect{23, 2, 9, 9}));

  const auto deepwakeRightToLeft = MenuBarIcon{true, true, true}.image(LayoutDirection::rightToLeft, symbols);
  EXPECT_EQ(badgeOf(deepwakeRightToLeft).frame, (GlyphRect{0, 2, 9, 9}));
  ASSERT_EQ(deepwakeRightToLeft.parts.size(), plain.parts.size() + 2);
  for (size_t i = 0; i < plain.parts.size(); ++i) {
    EXPECT_EQ(deepwakeRightToLeft.parts[i].frame, plain.parts[i].frame.offsetBy(6, 2));
  }
}

TEST(MenuBarIconImageTest, UpdateDotSitsLevelWithTheGlyphsTopAtTheBadgesSideAfterItInEitherDirection) {
  const auto symbols = systemSymbols();
  // Alone: round(21 + 5 − 2) wide; the 14-point glyph centred, so its top is at 16.
  const auto alone = MenuBarIcon{false, false, false, true}.image(LayoutDirection::leftToRight, symbols);
  EXPECT_EQ(alone.size, (GlyphSize{24, 18}));
  ASSERT_EQ(alone.parts.size(), 3u);
  EXPECT_EQ(std::get<SystemSymbol>(alone.parts[2].content), SystemSymbol::circleFill(5));
  EXPECT_EQ(alone.parts[1].blend, Blend::erase);
  EXPECT_EQ(alone.parts[2].frame, (GlyphRect{19, 11, 5, 5}));

  // With the badge it takes the badge's column, above it.
  const auto leftToRight = MenuBarIcon{true, true, false, true}.image(LayoutDirection::leftToRight, symbols);
  EXPECT_EQ(leftToRight.size, (GlyphSize{28, 18}));
  ASSERT_EQ(leftToRight.parts.size(), 5u);
  EXPECT_EQ(leftToRight.parts[2].frame, (GlyphRect{19, 2, 9, 9}));
  EXPECT_EQ(leftToRight.parts[4].frame, (GlyphRect{23, 11, 5, 5}));
  const auto rightToLeft = MenuBarIcon{true, true, false, true}.image(LayoutDirection::rightToLeft, symbols);
  ASSERT_EQ(rightToLeft.parts.size(), 5u);
  EXPECT_EQ(rightToLeft.parts[2].frame, (GlyphRect{0, 2, 9, 9}));
  EXPECT_EQ(rightToLeft.parts[4].frame, (GlyphRect{0, 11, 5, 5}));
}

}  // namespace
}  // namespace wakeloft
