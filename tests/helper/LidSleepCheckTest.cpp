#include "helper/LidSleepCheck.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

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
  std::shared_ptr<FakeClamshell> lid = std::make_shared<FakeClamshell>();
  std::vector<std::string> log;
  LidSleepCheck check{lid, [this](const std::string& line) { log.push_back(line); }};
};

// Nothing is read while the setting is held or was never held.
TEST_F(LidSleepCheckTest, ClosedLidSleepsOnceTheLastLeaseEndsAndSaysSoOnEachStepToZero) {
  check.settingSettled(false);
  check.settingSettled(false);
  check.settingSettled(true);
  check.settingSettled(true);
  EXPECT_THAT(lid->asked, IsEmpty());
  EXPECT_THAT(log, IsEmpty());
  check.settingSettled(false);
  EXPECT_THAT(lid->asked, ElementsAre("lidIsClosed", "closingCausesSleep", "requestSleep"));
  EXPECT_THAT(log, ElementsAre("lease ended with the lid closed and the setting back at 0: asked the system to sleep"));

  // Only the step to 0 counts, each once; a restore that keeps failing leaves
  // the setting held: nothing yet.
  const auto sleeps = [&] { return std::count(lid->asked.begin(), lid->asked.end(), "requestSleep"); };
  check.settingSettled(false);
  check.settingSettled(true);
  check.settingSettled(true);
  EXPECT_EQ(sleeps(), 1);
  check.settingSettled(false);
  EXPECT_EQ(sleeps(), 2);
}

TEST_F(LidSleepCheckTest, OpenLidOrClosedDisplayModeIsLeftAloneAndAFailedSleepRequestLogged) {
  lid->closed = false;
  check.settingSettled(true);
  check.settingSettled(false);
  EXPECT_THAT(lid->asked, ElementsAre("lidIsClosed"));

  lid->asked.clear();
  lid->closed = true;
  lid->causesSleep = false;
  check.settingSettled(true);
  check.settingSettled(false);
  EXPECT_THAT(lid->asked, ElementsAre("lidIsClosed", "closingCausesSleep"));
  EXPECT_THAT(log, IsEmpty());

  lid->causesSleep = true;
  lid->sleepFails = true;
  check.settingSettled(true);
  EXPECT_NO_THROW(check.settingSettled(false));
  EXPECT_THAT(log, ElementsAre("lease ended with the lid closed and the setting back at 0, but sleep could not be "
                               "requested: IOPMSleepSystem returned 0xe00002c2"));
}

TEST_F(LidSleepCheckTest, UnreadableLidIsNeverGuessedClosed) {
  lid->closed.reset();
  check.settingSettled(true);
  check.settingSettled(false);
  lid->closed = true;
  lid->causesSleep.reset();
  check.settingSettled(true);
  check.settingSettled(false);
  EXPECT_EQ(std::count(lid->asked.begin(), lid->asked.end(), "requestSleep"), 0);
  EXPECT_THAT(log, ElementsAre("lease ended with the setting back at 0, but the lid state could not be read; sleep "
                               "was not requested",
                               "lease ended with the lid closed, but whether that causes sleep could not be read; "
                               "sleep was not requested"));
}

}  // namespace
}  // namespace wakeloft
