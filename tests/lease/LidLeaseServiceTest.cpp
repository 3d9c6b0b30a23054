#include "lease/LidLeaseService.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "base/MainThread.h"
#include "support/InMemorySleepSetting.h"
#include "support/MainLoopPump.h"
#include "support/ManualClocks.h"

namespace wakeloft {
namespace {

using testing::InMemorySleepSetting;
using testing::ManualMachineClocks;
using Clients = std::set<std::uint64_t>;

constexpr const char* notANumber = "The lease deadline is not a number.";
constexpr const char* turnedOff =
    "The sleep setting was turned off by something other than Wakeloft, and was left off.";

class LidLeaseServiceTest : public ::testing::Test {
 protected:
  // The deadline a client sends for `seconds` from now.
  double in(double seconds) const { return clocks.now().adding(seconds).secondsSince1970; }
  std::size_t writes() const { return setting->writeAttempts.size(); }
  // Holders 1 and 2, then something else writes 0.
  void turnedOffElsewhereWhileTwoHold() {
    service.renew(in(30), 1);
    service.renew(in(30), 2);
    setting->value = false;
  }

  ManualMachineClocks clocks;
  std::shared_ptr<InMemorySleepSetting> setting = std::make_shared<InMemorySleepSetting>();
  std::shared_ptr<LidSleepLeaseKeeper> keeper =
      std::make_shared<LidSleepLeaseKeeper>(setting, clocks.dates, clocks.uptime);
  std::vector<std::string> logLines;
  LidLeaseService service{keeper, [this](const std::string& line) { logLines.push_back(line); }};
};

TEST_F(LidLeaseServiceTest, AGrantedRenewalHoldsOneSilentlyAndADeadlineAlreadyPassedEndsIt) {
  EXPECT_EQ(service.renew(in(30), 1), std::nullopt);
  EXPECT_TRUE(setting->value);
  EXPECT_EQ(service.holders(), Clients{1});
  EXPECT_TRUE(logLines.empty());

  EXPECT_EQ(service.renew(in(0), 1), std::nullopt);
  EXPECT_FALSE(setting->value);
  EXPECT_TRUE(service.holders().empty());
}

TEST_F(LidLeaseServiceTest, AStatusRequestReportsTheSettingAndWhatIsLeftOfTheLeaseWithoutWriting) {
  using Setting = LidLeaseStatus::Setting;
  const auto status = [&] { return LidLeaseStatus::read(*service.handle(LidLeaseRequest::status(), 9)); };
  EXPECT_EQ(status(), (LidLeaseStatus{Setting::off, "", std::nullopt}));
  service.renew(in(20), 1);
  clocks.pass(5);
  const auto before = writes();
  EXPECT_EQ(status(), (LidLeaseStatus{Setting::on, "", 15.0}));
  clocks.pass(20);  // lapsed, not yet put back: no lease to speak of
  EXPECT_EQ(status(), (LidLeaseStatus{Setting::on, "", std::nullopt}));
  setting->readError = "pmset timed out";
  EXPECT_EQ(status(), (LidLeaseStatus{Setting::unreadable, "pmset timed out", std::nullopt}));
  EXPECT_EQ(writes(), before);
  EXPECT_EQ(service.holders(), Clients{1});
}

TEST_F(LidLeaseServiceTest, ADeadlineThatIsNotANumberIsRefusedWithoutTouchingTheSetting) {
  ASSERT_EQ(service.renew(in(30), 1), std::nullopt);
  const auto reads = setting->readCount;
  const auto before = writes();
  for (const double deadline : {std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity(),
                                std::numeric_limits<double>::quiet_NaN()}) {
    EXPECT_EQ(service.renew(deadline, 1), notANumber);
  }
  EXPECT_EQ(setting->readCount, reads);
  EXPECT_EQ(writes(), before);
  EXPECT_EQ(service.holders(), Clients{1});
  EXPECT_EQ(logLines, std::vector<std::string>(3, "lease refused: the deadline is not a number"));
}

TEST_F(LidLeaseServiceTest, AClientRenewingAgainLaterExtendsItsOwnTerm) {
  service.renew(in(30), 1);
  clocks.pass(20);
  service.renew(in(30), 1);
  clocks.pass(20);
  service.checkLease();
  EXPECT_TRUE(setting->value);
  EXPECT_EQ(service.holders(), Clients{1});
}

TEST_F(LidLeaseServiceTest, OneClientsRevocationLeavesAnothersLeaseToItsOwnEnd) {
  service.renew(in(20), 1);
  service.renew(in(30), 2);
  EXPECT_EQ(service.revoke(1), std::nullopt);
  EXPECT_EQ(service.holders(), Clients{2});
  clocks.pass(29.5);
  service.checkLease();
  EXPECT_TRUE(setting->value);
  clocks.pass(0.5);
  service.checkLease();
  EXPECT_FALSE(setting->value);
}

TEST_F(LidLeaseServiceTest, AFailedRestoreIsReportedToTheLastClientLoggedAndRetriedByTheCheck) {
  service.renew(in(30), 1);
  setting->writeError = "Resource busy";
  EXPECT_EQ(service.revoke(1),
            "The sleep setting could not be put back, and the helper is still trying: Resource busy");
  EXPECT_EQ(logLines,
            std::vector<std::string>{"lease ended, but disablesleep could not be put back and is being retried: "
                                     "Resource busy"});
  setting->writeError.reset();
  clocks.pass(0.25);
  service.checkLease();
  EXPECT_FALSE(setting->value);
}

TEST_F(LidLeaseServiceTest, ARevocationWhileAnotherClientHoldsATermHearsNothingOfAFailingWrite) {
  setting->writeError = "busy";
  service.renew(in(30), 1);
  service.renew(in(30), 2);
  EXPECT_EQ(service.revoke(1), std::nullopt);
}

TEST_F(LidLeaseServiceTest, TheHeldLeaseTakesTheLatestOfEachEndEvenFromDifferentClients) {
  const Date start = clocks.now();
  service.renew(in(30), 1);  // wall start+30, uptime 1030
  clocks.setWallClock(-60);
  clocks.pass(5);
  service.renew(in(30), 2);  // wall start-25, uptime 1035
  EXPECT_EQ(keeper->leaseExpiry(), start.adding(30));
  EXPECT_EQ(keeper->leaseUptimeExpiry(), 1035);
  EXPECT_EQ(service.earliestLapse(), (LidLeaseTerm{start.adding(-25), 1030}));
}

TEST_F(LidLeaseServiceTest, AClockSetBackDoesNotStretchATermPastItsUptimeEnd) {
  service.renew(in(30), 1);
  clocks.setWallClock(-60);
  clocks.pass(29.75);
  service.checkLease();
  EXPECT_TRUE(setting->value);
  clocks.pass(0.25);
  service.checkLease();
  EXPECT_FALSE(setting->value);
  EXPECT_EQ(service.earliestLapse(), std::nullopt);
}

TEST_F(LidLeaseServiceTest, AZeroWrittenElsewhereEndsEveryTermAndIsToldToTheRenewingClient) {
  turnedOffElsewhereWhileTwoHold();
  EXPECT_EQ(service.renew(in(30), 1), turnedOff);
  EXPECT_EQ(logLines, std::vector<std::string>{"lease ended: disablesleep was set to 0 by something else; left at 0"});
  EXPECT_FALSE(setting->value);
  EXPECT_TRUE(service.holders().empty());
}

TEST_F(LidLeaseServiceTest, EveryOtherHolderIsToldOnceAtItsNextRenewalAndThenServedNormally) {
  turnedOffElsewhereWhileTwoHold();
  service.renew(in(30), 1);
  EXPECT_EQ(service.renew(in(30), 3), std::nullopt);  // held nothing: not told
  EXPECT_EQ(service.renew(in(30), 2), turnedOff);
  EXPECT_EQ(service.renew(in(30), 2), std::nullopt);
  EXPECT_EQ(service.holders(), (Clients{2, 3}));
  EXPECT_EQ(logLines.size(), 1u);
}

TEST_F(LidLeaseServiceTest, ARevocationClearsANoticeStillOwed) {
  turnedOffElsewhereWhileTwoHold();
  service.renew(in(30), 1);
  EXPECT_EQ(service.revoke(2), std::nullopt);
  EXPECT_TRUE(service.yielded().empty());
}

TEST_F(LidLeaseServiceTest, ANewZeroOwesANoticeOnlyToTheClientsHoldingATermThen) {
  turnedOffElsewhereWhileTwoHold();
  service.renew(in(30), 1);  // owes client 2
  service.renew(in(30), 1);
  setting->value = false;
  EXPECT_EQ(service.renew(in(30), 1), turnedOff);
  EXPECT_TRUE(service.yielded().empty());  // client 2 has held nothing since
}

TEST_F(LidLeaseServiceTest, AOneWrittenElsewhereIsRefusedEveryTimeAndLeftAlone) {
  setting->value = true;
  const auto before = writes();
  for (const std::uint64_t client : {1, 2}) {
    EXPECT_EQ(service.renew(in(30), client),
              "The sleep setting is already on, set by something other than Wakeloft, and was left as it is.");
  }
  service.checkLease();
  EXPECT_EQ(logLines, std::vector<std::string>(
                          2, "lease refused: disablesleep is already 1 and this helper did not write it; left as it is"));
  EXPECT_TRUE(service.holders().empty());
  EXPECT_EQ(writes(), before);
}

TEST_F(LidLeaseServiceTest, AnUnreadableSettingIsRefusedAndNotWritten) {
  setting->readError = "pmset did not answer in time";
  const auto before = writes();
  EXPECT_EQ(service.renew(in(30), 1),
            "The sleep setting could not be read, so it was left as it is: pmset did not answer in time");
  ASSERT_FALSE(logLines.empty());
  EXPECT_EQ(logLines.back(),
            "lease refused: disablesleep could not be read, so it was not written: pmset did not answer in time");
  EXPECT_TRUE(service.holders().empty());
  EXPECT_EQ(writes(), before);
}

TEST_F(LidLeaseServiceTest, AFailedWriteKeepsTheTermAndIsRetriedAtTheSpacing) {
  setting->writeError = "Operation not permitted";
  EXPECT_EQ(service.renew(in(30), 1), "The sleep setting could not be written: Operation not permitted");
  EXPECT_EQ(logLines, std::vector<std::string>{"lease refused: disablesleep could not be written and is being "
                                               "retried: Operation not permitted"});
  EXPECT_EQ(service.holders(), Clients{1});
  EXPECT_EQ(service.nextRetryUptime(), 1000.25);
  const auto before = writes();
  clocks.pass(0.125);
  service.checkLease();
  EXPECT_EQ(writes(), before);

  setting->writeError.reset();
  clocks.pass(0.125);
  service.checkLease();
  EXPECT_TRUE(setting->value);
  EXPECT_EQ(service.nextRetryUptime(), std::nullopt);
}

// Through the real main loop, as the listener's connections use it.
TEST_F(LidLeaseServiceTest, RequestsFromOtherThreadsAreAnsweredOnTheMainThreadInArrivalOrder) {
  struct Answers {
    std::mutex lock;
    std::vector<LidLeaseService::Reply> replies;
    bool allOnMainThread = true;
  };
  auto answers = std::make_shared<Answers>();
  auto record = [answers](LidLeaseService::Reply reply) {
    std::lock_guard guard(answers->lock);
    answers->allOnMainThread = answers->allOnMainThread && isMainThread();
    answers->replies.push_back(std::move(reply));
  };
  auto requests = service.requests();
  const double deadline = in(30);
  std::thread([&] {
    requests(1, LidLeaseRequest::renew(deadline), record);
    requests(1, LidLeaseRequest::renew(std::numeric_limits<double>::quiet_NaN()), record);
    requests(2, LidLeaseRequest::renew(deadline), record);
    requests(1, LidLeaseRequest::revoke(), record);
    requests(2, LidLeaseRequest::disconnect(), nullptr);
  }).join();
  EXPECT_TRUE(answers->replies.empty());  // nothing is handled off the main loop

  ASSERT_TRUE(testing::pumpMainLoopUntil([&] { return service.holders().empty() && answers->replies.size() == 4; }, 5));
  EXPECT_TRUE(answers->allOnMainThread);
  EXPECT_EQ(answers->replies, (std::vector<LidLeaseService::Reply>{std::nullopt, notANumber, std::nullopt, std::nullopt}));
  EXPECT_FALSE(setting->value);
}

TEST_F(LidLeaseServiceTest, RequestsQueuedForAServiceThatIsGoneAreDropped) {
  auto gone = std::make_unique<LidLeaseService>(keeper, nullptr);
  auto replied = std::make_shared<bool>(false);
  gone->requests()(1, LidLeaseRequest::renew(in(30)), [replied](LidLeaseService::Reply) { *replied = true; });
  gone.reset();
  testing::drainMainLoop();
  EXPECT_FALSE(*replied);
  EXPECT_FALSE(setting->value);
}

}  // namespace
}  // namespace wakeloft
