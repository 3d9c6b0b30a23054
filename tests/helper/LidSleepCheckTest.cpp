#include "helper/LidSleepCheck.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "support/FakeClamshell.h"

namespace wakeloft {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using testing::FakeClamshell;

class LidSleepCheckTest : public ::testing::Test {
 protected:
  void leaseEnds() {
    check.settingSettled(true);
    check.settingSettled(false);
  }
  long sleepRequests() const { return std::count(lid->asked.begin(), lid->asked.end(), "requestSleep"); }

  std::shared_ptr<FakeClamshell> lid = std::make_shared<FakeClamshell>();
  std::vector<std::string> log;
  LidSleepCheck check{lid, [this](const std::string& line) { log.push_back(line); }};
};

TEST_F(LidSleepCheckTest, AClosedLidSleepsWhenTheSettingStepsBackToZeroAndSaysSo) {
  leaseEnds();
  EXPECT_EQ(sleepRequests(), 1);
  EXPECT_THAT(log, ElementsAre("lease ended with the lid closed and the setting back at 0: asked the system to sleep"));
}

// Nothing is read while the setting is held or was never held; a restore
// that keeps failing leaves the setting held.
TEST_F(LidSleepCheckTest, OnlyEachStepFromHeldToZeroCounts) {
  for (const bool held : {false, false, true, true}) check.settingSettled(held);
  EXPECT_THAT(lid->asked, IsEmpty());
  check.settingSettled(false);
  check.settingSettled(false);
  EXPECT_EQ(sleepRequests(), 1);
  leaseEnds();
  EXPECT_EQ(sleepRequests(), 2);
}

TEST_F(LidSleepCheckTest, AnOpenLidOrAClosedDisplayModeIsLeftAlone) {
  lid->closed = false;
  leaseEnds();
  lid->closed = true;
  lid->causesSleep = false;
  leaseEnds();
  EXPECT_EQ(sleepRequests(), 0);
  EXPECT_THAT(log, IsEmpty());
}

TEST_F(LidSleepCheckTest, AFailedSleepRequestIsLogged) {
  lid->sleepFails = true;
  EXPECT_NO_THROW(leaseEnds());
  EXPECT_THAT(log, ElementsAre("lease ended with the lid closed and the setting back at 0, but sleep could not be "
                               "requested: IOPMSleepSystem returned 0xe00002c2"));
}

TEST_F(LidSleepCheckTest, AnUnreadableLidIsNeverGuessedClosed) {
  lid->closed.reset();
  leaseEnds();
  lid->closed = true;
  lid->causesSleep.reset();
  leaseEnds();
  EXPECT_EQ(sleepRequests(), 0);
  EXPECT_THAT(log, ElementsAre("lease ended with the setting back at 0, but the lid state could not be read; sleep "
                               "was not requested",
                               "lease ended with the lid closed, but whether that causes sleep could not be read; "
                               "sleep was not requested"));
}

}  // namespace
}  // namespace wakeloft
