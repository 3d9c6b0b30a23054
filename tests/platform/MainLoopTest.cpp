#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <thread>
#include <vector>

#include "base/MainThread.h"
#include "clock/MainRunLoop.h"
#include "clock/SystemDateProvider.h"
#include "clock/TimerDeadlineScheduler.h"
#include "support/MainLoopPump.h"

namespace wakeloft {
namespace {

using namespace std::chrono_literals;
using testing::pumpMainLoopFor;
using testing::pumpMainLoopUntil;

Date inSeconds(double seconds) { return SystemDateProvider().now().adding(seconds); }

TEST(TimerDeadlineSchedulerTest, ASecondScheduleReplacesTheFirstAnActionMayScheduleAgainAPastDeadlineFiresAfterTheFloorAndACancelledOneNever) {
  TimerDeadlineScheduler scheduler;
  std::vector<int> fired;
  scheduler.schedule(inSeconds(0.06), [&] { fired.push_back(1); });
  scheduler.schedule(inSeconds(0.12), [&] { fired.push_back(2); });
  pumpMainLoopFor(0.3);
  EXPECT_EQ(fired, std::vector<int>{2});

  std::function<void()> again = [&] {
    fired.push_back(3);
    if (fired.size() < 4) scheduler.schedule(inSeconds(0), again);
  };
  scheduler.schedule(inSeconds(0), again);
  EXPECT_TRUE(pumpMainLoopUntil([&] { return fired.size() == 4; }, 1));

  bool pastFired = false;
  bool onMain = false;
  const auto start = std::chrono::steady_clock::now();
  std::chrono::steady_clock::duration waited{};
  scheduler.schedule(inSeconds(-10), [&] {
    waited = std::chrono::steady_clock::now() - start;
    onMain = isMainThread();
    pastFired = true;
  });
  ASSERT_TRUE(pumpMainLoopUntil([&] { return pastFired; }, 1));
  EXPECT_TRUE(onMain);
  EXPECT_GE(waited, 49ms);
  EXPECT_LT(waited, 400ms);

  pastFired = false;
  {
    TimerDeadlineScheduler cancelled;
    cancelled.cancel();  // nothing pending: nothing happens
    cancelled.schedule(inSeconds(0), [&] { pastFired = true; });
    cancelled.cancel();
    cancelled.schedule(inSeconds(0), [&] { pastFired = true; });
  }
  pumpMainLoopFor(0.15);
  EXPECT_FALSE(pastFired);
}

TEST(MainRunLoopTest, WorkPostedWaitsForTheNextTurnOfTheMainThreadFromOtherThreadsInOrderOrAfterADelay) {
  bool ran = false;
  MainRunLoop::perform([&] { ran = true; });
  EXPECT_FALSE(ran);
  EXPECT_TRUE(pumpMainLoopUntil([&] { return ran; }, 1));

  std::vector<int> order;
  std::atomic<bool> allOnMain = true;
  std::thread poster([&] {
    for (int i = 0; i < 50; ++i) {
      MainRunLoop::perform([&, i] {
        if (!isMainThread()) allOnMain = false;
        order.push_back(i);
      });
    }
  });
  poster.join();
  ASSERT_TRUE(pumpMainLoopUntil([&] { return order.size() == 50; }, 2));
  EXPECT_TRUE(allOnMain);
  for (int i = 0; i < 50; ++i) EXPECT_EQ(order[static_cast<std::size_t>(i)], i);

  const auto start = std::chrono::steady_clock::now();
  std::chrono::steady_clock::duration waited{};
  ran = false;
  MainRunLoop::performAfter(0.1, [&] {
    waited = std::chrono::steady_clock::now() - start;
    ran = isMainThread();
  });
  ASSERT_TRUE(pumpMainLoopUntil([&] { return ran; }, 2));
  EXPECT_GE(waited, 99ms);
}

using MainThreadDeathTest = ::testing::Test;

TEST(MainThreadDeathTest, SchedulingFromAnotherThreadStopsTheProgram) {
  TimerDeadlineScheduler scheduler;
  EXPECT_DEATH(std::thread([&] { scheduler.schedule(inSeconds(1), [] {}); }).join(),
               "TimerDeadlineScheduler::schedule must run on the main thread");
}

}  // namespace
}  // namespace wakeloft
