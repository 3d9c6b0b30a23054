// The release workflow's feed and publication, through the
// `release` tool it runs.
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>

#include "base/ChildProcess.h"
#include "helper/TemporaryDirectory.h"
#include "release/GitHubReleasePublishing.h"
#include "release/ReleaseFeed.h"

namespace wakeloft {
namespace {

using State = GitHubReleasePublishing::State;

ChildProcess::Result release(std::vector<std::string> arguments, const std::string& environment = "") {
  arguments.insert(arguments.begin(), WAKELOFT_RELEASE_TOOL);
  std::string command = environment + " exec";
  for (const auto& argument : arguments) command += " '" + argument + "'";
  return ChildProcess::run({"/bin/sh", "-c", command}, 30);
}

TEST(ReleasePublishingTest, TheFeedIsTheRepositorysLatestReleaseAppcast) {
  EXPECT_EQ(ReleaseFeed::latestReleaseFeed("wakeloft/wake.loft_2-x"),
            "https://github.com/wakeloft/wake.loft_2-x/releases/latest/download/appcast.xml");
  for (const auto* malformed : {"", "wakeloft", "/x", "a/", "a/b/c", "a/..", "a b/c", "a/b?x"}) {
    EXPECT_EQ(ReleaseFeed::latestReleaseFeed(malformed), std::nullopt) << malformed;
  }
}

TEST(ReleasePublishingTest, AReleaseIsPublishedOnlyAfterEveryFileIsOnItsDraft) {
  using Commands = std::vector<GitHubReleasePublishing::Command>;
  const std::vector<std::string> files{"a.zip", "appcast.xml"};
  const GitHubReleasePublishing::Command publish{"release", "edit", "v1", "--draft=false", "--latest"};
  EXPECT_EQ(std::get<Commands>(GitHubReleasePublishing::steps(State::draft, "v1", "W 1", files)),
            (Commands{{"release", "upload", "v1", "--clobber", "a.zip", "appcast.xml"}, publish}));
  EXPECT_EQ(std::get<GitHubReleasePublishing::Error>(GitHubReleasePublishing::steps(State::published, "v1", "", files))
                .message,
            "the release v1 is already published; its files are not replaced");

  EXPECT_EQ(GitHubReleasePublishing::stateFromView(0, "true\n"), State::draft);
  EXPECT_EQ(GitHubReleasePublishing::stateFromView(0, "false\n"), State::published);
  EXPECT_EQ(GitHubReleasePublishing::stateFromView(1, "release not found\n"), State::absent);
  EXPECT_EQ(GitHubReleasePublishing::stateFromView(1, "HTTP 401: Bad credentials"), std::nullopt);

  // The tool runs those steps with gh: here a script that logs each call and
  // knows no release yet, or fails an upload.
  const testing::TemporaryDirectory directory;
  const auto log = directory.path() / "calls";
  const auto gh = directory.write("gh", "#!/bin/sh\necho \"$*\" >>'" + log.string() +
                                            "'\ncase \"$2\" in view) echo 'release not found'; exit 1;; "
                                            "create) exit \"${FAIL:-0}\";; esac\n");
  std::filesystem::permissions(gh, std::filesystem::perms::owner_all);
  const auto calls = [&] {
    std::ifstream in(log);
    std::stringstream text;
    text << in.rdbuf();
    std::filesystem::remove(log);
    return text.str();
  };
  const auto published = release({"publish", "v1", "W 1", "a.zip"}, "GH='" + gh + "'");
  EXPECT_EQ(published.exitStatus, 0) << published.output;
  EXPECT_EQ(calls(),
            "release view v1 --json isDraft --jq .isDraft\n"
            "release create v1 --draft --verify-tag --title W 1 --generate-notes a.zip\n"
            "release edit v1 --draft=false --latest\n");
  const auto failed = release({"publish", "v1", "W 1", "a.zip"}, "FAIL=1 GH='" + gh + "'");
  EXPECT_EQ(failed.exitStatus, 1);
  EXPECT_EQ(calls().find("edit"), std::string::npos) << "published after a failed upload";
}

}  // namespace
}  // namespace wakeloft
