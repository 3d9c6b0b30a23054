#include "lease/LidSleepLeaseKeeper.h"

#include <gtest/gtest.h>

#include <limits>

#include "support/InMemoryLeaseService.h"

namespace wakeloft {
namespace {

using Standing = SleepSettingStanding;

class LidSleepLeaseKeeperTest : public ::testing::Test, protected testing::InMemoryLeaseService {
 protected:
  Date after(double seconds) const { return clocks.now().adding(seconds); }
};

TEST_F(LidSleepLeaseKeeperTest, ATermIsGrantedOnlyForAnEndAheadAndForAtMostThirtySeconds) {
  for (const Date end : {after(0), after(-1), Date{std::numeric_limits<double>::quiet_NaN()}}) {
    EXPECT_EQ(keeper->term(end), std::nullopt) << end.secondsSince1970;
  }
  EXPECT_EQ(keeper->term(after(10)), (LidLeaseTerm{after(10), 1010}));
  EXPECT_EQ(keeper->term(after(3600)), (LidLeaseTerm{after(30), 1030}));
}

TEST_F(LidSleepLeaseKeeperTest, ATermLapsesAtWhicheverOfItsTwoEndsComesFirst) {
  const LidLeaseTerm term{after(10), 1010};
  clocks.pass(9.5);
  EXPECT_FALSE(keeper->hasLapsed(term));
  clocks.setWallClock(0.5);  // at the wall end, uptime not yet
  EXPECT_TRUE(keeper->hasLapsed(term));
  clocks.setWallClock(-60);
  clocks.uptime->current = 1010;  // at the uptime end, the wall end far off
  EXPECT_TRUE(keeper->hasLapsed(term));
}

TEST_F(LidSleepLeaseKeeperTest, TheCheckEndsALeaseAtItsUptimeEndWhenTheClockWasSetBack) {
  keeper->renew(after(3600));
  clocks.setWallClock(-3600);
  clocks.pass(29.75);
  keeper->checkLease();
  EXPECT_TRUE(setting->value);
  clocks.pass(0.25);
  keeper->checkLease();
  EXPECT_FALSE(setting->value);
}

TEST_F(LidSleepLeaseKeeperTest, ANewWantedValueIsWrittenAtOnceAfterAFailureOfTheOther) {
  keeper->renew(after(30));
  setting->writeError = "busy";
  keeper->revoke();
  setting->writeError.reset();
  keeper->renew(after(30));
  ASSERT_FALSE(setting->writeAttempts.empty());
  EXPECT_EQ(setting->writeAttempts.back(), true);
}

TEST_F(LidSleepLeaseKeeperTest, AFailedRestoreReadsNothingAndIsRetriedWithoutALease) {
  keeper->renew(after(30));
  setting->writeError = "busy";
  keeper->revoke();
  setting->value = false;  // would look like a change elsewhere if read
  EXPECT_EQ(keeper->readStanding(), Standing::asWritten());
  EXPECT_EQ(setting->readCount, 0);

  setting->value = true;
  setting->writeError.reset();
  clocks.pass(0.25);
  keeper->checkLease();
  EXPECT_FALSE(setting->value);
}

TEST_F(LidSleepLeaseKeeperTest, AZeroWrittenElsewhereIsReportedOnceAndNeverWrittenAgain) {
  keeper->renew(after(30));
  setting->value = false;
  EXPECT_EQ(keeper->readStanding(), Standing::offElsewhere());
  EXPECT_EQ(keeper->readStanding(), Standing::asWritten());
  const auto before = writes();
  keeper->revoke();
  EXPECT_EQ(writes(), before);
}

TEST_F(LidSleepLeaseKeeperTest, AFailedReadWhileHoldingOneKeepsTheLease) {
  keeper->renew(after(30));
  setting->readError = "pmset did not answer";
  EXPECT_EQ(keeper->readStanding(), Standing::asWritten());
  EXPECT_EQ(keeper->leaseExpiry(), after(30));
}

TEST_F(LidSleepLeaseKeeperTest, RevokingBeforeExitTriesAtOnceDespiteAFailureJustNow) {
  keeper->renew(after(30));
  setting->writeError = "busy";
  keeper->revoke();
  setting->writeError.reset();
  int pauses = 0;
  EXPECT_TRUE(keeper->revokeBeforeExit([] { return true; }, [&] { ++pauses; }));
  EXPECT_EQ(pauses, 0);
}

}  // namespace
}  // namespace wakeloft
