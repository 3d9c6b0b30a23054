#include "prefs/StableLocation.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace wakeloft {
namespace {

const std::vector<std::string> folders = {"/Users/ann/Applications", "/Applications"};

bool stable(const std::string& bundlePath) { return StableLocation::isInside(bundlePath, folders); }

TEST(StableLocationTest, InsideAnApplicationsFolderAtAnyDepth) {
  EXPECT_TRUE(stable("/Applications/Wakeloft.app"));
  EXPECT_TRUE(stable("/Applications/Utilities/Wakeloft.app"));
  EXPECT_TRUE(stable("/Users/ann/Applications/Wakeloft.app"));
  EXPECT_TRUE(stable("/Applications/Wakeloft.app/"));
}

TEST(StableLocationTest, ElsewhereIsNotStable) {
  EXPECT_FALSE(stable("/Users/ann/Downloads/Wakeloft.app"));
  EXPECT_FALSE(stable("/Volumes/Wakeloft/Wakeloft.app"));
  EXPECT_FALSE(stable("/private/var/folders/xy/T/AppTranslocation/1234/d/Wakeloft.app"));
  EXPECT_FALSE(stable("/Users/bob/Applications/Wakeloft.app"));
}

TEST(StableLocationTest, AFolderCountsOnlyAsAWholePathComponent) {
  EXPECT_FALSE(stable("/Applications Old/Wakeloft.app"));
  EXPECT_FALSE(stable("/ApplicationsWakeloft.app"));
  EXPECT_FALSE(stable("/Applications"));
  EXPECT_FALSE(stable("/Applications/"));
}

TEST(StableLocationTest, PathsAreStandardisedBeforeComparing) {
  EXPECT_FALSE(stable("/Applications/../Users/ann/Downloads/Wakeloft.app"));
  EXPECT_TRUE(stable("/Users/ann/Downloads/../Applications/Wakeloft.app"));
  EXPECT_TRUE(stable("//Applications/./Wakeloft.app"));
  EXPECT_TRUE(StableLocation::isInside("/Applications/Wakeloft.app", std::vector<std::string>{"/Applications/"}));
  EXPECT_TRUE(StableLocation::isInside("/Applications/Wakeloft.app", std::vector<std::string>{"/x/../Applications"}));
}

TEST(StableLocationTest, RelativeOrEmptyPathsAreNeverStable) {
  EXPECT_FALSE(stable("Applications/Wakeloft.app"));
  EXPECT_FALSE(stable(""));
  EXPECT_FALSE(StableLocation::isInside("/Applications/Wakeloft.app", std::vector<std::string>{"", "Applications"}));
  EXPECT_FALSE(StableLocation::isInside("/Applications/Wakeloft.app", std::vector<std::string>{}));
}

}  // namespace
}  // namespace wakeloft
