// The whole Deepwake road on Linux: an awake session and its Deepwake
// controller on GLib's main loop, leasing from the real helper over the rig's
// socket, with the rig file standing in for the sleep setting, and the
// system's clock changes noticed as the app would notice them.

#include <gtest/gtest.h>
#include <unistd.h>

#include "clock/ClockChangeNotifier.h"
#include "RigLidHelperRegistration.h"
#include "RigProcess.h"
#include "SocketLidSleepBlocker.h"
#include "clock/SystemContinuousTimeProvider.h"
#include "clock/SystemDateProvider.h"
#include "clock/TimerDeadlineScheduler.h"
#include "helper/RigLeaseFile.h"
#include "lid/InMemoryLidAwakeStore.h"
#include "lid/LidAwakeController.h"
#include "session/AwakeController.h"
#include "session/InMemoryAwakeIntentStore.h"
#include "session/InMemorySleepBlocker.h"
#include "support/MainLoopPump.h"
#include "support/ManualMachineConditions.h"

namespace wakeloft {
namespace {

using testing::pumpMainLoopUntil;
using testing::RigProcess;

class DeepwakeRigTest : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(rig->waitForSocket()) << rig->log();
    awake = std::make_shared<AwakeController>(
        std::make_shared<InMemorySleepBlocker>(), std::make_shared<InMemoryAwakeIntentStore>(), dates,
        std::make_shared<SystemContinuousTimeProvider>(), std::make_shared<TimerDeadlineScheduler>(),
        std::make_shared<ClockChangeNotifier>(), true);
    deepwake = std::make_unique<LidAwakeController>(
        awake,
        std::make_shared<SocketLidSleepBlocker>(std::make_shared<RigLidHelperRegistration>(), rig->socketPath,
                                                getuid()),
        std::make_shared<InMemoryLidAwakeStore>(true), machine, conditionsNotifier, dates, std::make_shared<TimerDeadlineScheduler>(),
        std::make_shared<TimerDeadlineScheduler>());
  }

  std::optional<Date> leaseEnd() const { return RigLeaseFile::read(rig->leasePath); }

  std::unique_ptr<RigProcess> rig = std::make_unique<RigProcess>();
  std::shared_ptr<testing::SettableMachineConditions> machine =
      std::make_shared<testing::SettableMachineConditions>();
  std::shared_ptr<testing::ManualConditionsNotifier> conditionsNotifier =
      std::make_shared<testing::ManualConditionsNotifier>();
  std::shared_ptr<const SystemDateProvider> dates = std::make_shared<SystemDateProvider>();
  std::shared_ptr<AwakeController> awake;
  std::unique_ptr<LidAwakeController> deepwake;
};

TEST_F(DeepwakeRigTest, DeepwakeHoldsALeaseRenewedEveryTenSecondsAndGivesItBackWhenTurnedOff) {
  ASSERT_TRUE(deepwake->turnOnJoiningSessionOr(7200));
  ASSERT_TRUE(pumpMainLoopUntil([&] { return deepwake->isOn(); }, 3)) << rig->log();
  ASSERT_TRUE(leaseEnd().has_value());
  const Date first = *leaseEnd();
  EXPECT_LE(first, dates->now().adding(30));
  EXPECT_GT(first, dates->now().adding(25));

  // The next renewal comes about ten seconds later and moves the end with it.
  ASSERT_TRUE(pumpMainLoopUntil([&] { return leaseEnd() && *leaseEnd() > first.adding(5); }, 12));
  EXPECT_NEAR(leaseEnd()->secondsSince(first), 10, 1);

  deepwake->turnOff();
  ASSERT_TRUE(pumpMainLoopUntil([&] { return deepwake->isSettled(); }, 3));
  EXPECT_FALSE(rig->leaseFileExists());
}

}  // namespace
}  // namespace wakeloft
