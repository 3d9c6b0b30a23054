#include "lease/LidSleepLeaseKeeper.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>

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

TEST_F(LidSleepLeaseKeeperTest, StartingPutsAOneLeftByAnEarlierHelperBackToZero) {
  setting->value = true;
  auto& k = makeKeeper();
  EXPECT_FALSE(setting->value);
  EXPECT_FALSE(k.isSleepDisabled());
  EXPECT_EQ(k.leaseExpiry(), std::nullopt);
}

TEST_F(LidSleepLeaseKeeperTest, AFailedFirstWriteReadsNothingAndTheCheckRetriesItAfterTheSpacing) {
  setting->value = true;
  setting->writeError = "Operation not permitted";
  auto& k = makeKeeper();
  EXPECT_EQ(k.lastErrorDescription(), "Operation not permitted");
  EXPECT_EQ(k.readStanding(), Standing::asWritten());  // nothing written yet to compare with
  EXPECT_EQ(setting->readCount, 0);
  EXPECT_EQ(k.nextRetryUptime(), 1000.25);

  setting->writeError.reset();
  clocks.pass(0.25);
  k.checkLease();
  EXPECT_FALSE(setting->value);
  EXPECT_EQ(k.lastError(), nullptr);
  EXPECT_EQ(k.nextRetryUptime(), std::nullopt);
}

TEST_F(LidSleepLeaseKeeperTest, ATermIsGrantedOnlyForAnEndAheadAndForAtMostThirtySeconds) {
  auto& k = makeKeeper();
  for (const Date end : {in(0), in(-1), Date{std::numeric_limits<double>::quiet_NaN()}}) {
    EXPECT_EQ(k.term(end), std::nullopt) << end.secondsSince1970;
  }
  EXPECT_EQ(k.term(in(10)), (LidLeaseTerm{in(10), 1010}));
  EXPECT_EQ(k.term(in(3600)), (LidLeaseTerm{in(30), 1030}));
}

TEST_F(LidSleepLeaseKeeperTest, ATermLapsesAtWhicheverOfItsTwoEndsComesFirst) {
  auto& k = makeKeeper();
  const LidLeaseTerm term{in(10), 1010};
  clocks.pass(9.5);
  EXPECT_FALSE(k.hasLapsed(term));
  clocks.setWallClock(0.5);  // at the wall end, uptime not yet
  EXPECT_TRUE(k.hasLapsed(term));
  clocks.setWallClock(-60);
  clocks.uptime->current = 1010;  // at the uptime end, the wall end far off
  EXPECT_TRUE(k.hasLapsed(term));
}

TEST_F(LidSleepLeaseKeeperTest, RenewingHoldsOneAndWritesOnlyWhenTheValueChanges) {
  auto& k = makeKeeper();
  k.renew(in(3600));
  EXPECT_TRUE(setting->value);
  EXPECT_TRUE(k.isSleepDisabled());
  EXPECT_EQ(k.leaseUptimeExpiry(), 1030);
  const auto before = writes();
  clocks.pass(10);
  k.checkLease();
  k.renew(in(30));
  EXPECT_EQ(writes(), before);
  EXPECT_EQ(k.leaseExpiry(), in(30));
}

TEST_F(LidSleepLeaseKeeperTest, RenewingWithAnEndOfNowDropsTheLeaseAndWritesZero) {
  auto& k = makeKeeper();
  k.renew(in(30));
  k.renew(in(0));
  EXPECT_FALSE(setting->value);
  EXPECT_EQ(k.leaseExpiry(), std::nullopt);
  EXPECT_EQ(k.leaseUptimeExpiry(), std::nullopt);
}

TEST_F(LidSleepLeaseKeeperTest, TheCheckEndsALeaseThirtySecondsOfUptimeAfterItsGrantWhenTheClockWasSetBack) {
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
}

TEST_F(LidSleepLeaseKeeperTest, ANewWantedValueIsWrittenAtOnceAfterAFailureOfTheOther) {
  auto& k = makeKeeper();
  k.renew(in(30));
  setting->writeError = "busy";
  k.revoke();
  setting->writeError.reset();
  k.renew(in(30));
  ASSERT_FALSE(setting->writeAttempts.empty());
  EXPECT_EQ(setting->writeAttempts.back(), true);
  EXPECT_EQ(k.lastError(), nullptr);
}

TEST_F(LidSleepLeaseKeeperTest, AFailedRestoreReadsNothingAndIsRetriedWithoutALease) {
  auto& k = makeKeeper();
  k.renew(in(30));
  setting->writeError = "busy";
  k.revoke();
  EXPECT_EQ(k.leaseExpiry(), std::nullopt);
  setting->value = false;  // would look like a change elsewhere if read
  EXPECT_EQ(k.readStanding(), Standing::asWritten());
  EXPECT_EQ(setting->readCount, 0);

  setting->value = true;
  setting->writeError.reset();
  clocks.pass(0.25);
  k.checkLease();
  EXPECT_FALSE(setting->value);
}

TEST_F(LidSleepLeaseKeeperTest, AZeroWrittenElsewhereEndsTheLeaseIsReportedOnceAndIsNeverWrittenAgain) {
  auto& k = makeKeeper();
  k.renew(in(30));
  setting->value = false;
  EXPECT_EQ(k.readStanding(), Standing::offElsewhere());
  EXPECT_EQ(k.leaseExpiry(), std::nullopt);
  EXPECT_EQ(k.readStanding(), Standing::asWritten());
  const auto before = writes();
  k.checkLease();
  k.revoke();
  EXPECT_EQ(writes(), before);
}

TEST_F(LidSleepLeaseKeeperTest, AFailedReadIsReportedUnlessTheKeeperHoldsOneItself) {
  auto& k = makeKeeper();
  setting->readError = "pmset did not answer";
  EXPECT_EQ(k.readStanding(), Standing::unread("pmset did not answer"));
  k.renew(in(30));
  EXPECT_EQ(k.readStanding(), Standing::asWritten());
  EXPECT_EQ(k.leaseExpiry(), in(30));
}

class RevokeBeforeExitTest : public LidSleepLeaseKeeperTest {
 protected:
  void SetUp() override {
    makeKeeper().renew(in(30));
    setting->writeError = "busy";
  }
  // Stop answers true after `stopAfter` questions; the write works again
  // after `succeedAfter` pauses.
  bool revokeBeforeExit(int stopAfter, int succeedAfter = -1) {
    return keeper->revokeBeforeExit([&] { return ++stopChecks > stopAfter; },
                                    [&] {
                                      if (++pauses == succeedAfter) setting->writeError.reset();
                                    });
  }

  int stopChecks = 0;
  int pauses = 0;
};

TEST_F(RevokeBeforeExitTest, TheFirstTryIgnoresTheSpacingAndASuccessEndsAtOnce) {
  keeper->revoke();  // failed just now
  setting->writeError.reset();
  EXPECT_TRUE(revokeBeforeExit(0));
  EXPECT_FALSE(setting->value);
  EXPECT_EQ(pauses, 0);
}

TEST_F(RevokeBeforeExitTest, KeepsTryingAfterEachPauseUntilAWriteSucceeds) {
  const auto before = writes();
  EXPECT_TRUE(revokeBeforeExit(10, 2));
  EXPECT_EQ(pauses, 2);
  EXPECT_EQ(writes(), before + 3);
  EXPECT_FALSE(setting->value);
  EXPECT_EQ(keeper->lastError(), nullptr);
}

TEST_F(RevokeBeforeExitTest, GivesUpWithTheSettingStillOneWhenStopAnswersFirst) {
  EXPECT_FALSE(revokeBeforeExit(3));
  EXPECT_EQ(pauses, 3);
  EXPECT_TRUE(setting->value);
  EXPECT_EQ(keeper->leaseExpiry(), std::nullopt);
}

}  // namespace
}  // namespace wakeloft
