#include "prefs/AboutInfo.h"

#include <gtest/gtest.h>

#include "prefs/SystemTimeZone.h"

namespace wakeloft {
namespace {

PropertyList info(PropertyList::Dictionary entries) { return PropertyList(std::move(entries)); }

TEST(AboutInfoTest, TheBuildFollowsTheVersionOnlyWhenItIsTextThatAddsSomething) {
  const std::pair<PropertyList::Dictionary, std::string> cases[] = {
      {{{"CFBundleShortVersionString", "1.4"}, {"CFBundleVersion", "212"}}, "1.4 (212)"},
      {{{"CFBundleShortVersionString", "2.0"}, {"CFBundleVersion", "2.0"}}, "2.0"},
      {{{"CFBundleShortVersionString", "2.0"}}, "2.0"},
      {{{"CFBundleShortVersionString", "2.0"}, {"CFBundleVersion", 212}}, "2.0"},
  };
  for (const auto& [entries, shown] : cases) {
    const auto about = AboutInfo::fromInfoDictionary(info(entries));
    ASSERT_TRUE(about) << shown;
    EXPECT_EQ(about->formattedVersion(), shown);
  }
}

TEST(AboutInfoTest, NothingIsShownWithoutAVersionText) {
  EXPECT_EQ(AboutInfo::fromInfoDictionary(std::nullopt), std::nullopt);
  EXPECT_EQ(AboutInfo::fromInfoDictionary(info({{"CFBundleVersion", "212"}})), std::nullopt);
  EXPECT_EQ(AboutInfo::fromInfoDictionary(info({{"CFBundleShortVersionString", ""}})), std::nullopt);
}

// 2024-01-01T00:00:00Z.
constexpr double newYear2024 = 1'704'067'200;

TEST(AboutInfoTest, TheYearTurnsAtLocalMidnight) {
  const SystemTimeZone newYork("America/New_York");  // UTC-5 in winter
  EXPECT_EQ(AboutInfo::copyrightYear(Date{newYear2024 + 5 * 3600 - 1}, newYork), 2023);
  EXPECT_EQ(AboutInfo::copyrightYear(Date{newYear2024 + 5 * 3600}, newYork), 2024);
}

}  // namespace
}  // namespace wakeloft
