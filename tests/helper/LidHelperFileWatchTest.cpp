#include "helper/LidHelperFileWatch.h"

#include <gtest/gtest.h>

#include <cstring>
#include <ostream>
#include <filesystem>
#include <stdexcept>
#include <utility>
#include <vector>

#include "FakeHelperFile.h"
#include "TemporaryDirectory.h"

namespace wakeloft {

void PrintTo(const LidHelperFileWatch::Finding& finding, std::ostream* out) {
  static const char* const names[] = {"replaced", "running", "missing", "unrecognised"};
  *out << names[static_cast<int>(finding.kind())];
  if (!finding.codeDirectoryHash().empty()) *out << "(" << finding.codeDirectoryHash() << ")";
}

namespace {

using Finding = LidHelperFileWatch::Finding;
using Identity = LidHelperFileWatch::Identity;
using namespace testing;

constexpr LidHelperFileWatch::File startedFrom{7, 100};

TEST(LidHelperFileWatchTest, TheRunningFileIsJudgedOnlyWhenItsStatusChanges) {
  FakeHelperFile disk;
  auto watch = disk.watch();
  EXPECT_EQ(watch.find(), Finding::running());
  EXPECT_EQ(watch.find(), Finding::running());
  EXPECT_EQ(disk.judgements, 1);

  disk.identity->modifiedNanoseconds = 5;
  EXPECT_EQ(watch.find(), Finding::running());
  EXPECT_EQ(disk.judgements, 2);
}

TEST(LidHelperFileWatchTest, NothingAtThePathIsMissingAndTheSameFileBackIsStillKnown) {
  FakeHelperFile disk;
  auto watch = disk.watch();
  watch.find();
  const auto identity = std::exchange(disk.identity, std::nullopt);
  EXPECT_EQ(watch.find(), Finding::missing());
  disk.identity = identity;
  EXPECT_EQ(watch.find(), Finding::running());
  EXPECT_EQ(disk.judgements, 1);
}

TEST(LidHelperFileWatchTest, LookSaysWhenTheFindingOrItsHashChanged) {
  FakeHelperFile disk;
  auto watch = disk.watch();
  EXPECT_TRUE(watch.look().changed);
  EXPECT_FALSE(watch.look().changed);
  disk.identity->inode = 101;
  EXPECT_TRUE(watch.look().changed);
  EXPECT_FALSE(watch.look().changed);
  disk.replace();
  EXPECT_EQ(watch.look().finding, Finding::replaced(newHash));
}

TEST(LidHelperFileWatchTest, AFileFailingJudgementIsUnrecognisedNeverReplaced) {
  FakeHelperFile disk;
  auto watch = disk.watch();
  disk.identity->inode = 101;
  disk.hash.reset();
  EXPECT_EQ(watch.find(), Finding::unrecognised());
  disk.identity->size = 1;
  disk.judgeThrows = true;
  EXPECT_EQ(watch.find(), Finding::unrecognised());
}

TEST(LidHelperFileWatchTest, NoWatchWithoutEverythingItNeeds) {
  const auto judgeAgainst = [](const std::string&, const std::string&) { return std::optional<std::string>(); };
  const std::string& path = helperPath;
  EXPECT_FALSE(LidHelperFileWatch::forRunningHelper(std::nullopt, startedFrom, runningHash, "ABCDE12345", judgeAgainst));
  EXPECT_FALSE(LidHelperFileWatch::forRunningHelper(path, std::nullopt, runningHash, "ABCDE12345", judgeAgainst));
  EXPECT_FALSE(LidHelperFileWatch::forRunningHelper(path, startedFrom, runningHash, std::nullopt, judgeAgainst));
  EXPECT_FALSE(LidHelperFileWatch::forRunningHelper(path, startedFrom, runningHash, "abcde12345", judgeAgainst));
  EXPECT_FALSE(LidHelperFileWatch::forRunningHelper(path, startedFrom, runningHash, "ABCDE12345", nullptr));
}

TEST(LidHelperFileWatchTest, ATouchedFileIsTheSameFileAndACopyIsAnother) {
  TemporaryDirectory directory;
  const auto path = directory.write("WakeloftLidHelper", "first");
  const auto first = LidHelperFileWatch::identity(path);
  ASSERT_TRUE(first.has_value());
  std::filesystem::last_write_time(path, std::filesystem::last_write_time(path) + std::chrono::seconds(3));
  const auto touched = LidHelperFileWatch::identity(path);
  EXPECT_NE(touched, first);
  EXPECT_EQ(touched->file(), first->file());

  const auto copy = directory.path() / "copy";
  std::filesystem::copy_file(path, copy);
  EXPECT_NE(LidHelperFileWatch::identity(copy.string())->file(), first->file());

  EXPECT_EQ(LidHelperFileWatch::identity((directory.path() / "missing").string()), std::nullopt);
}

TEST(LidHelperFileWatchTest, WatchForTheRunningHelperJudgesAgainstTheHelpersRequirement) {
  TemporaryDirectory directory;
  const auto path = directory.write("WakeloftLidHelper", "code");
  const auto file = LidHelperFileWatch::identity(path)->file();
  std::vector<std::string> requirements;
  const auto judgeAgainst = [&](const std::string&, const std::string& requirement) -> std::optional<std::string> {
    requirements.push_back(requirement);
    return runningHash;
  };

  auto watch = LidHelperFileWatch::forRunningHelper(path, file, runningHash, "ABCDE12345", judgeAgainst);
  ASSERT_TRUE(watch.has_value());
  EXPECT_EQ(watch->find(), Finding::running());
  EXPECT_EQ(requirements, std::vector<std::string>{
                              "anchor apple generic and identifier \"com.wakeloft.app.lidhelper\" and certificate "
                              "leaf[subject.OU] = \"ABCDE12345\""});

  // The app's update puts a new file in its place.
  const auto update = directory.write("WakeloftLidHelper.new", "new code");
  std::filesystem::rename(update, path);
  EXPECT_EQ(watch->find(), Finding::replaced(runningHash));
}

std::vector<std::uint8_t> argumentArea(std::int32_t count, std::string_view rest) {
  std::vector<std::uint8_t> area(sizeof count);
  std::memcpy(area.data(), &count, sizeof count);
  area.insert(area.end(), rest.begin(), rest.end());
  return area;
}

TEST(LidHelperFileWatchTest, LaunchedPathIsTheAbsolutePathAfterTheArgumentCount) {
  using namespace std::string_view_literals;
  EXPECT_EQ(LidHelperFileWatch::launchedPath(argumentArea(1, "/Library/Wakeloft/WakeloftLidHelper\0\0\0WakeloftLidHelper\0"sv)),
            "/Library/Wakeloft/WakeloftLidHelper");
  EXPECT_EQ(LidHelperFileWatch::launchedPath(argumentArea(1, "WakeloftLidHelper\0"sv)), std::nullopt);
  EXPECT_EQ(LidHelperFileWatch::launchedPath(argumentArea(1, "/cut/short"sv)), std::nullopt);
  EXPECT_EQ(LidHelperFileWatch::launchedPath(argumentArea(1, ""sv)), std::nullopt);
  EXPECT_EQ(LidHelperFileWatch::launchedPath({}), std::nullopt);
}

}  // namespace
}  // namespace wakeloft
