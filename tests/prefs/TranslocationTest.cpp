#include <gtest/gtest.h>

#include "prefs/Translocation.h"

namespace wakeloft {
namespace {

TEST(TranslocationTest, OnlyAFolderNamedAppTranslocationMarksATranslocatedCopy) {
  const std::pair<const char*, bool> paths[] = {
      {"/private/var/folders/x8/q1w2/T/AppTranslocation/6C1A-44F0/d/Wakeloft.app", true},
      {"/Volumes/Disk/AppTranslocation/d/Wakeloft.app", true},
      {"/Applications/Wakeloft.app", false},
      {"/Users/me/AppTranslocation.app", false},
      {"/Users/me/AppTranslocations/Wakeloft.app", false},
      {"/Users/me/Downloads/AppTranslocation", false},
      {"AppTranslocation/d/Wakeloft.app", false},
  };
  for (const auto& [path, translocated] : paths) EXPECT_EQ(Translocation::isTranslocated(path), translocated) << path;
}

}  // namespace
}  // namespace wakeloft
