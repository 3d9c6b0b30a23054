#include "helper/LidHelperFileWatch.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstring>
#include <ostream>
#include <filesystem>
#include <stdexcept>
#include <vector>

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
using testing::TemporaryDirectory;

const std::string runningHash = "1111111111111111111111111111111111111111";
const std::string newHash = "2222222222222222222222222222222222222222";
constexpr LidHelperFileWatch::File startedFrom{7, 100};

// A disk whose one file the test changes by hand, and a signature check that
// counts how often it runs.
struct FakeDisk {
  std::optional<Identity> identity = Identity{7, 100, 4096, 1'700'000'000, 0};
  std::optional<std::string> hash = runningHash;
  bool judgeThrows = false;
  int judgements = 0;

  LidHelperFileWatch watch() {
    return LidHelperFileWatch(
        "/Applications/Wakeloft.app/Contents/Helpers/WakeloftLidHelper", runningHash, startedFrom,
        [this](const std::string&) { return identity; },
        [this](const std::string&) -> std::optional<std::string> {
          ++judgements;
          if (judgeThrows) throw std::runtime_error("Security framework refused");
          return hash;
        });
  }
};

TEST(LidHelperFileWatchTest, TheRunningFileIsJudgedOnceWhileItStaysTheSameAndAgainWhenTouchedButNotWhenMissing) {
  FakeDisk disk;
  auto watch = disk.watch();
  EXPECT_EQ(watch.find(), Finding::running());
  EXPECT_EQ(watch.find(), Finding::running());
  EXPECT_EQ(watch.look().finding, Finding::running());
  EXPECT_EQ(disk.judgements, 1);

  disk.identity->modifiedNanoseconds = 5;
  EXPECT_EQ(watch.find(), Finding::running());
  EXPECT_EQ(disk.judgements, 2);  // touched, it is judged again and still runs

  // Nothing at the path is missing; the same file back again is still known.
  const auto identity = disk.identity;
  disk.identity.reset();
  EXPECT_EQ(watch.find(), Finding::missing());
  disk.identity = identity;
  EXPECT_EQ(watch.find(), Finding::running());
  EXPECT_EQ(disk.judgements, 2);
}

// Same code in a new file, or new code, is replaced; look says when the case
// or the hash changed.
TEST(LidHelperFileWatchTest, SameCodeInANewFileOrNewCodeIsReplacedLookReportsTheChangeAndAFileFailingJudgementIsUnrecognised) {
  FakeDisk disk;
  auto watch = disk.watch();
  EXPECT_FALSE(watch.lastFinding().has_value());
  EXPECT_TRUE(watch.look().changed);
  EXPECT_FALSE(watch.look().changed);

  disk.identity->inode = 101;
  auto look = watch.look();
  EXPECT_EQ(look.finding, Finding::replaced(runningHash));
  EXPECT_TRUE(look.changed);
  EXPECT_FALSE(watch.look().changed);

  disk.identity->inode = 100;
  disk.identity->size = 8192;
  disk.hash = newHash;
  EXPECT_TRUE(watch.look().changed);
  EXPECT_EQ(watch.lastFinding(), Finding::replaced(newHash));
  EXPECT_EQ(watch.find().codeDirectoryHash(), newHash);

  // A file that fails judgement is unrecognised, never replaced.
  FakeDisk failing;
  failing.identity->inode = 101;
  failing.hash.reset();
  auto failingWatch = failing.watch();
  EXPECT_EQ(failingWatch.find(), Finding::unrecognised());
  failing.identity->size = 1;
  failing.judgeThrows = true;
  EXPECT_EQ(failingWatch.find(), Finding::unrecognised());
}

TEST(LidHelperFileWatchTest, OnlyAReplacedHelperWithNothingAtStakeStepsAsideAndNoWatchWithoutEverythingItNeeds) {
  const auto replaced = Finding::replaced(newHash);
  EXPECT_TRUE(LidHelperFileWatch::stepsAside(replaced, false, false));
  EXPECT_FALSE(LidHelperFileWatch::stepsAside(replaced, true, false));
  EXPECT_FALSE(LidHelperFileWatch::stepsAside(replaced, false, true));
  for (const auto& other : {Finding::running(), Finding::missing(), Finding::unrecognised()}) {
    EXPECT_FALSE(LidHelperFileWatch::stepsAside(other, false, false));
  }

  const auto judgeAgainst = [](const std::string&, const std::string&) { return std::optional<std::string>(); };
  const std::string path = "/Applications/Wakeloft.app/Contents/Helpers/WakeloftLidHelper";
  EXPECT_FALSE(LidHelperFileWatch::forRunningHelper(std::nullopt, startedFrom, runningHash, "ABCDE12345", judgeAgainst));
  EXPECT_FALSE(LidHelperFileWatch::forRunningHelper(path, std::nullopt, runningHash, "ABCDE12345", judgeAgainst));
  EXPECT_FALSE(LidHelperFileWatch::forRunningHelper(path, startedFrom, runningHash, std::nullopt, judgeAgainst));
  EXPECT_FALSE(LidHelperFileWatch::forRunningHelper(path, startedFrom, runningHash, "abcde12345", judgeAgainst));
  EXPECT_FALSE(LidHelperFileWatch::forRunningHelper(path, startedFrom, runningHash, "ABCDE12345", nullptr));
}

TEST(LidHelperFileWatchTest, IdentityComesFromTheFilesStatus) {
  TemporaryDirectory directory;
  const auto path = directory.write("WakeloftLidHelper", "first");
  const auto first = LidHelperFileWatch::identity(path);
  ASSERT_TRUE(first.has_value());
  struct stat status {};
  ASSERT_EQ(::stat(path.c_str(), &status), 0);
  EXPECT_EQ(first->device, static_cast<std::uint64_t>(status.st_dev));
  EXPECT_EQ(first->inode, static_cast<std::uint64_t>(status.st_ino));
  EXPECT_EQ(first->size, 5);

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
  EXPECT_EQ(watch->path(), path);
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
  EXPECT_EQ(LidHelperFileWatch::launchedPath(argumentArea(1, "\0"sv)), std::nullopt);
  EXPECT_EQ(LidHelperFileWatch::launchedPath(argumentArea(1, ""sv)), std::nullopt);
  EXPECT_EQ(LidHelperFileWatch::launchedPath({}), std::nullopt);
}

}  // namespace
}  // namespace wakeloft
