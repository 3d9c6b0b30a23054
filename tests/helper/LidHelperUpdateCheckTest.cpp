#include "helper/LidHelperUpdateCheck.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "FakeHelperFile.h"
#include "support/InMemoryLeaseService.h"

namespace wakeloft {
namespace {

using Lines = std::vector<std::string>;
using testing::helperPath;
using testing::newHash;

// The helper's real keeper and service, and its file on a disk the test
// changes by hand.
class LidHelperUpdateCheckTest : public ::testing::Test, protected testing::InMemoryLeaseService {
 protected:
  std::unique_ptr<LidHelperUpdateCheck> makeCheck() {
    return std::make_unique<LidHelperUpdateCheck>(
        file.watch(), keeper, service, [this](const std::string& line) { checkLog.push_back(line); },
        [this] { ++stepsAside; });
  }

  testing::FakeHelperFile file;
  Lines checkLog;
  int stepsAside = 0;
};

TEST_F(LidHelperUpdateCheckTest, AnIdleHelperStepsAsideOnceWhenReplaced) {
  auto check = makeCheck();
  check->settingSettled();
  EXPECT_EQ(stepsAside, 0);
  file.replace();
  check->fileChanged();
  check->fileChanged();
  check->settingSettled();
  EXPECT_EQ(stepsAside, 1);
  EXPECT_EQ(checkLog, Lines{"helper stepping aside: a new helper is at " + helperPath + " (cdhash " + newHash + ")"});
}

TEST_F(LidHelperUpdateCheckTest, AHelperFoundReplacedAtItsStartStepsAsideAtOnce) {
  file.replace();
  const auto check = makeCheck();
  EXPECT_EQ(stepsAside, 1);
}

TEST_F(LidHelperUpdateCheckTest, AHeldLeaseKeepsTheOldHelperUntilTheLastTermEnds) {
  auto check = makeCheck();
  ASSERT_EQ(service->renew(in(30), 1), std::nullopt);
  ASSERT_EQ(service->renew(in(20), 2), std::nullopt);
  file.replace();
  check->fileChanged();
  EXPECT_EQ(checkLog, Lines{"a new helper is at " + helperPath + " (cdhash " + newHash +
                            "); this one steps aside once no lease is held and the setting is back at 0"});
  service->revoke(1);
  check->settingSettled();
  EXPECT_EQ(stepsAside, 0);

  clocks.pass(21);
  service->checkLease();
  check->settingSettled();
  EXPECT_EQ(stepsAside, 1);
}

// A write of 1 that failed may or may not have reached the setting.
TEST_F(LidHelperUpdateCheckTest, AResetInDoubtKeepsTheOldHelperUntilAWriteSucceeds) {
  auto check = makeCheck();
  setting->writeError = "pmset did not finish within 1 second and was stopped";
  service->renew(in(30), 1);
  file.replace();
  check->fileChanged();
  service->revoke(1);
  check->settingSettled();
  EXPECT_EQ(stepsAside, 0);

  setting->writeError.reset();
  clocks.pass(0.3);
  service->checkLease();
  check->settingSettled();
  EXPECT_EQ(stepsAside, 1);
}

TEST_F(LidHelperUpdateCheckTest, AMissingOrUnsignedFileNeverMakesItStepAsideAndIsLoggedOnce) {
  auto check = makeCheck();
  file.identity.reset();
  check->fileChanged();
  check->fileChanged();
  file.identity = LidHelperFileWatch::Identity{7, 300, 10, 1'700'000'200, 0};
  file.hash.reset();
  check->fileChanged();
  check->settingSettled();
  EXPECT_EQ(stepsAside, 0);
  EXPECT_EQ(checkLog,
            (Lines{"helper file not found at " + helperPath + "; this helper keeps running",
                   "the file at " + helperPath + " is not validly signed helper code; this helper keeps running"}));
}

}  // namespace
}  // namespace wakeloft
