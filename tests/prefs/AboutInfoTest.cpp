#include "prefs/AboutInfo.h"

#include <gtest/gtest.h>

#include <limits>
#include <stdexcept>

#include "prefs/SystemTimeZone.h"

namespace wakeloft {
namespace {

PropertyList info(PropertyList::Dictionary entries) { return PropertyList(std::move(entries)); }

TEST(AboutInfoTest, ReadsTheVersionAndTheBuildUnlessItAddsNothingAndNothingWithoutAVersionText) {
  const auto about =
      AboutInfo::fromInfoDictionary(info({{"CFBundleShortVersionString", "1.4"}, {"CFBundleVersion", "212"}}));
  ASSERT_TRUE(about);
  EXPECT_EQ(*about, (AboutInfo{"1.4", "212"}));
  EXPECT_EQ(about->formattedVersion(), "1.4 (212)");

  const auto same =
      AboutInfo::fromInfoDictionary(info({{"CFBundleShortVersionString", "2.0"}, {"CFBundleVersion", "2.0"}}));
  ASSERT_TRUE(same);
  EXPECT_EQ(same->formattedVersion(), "2.0");

  const auto missing = AboutInfo::fromInfoDictionary(info({{"CFBundleShortVersionString", "2.0"}}));
  ASSERT_TRUE(missing);
  EXPECT_EQ(missing->build, "");
  EXPECT_EQ(missing->formattedVersion(), "2.0");

  const auto notText =
      AboutInfo::fromInfoDictionary(info({{"CFBundleShortVersionString", "2.0"}, {"CFBundleVersion", 212}}));
  ASSERT_TRUE(notText);
  EXPECT_EQ(notText->formattedVersion(), "2.0");

  EXPECT_EQ(AboutInfo::fromInfoDictionary(std::nullopt), std::nullopt);
  EXPECT_EQ(AboutInfo::fromInfoDictionary(info({})), std::nullopt);
  EXPECT_EQ(AboutInfo::fromInfoDictionary(info({{"CFBundleVersion", "212"}})), std::nullopt);
  EXPECT_EQ(AboutInfo::fromInfoDictionary(info({{"CFBundleShortVersionString", ""}, {"CFBundleVersion", "212"}})),
            std::nullopt);
  EXPECT_EQ(AboutInfo::fromInfoDictionary(info({{"CFBundleShortVersionString", 1.4}})), std::nullopt);
  EXPECT_EQ(AboutInfo::fromInfoDictionary(PropertyList("CFBundleShortVersionString")), std::nullopt);
  EXPECT_EQ(AboutInfo::fromInfoDictionary(PropertyList(PropertyList::Array{"1.4"})), std::nullopt);
}

// 2024-01-01T00:00:00Z.
constexpr double newYear2024 = 1'704'067'200;

TEST(AboutInfoTest, TheYearTurnsAtLocalMidnightByTheZonesRulesAtThatInstantOverEdgesAndDatesBeyondAnyClock) {
  const SystemTimeZone utc("UTC");
  const SystemTimeZone newYork("America/New_York");  // UTC-5 in winter
  const SystemTimeZone tokyo("Asia/Tokyo");          // UTC+9
  const SystemTimeZone kiritimati("Pacific/Kiritimati");  // UTC+14

  EXPECT_EQ(AboutInfo::copyrightYear(Date{newYear2024 - 1}, utc), 2023);
  EXPECT_EQ(AboutInfo::copyrightYear(Date{newYear2024}, utc), 2024);

  // Already the new year in Tokyo, still the old one in New York.
  EXPECT_EQ(AboutInfo::copyrightYear(Date{newYear2024 - 9 * 3600}, tokyo), 2024);
  EXPECT_EQ(AboutInfo::copyrightYear(Date{newYear2024 - 9 * 3600 - 1}, tokyo), 2023);
  EXPECT_EQ(AboutInfo::copyrightYear(Date{newYear2024 + 5 * 3600 - 1}, newYork), 2023);
  EXPECT_EQ(AboutInfo::copyrightYear(Date{newYear2024 + 5 * 3600}, newYork), 2024);
  EXPECT_EQ(AboutInfo::copyrightYear(Date{newYear2024 - 14 * 3600}, kiritimati), 2024);

  // Samoa moved from UTC-10 to UTC+14 at the end of 2011.
  const SystemTimeZone samoa("Pacific/Apia");
  // 2010-12-31T12:00:00Z: 02:00 on New Year's Eve there; today's offset
  // would make it 2011.
  EXPECT_EQ(AboutInfo::copyrightYear(Date{1'293'796'800}, samoa), 2010);
  // 2011-12-31T10:00:00Z: midnight on New Year's Day there.
  EXPECT_EQ(AboutInfo::copyrightYear(Date{1'325'325'599}, samoa), 2011);
  EXPECT_EQ(AboutInfo::copyrightYear(Date{1'325'325'600}, samoa), 2012);

  // Unknown zone names are refused.
  EXPECT_THROW(SystemTimeZone("Mars/Olympus_Mons"), std::invalid_argument);
  EXPECT_THROW(SystemTimeZone(std::string("\xff\xfe", 2)), std::invalid_argument);

  EXPECT_EQ(AboutInfo::copyrightYear(Date{0}, utc), 1970);
  EXPECT_EQ(AboutInfo::copyrightYear(Date{-1}, utc), 1969);
  EXPECT_EQ(AboutInfo::copyrightYear(Date{951'868'799}, utc), 2000);   // 2000-02-29T23:59:59Z
  EXPECT_EQ(AboutInfo::copyrightYear(Date::distantFuture(), utc), 4001);

  const double nan = std::numeric_limits<double>::quiet_NaN();
  const double infinity = std::numeric_limits<double>::infinity();
  EXPECT_EQ(AboutInfo::copyrightYear(Date{nan}, utc), 1970);
  EXPECT_GT(AboutInfo::copyrightYear(Date{infinity}, utc), 3'000'000);
  EXPECT_LT(AboutInfo::copyrightYear(Date{-infinity}, utc), -3'000'000);
}

}  // namespace
}  // namespace wakeloft
