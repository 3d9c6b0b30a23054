#include "prefs/StableLocation.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace wakeloft {
namespace {

const std::vector<std::string> folders = {"/Users/ann/Applications", "/x/../Applications/"};

TEST(StableLocationTest, OnlyInsideAnApplicationsFolderAtAnyDepthOnceThePathsAreStandardised) {
  for (const char* path : {"/Applications/Utilities/Wakeloft.app", "/Users/ann/Applications/Wakeloft.app",
                           "/Users/ann/Downloads/../Applications/Wakeloft.app", "//Applications/./Wakeloft.app/"}) {
    EXPECT_TRUE(StableLocation::isInside(path, folders)) << path;
  }
  // Elsewhere, a folder that is not a whole path component, relative or empty.
  for (const char* path : {"/Users/ann/Downloads/Wakeloft.app", "/Users/bob/Applications/Wakeloft.app",
                           "/Applications Old/Wakeloft.app", "/ApplicationsWakeloft.app", "/Applications",
                           "/Applications/",
                           "/Applications/../Users/ann/Downloads/Wakeloft.app", "Applications/Wakeloft.app", ""}) {
    EXPECT_FALSE(StableLocation::isInside(path, folders)) << path;
  }
  EXPECT_FALSE(StableLocation::isInside("/Applications/Wakeloft.app", std::vector<std::string>{"", "Applications"}));
}

}  // namespace
}  // namespace wakeloft
