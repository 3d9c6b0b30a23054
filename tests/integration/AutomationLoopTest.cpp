// The app's address handler and the process watcher on GLib's main loop,
// with real child processes: a session held for a process ends as soon as
// the process does, however it ends.

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>

#include "PidfdProcessExitWatcher.h"
#include "ProcfsProcessTable.h"
#include "clock/SystemContinuousTimeProvider.h"
#include "clock/SystemDateProvider.h"
#include "clock/TimerDeadlineScheduler.h"
#include "lid/InMemoryLidAwakeStore.h"
#include "lid/InMemoryLidSleepBlocker.h"
#include "lid/StaticMachineConditions.h"
#include "session/InMemoryAwakeIntentStore.h"
#include "session/InMemoryProcessBindingStore.h"
#include "session/InMemorySleepBlocker.h"
#include "support/MainLoopPump.h"
#include "support/ManualMachineConditions.h"
#include "support/ManualScheduling.h"
#include "support/SystemProcesses.h"
#include "automation/InProcessAutomationOutcomeChannel.h"
#include "ui/AutomationHandler.h"

namespace wakeloft {
namespace {

using testing::TestChild;

// Long enough for a busy machine to get to the event, far shorter than a
// person could notice.
constexpr double endedWithin = 0.1;

class AutomationLoopTest : public ::testing::Test {
 protected:
  // Blocks until the child has ended, without reaping it, so what follows is
  // timed from its end.
  static void waitForEnd(pid_t pid) {
    siginfo_t info{};
    waitid(P_PID, static_cast<id_t>(pid), &info, WEXITED | WNOWAIT);
  }

  std::shared_ptr<const SystemDateProvider> dates = std::make_shared<SystemDateProvider>();
  std::shared_ptr<AwakeController> awake = std::make_shared<AwakeController>(
      std::make_shared<InMemorySleepBlocker>(), std::make_shared<InMemoryAwakeIntentStore>(), dates,
      std::make_shared<SystemContinuousTimeProvider>(), std::make_shared<TimerDeadlineScheduler>(),
      std::make_shared<testing::ManualRecheckNotifier>(), true);
  std::shared_ptr<LidAwakeController> lid = std::make_shared<LidAwakeController>(
      awake, std::make_shared<InMemoryLidSleepBlocker>(), std::make_shared<InMemoryLidAwakeStore>(true),
      std::make_shared<StaticMachineConditions>(false, true), std::make_shared<testing::ManualConditionsNotifier>(),
      dates, std::make_shared<TimerDeadlineScheduler>(), std::make_shared<TimerDeadlineScheduler>());
  std::shared_ptr<ProcessBindingController> binding = std::make_shared<ProcessBindingController>(
      awake, std::make_shared<InMemoryProcessBindingStore>(), std::make_shared<ProcfsProcessTable>(),
      std::make_shared<PidfdProcessExitWatcher>(), dates, std::make_shared<TimerDeadlineScheduler>(), true);
  std::vector<std::string> logged;
  AutomationHandler handler{Controllers{awake, lid, nullptr, nullptr, binding}, [] {},
                            [this](const std::string& line) { logged.push_back(line); },
                            std::make_shared<InProcessAutomationOutcomeChannel>()};
};

TEST_F(AutomationLoopTest, AHeldSessionEndsWithinATenthOfASecondOfItsProcess) {
  for (const bool killed : {true, false}) {
    SCOPED_TRACE(killed ? "killed" : "finished");
    TestChild child({"sleep", killed ? "30" : "0.3"});
    ASSERT_GT(child.pid, 0);
    handler.open("wakeloft://hold?pid=" + std::to_string(child.pid) + "&deepwake=1");
    ASSERT_TRUE(awake->isOn()) << (logged.empty() ? "" : logged.front());

    if (killed) kill(child.pid, SIGKILL);
    waitForEnd(child.pid);
    EXPECT_TRUE(testing::pumpMainLoopUntil([&] { return !awake->isOn(); }, endedWithin)) << "still on after the end";
  }
}

}  // namespace
}  // namespace wakeloft
