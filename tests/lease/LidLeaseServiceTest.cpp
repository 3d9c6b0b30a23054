#include "lease/LidLeaseService.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <thread>
#include <vector>

#include "base/MainThread.h"
#include "support/InMemoryLeaseService.h"
#include "support/MainLoopPump.h"

namespace wakeloft {
namespace {

using Clients = std::set<std::uint64_t>;
using Lines = std::vector<std::string>;

constexpr const char* notANumber = "The lease deadline is not a number.";
constexpr const char* turnedOff =
    "The sleep setting was turned off by something other than Wakeloft, and was left off.";

class LidLeaseServiceTest : public ::testing::Test, protected testing::InMemoryLeaseService {
 protected:
  // Holders 1 and 2, then something else writes 0.
  void turnedOffElsewhereWhileTwoHold() {
    service->renew(in(30), 1);
    service->renew(in(30), 2);
    setting->value = false;
  }
};

TEST_F(LidLeaseServiceTest, AGrantedRenewalHoldsOneSilentlyAndADeadlineAlreadyPassedEndsIt) {
  EXPECT_EQ(service->renew(in(30), 1), std::nullopt);
  EXPECT_TRUE(setting->value);
  EXPECT_TRUE(logLines.empty());
  EXPECT_EQ(service->renew(in(0), 1), std::nullopt);
  EXPECT_FALSE(setting->value);
}

TEST_F(LidLeaseServiceTest, AStatusRequestReportsTheSettingAndWhatIsLeftOfTheLeaseWithoutWriting) {
  using Setting = LidLeaseStatus::Setting;
  const auto status = [&] {
    return LidLeaseStatus::read(service->handle(LidLeaseRequest::status(), 9).value_or(""));
  };
  service->renew(in(20), 1);
  clocks.pass(5);
  const auto before = writes();
  EXPECT_EQ(status(), (LidLeaseStatus{Setting::on, "", 15.0}));
  clocks.pass(20);  // lapsed, not yet put back: no lease to speak of
  EXPECT_EQ(status(), (LidLeaseStatus{Setting::on, "", std::nullopt}));
  setting->readError = "pmset timed out";
  EXPECT_EQ(status(), (LidLeaseStatus{Setting::unreadable, "pmset timed out", std::nullopt}));
  EXPECT_EQ(writes(), before);
}

TEST_F(LidLeaseServiceTest, ADeadlineThatIsNotANumberIsRefusedAndEndsNothing) {
  ASSERT_EQ(service->renew(in(30), 1), std::nullopt);
  for (const double deadline : {std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity(),
                                std::numeric_limits<double>::quiet_NaN()}) {
    EXPECT_EQ(service->renew(deadline, 1), notANumber);
  }
  EXPECT_EQ(service->holders(), Clients{1});
  EXPECT_EQ(logLines, Lines(3, "lease refused: the deadline is not a number"));
}

TEST_F(LidLeaseServiceTest, AClientRenewingAgainLaterExtendsItsOwnTerm) {
  service->renew(in(30), 1);
  clocks.pass(20);
  service->renew(in(30), 1);
  clocks.pass(20);
  service->checkLease();
  EXPECT_TRUE(setting->value);
}

TEST_F(LidLeaseServiceTest, OneClientsRevocationLeavesAnothersLeaseToItsOwnEnd) {
  service->renew(in(20), 1);
  service->renew(in(30), 2);
  EXPECT_EQ(service->revoke(1), std::nullopt);
  clocks.pass(29.5);
  service->checkLease();
  EXPECT_TRUE(setting->value);
  clocks.pass(0.5);
  service->checkLease();
  EXPECT_FALSE(setting->value);
}

TEST_F(LidLeaseServiceTest, AFailedRestoreIsReportedToTheLastClientLoggedAndRetriedByTheCheck) {
  service->renew(in(30), 1);
  setting->writeError = "Resource busy";
  EXPECT_EQ(service->revoke(1),
            "The sleep setting could not be put back, and the helper is still trying: Resource busy");
  EXPECT_EQ(logLines, Lines{"lease ended, but disablesleep could not be put back and is being retried: Resource busy"});
  setting->writeError.reset();
  clocks.pass(0.25);
  service->checkLease();
  EXPECT_FALSE(setting->value);
}

TEST_F(LidLeaseServiceTest, ARevocationWhileAnotherClientHoldsATermHearsNothingOfAFailingWrite) {
  setting->writeError = "busy";
  service->renew(in(30), 1);
  service->renew(in(30), 2);
  EXPECT_EQ(service->revoke(1), std::nullopt);
}

TEST_F(LidLeaseServiceTest, TheHeldLeaseTakesTheLatestOfEachEndEvenFromDifferentClients) {
  const Date start = clocks.now();
  service->renew(in(30), 1);  // wall start+30, uptime 1030
  clocks.setWallClock(-60);
  clocks.pass(5);
  service->renew(in(30), 2);  // wall start-25, uptime 1035
  EXPECT_EQ(keeper->leaseExpiry(), start.adding(30));
  EXPECT_EQ(keeper->leaseUptimeExpiry(), 1035);
  EXPECT_EQ(service->earliestLapse(), (LidLeaseTerm{start.adding(-25), 1030}));
}

TEST_F(LidLeaseServiceTest, AZeroWrittenElsewhereEndsEveryTermAndIsToldToTheRenewingClient) {
  turnedOffElsewhereWhileTwoHold();
  EXPECT_EQ(service->renew(in(30), 1), turnedOff);
  EXPECT_EQ(logLines, Lines{"lease ended: disablesleep was set to 0 by something else; left at 0"});
  EXPECT_FALSE(setting->value);
  EXPECT_TRUE(service->holders().empty());
}

TEST_F(LidLeaseServiceTest, EveryOtherHolderIsToldOnceAtItsNextRenewalAndThenServedNormally) {
  turnedOffElsewhereWhileTwoHold();
  service->renew(in(30), 1);
  EXPECT_EQ(service->renew(in(30), 3), std::nullopt);  // held nothing: not told
  EXPECT_EQ(service->renew(in(30), 2), turnedOff);
  EXPECT_EQ(service->renew(in(30), 2), std::nullopt);
}

TEST_F(LidLeaseServiceTest, ARevocationClearsANoticeStillOwed) {
  turnedOffElsewhereWhileTwoHold();
  service->renew(in(30), 1);
  service->revoke(2);
  EXPECT_TRUE(service->yielded().empty());
}

TEST_F(LidLeaseServiceTest, ANewZeroOwesANoticeOnlyToTheClientsHoldingATermThen) {
  turnedOffElsewhereWhileTwoHold();
  service->renew(in(30), 1);  // owes client 2
  service->renew(in(30), 1);
  setting->value = false;
  service->renew(in(30), 1);
  EXPECT_TRUE(service->yielded().empty());  // client 2 has held nothing since
}

TEST_F(LidLeaseServiceTest, AOneWrittenElsewhereIsRefusedAndLeftAlone) {
  setting->value = true;
  const auto before = writes();
  EXPECT_EQ(service->renew(in(30), 1),
            "The sleep setting is already on, set by something other than Wakeloft, and was left as it is.");
  service->checkLease();
  EXPECT_EQ(logLines,
            Lines{"lease refused: disablesleep is already 1 and this helper did not write it; left as it is"});
  EXPECT_EQ(writes(), before);
}

TEST_F(LidLeaseServiceTest, AnUnreadableSettingIsRefusedAndNotWritten) {
  setting->readError = "pmset did not answer in time";
  const auto before = writes();
  EXPECT_EQ(service->renew(in(30), 1),
            "The sleep setting could not be read, so it was left as it is: pmset did not answer in time");
  EXPECT_EQ(logLines, Lines{"lease refused: disablesleep could not be read, so it was not written: "
                            "pmset did not answer in time"});
  EXPECT_EQ(writes(), before);
}

TEST_F(LidLeaseServiceTest, AFailedWriteKeepsTheTermAndIsRetriedAtTheSpacing) {
  setting->writeError = "Operation not permitted";
  EXPECT_EQ(service->renew(in(30), 1), "The sleep setting could not be written: Operation not permitted");
  EXPECT_EQ(logLines,
            Lines{"lease refused: disablesleep could not be written and is being retried: Operation not permitted"});
  EXPECT_EQ(service->nextRetryUptime(), 1000.25);
  const auto before = writes();
  clocks.pass(0.125);
  service->checkLease();
  EXPECT_EQ(writes(), before);

  setting->writeError.reset();
  clocks.pass(0.125);
  service->checkLease();
  EXPECT_TRUE(setting->value);
}

// As the XPC listener's connection threads call it.
TEST_F(LidLeaseServiceTest, RequestsFromOtherThreadsAreAnsweredOnTheMainThreadInArrivalOrder) {
  auto replies = std::make_shared<std::vector<LidLeaseService::Reply>>();
  auto requests = service->requests();
  const double deadline = in(30);
  std::thread([&] {
    for (const double until : {deadline, std::numeric_limits<double>::quiet_NaN()}) {
      requests(1, LidLeaseRequest::renew(until), [replies](LidLeaseService::Reply reply) {
        if (isMainThread()) replies->push_back(std::move(reply));
      });
    }
  }).join();
  ASSERT_TRUE(testing::pumpMainLoopUntil([&] { return replies->size() == 2; }, 5));
  EXPECT_EQ(*replies, (std::vector<LidLeaseService::Reply>{std::nullopt, notANumber}));
}

TEST_F(LidLeaseServiceTest, RequestsQueuedForAServiceThatIsGoneAreDropped) {
  auto gone = std::make_unique<LidLeaseService>(keeper, nullptr);
  auto replied = std::make_shared<bool>(false);
  gone->requests()(1, LidLeaseRequest::renew(in(30)), [replied](LidLeaseService::Reply) { *replied = true; });
  gone.reset();
  testing::drainMainLoop();
  EXPECT_FALSE(*replied);
}

}  // namespace
}  // namespace wakeloft
