// scripts/render-cask, which the release workflow runs to write the cask.
#include <gtest/gtest.h>

#include <string>

#include "base/ChildProcess.h"
#include "helper/TemporaryDirectory.h"

namespace wakeloft {
namespace {

const std::string sha256(64, 'e');
constexpr const char* url = "https://github.com/wakeloft/wakeloft/releases/download/v1.2.0/Wakeloft-1.2.0.zip";

ChildProcess::Result render(const std::string& version, const std::string& digest, const std::string& address) {
  return ChildProcess::run({"/bin/bash", WAKELOFT_SOURCE_DIR "/scripts/render-cask", version, digest, address}, 30);
}

TEST(HomebrewCaskTest, RendersTheReleaseInTheCasksOwnTermsAndRefusesValuesItCannotWriteSafely) {
  const auto cask = render("1.2.0", sha256, url);
  ASSERT_EQ(cask.exitStatus, 0) << cask.output;
  EXPECT_NE(cask.output.find("  version \"1.2.0\"\n  sha256 \"" + sha256 + "\"\n"), std::string::npos);
  EXPECT_NE(cask.output.find("  url \"https://github.com/wakeloft/wakeloft/releases/download/v#{version}/"
                             "Wakeloft-#{version}.zip\",\n      verified: \"github.com/wakeloft/wakeloft/\"\n"),
            std::string::npos);
  EXPECT_NE(cask.output.find("    url \"https://github.com/wakeloft/wakeloft/releases/latest/download/appcast.xml\"\n"
                             "    strategy :sparkle\n"),
            std::string::npos);
  EXPECT_EQ(cask.output.find('@'), std::string::npos) << "a placeholder is left";

  const std::tuple<std::string, std::string, std::string, std::string> refused[] = {
      {"1.2.0-beta", sha256, url, "is not a version"},
      {"1.2.0", "E" + sha256.substr(1), url, "is not a SHA-256"},
      {"1.2.0", sha256, "https://wakeloft.app/Wakeloft-1.2.0.zip", "is not a GitHub release download"},
      {"1.3.0", sha256, url, "does not name version 1.3.0"},
  };
  for (const auto& [version, digest, address, message] : refused) {
    const auto result = render(version, digest, address);
    EXPECT_EQ(result.exitStatus, 1) << message;
    EXPECT_NE(result.output.find(message), std::string::npos) << result.output;
  }
}

}  // namespace
}  // namespace wakeloft
