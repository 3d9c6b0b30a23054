#include "prefs/AboutInfo.h"

#include <gtest/gtest.h>

#include <limits>
#include <stdexcept>

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
  EXPECT_EQ(AboutInfo::fromInfoDictionary(info({{"CFBundleShortVersionString", 1.4}})), std::nullopt);
  EXPECT_EQ(AboutInfo::fromInfoDictionary(PropertyList(PropertyList::Array{"1.4"})), std::nullopt);
}

// 2024-01-01T00:00:00Z.
constexpr double newYear2024 = 1'704'067'200;

TEST(AboutInfoTest, TheYearTurnsAtLocalMidnightByTheZonesRulesAtThatInstant) {
  const SystemTimeZone newYork("America/New_York");  // UTC-5 in winter
  EXPECT_EQ(AboutInfo::copyrightYear(Date{newYear2024 + 5 * 3600 - 1}, newYork), 2023);
  EXPECT_EQ(AboutInfo::copyrightYear(Date{newYear2024 + 5 * 3600}, newYork), 2024);
  EXPECT_EQ(AboutInfo::copyrightYear(Date{newYear2024 - 9 * 3600}, SystemTimeZone("Asia/Tokyo")), 2024);

  // Samoa moved from UTC-10 to UTC+14 at the end of 2011. 2010-12-31T12:00Z
  // is 02:00 on New Year's Eve there; today's offset would make it 2011.
  const SystemTimeZone samoa("Pacific/Apia");
  EXPECT_EQ(AboutInfo::copyrightYear(Date{1'293'796'800}, samoa), 2010);
  // 2011-12-31T10:00:00Z: midnight on New Year's Day there.
  EXPECT_EQ(AboutInfo::copyrightYear(Date{1'325'325'600}, samoa), 2012);
  EXPECT_THROW(SystemTimeZone("Mars/Olympus_Mons"), std::invalid_argument);
}

TEST(AboutInfoTest, DatesBeyondAnyClockStillGiveAYear) {
  const SystemTimeZone utc("UTC");
  EXPECT_EQ(AboutInfo::copyrightYear(Date{-1}, utc), 1969);
  EXPECT_EQ(AboutInfo::copyrightYear(Date::distantFuture(), utc), 4001);
  EXPECT_EQ(AboutInfo::copyrightYear(Date{std::numeric_limits<double>::quiet_NaN()}, utc), 1970);
  EXPECT_GT(AboutInfo::copyrightYear(Date{std::numeric_limits<double>::infinity()}, utc), 3'000'000);
}

}  // namespace
}  // namespace wakeloft
