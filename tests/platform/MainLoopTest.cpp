#include <gtest/gtest.h>

#include <chrono>
#include <optional>
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

TEST(TimerDeadlineSchedulerTest, ASecondScheduleReplacesTheFirst) {
  TimerDeadlineScheduler scheduler;
  std::vector<int> fired;
  scheduler.schedule(inSeconds(0.06), [&] { fired.push_back(1); });
  scheduler.schedule(inSeconds(0.12), [&] { fired.push_back(2); });
  pumpMainLoopFor(0.3);
  EXPECT_EQ(fired, std::vector<int>{2});
}

TEST(TimerDeadlineSchedulerTest, AnActionMayScheduleAgain) {
  TimerDeadlineScheduler scheduler;
  int fired = 0;
  std::function<void()> again = [&] {
    if (++fired < 3) scheduler.schedule(inSeconds(0), again);
  };
  scheduler.schedule(inSeconds(0), again);
  EXPECT_TRUE(pumpMainLoopUntil([&] { return fired == 3; }, 1));
}

// An overdue deadline must not spin the main loop.
TEST(TimerDeadlineSchedulerTest, APastDeadlineFiresOnTheMainThreadAfterTheFloor) {
  TimerDeadlineScheduler scheduler;
  std::optional<bool> onMain;
  const auto start = std::chrono::steady_clock::now();
  scheduler.schedule(inSeconds(-10), [&] { onMain = isMainThread(); });
  ASSERT_TRUE(pumpMainLoopUntil([&] { return onMain.has_value(); }, 1));
  EXPECT_GE(std::chrono::steady_clock::now() - start, 49ms);
  EXPECT_EQ(onMain, true);
}

TEST(TimerDeadlineSchedulerTest, ACancelledOrDestroyedSchedulersActionNeverRuns) {
  int fired = 0;
  TimerDeadlineScheduler cancelled;
  cancelled.schedule(inSeconds(0), [&] { ++fired; });
  cancelled.cancel();
  {
    TimerDeadlineScheduler destroyed;
    destroyed.schedule(inSeconds(0), [&] { ++fired; });
  }
  pumpMainLoopFor(0.15);
  EXPECT_EQ(fired, 0);
}

TEST(MainRunLoopTest, WorkPostedRunsOnTheNextTurnNotInTheCall) {
  bool ran = false;
  MainRunLoop::perform([&] { ran = true; });
  EXPECT_FALSE(ran);
  EXPECT_TRUE(pumpMainLoopUntil([&] { return ran; }, 1));
}

}  // namespace
}  // namespace wakeloft
