// A schedule's start on the real main loop, with the system's clocks and
// timer: the session starts when the span does, and not before.

#include <gtest/gtest.h>

#include <cmath>

#include "automatic/AutomaticSessionController.h"
#include "automatic/InMemoryAutomaticSessionStore.h"
#include "automatic/InMemoryRunningApplications.h"
#include "clock/SystemContinuousTimeProvider.h"
#include "clock/SystemDateProvider.h"
#include "clock/TimerDeadlineScheduler.h"
#include "lid/StaticMachineConditions.h"
#include "session/InMemoryAwakeIntentStore.h"
#include "session/InMemoryProcessBindingStore.h"
#include "session/InMemorySleepBlocker.h"
#include "support/MainLoopPump.h"
#include "support/ManualMachineConditions.h"
#include "support/ManualProcesses.h"
#include "support/ManualScheduling.h"
#include "support/ManualTimeZone.h"

namespace wakeloft {
namespace {

using namespace testing;

// Its clocks are set so that a minute starts a second or two from now.
struct FixedOffsetZone final : TimeZone {
  int offset = 0;
  int secondsFromGMT(Date) const override { return offset; }
};

TEST(AutomaticScheduleLoopTest, ASpanStartsTheSessionWhenItsStartComesAndNotBefore) {
  const auto dates = std::make_shared<SystemDateProvider>();
  const auto continuous = std::make_shared<SystemContinuousTimeProvider>();
  const auto zone = std::make_shared<FixedOffsetZone>();
  const auto now = static_cast<long long>(std::floor(dates->now().secondsSince1970));
  zone->offset = static_cast<int>(((58 - now % 60) + 60) % 60);
  const long long start = ((now + zone->offset) / 60 + 1) * 60;  // local, as if UTC
  const auto minute = static_cast<int>(start / 60 % Schedule::minutesPerDay);
  const auto store = std::make_shared<InMemoryAutomaticSessionStore>();
  store->setSettings({false, false, false, {}, true, {0x7F, minute, (minute + 1) % Schedule::minutesPerDay}});

  const auto awake = std::make_shared<AwakeController>(
      std::make_shared<InMemorySleepBlocker>(), std::make_shared<InMemoryAwakeIntentStore>(), dates, continuous,
      std::make_shared<TimerDeadlineScheduler>(), std::make_shared<ManualRecheckNotifier>(), true);
  const AutomaticSessionController automatic(
      awake,
      std::make_shared<ProcessBindingController>(awake, std::make_shared<InMemoryProcessBindingStore>(),
                                                 std::make_shared<SettableProcessTable>(),
                                                 std::make_shared<ManualProcessExitWatcher>(), dates,
                                                 std::make_shared<TimerDeadlineScheduler>(), true),
      store,
      {std::make_shared<StaticMachineConditions>(false, false), std::make_shared<ManualConditionsNotifier>(),
       std::make_shared<InMemoryRunningApplications>(), std::make_shared<ManualTimeZoneProvider>(zone)},
      dates, continuous, std::make_shared<TimerDeadlineScheduler>(), std::make_shared<ManualRecheckNotifier>());

  EXPECT_FALSE(awake->isOn());
  EXPECT_TRUE(pumpMainLoopUntil([&] { return awake->isOn(); }, 4));
  EXPECT_GE(dates->now().secondsSince1970 + zone->offset, static_cast<double>(start) - 0.001);
}

}  // namespace
}  // namespace wakeloft
