#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "base/Observation.h"
#include "base/WeakSelf.h"
#include "clock/DeadlineRecheckNotifier.h"
#include "lid/MachineConditions.h"
#include "lid/MachineConditionsNotifier.h"
#include "session/AwakeController.h"
#include "session/AwakeFailure.h"
#include "session/ScreenLockState.h"
#include "session/ScreenOnStore.h"
#include "session/SleepBlocker.h"

namespace wakeloft {

// "Keep the screen on": while the user wants it, every running session also
// holds the display assertion, taken and given back with the session's own,
// whatever kind of session it is. It is given back while the screen counts
// as locked, and with the lid closed and no external display: a closed lid
// has no screen to keep on, and a lit panel in a closed laptop adds heat. An
// unknown lid counts as open. The display is never forced to sleep. After
// every wake a dropped assertion is taken again. Main thread only.
class ScreenOnController {
 public:
  ScreenOnController(std::shared_ptr<AwakeController> awake, std::shared_ptr<SleepBlocker> display,
                     std::shared_ptr<ScreenOnStore> store, std::shared_ptr<const MachineConditions> machine,
                     std::shared_ptr<MachineConditionsNotifier> machineChanges, std::shared_ptr<ScreenLockState> lock,
                     std::shared_ptr<DeadlineRecheckNotifier> recheck);
  ScreenOnController(const ScreenOnController&) = delete;
  ScreenOnController& operator=(const ScreenOnController&) = delete;

  bool keepsScreenOn() const { return keepsScreenOn_; }
  void setKeepsScreenOn(bool on);

  // Whether the display assertion is held now.
  bool isHeld() const { return isHeld_; }
  // Why the display assertion could not be taken while it was wanted.
  const std::optional<AwakeFailure>& lastFailure() const { return lastFailure_; }

  [[nodiscard]] Subscription observe(std::function<void()> handler) { return changed_.observe(std::move(handler)); }

 private:
  bool isWanted() const;
  // Takes or gives back the assertion as wanted; a held one is checked
  // with the system when `checking`.
  void apply(bool checking = false);

  std::shared_ptr<AwakeController> awake_;
  std::shared_ptr<SleepBlocker> display_;
  std::shared_ptr<ScreenOnStore> store_;
  std::shared_ptr<const MachineConditions> machine_;
  std::shared_ptr<MachineConditionsNotifier> machineChanges_;
  std::shared_ptr<ScreenLockState> lock_;
  std::shared_ptr<DeadlineRecheckNotifier> recheck_;

  ChangeSignal changed_;
  Published<bool> keepsScreenOn_{changed_, false};
  Published<bool> isHeld_{changed_, false};
  Published<std::optional<AwakeFailure>> lastFailure_{changed_, std::nullopt};
  Subscription lockChanges_;
  WeakSelf<ScreenOnController> weakSelf_{this};
};

}  // namespace wakeloft
