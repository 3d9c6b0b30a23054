#include "ui/AboutPopupContent.h"

#include <gtest/gtest.h>

#include "prefs/SystemTimeZone.h"

namespace wakeloft {
namespace {

// 2024-12-31 23:30 UTC.
constexpr Date newYearsEve{1735687800};

TEST(AboutPopupContentTest, TheCopyrightYearTurnsAtLocalMidnight) {
  const auto copyright = [](const char* zone) {
    return AboutPopupContent::current(std::nullopt, newYearsEve, SystemTimeZone(zone), "A").copyright.english();
  };
  EXPECT_EQ(copyright("UTC"), "\u00A9 2024 A");
  EXPECT_EQ(copyright("Europe/Berlin"), "\u00A9 2025 A");
}

}  // namespace
}  // namespace wakeloft
