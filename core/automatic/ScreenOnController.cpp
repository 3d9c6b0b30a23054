#include "automatic/ScreenOnController.h"

#include "base/MainThread.h"

namespace wakeloft {

ScreenOnController::ScreenOnController(std::shared_ptr<AwakeController> awake, std::shared_ptr<SleepBlocker> display,
                                       std::shared_ptr<ScreenOnStore> store,
                                       std::shared_ptr<const MachineConditions> machine,
                                       std::shared_ptr<MachineConditionsNotifier> machineChanges,
                                       std::shared_ptr<ScreenLockState> lock,
                                       std::shared_ptr<DeadlineRecheckNotifier> recheck)
    : awake_(std::move(awake)),
      display_(std::move(display)),
      store_(std::move(store)),
      machine_(std::move(machine)),
      machineChanges_(std::move(machineChanges)),
      lock_(std::move(lock)),
      recheck_(std::move(recheck)) {
  requireMainThread("ScreenOnController");
  keepsScreenOn_.set(store_->keepsScreenOn());
  const auto follow = weakSelf_([](ScreenOnController& self) { self.apply(); });
  awake_->observeSession(follow);
  machineChanges_->observe(follow);
  lockChanges_ = lock_->observe(follow);
  recheck_->observe(weakSelf_([](ScreenOnController& self) { self.apply(/*checking=*/true); }));
  apply();
}

void ScreenOnController::setKeepsScreenOn(bool on) {
  store_->setKeepsScreenOn(on);
  keepsScreenOn_.set(on);
  apply();
}

bool ScreenOnController::isWanted() const {
  if (!keepsScreenOn_ || !awake_->isOn() || lock_->isLocked()) return false;
  const bool closedWithoutDisplay = machine_->isLidClosed().value_or(false) && !machine_->hasExternalDisplay();
  return !closedWithoutDisplay;
}

void ScreenOnController::apply(bool checking) {
  if (!isWanted()) {
    display_->release();
    isHeld_.set(false);
    lastFailure_.set(std::nullopt);
    return;
  }
  try {
    if (checking) display_->restore();
    display_->engage();
    isHeld_.set(true);
    lastFailure_.set(std::nullopt);
  } catch (const std::exception& error) {
    isHeld_.set(false);
    lastFailure_.set(AwakeFailure::from(error));
  }
}

}  // namespace wakeloft
