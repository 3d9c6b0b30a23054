#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "base/Observation.h"
#include "base/WeakSelf.h"
#include "clock/DateProvider.h"
#include "clock/DeadlineScheduler.h"
#include "lid/DeepwakeGuardrailStore.h"
#include "lid/DeepwakeGuardrails.h"
#include "lid/InMemoryDeepwakeGuardrailStore.h"
#include "lid/LidAwakeRefusal.h"
#include "lid/LidAwakeStore.h"
#include "lid/LidClosePrecaution.h"
#include "lid/LidSleepBlocker.h"
#include "lid/MachineConditions.h"
#include "lid/MachineConditionsNotifier.h"
#include "session/AwakeController.h"
#include "session/AwakeFailure.h"

namespace wakeloft {

// Deepwake on the app side: rides on an awake session and, while wanted,
// keeps a short lease from the lid helper, renewing it well before it lapses
// so that the sleep setting outlives the app by half a minute at most. Gates
// the first use behind the heat warning and keeps the failures the panel
// explains. Its guardrails end Deepwake, or pause it while on battery,
// when the machine conditions call for it. Main thread only; every callback
// it hands out holds it weakly.
class LidAwakeController {
 public:
  // `runsTranslocated`: the app runs from macOS's temporary copy of its
  // download, and Deepwake is refused for as long as this process lives.
  LidAwakeController(std::shared_ptr<AwakeController> awake, std::shared_ptr<LidSleepBlocker> blocker,
                     std::shared_ptr<LidAwakeStore> store, std::shared_ptr<const MachineConditions> conditions,
                     std::shared_ptr<MachineConditionsNotifier> conditionsNotifier,
                     std::shared_ptr<const DateProvider> dates, std::shared_ptr<DeadlineScheduler> scheduler,
                     std::shared_ptr<DeadlineScheduler> deadlineScheduler,
                     std::shared_ptr<DeepwakeGuardrailStore> guardrailStore =
                         std::make_shared<InMemoryDeepwakeGuardrailStore>(),
                     bool runsTranslocated = false);
  LidAwakeController(const LidAwakeController&) = delete;
  LidAwakeController& operator=(const LidAwakeController&) = delete;

  // Starts a new awake session for the length (none: no timer), even over a
  // running one. True when Deepwake is on, turning on or paused for power
  // afterwards; false when refused or failed, the failure then in
  // lastFailure, or the guardrail that holds in guardrailStop.
  bool turnOn(std::optional<double> length);
  // Joins the running awake session, or starts one for the length.
  bool turnOnJoiningSessionOr(std::optional<double> length);
  // Ends Deepwake and gives the lease back; the awake session runs on.
  void turnOff();
  void acknowledgeHeatWarning();
  // Stores the settings and applies them at once; what a profile forces
  // stays as it is.
  void setGuardrailSettings(const DeepwakeGuardrails::Settings& wanted);
  // Reads the stores and the machine conditions again.
  void refresh();
  // Brings the lease in line with the awake session, and retries a give-back
  // that was not confirmed.
  void checkLease();
  // Runs the action once no blocker request is outstanding: at once if none is.
  void whenSettled(std::function<void()> action);

  // Told whenever an observable value really changes; the derived values are
  // read from those.
  [[nodiscard]] Subscription observe(std::function<void()> handler) { return changed_.observe(std::move(handler)); }

  // A lease is confirmed.
  bool isOn() const { return isOn_; }
  // The first renewal is out and nothing is confirmed yet.
  bool isTurningOn() const { return isTurningOn_; }
  bool hasAcknowledgedHeatWarning() const { return hasAcknowledgedHeatWarning_; }
  const MachineConditionsSnapshot& machineConditions() const { return machineConditions_; }
  const DeepwakeGuardrails::Settings& guardrailSettings() const { return guardrailSettings_; }
  DeepwakeGuardrails::Forced forcedGuardrails() const { return guardrailStore_->forced(); }
  // The guardrail that last ended Deepwake or refused it, until the user
  // turns Deepwake on again.
  const std::optional<DeepwakeGuardrails::Stop>& guardrailStop() const { return guardrailStop_; }
  // On battery under "only on a power adapter": no lease is held, but the
  // user's Deepwake stays on and takes the lease again when power returns.
  bool isPausedForPower() const { return isPausedForPower_; }
  // On, turning on or paused: what the user's switch says.
  bool isWanted() const { return isOn_ || isTurningOn_ || isPausedForPower_; }
  DeepwakeGuardrails::Notice guardrailNotice() const;
  // A give-back that was not confirmed outranks a start failure: the helper
  // may still be keeping the Mac from sleeping.
  std::optional<AwakeFailure> lastFailure() const;
  std::optional<LidAwakeRefusal> refusal() const;
  LidClosePrecaution precaution() const;
  // The awake session's deadline.
  std::optional<Date> activeUntil() const { return awake_->activeUntil(); }
  bool isSettled() const { return unanswered_ == 0; }

  // Bookkeeping, for the quit flow and for tests.
  int switchOffs() const { return switchOffs_; }
  bool isRenewing() const { return isRenewing_; }
  int givingBack() const { return givingBack_; }
  int unanswered() const { return unanswered_; }

 private:
  bool start(std::optional<double> length, bool joining);
  void renewLease();
  void renewed(std::exception_ptr error, int tag);
  void arm();
  void armDeadline();
  void deadlineReached();
  void giveBack();
  void gaveBack(std::exception_ptr error);
  void settle();
  void refreshConditions();
  void applyGuardrails(const MachineConditionsSnapshot& before);
  void pauseForPower();
  void resumeWithPower();
  // Nothing is recorded for a failure while a give-back is unconfirmed: that
  // one says more.
  void recordStartFailure(std::optional<AwakeFailure> failure);

  std::shared_ptr<AwakeController> awake_;
  std::shared_ptr<LidSleepBlocker> blocker_;
  std::shared_ptr<LidAwakeStore> store_;
  std::shared_ptr<const MachineConditions> machine_;
  std::shared_ptr<MachineConditionsNotifier> conditionsNotifier_;
  std::shared_ptr<const DateProvider> dates_;
  std::shared_ptr<DeadlineScheduler> scheduler_;
  std::shared_ptr<DeadlineScheduler> deadlineScheduler_;
  std::shared_ptr<DeepwakeGuardrailStore> guardrailStore_;
  bool runsTranslocated_;

  ChangeSignal changed_;
  Published<bool> isOn_{changed_, false};
  Published<bool> isTurningOn_{changed_, false};
  Published<std::optional<AwakeFailure>> startFailure_{changed_, std::nullopt};
  Published<std::optional<AwakeFailure>> unconfirmedReset_{changed_, std::nullopt};
  // Replies to renewals sent before the latest switch-off carry an older
  // count and change nothing but the bookkeeping.
  int switchOffs_ = 0;
  bool isRenewing_ = false;
  int givingBack_ = 0;
  Published<int> unanswered_{changed_, 0};
  std::vector<std::function<void()>> settledWaiters_;
  Published<bool> hasAcknowledgedHeatWarning_{changed_, false};
  Published<bool> isDeepwakeAllowed_{changed_, true};
  Published<MachineConditionsSnapshot> machineConditions_{changed_, {}};
  Published<DeepwakeGuardrails::Settings> guardrailSettings_{changed_, {}};
  Published<std::optional<DeepwakeGuardrails::Stop>> guardrailStop_{changed_, std::nullopt};
  Published<bool> isPausedForPower_{changed_, false};
  // Mirrors the awake session's deadline, so that activeUntil's readers are
  // told when it moves.
  Published<std::optional<Date>> sessionUntil_{changed_, std::nullopt};
  Subscription awakeChanges_;
  WeakSelf<LidAwakeController> weakSelf_{this};
};

}  // namespace wakeloft
