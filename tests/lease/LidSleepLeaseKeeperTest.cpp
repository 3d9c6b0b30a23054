#include "lease/LidSleepLeaseKeeper.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>

#include "lease/LidSleepLease.h"
#include "support/InMemorySleepSetting.h"
#include "support/ManualClocks.h"

namespace wakeloft {
namespace {

using testing::InMemorySleepSetting;
using testing::ManualMachineClocks;
using Standing = SleepSettingStanding;

class LidSleepLeaseKeeperTest : public ::testing::Test {
 protected:
  LidSleepLeaseKeeper& makeKeeper() {
    keeper = std::make_unique<LidSleepLeaseKeeper>(setting, clocks.dates, clocks.uptime);
    return *keeper;
  }
  Date in(double seconds) const { return clocks.now().adding(seconds); }
  std::size_t writes() const { return setting->writeAttempts.size(); }

  ManualMachineClocks clocks;
  std::shared_ptr<InMemorySleepSetting> setting = std::make_shared<InMemorySleepSetting>();
  std::unique_ptr<LidSleepLeaseKeeper> keeper;
};

TEST_F(LidSleepLeaseKeeperTest, StartingPutsALeftoverOneBackToZeroOrKeepsAFailedWriteForTheChecksToRetry) {
  setting->value = true;
  auto& k = makeKeeper();
  EXPECT_FALSE(setting->value);
  EXPECT_EQ(setting->writeAttempts, std::vector<bool>{false});
  EXPECT_FALSE(k.isSleepDisabled());
  EXPECT_EQ(k.lastError(), nullptr);
  EXPECT_EQ(k.leaseExpiry(), std::nullopt);

  setting->value = true;
  setting->writeError = "Operation not permitted";
  auto& failing = makeKeeper();
  EXPECT_EQ(failing.lastErrorDescription(), "Operation not permitted");
  EXPECT_NE(failing.lastError(), nullptr);
  EXPECT_FALSE(failing.isSleepDisabled());
  // Nothing written yet, so there is nothing to compare with and no read.
  EXPECT_EQ(failing.readStanding(), Standing::asWritten());
  EXPECT_EQ(setting->readCount, 0);
  EXPECT_EQ(failing.nextRetryUptime(), 1000.25);

  setting->writeError.reset();
  clocks.pass(0.25);
  failing.checkLease();
  EXPECT_FALSE(setting->value);
  EXPECT_EQ(failing.lastError(), nullptr);
  EXPECT_EQ(failing.nextRetryUptime(), std::nullopt);
}

TEST_F(LidSleepLeaseKeeperTest, GrantsAtMostThirtySecondsOnlyForAnEndAheadAndATermLapsesAtEitherEnd) {
  auto& k = makeKeeper();
  EXPECT_EQ(k.term(in(0)), std::nullopt);
  EXPECT_EQ(k.term(in(-1)), std::nullopt);
  EXPECT_EQ(k.term(Date{std::numeric_limits<double>::quiet_NaN()}), std::nullopt);
  EXPECT_EQ(k.term(in(10)), (LidLeaseTerm{in(10), 1010}));
  EXPECT_EQ(k.term(in(3600)), (LidLeaseTerm{in(30), 1030}));
  EXPECT_EQ(k.term(in(3600))->expiry, LidSleepLease::expiry(clocks.now()));

  const LidLeaseTerm term{in(10), 1010};
  clocks.pass(9.5);
  EXPECT_FALSE(k.hasLapsed(term));
  clocks.setWallClock(0.5);  // wall clock at the end, uptime not yet
  EXPECT_TRUE(k.hasLapsed(term));
  clocks.setWallClock(-60);  // uptime at the end, wall clock far before
  clocks.uptime->current = 1010;
  EXPECT_TRUE(k.hasLapsed(term));
}

TEST_F(LidSleepLeaseKeeperTest, RenewingHoldsOneWritingOnlyWhenNeededAndAnEndOfNowPutsZeroBack) {
  auto& k = makeKeeper();
  k.renew(in(3600));
  EXPECT_TRUE(setting->value);
  EXPECT_TRUE(k.isSleepDisabled());
  EXPECT_EQ(k.leaseExpiry(), in(30));
  EXPECT_EQ(k.leaseUptimeExpiry(), 1030);

  k.renew(in(0));
  EXPECT_FALSE(setting->value);
  EXPECT_FALSE(k.isSleepDisabled());
  EXPECT_EQ(k.leaseExpiry(), std::nullopt);
  EXPECT_EQ(k.leaseUptimeExpiry(), std::nullopt);

  k.renew(in(30));
  const auto before = writes();
  clocks.pass(10);
  k.checkLease();
  k.renew(in(30));  // same value: no write needed
  EXPECT_EQ(writes(), before);
  EXPECT_EQ(k.leaseExpiry(), in(30));
}

TEST_F(LidSleepLeaseKeeperTest, AClockSetBackDoesNotStretchTheLeaseButASleepPastTheEndEndsItOnTheFirstCheck) {
  auto& k = makeKeeper();
  k.renew(in(3600));
  clocks.setWallClock(-3600);
  clocks.pass(29.75);
  k.checkLease();
  EXPECT_TRUE(setting->value);
  clocks.pass(0.25);
  k.checkLease();
  EXPECT_FALSE(setting->value);
  EXPECT_EQ(k.leaseExpiry(), std::nullopt);

  k.renew(in(30));
  clocks.sleep(3600);  // uptime stands still, the wall clock does not
  k.checkLease();
  EXPECT_FALSE(setting->value);
  EXPECT_FALSE(k.isSleepDisabled());
}

TEST_F(LidSleepLeaseKeeperTest, AFailingWriteIsRetriedNoMoreOftenThanEveryQuarterSecondButANewWantedValueAtOnce) {
  clocks.uptime->current = 99.5;
  auto& k = makeKeeper();
  clocks.pass(0.5);  // uptime 100.0
  setting->writeError = "busy";
  k.renew(in(30));
  EXPECT_EQ(writes(), 2u);
  EXPECT_EQ(k.lastErrorDescription(), "busy");
  EXPECT_FALSE(k.isSleepDisabled());
  EXPECT_EQ(k.leaseExpiry(), in(30));  // the lease is kept while the write fails
  EXPECT_DOUBLE_EQ(*k.nextRetryUptime(), 100.25);

  clocks.pass(0.1);
  k.checkLease();
  k.renew(in(30));
  EXPECT_EQ(writes(), 2u);

  clocks.pass(0.2);  // 100.3
  k.checkLease();
  EXPECT_EQ(writes(), 3u);
  EXPECT_DOUBLE_EQ(*k.nextRetryUptime(), 100.55);

  setting->writeError.reset();
  clocks.pass(0.3);
  k.checkLease();
  EXPECT_TRUE(setting->value);
  EXPECT_TRUE(k.isSleepDisabled());
  EXPECT_EQ(k.lastError(), nullptr);

  k.renew(in(30));
  setting->writeError = "busy";
  k.revoke();
  EXPECT_EQ(setting->writeAttempts.back(), false);
  setting->writeError.reset();
  k.renew(in(30));  // at once, although the restore failed no time ago
  EXPECT_EQ(setting->writeAttempts.back(), true);
  EXPECT_TRUE(setting->value);
  EXPECT_EQ(k.lastError(), nullptr);
}

TEST_F(LidSleepLeaseKeeperTest, AFailedRestoreIsRetriedWithoutALeaseAndNothingReadMeanwhile) {
  auto& k = makeKeeper();
  k.renew(in(30));
  setting->writeError = "busy";
  k.revoke();
  EXPECT_TRUE(setting->value);
  EXPECT_EQ(k.leaseExpiry(), std::nullopt);
  setting->value = false;  // would look like a change elsewhere if read
  EXPECT_EQ(k.readStanding(), Standing::asWritten());
  EXPECT_EQ(setting->readCount, 0);

  setting->value = true;
  setting->writeError.reset();
  clocks.pass(0.25);
  k.checkLease();
  EXPECT_FALSE(setting->value);
  EXPECT_EQ(k.lastError(), nullptr);
}

TEST_F(LidSleepLeaseKeeperTest, AZeroWrittenElsewhereIsAdoptedOnceAOneNeverTouchedAndAFailedReadReportedOnlyWhenNotHoldingOne) {
  auto& k = makeKeeper();
  k.renew(in(30));
  setting->value = false;
  EXPECT_EQ(k.readStanding(), Standing::offElsewhere());
  EXPECT_EQ(k.leaseExpiry(), std::nullopt);
  EXPECT_EQ(k.leaseUptimeExpiry(), std::nullopt);
  EXPECT_FALSE(k.isSleepDisabled());
  EXPECT_EQ(k.readStanding(), Standing::asWritten());

  // Adopted: neither the 0 nor the old 1 is written again.
  const auto before = writes();
  k.checkLease();
  k.revoke();
  EXPECT_EQ(writes(), before);
  EXPECT_FALSE(setting->value);

  setting->value = true;
  EXPECT_EQ(k.readStanding(), Standing::onElsewhere());
  EXPECT_EQ(k.readStanding(), Standing::onElsewhere());
  k.checkLease();
  EXPECT_EQ(writes(), before);
  EXPECT_TRUE(setting->value);

  setting->readError = "pmset did not answer";
  EXPECT_EQ(k.readStanding(), Standing::unread("pmset did not answer"));

  setting->readError.reset();
  k.renew(in(30));
  setting->readError = "pmset did not answer";
  EXPECT_EQ(k.readStanding(), Standing::asWritten());
  EXPECT_EQ(k.leaseExpiry(), in(30));
  EXPECT_TRUE(setting->value);
}

class RevokeBeforeExitTest : public LidSleepLeaseKeeperTest {
 protected:
  bool revokeBeforeExit(int stopAfterChecks, int succeedAfterPauses = -1) {
    return keeper->revokeBeforeExit(
        [&] { return ++stopChecks > stopAfterChecks; },
        [&] {
          ++pauses;
          clocks.pass(0.5);
          if (pauses == succeedAfterPauses) setting->writeError.reset();
        });
  }

  int stopChecks = 0;
  int pauses = 0;
};

TEST_F(RevokeBeforeExitTest, AFirstWriteThatSucceedsEndsAtOnceOtherwiseItKeepsTryingUntilOneDoesOrStopAnswersFirst) {
  makeKeeper().renew(in(30));
  EXPECT_TRUE(revokeBeforeExit(0));
  EXPECT_FALSE(setting->value);
  EXPECT_EQ(keeper->leaseExpiry(), std::nullopt);
  EXPECT_EQ(stopChecks, 0);
  EXPECT_EQ(pauses, 0);

  auto& k = makeKeeper();
  k.renew(in(30));
  setting->writeError = "busy";
  k.revoke();  // failed just now
  setting->writeError.reset();
  EXPECT_TRUE(revokeBeforeExit(0));
  EXPECT_FALSE(setting->value);
  EXPECT_EQ(pauses, 0);

  makeKeeper().renew(in(30));
  setting->writeError = "busy";
  stopChecks = 0;
  EXPECT_FALSE(revokeBeforeExit(0));
  EXPECT_EQ(pauses, 0);
  EXPECT_TRUE(setting->value);
  EXPECT_EQ(keeper->leaseExpiry(), std::nullopt);

  // Stop answering late: every try until then has failed.
  stopChecks = 0;
  EXPECT_FALSE(revokeBeforeExit(3));
  EXPECT_EQ(pauses, 3);
  EXPECT_EQ(keeper->lastErrorDescription(), "busy");

  setting->writeError.reset();
  stopChecks = pauses = 0;
  makeKeeper().renew(in(30));
  setting->writeError = "busy";
  const auto before = setting->writeAttempts.size();
  EXPECT_TRUE(revokeBeforeExit(10, 2));
  EXPECT_EQ(pauses, 2);
  EXPECT_EQ(stopChecks, 2);
  EXPECT_EQ(setting->writeAttempts.size(), before + 3);
  EXPECT_FALSE(setting->value);
  EXPECT_FALSE(keeper->isSleepDisabled());
  EXPECT_EQ(keeper->lastError(), nullptr);
}

}  // namespace
}  // namespace wakeloft
