#include "prefs/StableLocation.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace wakeloft {
namespace {

const std::vector<std::string> folders = {"/Users/ann/Applications", "/Applications"};

bool stable(const std::string& bundlePath) { return StableLocation::isInside(bundlePath, folders); }

// Inside an Applications folder at any depth, once the paths are
// standardised.
TEST(StableLocationTest, OnlyInsideAnApplicationsFolderAtAnyDepth) {
  EXPECT_TRUE(stable("/Applications/Wakeloft.app"));
  EXPECT_TRUE(stable("/Applications/Utilities/Wakeloft.app"));
  EXPECT_TRUE(stable("/Users/ann/Applications/Wakeloft.app"));
  EXPECT_TRUE(stable("/Applications/Wakeloft.app/"));
  EXPECT_TRUE(stable("/Users/ann/Downloads/../Applications/Wakeloft.app"));
  EXPECT_TRUE(stable("//Applications/./Wakeloft.app"));
  EXPECT_TRUE(StableLocation::isInside("/Applications/Wakeloft.app", std::vector<std::string>{"/Applications/"}));
  EXPECT_TRUE(StableLocation::isInside("/Applications/Wakeloft.app", std::vector<std::string>{"/x/../Applications"}));

  // Elsewhere, a folder that is not a whole path component, relative or empty.
  for (const char* path : {"/Users/ann/Downloads/Wakeloft.app", "/Volumes/Wakeloft/Wakeloft.app",
                           "/private/var/folders/xy/T/AppTranslocation/1234/d/Wakeloft.app",
                           "/Users/bob/Applications/Wakeloft.app", "/Applications Old/Wakeloft.app",
                           "/ApplicationsWakeloft.app", "/Applications", "/Applications/",
                           "/Applications/../Users/ann/Downloads/Wakeloft.app", "Applications/Wakeloft.app", ""}) {
    EXPECT_FALSE(stable(path)) << path;
  }
  EXPECT_FALSE(StableLocation::isInside("/Applications/Wakeloft.app", std::vector<std::string>{"", "Applications"}));
  EXPECT_FALSE(StableLocation::isInside("/Applications/Wakeloft.app", std::vector<std::string>{}));
}
}  // namespace
}  // namespace wakeloft
