#include "ui/AboutPopupContent.h"

#include <gtest/gtest.h>

#include "prefs/SystemTimeZone.h"

namespace wakeloft {
namespace {

// 2024-12-31 23:30 UTC.
constexpr Date newYearsEve{1735687800};

TEST(AboutPopupContentTest, TheVersionLineHasItsBuildAndIsLeftOutWithoutAVersion) {
  const SystemTimeZone utc("UTC");
  const auto version = AboutPopupContent::current(AboutInfo{"1.4", "212"}, newYearsEve, utc).version;
  ASSERT_TRUE(version);
  EXPECT_EQ(version->english(), "Version 1.4 (212)");
  EXPECT_EQ(AboutPopupContent::current(std::nullopt, newYearsEve, utc).version, std::nullopt);
}

TEST(AboutPopupContentTest, TheCopyrightYearTurnsAtLocalMidnight) {
  const auto copyright = [](const char* zone) {
    return AboutPopupContent::current(std::nullopt, newYearsEve, SystemTimeZone(zone), "A").copyright.english();
  };
  EXPECT_EQ(copyright("UTC"), "\u00A9 2024 A");
  EXPECT_EQ(copyright("Europe/Berlin"), "\u00A9 2025 A");
}

}  // namespace
}  // namespace wakeloft
