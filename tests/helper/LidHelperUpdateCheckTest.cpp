#include "helper/LidHelperUpdateCheck.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "support/InMemorySleepSetting.h"
#include "support/ManualClocks.h"

namespace wakeloft {
namespace {

using Identity = LidHelperFileWatch::Identity;
using testing::InMemorySleepSetting;
using testing::ManualMachineClocks;

const std::string helperPath = "/Applications/Wakeloft.app/Contents/Helpers/WakeloftLidHelper";
const std::string runningHash = "1111111111111111111111111111111111111111";
const std::string newHash = "2222222222222222222222222222222222222222";
constexpr LidHelperFileWatch::File startedFrom{7, 100};

// A real keeper and service over the in-memory setting, and a disk whose one
// file the test swaps by hand.
class LidHelperUpdateCheckTest : public ::testing::Test {
 protected:
  std::unique_ptr<LidHelperUpdateCheck> makeCheck() {
    LidHelperFileWatch watch(
        helperPath, runningHash, startedFrom, [this](const std::string&) { return identity; },
        [this](const std::string&) { return hash; });
    return std::make_unique<LidHelperUpdateCheck>(
        std::move(watch), keeper, service, [this](const std::string& line) { logLines.push_back(line); },
        [this] { ++stepsAside; });
  }
  // An update moves new signed code into place: a new inode.
  void replaceFile() {
    identity = Identity{7, 200, 8192, 1'700'000'100, 0};
    hash = newHash;
  }
  double in(double seconds) const { return clocks.now().adding(seconds).secondsSince1970; }

  ManualMachineClocks clocks;
  std::shared_ptr<InMemorySleepSetting> setting = std::make_shared<InMemorySleepSetting>();
  std::shared_ptr<LidSleepLeaseKeeper> keeper =
      std::make_shared<LidSleepLeaseKeeper>(setting, clocks.dates, clocks.uptime);
  std::shared_ptr<LidLeaseService> service =
      std::make_shared<LidLeaseService>(keeper, [](const std::string&) {});
  std::optional<Identity> identity = Identity{7, 100, 4096, 1'700'000'000, 0};
  std::optional<std::string> hash = runningHash;
  std::vector<std::string> logLines;
  int stepsAside = 0;
};

TEST_F(LidHelperUpdateCheckTest, AnIdleHelperStepsAsideOnceWhenReplacedOrAtOnceWhenFoundReplacedAtStart) {
  auto check = makeCheck();
  check->settingSettled();
  EXPECT_EQ(stepsAside, 0);
  EXPECT_TRUE(logLines.empty());

  replaceFile();
  check->fileChanged();
  check->fileChanged();
  check->settingSettled();
  EXPECT_EQ(stepsAside, 1);
  EXPECT_EQ(logLines, (std::vector<std::string>{"helper stepping aside: a new helper is at " + helperPath +
                                                " (cdhash " + newHash + ")"}));

  // One found replaced at its start steps aside at once.
  auto restarted = makeCheck();
  EXPECT_EQ(stepsAside, 2);
}

TEST_F(LidHelperUpdateCheckTest, AHeldLeaseKeepsTheOldHelperUntilItEnds) {
  auto check = makeCheck();
  ASSERT_EQ(service->renew(in(30), 1), std::nullopt);
  replaceFile();
  check->fileChanged();
  check->settingSettled();
  EXPECT_EQ(stepsAside, 0);
  ASSERT_EQ(logLines.size(), 1u);
  EXPECT_EQ(logLines[0], "a new helper is at " + helperPath + " (cdhash " + newHash +
                             "); this one steps aside once no lease is held and the setting is back at 0");

  // Another client still holds a term after the first one revokes.
  ASSERT_EQ(service->renew(in(20), 2), std::nullopt);
  service->revoke(1);
  check->settingSettled();
  EXPECT_EQ(stepsAside, 0);

  // The last term lapses: the tick settles with the setting back at 0.
  clocks.pass(21);
  service->checkLease();
  ASSERT_FALSE(setting->value);
  check->settingSettled();
  EXPECT_EQ(stepsAside, 1);
}

TEST_F(LidHelperUpdateCheckTest, AResetInDoubtKeepsTheOldHelperUntilAWriteSucceeds) {
  auto check = makeCheck();
  ASSERT_EQ(service->renew(in(30), 1), std::nullopt);
  replaceFile();
  check->fileChanged();

  setting->writeError = "pmset did not finish within 1 second and was stopped";
  service->revoke(1);
  ASSERT_TRUE(setting->value);
  check->settingSettled();
  EXPECT_EQ(stepsAside, 0);

  setting->writeError.reset();
  clocks.pass(0.3);
  service->checkLease();
  ASSERT_FALSE(setting->value);
  check->settingSettled();
  EXPECT_EQ(stepsAside, 1);
}

TEST_F(LidHelperUpdateCheckTest, AMissingOrUnsignedFileNeverMakesItStepAside) {
  auto check = makeCheck();
  identity.reset();
  check->fileChanged();
  check->fileChanged();
  identity = Identity{7, 300, 10, 1'700'000'200, 0};
  hash.reset();
  check->fileChanged();
  check->settingSettled();

  EXPECT_EQ(stepsAside, 0);
  EXPECT_EQ(logLines, (std::vector<std::string>{
                          "helper file not found at " + helperPath + "; this helper keeps running",
                          "the file at " + helperPath + " is not validly signed helper code; this helper keeps running",
                      }));

  // The same code copied back to a new inode is another file: replaced.
  hash = runningHash;
  identity = Identity{7, 301, 4096, 1'700'000'300, 0};
  check->fileChanged();
  EXPECT_EQ(stepsAside, 1);
}

}  // namespace
}  // namespace wakeloft
