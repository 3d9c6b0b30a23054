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

constexpr const char* notANumber = "The lease deadline is not a number.";
constexpr const char* alreadyOn =
    "The sleep setting is already on, set by something other than Wakeloft, and was left as it is.";
constexpr const char* turnedOff =
    "The sleep setting was turned off by something other than Wakeloft, and was left off.";
constexpr const char* refusedAlreadyOnLine =
    "lease refused: disablesleep is already 1 and this helper did not write it; left as it is";
constexpr const char* endedElsewhereLine = "lease ended: disablesleep was set to 0 by something else; left at 0";

class LidLeaseServiceTest : public ::testing::Test {
 protected:
  // The deadline a client sends for `seconds` from now.
  double in(double seconds) const { return clocks.now().adding(seconds).secondsSince1970; }
  std::size_t writes() const { return setting->writeAttempts.size(); }

  ManualMachineClocks clocks;
  std::shared_ptr<InMemorySleepSetting> setting = std::make_shared<InMemorySleepSetting>();
  std::shared_ptr<LidSleepLeaseKeeper> keeper =
      std::make_shared<LidSleepLeaseKeeper>(setting, clocks.dates, clocks.uptime);
  std::vector<std::string> logLines;
  LidLeaseService service{keeper, [this](const std::string& line) { logLines.push_back(line); }};
};

TEST_F(LidLeaseServiceTest, AGrantedRenewalHoldsOneUntilADeadlineAlreadyPassedButOneNotANumberIsRefusedBeforeAnythingElse) {
  EXPECT_EQ(service.renew(in(30), 1), std::nullopt);
  EXPECT_TRUE(setting->value);
  EXPECT_EQ(service.holders(), (std::set<std::uint64_t>{1}));
  EXPECT_EQ(keeper->leaseExpiry(), clocks.now().adding(30));
  EXPECT_TRUE(logLines.empty());

  EXPECT_EQ(service.renew(in(0), 1), std::nullopt);
  EXPECT_FALSE(setting->value);
  EXPECT_TRUE(service.holders().empty());

  ASSERT_EQ(service.renew(in(30), 1), std::nullopt);
  const auto reads = setting->readCount;
  const auto before = writes();
  for (const double deadline : {std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity(),
                                std::numeric_limits<double>::quiet_NaN()}) {
    EXPECT_EQ(service.renew(deadline, 1), notANumber);
    EXPECT_EQ(service.renew(deadline, 2), notANumber);
  }
  EXPECT_EQ(setting->readCount, reads);
  EXPECT_EQ(writes(), before);
  EXPECT_EQ(service.holders(), (std::set<std::uint64_t>{1}));
  EXPECT_EQ(keeper->leaseExpiry(), clocks.now().adding(30));
  EXPECT_EQ(logLines, std::vector<std::string>(6, "lease refused: the deadline is not a number"));
}

TEST_F(LidLeaseServiceTest, OneClientsRevocationNeverEndsAnothersLeaseAndAFailedRestoreIsReportedAndRetried) {
  EXPECT_EQ(service.renew(in(20), 1), std::nullopt);
  EXPECT_EQ(service.renew(in(30), 2), std::nullopt);
  EXPECT_EQ(service.revoke(1), std::nullopt);
  EXPECT_TRUE(setting->value);
  EXPECT_EQ(service.holders(), (std::set<std::uint64_t>{2}));

  clocks.pass(29.5);
  service.checkLease();
  EXPECT_TRUE(setting->value);
  clocks.pass(0.5);
  service.checkLease();
  EXPECT_FALSE(setting->value);
  EXPECT_TRUE(service.holders().empty());

  service.renew(in(30), 1);
  setting->writeError = "Resource busy";
  EXPECT_EQ(service.revoke(1),
            "The sleep setting could not be put back, and the helper is still trying: Resource busy");
  EXPECT_TRUE(service.holders().empty());
  EXPECT_TRUE(setting->value);
  EXPECT_EQ(logLines, std::vector<std::string>{"lease ended, but disablesleep could not be put back and is being "
                                               "retried: Resource busy"});

  setting->writeError.reset();
  clocks.pass(0.25);
  service.checkLease();
  EXPECT_FALSE(setting->value);
  EXPECT_EQ(service.revoke(1), std::nullopt);
}

TEST_F(LidLeaseServiceTest, TheHeldLeaseTakesTheLatestOfEachEndSeparatelyAndASleepPastThemEndsThemAtTheNextCheck) {
  const Date start = clocks.now();
  service.renew(in(30), 1);  // wall start+30, uptime 1030
  clocks.setWallClock(-60);
  clocks.pass(5);
  service.renew(in(30), 2);  // wall start-25, uptime 1035
  EXPECT_EQ(keeper->leaseExpiry(), start.adding(30));
  EXPECT_EQ(keeper->leaseUptimeExpiry(), 1035);
  EXPECT_EQ(service.earliestLapse(), (LidLeaseTerm{start.adding(-25), 1030}));

  // The set-back clock does not stretch client 1's term.
  clocks.pass(25);
  service.checkLease();
  EXPECT_EQ(service.holders(), (std::set<std::uint64_t>{2}));
  EXPECT_TRUE(setting->value);
  clocks.pass(5);
  service.checkLease();
  EXPECT_FALSE(setting->value);
  EXPECT_EQ(service.earliestLapse(), std::nullopt);

  service.renew(in(30), 1);
  service.renew(in(30), 2);
  clocks.sleep(600);
  service.checkLease();
  EXPECT_TRUE(service.holders().empty());
  EXPECT_FALSE(setting->value);
}

TEST_F(LidLeaseServiceTest, AZeroWrittenElsewhereIsToldToEveryHolderOnceUnlessItRevokesOrAnotherZeroComes) {
  service.renew(in(30), 1);
  service.renew(in(30), 2);
  setting->value = false;

  EXPECT_EQ(service.renew(in(30), 1), turnedOff);
  EXPECT_EQ(logLines, std::vector<std::string>{endedElsewhereLine});
  EXPECT_FALSE(setting->value);
  EXPECT_TRUE(service.holders().empty());
  EXPECT_EQ(service.yielded(), (std::set<std::uint64_t>{2}));

  // A client that held nothing is not told.
  EXPECT_EQ(service.renew(in(30), 3), std::nullopt);
  EXPECT_EQ(service.revoke(3), std::nullopt);
  EXPECT_FALSE(setting->value);

  EXPECT_EQ(service.renew(in(30), 2), turnedOff);
  EXPECT_TRUE(service.yielded().empty());
  EXPECT_FALSE(setting->value);
  EXPECT_EQ(logLines.size(), 1u);

  EXPECT_EQ(service.renew(in(30), 2), std::nullopt);
  EXPECT_EQ(service.renew(in(30), 1), std::nullopt);
  EXPECT_TRUE(setting->value);
  EXPECT_EQ(service.holders(), (std::set<std::uint64_t>{1, 2}));

  for (const std::uint64_t client : {1, 2, 3}) service.renew(in(30), client);
  setting->value = false;
  EXPECT_EQ(service.renew(in(30), 1), turnedOff);
  EXPECT_EQ(service.revoke(2), std::nullopt);
  EXPECT_EQ(service.yielded(), (std::set<std::uint64_t>{3}));

  // Owed a notice are the holders when the setting was turned off, no others.
  EXPECT_EQ(service.renew(in(30), 1), std::nullopt);
  setting->value = false;
  EXPECT_EQ(service.renew(in(30), 1), turnedOff);
  EXPECT_TRUE(service.yielded().empty());
  EXPECT_EQ(service.renew(in(30), 3), std::nullopt);
  EXPECT_EQ(service.renew(in(30), 2), std::nullopt);
  EXPECT_TRUE(setting->value);
}

TEST_F(LidLeaseServiceTest, AOneWrittenElsewhereOrAnUnreadableSettingIsRefusedAndLeftAlone) {
  setting->value = true;
  const auto before = writes();
  EXPECT_EQ(service.renew(in(30), 1), alreadyOn);
  EXPECT_EQ(service.renew(in(30), 1), alreadyOn);
  EXPECT_EQ(logLines, (std::vector<std::string>{refusedAlreadyOnLine, refusedAlreadyOnLine}));
  EXPECT_TRUE(service.holders().empty());
  EXPECT_EQ(writes(), before);
  EXPECT_TRUE(setting->value);

  setting->value = false;
  setting->readError = "pmset did not answer in time";
  EXPECT_EQ(service.renew(in(30), 1),
            "The sleep setting could not be read, so it was left as it is: pmset did not answer in time");
  EXPECT_EQ(logLines.back(),
            "lease refused: disablesleep could not be read, so it was not written: pmset did not answer in time");
  EXPECT_TRUE(service.holders().empty());
  EXPECT_EQ(writes(), before);
}

TEST_F(LidLeaseServiceTest, AFailedWriteKeepsTheTermAndIsRetriedAtTheSpacing) {
  setting->writeError = "Operation not permitted";
  EXPECT_EQ(service.renew(in(30), 1), "The sleep setting could not be written: Operation not permitted");
  EXPECT_EQ(service.holders(), (std::set<std::uint64_t>{1}));
  EXPECT_FALSE(setting->value);
  EXPECT_EQ(service.nextRetryUptime(), 1000.25);

  // A second client within the spacing: no new try, the same answer.
  const auto before = writes();
  clocks.pass(0.125);
  EXPECT_EQ(service.renew(in(30), 2), "The sleep setting could not be written: Operation not permitted");
  service.checkLease();
  EXPECT_EQ(writes(), before);
  EXPECT_EQ(logLines, std::vector<std::string>(2, "lease refused: disablesleep could not be written and is being "
                                                  "retried: Operation not permitted"));

  setting->writeError.reset();
  clocks.pass(0.125);
  service.checkLease();
  EXPECT_TRUE(setting->value);
  EXPECT_EQ(service.nextRetryUptime(), std::nullopt);
  EXPECT_EQ(service.renew(in(30), 1), std::nullopt);
  EXPECT_EQ(service.holders(), (std::set<std::uint64_t>{1, 2}));
}

// Through the real main loop, as the listener's connections use it.
TEST_F(LidLeaseServiceTest, RequestsFromOtherThreadsAreAnsweredOnTheMainThreadInOrderWhileTheServiceLives) {
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
  std::thread connection([&] {
    requests(1, LidLeaseRequest::renew(deadline), record);
    requests(1, LidLeaseRequest::renew(std::numeric_limits<double>::quiet_NaN()), record);
    requests(2, LidLeaseRequest::renew(deadline), record);
    requests(1, LidLeaseRequest::revoke(), record);
    requests(2, LidLeaseRequest::disconnect(), [](LidLeaseService::Reply) {});
    requests(3, LidLeaseRequest::revoke(), nullptr);
  });
  connection.join();
  EXPECT_TRUE(answers->replies.empty());  // nothing is handled off the main loop

  ASSERT_TRUE(testing::pumpMainLoopUntil([&] { return service.holders().empty() && answers->replies.size() == 4; }, 5));
  testing::drainMainLoop();
  EXPECT_TRUE(answers->allOnMainThread);
  EXPECT_EQ(answers->replies, (std::vector<LidLeaseService::Reply>{std::nullopt, notANumber, std::nullopt, std::nullopt}));
  EXPECT_FALSE(setting->value);

  // Requests queued for a service that is gone are dropped.
  auto gone = std::make_unique<LidLeaseService>(keeper, nullptr);
  auto replied = std::make_shared<bool>(false);
  gone->requests()(1, LidLeaseRequest::renew(deadline), [replied](LidLeaseService::Reply) { *replied = true; });
  gone.reset();
  testing::drainMainLoop();
  EXPECT_FALSE(*replied);
  EXPECT_FALSE(setting->value);
}

TEST(LidLeaseRequestTest, RenewalsCompareByDeadlineAsNumbers) {
  EXPECT_EQ(LidLeaseRequest::renew(1.5), LidLeaseRequest::renew(1.5));
  EXPECT_NE(LidLeaseRequest::renew(1.5), LidLeaseRequest::renew(2.5));
  EXPECT_NE(LidLeaseRequest::renew(std::numeric_limits<double>::quiet_NaN()),
            LidLeaseRequest::renew(std::numeric_limits<double>::quiet_NaN()));
  EXPECT_EQ(LidLeaseRequest::revoke(), LidLeaseRequest::revoke());
  EXPECT_NE(LidLeaseRequest::revoke(), LidLeaseRequest::disconnect());
  EXPECT_NE(LidLeaseRequest::renew(0), LidLeaseRequest::revoke());
}

}  // namespace
}  // namespace wakeloft
