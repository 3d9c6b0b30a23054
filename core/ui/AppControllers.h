#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "automatic/RunningApplications.h"
#include "base/DefaultsDomain.h"
#include "base/ProcessExitWatcher.h"
#include "base/ProcessTable.h"
#include "clock/ContinuousTimeProvider.h"
#include "clock/DateProvider.h"
#include "clock/DeadlineRecheckNotifier.h"
#include "clock/DeadlineScheduler.h"
#include "clock/TimeZoneProvider.h"
#include "lid/LidHelperRegistration.h"
#include "lid/LidSleepBlocker.h"
#include "lid/MachineConditions.h"
#include "lid/MachineConditionsNotifier.h"
#include "prefs/LoginItem.h"
#include "session/ScreenLockNotifier.h"
#include "session/PowerAssertions.h"
#include "ui/Controllers.h"

namespace wakeloft {

// The app's four long-lived controllers, built once at launch over the
// system's parts. Building the awake controller restores the session asked
// for before the last quit. Main thread only.
namespace AppControllers {

// The system's side of each controller. Every part is made only when the
// launch comes to it, so the system is touched in the launch order; a
// factory called twice makes two parts.
struct SystemParts {
  std::function<std::shared_ptr<PowerAssertions>()> powerAssertions;
  std::function<std::shared_ptr<const DateProvider>()> dates;
  std::function<std::shared_ptr<const ContinuousTimeProvider>()> continuousTime;
  std::function<std::shared_ptr<DeadlineScheduler>()> deadlineScheduler;
  std::function<std::shared_ptr<DeadlineRecheckNotifier>()> recheckNotifier;
  // The app's bundle, absolute with symbolic links resolved; absent when
  // it cannot be told.
  std::function<std::optional<std::string>()> bundlePath;
  // The helper daemon's registration under its property list's file name.
  std::function<std::shared_ptr<LidHelperRegistration>(std::string_view plistName)> helperRegistration;
  // This app's signing team, read from its own signature; absent unsigned.
  std::function<std::optional<std::string>()> teamIdentifier;
  // The lease client; an absent requirement means no helper can be trusted.
  std::function<std::shared_ptr<LidSleepBlocker>(std::shared_ptr<LidHelperRegistration> registration,
                                                 std::optional<std::string> helperRequirement, double replyTimeout)>
      lidSleepBlocker;
  std::function<std::shared_ptr<const MachineConditions>()> machineConditions;
  std::function<std::shared_ptr<MachineConditionsNotifier>()> conditionsNotifier;
  // The app itself as a login item.
  std::function<std::shared_ptr<LoginItem>()> loginItem;
  // The system's processes and the watch over one's end, for a session
  // bound to a process.
  std::function<std::shared_ptr<const ProcessTable>()> processTable;
  std::function<std::shared_ptr<ProcessExitWatcher>()> processExitWatcher;
  // Word of the screen locking and of user switches.
  std::function<std::shared_ptr<ScreenLockNotifier>()> screenLockNotifier;
  // For the automatic rules: the apps that run (the system's own list on the
  // Mac), and the user's zone for the schedule. Without the first, no
  // automatic sessions are built.
  std::function<std::shared_ptr<RunningApplications>()> runningApplications = nullptr;
  std::function<std::shared_ptr<const TimeZoneProvider>()> timeZones = nullptr;
};

// In order: the awake controller (restoring the previous session), Deepwake
// riding on it, the login item with its registration repaired, the starred
// presets, then the process binding, which takes up the process the session
// was bound to if it still runs and ends the session otherwise, then the
// automatic sessions, which start one if a rule holds and no suppression was
// left behind (an automatic session is never restored as such); last the
// display kept on beside the session and the lock's end of sessions. The stores
// keep `defaults` by reference: it must outlive them.
Controllers live(const SystemParts& parts, DefaultsDomain& defaults);

// Deepwake for `riding`, refused for good when the bundle runs translocated:
// the helper's registration, its code requirement
// pinned to the app's team, the lease client, the heat-warning store on
// `defaults`, the machine conditions, and one scheduler for the lease
// renewals and another for the session's end.
std::shared_ptr<LidAwakeController> deepwake(std::shared_ptr<AwakeController> riding, DefaultsDomain& defaults,
                                             const SystemParts& parts);

}  // namespace AppControllers
}  // namespace wakeloft
