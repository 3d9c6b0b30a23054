#include "ui/AppLanguage.h"

#include <gtest/gtest.h>

namespace wakeloft {
namespace {

TEST(AppLanguageTest, TheFirstPreferredLanguageDecidesTheDirection) {
  EXPECT_EQ(AppLanguage::direction({}), LayoutDirection::leftToRight);
  EXPECT_EQ(AppLanguage::direction({"ar", "en"}), LayoutDirection::rightToLeft);
  EXPECT_EQ(AppLanguage::direction({"he-IL"}), LayoutDirection::rightToLeft);
  EXPECT_EQ(AppLanguage::direction({"de", "ar"}), LayoutDirection::leftToRight);
}

// The preferred language takes the user's region unless it has its own, and
// keeps the user's other settings; without one, or with one that cannot be
// read, the locale is the user's own.
TEST(AppLanguageTest, TheLocaleIsThePreferredLanguageInTheUsersRegion) {
  EXPECT_EQ(AppLanguage::resolvedLocale({}, "de_CH"), "de_CH");
  EXPECT_EQ(AppLanguage::resolvedLocale({"ar", "en"}, "en_US"), "ar_US");
  EXPECT_EQ(AppLanguage::resolvedLocale({"fr-CA"}, "de_CH"), "fr_CA");
  EXPECT_EQ(AppLanguage::resolvedLocale({"zh-Hans"}, "en_GB"), "zh_Hans_GB");
  EXPECT_EQ(AppLanguage::resolvedLocale({"de"}, "en_US@calendar=japanese"), "de_US@calendar=japanese");
  EXPECT_EQ(AppLanguage::resolvedLocale({"de"}, "sr_Latn_RS"), "de_RS");
  EXPECT_EQ(AppLanguage::resolvedLocale({"!!"}, "en_US"), "en_US");
}

}  // namespace
}  // namespace wakeloft
