#include "ui/AboutPopupContent.h"

#include <gtest/gtest.h>

#include "prefs/SystemTimeZone.h"

namespace wakeloft {
namespace {

// 2024-12-31 23:30 UTC.
constexpr Date newYearsEve{1735687800};

TEST(AboutPopupContentTest, ShowsNameVersionAndCopyright) {
  const SystemTimeZone utc("UTC");
  const auto content = AboutPopupContent::current(AboutInfo{"1.4", "212"}, newYearsEve, utc, "Ada Lovelace");
  EXPECT_EQ(content.glyph, AwakeGlyph(AwakeGlyph::Vessel::mug, true));
  ASSERT_TRUE(content.version);
  EXPECT_EQ(content.version->english(), "Version 1.4 (212)");
  EXPECT_EQ(content.copyright.english(), "\u00A9 2024 Ada Lovelace");
  EXPECT_TRUE(content.copyright.isVerbatim());

  // Without a version the line is left out; the year turns at local midnight.
  const auto bare = AboutPopupContent::current(std::nullopt, newYearsEve, utc);
  EXPECT_EQ(bare.version, std::nullopt);
  EXPECT_EQ(bare.copyright.english(), "\u00A9 2024 " + AboutPopupContent::copyrightHolder());
  EXPECT_EQ(AboutPopupContent::current(std::nullopt, newYearsEve, SystemTimeZone("Europe/Berlin"), "A").copyright.english(),
            "\u00A9 2025 A");
}

}  // namespace
}  // namespace wakeloft
