#include "helper/LidHelperDaemon.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "support/FakeClamshell.h"
#include "support/InMemoryLeaseService.h"
#include "support/MainLoopPump.h"
#include "support/ManualScheduling.h"

namespace wakeloft {
namespace {

using testing::FakeClamshell;
using testing::ManualDeadlineScheduler;
using testing::ManualRecheckNotifier;

class LidHelperDaemonTest : public ::testing::Test, protected testing::InMemoryLeaseService {
 protected:
  LidHelperDaemonTest() { lid->closed = false; }

  std::unique_ptr<LidHelperDaemon> start(std::shared_ptr<LidSleepLeaseKeeper> withKeeper,
                                         std::shared_ptr<LidLeaseService> withService) {
    const auto quiet = [](const std::string&) {};
    return std::make_unique<LidHelperDaemon>(withKeeper, withService, std::make_shared<LidSleepCheck>(lid, quiet), tick,
                                             clocks.dates, clocks.uptime, nullptr, recheck);
  }
  // Sends one request the way a transport does and waits for its answer.
  LidLeaseService::Reply ask(std::uint64_t client, LidLeaseRequest request) {
    std::optional<LidLeaseService::Reply> answer;
    daemon->requests()(client, request, [&](LidLeaseService::Reply reply) { answer = std::move(reply); });
    EXPECT_TRUE(testing::pumpMainLoopUntil([&] { return answer.has_value(); }, 2));
    return answer.value_or("no answer");
  }
  LidLeaseRequest renewFor(double seconds) const { return LidLeaseRequest::renew(in(seconds)); }
  long sleepRequests() const { return std::count(lid->asked.begin(), lid->asked.end(), "requestSleep"); }

  std::shared_ptr<FakeClamshell> lid = std::make_shared<FakeClamshell>();
  std::shared_ptr<ManualDeadlineScheduler> tick = std::make_shared<ManualDeadlineScheduler>();
  std::shared_ptr<ManualRecheckNotifier> recheck = std::make_shared<ManualRecheckNotifier>();
  std::unique_ptr<LidHelperDaemon> daemon = start(keeper, service);
};

TEST_F(LidHelperDaemonTest, TheTickIsArmedForTheEarliestLapseAndEndsEachTermInTurn) {
  EXPECT_EQ(ask(1, renewFor(20)), std::nullopt);
  EXPECT_EQ(ask(2, renewFor(10)), std::nullopt);
  EXPECT_EQ(tick->pending, clocks.now().adding(10));

  clocks.pass(10);
  tick->fire();
  EXPECT_TRUE(setting->value);  // the other client's term runs on
  EXPECT_EQ(tick->pending, clocks.now().adding(10));
  clocks.pass(10);
  tick->fire();
  EXPECT_FALSE(setting->value);
  EXPECT_FALSE(tick->pending.has_value());
}

// Set again, the timer would start over: asked often enough, a lapse would never come.
TEST_F(LidHelperDaemonTest, RequestsThatChangeNothingLeaveTheTickAlone) {
  ask(1, renewFor(20));
  const int scheduled = tick->scheduleCount;
  for (int i = 0; i < 3; ++i) ask(2, LidLeaseRequest::status());
  EXPECT_EQ(tick->scheduleCount, scheduled);
}

// A hung app stays connected but stops renewing.
TEST_F(LidHelperDaemonTest, AClockSetBackAfterTheLastRenewalStillEndsTheLeaseAtItsUptimeEnd) {
  EXPECT_EQ(ask(1, renewFor(30)), std::nullopt);
  clocks.setWallClock(-3600);
  recheck->post();
  ASSERT_TRUE(tick->pending.has_value());
  EXPECT_LE(tick->pending->secondsSince(clocks.now()), 30);
  clocks.pass(30);
  tick->fire();
  EXPECT_FALSE(setting->value);
}

// The tick's timer does not see the wall clock: the jump itself must.
TEST_F(LidHelperDaemonTest, AClockSetForwardPastTheWallEndEndsTheLeaseAtTheRecheck) {
  EXPECT_EQ(ask(1, renewFor(30)), std::nullopt);
  clocks.setWallClock(40);
  recheck->post();
  EXPECT_FALSE(setting->value);
}

TEST_F(LidHelperDaemonTest, AFailingWriteArmsTheTickForItsRetryAndThenForTheLapse) {
  setting->writeError = "Read-only file system";
  ask(1, renewFor(20));
  EXPECT_EQ(tick->pending, clocks.now().adding(0.25));

  setting->writeError.reset();
  clocks.pass(0.25);
  tick->fire();
  EXPECT_TRUE(setting->value);
  EXPECT_EQ(tick->pending, clocks.now().adding(19.75));
}

TEST_F(LidHelperDaemonTest, AFailingFirstWriteAtStartIsRetriedWithoutAnyRequest) {
  setting->value = true;  // left at 1 by a helper that died
  setting->writeError = "busy";
  const auto restartedKeeper = std::make_shared<LidSleepLeaseKeeper>(setting, clocks.dates, clocks.uptime);
  const auto restarted = start(restartedKeeper, std::make_shared<LidLeaseService>(restartedKeeper, nullptr));
  setting->writeError.reset();
  clocks.pass(0.25);
  tick->fire();
  EXPECT_FALSE(setting->value);
}

TEST_F(LidHelperDaemonTest, TheLastLeaseEndingWithTheLidShutAsksForSleep) {
  lid->closed = true;
  ask(1, renewFor(20));
  EXPECT_EQ(sleepRequests(), 0);
  ask(1, LidLeaseRequest::disconnect());
  EXPECT_EQ(sleepRequests(), 1);
}

TEST_F(LidHelperDaemonTest, StoppingRetriesPuttingTheSettingBackAndThenAsksForSleepWithTheLidShut) {
  lid->closed = true;
  ask(1, renewFor(20));
  setting->writeError = "busy";
  int tries = 0;
  EXPECT_TRUE(daemon->stop([&] { return tries >= 3; },
                           [&] {
                             if (++tries == 2) setting->writeError.reset();
                           }));
  EXPECT_FALSE(setting->value);
  EXPECT_EQ(sleepRequests(), 1);
}

TEST_F(LidHelperDaemonTest, StoppingGivesUpWhenTimeIsUp) {
  ask(1, renewFor(20));
  setting->writeError = "busy";
  EXPECT_FALSE(daemon->stop([] { return true; }, [] {}));
  EXPECT_TRUE(setting->value);
}

}  // namespace
}  // namespace wakeloft
