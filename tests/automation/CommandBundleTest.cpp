// The app around the command, from the command's resolved path.

#include <gtest/gtest.h>

#include "automation/CommandBundle.h"

namespace wakeloft {
namespace {

TEST(CommandBundleTest, FindsTheAppOnlyAroundItsHelpers) {
  const std::vector<std::pair<std::string, std::optional<std::string>>> cases = {
      {"/Applications/Wakeloft.app/Contents/Helpers/wakeloft", "/Applications/Wakeloft.app"},
      {"/Users/me/build/My Build.app/Contents/Helpers/wakeloft", "/Users/me/build/My Build.app"},
      {"/Applications/Wakeloft.app/Contents/MacOS/Wakeloft", std::nullopt},
      {"/Applications/Wakeloft/Contents/Helpers/wakeloft", std::nullopt},
      {"/.app/Contents/Helpers/wakeloft", std::nullopt},
      {"/Applications/Wakeloft.app/Contents/Helpers/", std::nullopt},
      {"Wakeloft.app/Contents/Helpers/wakeloft", std::nullopt},
  };
  for (const auto& [path, app] : cases) EXPECT_EQ(CommandBundle::enclosingApp(path), app) << path;
}

}  // namespace
}  // namespace wakeloft
