#include "helper/LidHelperDaemon.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "support/FakeClamshell.h"
#include "support/InMemorySleepSetting.h"
#include "support/MainLoopPump.h"
#include "support/ManualClocks.h"
#include "support/ManualScheduling.h"

namespace wakeloft {
namespace {

using testing::FakeClamshell;
using testing::InMemorySleepSetting;
using testing::ManualDeadlineScheduler;
using testing::ManualMachineClocks;
using testing::ManualRecheckNotifier;

int sleepRequests(const FakeClamshell& lid) {
  return static_cast<int>(std::count(lid.asked.begin(), lid.asked.end(), "requestSleep"));
}

class LidHelperDaemonTest : public ::testing::Test {
 protected:
  LidHelperDaemonTest() {
    lid->closed = false;
    auto log = [this](const std::string& line) { lines.push_back(line); };
    keeper = std::make_shared<LidSleepLeaseKeeper>(setting, clocks.dates, clocks.uptime);
    service = std::make_shared<LidLeaseService>(keeper, log);
    daemon = std::make_unique<LidHelperDaemon>(keeper, service, std::make_shared<LidSleepCheck>(lid, log), tick,
                                               clocks.dates, clocks.uptime, [this] { ++settledCalls; }, recheck);
  }

  // Sends one request the way a transport does and waits for its answer.
  LidLeaseService::Reply ask(std::uint64_t client, LidLeaseRequest request) {
    std::optional<LidLeaseService::Reply> answer;
    daemon->requests()(client, request, [&](LidLeaseService::Reply reply) { answer = std::move(reply); });
    EXPECT_TRUE(testing::pumpMainLoopUntil([&] { return answer.has_value(); }, 2));
    return answer.value_or("no answer");
  }
  LidLeaseRequest renewFor(double seconds) const {
    return LidLeaseRequest::renew(clocks.now().adding(seconds).secondsSince1970);
  }

  ManualMachineClocks clocks;
  std::shared_ptr<InMemorySleepSetting> setting = std::make_shared<InMemorySleepSetting>();
  std::shared_ptr<FakeClamshell> lid = std::make_shared<FakeClamshell>();
  std::shared_ptr<ManualDeadlineScheduler> tick = std::make_shared<ManualDeadlineScheduler>();
  std::shared_ptr<ManualRecheckNotifier> recheck = std::make_shared<ManualRecheckNotifier>();
  std::shared_ptr<LidSleepLeaseKeeper> keeper;
  std::shared_ptr<LidLeaseService> service;
  std::unique_ptr<LidHelperDaemon> daemon;
  std::vector<std::string> lines;
  int settledCalls = 0;
};

TEST_F(LidHelperDaemonTest, TheTickIsArmedForTheEarliestLapseAndEndsEachTermInTurn) {
  EXPECT_EQ(ask(1, renewFor(20)), std::nullopt);
  EXPECT_EQ(ask(2, renewFor(10)), std::nullopt);
  EXPECT_EQ(tick->pending, clocks.now().adding(10));
  EXPECT_EQ(settledCalls, 2);

  clocks.pass(10);
  tick->fire();
  EXPECT_TRUE(setting->value);  // the other client's term runs on
  EXPECT_EQ(tick->pending, clocks.now().adding(10));
  clocks.pass(10);
  tick->fire();
  EXPECT_FALSE(setting->value);
  EXPECT_FALSE(tick->pending.has_value());
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
  EXPECT_FALSE(tick->pending.has_value());
}

TEST_F(LidHelperDaemonTest, AFailingWriteArmsTheTickForItsRetryAndThenForTheLapse) {
  setting->writeError = "Read-only file system";
  EXPECT_EQ(ask(1, renewFor(20)), "The sleep setting could not be written: Read-only file system");
  EXPECT_EQ(tick->pending, clocks.now().adding(0.25));

  setting->writeError.reset();
  clocks.pass(0.25);
  tick->fire();
  EXPECT_TRUE(setting->value);
  EXPECT_EQ(tick->pending, clocks.now().adding(19.75));
}

TEST_F(LidHelperDaemonTest, AFailingFirstWriteAtStartIsRetriedWithoutAnyRequest) {
  auto failing = std::make_shared<InMemorySleepSetting>();
  failing->value = true;  // left at 1 by a helper that died
  failing->writeError = "busy";
  auto otherKeeper = std::make_shared<LidSleepLeaseKeeper>(failing, clocks.dates, clocks.uptime);
  auto otherTick = std::make_shared<ManualDeadlineScheduler>();
  LidHelperDaemon restarted(otherKeeper, std::make_shared<LidLeaseService>(otherKeeper, [](const std::string&) {}),
                            std::make_shared<LidSleepCheck>(lid, [](const std::string&) {}), otherTick, clocks.dates,
                            clocks.uptime);
  ASSERT_TRUE(otherTick->pending.has_value());
  failing->writeError.reset();
  clocks.pass(0.25);
  otherTick->fire();
  EXPECT_FALSE(failing->value);
  EXPECT_FALSE(otherTick->pending.has_value());
}

TEST_F(LidHelperDaemonTest, TheLastLeaseEndingWithTheLidShutAsksForSleep) {
  lid->closed = true;
  EXPECT_EQ(ask(1, renewFor(20)), std::nullopt);
  EXPECT_EQ(sleepRequests(*lid), 0);
  EXPECT_EQ(ask(1, LidLeaseRequest::disconnect()), std::nullopt);
  EXPECT_EQ(sleepRequests(*lid), 1);
}

TEST_F(LidHelperDaemonTest, StoppingRetriesPuttingTheSettingBackAndThenAsksForSleepWithTheLidShut) {
  lid->closed = true;
  EXPECT_EQ(ask(1, renewFor(20)), std::nullopt);
  setting->writeError = "busy";
  int tries = 0;
  EXPECT_TRUE(daemon->stop([&] { return tries >= 3; },
                           [&] {
                             if (++tries == 2) setting->writeError.reset();
                           }));
  EXPECT_FALSE(setting->value);
  EXPECT_FALSE(tick->pending.has_value());
  EXPECT_EQ(sleepRequests(*lid), 1);
}

TEST_F(LidHelperDaemonTest, StoppingGivesUpWhenTimeIsUp) {
  EXPECT_EQ(ask(1, renewFor(20)), std::nullopt);
  setting->writeError = "busy";
  EXPECT_FALSE(daemon->stop([] { return true; }, [] {}));
  EXPECT_TRUE(setting->value);
}

}  // namespace
}  // namespace wakeloft
