#include "automatic/ScreenLockPolicy.h"

#include "base/MainThread.h"

namespace wakeloft {

ScreenLockPolicy::ScreenLockPolicy(std::shared_ptr<ScreenLockState> lock, std::shared_ptr<AwakeController> awake,
                                   std::shared_ptr<ProcessBindingController> binding,
                                   std::shared_ptr<const LidAwakeController> lid,
                                   std::shared_ptr<AutomaticSessionController> automatic,
                                   std::shared_ptr<AutomaticSessionStore> store)
    : lock_(std::move(lock)),
      awake_(std::move(awake)),
      binding_(std::move(binding)),
      lid_(std::move(lid)),
      automatic_(std::move(automatic)),
      store_(std::move(store)) {
  requireMainThread("ScreenLockPolicy");
  reload();
  lockChanges_ = lock_->observe(weakSelf_([](ScreenLockPolicy& self) { self.lockChanged(); }));
}

void ScreenLockPolicy::reload() {
  stopsWhenScreenLocks_.set(store_->stopsWhenScreenLocks());
  isForced_.set(store_->isStopWhenScreenLocksForced());
}

void ScreenLockPolicy::setStopsWhenScreenLocks(bool on) {
  if (isForced_) return;
  store_->setStopsWhenScreenLocks(on);
  stopsWhenScreenLocks_.set(on);
}

void ScreenLockPolicy::lockChanged() {
  if (!lock_->isLocked()) {
    if (!std::exchange(endedByLock_, false)) return;
    if (automatic_) automatic_->setScreenLocked(false);
    return;
  }
  if (!stopsWhenScreenLocks_ || lid_->isWanted()) return;
  endedByLock_ = true;
  // The automatic controller first, so that it does not take the stop for
  // the user's; the processes before the session, so that each is told why.
  if (automatic_) automatic_->setScreenLocked(true);
  binding_->releaseForScreenLock();
  if (awake_->isRequested()) awake_->turnOff();
}

}  // namespace wakeloft
